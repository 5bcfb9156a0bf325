// SPDX-License-Identifier: GPL-3.0-or-later
#include "failingwrites.h"

#include <QFile>

#include <atomic>
#include <cerrno>

#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

std::atomic<dev_t> failingTerminal{0}; // none

bool isFailing(int descriptor)
{
    const dev_t failing = failingTerminal;
    struct stat status = {};
    return failing != 0 && ::fstat(descriptor, &status) == 0 && status.st_rdev == failing;
}

} // namespace

// In the place of the system's.
extern "C" ssize_t write(int descriptor, const void *data, size_t size)
{
    if (isFailing(descriptor)) {
        errno = EIO;
        return -1;
    }
    return syscall(SYS_write, descriptor, data, size);
}

FailingWrites::FailingWrites(const QString &path)
{
    struct stat status = {};
    if (::stat(QFile::encodeName(path).constData(), &status) != 0 || !S_ISCHR(status.st_mode))
        qFatal("no terminal whose writes could fail");
    failingTerminal = status.st_rdev;
}

FailingWrites::~FailingWrites()
{
    failingTerminal = 0;
}
