// SPDX-License-Identifier: GPL-3.0-or-later
// The status table: its rows in both languages, and how each kind of register reads.
#include "monitor/parameter_status.h"

#include "support/modalanswers.h"
#include "support/testdirectory.h"
#include "support/wire.h"

#include <QHeaderView>
#include <QSignalSpy>
#include <QTableWidget>
#include <QTest>

namespace {

QTableWidget *tableOf(const Parameter_Status &panel)
{
    return panel.findChild<QTableWidget *>();
}

int rowOf(const Parameter_Status &panel, const QString &code)
{
    const QTableWidget *const table = tableOf(panel);
    for (int row = 0; row < table->rowCount(); ++row) {
        if (table->item(row, Parameter_Status::CodeColumn)->text() == code)
            return row;
    }
    return -1;
}

QString valueOf(const Parameter_Status &panel, const QString &code)
{
    const int row = rowOf(panel, code);
    return row < 0 ? QStringLiteral("no row")
                   : tableOf(panel)->item(row, Parameter_Status::ValueColumn)->text();
}

} // namespace

class ParameterStatusTest : public QObject
{
    Q_OBJECT

private slots:
    void everyRowOfTheCatalogueShows_data();
    void everyRowOfTheCatalogueShows();
    void reservedWordsNeverShow_data();
    void reservedWordsNeverShow();
    void rowShowsCodeNameAndUnit_data();
    void rowShowsCodeNameAndUnit();
    void tableHasItsForm();
    void valueReads_data();
    void valueReads();
    void eventsGoOnWhileThePanelIsBuilt();
    void registerWithoutARowIsDropped();
    void valueThatStaysIsNotDrawnAgain();
    void missingCatalogueIsTold_data();
    void missingCatalogueIsTold();
};

void ParameterStatusTest::everyRowOfTheCatalogueShows_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<int>("rows");
    QTest::addColumn<QString>("first");
    QTest::addColumn<QString>("last");
    QTest::newRow("English") << "en_US" << 46 << "Pn-F00"
                             << "Pn-F71";
    QTest::newRow("Chinese") << "zh_CN" << 54 << "Pn-F00"
                             << "Pn-F85";
    QTest::newRow("any other language") << "de_DE" << 46 << "Pn-F00"
                                        << "Pn-F71";
}

void ParameterStatusTest::everyRowOfTheCatalogueShows()
{
    QFETCH(QString, language);
    QFETCH(int, rows);
    QFETCH(QString, first);
    QFETCH(QString, last);
    const TestDirectory directory;
    directory.setLanguage(language);
    const Parameter_Status panel;
    const QTableWidget *const table = tableOf(panel);
    QCOMPARE(table->rowCount(), rows);
    QCOMPARE(table->item(0, 0)->text(), first);
    QCOMPARE(table->item(rows - 1, 0)->text(), last);
    for (int row = 0; row < rows; ++row)
        QVERIFY(table->item(row, Parameter_Status::ValueColumn)->text().isEmpty());
}

void ParameterStatusTest::reservedWordsNeverShow_data()
{
    QTest::addColumn<QString>("language");
    QTest::newRow("English") << "en_US";
    QTest::newRow("Chinese") << "zh_CN";
}

void ParameterStatusTest::reservedWordsNeverShow()
{
    QFETCH(QString, language);
    const TestDirectory directory;
    directory.setLanguage(language);
    const Parameter_Status panel;
    QVERIFY(rowOf(panel, QStringLiteral("Pn-F29")) >= 0);
    QVERIFY(rowOf(panel, QStringLiteral("Pn-F32")) >= 0);
    for (const char *code : {"Pn-F30", "Pn-F31", "Pn-F39", "Pn-F73"})
        QCOMPARE(rowOf(panel, QString::fromLatin1(code)), -1);
}

void ParameterStatusTest::rowShowsCodeNameAndUnit_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<QString>("code");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("unit");
    QTest::newRow("first") << "en_US"
                           << "Pn-F00"
                           << "Motor speed"
                           << "1RPM";
    QTest::newRow("without unit") << "en_US"
                                  << "Pn-F27"
                                  << "Waring code"
                                  << "";
    QTest::newRow("running time") << "en_US"
                                  << "Pn-F29"
                                  << "Servo running time"
                                  << "1H";
    QTest::newRow("last") << "en_US"
                          << "Pn-F71"
                          << "Manufacturer parameter 9"
                          << "";
    QTest::newRow("Chinese first") << "zh_CN"
                                   << "Pn-F00"
                                   << "电机转速"
                                   << "1RPM";
    QTest::newRow("Chinese running time") << "zh_CN"
                                          << "Pn-F29"
                                          << "伺服运行时间"
                                          << "0.01H";
    QTest::newRow("Chinese temperature") << "zh_CN"
                                         << "Pn-F24"
                                         << "功率模块温度"
                                         << "0.1℃";
    QTest::newRow("Chinese last") << "zh_CN"
                                  << "Pn-F85"
                                  << "电机输出电压"
                                  << "1V";
}

void ParameterStatusTest::rowShowsCodeNameAndUnit()
{
    QFETCH(QString, language);
    QFETCH(QString, code);
    QFETCH(QString, name);
    QFETCH(QString, unit);
    const TestDirectory directory;
    directory.setLanguage(language);
    const Parameter_Status panel;
    const int row = rowOf(panel, code);
    QVERIFY(row >= 0);
    QCOMPARE(tableOf(panel)->item(row, Parameter_Status::NameColumn)->text(), name);
    QCOMPARE(tableOf(panel)->item(row, Parameter_Status::UnitColumn)->text(), unit);
}

void ParameterStatusTest::tableHasItsForm()
{
    const TestDirectory directory;
    directory.setLanguage(QStringLiteral("en_US"));
    const Parameter_Status panel;
    const QTableWidget *const table = tableOf(panel);
    QStringList heads;
    for (int column = 0; column < table->columnCount(); ++column)
        heads << table->horizontalHeaderItem(column)->text();
    QCOMPARE(heads, QStringList({"Parameter", "Description", "Unit", "Value"}));
    QCOMPARE(table->columnWidth(0), 70);
    const QHeaderView *const header = table->horizontalHeader();
    QCOMPARE(header->sectionResizeMode(0), QHeaderView::Fixed);
    QCOMPARE(header->sectionResizeMode(1), QHeaderView::Stretch);
    QCOMPARE(header->sectionResizeMode(2), QHeaderView::ResizeToContents);
    QCOMPARE(header->sectionResizeMode(3), QHeaderView::ResizeToContents);
    QVERIFY(table->verticalHeader()->isHidden());
    QCOMPARE(table->frameShape(), QFrame::NoFrame);
    QCOMPARE(table->selectionMode(), QAbstractItemView::NoSelection);
    QCOMPARE(table->editTriggers(), QAbstractItemView::NoEditTriggers);
    for (int row = 0; row < table->rowCount(); ++row) {
        QCOMPARE(table->rowHeight(row), 18);
        for (int column = 0; column < 4; ++column)
            QCOMPARE(table->item(row, column)->textAlignment(), int(Qt::AlignCenter));
    }
    QCOMPARE(panel.font().family(), QStringLiteral("微软雅黑"));
}

void ParameterStatusTest::valueReads_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<QString>("code");
    QTest::addColumn<int>("address");
    QTest::addColumn<QByteArray>("data");
    QTest::addColumn<QString>("text");
    const auto row = [](const char *name, const char *language, const char *code, int address,
                        const char *data, const char *text) {
        QTest::newRow(name) << QString::fromLatin1(language) << QString::fromLatin1(code) << address
                            << wire::bytes(data) << QString::fromLatin1(text);
    };
    row("speed", "en_US", "Pn-F00", 9692, "05DC", "1500");
    row("speed of -1", "en_US", "Pn-F00", 9692, "FFFF", "-1");
    row("least 16-bit number", "en_US", "Pn-F01", 9693, "8000", "-32768");
    row("analog command", "en_US", "Pn-F02", 9694, "FFFB", "-0.05");
    row("percent is not scaled", "en_US", "Pn-F03", 9695, "0064", "100");
    row("32-bit -2", "en_US", "Pn-F07", 9699, "FFFFFFFE", "-2");
    row("32-bit", "zh_CN", "Pn-F15", 9707, "00020000", "131072");
    row("least 32-bit number", "en_US", "Pn-F20", 9712, "80000000", "-2147483648");
    row("current", "en_US", "Pn-F22", 9714, "0096", "1.50");
    row("bus voltage", "en_US", "Pn-F23", 9715, "0C26", "311.00");
    row("bus voltage in Chinese", "zh_CN", "Pn-F23", 9715, "007B", "12.30");
    row("temperature", "en_US", "Pn-F24", 9716, "00FD", "25.30");
    row("DI levels", "en_US", "Pn-F25", 9717, "001F", "001F");
    row("DI levels with letters", "en_US", "Pn-F25", 9717, "abcd", "ABCD");
    row("DO levels", "zh_CN", "Pn-F26", 9718, "8001", "8001");
    row("warning above 32767", "en_US", "Pn-F27", 9719, "8001", "-32767");
    row("running time in whole hours", "en_US", "Pn-F29", 9721, "00000190", "400");
    row("running time in hundredths", "zh_CN", "Pn-F29", 9721, "00000190", "4.00");
    row("battery", "en_US", "Pn-F34", 9726, "0024", "3.60");
    row("phase offset", "zh_CN", "Pn-F50", 9742, "FFF0", "-0.16");
    row("32-bit counter", "zh_CN", "Pn-F53", 9745, "00010000", "65536");
    row("gain, a bare number as unit", "zh_CN", "Pn-F56", 9748, "0190", "40.00");
    row("inertia ratio", "zh_CN", "Pn-F60", 9752, "0019", "2.50");
    row("motor position is unsigned", "zh_CN", "Pn-F80", 9772, "FFFF", "65535");
    row("pulse frequency", "zh_CN", "Pn-F81", 9773, "FFFFFFFF", "-0.10");
    row("output voltage", "zh_CN", "Pn-F85", 9777, "00DC", "220");
}

void ParameterStatusTest::valueReads()
{
    QFETCH(QString, language);
    QFETCH(QString, code);
    QFETCH(int, address);
    QFETCH(QByteArray, data);
    QFETCH(QString, text);
    const TestDirectory directory;
    directory.setLanguage(language);
    Parameter_Status panel;
    panel.handleParameterMonitorSlot(data, address);
    QCOMPARE(valueOf(panel, code), text);
    int filled = 0;
    for (int row = 0; row < tableOf(panel)->rowCount(); ++row)
        filled += !tableOf(panel)->item(row, Parameter_Status::ValueColumn)->text().isEmpty();
    QCOMPARE(filled, 1);
    QCOMPARE(tableOf(panel)->item(rowOf(panel, code), 3)->textAlignment(), int(Qt::AlignCenter));
}

void ParameterStatusTest::eventsGoOnWhileThePanelIsBuilt()
{
    const TestDirectory directory;
    QObject receiver;
    bool isHandled = false;
    QMetaObject::invokeMethod(
        &receiver, [&isHandled] { isHandled = true; }, Qt::QueuedConnection);
    const Parameter_Status panel;
    QVERIFY(isHandled);
}

void ParameterStatusTest::registerWithoutARowIsDropped()
{
    const TestDirectory directory;
    directory.setLanguage(QStringLiteral("en_US"));
    Parameter_Status panel;
    for (const int address : {0, 8403, 9722, 9772, 9773})
        panel.handleParameterMonitorSlot(wire::bytes("0001"), address);
    for (int row = 0; row < tableOf(panel)->rowCount(); ++row)
        QVERIFY(tableOf(panel)->item(row, Parameter_Status::ValueColumn)->text().isEmpty());
}

void ParameterStatusTest::valueThatStaysIsNotDrawnAgain()
{
    const TestDirectory directory;
    directory.setLanguage(QStringLiteral("en_US"));
    Parameter_Status panel;
    const QSignalSpy changes(tableOf(panel), &QTableWidget::itemChanged);
    for (int i = 0; i < 3; ++i)
        panel.handleParameterMonitorSlot(wire::bytes("0001"), 9692);
    QCOMPARE(changes.count(), 1);
    panel.handleParameterMonitorSlot(wire::bytes("0002"), 9692);
    QCOMPARE(changes.count(), 2);
}

void ParameterStatusTest::missingCatalogueIsTold_data()
{
    QTest::addColumn<QString>("language");
    QTest::newRow("English") << "en_US";
    QTest::newRow("Chinese") << "zh_CN";
}

void ParameterStatusTest::missingCatalogueIsTold()
{
    QFETCH(QString, language);
    const TestDirectory directory;
    directory.setLanguage(language);
    ModalAnswers boxes;
    boxes.expect(QStringLiteral("File does not exist"));
    Q_CLEANUP_RESOURCE(catalogue);
    Parameter_Status panel;
    Q_INIT_RESOURCE(catalogue);
    QVERIFY(boxes.isDone());
    QCOMPARE(boxes.seen.first().title, QStringLiteral("Open Failed"));
    QCOMPARE(boxes.seen.first().icon, QMessageBox::Warning);
    QCOMPARE(tableOf(panel)->rowCount(), 0);
    panel.handleParameterMonitorSlot(wire::bytes("0001"), 9692);
}

QTEST_MAIN(ParameterStatusTest)

#include "tst_parameter_status.moc"
