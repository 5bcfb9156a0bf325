// SPDX-License-Identifier: GPL-3.0-or-later
// Waits with the device's own blocking calls alone, in slices of 1 ms where a wake-up may end the wait.
#include "link/devicewait.h"

#include <QSerialPort>
#include <QThread>

#include <atomic>
#include <thread>

struct DeviceWait::Handles
{
    std::atomic<bool> woken{false};
};

DeviceWait::DeviceWait()
    : handles(std::make_unique<Handles>())
{
}

DeviceWait::~DeviceWait() = default;

DeviceWait::Result DeviceWait::wait(QSerialPort &device, int milliseconds, bool wakeable)
{
    const Clock::time_point until = Clock::now() + std::chrono::milliseconds(milliseconds);
    if (device.bytesAvailable() > 0)
        return Result::Ready;
    for (;;) {
        if (wakeable && handles->woken.exchange(false))
            return Result::Woken;
        const Clock::time_point begin = Clock::now();
        if (begin >= until)
            return Result::TimedOut;
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(until - begin).count();
        const int slice = wakeable ? 1 : static_cast<int>(qMax<qint64>(1, left));
        if (device.waitForReadyRead(slice) || device.bytesAvailable() > 0)
            return Result::Ready;
        // A device that has failed returns at once; its share of the wait is kept.
        std::this_thread::sleep_until(qMin(until, begin + std::chrono::milliseconds(1)));
    }
}

void DeviceWait::expectCall() {}

void DeviceWait::wake()
{
    handles->woken = true;
}

void DeviceWait::holdUntil(Clock::time_point time)
{
    std::this_thread::sleep_until(time);
}

void DeviceWait::sharpenTimers() {}
