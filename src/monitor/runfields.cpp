// SPDX-License-Identifier: GPL-3.0-or-later
#include "monitor/runfields.h"

#include "link/replies.h"

#include <QtMath>

#include <limits>

namespace {

constexpr int generalDigits = 6;
constexpr int highestPlace = 3;

bool isInTenths(int index)
{
    return index == 3 || index == 6 || index == 8 || index == 9;
}

bool isCutToInteger(int index)
{
    return index == 0 || index == 7;
}

// Beyond 32 bits, the nearest number.
int toInteger(double number)
{
    return int(
        qBound(double(std::numeric_limits<int>::min()), number, double(std::numeric_limits<int>::max())));
}

} // namespace

std::optional<int> lineEditNumber(int index, const QString &text)
{
    bool isNumber = false;
    if (!isInTenths(index) && !isCutToInteger(index)) {
        const int number = text.toInt(&isNumber);
        return isNumber ? std::optional<int>(number) : std::nullopt;
    }
    double number = text.toDouble(&isNumber);
    if (!isNumber || !qIsFinite(number))
        return std::nullopt;
    if (isInTenths(index)) {
        number *= 10;
        // Deliberate: only what is above zero is rounded.
        if (number > 0)
            number += 0.5;
    }
    return toInteger(number);
}

int digitOf(const QString &text, int place)
{
    bool isNumber = false;
    int number = text.toInt(&isNumber);
    if (!isNumber)
        return -1;
    for (int i = 0; i < place; ++i)
        number /= 10;
    return place == highestPlace ? number : number % 10;
}

QString runText(RunValue kind, const QString &hex)
{
    if (hex.isEmpty())
        return QString();
    const QByteArray bytes = QByteArray::fromHex(hex.toLatin1());
    const quint32 number = unsignedNumber(bytes);
    switch (kind) {
    case RunValue::General:
        return QString::number(double(qint32(number)), 'g', generalDigits);
    case RunValue::SignedPair:
        return QString::number(qint32(number));
    case RunValue::PairTenths:
        return QString::number(qint32(number) * 0.1, 'f', 1);
    case RunValue::SignedWord:
        return QString::number(double(qint16(number)), 'f', 0);
    case RunValue::UnsignedWord:
        return QString::number(number);
    case RunValue::WordTenths:
        return QString::number(number * 0.1, 'f', 1);
    }
    return QString();
}
