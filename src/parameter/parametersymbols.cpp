// SPDX-License-Identifier: GPL-3.0-or-later
#include "parameter/parametersymbols.h"

#include <QCoreApplication>

namespace {

QFont markFont()
{
    QFont font(QStringLiteral("Helvetica"), 17);
    font.setHintingPreference(QFont::PreferFullHinting);
    return font;
}

QString legendText(const char *text)
{
    return QCoreApplication::translate("ParameterEditor", text);
}

} // namespace

QString readOnlyMark()
{
    return QStringLiteral("★");
}

std::array<ParameterSymbol, parameterSymbolCount> parameterSymbols()
{
    const QFont mark = markFont();
    const QFont letter(QStringLiteral("Tahoma"), 15, QFont::Bold);
    return {{
        {readOnlyMark(), 0, QColor(0, 128, 128), mark,
         legendText(QT_TRANSLATE_NOOP("ParameterEditor", "Read-only"))},
        {QStringLiteral("■"), 3, QColor(0, 0, 255), mark,
         legendText(QT_TRANSLATE_NOOP("ParameterEditor", "Set When Servo OFF"))},
        // Deliberate: "Afert" is so spelt.
        {QStringLiteral("●"), 5, QColor(255, 0, 0), mark,
         legendText(QT_TRANSLATE_NOOP("ParameterEditor", "Valid Afert Re-power on"))},
        {QStringLiteral("▲"), 4, QColor(0, 0, 0), mark,
         legendText(QT_TRANSLATE_NOOP("ParameterEditor", "Volatile Parameter"))},
        {QStringLiteral("H"), 1, QColor(188, 0, 243), letter,
         legendText(QT_TRANSLATE_NOOP("ParameterEditor", "Hex data,modified by bit"))},
    }};
}
