// SPDX-License-Identifier: GPL-3.0-or-later
#include "simulator/machinecommands.h"

#include "simulator/model/units.h"

#include <array>
#include <cmath>

namespace kt500sim {
namespace {

/// A command that sets one number of the plant.
struct PlantCommand
{
    const char *word;
    double PlantSettings::*value;
    double lowest;
    const char *usage;
};

constexpr double anyNumber = -1e9;

constexpr std::array<PlantCommand, 6> plantCommands{{
    {"load-inertia", &PlantSettings::inertiaRatio, 1,
     "load-inertia R      load and rotor over the rotor, from 1"},
    {"stiffness", &PlantSettings::stiffness, 0, "stiffness K         of the shaft, Nm/rad; 0: rigid"},
    {"damping", &PlantSettings::damping, 0, "damping D           in the shaft, Nm s/rad"},
    {"friction", &PlantSettings::coulomb, 0, "friction T          of the bearings, Nm"},
    {"viscous", &PlantSettings::viscous, 0, "viscous B           friction with the speed, Nm s/rad"},
    {"load-torque", &PlantSettings::loadTorque, anyNumber,
     "load-torque T       of the load, Nm; positive turns back"},
}};

std::optional<bool> onOrOff(const QString &word)
{
    if (word == QLatin1String("on"))
        return true;
    if (word == QLatin1String("off"))
        return false;
    return std::nullopt;
}

/// A whole number of the second word within 1 and \a most; 0 for anything else.
int numberOf(const QStringList &words, int most)
{
    bool ok = false;
    const int number = words.value(1).toInt(&ok);
    return ok && number >= 1 && number <= most ? number : 0;
}

} // namespace

std::optional<QString> MachineCommands::execute(const QStringList &words)
{
    const QString &command = words.first();
    for (const PlantCommand &known : plantCommands) {
        if (command == QLatin1String(known.word))
            return setPlant(words);
    }
    if (command == QLatin1String("input"))
        return setInput(words);
    if (command == QLatin1String("fault"))
        return raiseFault(words);
    if (command == QLatin1String("warning"))
        return setWarning(words);
    if (command == QLatin1String("state") && words.size() == 1)
        return showState();
    return std::nullopt;
}

QString MachineCommands::help()
{
    QString text;
    for (const PlantCommand &command : plantCommands)
        text += QLatin1String(command.usage) + QLatin1Char('\n');
    return text + QStringLiteral("input N on|off      close or open the contact at DI N\n"
                                 "fault N             raise the fault Er-N\n"
                                 "warning N on|off    show the warning AL-N, and take it back\n"
                                 "state               show the motor and its load\n");
}

QString MachineCommands::setPlant(const QStringList &words)
{
    for (const PlantCommand &command : plantCommands) {
        if (words.first() != QLatin1String(command.word))
            continue;
        bool ok = false;
        const double value = words.value(1).toDouble(&ok);
        if (words.size() != 2 || !ok || !std::isfinite(value) || value < command.lowest)
            return QStringLiteral("usage: %1").arg(QLatin1String(command.usage));
        PlantSettings plant = m_drive.plant();
        plant.*command.value = value;
        m_drive.setPlant(plant);
    }
    return QString();
}

QString MachineCommands::setInput(const QStringList &words)
{
    const int number = numberOf(words, 16);
    const std::optional<bool> closed = onOrOff(words.value(2));
    if (words.size() != 3 || number == 0 || !closed)
        return QStringLiteral("usage: input N on|off, N from 1 to 16");
    m_drive.setContact(number, *closed);
    return QString();
}

QString MachineCommands::raiseFault(const QStringList &words)
{
    const int number = numberOf(words, 99);
    if (words.size() != 2 || number == 0)
        return QStringLiteral("usage: fault N, N from 1 to 99");
    return m_drive.raiseFault(number) ? QString() : QStringLiteral("a fault is present already");
}

QString MachineCommands::setWarning(const QStringList &words)
{
    const int number = numberOf(words, 99);
    const std::optional<bool> on = onOrOff(words.value(2));
    if (words.size() != 3 || number == 0 || !on)
        return QStringLiteral("usage: warning N on|off, N from 1 to 99");
    m_drive.setWarning(number, *on);
    return QString();
}

QString MachineCommands::showState()
{
    const DriveState state = m_drive.state();
    const PlantSettings plant = m_drive.plant();
    const auto number = [](double value, int decimals) { return QString::number(value, 'f', decimals); };
    QStringList lines;
    lines << QStringLiteral("servo        %1")
                 .arg(state.energised ? QStringLiteral("on") : QStringLiteral("off"))
          << QStringLiteral("speed        %1 rpm, command %2 rpm")
                 .arg(number(rpm(state.speed), 1), number(rpm(state.speedCommand), 1))
          << QStringLiteral("position     %1 counts, %2 user units, deviation %3 counts")
                 .arg(state.counts)
                 .arg(number(state.userPosition, 1), number(state.deviation, 1))
          << QStringLiteral("torque       %1 Nm, %2 A")
                 .arg(number(state.torque, 3), number(state.quadratureCurrent, 2))
          << QStringLiteral("fault        %1, warning %2").arg(state.fault).arg(state.warning)
          << QStringLiteral("inputs       0x%1, outputs 0x%2")
                 .arg(state.inputs, 4, 16, QLatin1Char('0'))
                 .arg(state.outputs, 4, 16, QLatin1Char('0'))
          << QStringLiteral("bus          %1 V, module %2 degrees, overload %3 %")
                 .arg(number(state.busVoltage, 1), number(state.temperature, 1),
                      number(100 * state.overload, 1))
          << QStringLiteral("inertia      ratio %1, identified %2")
                 .arg(number(plant.inertiaRatio, 2), number(state.identifiedInertia, 2))
          << QStringLiteral("shaft        %1 Nm/rad, %2 Nm s/rad")
                 .arg(number(plant.stiffness, 1), number(plant.damping, 4))
          << QStringLiteral("friction     %1 Nm, %2 Nm s/rad; load torque %3 Nm")
                 .arg(number(plant.coulomb, 3), number(plant.viscous, 5), number(plant.loadTorque, 3));
    return lines.join(QLatin1Char('\n'));
}

} // namespace kt500sim
