// SPDX-License-Identifier: GPL-3.0-or-later
// What moves inside the drive: the source of its status registers and of its scope items.
//
// Lives on the thread of the Drive that owns it. A model knows no clock: time reaches it only as a number of
// sample periods, so that it runs as well frozen, or faster than the wall clock.
#pragma once

#include "simulator/registerfile.h"

#include <chrono>
#include <cstdint>

namespace kt500sim {

/// Scope samples, and with them the model's steps, per second.
constexpr int samplesPerSecond = 8000;
constexpr std::chrono::nanoseconds samplePeriod{1'000'000'000 / samplesPerSecond};

class MotorModel;

class DriveModel
{
public:
    DriveModel() = default;
    virtual ~DriveModel() = default;
    DriveModel(const DriveModel &) = delete;
    DriveModel &operator=(const DriveModel &) = delete;

    /// The drive has been switched on; the working copy of \a registers has just been loaded.
    virtual void powerOn(RegisterFile &registers) = 0;

    /// Moves the model on by \a samples sample periods, at least one.
    virtual void advance(RegisterFile &registers, std::int64_t samples) = 0;

    /// Brings the status registers up to the model's present time; called before they are looked at.
    virtual void refreshStatus(RegisterFile &registers) = 0;

    /// A client has written \a count registers from \a firstOffset on.
    virtual void registersWritten(RegisterFile &registers, int firstOffset, int count) = 0;

    /// Of the registers written, the stored copy has been reached too; called once a request.
    virtual void storedCopyWritten(RegisterFile &) {}

    /// The model with a motor behind it; null for another.
    virtual MotorModel *motor() { return nullptr; }

    /// The present value of scope item number \a item, in its raw unit; 0 for an item that is not known.
    virtual std::int32_t scopeValue(int item) const = 0;

    /// How long the model may be left alone before the next advance(): short while something moves that has
    /// to be followed, long while all is at rest.
    virtual std::chrono::milliseconds longestRest() const = 0;
};

} // namespace kt500sim
