// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/parametercode.h"

#include "catalogue/doubleaddress.h"
#include "catalogue/parametergroups.h"
#include "link/framecodec.h"

#include <QRegularExpression>

#include <cmath>
#include <limits>

namespace {

constexpr int registersPerGroup = 100;
constexpr int shortCodeLength = 6;

const QLatin1String zeroOffsetUnit("6.03mv"); // its point is no scale

bool isHundredths(const QString &unit, const QString &min, const QString &max)
{
    return unit.contains(QLatin1String("0.01")) || min.contains(QLatin1String(".00")) ||
           max.contains(QLatin1String(".00"));
}

// Fraction digits that a reply of this row is shown with.
int fractionDigits(const QString &unit, const QString &min, const QString &max)
{
    if (unit == zeroOffsetUnit || !(hasPoint(min) || hasPoint(max) || hasPoint(unit)))
        return 0;
    if (isHundredths(unit, min, max))
        return 2;
    return unit.contains(QLatin1String("0.001")) ? 3 : 1;
}

int encodeFactor(const QString &code, const QString &unit, const QString &min, const QString &max)
{
    if (unit.contains(QLatin1String("0.1")) && code != QLatin1String("Pn-638"))
        return 10;
    if (isHundredths(unit, min, max))
        return 100;
    return unit.contains(QLatin1String("0.001")) ? 1000 : 10;
}

qint32 truncated(double value)
{
    if (!std::isfinite(value))
        return 0;
    return static_cast<qint32>(
        qBound<double>(std::numeric_limits<qint32>::min(), value, std::numeric_limits<qint32>::max()));
}

} // namespace

bool hasPoint(const QString &text)
{
    return text.contains(QLatin1Char('.'));
}

int numberInGroup(const QString &code)
{
    return code.midRef(4, 2).toInt();
}

int registerOf(const QString &code)
{
    return code.midRef(3, 1).toInt(nullptr, 16) * registersPerGroup + numberInGroup(code);
}

ParameterPlace placeOfOffset(int offset)
{
    ParameterPlace place;
    if (offset >= 0 && offset < parameterGroupCount * registersPerGroup) {
        place.group = offset / registersPerGroup;
        place.number = offset % registersPerGroup;
    }
    return place;
}

QString shortCode(const QString &code)
{
    return code.left(shortCodeLength);
}

QString catalogueSpelling(const QString &code)
{
    static const QRegularExpression form(QStringLiteral("^.{3}([0-9A-Fa-f])([0-9]{2}|[0-9]$)"));
    const QString trimmed = code.trimmed();
    const QRegularExpressionMatch match = form.match(trimmed);
    if (!match.hasMatch())
        return trimmed;
    return QLatin1String("Pn-") + match.captured(1).toUpper() +
           match.captured(2).rightJustified(2, QLatin1Char('0'));
}

QString filledUpHex(QString text)
{
    if (text.contains(hexPrefix, Qt::CaseInsensitive)) {
        while (text.size() < hexTextLength)
            text.insert(2, QLatin1Char('0'));
    }
    return text;
}

QByteArray encodeValue(const QString &code, const QString &hexMark, const QString &valueText,
                       const QString &unit, const QString &min, const QString &max)
{
    const int width = isDouble(code) ? 4 : 2;
    if (valueText.contains(hexPrefix) || hexMark == QLatin1String("H")) {
        QString digits = valueText;
        digits.remove(hexPrefix);
        return fitBytes(QByteArray::fromHex(digits.toLatin1()), width);
    }

    double value = valueText.toDouble();
    const bool scaled =
        (hasPoint(unit) || hasPoint(max) || hasPoint(min)) && !unit.contains(QLatin1String("6.03"));
    if (scaled) {
        value *= encodeFactor(code, unit, min, max);
        // Deliberate: only what is above zero is rounded.
        if (value > 0)
            value += 0.5;
    }
    const QString digits = QString::number(truncated(value), 16);
    return fitBytes(QByteArray::fromHex(digits.toLatin1()), width);
}

QString hexText(const QByteArray &bytes)
{
    return QString::fromLatin1(bytes.toHex());
}

QString decodeValue(const QString &replyHex, const QString &hexMark, const QString &unit, const QString &min,
                    const QString &max)
{
    const QString text = replyHex.toUpper();
    if (hexMark == QLatin1String("H") || max.contains(hexPrefix))
        return hexPrefix + text;

    const quint64 raw = text.toULongLong(nullptr, 16);
    // A row that begins at -300 is the one kind of signed 16-bit value; all others show the raw number.
    const qint32 number =
        min.toInt() == -300 ? static_cast<qint16>(raw & 0xFFFF) : static_cast<qint32>(raw & 0xFFFFFFFF);
    switch (fractionDigits(unit, min, max)) {
    case 1:
        return QString::number(number * 0.1, 'f', 1);
    case 2:
        return QString::number(number * 0.01, 'f', 2);
    case 3:
        return QString::number(number * 0.001, 'f', 3);
    default:
        return QString::number(number);
    }
}
