// SPDX-License-Identifier: GPL-3.0-or-later
// A full disk: no file of this process grows beyond a limit. Any thread, one at a time; an object on the
// stack of a test function.
#pragma once

#include <QtGlobal>

#ifdef Q_OS_UNIX

#include <csignal>
#include <sys/resource.h>

class FullDisk
{
public:
    // The limit, in bytes, holds for what is written while the object lives.
    explicit FullDisk(rlim_t limit);
    ~FullDisk();
    Q_DISABLE_COPY_MOVE(FullDisk)

private:
    rlimit limitBefore{};
    void (*handlerBefore)(int) = SIG_DFL;
};

#endif
