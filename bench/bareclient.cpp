// SPDX-License-Identifier: GPL-3.0-or-later
#include "bareclient.h"

#include <QElapsedTimer>

#include <modbus.h>

#include <array>
#include <cerrno>
#include <stdexcept>

namespace {

constexpr int station = 1;
constexpr int baudRate = 115200; // of no effect on a pseudo-terminal
constexpr int mostRegisters = 2;

} // namespace

double secondsOfBareReads(const QByteArray &path, const QList<RegisterRead> &reads)
{
    modbus_t *const context = modbus_new_rtu(path.constData(), baudRate, 'N', 8, 1);
    if (!context || modbus_set_slave(context, station) != 0 || modbus_connect(context) != 0)
        throw std::runtime_error(modbus_strerror(errno));
    std::array<uint16_t, mostRegisters> values{};
    QElapsedTimer clock;
    clock.start();
    for (const RegisterRead &read : reads) {
        if (read.registers > mostRegisters ||
            modbus_read_registers(context, read.address, read.registers, values.data()) != read.registers)
            throw std::runtime_error(modbus_strerror(errno));
    }
    const double seconds = double(clock.nsecsElapsed()) * 1e-9;
    modbus_close(context);
    modbus_free(context);
    return seconds;
}
