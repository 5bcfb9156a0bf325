// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/fulldisk.h"

#ifdef Q_OS_UNIX

FullDisk::FullDisk(rlim_t limit)
{
    // A write beyond the limit would end the process otherwise, instead of failing.
    handlerBefore = std::signal(SIGXFSZ, SIG_IGN);
    if (getrlimit(RLIMIT_FSIZE, &limitBefore) != 0)
        qFatal("the test can't read its limits");
    rlimit limits = limitBefore;
    limits.rlim_cur = limit;
    if (setrlimit(RLIMIT_FSIZE, &limits) != 0)
        qFatal("the test can't limit its files");
}

FullDisk::~FullDisk()
{
    if (setrlimit(RLIMIT_FSIZE, &limitBefore) != 0)
        qFatal("the test can't take back the limit of its files");
    std::signal(SIGXFSZ, handlerBefore);
}

#endif
