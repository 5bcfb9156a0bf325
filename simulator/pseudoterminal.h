// SPDX-License-Identifier: GPL-3.0-or-later
// A pseudo-terminal whose far end clients open like a serial device, and the waiting on it.
//
// Lives on the loop thread of its owner, except for wake(), which any thread may call. The POSIX calls stand
// in pseudoterminal_posix.cpp alone; with pseudoterminal_unsupported.cpp open() fails and says why.
#pragma once

#include "simulator/clock.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace kt500sim {

class PseudoTerminal
{
public:
    /// If \a linkPath is not empty, a symbolic link of that path leads to the terminal while it is open.
    explicit PseudoTerminal(std::string linkPath);
    ~PseudoTerminal();
    PseudoTerminal(const PseudoTerminal &) = delete;
    PseudoTerminal &operator=(const PseudoTerminal &) = delete;

    /// Makes a new terminal in raw mode; its path may differ from the one before. Returns an empty text, or
    /// what failed.
    std::string open();
    /// Hangs up: clients that have the terminal open see its end.
    void close();
    bool isOpen() const;
    /// The device path, such as /dev/pts/3; after close() still that of the terminal that was.
    const std::string &devicePath() const;

    /// False while no client has the terminal open; true as well where that can't be known.
    bool hasClient() const;

    /// Sleeps until bytes have come, wake() was called, or \a deadline is reached; true if bytes have come.
    bool wait(std::optional<TimePoint> deadline);
    /// Ends the present or the next wait().
    void wake();

    /// Both return at once with what they could do; bytes that nobody has the terminal open for are dropped
    /// and count as written.
    std::size_t read(std::uint8_t *buffer, std::size_t size);
    std::size_t write(const std::uint8_t *data, std::size_t size);

private:
    struct Private;
    std::unique_ptr<Private> d;
};

/// Lets short waits of the calling thread end on time, where the system would round them up.
void makeThreadWaitsPrecise();

/// True when standard input is a terminal with a person before it.
bool standardInputIsTerminal();

} // namespace kt500sim
