// SPDX-License-Identifier: GPL-3.0-or-later
// The other end of a serial line that costs a client as little as can be: a process of its own that blocks in
// read() and answers each register read at once with a reply made beforehand. POSIX only.
// Made and destroyed on the main thread; the process lives as long as the object.
#pragma once

#include <QByteArray>

class AnsweringPeer
{
public:
    // Throws std::runtime_error if there is no terminal or no process.
    AnsweringPeer();
    ~AnsweringPeer();
    Q_DISABLE_COPY_MOVE(AnsweringPeer)

    // What a client opens.
    QByteArray path() const { return devicePath; }

    // The peer's process is this program over again. True when this is that process: it has served its
    // terminal to the end then, and main() is to return.
    static bool serveIfAsked(int argc, char *argv[]);

private:
    QByteArray devicePath;
    // Held open, so that the terminal outlives each client; closing it ends the process.
    int slave = -1;
    int process = -1;
};
