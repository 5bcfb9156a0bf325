// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/registerpeer.h"

#include "support/wire.h"

#include <QTimer>

namespace {

int word(const QByteArray &bytes, int offset)
{
    return static_cast<quint8>(bytes.at(offset)) << 8 | static_cast<quint8>(bytes.at(offset + 1));
}

constexpr int workingBase = 0x2000;
constexpr int storedBase = 0xE000;

} // namespace

RegisterPeer::RegisterPeer(QObject *parent)
    : QObject(parent)
{
}

void RegisterPeer::take(QByteArray frame, QString windowName)
{
    frames.append(frame);
    windowNames.append(windowName);
    QByteArray answer = usualReply(frame);
    if (intercept)
        answer = intercept(frame, answer);
    if (answer.isEmpty())
        return;
    if (held)
        waiting.append(answer);
    else
        send(answer);
}

void RegisterPeer::release()
{
    held = false;
    QList<QByteArray> answers;
    answers.swap(waiting);
    for (const QByteArray &answer : qAsConst(answers))
        send(answer);
}

// Replies come back later, as the real link's do.
void RegisterPeer::send(const QByteArray &frame)
{
    QTimer::singleShot(0, this, [this, frame] { emit reply(frame); });
}

QByteArray RegisterPeer::usualReply(const QByteArray &request)
{
    if (request.size() < 8 || wire::frame(request.chopped(2)) != request)
        return QByteArray();
    int address = word(request, 2);
    if (request.at(1) == 0x03) {
        QByteArray data;
        for (int i = 0; i < word(request, 4); ++i) {
            const quint16 value = registers.value(address + i);
            data.append(char(value >> 8)).append(char(value & 0xFF));
        }
        return wire::readReply(data);
    }
    constexpr int writeFrameLength = 9; // of a write of several registers, without the data
    if (request.at(1) == 0x10 && request.size() != writeFrameLength + 2 * word(request, 4))
        return wire::frame("019003");
    if (address >= storedBase)
        address += workingBase - storedBase;
    if (request.at(1) == 0x06) {
        registers[address] = quint16(word(request, 4));
    } else if (request.at(1) == 0x10) {
        for (int i = 0; i < word(request, 4); ++i)
            registers[address + i] = quint16(word(request, 7 + 2 * i));
    }
    return wire::replyTo(request, QByteArray());
}
