// SPDX-License-Identifier: GPL-3.0-or-later
// The four function codes of the drive, the second byte of every frame. Constant data; any thread.
#pragma once

enum class FunctionCode : unsigned char {
    Read = 0x03,
    WriteSingle = 0x06,
    WriteMultiple = 0x10,
    Scope = 0x14, // the drive's own: control of the scope stream, and each frame of it
};
