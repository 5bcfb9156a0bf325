// SPDX-License-Identifier: GPL-3.0-or-later
// The monitor window: its panels on one chain of polls, and what they have it send.
#include "monitorbench.h"
#include "support/modalanswers.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>

namespace {

using Bench = MonitorBench;

} // namespace

class ParameterMonitorTest : public QObject
{
    Q_OBJECT

private slots:
    void everyFrameCarriesTheWindowsName();
    void everyRowFillsWithinACycle_data();
    void everyRowFillsWithinACycle();
    void pollingNeverWrites_data();
    void pollingNeverWrites();
    void functionsShowOnBothPanels();
    void changedFunctionIsReadBack();
    void warningAndFaultReachThePanel();
    void resetGoesOutOnce();
    void recordIsReadOncePerVisit();
    void servoIsEnabledThroughItsInput();
    void servoButtonFollowsTheSource();
    void lostFunctionIsToldWithinACycle();
    void levelButtonOfTheEnableRowMovesTheServoButton();
    void withdrawnEnableShowsOnBothPanels();
    void readFillsTheFields();
    void everySlotRaisesItsRequest_data();
    void everySlotRaisesItsRequest();
    void everyFieldHasItsFrame_data();
    void everyFieldHasItsFrame();
};

void ParameterMonitorTest::everyFrameCarriesTheWindowsName()
{
    const Bench bench;
    QVERIFY(bench.waitForCycles(2));
    QCOMPARE(bench.peer.windowNames.count(QStringLiteral("Monitor")), bench.peer.frames.size());
}

void ParameterMonitorTest::everyRowFillsWithinACycle_data()
{
    QTest::addColumn<QByteArray>("language");
    QTest::addColumn<QStringList>("empty");
    QTest::newRow("English") << QByteArray("en_US")
                             << QStringList{"Pn-F55", "Pn-F63", "Pn-F65", "Pn-F67", "Pn-F69"};
    QTest::newRow("Chinese") << QByteArray("zh_CN") << QStringList();
}

void ParameterMonitorTest::everyRowFillsWithinACycle()
{
    QFETCH(QByteArray, language);
    QFETCH(QStringList, empty);
    const Bench bench(language.constData());
    QVERIFY(bench.waitForCycles(2));
    QStringList found;
    const QStringList codes = bench.driver->statusCodes();
    for (const QString &code : codes) {
        if (bench.driver->status(code).isEmpty())
            found << code;
    }
    QCOMPARE(found, empty);
}

void ParameterMonitorTest::pollingNeverWrites_data()
{
    QTest::addColumn<QByteArray>("language");
    QTest::newRow("English") << QByteArray("en_US");
    QTest::newRow("Chinese") << QByteArray("zh_CN");
}

void ParameterMonitorTest::pollingNeverWrites()
{
    QFETCH(QByteArray, language);
    Bench bench(language.constData());
    bench.window->show();
    for (int round = 0; round < 4; ++round) {
        for (int address = 0x2000; address < 0x2640; ++address)
            bench.peer.registers[address] = quint16((address * 7 + round * 11) % 40);
        QVERIFY(bench.waitForCycles(2));
    }
    QCOMPARE(bench.writes(), QStringList());
}

void ParameterMonitorTest::functionsShowOnBothPanels()
{
    Bench bench;
    bench.peer.registers[0x20D3] = 0x0001;
    bench.peer.registers[0x20E2] = 0x0030;
    bench.peer.registers[0x20E7] = 0x0009;
    bench.peer.registers[0x20F6] = 0x0013;
    bench.peer.registers[9717] = 0x8001;
    bench.peer.registers[9718] = 0x0002;
    QVERIFY(bench.waitForCycles(2));
    QCOMPARE(bench.driver->symbol("di", 1), QStringLiteral("SON"));
    QCOMPARE(bench.driver->symbol("di", 16), QStringLiteral("GHOM"));
    QCOMPARE(bench.driver->symbol("do", 1), QStringLiteral("SPA"));
    QCOMPARE(bench.driver->symbol("do", 16), QStringLiteral("HOM"));
    QCOMPARE(bench.driver->combo("diFunctionComboBox1")->currentIndex(), 1);
    QCOMPARE(bench.driver->combo("diFunctionComboBox16")->currentIndex(), 30);
    QCOMPARE(bench.driver->combo("doFunctionComboBox1")->currentIndex(), 9);
    QCOMPARE(bench.driver->combo("doFunctionComboBox16")->currentIndex(), 13);
    for (int row = 1; row <= 16; ++row) {
        QCOMPARE(bench.driver->isGreen("di", row), row == 1 || row == 16);
        QCOMPARE(bench.driver->isGreen("do", row), row == 2);
    }
    QCOMPARE(bench.driver->status("Pn-F25"), QStringLiteral("8001"));
}

void ParameterMonitorTest::changedFunctionIsReadBack()
{
    Bench bench;
    QVERIFY(bench.waitForCycles(1));
    bench.driver->choose("diFunctionComboBox5", 12);
    QVERIFY(bench.waitForWrites(1));
    QCOMPARE(bench.writes(), QStringList("0106E0D70012"));
    QVERIFY(bench.waitForCycles(2));
    QCOMPARE(bench.peer.registers.value(0x20D7), quint16(0x0012));
    QCOMPARE(bench.driver->combo("diFunctionComboBox5")->currentIndex(), 12);
    QCOMPARE(bench.driver->symbol("di", 5), QStringLiteral("CMOD3"));
    QCOMPARE(bench.writes().size(), 1);
}

void ParameterMonitorTest::warningAndFaultReachThePanel()
{
    Bench bench;
    bench.peer.registers[9719] = 1;
    bench.peer.registers[9720] = 3;
    QVERIFY(bench.waitForCycles(2));
    QCOMPARE(bench.driver->edit("alarmCurrentEdit")->text(), QStringLiteral("AL-001"));
    QCOMPARE(bench.driver->edit("faultCurrentEdit")->text(), QStringLiteral("Er-003"));
    QVERIFY(bench.driver->button("faultResetButton")->isEnabled());
    QCOMPARE(bench.driver->status("Pn-F28"), QStringLiteral("3"));
}

void ParameterMonitorTest::resetGoesOutOnce()
{
    Bench bench;
    bench.peer.registers[9720] = 3;
    QVERIFY(bench.waitForCycles(2));
    bench.driver->click("faultResetButton");
    QVERIFY(!bench.driver->button("faultResetButton")->isEnabled());
    QVERIFY(bench.waitForWrites(1));
    QCOMPARE(bench.writes(), QStringList("010623200001"));
    // The fault stays, so the reset is offered again.
    QVERIFY(bench.waitForCycles(2));
    QVERIFY(bench.driver->button("faultResetButton")->isEnabled());
    bench.peer.registers[9720] = 0;
    QVERIFY(bench.waitForCycles(2));
    QVERIFY(!bench.driver->button("faultResetButton")->isEnabled());
    QCOMPARE(bench.writes().size(), 1);
}

void ParameterMonitorTest::recordIsReadOncePerVisit()
{
    Bench bench;
    bench.peer.registers[0x2352] = 1;
    bench.peer.registers[0x2354] = 3;
    QVERIFY(bench.waitForCycles(1));
    const QByteArray read = wire::frame("01032352000A");
    bench.driver->tabs()->setCurrentIndex(1);
    QVERIFY(QTest::qWaitFor([&bench] { return !bench.driver->recordCodes().isEmpty(); }));
    QCOMPARE(bench.driver->recordCodes(), QStringList({"Er-001", "Er-003"}));
    QCOMPARE(bench.peer.frames.count(read), 1);
    bench.driver->tabs()->setCurrentIndex(0);
    QVERIFY(bench.waitForCycles(2));
    bench.peer.registers[0x2352] = 4;
    bench.driver->tabs()->setCurrentIndex(1);
    QVERIFY(QTest::qWaitFor([&bench] {
        return bench.driver->recordCodes() == QStringList({"Er-004", "Er-003"});
    }));
    QCOMPARE(bench.peer.frames.count(read), 2);
}

void ParameterMonitorTest::servoIsEnabledThroughItsInput()
{
    Bench bench;
    bench.peer.registers[0x20D5] = 1;
    bench.peer.registers[0x20D7] = 1;
    QVERIFY(bench.waitForCycles(2));
    bench.driver->choose("diSourceComboBox", 1);
    QVERIFY(bench.waitForWrites(1));
    bench.driver->click("enableButton");
    QVERIFY(bench.waitForWrites(2));
    bench.driver->click("enableButton");
    QVERIFY(bench.waitForWrites(3));
    // The lower of the two rows.
    QCOMPARE(bench.writes(), QStringList({"0106E0C8FFFF", "010620CA0004", "010620CA0000"}));
}

void ParameterMonitorTest::servoButtonFollowsTheSource()
{
    const Bench bench;
    QVERIFY(!bench.driver->button("enableButton")->isEnabled());
    bench.driver->choose("diSourceComboBox", 1);
    QVERIFY(bench.driver->button("enableButton")->isEnabled());
    bench.driver->choose("diSourceComboBox", 0);
    QVERIFY(!bench.driver->button("enableButton")->isEnabled());
    bench.driver->choose("doSourceComboBox", 1);
    QVERIFY(!bench.driver->button("enableButton")->isEnabled());
}

void ParameterMonitorTest::lostFunctionIsToldWithinACycle()
{
    Bench bench;
    ModalAnswers boxes;
    bench.peer.registers[0x20D5] = 1;
    QVERIFY(bench.waitForCycles(2));
    bench.driver->choose("diSourceComboBox", 1);
    bench.driver->choose("diFunctionComboBox3", 2);
    QVERIFY(bench.waitForWrites(2));
    QVERIFY(bench.waitForCycles(2));
    boxes.expect(QStringLiteral("Failed to enable the servo \nPlease select a DI to Enabled Servo"));
    bench.driver->click("enableButton");
    QVERIFY(boxes.isDone());
    QVERIFY(bench.waitForCycles(2));
    QCOMPARE(bench.writes(), QStringList({"0106E0C8FFFF", "0106E0D50002"}));
}

void ParameterMonitorTest::levelButtonOfTheEnableRowMovesTheServoButton()
{
    Bench bench;
    bench.peer.registers[0x20D5] = 1;
    QVERIFY(bench.waitForCycles(2));
    bench.driver->choose("diSourceComboBox", 1);
    bench.driver->click("diLevelButton3");
    QVERIFY(bench.driver->button("enableButton")->isChecked());
    bench.driver->click("diLevelButton3");
    QVERIFY(!bench.driver->button("enableButton")->isChecked());
    bench.driver->click("enableButton");
    QVERIFY(bench.driver->button("diLevelButton3")->isChecked());
}

// The peer has fallen silent: three seconds later the servo is not shown as enabled any more.
void ParameterMonitorTest::withdrawnEnableShowsOnBothPanels()
{
    Bench bench;
    bench.peer.registers[0x20D5] = 1;
    QVERIFY(bench.waitForCycles(2));
    bench.driver->choose("diSourceComboBox", 1);
    QVERIFY(bench.waitForWrites(1));
    bench.peer.intercept = [](const QByteArray &, const QByteArray &) { return QByteArray(); };
    bench.driver->click("enableButton");
    QVERIFY(bench.driver->button("enableButton")->isChecked());
    QTRY_VERIFY_WITH_TIMEOUT(!bench.driver->button("enableButton")->isChecked(), 4500);
    QVERIFY(!bench.driver->button("diLevelButton3")->isChecked());
}

void ParameterMonitorTest::readFillsTheFields()
{
    Bench bench;
    bench.peer.registers[0x2064] = 1;
    bench.peer.registers[0x2190] = 2;
    bench.peer.registers[0x2191] = 0xFFFF;
    bench.peer.registers[0x2192] = 0xFC18;
    bench.peer.registers[0x219B] = 50000;
    QVERIFY(bench.waitForCycles(1));
    bench.driver->click("readButton");
    QVERIFY(!bench.driver->button("readButton")->isEnabled());
    QVERIFY(QTest::qWaitFor([&bench] { return bench.driver->button("readButton")->isEnabled(); }));
    QCOMPARE(bench.driver->combo("methodComboBox")->currentIndex(), 1);
    QCOMPARE(bench.driver->combo("otherComboBox0")->currentIndex(), 2);
    QCOMPARE(bench.driver->edit("lineEdit3")->text(), QStringLiteral("-100.0"));
    QCOMPARE(bench.driver->edit("lineEdit6")->text(), QStringLiteral("5000.0"));
    QVERIFY(bench.waitForCycles(2));
    QCOMPARE(bench.writes(), QStringList());
}

void ParameterMonitorTest::everySlotRaisesItsRequest_data()
{
    QTest::addColumn<QByteArray>("slot");
    QTest::addColumn<QList<int>>("arguments");
    QTest::addColumn<QString>("frame");
    const auto row = [](const char *slot, const QList<int> &arguments, const char *frame) {
        QTest::newRow(slot) << QByteArray(slot) << arguments << QString::fromLatin1(frame);
    };
    row("handleDISourceChangeSlot", {1}, "0106E0C8FFFF");
    row("handleDOSourceChangeSlot", {0}, "0106E0C90000");
    row("handleDIfunctionChangeSlot", {4, 12}, "0106E0D70012");
    row("handleDOfunctionChangeSlot", {15, 9}, "0106E0F60009");
    row("handleDIBtnclickdSlot", {0x8001}, "010620CA8001");
    row("handleDOBtnclickdSlot", {0x8000}, "010620CB8000");
    row("handlemethodComboBoxChangedSlot", {2}, "0106E0640002");
    row("handlePn300ComboBoxChangedSlot", {4121}, "0106E12C4121");
    row("handleLineEditChangedSlot", {3, 1005}, "0110E191000204000003ED");
    row("handleotherComboBoxChangedSlot", {1, 2}, "0106E1F40002");
    row("handleFalutClearSlot", {}, "010623200001");
}

void ParameterMonitorTest::everySlotRaisesItsRequest()
{
    QFETCH(QByteArray, slot);
    QFETCH(QList<int>, arguments);
    QFETCH(QString, frame);
    const Bench bench;
    QVERIFY(bench.waitForCycles(1));
    const auto argument = [&arguments](int place) {
        return place < arguments.size() ? Q_ARG(int, arguments.at(place)) : QGenericArgument();
    };
    QVERIFY(QMetaObject::invokeMethod(bench.window, slot.constData(), argument(0), argument(1)));
    QVERIFY(bench.waitForWrites(1));
    QVERIFY(bench.waitForCycles(2));
    QCOMPARE(bench.writes(), QStringList(frame));
}

void ParameterMonitorTest::everyFieldHasItsFrame_data()
{
    QTest::addColumn<QString>("widget");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("frame");
    const auto row = [](const char *widget, const char *text, const char *frame) {
        QTest::newRow(widget) << QString::fromLatin1(widget) << QString::fromLatin1(text)
                              << QString::fromLatin1(frame);
    };
    row("lineEdit0", "-1", "0110E13A000204FFFFFFFF");
    row("lineEdit1", "65536", "0110E13000020400010000");
    row("lineEdit2", "1", "0110E13800020400000001");
    row("lineEdit3", "100.5", "0110E191000204000003ED");
    row("lineEdit4", "1", "0106E1930001");
    row("lineEdit5", "2", "0106E1940002");
    row("lineEdit6", "3000", "0106E19B7530");
    row("lineEdit7", "-1", "0106E1F5FFFF");
    row("lineEdit8", "1", "0106E1FF000A");
    row("lineEdit9", "2", "0106E2000014");
    row("methodComboBox", "2", "0106E0640002");
    row("pulseShapeComboBox", "2", "0106E12C0020");
    row("otherComboBox0", "1", "0106E1900001");
    row("otherComboBox1", "1", "0106E1F40001");
    row("otherComboBox2", "2", "0106E1FD0002");
    row("diSourceComboBox", "1", "0106E0C8FFFF");
    row("doSourceComboBox", "1", "0106E0C9FFFF");
    row("diFunctionComboBox16", "12", "0106E0E20012");
    row("doFunctionComboBox16", "12", "0106E0F60012");
}

void ParameterMonitorTest::everyFieldHasItsFrame()
{
    QFETCH(QString, widget);
    QFETCH(QString, text);
    QFETCH(QString, frame);
    const Bench bench;
    QVERIFY(bench.waitForCycles(1));
    if (QLineEdit *const edit = bench.driver->edit(widget)) {
        edit->setText(text);
        QTest::keyClick(edit, Qt::Key_Return);
    } else {
        bench.driver->choose(widget, text.toInt());
    }
    QVERIFY(bench.waitForWrites(1));
    QVERIFY(bench.waitForCycles(2));
    QCOMPARE(bench.writes(), QStringList(frame));
}

QTEST_MAIN(ParameterMonitorTest)

#include "tst_parameter_monitor.moc"
