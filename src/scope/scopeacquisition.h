// SPDX-License-Identifier: GPL-3.0-or-later
// The course of a run: starts and stops the drive's stream, turns its chunks into samples, writes the record
// and watches for the stop condition. Main thread; owned by the scope window, which shows what it says.
#pragma once

#include "scope/scopechannels.h"
#include "scope/scoperecord.h"
#include "scope/stopcondition.h"
#include "scope/streamchunk.h"

#include "catalogue/scopecatalogue.h"

#include <QMap>
#include <QObject>
#include <QTimer>

class ScopeAcquisition : public QObject
{
    Q_OBJECT

public:
    // State               run action shows   a chunk                      left by
    // Idle                Run                does nothing                 start, replay
    // FreeRun             Stop               is recorded and shown        stop
    // Armed               Stop               is recorded and judged       condition met, stop
    // Ending              Stop               is recorded and shown        stop timer, stop
    // StoppedByCondition  Run                repeats the stop frame       start, replay
    // WithoutPort         Stop               does nothing                 stop
    // Replaying           Stop               does nothing                 stop
    enum class State { Idle, FreeRun, Armed, Ending, StoppedByCondition, WithoutPort, Replaying };

    // What the fields of the stop condition hold at the moment.
    struct StopInput
    {
        double value = 0;
        int lastFor = 0; // ms from the condition's fulfilment to the end of the run
    };

    explicit ScopeAcquisition(const ScopeItems &items, QObject *parent = nullptr);

    State state() const { return currentState; }
    // A run has been started and not yet ended: the drive is to stream.
    bool isUnderWay() const;
    // What the run action offers is to stop.
    bool offersStop() const;

    ScopeRecord *record() { return &channelFiles; }
    int decimals(int channel) const { return channelDecimals.at(channel); }
    void setDecimals(int channel, int decimals);

    void setStopCondition(const StopCondition &condition) { stopCondition = condition; }
    const StopCondition &condition() const { return stopCondition; }

    // Forgets the last run: selection, decimals, failures of its record.
    void prepare();
    // There is no link to run on.
    void showWithoutPort();
    // Opens the record and asks for all four channels; with a condition the run ends by it.
    void start(const ScopeChannelSettings &channels, bool withCondition);
    void stop();
    // The time after the condition's fulfilment is over. Deliberate: the record stays open and the run still
    // counts as running for the link and the shell, until the next stop.
    void stopByCondition();
    // Asks the drive to be silent if a run is under way, and leaves all else as it is.
    void haltStream();
    // The window goes.
    void abandon();
    void beginReplay();

    // Selects the channels that are on, and asks anew where a run is under way.
    void reselect(const ScopeChannelSettings &channels);
    // Deletes the record and begins an empty one.
    void renewRecord();

    void takeChunk(const QByteArray &chunk, const ScopeChannelSettings &channels, const StopInput &input);

signals:
    void frameReady(QByteArray frame); // an empty one withdraws what has not been sent yet
    void runningChanged(bool isRunning);
    void stateChanged();
    void decimalsChanged(int channel, int decimals);
    // Samples to be shown; of one channel, 0 to 3, only, or of all (-1).
    void batchReady(const ScopeSamples &samples, int onlyChannel);
    // The time after the condition's fulfilment is over: stopByCondition() is due.
    void lastPartOver();

private:
    void setState(State state);
    void sendRequest(const ScopeChannelSettings &channels);
    void writeHeader(int channel);
    ScopeSamples decode(const StreamChunk &chunk, const ScopeChannelSettings &channels);
    void writeSamples(const StreamChunk &chunk, const ScopeSamples &samples);
    void takeFreeBatch(const StreamChunk &chunk, const ScopeSamples &samples);
    void takeConditionBatch(const StreamChunk &chunk, const ScopeSamples &samples, const StopInput &input);
    void repeatStop();

    const ScopeItems scopeItems;
    ScopeRecord channelFiles;
    State currentState = State::Idle;
    QMap<int, QString> channelSelections; // channel to code: what the next request is built from
    // The last selection of each channel: by it chunks are read.
    std::array<QString, scopeChannelCount> selectedCodes;
    std::array<int, scopeChannelCount> channelDecimals{};
    StopCondition stopCondition;
    bool firstBatch = false;
    QByteArray lastRequest;
    QTimer stopTimer; // from the condition's fulfilment to the end of the run
};
