// SPDX-License-Identifier: GPL-3.0-or-later
// Waits by poll() on the device's handle and on a wake-up pipe: nothing is polled in slices. The pipe is
// written to only while the worker sleeps on it: of an exchange that is chained on its reply, most of the
// time goes into such system calls.
#include "link/devicewait.h"

#include <QSerialPort>

#include <array>
#include <atomic>
#include <cerrno>
#include <ctime>

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>
#ifdef Q_OS_LINUX
#include <sys/prctl.h>
#endif

struct DeviceWait::Handles
{
    enum State {
        Awake,    // the worker looks after its queue before it sleeps
        Sleeping, // the worker sleeps on the pipe, or is about to
        Called    // wake() came; the worker has not taken notice yet
    };

    int readEnd = -1;
    int writeEnd = -1;
    std::atomic<int> state{Awake};

    bool isCallExpected = false; // worker only

    // Looks out for an expected call for a moment: going to sleep and being woken takes longer than the main
    // thread needs for its answer to a reply.
    void lookOut();
    // False when a call came before: there is nothing to sleep for.
    bool goToSleep();
    void getUp(Result result);
    // Sleeps until the device has bytes, the time is over or, where that is allowed, a call comes.
    Result sleep(QSerialPort &device, Clock::time_point until, bool wakeable) const;
};

namespace {

constexpr std::chrono::microseconds lookOutTime(60);

timespec remaining(DeviceWait::Clock::time_point until)
{
    using namespace std::chrono;
    auto left = duration_cast<nanoseconds>(until - DeviceWait::Clock::now());
    if (left < nanoseconds::zero())
        left = nanoseconds::zero();
    timespec time{};
    time.tv_sec = static_cast<time_t>(left.count() / 1000000000);
    time.tv_nsec = static_cast<long>(left.count() % 1000000000);
    return time;
}

bool isOver(DeviceWait::Clock::time_point until)
{
    return DeviceWait::Clock::now() >= until;
}

int pollUntil(pollfd *handles, nfds_t count, DeviceWait::Clock::time_point until)
{
#ifdef Q_OS_LINUX
    const timespec time = remaining(until);
    return ::ppoll(handles, count, &time, nullptr);
#else
    const timespec time = remaining(until);
    return ::poll(handles, count, static_cast<int>(time.tv_sec * 1000 + (time.tv_nsec + 999999) / 1000000));
#endif
}

} // namespace

DeviceWait::DeviceWait()
    : handles(std::make_unique<Handles>())
{
    std::array<int, 2> ends{{-1, -1}};
    if (::pipe(ends.data()) != 0)
        return;
    for (const int end : ends) {
        ::fcntl(end, F_SETFD, FD_CLOEXEC);
        ::fcntl(end, F_SETFL, O_NONBLOCK);
    }
    handles->readEnd = ends[0];
    handles->writeEnd = ends[1];
}

DeviceWait::~DeviceWait()
{
    if (handles->readEnd >= 0)
        ::close(handles->readEnd);
    if (handles->writeEnd >= 0)
        ::close(handles->writeEnd);
}

void DeviceWait::Handles::lookOut()
{
    if (!isCallExpected)
        return;
    isCallExpected = false;
    const Clock::time_point until = Clock::now() + lookOutTime;
    while (state.load(std::memory_order_relaxed) == Awake && !isOver(until)) {
    }
}

bool DeviceWait::Handles::goToSleep()
{
    int awake = Awake;
    if (state.compare_exchange_strong(awake, Sleeping))
        return true;
    state = Awake;
    return false;
}

void DeviceWait::Handles::getUp(Result result)
{
    const bool called = state.exchange(Awake) == Called;
    if (!called && result != Result::Woken)
        return;
    // A caller that is about to write leaves a byte behind, which ends a later sleep early and does no harm.
    std::array<char, 64> bytes{};
    while (::read(readEnd, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size())) {
    }
}

DeviceWait::Result DeviceWait::Handles::sleep(QSerialPort &device, Clock::time_point until,
                                              bool wakeable) const
{
    pollfd call{wakeable ? readEnd : -1, POLLIN, 0};
    for (;;) {
        // What the device did not take at once is written as soon as it has room again.
        if (device.bytesToWrite() > 0)
            device.flush();
        const short writing = device.bytesToWrite() > 0 ? POLLOUT : short(0);
        std::array<pollfd, 2> polled{{{static_cast<int>(device.handle()), short(POLLIN | writing), 0}, call}};
        const int ready = pollUntil(polled.data(), polled.size(), until);
        if (ready < 0 && errno == EINTR)
            continue;
        if (ready <= 0)
            return Result::TimedOut;
        if (polled[0].revents & (POLLIN | POLLHUP | POLLERR | POLLNVAL)) {
            if (device.waitForReadyRead(0) || device.bytesAvailable() > 0)
                return Result::Ready;
            // The device reports an end or an error at once and for ever; its share of the wait is kept.
            while (!isOver(until)) {
                if (pollUntil(&call, 1, until) > 0)
                    return Result::Woken;
            }
            return Result::TimedOut;
        }
        if (polled[1].revents & POLLIN)
            return Result::Woken;
    }
}

DeviceWait::Result DeviceWait::wait(QSerialPort &device, int milliseconds, bool wakeable)
{
    const Clock::time_point until = Clock::now() + std::chrono::milliseconds(milliseconds);
    if (device.bytesAvailable() > 0)
        return Result::Ready;
    if (!wakeable)
        return handles->sleep(device, until, false);
    handles->lookOut();
    if (!handles->goToSleep())
        return Result::Woken;
    const Result result = handles->sleep(device, until, true);
    handles->getUp(result);
    return result;
}

void DeviceWait::expectCall()
{
    handles->isCallExpected = true;
}

void DeviceWait::wake()
{
    if (handles->state.exchange(Handles::Called) != Handles::Sleeping)
        return;
    const char byte = 0;
    [[maybe_unused]] const ssize_t written = ::write(handles->writeEnd, &byte, 1);
}

void DeviceWait::holdUntil(Clock::time_point time)
{
    while (!isOver(time)) {
        const timespec left = remaining(time);
        ::nanosleep(&left, nullptr);
    }
}

void DeviceWait::sharpenTimers()
{
#ifdef Q_OS_LINUX
    // The default slack of 50 microseconds would be added to every gap.
    ::prctl(PR_SET_TIMERSLACK, 1000UL, 0UL, 0UL, 0UL);
#endif
}
