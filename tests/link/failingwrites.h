// SPDX-License-Identifier: GPL-3.0-or-later
// A terminal whose writes fail although it polls writable, as a device behind a broken adapter does. One at a
// time; set and lifted on the main thread, in force on every thread of the program that has failingwrites.cpp
// among its sources.
#pragma once

#include <QString>

class FailingWrites
{
public:
    // path is that of a terminal that is there.
    explicit FailingWrites(const QString &path);
    ~FailingWrites();
    Q_DISABLE_COPY_MOVE(FailingWrites)
};
