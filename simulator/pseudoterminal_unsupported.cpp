// SPDX-License-Identifier: GPL-3.0-or-later
// Where the system has no pseudo-terminals: opening fails and says why, and a drive without a line still
// holds its registers and moves its model.
#include "simulator/pseudoterminal.h"

#include <condition_variable>
#include <mutex>

namespace kt500sim {

struct PseudoTerminal::Private
{
    std::mutex mutex;
    std::condition_variable woken;
    bool wakeAsked = false;
    std::string devicePath;
};

PseudoTerminal::PseudoTerminal(std::string)
    : d(std::make_unique<Private>())
{
}

PseudoTerminal::~PseudoTerminal() = default;

std::string PseudoTerminal::open()
{
    return "pseudo-terminals need a POSIX system";
}

void PseudoTerminal::close() {}

bool PseudoTerminal::isOpen() const
{
    return false;
}

const std::string &PseudoTerminal::devicePath() const
{
    return d->devicePath;
}

bool PseudoTerminal::hasClient() const
{
    return false;
}

bool PseudoTerminal::wait(std::optional<TimePoint> deadline)
{
    std::unique_lock<std::mutex> lock(d->mutex);
    const auto asked = [this] { return d->wakeAsked; };
    if (deadline)
        d->woken.wait_until(lock, *deadline, asked);
    else
        d->woken.wait(lock, asked);
    d->wakeAsked = false;
    return false;
}

void PseudoTerminal::wake()
{
    const std::lock_guard<std::mutex> lock(d->mutex);
    d->wakeAsked = true;
    d->woken.notify_one();
}

std::size_t PseudoTerminal::read(std::uint8_t *, std::size_t)
{
    return 0;
}

std::size_t PseudoTerminal::write(const std::uint8_t *, std::size_t size)
{
    return size;
}

void makeThreadWaitsPrecise() {}

bool standardInputIsTerminal()
{
    return false;
}

} // namespace kt500sim
