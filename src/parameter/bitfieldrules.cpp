// SPDX-License-Identifier: GPL-3.0-or-later
#include "parameter/bitfieldrules.h"

#include "catalogue/parametercode.h"

namespace {

struct DigitPlace
{
    int first; // character of the value text
    int width; // characters
};

// The digits stand at fixed places, so a text typed with fewer of them is filled up before it is looked at.
DigitPlace placeOf(FieldPart part)
{
    switch (part) {
    case FieldPart::Unit:
        return {5, 1};
    case FieldPart::Ten:
        return {4, 1};
    case FieldPart::Hundreds:
        return {3, 1};
    case FieldPart::Thousands:
        return {2, 1};
    case FieldPart::UnitAndTen:
        return {4, 2};
    case FieldPart::HundredsAndThousands:
        return {2, 2};
    case FieldPart::WholeValue:
        break;
    }
    return {0, -1};
}

} // namespace

int shownIndex(const BitField &field, const QString &text, int optionCount)
{
    const DigitPlace place = placeOf(field.part);
    const QString shown = field.part == FieldPart::WholeValue ? text : filledUpHex(text);
    const int index = shown.mid(place.first, place.width).toInt(nullptr, field.base);
    return index > 0 && index < optionCount ? index : 0;
}

QStringList plainDigits(const BitField &field, const QString &maximum)
{
    QStringList options;
    if (field.effect != FieldEffect::WriteDigits || !maximum.startsWith(hexPrefix))
        return options;
    const DigitPlace place = placeOf(field.part);
    const int highest = filledUpHex(maximum).midRef(place.first, place.width).toInt(nullptr, field.base);
    for (int digit = 0; highest > 0 && digit <= highest; ++digit)
        options.append(QString::number(digit, field.base).toUpper());
    return options;
}

QString chosenText(const QString &text, const QString &name, int index)
{
    const BitField *const field = bitField(name);
    if (!field || field->effect == FieldEffect::WriteNothing || index < 0)
        return text;
    QString result = text.isEmpty() ? QStringLiteral("0x0000") : text;
    switch (field->effect) {
    case FieldEffect::WriteText:
        return QString::number(index);
    case FieldEffect::WriteFirstCharacter:
        return result.replace(0, 1, QString::number(index));
    case FieldEffect::WriteDigits:
    case FieldEffect::WriteNothing:
        break;
    }
    const DigitPlace place = placeOf(field->part);
    const QString digits =
        QString::number(index, field->base).toUpper().rightJustified(place.width, QLatin1Char('0'));
    const int first = field->writePlace == placeOfPart ? place.first : field->writePlace;
    return filledUpHex(result).replace(first, place.width, digits);
}
