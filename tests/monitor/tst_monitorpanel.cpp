// SPDX-License-Identifier: GPL-3.0-or-later
// What the panels of the monitor share: how a catalogue is loaded, and what is told when it can't be.
#include "monitor/monitorpanel.h"

#include "support/modalanswers.h"
#include "support/testdirectory.h"

#include <QDir>
#include <QFile>
#include <QTest>

namespace {

const CatalogueWords words{QStringLiteral("Title"), QStringLiteral("It is missing"),
                           QStringLiteral("It can't be read")};

} // namespace

class MonitorPanelTest : public QObject
{
    Q_OBJECT

private slots:
    void catalogueOfTheLanguageIsLoaded_data();
    void catalogueOfTheLanguageIsLoaded();
    void missingCatalogueIsTold();
    void unreadableCatalogueIsTold();
};

void MonitorPanelTest::catalogueOfTheLanguageIsLoaded_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("English") << "en_US" << QByteArray("english");
    QTest::newRow("Chinese") << "zh_CN" << QByteArray("chinese");
    QTest::newRow("any other language") << "de_DE" << QByteArray("english");
}

void MonitorPanelTest::catalogueOfTheLanguageIsLoaded()
{
    QFETCH(QString, language);
    QFETCH(QByteArray, content);
    const TestDirectory directory;
    directory.setLanguage(language);
    for (const auto &[name, text] :
         {std::make_pair("list_en_US.xml", "english"), std::make_pair("list_zh_CN.xml", "chinese")}) {
        QFile file(QString::fromLatin1(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(text);
    }
    const ModalAnswers noBox;
    QCOMPARE(loadMonitorCatalogue(nullptr, QStringLiteral("list"), words), content);
    QVERIFY(noBox.seen.isEmpty());
}

void MonitorPanelTest::missingCatalogueIsTold()
{
    const TestDirectory directory;
    ModalAnswers boxes;
    boxes.expect(words.missing);
    QVERIFY(loadMonitorCatalogue(nullptr, QStringLiteral("list"), words).isEmpty());
    QCOMPARE(boxes.seen.first().title, words.title);
    QCOMPARE(boxes.seen.first().icon, QMessageBox::Warning);
}

// A folder is there and can't be read as a file.
void MonitorPanelTest::unreadableCatalogueIsTold()
{
    const TestDirectory directory;
    directory.setLanguage(QStringLiteral("en_US"));
    QVERIFY(QDir().mkdir(QStringLiteral("list_en_US.xml")));
    ModalAnswers boxes;
    boxes.expect(words.unreadable);
    QVERIFY(loadMonitorCatalogue(nullptr, QStringLiteral("list"), words).isEmpty());
    QCOMPARE(boxes.seen.first().title, words.title);
    QCOMPARE(boxes.seen.first().icon, QMessageBox::Warning);
}

QTEST_MAIN(MonitorPanelTest)

#include "tst_monitorpanel.moc"
