// SPDX-License-Identifier: GPL-3.0-or-later
#include "scope/scopeacquisition.h"

#include "link/linkstate.h"
#include "scope/sampledecoding.h"
#include "scope/scoperequest.h"

#include <QDebug>

#include <algorithm>

ScopeAcquisition::ScopeAcquisition(const ScopeItems &items, QObject *parent)
    : QObject(parent)
    , scopeItems(items)
{
    stopTimer.setTimerType(Qt::PreciseTimer);
    connect(&stopTimer, &QTimer::timeout, this, &ScopeAcquisition::lastPartOver);
    channelFiles.clearDirectory();
}

bool ScopeAcquisition::isUnderWay() const
{
    return currentState == State::FreeRun || currentState == State::Armed || currentState == State::Ending;
}

bool ScopeAcquisition::offersStop() const
{
    return currentState != State::Idle && currentState != State::StoppedByCondition;
}

void ScopeAcquisition::setState(State state)
{
    currentState = state;
    emit stateChanged();
}

void ScopeAcquisition::setDecimals(int channel, int decimals)
{
    channelDecimals.at(channel) = decimals;
    emit decimalsChanged(channel, decimals);
}

void ScopeAcquisition::prepare()
{
    channelSelections.clear();
    firstBatch = true;
    channelFiles.forgetFailure();
    for (int channel = 0; channel < scopeChannelCount; ++channel)
        setDecimals(channel, 0);
}

void ScopeAcquisition::showWithoutPort()
{
    setState(State::WithoutPort);
}

void ScopeAcquisition::start(const ScopeChannelSettings &channels, bool withCondition)
{
    for (int channel = 0; channel < scopeChannelCount; ++channel)
        channelSelections.insert(channel, channels.at(channel).code);
    setState(withCondition ? State::Armed : State::FreeRun);
    channelFiles.open();
    sendRequest(channels);
    emit runningChanged(true);
}

void ScopeAcquisition::stop()
{
    channelSelections.clear();
    setState(State::Idle);
    emit frameReady(QByteArray());
    channelFiles.close();
    stopTimer.stop();
    // In this order: the link forgets what waits for it once the run has ended, the stop frame too.
    emit runningChanged(false);
    if (!isLinkReconnecting())
        emit frameReady(scopeStopRequest());
}

void ScopeAcquisition::stopByCondition()
{
    setState(State::StoppedByCondition);
    emit frameReady(scopeStopRequest());
    stopTimer.stop();
}

void ScopeAcquisition::haltStream()
{
    if (isUnderWay())
        emit frameReady(scopeStopRequest());
}

void ScopeAcquisition::abandon()
{
    stopTimer.stop();
    emit runningChanged(false);
    haltStream();
    currentState = State::Idle; // a chunk may still be on its way
}

void ScopeAcquisition::beginReplay()
{
    setState(State::Replaying);
}

void ScopeAcquisition::reselect(const ScopeChannelSettings &channels)
{
    channelSelections.clear();
    for (int channel = 0; channel < scopeChannelCount; ++channel) {
        if (channels.at(channel).on)
            channelSelections.insert(channel, channels.at(channel).code);
    }
    emit frameReady(QByteArray());
    if (!isUnderWay())
        return;
    channelFiles.open();
    sendRequest(channels);
}

void ScopeAcquisition::renewRecord()
{
    channelFiles.close();
    channelFiles.open();
    for (auto selection = channelSelections.cbegin(); selection != channelSelections.cend(); ++selection)
        channelFiles.writeHeader(selection.key(), scopeRecordHeader(scopeItems, selection.value()));
}

void ScopeAcquisition::sendRequest(const ScopeChannelSettings &channels)
{
    if (channelSelections.isEmpty()) {
        emit frameReady(QByteArray());
        return;
    }
    for (auto selection = channelSelections.cbegin(); selection != channelSelections.cend(); ++selection) {
        channelFiles.writeHeader(selection.key(), scopeRecordHeader(scopeItems, selection.value()));
        selectedCodes.at(selection.key()) = selection.value();
    }
    lastRequest = scopeStartRequest(channels, scopeItems);
    qDebug() << "SSSSSSSSSSS" << lastRequest.toHex();
    emit frameReady(lastRequest);
}

void ScopeAcquisition::takeChunk(const QByteArray &chunk, const ScopeChannelSettings &channels,
                                 const StopInput &input)
{
    const bool isFree = currentState == State::FreeRun;
    if (!isFree && currentState != State::Armed && currentState != State::Ending &&
        currentState != State::StoppedByCondition)
        return;
    const StreamChunk cut = cutStreamChunk(chunk, channels);
    const ScopeSamples samples = decode(cut, channels);
    firstBatch = false;
    if (isFree)
        takeFreeBatch(cut, samples);
    else
        takeConditionBatch(cut, samples, input);
}

ScopeSamples ScopeAcquisition::decode(const StreamChunk &chunk, const ScopeChannelSettings &channels)
{
    ScopeSamples samples;
    for (int channel = 0; channel < scopeChannelCount; ++channel) {
        if (!channels.at(channel).on)
            continue;
        const SampleFormat format = sampleFormat(scopeItems, selectedCodes.at(channel));
        samples.at(channel) = decodeSamples(chunk.samples.at(channel), format, channels.at(channel).wide);
        if (firstBatch)
            setDecimals(channel, format.decimals);
    }
    return samples;
}

// What the first frame announces decides whether a channel is written; the samples are the last frame's.
void ScopeAcquisition::writeSamples(const StreamChunk &chunk, const ScopeSamples &samples)
{
    for (int channel = 0; channel < scopeChannelCount; ++channel) {
        if (chunk.counts.value(channel) != 0 && !samples.at(channel).isEmpty())
            channelFiles.append(channel, samples.at(channel));
    }
}

void ScopeAcquisition::takeFreeBatch(const StreamChunk &chunk, const ScopeSamples &samples)
{
    writeSamples(chunk, samples);
    const bool hasSamples =
        std::any_of(samples.begin(), samples.end(), [](const auto &channel) { return !channel.isEmpty(); });
    if (hasSamples)
        emit batchReady(samples, -1);
}

void ScopeAcquisition::takeConditionBatch(const StreamChunk &chunk, const ScopeSamples &samples,
                                          const StopInput &input)
{
    // A drive that has not heard the stop frame is told again, before and after its samples are looked at.
    repeatStop();
    const int channel = stopCondition.channelIndex();
    const bool isMet = channel >= 0 && stopCondition.isMetBy(samples.at(channel), input.value);
    if (isMet || stopTimer.isActive())
        emit batchReady(samples, channel);
    writeSamples(chunk, samples);
    if (isMet && !stopTimer.isActive()) {
        qDebug() << "ssssssss" << input.lastFor;
        stopTimer.start(std::max(0, input.lastFor));
        if (currentState == State::Armed)
            setState(State::Ending);
    }
    repeatStop();
}

void ScopeAcquisition::repeatStop()
{
    if (currentState != State::StoppedByCondition)
        return;
    stopTimer.stop();
    emit frameReady(scopeStopRequest());
}
