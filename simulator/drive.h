// SPDX-License-Identifier: GPL-3.0-or-later
// The drive itself, without a line and without a clock: registers, model, scope stream, and the answer to
// each request.
//
// Owned by SimulatedDrive and used on its loop thread; a test may own one and call it directly.
#pragma once

#include "simulator/bytes.h"
#include "simulator/clock.h"
#include "simulator/drivemodel.h"
#include "simulator/registerfile.h"
#include "simulator/scopestream.h"

#include <functional>
#include <memory>

namespace kt500sim {

/// Exception codes of the protocol, as they stand in the third byte of an exception reply.
enum class ExceptionCode : std::uint8_t { IllegalFunction = 1, IllegalAddress = 2, IllegalValue = 3 };

/// A complete exception reply, checksum included.
Bytes exceptionReply(std::uint8_t station, std::uint8_t function, std::uint8_t code);

class Drive
{
public:
    using FrameSink = std::function<void(Bytes frame)>;

    Drive(const RegisterTable &table, std::unique_ptr<DriveModel> model, int station, int samplesPerFrame);

    /// Executes a request whose checksum is good and gives the complete reply; nothing if the drive stays
    /// silent: another station's frame, and every frame of function 0x14 that is in order.
    Bytes answer(const Bytes &request);
    bool isForThisStation(const Bytes &request) const;
    std::uint8_t station() const { return m_station; }

    /// Moves time on by \a samples sample periods; stream frames that get finished go to \a sink in order.
    void advance(std::int64_t samples, const FrameSink &sink);

    void powerCycle();
    /// Factory values into both copies, and a power cycle.
    void factoryReset();

    /// The registers with their status brought up to date.
    const RegisterFile &registers();
    /// As a client would, but reaches read-only registers too; ignores offsets without a register.
    void setRegister(int offset, std::uint16_t value, RegisterFile::Copy copy);

    /// The motor behind the registers; null with a model that has none.
    MotorModel *motor() { return m_model->motor(); }
    /// Fault by its number; false if one is present, there is no such number, or there is no motor.
    bool raiseFault(int number);

    ScopeStream &stream() { return m_stream; }
    const ScopeStream &stream() const { return m_stream; }
    milliseconds longestRest() const { return m_model->longestRest(); }

private:
    Bytes readRegisters(const Bytes &request);
    Bytes writeOne(const Bytes &request);
    Bytes writeSeveral(const Bytes &request);
    Bytes controlStream(const Bytes &request);
    void reportWrite(int firstOffset, int count, RegisterFile::Copy copy);
    Bytes refuse(const Bytes &request, ExceptionCode code) const;
    bool allWritable(int offset, int count) const;

    RegisterFile m_registers;
    std::unique_ptr<DriveModel> m_model;
    ScopeStream m_stream;
    std::uint8_t m_station;
};

} // namespace kt500sim
