// SPDX-License-Identifier: GPL-3.0-or-later
// The frames of the trial run: the registers that it saves, its set-up, its control panel, and what its two
// tables read and write. Pure functions and constant data; any thread.
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

#include <array>

// Registers that decide what happens to a reply or a frame.
namespace trialregister {

constexpr int panel = 0x20CA; // Pn202, whose bits are the control panel
constexpr int movingDistance = 0x213A;
constexpr int waitTime = 0x23F0;
constexpr int lastOfTable = 0x2327; // read last in either mode

} // namespace trialregister

// The values of the control panel. Bit 0 is servo on, 8 and 9 move forward and back, 10 starts a move.
namespace trialpanel {

constexpr int off = 0x0000;
constexpr int servoOn = 0x0001;
constexpr int jogForward = 0x0101;
constexpr int jogRollback = 0x0201;
constexpr int startMove = 0x0401;
// The inputs that the panel works instead of the terminals.
constexpr int allBits = 0x0701;

} // namespace trialpanel

using TrialFrames = QList<QByteArray>;

// The 30 reads at entry, in order; the control panel comes first.
const TrialFrames &savedReads();
// The write that puts back what a read gave: function 0x10 with the very bytes of the data.
QByteArray restoringFrame(int address, const QByteArray &data);
// The restoring writes in the order in which they are played. A saved control panel that holds bits of the
// trial run would move the motor in the midst of it: it is cleared first then, and written back last.
TrialFrames restoringOrder(const TrialFrames &saved);

// The six writes after the reads: from here on the control panel works.
TrialFrames setUpFrames();
QByteArray panelFrame(int value);
// True for a write of the control panel with function 0x06; the value goes to *value.
bool isPanelFrame(const QByteArray &frame, int *value = nullptr);

TrialFrames jogReads();
QByteArray positionRead();

// Leaves JOG, sets the software limits to what JOG has reached, and turns the servo off.
TrialFrames stepThreeFrames(int forwardLimit, int rollbackLimit);

TrialFrames onceReads();       // with the choice of the internal position command at the end
TrialFrames continuousReads(); // with the choice of two endpoints in mode 1 at the end
QByteArray onceChoice();
TrialFrames continuousChoice();
QByteArray positionSource(); // the multi-segment displacement as source of the position command
// The distance with the sign of the direction, then the start.
QByteArray distanceFrame(int distance);

struct JogRow
{
    const char *name;
    const char *range;
    const char *unit;
    int address;
    bool tenths; // the register counts tenths of the cell
};
constexpr int jogRowCount = 4;
extern const std::array<JogRow, jogRowCount> jogRows;
// 0x06 write of a cell that has passed its check.
QByteArray jogCellFrame(int row, const QString &text);
// What a row shows for the data of a reply.
QString jogCellText(int row, const QByteArray &data);
// The row of a register, or -1.
int jogRowOf(int address);

struct PositionRow
{
    enum Form { Word, Tenths, Pair };

    const char *name;
    const char *range;
    const char *unit;
    int onceAddress;    // 0: none
    int sectionAddress; // of "Continuous", section 1
    int mirrorAddress;  // section 2; 0: none
    Form form;
};
constexpr int positionRowCount = 7;
constexpr int distanceRow = 0;
constexpr int waitRow = 3;
extern const std::array<PositionRow, positionRowCount> positionRows;
int positionRowOf(int address);
QString positionCellText(int row, const QByteArray &data);
// Write of a cell for "Once"; empty for the row that has no register there.
QByteArray onceCellFrame(int row, const QString &text);
// Both writes of a cell for "Continuous".
// Deliberate: a row with one register has a second frame all the same, without an address.
TrialFrames continuousCellFrames(int row, const QString &text);
// The whole table for either mode, one text a row; blank cells are left out. With the choice of the mode.
TrialFrames onceTableFrames(const QStringList &cells);
TrialFrames continuousTableFrames(const QStringList &cells);
// Section 2, by which the motor comes back the way that section 1 went.
TrialFrames mirrorFrames(const QStringList &cells);
// True for the second write of a row that has one register only.
bool isAddressless(const QByteArray &frame);
