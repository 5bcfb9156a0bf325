// SPDX-License-Identifier: GPL-3.0-or-later
// The monitor in the main window on a line that misbehaves: what is on the screen afterwards is the drive's,
// and nothing was sent that nobody asked for.
#include "endtoend/monitorplace.h"
#include "support/modalanswers.h"

#include <QElapsedTimer>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPointer>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>

namespace {

using namespace monitorplace;

const QString failed = QStringLiteral("Fail to connect to the device via \nRead Modbus Failed!");

} // namespace

static void addFaults()
{
    QTest::addColumn<QString>("fault");
    QTest::newRow("replies lost") << "noreply 3";
    QTest::newRow("bad checksums") << "badcrc 5";
    QTest::newRow("replies in two pieces") << "split 4 5";
    QTest::newRow("replies in three pieces") << "splinter 4 5";
    QTest::newRow("late replies") << "late 3 70";
    QTest::newRow("stale bytes in front") << "stale 3";
    QTest::newRow("requests refused") << "exception 2 7";
    QTest::newRow("silent for a while") << "silence 300";
    QTest::newRow("garbage") << "garbage on";
    QTest::newRow("a stream that nobody asked for") << "stream on";
}

class MonitorLineFaultsEndToEndTest : public QObject
{
    Q_OBJECT

private slots:
    void closedAndReopenedInMidCycle();
    void passingFaultLeavesEveryValueRight_data();
    void passingFaultLeavesEveryValueRight();
    void passingFaultLeavesEveryFieldRight_data();
    void passingFaultLeavesEveryFieldRight();
    void lostLinkIsTakenUpAgain_data();
    void lostLinkIsTakenUpAgain();
    void enablePressedWithoutALinkNeverLeaves();
    void tabThereAndBackKeepsEveryValueRight();
};

void MonitorLineFaultsEndToEndTest::closedAndReopenedInMidCycle()
{
    Workplace place;
    place.drive->freeze();
    changeState(place.drive.get(), 3);
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
    changeState(place.drive.get(), 4);
    QVERIFY(showsTheDrive(place.drive.get(), MonitorDriver(window)));
}

void MonitorLineFaultsEndToEndTest::passingFaultLeavesEveryValueRight_data()
{
    addFaults();
}

void MonitorLineFaultsEndToEndTest::passingFaultLeavesEveryValueRight()
{
    QFETCH(QString, fault);
    ModalAnswers boxes;
    boxes.allow(failed);
    Workplace place;
    place.drive->freeze();
    changeState(place.drive.get(), 5);
    const Parameter_Monitor *const window = openConnected(&place, rs485);
    QVERIFY(window);
    const MonitorDriver monitor(window);
    QVERIFY(showsTheDrive(place.drive.get(), monitor));
    QVERIFY(place.drive->setFault(fault));
    changeState(place.drive.get(), 6);
    QElapsedTimer clock;
    clock.start();
    QVERIFY(runUntil([&clock] { return clock.elapsed() > 700; }, 2000));
    place.drive->clearFaults();
    QVERIFY(showsTheDrive(place.drive.get(), monitor));
    changeState(place.drive.get(), 7);
    QVERIFY(showsTheDrive(place.drive.get(), monitor));
}

void MonitorLineFaultsEndToEndTest::passingFaultLeavesEveryFieldRight_data()
{
    addFaults();
}

// The run parameters are read while the line misbehaves, and once more when it is sound again.
void MonitorLineFaultsEndToEndTest::passingFaultLeavesEveryFieldRight()
{
    QFETCH(QString, fault);
    ModalAnswers boxes;
    boxes.allow(failed);
    Workplace place;
    kt500sim::SimulatedDrive *const drive = place.drive.get();
    drive->freeze();
    drive->writeRegister(100, 1);
    drive->writeRegister(400, 2);
    drive->writePair(401, -1005);
    drive->writeRegister(403, 311);
    drive->writeRegister(404, 422);
    drive->writeRegister(411, 43215);
    const Parameter_Monitor *const window = openConnected(&place, rs485);
    QVERIFY(window);
    const MonitorDriver monitor(window);
    const auto fields = [&monitor] {
        QStringList texts{monitor.combo("methodComboBox")->currentText(),
                          monitor.combo("otherComboBox0")->currentText()};
        for (const char *edit : {"lineEdit3", "lineEdit4", "lineEdit5", "lineEdit6"})
            texts << monitor.edit(QLatin1String(edit))->text();
        return texts;
    };
    const QStringList before = fields();
    const QStringList held{"1:Speed Mode", "2:Internal multi-speed", "-100.5", "311", "422", "4321.5"};
    const QPushButton *const read = monitor.button("readButton");
    QVERIFY(drive->setFault(fault));
    monitor.click("readButton");
    runUntil([read] { return read->isEnabled(); }, 3000);
    drive->clearFaults();
    QVERIFY(runUntil([read] { return read->isEnabled(); }, 15000));
    // A value that was refused is an empty text, never another register's.
    const QStringList after = fields();
    for (int i = 0; i < held.size(); ++i)
        QVERIFY2(after.at(i) == held.at(i) || after.at(i) == before.at(i) || after.at(i).isEmpty(),
                 qPrintable(after.at(i)));
    monitor.click("readButton");
    QVERIFY(runUntil([read] { return read->isEnabled(); }, 15000));
    QCOMPARE(fields(), held);
}

void MonitorLineFaultsEndToEndTest::lostLinkIsTakenUpAgain_data()
{
    QTest::addColumn<QString>("fault");
    QTest::addColumn<QString>("speed");
    QTest::newRow("silence") << "silence 3000" << rs485;
    QTest::newRow("silence on USB") << "silence 3000" << usb;
    QTest::newRow("hang-up") << "hangup 2500" << rs485;
}

void MonitorLineFaultsEndToEndTest::lostLinkIsTakenUpAgain()
{
    QFETCH(QString, fault);
    QFETCH(QString, speed);
    ModalAnswers boxes;
    boxes.expectPassing(failed);
    Workplace place;
    place.drive->freeze();
    changeState(place.drive.get(), 8);
    const Parameter_Monitor *const window = openConnected(&place, speed);
    QVERIFY(window);
    const MonitorDriver monitor(window);
    QVERIFY(showsTheDrive(place.drive.get(), monitor));
    QVERIFY(place.drive->setFault(fault));
    QVERIFY(runUntil([&place] { return !place.isShownOnline(); }, 10000));
    changeState(place.drive.get(), 9);
    QVERIFY(runUntil([&place] { return place.isShownOnline(); }, 15000));
    QVERIFY(showsTheDrive(place.drive.get(), monitor));
    QVERIFY(boxes.isDone());
}

// What was pressed while the drive was away is not done once it is back, and the screen says so.
void MonitorLineFaultsEndToEndTest::enablePressedWithoutALinkNeverLeaves()
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

void MonitorLineFaultsEndToEndTest::tabThereAndBackKeepsEveryValueRight()
{
    Workplace place;
    place.drive->freeze();
    changeState(place.drive.get(), 10);
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
    changeState(place.drive.get(), 11);
    QVERIFY(showsTheDrive(place.drive.get(), monitor));
}

QTEST_MAIN(MonitorLineFaultsEndToEndTest)

#include "tst_monitor_linefaults_endtoend.moc"
