// SPDX-License-Identifier: GPL-3.0-or-later
// The trial run closed behind any frame of its entry, on a line that misbehaves from that frame on: it gives
// the drive back as it was, register by register, working and stored.
#include "support/modalanswers.h"
#include "trialplace.h"

using namespace trialplace;

class TrialRunLineFaultsTest : public QObject
{
    Q_OBJECT

private slots:
    void closingBehindEachFrameGivesTheDriveBack_data();
    void closingBehindEachFrameGivesTheDriveBack();
};

void TrialRunLineFaultsTest::closingBehindEachFrameGivesTheDriveBack_data()
{
    addFaultRows(true);
}

// The fault begins with the frame, and strikes the first frames of the way back too.
void TrialRunLineFaultsTest::closingBehindEachFrameGivesTheDriveBack()
{
    QFETCH(int, fault);
    ModalAnswers boxes;
    Workplace place;
    QVERIFY(connectTo(place, QStringLiteral("USB")));
    place.drive->writeRegister(panelOffset, 0x0802);
    const kt500sim::RegisterSnapshot before = place.drive->registers();
    for (int frame = 1; frame <= entryFrames; ++frame) {
        const QPointer<TrialRun> window = open(place);
        QVERIFY(window);
        bool asked = false;
        atFrame(window, frame, [&] {
            asked = true;
            if (fault >= 0)
                strike(place, passingFaults().at(fault));
            QTimer::singleShot(0, window.data(), [window] { close(window); });
        });
        QVERIFY(runUntil([&] { return asked && window.isNull(); }, 8000));
        place.drive->clearFaults();
        QVERIFY2(difference(place, before).isEmpty(),
                 qPrintable(QStringLiteral("%1: %2").arg(frame).arg(difference(place, before))));
    }
}

QTEST_MAIN(TrialRunLineFaultsTest)
#include "tst_trialrun_linefaults_endtoend.moc"
