// SPDX-License-Identifier: GPL-3.0-or-later
#include "link/portstamp.h"

#include <memory>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

namespace {

using Directory = std::unique_ptr<DIR, int (*)(DIR *)>;

void add(const struct stat &status, QByteArray *stamp)
{
    *stamp +=
        ' ' + QByteArray::number(quint64(status.st_ino)) + ' ' + QByteArray::number(qint64(status.st_ctime));
}

} // namespace

// Linux lists its ports in a folder of its own, in which one that comes again has another number, and writes
// what it has found out of them into the other folder, a moment later.
QByteArray portStamp()
{
    const Directory ports(::opendir("/sys/class/tty"), &::closedir);
    if (!ports)
        return {};
    QByteArray stamp;
    struct stat status = {};
    // NOLINTNEXTLINE(concurrency-mt-unsafe): each call reads a folder of its own.
    while (const dirent *const entry = ::readdir(ports.get())) {
        stamp += entry->d_name;
        if (::fstatat(::dirfd(ports.get()), entry->d_name, &status, AT_SYMLINK_NOFOLLOW) == 0)
            add(status, &stamp);
    }
    if (::stat("/run/udev/data", &status) == 0) {
        add(status, &stamp);
        stamp += '.' + QByteArray::number(qint64(status.st_mtim.tv_sec)) + '.' +
                 QByteArray::number(qint64(status.st_mtim.tv_nsec));
    }
    return stamp;
}
