// SPDX-License-Identifier: GPL-3.0-or-later
#include "gaintuning/gainfieldwidgets.h"

#include "gaintuning/gainfields.h"

#include <QLineEdit>
#include <QMessageBox>
#include <QPointer>
#include <QSignalBlocker>
#include <QTableWidget>

using namespace gaintuning;

GainFieldWidgets::GainFieldWidgets(QWidget *gainWindow, QTableWidget *rowTable)
    : window(gainWindow)
    , table(rowTable)
    , minimumList(minimumTexts())
    , maximumList(maximumTexts())
{
}

QTableWidgetItem *GainFieldWidgets::cell(int field) const
{
    return field < FieldInertiaRatio ? table->item(field, valueColumn) : nullptr;
}

QLineEdit *GainFieldWidgets::setting(int field) const
{
    return window->findChild<QLineEdit *>(fieldWidgetName(field));
}

QLineEdit *GainFieldWidgets::current(int field) const
{
    return window->findChild<QLineEdit *>(QLatin1String("cur") + fieldWidgetName(field).mid(3));
}

void GainFieldWidgets::show(int field, const QString &text) const
{
    if (QTableWidgetItem *const item = cell(field)) {
        item->setText(text);
        return;
    }
    setting(field)->setText(text);
    if (field != FieldCalculated)
        current(field)->setText(text);
}

void GainFieldWidgets::setEditable(int field, bool isEditable) const
{
    QLineEdit *const edit = setting(field);
    QPalette palette = edit->palette();
    palette.setColor(QPalette::Text, isEditable ? Qt::black : Qt::gray);
    edit->setPalette(palette);
    edit->setEnabled(isEditable);
}

bool GainFieldWidgets::check(int field) const
{
    QTableWidgetItem *const item = cell(field);
    const QString typed = item ? item->text() : setting(field)->text();
    const auto text = normalForm(field, typed, minimumList.at(field), maximumList.at(field));
    if (!text) {
        const QPointer<QWidget> self(window);
        const QString range = rangeMessage(minimumList.at(field), maximumList.at(field));
        QMessageBox::warning(window->window(), fieldTitle(field), range);
        if (!self)
            return false;
    }
    if (item) {
        // The cell's new text is no edit of the user.
        const QSignalBlocker blocker(table);
        item->setText(text.value_or(QString()));
    } else {
        setting(field)->setText(text.value_or(QString()));
    }
    return text.has_value();
}

bool GainFieldWidgets::checkAll(int first, int last) const
{
    for (int field = first; field <= last; ++field) {
        if (!check(field))
            return false;
    }
    return true;
}
