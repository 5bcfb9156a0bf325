// SPDX-License-Identifier: GPL-3.0-or-later
#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QIcon>
#include <QImageReader>
#include <QRegularExpression>
#include <QSet>
#include <QTest>

class PicturesTest : public QObject
{
    Q_OBJECT

private slots:
    void everyPathNamedInTheCodeExists();
    void everyPictureLoads();
    void everyPictureHasATwinOfTwiceTheSize();
    void logoHoldsSeveralSizes();
};

namespace {

const QString pictures = QStringLiteral(":/pic/pic/");

QStringList picturePaths(const QStringList &patterns)
{
    QStringList paths;
    const QStringList names = QDir(pictures).entryList(patterns, QDir::Files);
    for (const QString &name : names)
        paths.append(pictures + name);
    return paths;
}

bool isPicture(const QString &path)
{
    return path.startsWith(pictures);
}

void insertAll(const QRegularExpression &pattern, const QString &text, const QString &prefix,
               QSet<QString> *paths)
{
    QRegularExpressionMatchIterator matches = pattern.globalMatch(text);
    while (matches.hasNext())
        paths->insert(prefix + matches.next().captured(1));
}

// Whole paths, and bare picture names that the code puts behind the folder of pictures.
QSet<QString> pathsNamedInTheCode()
{
    const QRegularExpression inCode(
        QStringLiteral("\"(:/(?:pic/pic|lan|parameter|config|AlarmErrorInfor|ini)/[^\"]+)\""));
    const QRegularExpression inForm(QStringLiteral(">(:/pic/pic/[^<]+)<"));
    const QRegularExpression bareName(QStringLiteral("\"([^\"/:*]+\\.(?:png|bmp|ico))\""));
    QSet<QString> paths;
    QDirIterator files(QStringLiteral(VELMORA_SOURCE_DIR "/src"), {"*.cpp", "*.h", "*.ui"}, QDir::Files,
                       QDirIterator::Subdirectories);
    while (files.hasNext()) {
        QFile file(files.next());
        if (!file.open(QIODevice::ReadOnly))
            continue;
        const QString text = QString::fromUtf8(file.readAll());
        insertAll(inCode, text, QString(), &paths);
        insertAll(inForm, text, QString(), &paths);
        insertAll(bareName, text, pictures, &paths);
    }
    return paths;
}

// A path may be one part of a name or hold a place for the language.
QStringList resourcesOf(const QString &path)
{
    if (path.contains(QLatin1String("%1"))) {
        QStringList both;
        for (const char *language : {"en_US", "zh_CN"})
            both.append(QString(path).replace(QLatin1String("%1"), QLatin1String(language)));
        return both;
    }
    return {path};
}

bool isBeginOfAName(const QString &path)
{
    const QFileInfo name(path);
    return name.suffix().isEmpty() && !QDir(name.path()).entryList({name.fileName() + "*"}).isEmpty();
}

} // namespace

void PicturesTest::everyPathNamedInTheCodeExists()
{
    const QSet<QString> paths = pathsNamedInTheCode();
    QStringList missing;
    for (const QString &path : paths) {
        const QStringList resources = resourcesOf(path);
        for (const QString &resource : resources) {
            if (!QFileInfo(resource).isFile() && !isBeginOfAName(resource))
                missing.append(resource);
            else if (isPicture(resource) && QFileInfo(resource).isFile() && QImage(resource).isNull())
                missing.append(resource + " (does not load)");
        }
    }
    QVERIFY2(missing.isEmpty(), qPrintable(missing.join(QLatin1String(", "))));
    // What the main window alone names; fewer means that the search has gone blind.
    QVERIFY(paths.size() > 25);
    QVERIFY(paths.contains(pictures + "edit1.png"));
}

void PicturesTest::everyPictureLoads()
{
    const QStringList paths = picturePaths({"*.png", "*.bmp", "*.ico"});
    QVERIFY(!paths.isEmpty());
    for (const QString &path : paths)
        QVERIFY2(!QImage(path).isNull(), qPrintable(path));
}

void PicturesTest::everyPictureHasATwinOfTwiceTheSize()
{
    const QStringList paths = picturePaths({"*.png", "*.bmp"});
    for (const QString &path : paths) {
        const QFileInfo name(path);
        if (name.completeBaseName().endsWith(QLatin1String("@2x")))
            continue;
        const QString twin = name.path() + '/' + name.completeBaseName() + "@2x." + name.suffix();
        QVERIFY2(QFileInfo(twin).isFile(), qPrintable(twin));
        QVERIFY2(QImageReader(twin).size() == QImageReader(path).size() * 2, qPrintable(twin));
    }
}

void PicturesTest::logoHoldsSeveralSizes()
{
    const QList<QSize> sizes = QIcon(pictures + "logo.ico").availableSizes();
    for (int side : {16, 24, 48})
        QVERIFY2(sizes.contains(QSize(side, side)), qPrintable(QString::number(side)));
}

QTEST_MAIN(PicturesTest)
#include "tst_pictures_resources.moc"
