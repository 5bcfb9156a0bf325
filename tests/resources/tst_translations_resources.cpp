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
    void wordingIsOne_data();
    void wordingIsOne();
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

void TranslationsTest::wordingIsOne_data()
{
    QTest::addColumn<QString>("context");
    QTest::addColumn<QString>("source");
    QTest::addColumn<QString>("translation");
    // Tool and window of the batch list are called alike.
    const QString batch = QStringLiteral("参数批量修改");
    QTest::newRow("tool") << "ParameterEditor"
                          << "edit parameter" << batch;
    QTest::newRow("window") << "ParameterBatch"
                            << "Batch Parameter Modification" << batch;
    QTest::newRow("column") << "ParameterTable"
                            << "Description" << QStringLiteral("参数名称");
    QTest::newRow("message") << "ParameterTable"
                             << "Fail to connect to the device via USB!"
                             << QStringLiteral("无法通过USB连接到设备！");
}

void TranslationsTest::wordingIsOne()
{
    QFETCH(const QString, context);
    QFETCH(const QString, source);
    QFETCH(const QString, translation);
    QStringList found;
    const QList<Message> messages = messagesOf(translationFile());
    for (const Message &message : messages) {
        QVERIFY2(!message.translation.contains(QStringLiteral("～")), message.told());
        if (message.context == context && message.source == source)
            found.append(message.translation);
    }
    QCOMPARE(found, QStringList(translation));
}

QTEST_GUILESS_MAIN(TranslationsTest)
#include "tst_translations_resources.moc"
