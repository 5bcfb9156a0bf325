// SPDX-License-Identifier: GPL-3.0-or-later
#include "demo-app/textfit.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QStyle>
#include <QStyleOptionButton>
#include <QStyleOptionComboBox>
#include <QStyleOptionFrame>
#include <QTabBar>
#include <QTableView>
#include <QToolButton>

namespace {

// A line is a little higher than its letters.
constexpr int heightTolerance = 2; // pixels

int widthOf(const QWidget *widget, const QString &text)
{
    return widget->fontMetrics().size(Qt::TextShowMnemonic, text).width();
}

// Of one line its ink: the lines of fonts with pictures are far higher than these.
int heightOf(const QFontMetrics &metrics, const QString &text)
{
    return text.contains(QLatin1Char('\n')) ? metrics.size(0, text).height()
                                            : metrics.tightBoundingRect(text).height();
}

// The picture before a text, and the gap behind it.
int iconRoom(const QIcon &icon, const QSize &size)
{
    constexpr int gap = 4;
    return icon.isNull() ? 0 : size.width() + gap;
}

bool isToldInFull(const QString &text, const QString &toolTip)
{
    return !toolTip.isEmpty() && (toolTip.contains(text) || text.contains(QChar(0x2026)));
}

QStringList cutIn(const QLabel *label)
{
    const QString text = label->text();
    if (text.isEmpty() || isToldInFull(text, label->toolTip()))
        return {};
    const QSize needed = label->wordWrap()
                             ? QSize(label->minimumSizeHint().width(), label->heightForWidth(label->width()))
                             : label->sizeHint();
    const bool fits =
        needed.width() <= label->width() && needed.height() <= label->height() + heightTolerance;
    return fits ? QStringList() : QStringList(text);
}

QRect contentsOf(const QAbstractButton *button)
{
    QStyleOptionButton option;
    option.initFrom(button);
    option.text = button->text();
    option.icon = button->icon();
    option.iconSize = button->iconSize();
    if (qobject_cast<const QCheckBox *>(button))
        return button->style()->subElementRect(QStyle::SE_CheckBoxContents, &option, button);
    if (qobject_cast<const QRadioButton *>(button))
        return button->style()->subElementRect(QStyle::SE_RadioButtonContents, &option, button);
    // The text may run into the margin, as a flat picture button's does, but not into the frame.
    const int frame = button->style()->pixelMetric(QStyle::PM_DefaultFrameWidth, &option, button);
    return button->rect().adjusted(frame, 0, -frame, 0);
}

QStringList cutIn(const QAbstractButton *button)
{
    const QString text = button->text();
    if (text.isEmpty())
        return {};
    const QFontMetrics metrics = button->fontMetrics();
    bool fits = metrics.ascent() <= button->height();
    if (const auto *const tool = qobject_cast<const QToolButton *>(button)) {
        const bool showsText = tool->icon().isNull() || (tool->toolButtonStyle() != Qt::ToolButtonIconOnly &&
                                                         tool->arrowType() == Qt::NoArrow);
        fits = !showsText || (fits && tool->sizeHint().width() <= tool->width());
    } else {
        const int needed = widthOf(button, text) + iconRoom(button->icon(), button->iconSize());
        fits = fits && needed <= contentsOf(button).width();
    }
    return fits ? QStringList() : QStringList(text);
}

QStringList cutIn(const QGroupBox *box)
{
    constexpr int frame = 8; // of the title, on either side
    const int indicator =
        box->isCheckable() ? box->style()->pixelMetric(QStyle::PM_IndicatorWidth, nullptr, box) : 0;
    const bool fits =
        box->title().isEmpty() || widthOf(box, box->title()) + indicator + frame <= box->width();
    return fits ? QStringList() : QStringList(box->title());
}

QStringList cutIn(const QLineEdit *edit)
{
    constexpr int air = 2; // that the line keeps on either side
    QStyleOptionFrame option;
    option.initFrom(edit);
    option.lineWidth =
        edit->hasFrame() ? edit->style()->pixelMetric(QStyle::PM_DefaultFrameWidth, &option, edit) : 0;
    const QMargins margins = edit->textMargins();
    const int room = edit->style()->subElementRect(QStyle::SE_LineEditContents, &option, edit).width() -
                     margins.left() - margins.right() - 2 * air;
    const QString text = edit->displayText().isEmpty() ? edit->placeholderText() : edit->displayText();
    const bool fits = edit->fontMetrics().horizontalAdvance(text) <= room;
    const bool isBeingTyped = edit->hasFocus() && !edit->isReadOnly();
    return fits || isBeingTyped || isToldInFull(text, edit->toolTip()) ? QStringList() : QStringList(text);
}

QStringList cutIn(const QComboBox *box)
{
    QStyleOptionComboBox option;
    option.initFrom(box);
    option.editable = box->isEditable();
    option.frame = box->hasFrame();
    const QRect field =
        box->style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, box);
    const QString text = box->currentText();
    const int needed = box->fontMetrics().horizontalAdvance(text) +
                       iconRoom(box->itemIcon(box->currentIndex()), box->iconSize());
    // A path is as long as the user's folders are deep.
    const bool fits = box->isEditable() || QDir::isAbsolutePath(text) || needed <= field.width() ||
                      isToldInFull(text, box->toolTip());
    return fits ? QStringList() : QStringList(text);
}

QStringList cutIn(const QTabBar *bar)
{
    constexpr int air = 4;
    QStringList cut;
    for (int i = 0; i < bar->count(); ++i) {
        const int needed = widthOf(bar, bar->tabText(i)) + iconRoom(bar->tabIcon(i), bar->iconSize());
        if (needed + 2 * air > bar->tabRect(i).width())
            cut.append(bar->tabText(i));
    }
    return cut;
}

QStringList cutIn(const QHeaderView *header)
{
    const bool isRow = header->orientation() == Qt::Horizontal;
    QStringList cut;
    for (int section = 0; header->model() && section < header->count(); ++section) {
        const auto data = [&](int role) {
            return header->model()->headerData(section, header->orientation(), role).toString();
        };
        const QString text = data(Qt::DisplayRole);
        if (header->isSectionHidden(section) || text.isEmpty() || isToldInFull(text, data(Qt::ToolTipRole)))
            continue;
        const int room = isRow ? header->sectionSize(section) : header->width();
        QFont font = header->font();
        const QVariant own = header->model()->headerData(section, header->orientation(), Qt::FontRole);
        if (own.isValid())
            font = qvariant_cast<QFont>(own);
        const QFontMetrics metrics(font);
        const int height = isRow ? header->height() : header->sectionSize(section);
        if (metrics.size(0, text).width() > room || heightOf(metrics, text) > height + heightTolerance)
            cut.append(text);
    }
    return cut;
}

// The room that a text needs in a cell, as the delegate would draw it at this width.
bool fitsCell(const QAbstractItemView *view, const QModelIndex &index, const QSize &cell, bool wraps)
{
    const QString text = index.data(Qt::DisplayRole).toString();
    const QVariant own = index.data(Qt::FontRole);
    const QFontMetrics metrics(own.isValid() ? qvariant_cast<QFont>(own) : view->font());
    const int margin = view->style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, view) + 1;
    const int icon = iconRoom(qvariant_cast<QIcon>(index.data(Qt::DecorationRole)), view->iconSize());
    const int room = cell.width() - 2 * margin - icon;
    if (metrics.size(0, text).width() <= room)
        return true;
    const QRect wrapped = metrics.boundingRect(QRect(0, 0, room, 0), Qt::TextWordWrap, text);
    return wraps && wrapped.width() <= room && wrapped.height() <= cell.height() + heightTolerance;
}

QStringList cutIn(const QTableView *table)
{
    QStringList cut;
    const QAbstractItemModel *const model = table->model();
    for (int row = 0; model && row < model->rowCount(); ++row) {
        for (int column = 0; column < model->columnCount(); ++column) {
            const QModelIndex index = model->index(row, column);
            const QString text = index.data(Qt::DisplayRole).toString();
            if (text.isEmpty() || table->indexWidget(index) || table->isRowHidden(row) ||
                table->isColumnHidden(column) || isToldInFull(text, index.data(Qt::ToolTipRole).toString()))
                continue;
            // Of a cell across several columns or rows the whole. What is scrolled out of sight may be fitted
            // when it comes.
            const QRect cell = table->visualRect(index);
            if (cell.intersects(table->viewport()->rect()) &&
                !fitsCell(table, index, cell.size(), table->wordWrap()))
                cut.append(text);
        }
    }
    return cut;
}

QStringList cutIn(const QListView *list)
{
    QStringList cut;
    const QAbstractItemModel *const model = list->model();
    const bool scrolls = list->horizontalScrollBarPolicy() != Qt::ScrollBarAlwaysOff;
    for (int row = 0; model && !scrolls && row < model->rowCount(); ++row) {
        const QModelIndex index = model->index(row, list->modelColumn());
        const QString text = index.data(Qt::DisplayRole).toString();
        const QSize room(list->viewport()->width(), list->visualRect(index).height());
        if (!text.isEmpty() && !list->indexWidget(index) && !list->isRowHidden(row) &&
            !isToldInFull(text, index.data(Qt::ToolTipRole).toString()) &&
            !fitsCell(list, index, room, list->wordWrap()))
            cut.append(text);
    }
    return cut;
}

template <typename Widget, typename... Others>
QStringList cutInOneOf(const QWidget *widget)
{
    if (const auto *const known = qobject_cast<const Widget *>(widget))
        return cutIn(known);
    if constexpr (sizeof...(Others) > 0)
        return cutInOneOf<Others...>(widget);
    return {};
}

} // namespace

QStringList cutTexts(const QWidget *widget)
{
    return cutInOneOf<QLabel, QAbstractButton, QGroupBox, QLineEdit, QComboBox, QTabBar, QHeaderView,
                      QTableView, QListView>(widget);
}

QString shownText(const QWidget *widget)
{
    if (const auto *const label = qobject_cast<const QLabel *>(widget))
        return label->text();
    if (const auto *const button = qobject_cast<const QAbstractButton *>(widget))
        return button->text();
    if (const auto *const box = qobject_cast<const QGroupBox *>(widget))
        return box->title();
    if (const auto *const edit = qobject_cast<const QLineEdit *>(widget))
        return edit->displayText();
    if (const auto *const box = qobject_cast<const QComboBox *>(widget))
        return box->currentText();
    return QString();
}
