// SPDX-License-Identifier: GPL-3.0-or-later
#include "simulator/console.h"

#include <QRegularExpression>

namespace kt500sim {
namespace {

/// A 16-bit value, decimal of either sign or hexadecimal with 0x.
std::optional<std::uint16_t> parseValue(const QString &text)
{
    bool ok = false;
    const int value = text.startsWith(QLatin1String("0x"), Qt::CaseInsensitive) ? text.mid(2).toInt(&ok, 16)
                                                                                : text.toInt(&ok, 10);
    if (!ok || value < -0x8000 || value > 0xffff)
        return std::nullopt;
    return static_cast<std::uint16_t>(value);
}

QString showValue(std::uint16_t value)
{
    return QStringLiteral("0x%1 (%2)").arg(value, 4, 16, QLatin1Char('0')).arg(value);
}

} // namespace

Console::Console(SimulatedDrive &drive, std::function<void(const std::string &)> printLine)
    : m_drive(drive)
    , m_machine(drive)
    , m_printLine(std::move(printLine))
{
}

QString Console::execute(const QString &line)
{
    const QString text = line.simplified();
    if (text.isEmpty())
        return QString();
    const QStringList words = text.split(QLatin1Char(' '));
    const QString &command = words.first();

    if (Fault::isFaultWord(command)) {
        QString error;
        m_drive.setFault(text, &error);
        return error;
    }
    if (const std::optional<QString> said = m_machine.execute(words))
        return *said;
    if (command == QLatin1String("get"))
        return get(words);
    if (command == QLatin1String("set"))
        return set(words, RegisterCopy::Working);
    if (command == QLatin1String("store"))
        return set(words, RegisterCopy::Stored);
    if (command == QLatin1String("log"))
        return log(words);
    if (command == QLatin1String("pace"))
        return pace(words);
    if (command == QLatin1String("advance"))
        return advance(words);

    if (words.size() == 1) {
        if (command == QLatin1String("power-cycle"))
            m_drive.powerCycle();
        else if (command == QLatin1String("factory"))
            m_drive.factoryReset();
        else if (command == QLatin1String("freeze"))
            m_drive.freeze();
        else if (command == QLatin1String("unfreeze"))
            m_drive.unfreeze();
        else if (command == QLatin1String("port"))
            return m_drive.portName();
        else if (command == QLatin1String("counters"))
            return QString::fromStdString(toText(m_drive.counters())).trimmed();
        else if (command == QLatin1String("help"))
            return help();
        else if (command == QLatin1String("quit"))
            m_wantsToQuit = true;
        else
            return QStringLiteral("unknown command \"%1\"; \"help\" lists them").arg(text);
        return QString();
    }
    return QStringLiteral("unknown command \"%1\"; \"help\" lists them").arg(text);
}

QString Console::help()
{
    return Fault::usage() + MachineCommands::help() +
           QStringLiteral("power-cycle        load the stored registers, restart the status\n"
                          "factory            factory values everywhere\n"
                          "get REGISTER       show a register: 304, 0x130 or Pn-304\n"
                          "set REGISTER V     set its working copy\n"
                          "store REGISTER V   set its working and its stored copy\n"
                          "pace BAUD US       wire time and turnaround; 0 0: none\n"
                          "freeze, unfreeze   stop and go on with the model's time\n"
                          "advance MS         move the model on by MS at once\n"
                          "counters           show what has passed on the line\n"
                          "log on|off         print every frame\n"
                          "port               show what a client opens\n"
                          "help               show this\n"
                          "quit               end");
}

int Console::parseOffset(const QString &text)
{
    static const QRegularExpression code(QStringLiteral("^[Pp]n-?([0-9A-Fa-f])([0-9]{2})$"));
    const QRegularExpressionMatch match = code.match(text);
    bool ok = false;
    int offset = -1;
    if (match.hasMatch())
        offset = 100 * match.captured(1).toInt(&ok, 16) + match.captured(2).toInt(nullptr, 10);
    else if (text.startsWith(QLatin1String("0x"), Qt::CaseInsensitive))
        offset = text.mid(2).toInt(&ok, 16);
    else
        offset = text.toInt(&ok, 10);
    return ok && offset >= 0 && offset < registerSpace ? offset : -1;
}

QString Console::get(const QStringList &words)
{
    const int offset = words.size() == 2 ? parseOffset(words.at(1)) : -1;
    if (offset < 0)
        return QStringLiteral("usage: get REGISTER");
    const auto working = m_drive.readRegister(offset, RegisterCopy::Working);
    const auto stored = m_drive.readRegister(offset, RegisterCopy::Stored);
    if (!working || !stored)
        return QStringLiteral("the drive has no register %1").arg(words.at(1));
    return QStringLiteral("%1: working %2, stored %3")
        .arg(words.at(1), showValue(*working), showValue(*stored));
}

QString Console::set(const QStringList &words, RegisterCopy copy)
{
    const int offset = words.size() == 3 ? parseOffset(words.at(1)) : -1;
    const std::optional<std::uint16_t> value =
        words.size() == 3 ? parseValue(words.at(2)) : std::optional<std::uint16_t>();
    if (offset < 0 || !value)
        return QStringLiteral("usage: %1 REGISTER VALUE").arg(words.first());
    if (!m_drive.writeRegister(offset, *value, copy))
        return QStringLiteral("the drive has no register %1").arg(words.at(1));
    return QString();
}

QString Console::log(const QStringList &words)
{
    const QString state = words.size() == 2 ? words.at(1) : QString();
    if (state == QLatin1String("on"))
        m_drive.setFrameListener([print = m_printLine](const LoggedFrame &frame) { print(toLine(frame)); });
    else if (state == QLatin1String("off"))
        m_drive.setFrameListener({});
    else
        return QStringLiteral("usage: log on|off");
    return QString();
}

QString Console::pace(const QStringList &words)
{
    bool baudOk = false;
    bool turnaroundOk = false;
    const int baud = words.value(1).toInt(&baudOk);
    const int turnaround = words.value(2).toInt(&turnaroundOk);
    if (words.size() != 3 || !baudOk || !turnaroundOk || baud < 0 || turnaround < 0)
        return QStringLiteral("usage: pace BAUD MICROSECONDS");
    m_drive.setPacing({baud, microseconds(turnaround)});
    return QString();
}

QString Console::advance(const QStringList &words)
{
    bool ok = false;
    const int time = words.value(1).toInt(&ok);
    if (words.size() != 2 || !ok || time < 0)
        return QStringLiteral("usage: advance MS");
    m_drive.advance(milliseconds(time));
    return QString();
}

} // namespace kt500sim
