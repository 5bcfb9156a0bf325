// SPDX-License-Identifier: GPL-3.0-or-later
// A client of the simulated drive, as plain as one can be: a descriptor, writes, and reads with a limit.
//
// Lives on the thread of the test that owns it.
#pragma once

#include "simulatortest.h"

#include "simulator/clock.h"

#include <QString>

#include <array>
#include <functional>

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

/// No wait of a test lasts longer; reached only when the test fails.
constexpr std::chrono::seconds testLimit{10};

class TerminalClient
{
public:
    explicit TerminalClient(const QString &path)
        : m_descriptor(::open(qPrintable(path), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC))
    {
    }
    ~TerminalClient() { close(); }
    TerminalClient(const TerminalClient &) = delete;
    TerminalClient &operator=(const TerminalClient &) = delete;

    bool isOpen() const { return m_descriptor >= 0; }
    void close()
    {
        if (isOpen())
            ::close(m_descriptor);
        m_descriptor = -1;
    }

    bool write(const QByteArray &hex) const
    {
        const kt500sim::Bytes bytes = bytesOf(hex);
        return ::write(m_descriptor, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size());
    }

    /// Whatever one read gives, after waiting for the first byte; empty at the limit or the terminal's end.
    kt500sim::Bytes readSome() const
    {
        pollfd descriptor{m_descriptor, POLLIN, 0};
        if (::poll(&descriptor, 1, static_cast<int>(milliseconds(testLimit))) <= 0)
            return {};
        std::array<std::uint8_t, 4096> buffer{};
        const ssize_t size = ::read(m_descriptor, buffer.data(), buffer.size());
        return size > 0 ? kt500sim::Bytes(buffer.begin(), buffer.begin() + size) : kt500sim::Bytes();
    }

    /// Exactly \a size bytes, however they come; fewer at the limit.
    QByteArray read(std::size_t size)
    {
        while (m_unread.size() < size) {
            const kt500sim::Bytes some = readSome();
            if (some.empty())
                break;
            m_unread.insert(m_unread.end(), some.begin(), some.end());
        }
        const auto end = m_unread.begin() + static_cast<std::ptrdiff_t>(std::min(size, m_unread.size()));
        const kt500sim::Bytes taken(m_unread.begin(), end);
        m_unread.erase(m_unread.begin(), end);
        return hexOf(taken);
    }

    /// One whole stream frame, by its length field; empty if what comes is none.
    QByteArray readStreamFrame()
    {
        const QByteArray head = read(4);
        if (!head.startsWith("0114"))
            return {};
        const int length = head.mid(4).toInt(nullptr, 16);
        return head + read(static_cast<std::size_t>(length - 4));
    }

    QByteArray ask(const QByteArray &hex, std::size_t replySize)
    {
        return write(hex) ? read(replySize) : QByteArray();
    }

    /// True once the terminal has been hung up.
    bool seesTheEnd() const
    {
        pollfd descriptor{m_descriptor, 0, 0};
        return ::poll(&descriptor, 1, static_cast<int>(milliseconds(testLimit))) == 1 &&
               (descriptor.revents & POLLHUP) != 0;
    }

private:
    static long milliseconds(std::chrono::nanoseconds time)
    {
        return static_cast<long>(std::chrono::duration_cast<std::chrono::milliseconds>(time).count());
    }

    int m_descriptor;
    kt500sim::Bytes m_unread;
};

/// Asks \a condition again and again until it holds; false at the limit.
inline bool becomesTrue(const std::function<bool()> &condition)
{
    const auto limit = kt500sim::Clock::now() + testLimit;
    while (!condition()) {
        if (kt500sim::Clock::now() > limit)
            return false;
        ::poll(nullptr, 0, 1);
    }
    return true;
}
