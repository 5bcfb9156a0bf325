// SPDX-License-Identifier: GPL-3.0-or-later
// The forms of the parameters that are codes: which combo boxes a parameter gets, which of its detail lines
// they offer, and which characters of the value text they show and write. Constant data; any thread.
#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

#include <vector>

// A title and the options below it, out of a row's detail lines. A note is a title without options.
struct DetailBlock
{
    QString title; // empty for options that follow other options
    QStringList options;
};

// Cuts detail lines into blocks. An option line begins with its number, one or two hexadecimal digits, and a
// colon. A block begins at any other line, and at an option 0 behind other options.
QVector<DetailBlock> detailBlocks(const QStringList &rowDetails);

enum class FieldPart { Unit, Ten, Hundreds, Thousands, UnitAndTen, HundredsAndThousands, WholeValue };

// What a choice does to the value text.
enum class FieldEffect {
    WriteDigits,         // replaces the digits of its part
    WriteText,           // becomes the whole text
    WriteFirstCharacter, // replaces the first character
    WriteNothing
};

constexpr int noBlock = -1;
constexpr int placeOfPart = -1;

// One combo box.
struct BitField
{
    const char *name = "";            // object name of the combo box
    FieldPart part = FieldPart::Unit; // the digits that it shows
    int block = noBlock;              // its title and options; noBlock: the digits 0 to 9
    int base = 10;                    // of the digits, read and written
    FieldEffect effect = FieldEffect::WriteDigits;
    int writePlace = placeOfPart; // first character written, where it isn't that shown
    int alternateBlock = noBlock; // taken instead while the hundreds digit of the form is not 0
    const char *widgetName = "";  // object name of caption and combo box together
};

// A detail line shown as text.
struct BitFieldNote
{
    const char *name = ""; // object name of the label
    int block = 0;         // its line is the title of this block
    int fieldsBefore = 0;  // combo boxes that stand above it
    bool isRed = false;
    std::vector<int> shownAt; // indices of the form's first combo box; empty: always
};

struct BitFieldForm
{
    const char *firstCode = ""; // the form is that of a run of codes of one group
    const char *lastCode = "";
    std::vector<BitField> fields; // empty: every detail line is shown as a note
    std::vector<BitFieldNote> notes;
    bool isEditWritable = false; // the value can be typed as well

    bool isNoteForm() const { return fields.empty(); }
};

// The form of a six-character code, or a null pointer where it has none.
const BitFieldForm *bitFieldForm(const QString &code);

// The field whose combo box has this object name, or a null pointer.
const BitField *bitField(const QString &name);

// False where the detail lines give the form nothing to show.
bool hasContent(const BitFieldForm &form, const QVector<DetailBlock> &blocks);
