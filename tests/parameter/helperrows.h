// SPDX-License-Identifier: GPL-3.0-or-later
// Rows of the shipped catalogues as the setting helper gets them from the table, and what a test looks for in
// the helper. Main thread.
#pragma once

#include "catalogue/parametercatalogue.h"
#include "parameter/parametersettinghelper.h"
#include "parameter/parametertable.h"

#include <QComboBox>
#include <QFile>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>

#include <memory>

namespace helperrows {

struct Row
{
    QStringList values; // code and table columns
    QStringList details;
};

using Helper = std::unique_ptr<ParameterSettingHelper>;

inline const QString chinese = QStringLiteral("zh_CN");
inline const QString english = QStringLiteral("en_US");

inline QList<Row> readRows(const QString &language)
{
    QList<Row> rows;
    QFile file(QStringLiteral(":/parameter/parameter/parameters_%1.xml").arg(language));
    if (!file.open(QIODevice::ReadOnly))
        return rows;
    ParameterTable table;
    readParameterCatalogue(file.readAll(),
                           [&table](int, const QStringList &values, const QStringList &details) {
                               table.rowDescriptions.append(details);
                               table.addRow(values);
                           });
    for (int row = 0; row < table.rowCount(); ++row) {
        QStringList values{table.code(row)};
        for (int column = 0; column < ParameterTable::ColumnCount; ++column)
            values.append(table.text(row, ParameterTable::Column(column)));
        rows.append({values, table.rowDescriptions.at(row)});
    }
    return rows;
}

// The rows of a language, read once.
inline const QList<Row> &rowsOf(const QString &language)
{
    static const QList<Row> chineseRows = readRows(chinese);
    static const QList<Row> englishRows = readRows(english);
    return language == chinese ? chineseRows : englishRows;
}

inline Row rowOf(const QString &language, const QString &code)
{
    for (const Row &row : rowsOf(language)) {
        if (row.values.first() == code)
            return row;
    }
    return {};
}

// The helper of a catalogue row with another value.
inline Helper open(const QString &language, const QString &code, const QString &value)
{
    Row row = rowOf(language, code);
    if (row.values.isEmpty())
        return nullptr;
    row.values[6] = value;
    return std::make_unique<ParameterSettingHelper>(row.values, row.details);
}

// The helper of a hexadecimal row with these detail lines.
inline Helper openWith(const QString &code, const QString &value, const QStringList &details)
{
    return std::make_unique<ParameterSettingHelper>(
        QStringList{code, "", "", "", "", "H", value, "", "0x0000", "0xFFFF", "0x0000", "A name"}, details);
}

inline QLineEdit *valueEdit(const Helper &helper)
{
    return helper->findChild<QLineEdit *>(QStringLiteral("valueEdit"));
}

inline QComboBox *box(const Helper &helper, const QString &name)
{
    return helper->findChild<QComboBox *>(name);
}

inline QStringList itemsOf(const QComboBox *comboBox)
{
    QStringList items;
    for (int i = 0; i < comboBox->count(); ++i)
        items.append(comboBox->itemText(i));
    return items;
}

// Title of the group box around a widget.
inline QString titleAround(const QWidget *widget)
{
    while (widget && !qobject_cast<const QGroupBox *>(widget))
        widget = widget->parentWidget();
    return widget ? static_cast<const QGroupBox *>(widget)->title() : QStringLiteral("no box");
}

inline QLabel *labelOf(const Helper &helper, const QString &text)
{
    const auto labels = helper->findChildren<QLabel *>();
    for (QLabel *label : labels) {
        if (label->text() == text)
            return label;
    }
    return nullptr;
}

} // namespace helperrows
