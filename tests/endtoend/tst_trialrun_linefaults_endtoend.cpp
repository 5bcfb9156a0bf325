// SPDX-License-Identifier: GPL-3.0-or-later
// The trial run on a line that misbehaves: closed behind any frame and in any stage, it gives the drive back
// as it was, register by register, working and stored.
#include "support/modalanswers.h"
#include "trialplace.h"

using namespace trialplace;

namespace {

constexpr int entryFrames = 41;
constexpr int restoreFrames = 30;

const QStringList passingFaults{QStringLiteral("noreply 3"),  QStringLiteral("badcrc 3"),
                                QStringLiteral("split 2 5"),  QStringLiteral("late 1 70"),
                                QStringLiteral("stale 2"),    QStringLiteral("exception 2 4"),
                                QStringLiteral("silence 200")};

} // namespace

class TrialRunLineFaultsTest : public QObject
{
    Q_OBJECT

private slots:
    void closingBehindEachFrameGivesTheDriveBack_data();
    void closingBehindEachFrameGivesTheDriveBack();
    void faultInTheRestoreLeavesItWhole_data();
    void faultInTheRestoreLeavesItWhole();
    void closingInEachStageGivesTheDriveBack_data();
    void closingInEachStageGivesTheDriveBack();
};

void TrialRunLineFaultsTest::closingBehindEachFrameGivesTheDriveBack_data()
{
    QTest::addColumn<QString>("fault");
    QTest::newRow("good line") << QString();
    for (const QString &fault : passingFaults)
        QTest::newRow(qPrintable(fault)) << fault;
}

// With a fault, which strikes a few frames before the closing, each row takes another set of frames.
void TrialRunLineFaultsTest::closingBehindEachFrameGivesTheDriveBack()
{
    QFETCH(QString, fault);
    ModalAnswers boxes;
    Workplace place;
    QVERIFY(connectTo(place));
    place.drive->writeRegister(panelOffset, 0x0802);
    const kt500sim::RegisterSnapshot before = place.drive->registers();
    const int step = fault.isEmpty() ? 1 : 4;
    const int first = fault.isEmpty() ? 1 : 1 + passingFaults.indexOf(fault) % step;
    for (int frame = first; frame <= entryFrames; frame += step) {
        const QPointer<TrialRun> window = open(place);
        QVERIFY(window);
        if (!fault.isEmpty())
            atFrame(window, frame, [&] { place.drive->setFault(fault); });
        bool asked = false;
        atFrame(window, frame + (fault.isEmpty() ? 0 : 2), [&] {
            asked = true;
            QTimer::singleShot(0, window.data(), [window] { window->parentWidget()->close(); });
        });
        QVERIFY(runUntil([&] { return asked || TrialRunDriver(window).servoOn()->isEnabled(); }, 20000));
        if (!asked)
            window->parentWidget()->close();
        QVERIFY2(runUntil([&] { return window.isNull(); }, 8000), qPrintable(QString::number(frame)));
        place.drive->clearFaults();
        QVERIFY2(difference(place, before).isEmpty(),
                 qPrintable(QStringLiteral("%1: %2").arg(frame).arg(difference(place, before))));
    }
}

void TrialRunLineFaultsTest::faultInTheRestoreLeavesItWhole_data()
{
    QTest::addColumn<QString>("fault");
    for (const QString &fault : passingFaults)
        QTest::newRow(qPrintable(fault)) << fault;
}

void TrialRunLineFaultsTest::faultInTheRestoreLeavesItWhole()
{
    QFETCH(QString, fault);
    ModalAnswers boxes;
    Workplace place;
    QVERIFY(connectTo(place));
    const kt500sim::RegisterSnapshot before = place.drive->registers();
    for (int frame = 1 + passingFaults.indexOf(fault) % 4; frame <= restoreFrames; frame += 4) {
        const QPointer<TrialRun> window = open(place);
        QVERIFY(isReady(window));
        const TrialRunDriver drive(window);
        TrialRunDriver::type(drive.jogTable(), 0, QStringLiteral("123.4"));
        TrialRunDriver::type(drive.jogTable(), 3, QStringLiteral("12"));
        atFrame(window, frame, [&] { place.drive->setFault(fault); });
        window->parentWidget()->close();
        QVERIFY2(runUntil([&] { return window.isNull(); }, 8000), qPrintable(QString::number(frame)));
        place.drive->clearFaults();
        QVERIFY2(difference(place, before).isEmpty(),
                 qPrintable(QStringLiteral("%1: %2").arg(frame).arg(difference(place, before))));
    }
}

void TrialRunLineFaultsTest::closingInEachStageGivesTheDriveBack_data()
{
    QTest::addColumn<QString>("stage");
    for (const char *stage :
         {"servo on", "held", "step three", "once", "moving", "continuous", "running", "typed", "back again"})
        QTest::newRow(stage) << QString::fromLatin1(stage);
}

// On a line with each fault in turn.
void TrialRunLineFaultsTest::closingInEachStageGivesTheDriveBack()
{
    QFETCH(QString, stage);
    ModalAnswers boxes;
    Workplace place;
    QVERIFY(connectTo(place));
    const kt500sim::RegisterSnapshot before = place.drive->registers();
    for (const QString &fault : QStringList{QString()} + passingFaults) {
        const QPointer<TrialRun> window = open(place);
        QVERIFY(isReady(window));
        const TrialRunDriver drive(window);
        if (stage == QLatin1String("servo on") || stage == QLatin1String("held"))
            TrialRunDriver::click(drive.servoOn());
        else
            TrialRunDriver::click(drive.positionRun());
        const bool isOnce = stage == QLatin1String("once") || stage == QLatin1String("moving");
        if (isOnce)
            TrialRunDriver::click(drive.once());
        else if (!drive.servoOff()->isEnabled() && stage != QLatin1String("step three"))
            TrialRunDriver::click(drive.continuous());
        const QTableWidget *const table = drive.positionTable();
        if (isOnce || drive.continuous()->isChecked())
            QVERIFY(runUntil([=] { return !TrialRunDriver::cell(table, 6).isEmpty(); }, 5000));
        if (!fault.isEmpty())
            place.drive->setFault(fault);
        if (stage == QLatin1String("held"))
            TrialRunDriver::hold(drive.jogForward());
        else if (stage == QLatin1String("moving"))
            TrialRunDriver::hold(drive.moveForward());
        else if (stage == QLatin1String("running"))
            TrialRunDriver::click(drive.runButton("Run"));
        else if (stage == QLatin1String("typed"))
            TrialRunDriver::type(drive.positionTable(), 4, QStringLiteral("100"));
        else if (stage == QLatin1String("back again"))
            TrialRunDriver::click(drive.jogRun());
        window->parentWidget()->close();
        QVERIFY2(runUntil([&] { return window.isNull(); }, 8000), qPrintable(fault));
        place.drive->clearFaults();
        QVERIFY2(difference(place, before).isEmpty(),
                 qPrintable(fault + QLatin1String(": ") + difference(place, before)));
        QVERIFY(standsStill(place));
    }
}

QTEST_MAIN(TrialRunLineFaultsTest)
#include "tst_trialrun_linefaults_endtoend.moc"
