// SPDX-License-Identifier: GPL-3.0-or-later
// Waits by poll() on the device's handle and on two pipes, for calls and for a stop: nothing is polled in
// slices. The pipe for calls is written to only while the worker sleeps on it: of an exchange that is chained
// on its reply, most of the time goes into such system calls.
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

namespace {

struct Pipe
{
    Pipe();
    ~Pipe();
    Q_DISABLE_COPY_MOVE(Pipe)
    void put();
    void empty();

    int readEnd = -1;
    int writeEnd = -1;
};

} // namespace

struct DeviceWait::Handles
{
    enum State {
        Awake,    // the worker looks after its queue before it sleeps
        Sleeping, // the worker sleeps on the pipe, or is about to
        Called    // wake() came; the worker has not taken notice yet
    };

    Pipe calls;
    Pipe stops; // holds a byte from stop() to resume()
    std::atomic<int> state{Awake};

    bool isCallExpected = false; // worker only

    // Looks out for an expected call for a moment: going to sleep and being woken takes longer than the main
    // thread needs for its answer to a reply.
    void lookOut();
    // False when a call came before: there is nothing to sleep for.
    bool goToSleep();
    void getUp(Result result);
    // Sleeps until the device has bytes, the time is over or, where that is allowed, a stop or a call comes.
    Result sleep(QSerialPort &device, Clock::time_point until, EndedBy ends) const;
    // The same without the device: only the time, a stop or a call ends it.
    Result sleepOn(std::array<pollfd, 2> ending, Clock::time_point until) const;
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

Pipe::Pipe()
{
    std::array<int, 2> ends{{-1, -1}};
    if (::pipe(ends.data()) != 0)
        return;
    for (const int end : ends) {
        ::fcntl(end, F_SETFD, FD_CLOEXEC);
        ::fcntl(end, F_SETFL, O_NONBLOCK);
    }
    readEnd = ends[0];
    writeEnd = ends[1];
}

Pipe::~Pipe()
{
    if (readEnd >= 0)
        ::close(readEnd);
    if (writeEnd >= 0)
        ::close(writeEnd);
}

void Pipe::put()
{
    const char byte = 0;
    [[maybe_unused]] const ssize_t written = ::write(writeEnd, &byte, 1);
}

void Pipe::empty()
{
    std::array<char, 64> bytes{};
    while (::read(readEnd, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size())) {
    }
}

DeviceWait::DeviceWait()
    : handles(std::make_unique<Handles>())
{
}

DeviceWait::~DeviceWait() = default;

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
    calls.empty();
}

DeviceWait::Result DeviceWait::Handles::sleepOn(std::array<pollfd, 2> ending, Clock::time_point until) const
{
    while (!isOver(until)) {
        if (pollUntil(ending.data(), ending.size(), until) > 0)
            return ending[0].revents != 0 ? Result::Stopped : Result::Woken;
    }
    return Result::TimedOut;
}

DeviceWait::Result DeviceWait::Handles::sleep(QSerialPort &device, Clock::time_point until,
                                              EndedBy ends) const
{
    const pollfd stop{ends == EndedBy::Time ? -1 : stops.readEnd, POLLIN, 0};
    const pollfd call{ends == EndedBy::StopOrCall ? calls.readEnd : -1, POLLIN, 0};
    bool takesBytes = true;
    for (;;) {
        // What the device did not take at once is written as soon as it has room again. A device that has
        // room and takes nothing has failed, and would end every poll at once.
        if (takesBytes && device.bytesToWrite() > 0)
            device.flush();
        const short writing = takesBytes && device.bytesToWrite() > 0 ? POLLOUT : short(0);
        std::array<pollfd, 3> polled{
            {{static_cast<int>(device.handle()), short(POLLIN | writing), 0}, stop, call}};
        const int ready = pollUntil(polled.data(), polled.size(), until);
        if (ready < 0 && errno == EINTR)
            continue;
        if (ready <= 0)
            return Result::TimedOut;
        if (polled[1].revents != 0)
            return Result::Stopped;
        if (polled[0].revents & (POLLIN | POLLHUP | POLLERR | POLLNVAL)) {
            if (device.waitForReadyRead(0) || device.bytesAvailable() > 0)
                return Result::Ready;
            // The device reports an end or an error at once and for ever; its share of the wait is kept.
            return sleepOn({{stop, call}}, until);
        }
        if (polled[2].revents != 0)
            return Result::Woken;
        const qint64 left = device.bytesToWrite();
        device.flush();
        takesBytes = device.bytesToWrite() < left;
    }
}

DeviceWait::Result DeviceWait::wait(QSerialPort &device, int milliseconds, EndedBy ends)
{
    const Clock::time_point until = Clock::now() + std::chrono::milliseconds(milliseconds);
    if (device.bytesAvailable() > 0)
        return Result::Ready;
    if (ends != EndedBy::StopOrCall)
        return handles->sleep(device, until, ends);
    handles->lookOut();
    if (!handles->goToSleep())
        return Result::Woken;
    const Result result = handles->sleep(device, until, ends);
    handles->getUp(result);
    return result;
}

bool DeviceWait::waitForSilence(QSerialPort &device, Clock::time_point until)
{
    return handles->sleep(device, until, EndedBy::Stop) == Result::TimedOut;
}

void DeviceWait::pause(Clock::time_point until)
{
    handles->sleepOn({{{handles->stops.readEnd, POLLIN, 0}, {-1, 0, 0}}}, until);
}

void DeviceWait::expectCall()
{
    handles->isCallExpected = true;
}

void DeviceWait::wake()
{
    if (handles->state.exchange(Handles::Called) == Handles::Sleeping)
        handles->calls.put();
}

void DeviceWait::stop()
{
    handles->stops.put();
}

void DeviceWait::resume()
{
    handles->stops.empty();
}

void DeviceWait::sharpenTimers()
{
#ifdef Q_OS_LINUX
    // The default slack of 50 microseconds would be added to every gap.
    ::prctl(PR_SET_TIMERSLACK, 1000UL, 0UL, 0UL, 0UL);
#endif
}
