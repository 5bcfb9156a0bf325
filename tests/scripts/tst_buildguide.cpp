// SPDX-License-Identifier: GPL-3.0-or-later
// The user guide made into HTML: the one of this tree, and copies of it with a fault in them.
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

class BuildGuideTest : public QObject
{
    Q_OBJECT

private slots:
    void everyPageOfThisTreeIsMade();
    void linksOfTheMadePagesLeadToFiles();
    void pagesAreTurnedOverInTheOrderOfTheContents();
    void pageLeadsToItselfInTheOtherLanguage();
    void chineseLinesAreJoinedWithoutASpace();
    void languageWithoutPicturesShowsTheEnglishOnes();
    void faultIsNamed_data();
    void faultIsNamed();
    void failureLeavesTheOldGuide();
    void folderThatIsNoneIsRefused();
};

namespace {

struct Outcome
{
    int exitCode = -1;
    QString complaint;
};

const QString sourceOfThisTree = QStringLiteral(VELMORA_SOURCE_DIR "/docs/user-guide");

Outcome build(const QString &source, const QString &out)
{
    QProcess process;
    process.start(QStringLiteral(VELMORA_SOURCE_DIR "/scripts/build-guide"), {source, out});
    if (!process.waitForFinished(120000) || process.exitStatus() != QProcess::NormalExit)
        return {};
    return {process.exitCode(), QString::fromUtf8(process.readAllStandardError())};
}

QString textOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

bool append(const QString &path, const QByteArray &text)
{
    QFile file(path);
    return file.open(QIODevice::Append) && file.write(text) == text.size();
}

QStringList filesBelow(const QString &folder, const QString &pattern)
{
    QStringList files;
    QDirIterator found(folder, {pattern}, QDir::Files, QDirIterator::Subdirectories);
    while (found.hasNext())
        files << found.next();
    return files;
}

bool copyTree(const QString &from, const QString &to)
{
    bool whole = true;
    for (const QString &file : filesBelow(from, QStringLiteral("*"))) {
        const QString copy = to + file.mid(from.size());
        whole = QDir().mkpath(QFileInfo(copy).path()) && QFile::copy(file, copy) && whole;
    }
    return whole;
}

// A source like this tree's, with two small pages, that a test can spoil.
void writeSmallSource(const QString &source)
{
    QVERIFY(QDir().mkpath(source));
    QVERIFY(append(source + QStringLiteral("/style.css"), "body {}\n"));
    for (const char *language : {"en", "zh"}) {
        const QString pages = source + QLatin1Char('/') + QLatin1String(language);
        const QString pictures = source + QStringLiteral("/pictures/") + QLatin1String(language);
        QVERIFY(QDir().mkpath(pages) && QDir().mkpath(pictures));
        QVERIFY(append(pictures + QStringLiteral("/p.png"), "x"));
        QVERIFY(append(pages + QStringLiteral("/index.md"), "# Guide\n\n- [Two](two.md)\n- [One](one.md)\n"));
        QVERIFY(
            append(pages + QStringLiteral("/one.md"), "# One\n\n## A `head`, twice\n\n## A head, twice\n"));
        QVERIFY(append(pages + QStringLiteral("/two.md"), "# Two\n\n[One](one.md)\n"));
    }
}

} // namespace

void BuildGuideTest::everyPageOfThisTreeIsMade()
{
    const QTemporaryDir directory;
    const QString out = directory.filePath(QStringLiteral("guide"));
    const Outcome outcome = build(sourceOfThisTree, out);
    QVERIFY2(outcome.exitCode == 0, qPrintable(outcome.complaint));
    for (const char *language : {"en", "zh"}) {
        const QString folder = QLatin1Char('/') + QLatin1String(language);
        const QStringList pages = QDir(sourceOfThisTree + folder).entryList({QStringLiteral("*.md")});
        QVERIFY(pages.size() > 5);
        for (const QString &page : pages) {
            const QString html = textOf(out + folder + QLatin1Char('/') + QFileInfo(page).baseName() +
                                        QStringLiteral(".html"));
            QVERIFY2(html.contains(QStringLiteral("<h1 id=")), qPrintable(page));
            QVERIFY2(html.contains(QStringLiteral("<html lang=\"%1\">").arg(QLatin1String(language))),
                     qPrintable(page));
            QVERIFY2(!html.contains(QStringLiteral("|---")), qPrintable(page)); // a table is one
        }
    }
}

void BuildGuideTest::linksOfTheMadePagesLeadToFiles()
{
    const QTemporaryDir directory;
    const QString out = directory.filePath(QStringLiteral("guide"));
    QCOMPARE(build(sourceOfThisTree, out).exitCode, 0);
    const QRegularExpression reference(QStringLiteral("(?:href|src)=\"([^\"#]+)"));
    int looked = 0;
    for (const QString &page : filesBelow(out, QStringLiteral("*.html"))) {
        QRegularExpressionMatchIterator found = reference.globalMatch(textOf(page));
        while (found.hasNext()) {
            const QString target = found.next().captured(1);
            // Nothing may lead out of the guide: it is read without a network.
            QVERIFY2(QFileInfo::exists(QFileInfo(page).dir().filePath(target)), qPrintable(page + target));
            ++looked;
        }
    }
    QVERIFY(looked > 50);
}

void BuildGuideTest::pagesAreTurnedOverInTheOrderOfTheContents()
{
    const QTemporaryDir directory;
    const QString source = directory.filePath(QStringLiteral("source"));
    const QString out = directory.filePath(QStringLiteral("guide"));
    writeSmallSource(source);
    const Outcome outcome = build(source, out);
    QVERIFY2(outcome.exitCode == 0, qPrintable(outcome.complaint));
    const QString first = textOf(out + QStringLiteral("/en/index.html"));
    const QString second = textOf(out + QStringLiteral("/en/two.html"));
    const QString third = textOf(out + QStringLiteral("/en/one.html"));
    QVERIFY(!first.contains(QStringLiteral("rel=\"prev\"")));
    QVERIFY(first.contains(QStringLiteral("rel=\"next\" href=\"two.html\"")));
    QVERIFY(second.contains(QStringLiteral("rel=\"prev\" href=\"index.html\"")));
    QVERIFY(second.contains(QStringLiteral("rel=\"next\" href=\"one.html\"")));
    QVERIFY(second.contains(QStringLiteral("<a href=\"index.html\">Contents</a>")));
    QVERIFY(third.contains(QStringLiteral("rel=\"prev\" href=\"two.html\"")));
    QVERIFY(!third.contains(QStringLiteral("rel=\"next\"")));
    QVERIFY(second.contains(QStringLiteral("<title>Two - Velmora</title>")));
}

void BuildGuideTest::pageLeadsToItselfInTheOtherLanguage()
{
    const QTemporaryDir directory;
    const QString source = directory.filePath(QStringLiteral("source"));
    const QString out = directory.filePath(QStringLiteral("guide"));
    writeSmallSource(source);
    QCOMPARE(build(source, out).exitCode, 0);
    QVERIFY(textOf(out + QStringLiteral("/en/two.html"))
                .contains(QStringLiteral("href=\"../zh/two.html\">中文</a>")));
    QVERIFY(textOf(out + QStringLiteral("/zh/two.html"))
                .contains(QStringLiteral("href=\"../en/two.html\">English</a>")));
}

void BuildGuideTest::chineseLinesAreJoinedWithoutASpace()
{
    const QTemporaryDir directory;
    const QString source = directory.filePath(QStringLiteral("source"));
    const QString out = directory.filePath(QStringLiteral("guide"));
    writeSmallSource(source);
    QVERIFY(append(source + QStringLiteral("/zh/two.md"), "\n增益\n调整\nJOG\n点动\n"));
    QVERIFY(append(source + QStringLiteral("/en/two.md"), "\nup ★\n★ down\n"));
    QCOMPARE(build(source, out).exitCode, 0);
    QVERIFY(
        textOf(out + QStringLiteral("/zh/two.html")).contains(QStringLiteral("<p>增益调整\nJOG\n点动</p>")));
    QVERIFY(textOf(out + QStringLiteral("/en/two.html")).contains(QStringLiteral("<p>up ★\n★ down</p>")));
}

void BuildGuideTest::languageWithoutPicturesShowsTheEnglishOnes()
{
    const QTemporaryDir directory;
    const QString source = directory.filePath(QStringLiteral("source"));
    const QString out = directory.filePath(QStringLiteral("guide"));
    writeSmallSource(source);
    QVERIFY(append(source + QStringLiteral("/zh/two.md"), "\n![x](../pictures/zh/p.png)\n"));
    QVERIFY(QDir(source + QStringLiteral("/pictures/zh")).removeRecursively());
    QCOMPARE(build(source, out).exitCode, 0);
    QVERIFY(QFileInfo::exists(out + QStringLiteral("/pictures/zh/p.png")));
}

void BuildGuideTest::faultIsNamed_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<QString>("complaint"); // empty where the line may stand
    const auto add = [](const char *name, const char *file, const char *line, const char *complaint) {
        QTest::newRow(name) << file << QByteArray(line) << complaint;
    };
    add("link to a page", "en/two.md", "[x](one.md)", "");
    add("link to a heading", "en/two.md", "[x](one.md#a-head-twice)", "");
    add("link to the second of a name", "en/two.md", "[x](one.md#a-head-twice-1)", "");
    add("link to a heading of the page", "en/two.md", "[x](#two)", "");
    add("link to a Chinese heading", "en/two.md", "## 增益\n\n[x](#增益)", "");
    add("link to the world", "en/two.md", "[x](https://example.org/a.md)", "");
    add("picture", "en/two.md", "![x](../pictures/en/p.png)", "");
    add("link that is told of", "en/two.md", "`[x](three.md)`", "");
    add("broken link", "en/two.md", "[x](three.md)", "en/two.md: leads nowhere: three.html\n");
    add("broken link to a heading", "en/two.md", "[x](one.md#tail)",
        "en/two.md: no such heading: one.html#tail\n");
    add("heading of another page", "en/two.md", "[x](#one)", "en/two.md: no such heading: #one\n");
    add("link out of the guide", "en/two.md", "[x](../../README.md)",
        "en/two.md: leads nowhere: ../../README.html\n");
    add("missing picture", "en/two.md", "![x](../pictures/en/q.png)",
        "en/two.md: leads nowhere: ../pictures/en/q.png\n");
    add("page beside the contents", "en/three.md", "# Three",
        "en/three.md: not in the contents\nen/three.md: there is no zh/three.md\n");
    add("page in Chinese only", "zh/three.md", "# 三\n\n[x](three.md)",
        "zh/three.md: not in the contents\nzh/three.md: there is no en/three.md\n");
    add("page of the other language", "en/two.md", "[x](../zh/two.md)", "");
    add("missing page of the other language", "en/two.md", "[x](../zh/three.md)",
        "en/two.md: leads nowhere: ../zh/three.html\n");
    add("contents without the page", "en/index.md", "[x](three.md)",
        "en/index.md: leads nowhere: three.html\n");
}

void BuildGuideTest::faultIsNamed()
{
    QFETCH(QString, file);
    QFETCH(QByteArray, line);
    QFETCH(QString, complaint);
    const QTemporaryDir directory;
    const QString source = directory.filePath(QStringLiteral("source"));
    writeSmallSource(source);
    QVERIFY(append(source + QLatin1Char('/') + file, "\n" + line + "\n"));
    const Outcome outcome = build(source, directory.filePath(QStringLiteral("guide")));
    QCOMPARE(outcome.complaint, complaint);
    QCOMPARE(outcome.exitCode, complaint.isEmpty() ? 0 : 1);
}

void BuildGuideTest::failureLeavesTheOldGuide()
{
    const QTemporaryDir directory;
    const QString source = directory.filePath(QStringLiteral("source"));
    const QString out = directory.filePath(QStringLiteral("guide"));
    QVERIFY(copyTree(sourceOfThisTree, source));
    QCOMPARE(build(source, out).exitCode, 0);
    const QStringList before = filesBelow(out, QStringLiteral("*"));
    const QString picture = source + QStringLiteral("/pictures/en/monitor.png");
    QVERIFY(QFile::remove(picture));
    QVERIFY(append(source + QStringLiteral("/en/connecting.md"), "\n[x](conecting.md)\n"));
    const Outcome outcome = build(source, out);
    QCOMPARE(outcome.exitCode, 1);
    QVERIFY2(outcome.complaint.contains(QStringLiteral("en/connecting.md: leads nowhere: conecting.html\n")),
             qPrintable(outcome.complaint));
    QVERIFY2(outcome.complaint.contains(
                 QStringLiteral("en/monitor.md: leads nowhere: ../pictures/en/monitor.png\n")),
             qPrintable(outcome.complaint));
    QCOMPARE(filesBelow(directory.path(), QStringLiteral("*.html")).size(),
             before.filter(QStringLiteral(".html")).size());
    QCOMPARE(filesBelow(out, QStringLiteral("*")), before);
}

void BuildGuideTest::folderThatIsNoneIsRefused()
{
    const QTemporaryDir directory;
    QCOMPARE(build(directory.filePath(QStringLiteral("none")), directory.filePath(QStringLiteral("guide")))
                 .exitCode,
             2);
}

QTEST_GUILESS_MAIN(BuildGuideTest)
#include "tst_buildguide.moc"
