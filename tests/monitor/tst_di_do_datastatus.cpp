// SPDX-License-Identifier: GPL-3.0-or-later
// The panel of inputs and outputs: dots and functions, in both languages.
#include "monitor/di_do_datastatus.h"

#include "support/modalanswers.h"
#include "support/testdirectory.h"
#include "support/wire.h"

#include <QGroupBox>
#include <QSignalSpy>
#include <QTableWidget>
#include <QTest>

namespace {

const QColor green(QStringLiteral("#00FF00"));
const QColor grey(QStringLiteral("#969696"));

QTableWidget *tableOf(const DI_DO_DataStatus &panel, const char *name)
{
    return panel.findChild<QTableWidget *>(QLatin1String(name));
}

quint32 greenRows(const QTableWidget *table)
{
    quint32 rows = 0;
    for (int row = 0; row < table->rowCount(); ++row) {
        if (table->item(row, DI_DO_DataStatus::StatusColumn)->foreground().color() == green)
            rows |= 1U << row;
    }
    return rows;
}

} // namespace

class DiDoDataStatusTest : public QObject
{
    Q_OBJECT

private slots:
    void tablesStartEmpty();
    void dotsFollowTheLevels_data();
    void dotsFollowTheLevels();
    void dotGoesGreyAgain();
    void functionIsShown_data();
    void functionIsShown();
    void functionsReachTheirRows();
    void otherAddressesAreIgnored();
    void cellThatStaysIsNotDrawnAgain();
    void missingCatalogueLeavesTheDots();
};

void DiDoDataStatusTest::tablesStartEmpty()
{
    const TestDirectory directory;
    directory.setLanguage(QStringLiteral("en_US"));
    const DI_DO_DataStatus panel;
    QStringList groups;
    const QList<QGroupBox *> boxes = panel.findChildren<QGroupBox *>();
    for (const QGroupBox *box : boxes)
        groups << box->title();
    QCOMPARE(groups, QStringList({"Data Input", "Data Output"}));
    for (const char *name : {"diTable", "doTable"}) {
        const QTableWidget *const table = tableOf(panel, name);
        QStringList heads;
        for (int column = 0; column < table->columnCount(); ++column)
            heads << table->horizontalHeaderItem(column)->text();
        QCOMPARE(heads, QStringList({"Sequence", "Symbol", "Function Description", "Status"}));
        QCOMPARE(table->rowCount(), 16);
        QCOMPARE(table->columnWidth(0), 60);
        QCOMPARE(table->columnWidth(1), 60);
        QCOMPARE(table->columnWidth(3), 80);
        const QString prefix = QString::fromLatin1(name).left(2).toUpper();
        for (int row = 0; row < 16; ++row) {
            QCOMPARE(table->rowHeight(row), 18);
            QCOMPARE(table->item(row, 0)->text(), prefix + QString::number(row + 1));
            QCOMPARE(table->item(row, 1)->text(), QStringLiteral("Null "));
            QCOMPARE(table->item(row, 2)->text(), QStringLiteral("NO fuction"));
            QCOMPARE(table->item(row, 3)->text(), QStringLiteral("●"));
            QCOMPARE(table->item(row, 3)->foreground().color(), grey);
            QCOMPARE(table->item(row, 3)->font().pointSize(), 11);
            QCOMPARE(table->item(row, 3)->font().family(), QStringLiteral("黑体"));
            for (int column = 0; column < 4; ++column)
                QCOMPARE(table->item(row, column)->textAlignment(), int(Qt::AlignCenter));
        }
    }
}

void DiDoDataStatusTest::dotsFollowTheLevels_data()
{
    QTest::addColumn<int>("address");
    QTest::addColumn<QByteArray>("data");
    QTest::addColumn<quint32>("inputs");
    QTest::addColumn<quint32>("outputs");
    QTest::newRow("no input") << 9717 << wire::bytes("0000") << 0U << 0U;
    QTest::newRow("first input") << 9717 << wire::bytes("0001") << 1U << 0U;
    QTest::newRow("last input") << 9717 << wire::bytes("8000") << 0x8000U << 0U;
    QTest::newRow("some inputs") << 9717 << wire::bytes("A51F") << 0xA51FU << 0U;
    QTest::newRow("last output") << 9718 << wire::bytes("8000") << 0U << 0x8000U;
    QTest::newRow("all outputs") << 9718 << wire::bytes("FFFF") << 0U << 0xFFFFU;
    QTest::newRow("another register") << 9719 << wire::bytes("FFFF") << 0U << 0U;
}

void DiDoDataStatusTest::dotsFollowTheLevels()
{
    QFETCH(int, address);
    QFETCH(QByteArray, data);
    QFETCH(quint32, inputs);
    QFETCH(quint32, outputs);
    const TestDirectory directory;
    DI_DO_DataStatus panel;
    panel.handleDIDOStatusSlot(data, address);
    QCOMPARE(greenRows(tableOf(panel, "diTable")), inputs);
    QCOMPARE(greenRows(tableOf(panel, "doTable")), outputs);
}

void DiDoDataStatusTest::dotGoesGreyAgain()
{
    const TestDirectory directory;
    DI_DO_DataStatus panel;
    panel.handleDIDOStatusSlot(wire::bytes("FFFF"), 9717);
    panel.handleDIDOStatusSlot(wire::bytes("0000"), 9717);
    const QTableWidget *const table = tableOf(panel, "diTable");
    for (int row = 0; row < 16; ++row)
        QCOMPARE(table->item(row, 3)->foreground().color(), grey);
}

void DiDoDataStatusTest::functionIsShown_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<int>("address");
    QTest::addColumn<QByteArray>("data");
    QTest::addColumn<QString>("symbol");
    QTest::addColumn<QString>("function");
    const auto row = [](const char *name, const char *language, int address, const char *data,
                        const char *symbol, const char *function) {
        QTest::newRow(name) << QString::fromLatin1(language) << address << wire::bytes(data)
                            << QString::fromLatin1(symbol) << QString::fromUtf8(function);
    };
    row("none", "en_US", 8403, "0000", "NULL", "Non-function");
    row("servo on", "en_US", 8403, "0001", "SON", "Enabled Servo");
    row("twelve in decimal digits", "en_US", 8403, "0012", "CMOD3", "Control mode switch");
    row("thirty", "en_US", 8418, "0030", "GHOM", "The trigger signal of origin return");
    row("high byte plays no part", "en_US", 8403, "0101", "SON", "Enabled Servo");
    row("31 with a high byte", "en_US", 8403, "0131", "", "");
    row("hexadecimal letter", "en_US", 8403, "001F", "", "");
    row("hexadecimal twelve", "en_US", 8403, "000C", "", "");
    row("ready", "en_US", 8423, "0001", "RDY", "Servo is prepared");
    row("origin", "en_US", 8438, "0013", "HOM", "Origin return finish");
    row("output 17 in English", "en_US", 8423, "0017", "", "");
    row("output 20 in English", "en_US", 8423, "0020", "", "");
    row("output 17 in Chinese", "zh_CN", 8423, "0017", "AND1", "逻辑与1");
    row("output 20 in Chinese", "zh_CN", 8423, "0020", "AND4", "逻辑与4");
    row("output 42 in Chinese", "zh_CN", 8438, "0042", "CNT32", "32位计数器");
    row("output 43 in Chinese", "zh_CN", 8438, "0043", "", "");
}

void DiDoDataStatusTest::functionIsShown()
{
    QFETCH(QString, language);
    QFETCH(int, address);
    QFETCH(QByteArray, data);
    QFETCH(QString, symbol);
    QFETCH(QString, function);
    const TestDirectory directory;
    directory.setLanguage(language);
    DI_DO_DataStatus panel;
    panel.handleDIDOFunctionSlot(data, address);
    const bool isInput = address < 8423;
    const QTableWidget *const table = tableOf(panel, isInput ? "diTable" : "doTable");
    const int row = address - (isInput ? 8403 : 8423);
    QCOMPARE(table->item(row, 1)->text(), symbol);
    QCOMPARE(table->item(row, 2)->text(), function);
}

void DiDoDataStatusTest::functionsReachTheirRows()
{
    const TestDirectory directory;
    directory.setLanguage(QStringLiteral("en_US"));
    DI_DO_DataStatus panel;
    for (int i = 0; i < 16; ++i) {
        panel.handleDIDOFunctionSlot(wire::bytes(i % 2 ? "0001" : "0002"), 8403 + i);
        panel.handleDIDOFunctionSlot(wire::bytes(i % 2 ? "0003" : "0004"), 8423 + i);
    }
    for (int i = 0; i < 16; ++i) {
        QCOMPARE(tableOf(panel, "diTable")->item(i, 1)->text(), QString(i % 2 ? "SON" : "EMG"));
        QCOMPARE(tableOf(panel, "doTable")->item(i, 1)->text(), QString(i % 2 ? "BRK" : "ALM"));
    }
}

void DiDoDataStatusTest::otherAddressesAreIgnored()
{
    const TestDirectory directory;
    directory.setLanguage(QStringLiteral("en_US"));
    DI_DO_DataStatus panel;
    for (const int address : {0, 8402, 8419, 8422, 8439, 9717})
        panel.handleDIDOFunctionSlot(wire::bytes("0001"), address);
    for (const char *name : {"diTable", "doTable"}) {
        for (int row = 0; row < 16; ++row)
            QCOMPARE(tableOf(panel, name)->item(row, 1)->text(), QStringLiteral("Null "));
    }
}

void DiDoDataStatusTest::cellThatStaysIsNotDrawnAgain()
{
    const TestDirectory directory;
    directory.setLanguage(QStringLiteral("en_US"));
    DI_DO_DataStatus panel;
    panel.handleDIDOStatusSlot(wire::bytes("0005"), 9717);
    panel.handleDIDOFunctionSlot(wire::bytes("0001"), 8403);
    const QSignalSpy changes(tableOf(panel, "diTable"), &QTableWidget::itemChanged);
    panel.handleDIDOStatusSlot(wire::bytes("0005"), 9717);
    panel.handleDIDOFunctionSlot(wire::bytes("0001"), 8403);
    QCOMPARE(changes.count(), 0);
    panel.handleDIDOStatusSlot(wire::bytes("0004"), 9717);
    QCOMPARE(changes.count(), 1);
}

void DiDoDataStatusTest::missingCatalogueLeavesTheDots()
{
    const TestDirectory directory;
    ModalAnswers boxes;
    boxes.expect(QStringLiteral("File does not exist"));
    Q_CLEANUP_RESOURCE(catalogue);
    DI_DO_DataStatus panel;
    Q_INIT_RESOURCE(catalogue);
    QVERIFY(boxes.isDone());
    QCOMPARE(boxes.seen.first().title, QStringLiteral("Open Failed"));
    panel.handleDIDOFunctionSlot(wire::bytes("0001"), 8403);
    QVERIFY(tableOf(panel, "diTable")->item(0, 1)->text().isEmpty());
    QVERIFY(tableOf(panel, "diTable")->item(0, 2)->text().isEmpty());
    panel.handleDIDOStatusSlot(wire::bytes("0001"), 9717);
    QCOMPARE(greenRows(tableOf(panel, "diTable")), 1U);
}

QTEST_MAIN(DiDoDataStatusTest)

#include "tst_di_do_datastatus.moc"
