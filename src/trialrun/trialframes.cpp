// SPDX-License-Identifier: GPL-3.0-or-later
#include "trialrun/trialframes.h"

#include "link/framecodec.h"
#include "link/functioncodes.h"
#include "link/replies.h"
#include "link/requests.h"

#include <QtGlobal>

#include <algorithm>

namespace {

constexpr int softwareLimits = 0x2332; // Pn818 and Pn820, two registers each

TrialFrames fromHex(std::initializer_list<const char *> texts)
{
    TrialFrames frames;
    for (const char *text : texts)
        frames.append(QByteArray::fromHex(text));
    return frames;
}

QByteArray bytesOf(qint64 value, int width)
{
    return fitBytes(
        QByteArray::fromHex(QString::number(value, 16).rightJustified(16, QLatin1Char('0')).toLatin1()),
        width);
}

// Tenths are rounded half up, and truncated below zero.
qint64 tenths(double value)
{
    return qint64(value * 10 + (value > 0 ? 0.5 : 0));
}

QString tenthsText(quint32 raw)
{
    return QString::number(raw * 0.1, 'f', 1);
}

qint64 wireNumber(const PositionRow &row, const QString &text)
{
    return row.form == PositionRow::Tenths ? tenths(text.toDouble()) : text.toLongLong();
}

QByteArray wireData(const PositionRow &row, qint64 number)
{
    return bytesOf(number, row.form == PositionRow::Pair ? 4 : 2);
}

QByteArray mirrorFrame(int row, const QString &text)
{
    const PositionRow &rule = positionRows.at(size_t(row));
    const qint64 number = wireNumber(rule, text);
    return writeMultipleRequest(rule.mirrorAddress, wireData(rule, row == distanceRow ? -number : number));
}

QByteArray sectionFrame(int row, const QString &text)
{
    const PositionRow &rule = positionRows.at(size_t(row));
    return writeMultipleRequest(rule.sectionAddress, wireData(rule, wireNumber(rule, text)));
}

} // namespace

const std::array<JogRow, jogRowCount> jogRows{{
    {QT_TRANSLATE_NOOP("TrialRun", "JOG speed value"), "0.0~6000.0", "0.1RPM", 0x2007, true},
    {QT_TRANSLATE_NOOP("TrialRun", "JOG acceleration time"), "0~60000", "1MS", 0x2008, false},
    {QT_TRANSLATE_NOOP("TrialRun", "JOG deceleration time"), "0~60000", "1MS", 0x2009, false},
    {QT_TRANSLATE_NOOP("TrialRun", "JOG torque limit"), "0~300", "1%", 0x200A, false},
}};

const std::array<PositionRow, positionRowCount> positionRows{{
    {QT_TRANSLATE_NOOP("TrialRun", "Moving Distance"), "0~2147483647", "PUU", 0x213A, 0x23EC, 0x23F2,
     PositionRow::Pair},
    {QT_TRANSLATE_NOOP("TrialRun", "Maximum running Speed"), "0.0~6000.0", "0.1RPM", 0x213C, 0x23EE, 0x23F4,
     PositionRow::Tenths},
    {QT_TRANSLATE_NOOP("TrialRun", "Acceleration Time"), "0~60000", "1MS", 0x213D, 0x23EF, 0x23F5,
     PositionRow::Word},
    {QT_TRANSLATE_NOOP("TrialRun", "Wait Time"), "0~3600000", "1ms", 0, 0x23F0, 0x23F6, PositionRow::Pair},
    {QT_TRANSLATE_NOOP("TrialRun", "Overload protection gain"), "50~300", "1%", 0x2322, 0x2322, 0,
     PositionRow::Word},
    {QT_TRANSLATE_NOOP("TrialRun", "Overspeed protection threshold"), "1.0~3.0", "0.1", 0x2329, 0x2329, 0,
     PositionRow::Tenths},
    {QT_TRANSLATE_NOOP("TrialRun", "Position deviation excessive threshold"), "0~13107200", "PULSE", 0x2327,
     0x2327, 0, PositionRow::Pair},
}};

const TrialFrames &savedReads()
{
    static const TrialFrames frames = fromHex({
        "010320ca0001aff4", // Pn202 DI auxiliary input
        "0103200b0001fe08", // Pn011 JOG control mode enable
        "010320c800010e34", // Pn200 DI source control switch
        "010320db0001fff1", // Pn219 DI09 planning function
        "010320dc00014e30", // Pn220 DI10 planning function
        "010320dd00011ff0", // Pn221 DI11 planning function
        "0103200700013e0b", // Pn007 JOG speed
        "0103200800010e08", // Pn008 JOG acceleration time
        "0103200900015fc8", // Pn009 JOG deceleration time
        "0103200a0001afc8", // Pn010 JOG torque limit
        "0103213a0002ee3a", // Pn314 internal position command
        "0103213c00014e3a", // Pn316 its maximum speed
        "0103213d00011ffa", // Pn317 its acceleration and deceleration time
        "0103232200012f84", // Pn802 motor overload protection gain
        "0103232900015e46", // Pn809 overspeed fault threshold
        "0103232700027f84", // Pn807 position deviation threshold
        "010323ec00020e7a", // PnA04 section 1: displacement
        "010323ee0001efbb", // PnA06 maximum speed
        "010323ef0001be7b", // PnA07 acceleration and deceleration time
        "010323f00002cfbc", // PnA08 waiting time
        "010323f200026e7c", // PnA10 section 2: displacement
        "010323f40001ce7c", // PnA12 maximum speed
        "010323f500019fbc", // PnA13 acceleration and deceleration time
        "010323f600022fbd", // PnA14 waiting time
        "010320640001ce15", // Pn100 control method
        "0103233200026e40", // Pn818 software forward limit
        "0103233400028e41", // Pn820 software reverse limit
        "0103212c00014fff", // Pn300 position command source
        "010323e800010fba", // PnA00 multi-segment displacement control mode
        "010323e900015e7a", // PnA01 number of endpoints
    });
    return frames;
}

QByteArray restoringFrame(int address, const QByteArray &data)
{
    return writeMultipleRequest(address, data);
}

TrialFrames restoringOrder(const TrialFrames &saved)
{
    TrialFrames order = saved;
    if (order.isEmpty() || addressOfRequest(order.first()) != trialregister::panel)
        return order;
    if (unsignedNumber(payloadFromBack(order.first(), 2)) & trialpanel::allBits) {
        order.append(order.takeFirst());
        order.prepend(panelFrame(trialpanel::off));
    }
    return order;
}

TrialFrames setUpFrames()
{
    return {
        packSingleWrite(QStringLiteral("Pn011"), QStringLiteral("0001")), // JOG control mode on
        packSingleWrite(QStringLiteral("Pn219"), QStringLiteral("0027")), // DI9: JOGP, forward
        packSingleWrite(QStringLiteral("Pn220"), QStringLiteral("0028")), // DI10: JOGN, back
        packSingleWrite(QStringLiteral("Pn221"), QStringLiteral("0025")), // DI11: PTRG, start of a move
        packSingleWrite(QStringLiteral("Pn200"), QStringLiteral("0701")), // Pn202 stands in for these and DI1
        QByteArray::fromHex("0110206400010200008fb6"),                    // Pn100 = 0
    };
}

QByteArray panelFrame(int value)
{
    return packSingleWrite(QStringLiteral("Pn202"),
                           QString::number(value, 16).rightJustified(4, QLatin1Char('0')));
}

bool isPanelFrame(const QByteArray &frame, int *value)
{
    if (frame.size() != 8 || frame.at(1) != char(FunctionCode::WriteSingle) ||
        addressOfRequest(frame) != trialregister::panel)
        return false;
    if (value)
        *value = int(unsignedNumber(frame.mid(4, 2)));
    return true;
}

TrialFrames jogReads()
{
    return fromHex({"0103200700013e0b", "0103200800010e08", "0103200900015fc8", "0103200a0001afc8"}) +
           TrialFrames{positionRead()};
}

QByteArray positionRead()
{
    return QByteArray::fromHex("010325eb0002bf33"); // PnF15, absolute position
}

TrialFrames stepThreeFrames(int forwardLimit, int rollbackLimit)
{
    return {
        packSingleWrite(QStringLiteral("Pn011"), QStringLiteral("0000")),
        writeMultipleRequest(softwareLimits, bytesOf(forwardLimit, 4) + bytesOf(rollbackLimit, 4)),
        panelFrame(trialpanel::off),
    };
}

TrialFrames onceReads()
{
    return fromHex({"0103213a0002ee3a", "0103213c00014e3a", "0103213d00011ffa", "0103232200012f84",
                    "0103232900015e46", "0103232700027f84"}) +
           TrialFrames{onceChoice()};
}

TrialFrames continuousReads()
{
    return fromHex({"010323ec00020e7a", "010323ee0001efbb", "010323ef0001be7b", "010323f00002cfbc",
                    "0103232200012f84", "0103232900015e46", "0103232700027f84"}) +
           continuousChoice();
}

QByteArray onceChoice()
{
    return packSingleWrite(QStringLiteral("Pn300"), QStringLiteral("0001"));
}

TrialFrames continuousChoice()
{
    return {packSingleWrite(QStringLiteral("PnA00"), QStringLiteral("0001")),
            packSingleWrite(QStringLiteral("PnA01"), QStringLiteral("0002"))};
}

QByteArray positionSource()
{
    return packSingleWrite(QStringLiteral("Pn300"), QStringLiteral("0002"));
}

QByteArray distanceFrame(int distance)
{
    return writePairRequest(trialregister::movingDistance, distance);
}

QByteArray jogCellFrame(int row, const QString &text)
{
    const JogRow &rule = jogRows.at(size_t(row));
    const double value = text.toDouble();
    return writeSingleRequest(rule.address, int(rule.tenths ? tenths(value) : qint64(value)));
}

QString jogCellText(int row, const QByteArray &data)
{
    const quint32 raw = unsignedNumber(data);
    return jogRows.at(size_t(row)).tenths ? tenthsText(raw) : QString::number(double(raw), 'g', 6);
}

int jogRowOf(int address)
{
    const int row = address - jogRows.front().address;
    return row >= 0 && row < jogRowCount ? row : -1;
}

int positionRowOf(int address)
{
    const auto *const found =
        std::find_if(positionRows.begin(), positionRows.end(), [address](const PositionRow &row) {
            return row.onceAddress == address || row.sectionAddress == address;
        });
    return found == positionRows.end() ? -1 : int(found - positionRows.begin());
}

QString positionCellText(int row, const QByteArray &data)
{
    switch (positionRows.at(size_t(row)).form) {
    case PositionRow::Tenths:
        return tenthsText(unsignedNumber(data));
    case PositionRow::Pair:
        return QString::number(signedNumber(data));
    case PositionRow::Word:
        break;
    }
    return QString::number(unsignedNumber(data));
}

QByteArray onceCellFrame(int row, const QString &text)
{
    const PositionRow &rule = positionRows.at(size_t(row));
    return rule.onceAddress == 0
               ? QByteArray()
               : writeMultipleRequest(rule.onceAddress, wireData(rule, wireNumber(rule, text)));
}

TrialFrames continuousCellFrames(int row, const QString &text)
{
    const PositionRow &rule = positionRows.at(size_t(row));
    if (rule.mirrorAddress != 0)
        return {sectionFrame(row, text), mirrorFrame(row, text)};
    const QByteArray data = wireData(rule, wireNumber(rule, text));
    const QByteArray addressless =
        QByteArray::fromHex("0110") + bytesOf(data.size() / 2, 2) + char(data.size()) + data;
    return {sectionFrame(row, text), withCrc(addressless)};
}

TrialFrames onceTableFrames(const QStringList &cells)
{
    TrialFrames frames;
    for (int row = 0; row < positionRowCount; ++row) {
        if (positionRows.at(size_t(row)).onceAddress != 0 && !cells.at(row).isEmpty())
            frames.append(onceCellFrame(row, cells.at(row)));
    }
    return frames + TrialFrames{onceChoice()};
}

TrialFrames continuousTableFrames(const QStringList &cells)
{
    TrialFrames frames;
    for (int row = 0; row < positionRowCount; ++row) {
        if (cells.at(row).isEmpty())
            continue;
        frames.append(sectionFrame(row, cells.at(row)));
        if (positionRows.at(size_t(row)).mirrorAddress != 0)
            frames.append(mirrorFrame(row, cells.at(row)));
    }
    return frames + continuousChoice();
}

TrialFrames mirrorFrames(const QStringList &cells)
{
    TrialFrames frames;
    for (int row = 0; row < positionRowCount; ++row) {
        if (positionRows.at(size_t(row)).mirrorAddress != 0 && !cells.at(row).isEmpty())
            frames.append(mirrorFrame(row, cells.at(row)));
    }
    return frames;
}

bool isAddressless(const QByteArray &frame)
{
    // A frame with an address has its data behind a head of seven bytes, one without behind five.
    return frame.size() > 5 && frame.at(1) == char(FunctionCode::WriteMultiple) &&
           frame.size() == 5 + quint8(frame.at(4)) + 2;
}
