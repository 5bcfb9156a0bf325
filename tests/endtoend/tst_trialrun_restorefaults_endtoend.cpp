// SPDX-License-Identifier: GPL-3.0-or-later
// The way back of the trial run on a line that misbehaves from any of its frames on, or did while the drive
// was read: it is as it was, register by register, working and stored.
#include "trialplace.h"

using namespace trialplace;

namespace {

QString ready(const QPointer<TrialRun> &window)
{
    return isReady(window) ? QString() : QStringLiteral("the window is not ready");
}

QString closed(const QPointer<TrialRun> &window, const Workplace &place,
               const kt500sim::RegisterSnapshot &before)
{
    close(window);
    return isGone(window) ? difference(place, before) : QStringLiteral("the window stays");
}

// The fault begins with a frame of the entry.
QString enterAndClose(const Workplace &place, int frame, const LineFault &fault)
{
    const kt500sim::RegisterSnapshot before = place.drive->registers();
    const QPointer<TrialRun> window = open(place);
    atFrame(window, frame, [&place, fault] { strike(place, fault); });
    const QString complaint = ready(window);
    return complaint.isEmpty() ? closed(window, place, before) : complaint;
}

// The fault begins with a frame of the way back.
QString changeAndClose(const Workplace &place, int frame, const LineFault &fault)
{
    const kt500sim::RegisterSnapshot before = place.drive->registers();
    const QPointer<TrialRun> window = open(place);
    const QString complaint = ready(window);
    if (!complaint.isEmpty())
        return complaint;
    const TrialRunDriver drive(window);
    TrialRunDriver::type(drive.jogTable(), 0, QStringLiteral("123.4"));
    TrialRunDriver::type(drive.jogTable(), 3, QStringLiteral("12"));
    atFrame(window, frame, [&place, fault] { strike(place, fault); });
    return closed(window, place, before);
}

} // namespace

class TrialRunRestoreFaultsTest : public QObject
{
    Q_OBJECT

private slots:
    void disturbedEntryGivesTheDriveBack_data();
    void disturbedEntryGivesTheDriveBack();
    void faultInTheRestoreLeavesItWhole_data();
    void faultInTheRestoreLeavesItWhole();

private:
    using Act = QString (*)(const Workplace &place, int frame, const LineFault &fault);

    static void tryAll(const LineFault &fault, int frames, int step, Act act);
};

void TrialRunRestoreFaultsTest::tryAll(const LineFault &fault, int frames, int step, Act act)
{
    ModalAnswers boxes;
    Workplace place;
    QVERIFY(connectTo(place, fault.speed));
    for (int frame = 1; frame <= frames; frame += step) {
        const QString complaint = onWholeLink(place, boxes, [&] { return act(place, frame, fault); });
        QVERIFY2(complaint.isEmpty(), qPrintable(QStringLiteral("%1: %2").arg(frame).arg(complaint)));
    }
}

void TrialRunRestoreFaultsTest::disturbedEntryGivesTheDriveBack_data()
{
    addFaultRows(false);
}

// What was saved on a disturbed line is what the drive holds.
void TrialRunRestoreFaultsTest::disturbedEntryGivesTheDriveBack()
{
    QFETCH(int, fault);
    tryAll(passingFaults().at(fault), entryFrames, 10, enterAndClose);
}

void TrialRunRestoreFaultsTest::faultInTheRestoreLeavesItWhole_data()
{
    addFaultRows(false);
}

void TrialRunRestoreFaultsTest::faultInTheRestoreLeavesItWhole()
{
    QFETCH(int, fault);
    tryAll(passingFaults().at(fault), restoreFrames, 1, changeAndClose);
}

QTEST_MAIN(TrialRunRestoreFaultsTest)
#include "tst_trialrun_restorefaults_endtoend.moc"
