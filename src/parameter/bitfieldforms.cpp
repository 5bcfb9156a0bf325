// SPDX-License-Identifier: GPL-3.0-or-later
#include "parameter/bitfieldforms.h"

#include <QRegularExpression>

#include <algorithm>

namespace {

constexpr int codePrefixLength = 4; // "Pn-" and the group

BitField digits(const char *name, FieldPart part, int block, int base)
{
    BitField field;
    field.name = name;
    field.part = part;
    field.block = block;
    field.base = base;
    return field;
}

BitField unit(const char *name, int block, int base = 10)
{
    return digits(name, FieldPart::Unit, block, base);
}

BitField ten(const char *name, int block, int base = 10)
{
    return digits(name, FieldPart::Ten, block, base);
}

BitField hundreds(const char *name, int block, int base = 10)
{
    return digits(name, FieldPart::Hundreds, block, base);
}

BitField thousands(const char *name, int block, int base = 10)
{
    return digits(name, FieldPart::Thousands, block, base);
}

BitField unitAndTen(const char *name, int block)
{
    return digits(name, FieldPart::UnitAndTen, block, 10);
}

BitField hundredsAndThousands(const char *name, int block)
{
    return digits(name, FieldPart::HundredsAndThousands, block, 10);
}

BitField choice(const char *name, FieldEffect effect)
{
    BitField field = digits(name, FieldPart::WholeValue, 0, 10);
    field.effect = effect;
    return field;
}

// Deliberate: the only option of the panel display's thousands digit has no effect.
BitField panelDisplayThousands()
{
    BitField field = thousands("Pn-003Thousands", 3);
    field.effect = FieldEffect::WriteNothing;
    return field;
}

// Deliberate: writes one place behind the last digit, so the text grows and is refused afterwards.
BitField analogInputTen()
{
    BitField field = ten("Pn-250_1", 1);
    field.writePlace = 6;
    return field;
}

// The filter of the pulse inputs has its own times for the low-speed and for the high-speed terminals.
BitField pulseWidthThousands()
{
    BitField field = thousands("Pn-300_3", 3);
    field.alternateBlock = 4;
    field.widgetName = "Pn-300_31";
    return field;
}

BitFieldForm form(const char *code, std::vector<BitField> fields, std::vector<BitFieldNote> notes = {})
{
    return {code, code, std::move(fields), std::move(notes), false};
}

BitFieldForm run(const char *firstCode, const char *lastCode, std::vector<BitField> fields)
{
    return {firstCode, lastCode, std::move(fields), {}, false};
}

// The two lower digits are a function number, which is typed.
BitFieldForm terminals(const char *firstCode, const char *lastCode, const char *hundredsName,
                       const char *thousandsName)
{
    return {firstCode,
            lastCode,
            {hundreds(hundredsName, 3), thousands(thousandsName, 4, 16)},
            {{"", 1, 0, false, {}}, {"", 2, 0, false, {}}},
            true};
}

std::vector<BitFieldForm> digitForms()
{
    return {
        form("Pn-003",
             {unit("Pn-003uint", noBlock), ten("Pn-003ten", noBlock), hundreds("Pn-003hundreds", 2),
              panelDisplayThousands()},
             {{"", 1, 2, true, {}}}),
        form("Pn-004", {unit("Pn-004uint", 0), ten("Pn-004ten", 1), hundreds("Pn-004hundreds", 2),
                        thousands("Pn-004Thousands", 3)}),
        terminals("Pn-211", "Pn-226", "Pn-211-Pn-226_2", "Pn-211-Pn-226_3"),
        terminals("Pn-231", "Pn-246", "Pn-231-Pn-246_2", "Pn-231-Pn-246_3"),
        form("Pn-250", {unit("Pn-250_0", 0), analogInputTen()}),
        run("Pn-260", "Pn-270",
            {unitAndTen("Pn-260-Pn-270_01", 0), hundreds("Pn-260-Pn-270_2", 1),
             thousands("Pn-260-Pn-270_3", 2)}),
        run("Pn-271", "Pn-286",
            {unitAndTen("Pn-271-Pn-286_01", 0), hundredsAndThousands("Pn-271-Pn-286_23", 1)}),
        run("Pn-287", "Pn-290", {unitAndTen("Pn-287-Pn-290_01", 0)}),
        run("Pn-291", "Pn-294",
            {unit("Pn-291-Pn-294_0", 0), ten("Pn-291-Pn-294_1", 1), hundreds("Pn-291-Pn-294_2", 2),
             thousands("Pn-291-Pn-294_3", 3)}),
        run("Pn-295", "Pn-296",
            {unitAndTen("Pn-295-Pn-296_01", 0), hundreds("Pn-295-Pn-296_2", 1),
             thousands("Pn-295-Pn-296_3", 2)}),
        form("Pn-300",
             {unit("Pn-300_0", 0), ten("Pn-300_1", 1), hundreds("Pn-300_2", 2), pulseWidthThousands()}),
        form("Pn-318", {unit("Pn-318_0", 0), ten("Pn-318_1", 1)}),
        form("Pn-324", {unit("Pn-324_0", 0), ten("Pn-324_1", 1), hundreds("Pn-324_2", 2)}),
        form("Pn-336",
             {unit("Pn-336_0", 0), ten("Pn-336_1", 1), hundreds("Pn-336_2", 2), thousands("Pn-336_3", 3)}),
        form("Pn-651", {unit("Pn-651_0", 0, 16), ten("Pn-651_1", 1, 16)},
             {{"Pn-651_2", 2, 2, false, {2}}, {"Pn-651_3", 3, 2, false, {3, 4, 5, 6, 7, 10}}}),
        form("Pn-700", {unit("Pn-700_0", 0, 16), ten("Pn-700_1", 1, 16), hundreds("Pn-700_2", 2, 16),
                        thousands("Pn-700_3", 3, 16)}),
        form("Pn-800", {unit("Pn-800_0", 0), ten("Pn-800_1", 1), hundreds("Pn-800_2", 2)}),
        form("Pn-901", {unit("Pn-901_0", 0), ten("Pn-901_1", 1)}),
        form("Pn-910", {unit("Pn-910_0", 0)}),
        form("Pn-911", {unit("Pn-911_0", 0, 16), ten("Pn-911_1", 1, 16), hundreds("Pn-911_2", 2, 16),
                        thousands("Pn-911_3", 3, 16)}),
        form("Pn-912", {unit("Pn-912_0", 0), ten("Pn-912_1", 1)}),
        form("Pn-914", {unit("Pn-914_0", 0, 16), ten("Pn-914_1", 1, 16), hundreds("Pn-914_2", 2, 16),
                        thousands("Pn-914_3", 3, 16)}),
        form("Pn-918", {unit("Pn-918_0", 0), ten("Pn-918_1", 1)}),
        form("Pn-950", {unit("Pn-950_0", 0), ten("Pn-950_1", 1)}),
        form("Pn-951", {unit("Pn-951_0", 0), ten("Pn-951_1", 1)}),
        form("Pn-952", {unit("Pn-952_0", 0, 16), ten("Pn-952_1", 1, 16), hundreds("Pn-952_2", 2, 16),
                        thousands("Pn-952_3", 3, 16)}),
        {"Pn-050", "Pn-050", {}, {}, true},
        {"Pn-953", "Pn-953", {}, {}, true},
    };
}

// Choices that become the whole text.
constexpr const char *textChoices[] = {"Pn-011", "Pn-012", "Pn-016", "Pn-100", "Pn-101", "Pn-103", "Pn-104",
                                       "Pn-105", "Pn-106", "Pn-639", "Pn-662", "Pn-719", "Pn-814", "Pn-913"};

// Deliberate: choices that replace the first character and leave what is behind it.
constexpr const char *characterChoices[] = {
    "Pn-320", "Pn-321", "Pn-326", "Pn-342", "Pn-400", "Pn-408", "Pn-416", "Pn-500", "Pn-504",
    "Pn-600", "Pn-603", "Pn-604", "Pn-636", "Pn-675", "Pn-686", "Pn-694", "Pn-801", "Pn-803",
    "Pn-804", "Pn-806", "Pn-810", "Pn-817", "Pn-904", "Pn-A00", "Pn-A02", "Pn-B00"};

// One digit of four outputs or inputs each; the letters A to F and the other digits are typed.
constexpr const char *auxiliarySwitches[] = {"Pn-200", "Pn-201", "Pn-202", "Pn-203", "Pn-204", "Pn-205"};

std::vector<BitFieldForm> makeForms()
{
    std::vector<BitFieldForm> forms = digitForms();
    for (const char *code : auxiliarySwitches) {
        forms.push_back(form(code, {unit(code, 0)}));
        forms.back().isEditWritable = true;
    }
    for (const char *code : textChoices)
        forms.push_back(form(code, {choice(code, FieldEffect::WriteText)}));
    for (const char *code : characterChoices)
        forms.push_back(form(code, {choice(code, FieldEffect::WriteFirstCharacter)}));
    forms.push_back(form("Pn-509", {choice("Pn-509", FieldEffect::WriteFirstCharacter)},
                         {{"Pn-509_0", 1, 1, false, {1}}, {"Pn-509_1", 2, 1, false, {2}}}));
    forms.push_back(form("Pn-B02", {choice("Pn-B02", FieldEffect::WriteFirstCharacter)},
                         {{"Pn-B02_0", 1, 1, false, {1}}}));
    return forms;
}

const std::vector<BitFieldForm> &allForms()
{
    static const std::vector<BitFieldForm> forms = makeForms();
    return forms;
}

// The number of a code within its group, two decimal digits, or -1 for anything else.
int numberInGroup(const QString &code)
{
    const auto digitAt = [&code](int place) { return code.at(place).unicode() - '0'; };
    const int tens = digitAt(codePrefixLength);
    const int units = digitAt(codePrefixLength + 1);
    const bool areDigits = tens >= 0 && tens <= 9 && units >= 0 && units <= 9;
    return areDigits ? 10 * tens + units : -1;
}

bool isInRun(const QString &code, const char *firstCode, const char *lastCode)
{
    const QString first = QLatin1String(firstCode);
    if (code.size() != first.size() || code.leftRef(codePrefixLength) != first.leftRef(codePrefixLength))
        return false;
    const int number = numberInGroup(code);
    return number >= numberInGroup(first) && number <= numberInGroup(QLatin1String(lastCode));
}

// The number of an option line in front of its colon, or -1 for any other line.
int optionNumber(const QString &line)
{
    static const QRegularExpression option(QStringLiteral("\\A([0-9A-F]{1,2}):"));
    const QRegularExpressionMatch match = option.match(line);
    return match.hasMatch() ? match.capturedRef(1).toInt(nullptr, 16) : -1;
}

} // namespace

QVector<DetailBlock> detailBlocks(const QStringList &rowDetails)
{
    QVector<DetailBlock> blocks;
    for (const QString &line : rowDetails) {
        const int number = optionNumber(line);
        if (number < 0) {
            blocks.append({line, {}});
            continue;
        }
        if (blocks.isEmpty() || (number == 0 && !blocks.last().options.isEmpty()))
            blocks.append(DetailBlock());
        blocks.last().options.append(line);
    }
    return blocks;
}

const BitFieldForm *bitFieldForm(const QString &code)
{
    const auto &forms = allForms();
    const auto found = std::find_if(forms.begin(), forms.end(), [&code](const BitFieldForm &candidate) {
        return isInRun(code, candidate.firstCode, candidate.lastCode);
    });
    return found == forms.end() ? nullptr : &*found;
}

const BitField *bitField(const QString &name)
{
    for (const BitFieldForm &candidate : allForms()) {
        for (const BitField &field : candidate.fields) {
            if (name == QLatin1String(field.name))
                return &field;
        }
    }
    return nullptr;
}

bool hasContent(const BitFieldForm &form, const QVector<DetailBlock> &blocks)
{
    if (blocks.isEmpty() || form.isNoteForm())
        return !blocks.isEmpty();
    return std::any_of(form.fields.begin(), form.fields.end(), [&blocks](const BitField &field) {
        return field.block == noBlock || !blocks.value(field.block).options.isEmpty();
    });
}
