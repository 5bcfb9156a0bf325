// SPDX-License-Identifier: GPL-3.0-or-later
// How the link's worker waits: for bytes of the device, for a request that ends an idle wait, for the silent
// gap. One object per SerialPort, which owns it; the waits on the worker thread, wake(), stop() and resume()
// on any.
#pragma once

#include <QtGlobal>

#include <chrono>
#include <memory>

class QSerialPort;

class DeviceWait
{
public:
    using Clock = std::chrono::steady_clock;

    enum class Result {
        Ready,    // bytes have arrived and can be read
        TimedOut, // the time has passed, or the device has failed and the time has been waited out
        Woken,    // wake() was called; only where the caller allowed it
        Stopped   // stop() was called; only where the caller allowed it
    };
    // What ends a wait beside bytes and time.
    enum class EndedBy { Time, Stop, StopOrCall };

    DeviceWait();
    ~DeviceWait();
    Q_DISABLE_COPY_MOVE(DeviceWait)

    // Finishes what was written to the device, then waits up to milliseconds for bytes. A device that has
    // failed or gone never makes this return early: a caller that loops can't spin.
    Result wait(QSerialPort &device, int milliseconds, EndedBy ends);

    // Ends the present wait that a call may end, or the next one if there is none.
    void wake();

    // Ends the present wait, and until resume() every later one at once, except those that only time ends.
    void stop();
    void resume();

    // Says that a call is likely to follow at once: a reply has gone to a window that may ask for the next
    // value.
    void expectCall();

    // Waits until the time given and says whether the line was silent: false as soon as the device has bytes
    // to read, and at a stop.
    bool waitForSilence(QSerialPort &device, Clock::time_point until);

    // Sleeps until the time given, or a stop.
    void pause(Clock::time_point until);

    // Asks the system for exact timers on the calling thread, where it offers that.
    static void sharpenTimers();

private:
    struct Handles;
    std::unique_ptr<Handles> handles;
};
