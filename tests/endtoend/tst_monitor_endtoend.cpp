// SPDX-License-Identifier: GPL-3.0-or-later
// The monitor in the main window at a simulated drive with a moving motor, in both languages, and on a line
// that misbehaves.
#include "monitor/parameter_monitor.h"
#include "shell/mainwindow.h"
#include "support/modalanswers.h"
#include "support/monitordriver.h"
#include "support/rununtil.h"
#include "support/workplace.h"

#include <QAction>
#include <QComboBox>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPointer>
#include <QPushButton>
#include <QTabWidget>
#include <QTableWidget>
#include <QTest>
#include <QWheelEvent>

#include <cmath>
#include <functional>

namespace {

const QString usb = QStringLiteral("USB");
const QString rs485 = QStringLiteral("115200(485)");
const QString failed = QStringLiteral("Fail to connect to the device via \nRead Modbus Failed!");
constexpr double revolutionsPerMinute = 60 / (2 * M_PI);

Parameter_Monitor *openMonitor(const Workplace &place)
{
    Workplace::clickAction(place.window(), "actionParameter_Monitor");
    const QList<Parameter_Monitor *> windows = place.window()->findChildren<Parameter_Monitor *>();
    return windows.isEmpty() ? nullptr : windows.last();
}

Parameter_Monitor *openConnected(Workplace *place, const QString &speed)
{
    place->connectTo(speed);
    if (!runUntil([place] { return place->isShownOnline(); }, 5000))
        return nullptr;
    return openMonitor(*place);
}

bool isPair(int offset)
{
    static const QList<int> pairs{1507, 1509, 1511, 1513, 1515, 1518, 1520,
                                  1529, 1540, 1542, 1544, 1553, 1581};
    return pairs.contains(offset);
}

// Which rows of the status table are no polled ones.
bool isPolled(const QString &code)
{
    static const QStringList others{"Pn-F55", "Pn-F63", "Pn-F65", "Pn-F67", "Pn-F69"};
    return !others.contains(code);
}

// What a row should read, told from the drive's own registers.
QString expectedStatus(kt500sim::SimulatedDrive *drive, const QString &code, const QString &unit)
{
    const int offset = 1500 + code.rightRef(2).toInt();
    const quint16 word = drive->readRegister(offset).value_or(0);
    if (offset == 1525 || offset == 1526)
        return QStringLiteral("%1").arg(word, 4, 16, QLatin1Char('0')).toUpper();
    double number = offset == 1580 ? word : qint16(word);
    if (isPair(offset))
        number = drive->readPair(offset).value_or(0);
    if (!unit.contains(QLatin1Char('.')))
        return QString::number(number, 'f', 0);
    return QString::number(number / (unit.startsWith(QLatin1String("0.01")) ? 100 : 10), 'f', 2);
}

// The first thing on the screen that is not what the drive holds; empty when all is.
QString firstDifference(kt500sim::SimulatedDrive *drive, const MonitorDriver &monitor)
{
    const QTableWidget *const table = monitor.table("statusTable");
    for (int row = 0; row < table->rowCount(); ++row) {
        const QString code = table->item(row, 0)->text();
        if (!isPolled(code))
            continue;
        const QString wanted = expectedStatus(drive, code, table->item(row, 2)->text());
        const QString shown = table->item(row, 3)->text();
        // A zero may carry the sign of what was rounded to it.
        if (shown != wanted && shown.toDouble() != wanted.toDouble())
            return QStringLiteral("%1: %2 instead of %3").arg(code, shown, wanted);
        if (shown.isEmpty())
            return code + QLatin1String(" is empty");
    }
    for (const char *half : {"di", "do"}) {
        const bool isInput = half[1] == 'i';
        const quint16 levels = drive->readRegister(isInput ? 1525 : 1526).value_or(0);
        for (int row = 1; row <= 16; ++row) {
            const QString name = QString::fromLatin1(half) + QString::number(row);
            if (monitor.isGreen(QLatin1String(half), row) != bool(levels >> (row - 1) & 1))
                return name + QLatin1String(" has the wrong dot");
            const quint16 plan = drive->readRegister((isInput ? 210 : 230) + row).value_or(0) & 0xFF;
            const QComboBox *const combo =
                monitor.combo(QStringLiteral("%1FunctionComboBox%2").arg(QLatin1String(half)).arg(row));
            bool isNumber = false;
            int index = QString::number(plan, 16).toInt(&isNumber);
            if (!isNumber || index >= combo->count())
                index = -1;
            if (combo->currentIndex() != index)
                return name + QLatin1String(" has the wrong function");
        }
    }
    return QString();
}

// Waits until the screen says what the drive holds, and goes on saying so.
bool showsTheDrive(kt500sim::SimulatedDrive *drive, const MonitorDriver &monitor, int limit = 15000)
{
    const bool isSo =
        runUntil([drive, &monitor] { return firstDifference(drive, monitor).isEmpty(); }, limit);
    if (!isSo)
        qWarning("%s", qPrintable(firstDifference(drive, monitor)));
    return isSo;
}

// Other values in every status register than were there, on a model that stands still.
void changeRegisters(kt500sim::SimulatedDrive *drive, int seed)
{
    for (int offset = 1500; offset <= 1585; ++offset) {
        if (offset != 1527 && offset != 1528)
            drive->writeRegister(offset, quint16(offset * 31 + seed * 977));
    }
    for (int row = 1; row <= 16; ++row) {
        const int function = (row * 3 + seed) % 14;
        const quint16 plan = quint16(function / 10 << 4 | function % 10);
        drive->writeRegister(210 + row, plan);
        drive->writeRegister(230 + row, plan);
    }
}

} // namespace

class MonitorEndToEndTest : public QObject
{
    Q_OBJECT

private slots:
    void everyValueIsTheDrives_data();
    void everyValueIsTheDrives();
    void servoRunsFromThePanel_data();
    void servoRunsFromThePanel();
    void inputAndOutputAreForced_data();
    void inputAndOutputAreForced();
    void faultIsToldResetAndRecorded_data();
    void faultIsToldResetAndRecorded();
    void oneWindowForBothEntries();
    void wheelChangesNoSetting();
    void closedAndReopenedInMidCycle();
    void passingFaultLeavesEveryValueRight_data();
    void passingFaultLeavesEveryValueRight();
    void lostLinkIsTakenUpAgain_data();
    void lostLinkIsTakenUpAgain();
    void enablePressedWithoutALinkNeverLeaves();
    void tabThereAndBackKeepsEveryValueRight();
};

static void addLanguages()
{
    QTest::addColumn<QString>("language");
    QTest::newRow("English") << "en_US";
    QTest::newRow("Chinese") << "zh_CN";
}

void MonitorEndToEndTest::everyValueIsTheDrives_data()
{
    addLanguages();
}

void MonitorEndToEndTest::everyValueIsTheDrives()
{
    QFETCH(QString, language);
    Workplace place(language);
    place.drive->freeze();
    changeRegisters(place.drive.get(), 1);
    const Parameter_Monitor *const window = openConnected(&place, usb);
    QVERIFY(window);
    const MonitorDriver monitor(window);
    QVERIFY(showsTheDrive(place.drive.get(), monitor));
    changeRegisters(place.drive.get(), 2);
    QVERIFY(showsTheDrive(place.drive.get(), monitor));
}

void MonitorEndToEndTest::servoRunsFromThePanel_data()
{
    addLanguages();
}

void MonitorEndToEndTest::servoRunsFromThePanel()
{
    QFETCH(QString, language);
    Workplace place(language);
    const Parameter_Monitor *const window = openConnected(&place, usb);
    QVERIFY(window);
    const MonitorDriver monitor(window);
    kt500sim::SimulatedDrive *const drive = place.drive.get();
    QTRY_COMPARE(monitor.combo("diFunctionComboBox1")->currentIndex(), 1);
    monitor.choose("diSourceComboBox", 1);
    QTRY_COMPARE(*drive->readRegister(200), quint16(0xFFFF));
    monitor.choose("methodComboBox", 1);
    QTRY_COMPARE(*drive->readRegister(100), quint16(1));
    monitor.type("lineEdit3", "300.5");
    QTRY_COMPARE(*drive->readPair(401), 3005);
    QVERIFY(!drive->state().energised);

    monitor.click("enableButton");
    QTRY_VERIFY(drive->state().energised);
    QTRY_VERIFY(std::fabs(drive->state().speed * revolutionsPerMinute - 300.5) < 10);
    QTRY_VERIFY(std::abs(monitor.status("Pn-F00").toInt() - 300) < 15);
    QTRY_COMPARE(monitor.status("Pn-F25"), QStringLiteral("0001"));
    QTRY_VERIFY(monitor.isGreen("di", 1));
    const QString before = monitor.status("Pn-F11");
    QTRY_VERIFY(monitor.status("Pn-F11") != before);

    monitor.click("enableButton");
    QTRY_VERIFY(!drive->state().energised);
    QTRY_COMPARE(monitor.status("Pn-F25"), QStringLiteral("0000"));
    QVERIFY(!monitor.isGreen("di", 1));
    QTRY_VERIFY_WITH_TIMEOUT(std::abs(monitor.status("Pn-F00").toInt()) <= 1, 15000);
    // Stored for the next power-on, but for the level.
    QCOMPARE(*drive->readRegister(100, kt500sim::RegisterCopy::Stored), quint16(1));
    QCOMPARE(*drive->readRegister(202, kt500sim::RegisterCopy::Stored), quint16(0));
}

void MonitorEndToEndTest::inputAndOutputAreForced_data()
{
    addLanguages();
}

void MonitorEndToEndTest::inputAndOutputAreForced()
{
    QFETCH(QString, language);
    Workplace place(language);
    const Parameter_Monitor *const window = openConnected(&place, usb);
    QVERIFY(window);
    const MonitorDriver monitor(window);
    kt500sim::SimulatedDrive *const drive = place.drive.get();
    monitor.choose("diSourceComboBox", 1);
    monitor.choose("doSourceComboBox", 1);
    QTRY_COMPARE(*drive->readRegister(200), quint16(0xFFFF));
    QTRY_COMPARE(*drive->readRegister(201), quint16(0xFFFF));
    monitor.click("diLevelButton16");
    QTRY_COMPARE(*drive->readRegister(202), quint16(0x8000));
    QTRY_COMPARE(monitor.status("Pn-F25"), QStringLiteral("8000"));
    QTRY_VERIFY(monitor.isGreen("di", 16));
    monitor.click("doLevelButton5");
    QTRY_COMPARE(*drive->readRegister(203), quint16(0x0010));
    QTRY_COMPARE(monitor.status("Pn-F26"), QStringLiteral("0010"));
    for (int row = 1; row <= 16; ++row)
        QTRY_COMPARE(monitor.isGreen("do", row), row == 5);
    monitor.click("diLevelButton16");
    monitor.click("doLevelButton5");
    QTRY_COMPARE(monitor.status("Pn-F25"), QStringLiteral("0000"));
    QTRY_COMPARE(monitor.status("Pn-F26"), QStringLiteral("0000"));
}

void MonitorEndToEndTest::faultIsToldResetAndRecorded_data()
{
    addLanguages();
}

void MonitorEndToEndTest::faultIsToldResetAndRecorded()
{
    QFETCH(QString, language);
    Workplace place(language);
    const Parameter_Monitor *const window = openConnected(&place, usb);
    QVERIFY(window);
    const MonitorDriver monitor(window);
    kt500sim::SimulatedDrive *const drive = place.drive.get();
    QTRY_COMPARE(monitor.status("Pn-F28"), QStringLiteral("0"));
    QVERIFY(!monitor.button("faultResetButton")->isEnabled());
    QVERIFY(drive->raiseFault(27));
    QTRY_COMPARE(monitor.edit("faultCurrentEdit")->text(), QStringLiteral("Er-027"));
    QVERIFY(!monitor.edit("faultNameEdit")->text().isEmpty());
    QVERIFY(!monitor.edit("faultCauseEdit")->text().isEmpty());
    QVERIFY(monitor.button("faultResetButton")->isEnabled());
    QVERIFY(monitor.button("faultResetButton")->styleSheet().contains(QLatin1String("rgb(255, 0, 0)")));
    monitor.click("faultResetButton");
    QTRY_COMPARE(drive->state().fault, 0);
    QTRY_COMPARE(monitor.edit("faultCurrentEdit")->text(), QString());
    QVERIFY(!monitor.button("faultResetButton")->isEnabled());
    QVERIFY(drive->raiseFault(11));
    QTRY_COMPARE(monitor.edit("faultCurrentEdit")->text(), QStringLiteral("Er-011"));
    monitor.tabs()->setCurrentIndex(1);
    QTRY_COMPARE(monitor.recordCodes(), QStringList({"Er-011", "Er-027"}));
    monitor.tabs()->setCurrentIndex(0);
    drive->setWarning(10, true);
    QTRY_COMPARE(monitor.edit("alarmCurrentEdit")->text(), QStringLiteral("AL-010"));
    QCOMPARE(monitor.edit("faultCurrentEdit")->text(), QStringLiteral("Er-011"));
}

void MonitorEndToEndTest::oneWindowForBothEntries()
{
    const Workplace place;
    Parameter_Monitor *const window = openMonitor(place);
    QVERIFY(window);
    place.action("actionStatus_Monitor")->trigger();
    place.action("actionParameter_Monitor")->trigger();
    auto *const area = place.window()->findChild<QMdiArea *>();
    QCOMPARE(area->subWindowList().size(), 1);
    const QMdiSubWindow *const sub = area->subWindowList().first();
    QCOMPARE(sub->widget(), window);
    QCOMPARE(sub->pos(), QPoint(0, 0));
    QCOMPARE(sub->size(), QSize(area->width() - 50, int(area->height() * 0.99)));
}

void MonitorEndToEndTest::wheelChangesNoSetting()
{
    const Workplace place;
    const Parameter_Monitor *const window = openMonitor(place);
    QVERIFY(window);
    const QList<QComboBox *> boxes = window->findChildren<QComboBox *>();
    QCOMPARE(boxes.size(), 2 + 32 + 8);
    for (QComboBox *box : boxes) {
        const int before = box->currentIndex();
        const QPointF centre = box->rect().center();
        QWheelEvent wheel(centre, box->mapToGlobal(centre.toPoint()), QPoint(), QPoint(0, -120), Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(box, &wheel);
        QCOMPARE(box->currentIndex(), before);
    }
}

void MonitorEndToEndTest::closedAndReopenedInMidCycle()
{
    Workplace place;
    place.drive->freeze();
    changeRegisters(place.drive.get(), 3);
    QPointer<Parameter_Monitor> window = openConnected(&place, rs485);
    QVERIFY(window);
    for (int round = 0; round < 5; ++round) {
        place.drive->resetCounters();
        // Somewhere within a cycle, each time elsewhere.
        QVERIFY(runUntil([&] { return int(place.drive->counters().requests) >= 3 + 2 * round; }, 5000));
        place.window()->findChild<QMdiArea *>()->subWindowList().first()->close();
        QVERIFY(runUntil([&window] { return window.isNull(); }, 2000));
        window = openMonitor(place);
        QVERIFY(window);
    }
    QVERIFY(showsTheDrive(place.drive.get(), MonitorDriver(window)));
    changeRegisters(place.drive.get(), 4);
    QVERIFY(showsTheDrive(place.drive.get(), MonitorDriver(window)));
}

void MonitorEndToEndTest::passingFaultLeavesEveryValueRight_data()
{
    QTest::addColumn<QString>("fault");
    QTest::newRow("replies lost") << "noreply 3";
    QTest::newRow("bad checksums") << "badcrc 5";
    QTest::newRow("replies in two pieces") << "split 4 5";
    QTest::newRow("late replies") << "late 3 70";
    QTest::newRow("stale bytes in front") << "stale 3";
    QTest::newRow("requests refused") << "exception 2 7";
    QTest::newRow("silent for a while") << "silence 300";
    QTest::newRow("garbage") << "garbage on";
    QTest::newRow("a stream that nobody asked for") << "stream on";
}

void MonitorEndToEndTest::passingFaultLeavesEveryValueRight()
{
    QFETCH(QString, fault);
    ModalAnswers boxes;
    boxes.allow(failed);
    Workplace place;
    place.drive->freeze();
    changeRegisters(place.drive.get(), 5);
    const Parameter_Monitor *const window = openConnected(&place, rs485);
    QVERIFY(window);
    const MonitorDriver monitor(window);
    QVERIFY(showsTheDrive(place.drive.get(), monitor));
    QVERIFY(place.drive->setFault(fault));
    changeRegisters(place.drive.get(), 6);
    QElapsedTimer clock;
    clock.start();
    QVERIFY(runUntil([&clock] { return clock.elapsed() > 700; }, 2000));
    place.drive->clearFaults();
    QVERIFY(showsTheDrive(place.drive.get(), monitor));
    changeRegisters(place.drive.get(), 7);
    QVERIFY(showsTheDrive(place.drive.get(), monitor));
}

void MonitorEndToEndTest::lostLinkIsTakenUpAgain_data()
{
    QTest::addColumn<QString>("fault");
    QTest::addColumn<QString>("speed");
    QTest::newRow("silence") << "silence 3000" << rs485;
    QTest::newRow("silence on USB") << "silence 3000" << usb;
    QTest::newRow("hang-up") << "hangup 2500" << rs485;
}

void MonitorEndToEndTest::lostLinkIsTakenUpAgain()
{
    QFETCH(QString, fault);
    QFETCH(QString, speed);
    ModalAnswers boxes;
    boxes.expectPassing(failed);
    Workplace place;
    place.drive->freeze();
    changeRegisters(place.drive.get(), 8);
    const Parameter_Monitor *const window = openConnected(&place, speed);
    QVERIFY(window);
    const MonitorDriver monitor(window);
    QVERIFY(showsTheDrive(place.drive.get(), monitor));
    QVERIFY(place.drive->setFault(fault));
    QVERIFY(runUntil([&place] { return !place.isShownOnline(); }, 10000));
    changeRegisters(place.drive.get(), 9);
    QVERIFY(runUntil([&place] { return place.isShownOnline(); }, 15000));
    QVERIFY(showsTheDrive(place.drive.get(), monitor));
    QVERIFY(boxes.isDone());
}

// What was pressed while the drive was away is not done once it is back, and the screen says so.
void MonitorEndToEndTest::enablePressedWithoutALinkNeverLeaves()
{
    ModalAnswers boxes;
    boxes.expectPassing(failed);
    Workplace place;
    const Parameter_Monitor *const window = openConnected(&place, rs485);
    QVERIFY(window);
    const MonitorDriver monitor(window);
    kt500sim::SimulatedDrive *const drive = place.drive.get();
    QTRY_COMPARE(monitor.combo("diFunctionComboBox1")->currentIndex(), 1);
    monitor.choose("diSourceComboBox", 1);
    QTRY_COMPARE(*drive->readRegister(200), quint16(0xFFFF));
    QVERIFY(drive->setFault(QStringLiteral("silence 6000")));
    QVERIFY(runUntil([&place] { return !place.isShownOnline(); }, 10000));
    monitor.click("enableButton");
    QVERIFY(monitor.button("enableButton")->isChecked());
    QTRY_VERIFY_WITH_TIMEOUT(!monitor.button("enableButton")->isChecked(), 5000);
    QVERIFY(!monitor.button("diLevelButton1")->isChecked());
    QVERIFY(runUntil([&place] { return place.isShownOnline(); }, 15000));
    drive->writeRegister(401, 0);
    drive->writeRegister(402, 777);
    monitor.choose("methodComboBox", 1);
    QTRY_COMPARE_WITH_TIMEOUT(*drive->readRegister(100), quint16(1), 10000);
    QCOMPARE(*drive->readRegister(202), quint16(0));
    QVERIFY(!drive->state().energised);
    QVERIFY(boxes.isDone());
}

void MonitorEndToEndTest::tabThereAndBackKeepsEveryValueRight()
{
    Workplace place;
    place.drive->freeze();
    changeRegisters(place.drive.get(), 10);
    const Parameter_Monitor *const window = openConnected(&place, rs485);
    QVERIFY(window);
    const MonitorDriver monitor(window);
    for (int round = 0; round < 10; ++round) {
        place.drive->resetCounters();
        QVERIFY(runUntil([&] { return int(place.drive->counters().requests) >= 1 + round; }, 5000));
        monitor.tabs()->setCurrentIndex(1);
        monitor.tabs()->setCurrentIndex(0);
    }
    QVERIFY(showsTheDrive(place.drive.get(), monitor));
    // One chain, not several: a cycle and its pause make some fifty requests a second at most.
    place.drive->resetCounters();
    QElapsedTimer clock;
    clock.start();
    QVERIFY(runUntil([&clock] { return clock.elapsed() > 1000; }, 2000));
    QVERIFY(place.drive->counters().requests < 90);
    changeRegisters(place.drive.get(), 11);
    QVERIFY(showsTheDrive(place.drive.get(), monitor));
}

QTEST_MAIN(MonitorEndToEndTest)

#include "tst_monitor_endtoend.moc"
