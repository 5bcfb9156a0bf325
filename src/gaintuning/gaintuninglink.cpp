// SPDX-License-Identifier: GPL-3.0-or-later
#include "gaintuning/gaintuninglink.h"

#include "gaintuning/gaintuningframes.h"
#include "link/linkstate.h"
#include "link/replies.h"
#include "link/requests.h"

#include <array>

namespace {

constexpr int roundPause = 300; // ms
constexpr int notchPause = 200; // ms
const QByteArray readHead("\x01\x03");
constexpr int rounds = 3; // figures that cycleCount goes through

} // namespace

// What a reply means in a state: how its value is decoded, which state follows, and what becomes of the reads
// that are still to come.
struct GainTuningLink::Step
{
    State state;
    ReplyKind kind;
    Decoder decoder;
    State next;
    Reads reads;
};

const GainTuningLink::Step &GainTuningLink::stepOf(State state, ReplyKind kind)
{
    static const std::array<Step, 10> steps{{
        {InitialRead, ReplyKind::Read, Decoder::Full, InitialRead, Reads::Next},
        {InitialRead, ReplyKind::Other, Decoder::None, Idle, Reads::Drop},
        {Idle, ReplyKind::Read, Decoder::Monitor, Idle, Reads::Next},
        {Idle, ReplyKind::Other, Decoder::None, Idle, Reads::Drop},
        {SingleWrite, ReplyKind::Read, Decoder::None, SingleWrite, Reads::Drop},
        {SingleWrite, ReplyKind::Other, Decoder::None, Idle, Reads::Drop},
        {BatchWrite, ReplyKind::Read, Decoder::None, BatchWrite, Reads::Next},
        {BatchWrite, ReplyKind::Other, Decoder::None, BatchWrite, Reads::Drop},
        {NotchWrite, ReplyKind::Read, Decoder::None, NotchWrite, Reads::Next},
        {NotchWrite, ReplyKind::Other, Decoder::None, NotchWrite, Reads::Drop},
    }};
    for (const Step &step : steps) {
        if (step.state == state && step.kind == kind)
            return step;
    }
    return steps.front();
}

GainTuningLink::GainTuningLink(QObject *parent)
    : QObject(parent)
{
    roundTimer.setInterval(roundPause);
    notchTimer.setInterval(notchPause);
    connect(&roundTimer, &QTimer::timeout, this, &GainTuningLink::startRound);
    connect(&notchTimer, &QTimer::timeout, this, &GainTuningLink::sendNextNotchFrame);
    connect(this, &GainTuningLink::frameReady, &replyWatch, &ReplyWatch::begin);
    connect(&replyWatch, &ReplyWatch::overdue, this, &GainTuningLink::goOnAfterLoss);
}

void GainTuningLink::fillVibrationReads()
{
    vibrationFrames = gaintuning::vibrationReads();
}

void GainTuningLink::fillInertiaReads()
{
    inertiaFrames = gaintuning::inertiaReads();
}

void GainTuningLink::fillGainModeReads()
{
    gainModeFrames = gaintuning::gainModeReads();
}

void GainTuningLink::start()
{
    pendingReads.clear();
    cyclicFrames.clear();
    const QList<QByteArray> joined = gainModeFrames + inertiaFrames + vibrationFrames;
    for (const QByteArray &text : joined) {
        pendingReads.append(gaintuning::closed(text));
        if (gaintuning::isCyclic(text))
            cyclicFrames.append(pendingReads.last());
    }
    sendHead();
}

void GainTuningLink::startRound()
{
    // Each chunk of a running stream counts as an answer: a reply that meets one is lost, and with it the
    // round.
    if (isScopeStreamRunning()) {
        roundTimer.start();
        return;
    }
    roundTimer.stop();
    cycleCount = (cycleCount + 1) % rounds;
    if (isStale && linkState == Idle) {
        isStale = false;
        linkState = InitialRead;
        start();
        return;
    }
    pendingReads = cyclicFrames;
    sendHead();
}

void GainTuningLink::takeReply(const QByteArray &reply, int address)
{
    const ReplyKind kind = reply.startsWith(readHead) ? ReplyKind::Read : ReplyKind::Other;
    // The probe of a restarted link is answered to the window that asked last. The request in flight was lost
    // with the old worker.
    if (kind == ReplyKind::Read && !isReadReplyOf(reply, 1)) {
        goOnAfterLoss();
        return;
    }
    lastAddress = address;
    const Step &step = stepOf(linkState, kind);
    decode(step.decoder, reply);
    if (kind == ReplyKind::Read && isSecondReplyOfARepeat())
        return;
    if (linkState == InitialRead && step.next != InitialRead)
        emit firstReadEnds();
    linkState = step.next;
    if (step.reads == Reads::Drop)
        pendingReads.clear();
    else
        dropHead();
    if (linkState == BatchWrite)
        continueBatch();
    if (linkState == NotchWrite)
        continueNotches();

    if (!pendingReads.isEmpty())
        return;
    if (linkState == InitialRead) {
        emit firstReadEnds();
        linkState = Idle;
    }
    if (linkState == Idle && !roundTimer.isActive())
        roundTimer.start();
}

void GainTuningLink::decode(Decoder decoder, const QByteArray &reply)
{
    const quint32 value = unsignedNumber(payloadFromFront(reply));
    if (decoder == Decoder::Full)
        emit valueRead(lastAddress, value);
    else if (decoder == Decoder::Monitor)
        emit valueMonitored(lastAddress, value);
}

void GainTuningLink::sendHead()
{
    if (!pendingReads.isEmpty())
        emit frameReady(pendingReads.first());
}

// A lost read is asked again. A lost write is not repeated, since the drive may have carried it out, and the
// user might have gone on by other means: the rest of it is dropped, and the window shows anew what the drive
// holds. The pause before that leaves time for the replies to writes that were still queued.
void GainTuningLink::goOnAfterLoss()
{
    if (linkState == InitialRead || linkState == Idle) {
        if (!pendingReads.isEmpty())
            repeatedAddress = addressOfRequest(pendingReads.first());
        sendHead();
        return;
    }
    batchFrames.clear();
    notchFrames.clear();
    if (notchesRun)
        continueNotches();
    if (batchRuns)
        continueBatch();
    pendingReads.clear();
    linkState = Idle;
    isStale = true;
    roundTimer.start();
}

// A request that had not left yet when the link was lost is still queued: repeated, it is answered twice. The
// second reply must not be taken for one to the request behind it.
bool GainTuningLink::isSecondReplyOfARepeat()
{
    if (repeatedAddress < 0 || pendingReads.isEmpty())
        return false;
    const int head = addressOfRequest(pendingReads.first());
    if (head == repeatedAddress)
        return false;
    const bool isSecond = lastAddress == repeatedAddress;
    repeatedAddress = -1;
    return isSecond;
}

void GainTuningLink::dropHead()
{
    if (pendingReads.isEmpty())
        return;
    pendingReads.removeFirst();
    sendHead();
}

// Runs behind every reply, also of a read that was still under way when the batch began: the first of them
// starts it.
void GainTuningLink::continueBatch()
{
    if (!batchFrames.isEmpty()) {
        emit frameReady(batchFrames.takeFirst());
        return;
    }
    batchRuns = false;
    linkState = notchesRun ? NotchWrite : Idle;
    pendingReads.clear();
    emit batchWritten();
}

void GainTuningLink::continueNotches()
{
    if (!notchFrames.isEmpty()) {
        if (!notchTimer.isActive())
            notchTimer.start();
        return;
    }
    notchTimer.stop();
    notchesRun = false;
    linkState = batchRuns ? BatchWrite : Idle;
    pendingReads.clear();
    emit notchesWritten();
    if (batchRuns)
        continueBatch();
}

void GainTuningLink::sendNextNotchFrame()
{
    if (!notchFrames.isEmpty())
        emit frameReady(notchFrames.takeFirst());
}

void GainTuningLink::write(const QByteArray &frame)
{
    switch (linkState) {
    case InitialRead:
        break;
    case BatchWrite:
        batchFrames.append(frame);
        break;
    case NotchWrite:
        notchFrames.append(frame);
        break;
    default:
        linkState = SingleWrite;
        // A round queued behind the write would keep the probe of a restarted link from being sent, and so
        // the loss of the write from being noticed.
        roundTimer.stop();
        emit frameReady(frame);
        break;
    }
}

void GainTuningLink::writeBatch(const QByteArray &atOnce, const QList<QByteArray> &frames)
{
    if (linkState == InitialRead)
        return;
    batchRuns = true;
    if (linkState == NotchWrite) {
        // In its turn, behind the notches.
        if (!atOnce.isEmpty())
            batchFrames.append(atOnce);
        batchFrames.append(frames);
        return;
    }
    if (!atOnce.isEmpty()) {
        emit frameReady(atOnce);
        pendingReads.clear();
    }
    batchFrames.append(frames);
    linkState = BatchWrite;
}

void GainTuningLink::writeNotches(const QList<QByteArray> &frames)
{
    if (linkState == InitialRead)
        return;
    notchFrames.append(frames);
    notchesRun = true;
    if (linkState != BatchWrite)
        linkState = NotchWrite;
}
