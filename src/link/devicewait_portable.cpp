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
    std::atomic<bool> stopped{false};
};

DeviceWait::DeviceWait()
    : handles(std::make_unique<Handles>())
{
}

DeviceWait::~DeviceWait() = default;

DeviceWait::Result DeviceWait::wait(QSerialPort &device, int milliseconds, EndedBy ends)
{
    const Clock::time_point until = Clock::now() + std::chrono::milliseconds(milliseconds);
    if (device.bytesAvailable() > 0)
        return Result::Ready;
    for (;;) {
        if (ends != EndedBy::Time && handles->stopped)
            return Result::Stopped;
        if (ends == EndedBy::StopOrCall && handles->woken.exchange(false))
            return Result::Woken;
        const Clock::time_point begin = Clock::now();
        if (begin >= until)
            return Result::TimedOut;
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(until - begin).count();
        const int slice = ends == EndedBy::StopOrCall ? 1 : static_cast<int>(qMax<qint64>(1, left));
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

void DeviceWait::stop()
{
    handles->stopped = true;
}

void DeviceWait::resume()
{
    handles->stopped = false;
}

bool DeviceWait::waitForSilence(QSerialPort &device, Clock::time_point until)
{
    // The device's shortest wait lasts a millisecond; what is left of the time is slept.
    while (device.bytesAvailable() == 0 && !handles->stopped) {
        const auto left = until - Clock::now();
        if (left < std::chrono::milliseconds(1)) {
            std::this_thread::sleep_until(until);
            return !device.waitForReadyRead(0) && device.bytesAvailable() == 0;
        }
        device.waitForReadyRead(1);
    }
    return false;
}

void DeviceWait::pause(Clock::time_point until)
{
    while (!handles->stopped && Clock::now() < until)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
}

void DeviceWait::sharpenTimers() {}
