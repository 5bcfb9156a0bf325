// SPDX-License-Identifier: GPL-3.0-or-later
#include "monitor/monitorwrites.h"

#include "catalogue/parametercode.h"
#include "link/framecodec.h"
#include "link/requests.h"

#include <algorithm>

namespace {

struct Target
{
    const char *code;
    int words;
};

constexpr std::array<Target, lineEditCount> lineEdits{{
    {"Pn-314", 2},
    {"Pn-304", 2},
    {"Pn-312", 2},
    {"Pn-401", 2},
    {"Pn-403", 1},
    {"Pn-404", 1},
    {"Pn-411", 1},
    {"Pn-501", 1},
    {"Pn-511", 1},
    {"Pn-512", 1},
}};

constexpr std::array<const char *, otherComboCount> otherCombos{"Pn-400", "Pn-500", "Pn-509"};

constexpr int methodOffset = 100;     // Pn-100
constexpr int sourceOffset = 200;     // Pn-200 for DI, Pn-201 for DO
constexpr int levelOffset = 202;      // Pn-202 for DI, Pn-203 for DO
constexpr int diFunctionOffset = 211; // Pn-211, the first of sixteen
constexpr int doFunctionOffset = 231; // Pn-231, the first of sixteen
constexpr int pn300Offset = 300;
constexpr int faultClearOffset = 800; // Pn-800
constexpr int auxiliarySource = 0xFFFF;
constexpr int decimalDigits = 4;

// Function numbers and option digits stand in the register as binary-coded decimal: 12 is 0x0012.
int decimalInHex(int value)
{
    return QByteArray::number(value).right(decimalDigits).toInt(nullptr, 16);
}

QByteArray storedWrite(int offset, int value)
{
    return writeSingleRequest(eepromBase + offset, value);
}

QByteArray lineEditFrame(int index, int value)
{
    if (index < 0 || index >= lineEditCount)
        return QByteArray();
    const Target &target = lineEdits.at(std::size_t(index));
    const int offset = registerOf(QLatin1String(target.code));
    return target.words == 2 ? writePairRequest(eepromBase + offset, value) : storedWrite(offset, value);
}

QByteArray otherComboFrame(int index, int value)
{
    if (index < 0 || index >= otherComboCount)
        return QByteArray();
    return storedWrite(registerOf(QLatin1String(otherCombos.at(std::size_t(index)))), decimalInHex(value));
}

} // namespace

QByteArray writeFrame(MonitorWrite write, int number, int value)
{
    switch (write) {
    case MonitorWrite::DISource:
        return storedWrite(sourceOffset, value == 1 ? auxiliarySource : 0);
    case MonitorWrite::DOSource:
        return storedWrite(sourceOffset + 1, value == 1 ? auxiliarySource : 0);
    case MonitorWrite::DIFunction:
        return storedWrite(diFunctionOffset + number, decimalInHex(value));
    case MonitorWrite::DOFunction:
        return storedWrite(doFunctionOffset + number, decimalInHex(value));
    case MonitorWrite::DILevel:
        return writeSingleRequest(ramBase + levelOffset, value);
    case MonitorWrite::DOLevel:
        return writeSingleRequest(ramBase + levelOffset + 1, value);
    case MonitorWrite::Method:
        return storedWrite(methodOffset, decimalInHex(value));
    case MonitorWrite::Pn300:
        return storedWrite(pn300Offset, decimalInHex(value));
    case MonitorWrite::LineEdit:
        return lineEditFrame(number, value);
    case MonitorWrite::OtherCombo:
        return otherComboFrame(number, value);
    }
    return QByteArray();
}

QByteArray faultClearFrame()
{
    return writeSingleRequest(ramBase + faultClearOffset, 1);
}

QByteArray methodReadFrame()
{
    return readRequest(ramBase + methodOffset, 1);
}

QList<QByteArray> runReadFrames(int method)
{
    static const QList<QList<Target>> lists{
        {{"Pn-300", 1}, {"Pn-314", 2}, {"Pn-304", 2}, {"Pn-312", 2}},
        {{"Pn-400", 1}, {"Pn-401", 2}, {"Pn-403", 1}, {"Pn-404", 1}, {"Pn-411", 1}},
        {{"Pn-500", 1}, {"Pn-501", 1}, {"Pn-509", 1}, {"Pn-511", 1}, {"Pn-512", 1}},
    };
    QList<QByteArray> frames;
    const QList<Target> targets = lists.value(method);
    for (const Target &target : targets)
        frames.append(readRequest(ramBase + registerOf(QLatin1String(target.code)), target.words));
    return frames;
}

void PendingWrites::set(const Write &write)
{
    places.at(std::size_t(write.kind)) = {true, write};
}

void PendingWrites::clear(MonitorWrite kind)
{
    places.at(std::size_t(kind)).isPending = false;
}

bool PendingWrites::isPending(MonitorWrite kind) const
{
    return places.at(std::size_t(kind)).isPending;
}

bool PendingWrites::isEmpty() const
{
    return std::none_of(places.begin(), places.end(), [](const Slot &place) { return place.isPending; });
}

PendingWrites::Write PendingWrites::takeFirst()
{
    auto *const first =
        std::find_if(places.begin(), places.end(), [](const Slot &place) { return place.isPending; });
    first->isPending = false;
    return first->write;
}
