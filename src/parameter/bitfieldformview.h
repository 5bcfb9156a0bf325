// SPDX-License-Identifier: GPL-3.0-or-later
// The widgets of one bit-field form, built from its table and the row's detail lines. Main thread; owned by
// the setting helper, which connects the combo boxes.
#pragma once

#include "parameter/bitfieldforms.h"

#include <QList>
#include <QWidget>

class NewCombox;
class QComboBox;
class QGridLayout;
class QGroupBox;
class QLabel;
class QVBoxLayout;

class BitFieldFormView : public QWidget
{
    Q_OBJECT

public:
    // Texts of the row: its detail lines, value and maximum.
    BitFieldFormView(const BitFieldForm &form, const QStringList &rowDetails, const QString &valueText,
                     const QString &maximum, QWidget *parent = nullptr);

    // In the order of the form; each named as its field.
    QList<QComboBox *> comboBoxes() const;

    // Every field is reached by clicking or the tabulator; digits typed without opening its list, and the
    // wheel, leave its choice alone.
    bool eventFilter(QObject *object, QEvent *event) override;

    // Shows the digits of a typed text, without any signal of the combo boxes.
    void showText(const QString &text);

private:
    struct Row
    {
        const BitField *field;
        NewCombox *box;
        QGroupBox *group; // the box around it with the title of its block; null where it has none of its own
    };
    struct Note
    {
        const BitFieldNote *note;
        QLabel *label;
    };

    void addField(const BitField &field);
    void addPlainDigits(const BitField &field);
    void addFreeDigits(const BitField &field);
    void addNote(const BitFieldNote &note);
    static QLabel *makeNoteLine(const QString &line);
    NewCombox *makeComboBox(const BitField &field, const QStringList &items);
    void alignCaptions();
    void showBlockOf(const Row &row);
    void updateDependents();
    int hundredsIndex() const;

    const BitFieldForm &form; // in the constant table of forms
    const QVector<DetailBlock> blocks;
    const QString maximum;
    QVBoxLayout *column = nullptr;
    QVBoxLayout *freeDigits = nullptr; // of the group box of the digits without a block; null without such
    QGridLayout *notePlace = nullptr;  // the one place of the notes that come and go; null without such
    QList<Row> rows;
    QList<Note> notes;
};
