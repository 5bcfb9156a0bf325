// SPDX-License-Identifier: GPL-3.0-or-later
#include "trialrun/trialexchange.h"

#include "link/functioncodes.h"
#include "link/linkstate.h"
#include "link/replies.h"
#include "link/requests.h"
#include "trialrun/trialframes.h"

#include <algorithm>

namespace {

constexpr int repeatInterval = 100; // ms
constexpr int repeatLimit = 20;
constexpr int refusalLimit = 10;
constexpr int doubtTime = 200;  // ms after which no second answer to a repeated request comes any more
constexpr int strayTime = 1000; // ms
constexpr int functionMask = 0x7F;

} // namespace

TrialExchange::TrialExchange(QObject *parent)
    : QObject(parent)
    , knownRepeats(linkRepeats())
{
    repeatTimer.setInterval(repeatInterval);
    connect(&repeatTimer, &QTimer::timeout, this, &TrialExchange::repeat);
    connect(&sequenceWatch, &ReplyWatch::overdue, this, &TrialExchange::sequenceOverdue);
}

void TrialExchange::send(const QByteArray &frame, Kind kind)
{
    // A new value of the control panel ends the repeating of an older one, which would undo it.
    if (isPanelFrame(frame))
        repeatTimer.stop();
    post(frame, kind, ++lastId);
}

void TrialExchange::sendSurely(const QByteArray &frame, Kind kind)
{
    const int id = ++lastId;
    if (isScopeStreamRunning()) {
        repeated = {frame, kind, id};
        repeatsLeft = repeatLimit;
        repeatTimer.start();
    }
    refusals = 0;
    post(frame, kind, id, true);
}

void TrialExchange::post(const QByteArray &frame, Kind kind, int id, bool isSure)
{
    isDoubtful(); // looks at the link's repeats
    if (addressOfRequest(frame) == trialregister::panel)
        insisted = isSure && kind == Kind::Panel ? frame : QByteArray();
    notePanel(frame);
    outstanding.append({frame, kind, id});
    if (kind == Kind::Sequence)
        sequenceWatch.begin();
    emit frameReady(frame);
}

void TrialExchange::notePanel(const QByteArray &frame)
{
    int value = 0;
    if (!isPanelFrame(frame, &value))
        return;
    panelOn = value != trialpanel::off;
    if (panelOn)
        unconfirmedPress = frame;
    else
        unconfirmedPress.clear();
}

void TrialExchange::repeat()
{
    if (repeatsLeft-- <= 0) {
        repeatTimer.stop();
        return;
    }
    // The link takes over once the capture has ended: this one is repeated there.
    if (!isScopeStreamRunning())
        repeatTimer.stop();
    emit frameReady(repeated.frame);
}

std::optional<TrialExchange::Request> TrialExchange::take(const QByteArray &reply)
{
    // The drive echoes a write of one register as it is, so that nothing else has this answer.
    if (reply == unconfirmedPress)
        unconfirmedPress.clear();
    if (outstanding.isEmpty())
        return {};
    const auto found = std::find_if(outstanding.begin(), outstanding.end(),
                                    [&reply](const Request &request) { return fits(request.frame, reply); });
    if (found == outstanding.end() && (repeatTimer.isActive() || isStray()))
        return {};
    const int place = found == outstanding.end() ? 0 : int(found - outstanding.begin());
    const Request answered = outstanding.at(place);
    outstanding.erase(outstanding.begin(), outstanding.begin() + place + 1);
    if (repeatTimer.isActive() && answered.id >= repeated.id)
        repeatTimer.stop();
    if (isExceptionReply(reply) && answered.frame == insisted && refusals++ < refusalLimit)
        post(answered.frame, answered.kind, ++lastId, true);
    return answered;
}

bool TrialExchange::isStray()
{
    if (strays == 0 || sinceWithdrawal.hasExpired(strayTime))
        return false;
    --strays;
    return true;
}

QList<TrialExchange::Request> TrialExchange::withdraw()
{
    QList<Request> unanswered;
    QList<Request> looks;
    for (const Request &request : qAsConst(outstanding))
        (request.kind == Kind::Position ? looks : unanswered).append(request);
    outstanding = looks;
    strays = unanswered.size();
    sinceWithdrawal.start();
    repeatTimer.stop();
    unconfirmedPress.clear();
    emit withdrawNeeded();
    return unanswered;
}

void TrialExchange::forget()
{
    outstanding.clear();
    insisted.clear();
    strays = 0;
    repeatTimer.stop();
    unconfirmedPress.clear();
}

void TrialExchange::forget(Kind kind)
{
    const auto isOfKind = [kind](const Request &request) { return request.kind == kind; };
    outstanding.erase(std::remove_if(outstanding.begin(), outstanding.end(), isOfKind), outstanding.end());
}

bool TrialExchange::isOutstanding(Kind kind) const
{
    return std::any_of(outstanding.begin(), outstanding.end(),
                       [kind](const Request &request) { return request.kind == kind; });
}

bool TrialExchange::isDoubtful()
{
    if (linkRepeats() != knownRepeats) {
        knownRepeats = linkRepeats();
        sinceRepeat.start();
    }
    return isScopeStreamRunning() || (sinceRepeat.isValid() && !sinceRepeat.hasExpired(doubtTime));
}

bool TrialExchange::fits(const QByteArray &request, const QByteArray &reply)
{
    if (request.size() < 6 || reply.size() < 2 || ((request.at(1) ^ reply.at(1)) & functionMask) != 0)
        return false;
    if (isExceptionReply(reply))
        return true;
    if (isReadReply(reply))
        return isReadReplyOf(reply, registersOfRequest(request));
    // Register and value, or register and count.
    return reply.mid(2, 4) == request.mid(2, 4);
}
