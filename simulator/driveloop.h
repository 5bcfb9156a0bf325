// SPDX-License-Identifier: GPL-3.0-or-later
// The loop that serves one drive on one line: receives requests, lets the drive answer them, and sends the
// answers at the right time and with the faults that were asked for.
//
// Owned by SimulatedDrive: used on its thread while that runs, else on the caller's.
#pragma once

#include "simulator/drive.h"
#include "simulator/framelog.h"
#include "simulator/linedisturber.h"
#include "simulator/outbox.h"
#include "simulator/pseudoterminal.h"
#include "simulator/requestframer.h"

#include <fstream>
#include <random>

namespace kt500sim {

/// How fast the simulated line and drive are. With both at zero a reply leaves as soon as it is known.
struct Pacing
{
    int baud = 0;               ///< ten bits a character, requests and replies; 0: no wire time
    microseconds turnaround{0}; ///< from the end of a request to the start of its reply
};

class DriveLoop
{
public:
    DriveLoop(Drive &drive, PseudoTerminal &terminal, nanoseconds frameGap);

    /// One turn: sleeps until something is to be done, takes what has come, and sends what is due.
    void turn();

    void setFault(const Fault &fault);
    void setPacing(const Pacing &pacing) { m_pacing = pacing; }
    /// Time of the model stands still until unfreeze(), except for step().
    void freeze();
    void unfreeze();
    void step(nanoseconds time);
    void powerCycle();
    void factoryReset();

    const Counters &counters() const { return m_counters; }
    void resetCounters() { m_counters = Counters{}; }
    void setListener(FrameListener listener) { m_listener = std::move(listener); }
    /// Writes each frame as a line to \a path, replacing the file; an empty path ends that. Returns an empty
    /// text, or what failed.
    std::string logToFile(const std::string &path);

    /// The owner has opened the line: the model's time goes on from here, and a hang-up is over.
    void lineOpened();
    bool isHungUp() const { return m_hungUp; }
    /// Called with true when the line comes back and false when it goes.
    void setLineListener(std::function<void(bool up)> listener) { m_lineListener = std::move(listener); }

private:
    std::optional<TimePoint> nextDeadline() const;
    void receive(TimePoint now);
    void handle(const ReceivedFrame &frame, TimePoint now);
    void answer(const Bytes &request, TimePoint now);
    void sendReply(Bytes reply, TimePoint start);
    void startUnaskedStream();
    void clearFaults();
    void advanceDrive(TimePoint now);
    void sendStreamFrame(Bytes frame, TimePoint now);
    void makeGarbage(TimePoint now);
    void sendDue(TimePoint now);
    void send(const OutgoingChunk &chunk);
    void hangUp(milliseconds duration);
    void returnIfDue(TimePoint now);
    nanoseconds wireTime(std::size_t bytes) const;
    void log(FrameKind kind, const Bytes &bytes);
    void writeLog(FrameKind kind, const Bytes &bytes);

    Drive &m_drive;
    PseudoTerminal &m_terminal;
    RequestFramer m_framer;
    LineDisturber m_disturber;
    Outbox m_outbox;
    Pacing m_pacing;
    Counters m_counters;
    FrameListener m_listener;
    std::function<void(bool)> m_lineListener;
    std::ofstream m_logFile;
    std::minstd_rand m_random; ///< the same noise at every run

    TimePoint m_start;            ///< the zero of the log's times
    TimePoint m_modelTime;        ///< wall time up to which the model has been advanced
    nanoseconds m_steppedRest{0}; ///< stepped time short of a whole sample
    bool m_frozen = false;
    TimePoint m_lineFree{}; ///< end of the last byte on the paced wire
    TimePoint m_silentUntil{};
    bool m_hungUp = false;
    TimePoint m_streamFree{};               ///< before this the next stream frame would come too close
    bool m_unaskedStream = false;           ///< the stream runs by a fault, not by a client's wish
    std::optional<TimePoint> m_returnAt;    ///< while hung up; nothing: not by itself
    std::optional<TimePoint> m_nextGarbage; ///< nothing: garbage is off
    Bytes m_lastRequest;
    bool m_lastAnswered = true; ///< an undisturbed reply to m_lastRequest has left
};

} // namespace kt500sim
