// SPDX-License-Identifier: GPL-3.0-or-later
#include "wakeup.h"

#include "link/devicewait.h"
#include "report.h"

#include <array>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <stdexcept>
#include <thread>

#include <unistd.h>

namespace {

using Clock = std::chrono::steady_clock;

constexpr int sleeps = 1000;
constexpr std::chrono::microseconds sleepTime(500);

double microseconds(Clock::duration duration)
{
    return std::chrono::duration<double, std::micro>(duration).count();
}

} // namespace

WakeUpCost wakeUpCost()
{
    std::array<int, 2> ends{{-1, -1}};
    if (::pipe(ends.data()) != 0)
        throw std::runtime_error(std::strerror(errno));
    const int readEnd = ends[0];
    const int writeEnd = ends[1];
    std::atomic<Clock::time_point> written{Clock::time_point()};
    QVector<double> byThread;
    QVector<double> byTimer;
    std::thread sleeper([readEnd, &written, &byThread] {
        char byte = 0;
        while (::read(readEnd, &byte, 1) == 1)
            byThread.append(microseconds(Clock::now() - written.load()));
    });
    std::thread waker([writeEnd, &written, &byTimer] {
        DeviceWait::sharpenTimers();
        for (int i = 0; i < sleeps; ++i) {
            const Clock::time_point due = Clock::now() + sleepTime;
            std::this_thread::sleep_until(due);
            byTimer.append(microseconds(Clock::now() - due));
            const char byte = 0;
            written = Clock::now();
            if (::write(writeEnd, &byte, 1) != 1)
                break;
        }
        ::close(writeEnd);
    });
    waker.join();
    sleeper.join();
    ::close(readEnd);
    return {median(byThread), median(byTimer)};
}
