// SPDX-License-Identifier: GPL-3.0-or-later
// The silence that RS-485 asks for between two frames. Pure function; any thread.
#pragma once

#include <QtGlobal>

#include <chrono>

// The speed value that stands for a USB link, as the connection dialog and the worker understand it.
constexpr qint32 usbBaudRate = 100;

// Silence before a request, 3.5 characters of ten bits each; from 19200 baud up the fixed 1.75 ms, and none
// on a USB link. Source: MODBUS over Serial Line V1.02, 2.5.1.1, with the ten-bit characters of this drive.
std::chrono::microseconds silentGap(qint32 baudRate);
