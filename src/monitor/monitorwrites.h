// SPDX-License-Identifier: GPL-3.0-or-later
// Frames that the monitor sends beside its polls, and what waits to be sent. Plain values and pure functions;
// any thread.
#pragma once

#include <QByteArray>
#include <QList>

#include <array>
#include <cstddef>

// What a user may ask for, in the order in which it is served.
enum class MonitorWrite {
    DISource,
    DOSource,
    DIFunction,
    DOFunction,
    DILevel,
    DOLevel,
    Method,
    Pn300,
    LineEdit,
    OtherCombo,
};
constexpr std::size_t monitorWriteCount = 10;

constexpr int lineEditCount = 10;
constexpr int otherComboCount = 3;
constexpr int methodCount = 3;

// The request, CRC included. number is the row of a function, or the index of a line edit or a combo box;
// an empty frame for a number that stands for nothing.
QByteArray writeFrame(MonitorWrite write, int number, int value);

// Resets the drive's fault; the working copy only.
QByteArray faultClearFrame();

// The read that begins a read sequence: Pn-100, the control method.
QByteArray methodReadFrame();

// The reads of a control method's run parameters, in order; none for a method that is not known.
QList<QByteArray> runReadFrames(int method);

// One request of each kind at most: a newer one replaces the older. Served in the order of MonitorWrite.
class PendingWrites
{
public:
    struct Write
    {
        MonitorWrite kind = MonitorWrite::DISource;
        int number = 0;
        int value = 0;
    };

    void set(const Write &write);
    void clear(MonitorWrite kind);
    bool isPending(MonitorWrite kind) const;
    bool isEmpty() const;
    // Removes the first in order; there must be one.
    Write takeFirst();

private:
    struct Slot
    {
        bool isPending = false;
        Write write;
    };
    std::array<Slot, monitorWriteCount> places;
};
