// SPDX-License-Identifier: GPL-3.0-or-later
// The clients whose exchanges are counted. Each opens the device, reads one register over and over for the
// time given (the page read: every parameter once), closes it, and returns exchanges per second.
// Main thread; std::runtime_error on a line that fails.
#pragma once

#include <QByteArray>

// libmodbus, blocking, on the calling thread.
double libmodbusRate(const QByteArray &path, int milliseconds);
// QModbusRtuSerialMaster, the next read from the signal that ends the one before.
double serialBusRate(const QByteArray &path, int milliseconds);
// SerialPort alone: the next writeSlot() from the slot that gets the reply.
double linkRate(const QByteArray &path, int milliseconds);
// SerialPort and ParameterEditor, single reads of one parameter, the window shown.
double editorRate(const QByteArray &path, int milliseconds);
// SerialPort and ParameterEditor, "Read Parameters" of the whole catalogue, the window shown.
double pageReadRate(const QByteArray &path);
