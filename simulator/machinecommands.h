// SPDX-License-Identifier: GPL-3.0-or-later
// The commands by which a person changes the machine behind a simulated drive: its load, its inputs, its
// faults; and the one that shows how it stands.
//
// Lives on the thread of its owner, which also owns the drive.
#pragma once

#include "simulator/simulateddrive.h"

#include <QStringList>

namespace kt500sim {

class MachineCommands
{
public:
    explicit MachineCommands(SimulatedDrive &drive)
        : m_drive(drive)
    {
    }

    /// Executes one command; returns what there is to say, or nothing at all for a word that is none of
    /// these.
    std::optional<QString> execute(const QStringList &words);

    static QString help();

private:
    QString setPlant(const QStringList &words);
    QString setInput(const QStringList &words);
    QString raiseFault(const QStringList &words);
    QString setWarning(const QStringList &words);
    QString showState();

    SimulatedDrive &m_drive;
};

} // namespace kt500sim
