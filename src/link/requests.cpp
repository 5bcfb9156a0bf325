// SPDX-License-Identifier: GPL-3.0-or-later
#include "link/requests.h"

#include "link/framecodec.h"
#include "link/functioncodes.h"

namespace {

QByteArray word(int value)
{
    return QByteArray().append(char(value >> 8)).append(char(value));
}

QByteArray head(FunctionCode function, int address)
{
    return QByteArray().append('\x01').append(char(function)) + word(address);
}

} // namespace

QByteArray readRequest(int address, int registers)
{
    return withCrc(head(FunctionCode::Read, address) + word(registers));
}

QByteArray writeSingleRequest(int address, int value)
{
    return withCrc(head(FunctionCode::WriteSingle, address) + word(value));
}

QByteArray writeMultipleRequest(int address, const QByteArray &data)
{
    return withCrc(head(FunctionCode::WriteMultiple, address) + word(data.size() / 2) + char(data.size()) +
                   data);
}

QByteArray writePairRequest(int address, qint32 value)
{
    return writeMultipleRequest(address, word(value >> 16) + word(value));
}

int registersOfRequest(const QByteArray &request)
{
    constexpr int leastLength = 6;
    if (request.size() < leastLength || request.at(1) != char(FunctionCode::Read))
        return 0;
    return quint8(request.at(4)) << 8 | quint8(request.at(5));
}

int addressOfRequest(const QByteArray &request)
{
    if (request.size() < 4)
        return -1;
    return quint8(request.at(2)) << 8 | quint8(request.at(3));
}
