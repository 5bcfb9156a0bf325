// SPDX-License-Identifier: GPL-3.0-or-later
#include "xmltree.h"

#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

class TranslationsTest : public QObject
{
    Q_OBJECT

private slots:
    void everyTextIsTranslated();
    void argumentMarksAndLineBreaksAgree();
    void fileIsUpToDateWithTheSources();
};

namespace {

struct Message
{
    QString context;
    QString source;
    QString translation;
    QString type;

    QByteArray told() const { return (context + ": " + source + " -> " + translation).toUtf8(); }
};

QString translationFile()
{
    return QStringLiteral(VELMORA_SOURCE_DIR "/translations/sd_zh_CN.ts");
}

QList<Message> messagesOf(const QString &path)
{
    QList<Message> messages;
    const XmlFile file = readXmlFile(path);
    if (file.hasError)
        return messages;
    for (const XmlNode &context : file.root.children) {
        for (const XmlNode &node : context.children) {
            if (node.tag != QLatin1String("message"))
                continue;
            const XmlNode translation = node.child("translation");
            messages.append({context.childText("name"), node.childText("source"), translation.text,
                             translation.attributes.value("type").toString()});
        }
    }
    return messages;
}

QStringList argumentMarksOf(const QString &text)
{
    QStringList found;
    QRegularExpressionMatchIterator matches =
        QRegularExpression(QStringLiteral("%(L?[0-9]+|n)")).globalMatch(text);
    while (matches.hasNext())
        found.append(matches.next().captured());
    found.sort();
    return found;
}

} // namespace

void TranslationsTest::everyTextIsTranslated()
{
    const QList<Message> messages = messagesOf(translationFile());
    QVERIFY(messages.size() > 50);
    for (const Message &message : messages) {
        // Unfinished, obsolete and vanished entries carry a type.
        QVERIFY2(message.type.isEmpty(), message.told());
        QVERIFY2(!message.source.isEmpty(), message.told());
        QVERIFY2(!message.translation.isEmpty(), message.told());
    }
}

void TranslationsTest::argumentMarksAndLineBreaksAgree()
{
    const QList<Message> messages = messagesOf(translationFile());
    QVERIFY(!messages.isEmpty());
    for (const Message &message : messages) {
        QVERIFY2(argumentMarksOf(message.source) == argumentMarksOf(message.translation), message.told());
        QVERIFY2(message.source.count('\n') == message.translation.count('\n'), message.told());
    }
}

void TranslationsTest::fileIsUpToDateWithTheSources()
{
    QTemporaryDir directory;
    QVERIFY(directory.isValid());
    const QString copy = directory.filePath(QStringLiteral("sd_zh_CN.ts"));
    QVERIFY(QFile::copy(translationFile(), copy));
    QProcess lupdate;
    // Without guesses from alike texts: what is new shall come out empty and unfinished.
    lupdate.start(QStringLiteral(VELMORA_LUPDATE),
                  {"-silent", "-locations", "none", "-disable-heuristic", "sametext", "-disable-heuristic",
                   "similartext", "-disable-heuristic", "number", QStringLiteral(VELMORA_SOURCE_DIR "/src"),
                   "-ts", copy});
    QVERIFY(lupdate.waitForFinished(60000));
    QCOMPARE(lupdate.exitStatus(), QProcess::NormalExit);
    QVERIFY2(lupdate.exitCode() == 0, lupdate.readAllStandardError());
    const QList<Message> messages = messagesOf(copy);
    QVERIFY(messages.size() > 50);
    QStringList untranslated;
    for (const Message &message : messages) {
        if (message.type == QLatin1String("unfinished"))
            untranslated.append(message.context + ": " + message.source);
    }
    QVERIFY2(untranslated.isEmpty(), qPrintable(untranslated.join(QLatin1String(" | "))));
}

QTEST_GUILESS_MAIN(TranslationsTest)
#include "tst_translations_resources.moc"
