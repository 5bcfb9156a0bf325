// SPDX-License-Identifier: GPL-3.0-or-later
#include "simulator/driveloop.h"

#include "simulator/crc16.h"

#include <algorithm>
#include <array>

namespace kt500sim {
namespace {

constexpr int bitsPerCharacter = 10;

// A client that finds several stream frames in one read keeps only the last, so frames that fell behind are
// not sent in one burst.
constexpr milliseconds streamSpacing{1};
// After a longer stop of the whole process the model does not run after the lost time.
constexpr std::int64_t mostSamplesToCatchUp = samplesPerSecond / 5;

constexpr milliseconds garbagePeriod{2};
constexpr int garbageBaud = 115200;

constexpr milliseconds reopenPeriod{100};

} // namespace

DriveLoop::DriveLoop(Drive &drive, PseudoTerminal &terminal, nanoseconds frameGap)
    : m_drive(drive)
    , m_terminal(terminal)
    , m_framer(frameGap)
    , m_start(Clock::now())
    , m_modelTime(m_start)
{
}

void DriveLoop::turn()
{
    const bool readable = m_terminal.wait(nextDeadline());
    const TimePoint now = Clock::now();
    returnIfDue(now);
    advanceDrive(now);
    if (readable)
        receive(now);
    while (const std::optional<ReceivedFrame> frame = m_framer.next(now))
        handle(*frame, now);
    makeGarbage(now);
    sendDue(now);
}

void DriveLoop::lineOpened()
{
    m_modelTime = Clock::now();
    m_hungUp = false;
    m_returnAt.reset();
}

std::optional<TimePoint> DriveLoop::nextDeadline() const
{
    std::optional<TimePoint> deadline = m_outbox.nextDue();
    const auto consider = [&deadline](const std::optional<TimePoint> &other) {
        if (other && (!deadline || *other < *deadline))
            deadline = other;
    };
    consider(m_framer.gapEnd());
    consider(m_nextGarbage);
    consider(m_returnAt);
    if (!m_frozen) {
        consider(m_modelTime + m_drive.longestRest());
        if (m_drive.stream().isRunning())
            consider(m_modelTime + m_drive.stream().samplesToFrame() * samplePeriod);
    }
    return deadline;
}

void DriveLoop::receive(TimePoint now)
{
    std::array<std::uint8_t, 4096> buffer;
    const std::size_t size = m_terminal.read(buffer.data(), buffer.size());
    m_counters.bytesReceived += size;
    if (size > 0)
        m_framer.feed(buffer.data(), size, now);
}

void DriveLoop::handle(const ReceivedFrame &frame, TimePoint now)
{
    if (!frame.checksumGood) {
        ++m_counters.badChecksums;
        log(FrameKind::Unreadable, frame.bytes);
        return;
    }
    if (!m_drive.isForThisStation(frame.bytes)) {
        ++m_counters.foreignFrames;
        log(FrameKind::Foreign, frame.bytes);
        return;
    }

    ++m_counters.requests;
    if (!m_lastAnswered && frame.bytes == m_lastRequest)
        ++m_counters.retransmissions;
    m_lastRequest = frame.bytes;
    m_lastAnswered = false;
    log(FrameKind::Request, frame.bytes);
    if (now >= m_silentUntil && !m_nextGarbage)
        answer(frame.bytes, now);
}

void DriveLoop::answer(const Bytes &request, TimePoint now)
{
    Bytes reply;
    if (const int code = m_disturber.takeExceptionCode()) {
        reply = exceptionReply(m_drive.station(), request[1], static_cast<std::uint8_t>(code));
    } else {
        reply = m_drive.answer(request);
        if (reply.empty()) { // the scope stream is answer enough
            m_unaskedStream = false;
            m_lastAnswered = true;
            return;
        }
    }
    const TimePoint requestEnd = now + wireTime(request.size());
    sendReply(std::move(reply), std::max(requestEnd + m_pacing.turnaround, m_lineFree));
}

void DriveLoop::sendReply(Bytes reply, TimePoint start)
{
    const bool isException = (reply[1] & 0x80) != 0;
    const DisturbedReply disturbed = m_disturber.apply(std::move(reply));
    if (disturbed.disturbed)
        ++m_counters.disturbedReplies;
    if (disturbed.pieces.empty())
        return;
    ++m_counters.replies;
    if (isException)
        ++m_counters.exceptions;

    nanoseconds onWire{0};
    for (const ReplyPiece &piece : disturbed.pieces) {
        onWire += wireTime(piece.bytes.size());
        OutgoingChunk chunk;
        chunk.due = start + piece.delay + onWire;
        chunk.bytes = piece.bytes;
        chunk.answersCleanly = !disturbed.disturbed;
        m_lineFree = chunk.due;
        m_outbox.push(std::move(chunk));
    }
}

void DriveLoop::advanceDrive(TimePoint now)
{
    if (m_frozen)
        return;
    std::int64_t samples = (now - m_modelTime) / samplePeriod;
    m_modelTime += samples * samplePeriod;
    if (m_drive.stream().isRunning())
        samples = std::min(samples, mostSamplesToCatchUp);
    m_drive.advance(samples, [this, now](Bytes frame) { sendStreamFrame(std::move(frame), now); });
}

void DriveLoop::sendStreamFrame(Bytes frame, TimePoint now)
{
    const nanoseconds onWire = wireTime(frame.size());
    const bool lineIsFull = m_pacing.baud > 0 && m_lineFree > now;
    if (!m_terminal.isOpen() || lineIsFull) {
        ++m_counters.streamFramesDropped;
        return;
    }
    OutgoingChunk chunk;
    chunk.kind = FrameKind::StreamFrame;
    chunk.due = std::max(now, m_streamFree) + onWire;
    chunk.bytes = std::move(frame);
    m_streamFree = chunk.due + streamSpacing;
    if (onWire.count() > 0)
        m_lineFree = chunk.due;
    m_outbox.push(std::move(chunk));
}

void DriveLoop::makeGarbage(TimePoint now)
{
    if (!m_nextGarbage || now < *m_nextGarbage)
        return;
    const auto perSecond =
        static_cast<std::size_t>((m_pacing.baud > 0 ? m_pacing.baud : garbageBaud) / bitsPerCharacter);
    const std::size_t size = std::max<std::size_t>(perSecond * garbagePeriod.count() / 1000, 3);
    Bytes noise;
    for (std::size_t i = 0; i < size; ++i)
        noise.push_back(static_cast<std::uint8_t>(m_random() >> 8));
    // Noise that happens to be a frame would be a fault of the test, not of the line.
    std::replace(noise.begin(), noise.end(), std::uint8_t{0x01}, std::uint8_t{0x81});
    if (endsWithItsCrc(noise.data(), noise.size()))
        noise.back() ^= 0xff;

    OutgoingChunk chunk;
    chunk.due = now;
    chunk.kind = FrameKind::Noise;
    chunk.bytes = std::move(noise);
    m_outbox.push(std::move(chunk));
    m_nextGarbage = now + garbagePeriod;
}

void DriveLoop::sendDue(TimePoint now)
{
    while (const std::optional<OutgoingChunk> chunk = m_outbox.takeDue(now)) {
        if (m_terminal.isOpen() && now >= m_silentUntil)
            send(*chunk);
    }
}

void DriveLoop::send(const OutgoingChunk &chunk)
{
    // Before the client can have the bytes, so that whoever has read a frame finds it in the log.
    log(chunk.kind, chunk.bytes);
    const std::size_t written = m_terminal.write(chunk.bytes.data(), chunk.bytes.size());
    m_counters.bytesSent += written;
    if (chunk.kind == FrameKind::StreamFrame)
        ++(written == chunk.bytes.size() ? m_counters.streamFrames : m_counters.streamFramesDropped);
    if (chunk.answersCleanly)
        m_lastAnswered = true;
}

void DriveLoop::setFault(const Fault &fault)
{
    switch (fault.kind) {
    case FaultKind::Silence:
        m_silentUntil = Clock::now() + milliseconds(fault.milliseconds);
        break;
    case FaultKind::HangUp:
        hangUp(milliseconds(fault.milliseconds));
        break;
    case FaultKind::Garbage:
        m_nextGarbage = fault.on ? std::optional<TimePoint>(Clock::now()) : std::nullopt;
        break;
    case FaultKind::UnaskedStream:
        if (fault.on)
            startUnaskedStream();
        else
            m_drive.stream().stop();
        break;
    case FaultKind::Clear:
        clearFaults();
        break;
    default:
        m_disturber.set(fault);
        break;
    }
}

void DriveLoop::startUnaskedStream()
{
    ScopeSelection selection{};
    selection[0].on = true;
    advanceDrive(Clock::now());
    m_drive.stream().start(selection);
    m_unaskedStream = true;
}

void DriveLoop::clearFaults()
{
    m_disturber.clear();
    m_silentUntil = TimePoint{};
    m_nextGarbage.reset();
    if (m_unaskedStream)
        m_drive.stream().stop();
    m_unaskedStream = false;
    if (m_hungUp)
        m_returnAt = Clock::now();
}

void DriveLoop::freeze()
{
    advanceDrive(Clock::now());
    m_frozen = true;
}

void DriveLoop::unfreeze()
{
    m_modelTime = Clock::now();
    m_frozen = false;
}

void DriveLoop::step(nanoseconds time)
{
    const TimePoint now = Clock::now();
    advanceDrive(now);
    m_steppedRest += time;
    const std::int64_t samples = m_steppedRest / samplePeriod;
    m_steppedRest -= samples * samplePeriod;
    m_drive.advance(samples, [this, now](Bytes frame) { sendStreamFrame(std::move(frame), now); });
}

void DriveLoop::powerCycle()
{
    m_framer.clear();
    m_outbox.clear();
    m_unaskedStream = false;
    m_drive.powerCycle();
}

void DriveLoop::factoryReset()
{
    powerCycle();
    m_drive.factoryReset();
}

std::string DriveLoop::logToFile(const std::string &path)
{
    m_logFile.close();
    m_logFile.clear();
    if (path.empty())
        return {};
    m_logFile.open(path, std::ios::out | std::ios::trunc);
    return m_logFile.is_open() ? std::string() : path + ": can't be written";
}

void DriveLoop::hangUp(milliseconds duration)
{
    if (!m_hungUp && !m_terminal.isOpen())
        return;
    m_returnAt.reset();
    if (duration.count() > 0)
        m_returnAt = Clock::now() + duration;
    if (m_hungUp)
        return;
    m_hungUp = true;
    ++m_counters.hangUps;
    m_terminal.close();
    m_framer.clear();
    m_outbox.clear();
    if (m_lineListener)
        m_lineListener(false);
}

void DriveLoop::returnIfDue(TimePoint now)
{
    if (!m_returnAt || now < *m_returnAt)
        return;
    if (!m_terminal.open().empty()) { // no terminal is free for the moment
        m_returnAt = now + reopenPeriod;
        return;
    }
    m_returnAt.reset();
    m_hungUp = false;
    if (m_lineListener)
        m_lineListener(true);
}

nanoseconds DriveLoop::wireTime(std::size_t bytes) const
{
    if (m_pacing.baud <= 0)
        return nanoseconds{0};
    return nanoseconds{static_cast<std::int64_t>(bytes) * bitsPerCharacter * 1'000'000'000 / m_pacing.baud};
}

void DriveLoop::log(FrameKind kind, const Bytes &bytes)
{
    if (m_listener || m_logFile.is_open())
        writeLog(kind, bytes);
}

void DriveLoop::writeLog(FrameKind kind, const Bytes &bytes)
{
    const LoggedFrame frame{Clock::now() - m_start, kind, bytes};
    if (m_listener)
        m_listener(frame);
    if (m_logFile.is_open())
        m_logFile << toLine(frame) << '\n' << std::flush;
}

} // namespace kt500sim
