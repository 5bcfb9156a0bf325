// SPDX-License-Identifier: GPL-3.0-or-later
// The trial run closed behind any frame of its entry, on a line that misbehaves from that frame on: it gives
// the drive back as it was, register by register, working and stored.
#include "trialplace.h"

#include <memory>

using namespace trialplace;

namespace {

// The fault begins with the frame, and strikes the first frames of the way back too.
QString closeBehind(const Workplace &place, int frame, const LineFault &fault)
{
    place.drive->writeRegister(panelOffset, 0x0802);
    const kt500sim::RegisterSnapshot before = place.drive->registers();
    const QPointer<TrialRun> window = open(place);
    const auto asked = std::make_shared<bool>(false);
    atFrame(window, frame, [&place, fault, asked, window] {
        *asked = true;
        if (!fault.begin.isEmpty())
            strike(place, fault);
        QTimer::singleShot(0, window.data(), [window] { close(window); });
    });
    if (!runUntil([&] { return *asked; }, 8000) || !isGone(window))
        return QStringLiteral("the window stays");
    return difference(place, before);
}

} // namespace

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

void TrialRunLineFaultsTest::closingBehindEachFrameGivesTheDriveBack()
{
    QFETCH(int, fault);
    ModalAnswers boxes;
    Workplace place;
    QVERIFY(connectTo(place, fault < 0 ? usb : passingFaults().at(fault).speed));
    for (int frame = 1; frame <= entryFrames; ++frame) {
        const QString complaint = onWholeLink(
            place, boxes, [&] { return closeBehind(place, frame, passingFaults().value(fault)); });
        QVERIFY2(complaint.isEmpty(), qPrintable(QStringLiteral("%1: %2").arg(frame).arg(complaint)));
    }
}

QTEST_MAIN(TrialRunLineFaultsTest)
#include "tst_trialrun_linefaults_endtoend.moc"
