// SPDX-License-Identifier: GPL-3.0-or-later
#include "simulator/pseudoterminal.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>
#ifdef __linux__
#include <sys/inotify.h>
#include <sys/prctl.h>
#endif

namespace kt500sim {
namespace {

std::string failure(const std::string &what)
{
    return what + ": " + std::strerror(errno);
}

void closeDescriptor(int *descriptor)
{
    if (*descriptor >= 0)
        ::close(*descriptor);
    *descriptor = -1;
}

/// A wait of the poll() family to the nanosecond, where the system has one.
int pollUntil(pollfd *descriptors, nfds_t count, const std::optional<TimePoint> &deadline)
{
    nanoseconds left{0};
    if (deadline) {
        left = std::chrono::duration_cast<nanoseconds>(*deadline - Clock::now());
        if (left.count() < 0)
            left = nanoseconds{0};
    }
#ifdef __linux__
    timespec timeout{};
    timeout.tv_sec = static_cast<time_t>(left.count() / 1'000'000'000);
    timeout.tv_nsec = static_cast<long>(left.count() % 1'000'000'000);
    return ::ppoll(descriptors, count, deadline ? &timeout : nullptr, nullptr);
#else
    const auto roundedUp = static_cast<int>((left.count() + 999'999) / 1'000'000);
    return ::poll(descriptors, count, deadline ? roundedUp : -1);
#endif
}

} // namespace

struct PseudoTerminal::Private
{
    std::string linkPath;
    std::string devicePath;
    int master = -1;
    // Held open so that the terminal outlives each client: without it the master would report an error
    // between two clients. Nothing is read from it.
    int slave = -1;
    int wakeReader = -1;
    int wakeWriter = -1;
    int watch = -1;  ///< tells of clients that open and close the terminal; -1 where that can't be known
    int clients = 0; ///< that have it open; counts only while watch is valid

    std::string openTerminal();
    std::string makeLink();
    void removeLink();
    void watchClients();
    void noteClients();
    void forgetUnreadBytes();
    void emptyWakePipe();
    void closeTerminal();
};

std::string PseudoTerminal::Private::openTerminal()
{
    master = ::posix_openpt(O_RDWR | O_NOCTTY);
    if (master < 0)
        return failure("no pseudo-terminal");
    ::fcntl(master, F_SETFD, FD_CLOEXEC);
    ::fcntl(master, F_SETFL, O_NONBLOCK);
    if (::grantpt(master) != 0 || ::unlockpt(master) != 0)
        return failure("the pseudo-terminal can't be made ready");
    const char *name = ::ptsname(master);
    if (name == nullptr)
        return failure("the pseudo-terminal has no name");
    devicePath = name;

    slave = ::open(name, O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    if (slave < 0)
        return failure(devicePath);
    termios settings{};
    if (::tcgetattr(slave, &settings) != 0)
        return failure(devicePath);
    ::cfmakeraw(&settings);
    if (::tcsetattr(slave, TCSANOW, &settings) != 0)
        return failure(devicePath);
    return {};
}

std::string PseudoTerminal::Private::makeLink()
{
    if (linkPath.empty())
        return {};
    struct stat status
    {
    };
    if (::lstat(linkPath.c_str(), &status) == 0 && !S_ISLNK(status.st_mode))
        return linkPath + ": exists and is no symbolic link";
    // Made under another name and renamed, so that the path never fails to lead somewhere meanwhile.
    const std::string fresh = linkPath + ".new";
    ::unlink(fresh.c_str());
    if (::symlink(devicePath.c_str(), fresh.c_str()) != 0)
        return failure(fresh);
    if (::rename(fresh.c_str(), linkPath.c_str()) != 0)
        return failure(linkPath);
    return {};
}

void PseudoTerminal::Private::removeLink()
{
    std::array<char, 256> target{};
    const ssize_t size = ::readlink(linkPath.c_str(), target.data(), target.size());
    if (size > 0 && devicePath == std::string(target.data(), static_cast<std::size_t>(size)))
        ::unlink(linkPath.c_str());
}

void PseudoTerminal::Private::watchClients()
{
    clients = 0;
#ifdef __linux__
    watch = ::inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
    if (watch >= 0 && ::inotify_add_watch(watch, devicePath.c_str(), IN_OPEN | IN_CLOSE) < 0)
        closeDescriptor(&watch);
#endif
}

void PseudoTerminal::Private::noteClients()
{
#ifdef __linux__
    alignas(inotify_event) std::array<char, 4096> buffer{};
    for (;;) {
        const ssize_t size = ::read(watch, buffer.data(), buffer.size());
        if (size <= 0)
            return;
        for (ssize_t at = 0; at < size;) {
            inotify_event event{};
            std::memcpy(&event, buffer.data() + at, sizeof event);
            at += static_cast<ssize_t>(sizeof event + event.len);
            const bool opened = (event.mask & IN_OPEN) != 0;
            const bool closed = (event.mask & IN_CLOSE) != 0;
            if (!opened && !closed)
                continue;
            clients = std::max(clients + (opened ? 1 : -1), 0);
            // A serial device forgets what was not read when the last client goes, and is no longer anybody's
            // own, even if that client was killed; the slave end held here would keep both.
            const bool firstCame = opened && clients == 1;
            const bool lastWent = closed && clients == 0;
            if (firstCame || lastWent)
                forgetUnreadBytes();
            if (lastWent)
                ::ioctl(slave, TIOCNXCL);
        }
    }
#endif
}

void PseudoTerminal::Private::forgetUnreadBytes()
{
    // Bytes wait in two places: on their way from the master, and at the slave for a read.
    ::tcflush(master, TCOFLUSH);
    ::tcflush(slave, TCIFLUSH);
}

void PseudoTerminal::Private::emptyWakePipe()
{
    std::array<char, 64> buffer{};
    while (::read(wakeReader, buffer.data(), buffer.size()) > 0) {
    }
}

void PseudoTerminal::Private::closeTerminal()
{
    removeLink();
    closeDescriptor(&watch);
    closeDescriptor(&slave);
    closeDescriptor(&master);
}

PseudoTerminal::PseudoTerminal(std::string linkPath)
    : d(std::make_unique<Private>())
{
    d->linkPath = std::move(linkPath);
    std::array<int, 2> ends{-1, -1};
    if (::pipe(ends.data()) != 0)
        return; // open() reports it
    for (const int end : ends) {
        ::fcntl(end, F_SETFL, O_NONBLOCK);
        ::fcntl(end, F_SETFD, FD_CLOEXEC);
    }
    d->wakeReader = ends[0];
    d->wakeWriter = ends[1];
}

PseudoTerminal::~PseudoTerminal()
{
    close();
    closeDescriptor(&d->wakeReader);
    closeDescriptor(&d->wakeWriter);
}

std::string PseudoTerminal::open()
{
    if (d->wakeReader < 0)
        return "no pipe to wake the drive by";
    close();
    std::string error = d->openTerminal();
    if (error.empty()) {
        d->watchClients();
        error = d->makeLink();
    }
    if (!error.empty())
        close();
    return error;
}

void PseudoTerminal::close()
{
    if (isOpen())
        d->closeTerminal();
}

bool PseudoTerminal::isOpen() const
{
    return d->master >= 0;
}

const std::string &PseudoTerminal::devicePath() const
{
    return d->devicePath;
}

bool PseudoTerminal::hasClient() const
{
    return isOpen() && (d->watch < 0 || d->clients > 0);
}

bool PseudoTerminal::wait(std::optional<TimePoint> deadline)
{
    // The watch stands behind the master: a client opens before it writes, so when its bytes have been seen
    // here, so has its coming.
    std::array<pollfd, 3> descriptors{
        {{d->wakeReader, POLLIN, 0}, {d->master, POLLIN, 0}, {d->watch, POLLIN, 0}}};
    if (pollUntil(descriptors.data(), descriptors.size(), deadline) <= 0)
        return false;
    if (descriptors[0].revents != 0)
        d->emptyWakePipe();
    if (descriptors[2].revents != 0)
        d->noteClients();
    return (descriptors[1].revents & POLLIN) != 0;
}

void PseudoTerminal::wake()
{
    const char anything = 0;
    // A full pipe wakes as well, so the result doesn't matter.
    [[maybe_unused]] const ssize_t written = ::write(d->wakeWriter, &anything, 1);
}

std::size_t PseudoTerminal::read(std::uint8_t *buffer, std::size_t size)
{
    const ssize_t count = ::read(d->master, buffer, size);
    if (count <= 0)
        return 0;
    // The system merges equal notes that follow each other, so two clients may have been counted as one; but
    // where bytes come from, somebody is.
    d->clients = std::max(d->clients, 1);
    return static_cast<std::size_t>(count);
}

std::size_t PseudoTerminal::write(const std::uint8_t *data, std::size_t size)
{
    if (!hasClient())
        return size;
    const ssize_t count = ::write(d->master, data, size);
    return count > 0 ? static_cast<std::size_t>(count) : 0;
}

void makeThreadWaitsPrecise()
{
#ifdef __linux__
    ::prctl(PR_SET_TIMERSLACK, 1UL, 0UL, 0UL, 0UL); // nanoseconds; the default is 50 microseconds
#endif
}

bool standardInputIsTerminal()
{
    return ::isatty(STDIN_FILENO) == 1;
}

} // namespace kt500sim
