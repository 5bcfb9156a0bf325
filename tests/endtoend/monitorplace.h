// SPDX-License-Identifier: GPL-3.0-or-later
// The monitor in the main window at a simulated drive: how it is opened, and whether it shows what the drive
// holds. Main thread.
#pragma once

#include "monitor/parameter_monitor.h"
#include "shell/mainwindow.h"
#include "support/monitordriver.h"
#include "support/rununtil.h"
#include "support/workplace.h"

#include <QComboBox>
#include <QLineEdit>
#include <QSet>
#include <QTableWidget>

#include <chrono>

namespace monitorplace {

const QString usb = QStringLiteral("USB");
const QString rs485 = QStringLiteral("115200(485)");

inline Parameter_Monitor *openMonitor(const Workplace &place)
{
    Workplace::clickAction(place.window(), "actionParameter_Monitor");
    const QList<Parameter_Monitor *> windows = place.window()->findChildren<Parameter_Monitor *>();
    return windows.isEmpty() ? nullptr : windows.last();
}

inline Parameter_Monitor *openConnected(Workplace *place, const QString &speed)
{
    place->connectTo(speed);
    if (!runUntil([place] { return place->isShownOnline(); }, 5000))
        return nullptr;
    return openMonitor(*place);
}

inline bool isPair(int offset)
{
    static const QList<int> pairs{1507, 1509, 1511, 1513, 1515, 1518, 1520,
                                  1529, 1540, 1542, 1544, 1553, 1581};
    return pairs.contains(offset);
}

// Which rows of the status table are no polled ones.
inline bool isPolled(const QString &code)
{
    static const QStringList others{"Pn-F55", "Pn-F63", "Pn-F65", "Pn-F67", "Pn-F69"};
    return !others.contains(code);
}

// What a row should read, told from the drive's own registers.
inline QString expectedStatus(kt500sim::SimulatedDrive *drive, const QString &code, const QString &unit)
{
    const int offset = 1500 + code.rightRef(2).toInt();
    const quint16 word = drive->readRegister(offset).value_or(0);
    if (offset == 1525 || offset == 1526)
        return QStringLiteral("%1").arg(word, 4, 16, QLatin1Char('0')).toUpper();
    double number = offset == 1580 ? word : qint16(word);
    if (isPair(offset))
        number = drive->readPair(offset).value_or(0);
    if (!unit.contains(QLatin1Char('.')))
        return QString::number(number, 'f', 0);
    return QString::number(number / (unit.startsWith(QLatin1String("0.01")) ? 100 : 10), 'f', 2);
}

// The first thing on the screen that is not what the drive holds; empty when all is.
inline QString firstDifference(kt500sim::SimulatedDrive *drive, const MonitorDriver &monitor)
{
    const QTableWidget *const table = monitor.table("statusTable");
    for (int row = 0; row < table->rowCount(); ++row) {
        const QString code = table->item(row, 0)->text();
        if (!isPolled(code))
            continue;
        const QString wanted = expectedStatus(drive, code, table->item(row, 2)->text());
        const QString shown = table->item(row, 3)->text();
        // A zero may carry the sign of what was rounded to it.
        if (shown != wanted && shown.toDouble() != wanted.toDouble())
            return QStringLiteral("%1: %2 instead of %3").arg(code, shown, wanted);
        if (shown.isEmpty())
            return code + QLatin1String(" is empty");
    }
    for (const char *half : {"di", "do"}) {
        const bool isInput = half[1] == 'i';
        const quint16 levels = drive->readRegister(isInput ? 1525 : 1526).value_or(0);
        for (int row = 1; row <= 16; ++row) {
            const QString name = QString::fromLatin1(half) + QString::number(row);
            if (monitor.isGreen(QLatin1String(half), row) != bool(levels >> (row - 1) & 1))
                return name + QLatin1String(" has the wrong dot");
            const quint16 plan = drive->readRegister((isInput ? 210 : 230) + row).value_or(0) & 0xFF;
            const QComboBox *const combo =
                monitor.combo(QStringLiteral("%1FunctionComboBox%2").arg(QLatin1String(half)).arg(row));
            bool isNumber = false;
            int index = QString::number(plan, 16).toInt(&isNumber);
            if (!isNumber || index >= combo->count())
                index = -1;
            if (combo->currentIndex() != index)
                return name + QLatin1String(" has the wrong function");
        }
    }
    // Both codes have rows in both catalogues, and nothing stands there without one.
    const QList<std::tuple<const char *, const char *, int>> codes{{"alarmCurrentEdit", "AL-0", 1527},
                                                                   {"faultCurrentEdit", "Er-0", 1528}};
    for (const auto &[edit, head, offset] : codes) {
        const int number = drive->readRegister(offset).value_or(0);
        const QString code =
            number == 0
                ? QString()
                : QStringLiteral("%1%2").arg(QLatin1String(head)).arg(number, 2, 10, QLatin1Char('0'));
        if (monitor.edit(QLatin1String(edit))->text() != code)
            return QStringLiteral("%1: %2 instead of %3")
                .arg(QLatin1String(edit), monitor.edit(QLatin1String(edit))->text(), code);
    }
    return QString();
}

// Waits until the screen says what the drive holds, and goes on saying so.
inline bool showsTheDrive(kt500sim::SimulatedDrive *drive, const MonitorDriver &monitor, int limit = 15000)
{
    const bool isSo =
        runUntil([drive, &monitor] { return firstDifference(drive, monitor).isEmpty(); }, limit);
    if (!isSo)
        qWarning("%s", qPrintable(firstDifference(drive, monitor)));
    return isSo;
}

// Another state of a drive whose model stands still: a motor that has turned on for a while at another speed,
// other levels, another warning, other functions of the terminals.
inline void changeState(kt500sim::SimulatedDrive *drive, int seed)
{
    static const QList<int> harmless{0x00, 0x13, 0x15, 0x16, 0x19, 0x20, 0x21, 0x22, 0x24};
    for (int row = 1; row <= 16; ++row) {
        const int function = (row * 3 + seed) % 14;
        drive->writeRegister(210 + row,
                             row == 1 ? 0x01 : quint16(harmless.at((row + seed) % harmless.size())));
        drive->writeRegister(230 + row, quint16(function / 10 << 4 | function % 10));
    }
    drive->writeRegister(200, 0xFFFF);
    drive->writeRegister(201, 0xFFFF);
    drive->writeRegister(100, 1);
    drive->writePair(401, 10000 + 3210 * (seed % 7));
    drive->writeRegister(202, 0x0001);
    drive->writeRegister(203, quint16(seed * 0x1235));
    for (const int warning : {10, 11})
        drive->setWarning(warning, seed % 3 == warning - 10);
    drive->advance(std::chrono::milliseconds(700 + 50 * seed));
}

// How many different values the status table shows: those of a drive at rest would hide one that stands in
// another's place.
inline int differentValues(const MonitorDriver &monitor)
{
    QSet<QString> values;
    const QStringList codes = monitor.statusCodes();
    for (const QString &code : codes)
        values.insert(monitor.status(code));
    return values.size();
}

} // namespace monitorplace
