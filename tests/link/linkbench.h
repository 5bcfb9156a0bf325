// SPDX-License-Identifier: GPL-3.0-or-later
// A link at a scripted peer: the frames that its tests speak of, the peer's usual answer, and the deliveries.
// Main thread, except for the answer, which the peer's thread asks for.
#pragma once

#include "link/serialport.h"
#include "support/ptypeer.h"
#include "support/signallog.h"
#include "support/wire.h"

#include <QTest>

namespace linkbench {

inline const QByteArray probe = wire::bytes("010320600002cfd5");
inline const QByteArray stopFrame = wire::bytes("01140000000000000000dec2");
inline const QByteArray startFrame = wire::frame("01141000000000000000");
inline const QByteArray readA = wire::frame("010320070001");
inline const QByteArray readB = wire::frame("010320080001");
inline const QByteArray readC = wire::frame("010320090001");
inline const QByteArray faultRead = wire::frame("010323520001");
inline const QByteArray streamChunk = wire::bytes("01140010100200010002000000000000");
inline constexpr int rs485 = 115200;
inline constexpr int usb = 100;

// Answers every request at once with words that repeat the low address byte.
inline QByteArray replyOf(const QByteArray &request)
{
    return wire::replyTo(request, QByteArray(4, request.at(3)));
}

// Counts the deliveries of all reply signals by name, in order.
class Deliveries
{
public:
    explicit Deliveries(SerialPort &port)
    {
        const auto note = [this](const char *signal, const QByteArray &data) {
            list.append(QLatin1String(signal) + QLatin1Char(' ') + QString::fromLatin1(data.toHex()));
        };
        QObject::connect(&port, &SerialPort::handleBaseParameter, &context,
                         [note](const QByteArray &b) { note("editor", b); });
        QObject::connect(&port, &SerialPort::handleParameterMonitor, &context,
                         [note](const QByteArray &b) { note("monitor", b); });
        QObject::connect(&port, &SerialPort::handlefault, &context,
                         [note](const QByteArray &b) { note("fault", b); });
        QObject::connect(&port, &SerialPort::handleGaintuning, &context,
                         [note](const QByteArray &b, int address) {
                             note(qPrintable(QStringLiteral("gain@%1").arg(address, 0, 16)), b);
                         });
        QObject::connect(&port, &SerialPort::handleTrialRun, &context,
                         [note](const QByteArray &b) { note("trial", b); });
        QObject::connect(&port, &SerialPort::handleParameterScope, &context,
                         [note](const QByteArray &b) { note("scope", b); });
    }
    QStringList list;

private:
    QObject context;
};

inline QString delivery(const char *signal, const QByteArray &data)
{
    return QLatin1String(signal) + QLatin1Char(' ') + QString::fromLatin1(data.toHex());
}

inline void resetLink()
{
    SerialPort::portOpened = false;
    SerialPort::scopeRunning = false;
    SerialPort::reconnecting = false;
}

} // namespace linkbench
