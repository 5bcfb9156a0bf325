// SPDX-License-Identifier: GPL-3.0-or-later
#include "simulator/drive.h"

#include "simulator/crc16.h"
#include "simulator/model/motormodel.h"

namespace kt500sim {
namespace {

constexpr std::uint8_t readFunction = 0x03;
constexpr std::uint8_t writeOneFunction = 0x06;
constexpr std::uint8_t writeSeveralFunction = 0x10;
constexpr std::uint8_t scopeFunction = 0x14;
constexpr std::uint8_t exceptionBit = 0x80;

// The same registers stand at two bases; a write by the second reaches the stored copy too.
constexpr int workingBase = 0x2000;
constexpr int storedBase = 0xe000;

constexpr int mostRegistersRead = 125;
constexpr int mostRegistersWritten = 123;

constexpr std::size_t shortFrameSize = 8; // station, function, two words, checksum

struct Place
{
    int offset = -1; ///< negative or beyond the register space when the address belongs to neither base
    RegisterFile::Copy copy = RegisterFile::Copy::Working;
};

Place placeOf(std::uint16_t address)
{
    if (address >= storedBase)
        return {address - storedBase, RegisterFile::Copy::WorkingAndStored};
    return {address - workingBase, RegisterFile::Copy::Working};
}

} // namespace

Bytes exceptionReply(std::uint8_t station, std::uint8_t function, std::uint8_t code)
{
    Bytes reply{station, static_cast<std::uint8_t>(function | exceptionBit), code};
    appendCrc(reply);
    return reply;
}

Drive::Drive(const RegisterTable &table, std::unique_ptr<DriveModel> model, int station, int samplesPerFrame)
    : m_registers(table)
    , m_model(std::move(model))
    , m_stream(samplesPerFrame)
    , m_station(static_cast<std::uint8_t>(station))
{
    m_model->powerOn(m_registers);
}

bool Drive::isForThisStation(const Bytes &request) const
{
    return request.size() >= 4 && request[0] == m_station;
}

Bytes Drive::answer(const Bytes &request)
{
    if (!isForThisStation(request))
        return {};
    switch (request[1]) {
    case readFunction:
        return readRegisters(request);
    case writeOneFunction:
        return writeOne(request);
    case writeSeveralFunction:
        return writeSeveral(request);
    case scopeFunction:
        return controlStream(request);
    default:
        return refuse(request, ExceptionCode::IllegalFunction);
    }
}

void Drive::advance(std::int64_t samples, const FrameSink &sink)
{
    if (samples <= 0)
        return;
    if (!m_stream.isRunning()) {
        m_model->advance(m_registers, samples);
        return;
    }
    for (std::int64_t i = 0; i < samples; ++i) {
        m_model->advance(m_registers, 1);
        if (std::optional<Bytes> frame = m_stream.takeSample(*m_model))
            sink(std::move(*frame));
    }
}

void Drive::powerCycle()
{
    m_stream.stop();
    m_registers.powerCycle();
    m_model->powerOn(m_registers);
}

void Drive::factoryReset()
{
    m_registers.factoryReset();
    powerCycle();
}

bool Drive::raiseFault(int number)
{
    return motor() != nullptr && motor()->raiseFault(m_registers, number);
}

const RegisterFile &Drive::registers()
{
    m_model->refreshStatus(m_registers);
    return m_registers;
}

void Drive::setRegister(int offset, std::uint16_t value, RegisterFile::Copy copy)
{
    m_registers.set(offset, value, copy);
    m_model->registersWritten(m_registers, offset, 1);
}

Bytes Drive::readRegisters(const Bytes &request)
{
    if (request.size() != shortFrameSize)
        return refuse(request, ExceptionCode::IllegalValue);
    const Place place = placeOf(wordAt(request, 2));
    const int count = wordAt(request, 4);
    if (count < 1 || count > mostRegistersRead)
        return refuse(request, ExceptionCode::IllegalValue);
    for (int i = 0; i < count; ++i) {
        if (!m_registers.exists(place.offset + i))
            return refuse(request, ExceptionCode::IllegalAddress);
    }

    if (place.offset + count > statusStart)
        m_model->refreshStatus(m_registers);
    const bool working = place.copy == RegisterFile::Copy::Working;
    Bytes reply{m_station, readFunction, static_cast<std::uint8_t>(2 * count)};
    reply.reserve(5 + 2 * static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        const int offset = place.offset + i;
        appendWord(reply, working ? m_registers.working(offset) : m_registers.stored(offset));
    }
    appendCrc(reply);
    return reply;
}

Bytes Drive::writeOne(const Bytes &request)
{
    if (request.size() != shortFrameSize)
        return refuse(request, ExceptionCode::IllegalValue);
    const Place place = placeOf(wordAt(request, 2));
    if (!allWritable(place.offset, 1))
        return refuse(request, ExceptionCode::IllegalAddress);
    m_registers.set(place.offset, wordAt(request, 4), place.copy);
    reportWrite(place.offset, 1, place.copy);
    return request; // the acknowledgement of this function is its echo
}

Bytes Drive::writeSeveral(const Bytes &request)
{
    constexpr std::size_t headSize = 7;
    if (request.size() < headSize + 2)
        return refuse(request, ExceptionCode::IllegalValue);
    const Place place = placeOf(wordAt(request, 2));
    const int count = wordAt(request, 4);
    const std::size_t dataSize = request[6];
    if (count < 1 || count > mostRegistersWritten || dataSize != 2 * static_cast<std::size_t>(count) ||
        request.size() != headSize + dataSize + 2)
        return refuse(request, ExceptionCode::IllegalValue);
    if (!allWritable(place.offset, count))
        return refuse(request, ExceptionCode::IllegalAddress);

    for (int i = 0; i < count; ++i) {
        const std::uint16_t value = wordAt(request, headSize + 2 * static_cast<std::size_t>(i));
        m_registers.set(place.offset + i, value, place.copy);
    }
    reportWrite(place.offset, count, place.copy);
    Bytes reply(request.begin(), request.begin() + 6);
    appendCrc(reply);
    return reply;
}

void Drive::reportWrite(int firstOffset, int count, RegisterFile::Copy copy)
{
    m_model->registersWritten(m_registers, firstOffset, count);
    if (copy == RegisterFile::Copy::WorkingAndStored)
        m_model->storedCopyWritten(m_registers);
}

Bytes Drive::controlStream(const Bytes &request)
{
    const std::optional<ScopeSelection> selection = ScopeStream::parseRequest(request);
    if (!selection)
        return refuse(request, ExceptionCode::IllegalValue);
    m_stream.start(*selection);
    return {};
}

Bytes Drive::refuse(const Bytes &request, ExceptionCode code) const
{
    return exceptionReply(m_station, request[1], static_cast<std::uint8_t>(code));
}

bool Drive::allWritable(int offset, int count) const
{
    for (int i = 0; i < count; ++i) {
        if (!m_registers.exists(offset + i) || m_registers.isReadOnly(offset + i))
            return false;
    }
    return true;
}

} // namespace kt500sim
