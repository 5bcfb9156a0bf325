// SPDX-License-Identifier: GPL-3.0-or-later
#include "trialrun/cellinput.h"

#include <QRegularExpression>

bool isWellFormedCell(const QString &rangeText, const QString &cellText)
{
    // \d without the option for Unicode properties stands for the ten ASCII digits only.
    static const QRegularExpression number(
        QRegularExpression::anchoredPattern(QStringLiteral("[\\+\\-]?[\\d]+(\\.[\\d]+)?")));
    if (!number.match(cellText).hasMatch())
        return false;
    const int point = cellText.indexOf(QLatin1Char('.'));
    if (point < 0)
        return true;
    return rangeText.contains(QLatin1Char('.')) && cellText.size() - point - 1 <= 1;
}

CellRange cellRange(const QString &rangeText)
{
    return {rangeText.section(QLatin1Char('~'), 0, 0).toDouble(),
            rangeText.section(QLatin1Char('~'), 1, 1).toDouble()};
}
