// SPDX-License-Identifier: GPL-3.0-or-later
#include "simulator/registertable.h"

#include <QFile>
#include <QStringList>
#include <QtGlobal>

#include <bitset>
#include <limits>

// The resource stands in a static library, where nothing else would pull it in; the macro must be used
// outside every namespace.
static void initRegisterResource()
{
    Q_INIT_RESOURCE(kt500sim);
}

namespace kt500sim {
namespace {

bool parseFactory(const QString &text, int words, std::uint32_t *value)
{
    bool ok = false;
    const bool hexadecimal = text.startsWith(QLatin1String("0x"), Qt::CaseInsensitive);
    const qint64 number = hexadecimal ? text.mid(2).toLongLong(&ok, 16) : text.toLongLong(&ok, 10);
    const qint64 highest = words == 2 ? std::numeric_limits<quint32>::max() : 0xffff;
    const qint64 lowest = words == 2 ? std::numeric_limits<qint32>::min() : -0x8000;
    *value = static_cast<std::uint32_t>(number);
    return ok && number >= lowest && number <= highest;
}

/// Reads one line without its comment; returns an empty text or what is wrong with it.
QString parseEntry(const QString &line, RegisterEntry *entry)
{
    const QStringList fields = line.split(QLatin1Char(','));
    if (fields.size() != 4)
        return QStringLiteral("four fields are needed");

    bool ok = false;
    entry->offset = fields.at(0).trimmed().toInt(&ok);
    if (!ok || entry->offset < 0)
        return QStringLiteral("the offset is no number");
    entry->words = fields.at(1).trimmed().toInt(&ok);
    if (!ok || entry->words < 1 || entry->words > 2)
        return QStringLiteral("the number of words must be 1 or 2");
    if (entry->offset + entry->words > registerSpace)
        return QStringLiteral("the offset is beyond the register space");

    const QString access = fields.at(2).trimmed();
    if (access != QLatin1String("r") && access != QLatin1String("rw"))
        return QStringLiteral("the access must be r or rw");
    entry->readOnly = access == QLatin1String("r");

    if (!parseFactory(fields.at(3).trimmed(), entry->words, &entry->factory))
        return QStringLiteral("the factory value is no number of that width");
    return QString();
}

} // namespace

std::optional<RegisterTable> parseRegisterTable(const QString &text, QString *error)
{
    RegisterTable table;
    std::bitset<registerSpace> taken;
    int lineNumber = 0;
    const QStringList lines = text.split(QLatin1Char('\n'));
    for (const QString &wholeLine : lines) {
        ++lineNumber;
        const QString line = wholeLine.section(QLatin1Char('#'), 0, 0).trimmed();
        if (line.isEmpty())
            continue;

        RegisterEntry entry;
        QString fault = parseEntry(line, &entry);
        for (int word = 0; fault.isEmpty() && word < entry.words; ++word) {
            const int offset = entry.offset + word;
            const auto at = static_cast<std::size_t>(offset);
            if (taken.test(at))
                fault = QStringLiteral("offset %1 is listed twice").arg(offset);
            taken.set(at);
        }
        if (!fault.isEmpty()) {
            if (error != nullptr)
                *error = QStringLiteral("line %1: %2").arg(lineNumber).arg(fault);
            return std::nullopt;
        }
        table.push_back(entry);
    }
    return table;
}

RegisterTable builtInRegisterTable()
{
    initRegisterResource();
    QFile file(QStringLiteral(":/kt500sim/registers.csv"));
    if (!file.open(QIODevice::ReadOnly))
        qFatal("kt500sim: the register table is not in the program");
    QString error;
    const std::optional<RegisterTable> table = parseRegisterTable(QString::fromUtf8(file.readAll()), &error);
    if (!table)
        qFatal("kt500sim: register table: %s", qPrintable(error));
    return *table;
}

} // namespace kt500sim
