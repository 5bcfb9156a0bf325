// SPDX-License-Identifier: GPL-3.0-or-later
// Complete request frames, CRC included, from a register and what to do with it. A register is the number on
// the wire, base included. Pure functions; any thread.
#pragma once

#include <QByteArray>

// 01 03 AH AL 00 NN CRC: reads that many registers.
QByteArray readRequest(int address, int registers);

// 01 06 AH AL VH VL CRC: writes the low 16 bits of the value into one register.
QByteArray writeSingleRequest(int address, int value);

// 01 10 AH AL 00 NN BC data CRC: writes the data, two bytes a register, high byte first, from the register
// on.
QByteArray writeMultipleRequest(int address, const QByteArray &data);

// The same with one 32-bit number in two registers, high word at the lower one.
QByteArray writePairRequest(int address, qint32 value);

// Registers that a read request asks for; 0 for any other request.
int registersOfRequest(const QByteArray &request);

// Register that a request names in its bytes 2 and 3, 0 to 65535; -1 if they are not there.
int addressOfRequest(const QByteArray &request);
