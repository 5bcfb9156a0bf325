// SPDX-License-Identifier: GPL-3.0-or-later
#include "gaintuning/gainfields.h"

#include "gaintuning/gaintuningframes.h"

#include <QCoreApplication>

#include <algorithm>
#include <array>

namespace gaintuning {

namespace {

constexpr const char *context = "GainTuning";
constexpr int unchanged = -1;

struct FieldRow
{
    const char *title;
    const char *widget;
    const char *minimum;
    const char *maximum;
    int fractionDigits; // 0 for an integer, unchanged for a text that is not rewritten
    int readRegister;
    int scale; // of the drive's number
};

// "Maxinum" and "execteeds" are so spelt.
constexpr std::array<FieldRow, fieldCount> fields{{
    {QT_TRANSLATE_NOOP("GainTuning", "Maxinum speed"), "", "100", "1000", 0, RegisterMaximumSpeed, 1},
    {QT_TRANSLATE_NOOP("GainTuning", "Acceleration and deceleration time"), "", "20", "800", 0,
     RegisterMaximumSpeed + 1, 1},
    {QT_TRANSLATE_NOOP("GainTuning", "Motor stroke"), "", "0", "100", 0, RegisterMaximumSpeed + 2, 1},
    {QT_TRANSLATE_NOOP("GainTuning", "Interval time"), "", "50", "5000", 0, RegisterIntervalTime, 1},
    {QT_TRANSLATE_NOOP("GainTuning", "Inertia Ratio"), "setInertiaRatio", "1.0", "120.0", 1,
     RegisterInertiaRatio, 10},
    {QT_TRANSLATE_NOOP("GainTuning", "Position Loop Gain"), "setPositionLoopGain", "0.1", "900.0", 1,
     RegisterPositionLoopGain, 10},
    {QT_TRANSLATE_NOOP("GainTuning", "Speed Loop Gain"), "setSpeedLoopGain", "0.1", "1000.0", 1,
     RegisterSpeedLoopGain, 10},
    {QT_TRANSLATE_NOOP("GainTuning", "Integral Time Constant of Speed Loop"), "setSpeedLoopIntegralTime",
     "1.0", "1000.0", 1, RegisterSpeedLoopIntegralTime, 10},
    {QT_TRANSLATE_NOOP("GainTuning", "Time Constant of Torque Instruction Filtering"), "setTorqueFilterTime",
     "0.00", "30.00", 2, RegisterTorqueFilterTime, 100},
    {QT_TRANSLATE_NOOP("GainTuning", "Speed Feedforward Gain"), "setSpeedFeedforwardGain", "0.0", "100.0", 1,
     RegisterSpeedFeedforwardGain, 10},
    {QT_TRANSLATE_NOOP("GainTuning", "Time Constant of Speed Feedforward Filtering"),
     "setSpeedFeedforwardFilterTime", "0.10", "100.00", 2, RegisterSpeedFeedforwardFilterTime, 100},
    {QT_TRANSLATE_NOOP("GainTuning", "Notch-filter1 Frequency"), "setNotch1Frequency", "50", "5000", 0,
     RegisterNotch1Frequency, 1},
    {QT_TRANSLATE_NOOP("GainTuning", "Notch-filter1 Width Grade"), "setNotch1WidthGrade", "1", "4096", 0,
     RegisterNotch1Frequency + 1, 1},
    {QT_TRANSLATE_NOOP("GainTuning", "Notch-filter1 Deep Grade"), "setNotch1DeepGrade", "0", "40", 0,
     RegisterNotch1Frequency + 2, 1},
    {QT_TRANSLATE_NOOP("GainTuning", "Notch-filter2 Frequency"), "setNotch2Frequency", "50", "5000", 0,
     RegisterNotch1Frequency + 3, 1},
    {QT_TRANSLATE_NOOP("GainTuning", "Notch-filter2 Width Grade"), "setNotch2WidthGrade", "1", "4096", 0,
     RegisterNotch1Frequency + 4, 1},
    {QT_TRANSLATE_NOOP("GainTuning", "Notch-filter2 Deep Grade"), "setNotch2DeepGrade", "0", "40", 0,
     RegisterNotch1Frequency + 5, 1},
    {QT_TRANSLATE_NOOP("GainTuning", "Notch-filter3 Frequency"), "setNotch3Frequency", "50", "5000", 0,
     RegisterNotch1Frequency + 6, 1},
    {QT_TRANSLATE_NOOP("GainTuning", "Notch-filter3 Width Grade"), "setNotch3WidthGrade", "1", "4096", 0,
     RegisterNotch1Frequency + 7, 1},
    {QT_TRANSLATE_NOOP("GainTuning", "Notch-filter3 Deep Grade"), "setNotch3DeepGrade", "0", "40", 0,
     RegisterNotch1Frequency + 8, 1},
    {QT_TRANSLATE_NOOP("GainTuning", "Notch-filter4 Frequency"), "setNotch4Frequency", "50", "5000", 0,
     RegisterNotch1Frequency + 9, 1},
    {QT_TRANSLATE_NOOP("GainTuning", "Notch-filter4 Width Grade"), "setNotch4WidthGrade", "1", "4096", 0,
     RegisterNotch1Frequency + 10, 1},
    {QT_TRANSLATE_NOOP("GainTuning", "Notch-filter4 Deep Grade"), "setNotch4DeepGrade", "0", "40", 0,
     RegisterNotch4DeepGrade, 1},
    {QT_TRANSLATE_NOOP("GainTuning", "Calculated"), "calculated", "1.0", "120.0", unchanged,
     RegisterCalculatedRatio, 100},
}};

QStringList texts(const char *FieldRow::*member)
{
    QStringList list;
    for (const FieldRow &field : fields)
        list.append(QLatin1String(field.*member));
    return list;
}

// Qt's conversions take the digits of other scripts, too.
bool isPlain(const QString &text)
{
    return std::all_of(text.begin(), text.end(), [](QChar c) { return c.unicode() < 0x80; });
}

} // namespace

QString fieldTitle(int field)
{
    return QCoreApplication::translate(context, fields.at(field).title);
}

QString fieldWidgetName(int field)
{
    return QLatin1String(fields.at(field).widget);
}

int fieldRegister(int field)
{
    return fields.at(field).readRegister;
}

int fieldScale(int field)
{
    return fields.at(field).scale;
}

int fieldOfRegister(int readRegister)
{
    for (int field = 0; field < fieldCount; ++field) {
        if (fields.at(field).readRegister == readRegister)
            return field;
    }
    return -1;
}

QStringList minimumTexts()
{
    return texts(&FieldRow::minimum);
}

QStringList maximumTexts()
{
    return texts(&FieldRow::maximum);
}

QString rangeMessage(const QString &minimum, const QString &maximum)
{
    // The context stands here as it is, since texts are collected without looking up names.
    return QCoreApplication::translate("GainTuning", "Input value execteeds the range!\nRange: ") + minimum +
           QLatin1String(" ~ ") + maximum;
}

std::optional<QString> normalForm(int field, const QString &text, const QString &minimum,
                                  const QString &maximum)
{
    const int digits = fields.at(field).fractionDigits;
    bool isNumber = false;
    const double value = digits == 0 ? text.toInt(&isNumber) : text.toDouble(&isNumber);
    // Written so that what is not a number at all fails, too.
    if (!isNumber || !isPlain(text) || !(value >= minimum.toDouble() && value <= maximum.toDouble()))
        return std::nullopt;
    if (digits == unchanged)
        return text;
    return digits == 0 ? QString::number(int(value)) : QString::number(value, 'f', digits);
}

int scaledValue(const QString &text, int scale)
{
    double value = text.toDouble() * scale;
    if (value > 0)
        value += 0.5;
    return int(value);
}

} // namespace gaintuning
