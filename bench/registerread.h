// SPDX-License-Identifier: GPL-3.0-or-later
// What one request of a register read asks for. Any thread.
#pragma once

struct RegisterRead
{
    int address = 0;
    int registers = 0;
};
