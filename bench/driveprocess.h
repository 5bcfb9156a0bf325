// SPDX-License-Identifier: GPL-3.0-or-later
// A simulated drive in a process of its own, so that the product's processor time can be told from the
// drive's. To be made before the process has a second thread; ends with the object.
#pragma once

#include <QString>

#include <sys/types.h>

class DriveProcess
{
public:
    // Throws std::runtime_error if the drive does not start.
    DriveProcess();
    ~DriveProcess();
    DriveProcess(const DriveProcess &) = delete;
    DriveProcess &operator=(const DriveProcess &) = delete;

    // What a client opens.
    const QString &portName() const { return port; }

private:
    QString port;
    pid_t process = -1;
    int lifeLine = -1; // the drive ends when this pipe is closed
};
