// SPDX-License-Identifier: GPL-3.0-or-later
// The trial run closed in any of its stages on a line that misbehaves: the drive is as it was, register by
// register, working and stored; where a stream has taken an answer, the user is told.
#include "trialplace.h"

using namespace trialplace;

class TrialRunStageFaultsTest : public QObject
{
    Q_OBJECT

private slots:
    void closingInEachStageGivesTheDriveBack_data();
    void closingInEachStageGivesTheDriveBack();
    void unaskedStreamIsEndedOrTold_data();
    void unaskedStreamIsEndedOrTold();
};

void TrialRunStageFaultsTest::closingInEachStageGivesTheDriveBack_data()
{
    QTest::addColumn<QString>("stage");
    for (const char *stage :
         {"servo on", "held", "step three", "once", "moving", "continuous", "running", "typed", "back again"})
        QTest::newRow(stage) << QString::fromLatin1(stage);
}

// On a line with each fault in turn.
void TrialRunStageFaultsTest::closingInEachStageGivesTheDriveBack()
{
    QFETCH(QString, stage);
    ModalAnswers boxes;
    Workplace place;
    QVERIFY(connectTo(place, rs485));
    const kt500sim::RegisterSnapshot before = place.drive->registers();
    for (const LineFault &fault :
         QList<LineFault>{{}, {QStringLiteral("silence 200"), {}, {}}} + passingFaults()) {
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
        if (!fault.begin.isEmpty())
            strike(place, fault);
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
        close(window);
        QVERIFY2(runUntil([&] { return window.isNull(); }, 8000), qPrintable(fault.begin));
        place.drive->clearFaults();
        QVERIFY2(difference(place, before).isEmpty(),
                 qPrintable(fault.begin + QLatin1String(": ") + difference(place, before)));
        QVERIFY(standsStill(place));
    }
}

void TrialRunStageFaultsTest::unaskedStreamIsEndedOrTold_data()
{
    QTest::addColumn<int>("frame");
    QTest::addColumn<bool>("closing"); // the frame is one of the way back
    for (const int frame : {1, 5, 20, 31, 36, 41})
        QTest::addRow("entry, frame %d", frame) << frame << false;
    for (const int frame : {1, 2, 10, 20, 30})
        QTest::addRow("restore, frame %d", frame) << frame << true;
}

// The link ends a stream that nobody asked for. A chunk of it may have stood in for an answer, and then the
// sequence stands until the user closes once more and is told.
void TrialRunStageFaultsTest::unaskedStreamIsEndedOrTold()
{
    QFETCH(int, frame);
    QFETCH(bool, closing);
    ModalAnswers boxes;
    Workplace place;
    QVERIFY(connectTo(place, rs485));
    const kt500sim::RegisterSnapshot before = place.drive->registers();
    const QPointer<TrialRun> window = open(place);
    bool struck = false;
    const auto startStream = [&] {
        struck = true;
        place.drive->setFault(QStringLiteral("stream on"));
    };
    if (closing)
        QVERIFY(isReady(window));
    atFrame(window, frame, startStream);
    if (closing)
        close(window);
    QVERIFY(runUntil([&] { return struck; }, 8000));
    if (!closing)
        close(window);
    QVERIFY(runUntil([&] { return !place.drive->isStreaming(); }, 2000));
    if (runUntil([&] { return window.isNull(); }, 2000)) {
        QCOMPARE(difference(place, before), QString());
        return;
    }
    boxes.expect(QStringLiteral("初始参数回写失败！"));
    close(window);
    QVERIFY(runUntil([&] { return window.isNull(); }, 8000));
    QVERIFY(boxes.isDone());
    QCOMPARE(int(place.drive->readRegister(panelOffset).value_or(1)), 0);
}

QTEST_MAIN(TrialRunStageFaultsTest)
#include "tst_trialrun_stagefaults_endtoend.moc"
