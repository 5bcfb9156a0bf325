// SPDX-License-Identifier: GPL-3.0-or-later
// Records the calls of a signal on the test's own thread, in order. A QSignalSpy would write on the thread
// that emits, while the test reads.
#pragma once

#include <QList>
#include <QObject>

#include <algorithm>
#include <tuple>

template <typename... Args>
class SignalLog
{
public:
    template <typename Sender>
    SignalLog(Sender *sender, void (Sender::*signal)(Args...))
    {
        QObject::connect(sender, signal, &context,
                         [this](Args... args) { calls.append(std::tuple<std::decay_t<Args>...>(args...)); });
    }

    int count() const { return calls.size(); }
    // How many calls had this first argument.
    template <typename T>
    int count(const T &value) const
    {
        return int(std::count_if(calls.begin(), calls.end(),
                                 [&value](const auto &call) { return std::get<0>(call) == value; }));
    }

    QList<std::tuple<std::decay_t<Args>...>> calls;

private:
    QObject context;
};
