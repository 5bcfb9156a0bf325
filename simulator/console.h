// SPDX-License-Identifier: GPL-3.0-or-later
// The commands by which a person steers a simulated drive, one line each.
//
// Lives on the thread of its owner, which also owns the drive.
#pragma once

#include "simulator/machinecommands.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <string>

namespace kt500sim {

class Console
{
public:
    /// Frames go to \a printLine while the log is on; it is called on the drive's thread.
    Console(SimulatedDrive &drive, std::function<void(const std::string &line)> printLine);

    /// Executes one command; returns what there is to say, without a line end, or an empty text.
    QString execute(const QString &line);
    /// "quit" has been given.
    bool wantsToQuit() const { return m_wantsToQuit; }

    static QString help();

    /// A register by decimal offset, by 0x offset, or by its code such as Pn-A04; -1 for anything else.
    static int parseOffset(const QString &text);

private:
    QString get(const QStringList &words);
    QString set(const QStringList &words, RegisterCopy copy);
    QString log(const QStringList &words);
    QString pace(const QStringList &words);
    QString advance(const QStringList &words);

    SimulatedDrive &m_drive;
    MachineCommands m_machine;
    std::function<void(const std::string &)> m_printLine;
    bool m_wantsToQuit = false;
};

} // namespace kt500sim
