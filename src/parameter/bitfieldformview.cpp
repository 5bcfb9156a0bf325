// SPDX-License-Identifier: GPL-3.0-or-later
#include "parameter/bitfieldformview.h"

#include "parameter/bitfieldrules.h"
#include "widgets/newcombox.h"

#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include <algorithm>

namespace {

QString captionOf(FieldPart part)
{
    switch (part) {
    case FieldPart::Unit:
        return BitFieldFormView::tr("Uint:"); // so spelt
    case FieldPart::Ten:
        return BitFieldFormView::tr("Ten:");
    case FieldPart::Hundreds:
        return BitFieldFormView::tr("Hundreds:");
    case FieldPart::Thousands:
        return BitFieldFormView::tr("Thousands:");
    case FieldPart::UnitAndTen:
        return BitFieldFormView::tr("Ten, Uint:"); // so spelt, as the single digit
    case FieldPart::HundredsAndThousands:
        return BitFieldFormView::tr("Thousands, Hundreds:");
    case FieldPart::WholeValue:
        break;
    }
    return BitFieldFormView::tr("Option:");
}

// A key that would look for an option that begins with it. The space bar opens the list.
bool isSearchKey(const QKeyEvent *event)
{
    const QString text = event->text();
    return event->key() != Qt::Key_Space && !text.isEmpty() && text.at(0).isPrint();
}

} // namespace

BitFieldFormView::BitFieldFormView(const BitFieldForm &formOfCode, const QStringList &rowDetails,
                                   const QString &valueText, const QString &maximumText, QWidget *parent)
    : QWidget(parent)
    , form(formOfCode)
    , blocks(detailBlocks(rowDetails))
    , maximum(maximumText)
    , column(new QVBoxLayout(this))
{
    if (form.isNoteForm()) {
        for (const QString &line : rowDetails)
            column->addWidget(makeNoteLine(line));
    }
    const int fieldCount = int(form.fields.size());
    for (int i = 0; i <= fieldCount; ++i) {
        for (const BitFieldNote &note : form.notes) {
            if (note.fieldsBefore == i)
                addNote(note);
        }
        if (i < fieldCount)
            addField(form.fields[std::size_t(i)]);
    }
    column->addStretch();
    alignCaptions();

    showText(valueText);
    for (const Row &row : qAsConst(rows))
        connect(row.box->comboBox, qOverload<int>(&QComboBox::currentIndexChanged), this,
                &BitFieldFormView::updateDependents);
}

QList<QComboBox *> BitFieldFormView::comboBoxes() const
{
    QList<QComboBox *> boxes;
    for (const Row &row : rows)
        boxes.append(row.box->comboBox);
    return boxes;
}

NewCombox *BitFieldFormView::makeComboBox(const BitField &field, const QStringList &items)
{
    NewCombox *const box =
        items.isEmpty() ? new NewCombox(captionOf(field.part)) : new NewCombox(captionOf(field.part), items);
    box->setObjectName(QLatin1String(field.widgetName));
    box->comboBox->setObjectName(QLatin1String(field.name));
    box->comboBox->installEventFilter(this);
    return box;
}

void BitFieldFormView::addField(const BitField &field)
{
    if (field.block == noBlock) {
        addFreeDigits(field);
        return;
    }
    const DetailBlock block = blocks.value(field.block);
    if (block.options.isEmpty()) {
        addPlainDigits(field);
        return;
    }
    auto *group = new QGroupBox(block.title);
    auto *layout = new QVBoxLayout(group);
    NewCombox *const box = makeComboBox(field, block.options);
    layout->addWidget(box);
    column->addWidget(group);
    rows.append({&field, box, group});
}

// A catalogue may lack the lines of a digit, and the value can't be typed: without them its choices have no
// words, but it still can be set.
void BitFieldFormView::addPlainDigits(const BitField &field)
{
    const QStringList digits = plainDigits(field, maximum);
    if (digits.isEmpty())
        return;
    NewCombox *const box = makeComboBox(field, digits);
    box->setToolTip(tr("This catalogue has no texts for the digit."));
    box->comboBox->setToolTip(box->toolTip());
    column->addWidget(box);
    rows.append({&field, box, nullptr});
}

void BitFieldFormView::addFreeDigits(const BitField &field)
{
    if (!freeDigits) {
        auto *group = new QGroupBox(tr("Normal monitoring parameters"));
        freeDigits = new QVBoxLayout(group);
        column->addWidget(group);
    }
    NewCombox *const box = makeComboBox(field, {});
    freeDigits->addWidget(box);
    rows.append({&field, box, nullptr});
}

void BitFieldFormView::addNote(const BitFieldNote &note)
{
    if (note.block >= blocks.size())
        return;
    QLabel *const label = makeNoteLine(blocks.at(note.block).title);
    label->setObjectName(QLatin1String(note.name));
    notes.append({&note, label});
    if (note.shownAt.empty()) {
        column->addWidget(label);
        if (note.isRed) {
            // A label with a style sheet of its own does not take its parent's font.
            label->setFont(font());
            label->setStyleSheet(QStringLiteral("color:red"));
        }
        return;
    }
    // At most one of them shows at a time. Their room is kept, so that nothing moves when one comes.
    if (!notePlace) {
        notePlace = new QGridLayout;
        column->addLayout(notePlace);
    }
    QSizePolicy policy = label->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    label->setSizePolicy(policy);
    label->setAlignment(Qt::AlignTop);
    notePlace->addWidget(label, 0, 0);
}

QLabel *BitFieldFormView::makeNoteLine(const QString &line)
{
    auto *label = new QLabel(line);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    return label;
}

void BitFieldFormView::alignCaptions()
{
    int width = 0;
    for (const Row &row : qAsConst(rows))
        width = std::max(width, row.box->label->sizeHint().width());
    for (const Row &row : qAsConst(rows))
        row.box->label->setMinimumWidth(width);
}

void BitFieldFormView::showText(const QString &text)
{
    for (const Row &row : qAsConst(rows)) {
        QComboBox *const comboBox = row.box->comboBox;
        const QSignalBlocker blocker(comboBox);
        comboBox->setCurrentIndex(shownIndex(*row.field, text, comboBox->count()));
    }
    updateDependents();
}

// The value can't be typed: who types digits means the value, and would choose options unseen. An open list
// takes keys and wheel by itself, they do not come here.
bool BitFieldFormView::eventFilter(QObject *object, QEvent *event)
{
    const bool isKept = event->type() == QEvent::Wheel ||
                        (event->type() == QEvent::KeyPress && isSearchKey(static_cast<QKeyEvent *>(event)));
    if (!isKept)
        return QWidget::eventFilter(object, event);
    event->ignore(); // what is around may scroll
    return true;
}

void BitFieldFormView::updateDependents()
{
    for (const Row &row : qAsConst(rows)) {
        if (row.field->alternateBlock != noBlock)
            showBlockOf(row);
    }
    const int firstIndex = rows.isEmpty() ? 0 : rows.first().box->comboBox->currentIndex();
    for (const Note &note : qAsConst(notes)) {
        const std::vector<int> &shownAt = note.note->shownAt;
        const bool isShown =
            shownAt.empty() || std::find(shownAt.begin(), shownAt.end(), firstIndex) != shownAt.end();
        note.label->setVisible(isShown);
    }
}

int BitFieldFormView::hundredsIndex() const
{
    const auto found = std::find_if(rows.begin(), rows.end(),
                                    [](const Row &row) { return row.field->part == FieldPart::Hundreds; });
    return found == rows.end() ? 0 : found->box->comboBox->currentIndex();
}

// The digit stays, and with it the value text: only what it stands for is another.
void BitFieldFormView::showBlockOf(const Row &row)
{
    const DetailBlock block =
        blocks.value(hundredsIndex() == 0 ? row.field->block : row.field->alternateBlock);
    if (block.options.isEmpty() || !row.group || row.group->title() == block.title)
        return;
    QComboBox *const comboBox = row.box->comboBox;
    const QSignalBlocker blocker(comboBox);
    const int index = comboBox->currentIndex();
    row.group->setTitle(block.title);
    row.box->label->setText(block.title);
    comboBox->clear();
    comboBox->addItems(block.options);
    comboBox->setCurrentIndex(index < block.options.size() ? index : 0);
}
