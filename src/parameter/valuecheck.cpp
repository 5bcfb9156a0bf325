// SPDX-License-Identifier: GPL-3.0-or-later
#include "parameter/valuecheck.h"

#include "catalogue/parametercode.h"

#include <QRegularExpression>

#include <algorithm>

namespace {

using Verdict = ValueCheck::Verdict;

constexpr double greatestMagnitude = 2147483647.0; // the lowest 32-bit number is left out
constexpr int limitDigits = 6;

int fractionLength(const QString &text)
{
    const int point = text.indexOf(QLatin1Char('.'));
    return point < 0 ? 0 : text.size() - point - 1;
}

bool isHexadecimalRow(const QStringList &rowValues)
{
    return rowValues.value(HexValue) == QLatin1String("H") || rowValues.value(MaxValue).contains(hexPrefix);
}

bool isHexDigit(QChar c)
{
    return (c >= QLatin1Char('0') && c <= QLatin1Char('9')) ||
           (c >= QLatin1Char('a') && c <= QLatin1Char('f')) ||
           (c >= QLatin1Char('A') && c <= QLatin1Char('F'));
}

// Fewer than four digits are well formed too: the table fills them up.
bool isHexText(const QString &text)
{
    return text.size() <= hexTextLength && text.startsWith(hexPrefix, Qt::CaseInsensitive) &&
           std::all_of(text.begin() + hexPrefix.size(), text.end(), isHexDigit);
}

// The end is that of the text itself, so that a pasted line break behind the number is refused, and the
// digits are those of ASCII, since others would be read as 0.
bool isDecimalText(const QString &text)
{
    static const QRegularExpression number(QStringLiteral("\\A[+-]?[0-9]+(\\.[0-9]+)?\\z"));
    return number.match(text).hasMatch();
}

QString withoutHexPrefix(QString text)
{
    return text.remove(hexPrefix, Qt::CaseInsensitive);
}

ValueCheck checkHexadecimal(const QStringList &rowValues, const QString &text)
{
    if (!isHexText(text))
        return {Verdict::Malformed, {}};
    const int value = withoutHexPrefix(text).toInt(nullptr, 16);
    // The user is told the limit without its prefix.
    const QString max = withoutHexPrefix(rowValues.value(MaxValue));
    const QString min = withoutHexPrefix(rowValues.value(MinValue));
    if (max.toInt(nullptr, 16) < value)
        return {Verdict::AboveMaximum, max};
    if (min.toInt(nullptr, 16) > value)
        return {Verdict::BelowMinimum, min};
    return {};
}

ValueCheck checkDecimal(const QStringList &rowValues, const QString &text)
{
    const QString min = rowValues.value(MinValue);
    // None where neither limit has a point: an integer row refuses "1.0" too.
    const int allowed = fractionLength(hasPoint(min) ? min : rowValues.value(MaxValue));
    if (!isDecimalText(text) || fractionLength(text) > allowed)
        return {Verdict::Malformed, {}};
    return {};
}

// For a hexadecimal row the text and both limits read as 0 here, and it passes.
ValueCheck checkRange(const QStringList &rowValues, const QString &text)
{
    const double value = text.toDouble();
    if (value > greatestMagnitude || value < -greatestMagnitude)
        return {Verdict::Malformed, {}};
    const double maxValue = rowValues.value(MaxValue).toDouble();
    const double minValue = rowValues.value(MinValue).toDouble();
    if (value > maxValue)
        return {Verdict::AboveMaximum, QString::number(maxValue, 'g', limitDigits)};
    if (value < minValue)
        return {Verdict::BelowMinimum, QString::number(minValue, 'g', limitDigits)};
    return {};
}

} // namespace

ValueCheck checkValue(const QStringList &rowValues, const QString &text)
{
    const ValueCheck form =
        isHexadecimalRow(rowValues) ? checkHexadecimal(rowValues, text) : checkDecimal(rowValues, text);
    return form.verdict == Verdict::Accepted ? checkRange(rowValues, text) : form;
}

QString displayText(const QStringList &rowValues, const QString &text, bool isWriteRAM)
{
    QString shown = text;
    // Deliberate: only what stays in the working memory loses its sign; what is stored keeps it.
    if (isWriteRAM &&
        (shown.startsWith(QLatin1Char('+')) || (shown.startsWith(QLatin1Char('-')) && shown.toDouble() == 0)))
        shown.remove(0, 1);
    if ((hasPoint(rowValues.value(MinValue)) || hasPoint(rowValues.value(MaxValue))) && !hasPoint(shown))
        shown += QLatin1String(".0");
    return shown;
}
