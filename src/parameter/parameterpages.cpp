// SPDX-License-Identifier: GPL-3.0-or-later
#include "parameter/parameterpages.h"

#include "catalogue/parametercode.h"
#include "parameter/parameterfiles.h"
#include "parameter/parameterrow.h"
#include "parameter/parametertable.h"

#include <QRegularExpression>

ParameterPages::ParameterPages(QList<ParameterTable *> pageTables)
    : tables(std::move(pageTables))
{
}

// Where several rows have the number, as a mistyped code of the catalogue makes them, the one that is spelt
// like the code goes first.
ParameterPages::Place ParameterPages::rowOfNumber(int page, int number, const QString &code) const
{
    const ParameterTable *const table = tables.value(page);
    Place found;
    for (int row = 0; table && row < table->rowCount(); ++row) {
        if (numberInGroup(table->code(row)) != number)
            continue;
        if (table->code(row) == code)
            return {page, row};
        if (!found.isValid())
            found = {page, row};
    }
    return found;
}

ParameterPages::Place ParameterPages::find(const QString &code) const
{
    static const QRegularExpression form(QStringLiteral("^Pn-[0-9A-F][0-9]{2}$"));
    if (!form.match(code).hasMatch())
        return {};
    const ParameterPlace place = placeOfOffset(registerOf(code));
    return rowOfNumber(place.group, place.number, code);
}

bool ParameterPages::holdRegisterOf(const QString &code) const
{
    const ParameterPlace place = placeOfOffset(registerOf(code));
    return rowOfNumber(place.group, place.number, code).isValid();
}

QStringList ParameterPages::heads() const
{
    QStringList texts{ParameterTable::tr("Function Code")};
    for (int column = 0; column < ParameterTable::ColumnCount; ++column)
        texts.append(tables.first()->horizontalHeaderItem(column)->text());
    return texts;
}

QStringList ParameterPages::rowTexts(const Place &place) const
{
    return place.isValid() ? tables.at(place.page)->rowTexts(place.row) : QStringList();
}

QList<QStringList> ParameterPages::rowTexts(int page) const
{
    QList<QStringList> rows;
    for (int row = 0; row < tables.at(page)->rowCount(); ++row)
        rows.append(tables.at(page)->rowTexts(row));
    return rows;
}

QList<QStringList> ParameterPages::writeRecords() const
{
    QList<QStringList> records;
    for (int page = 0; page < count(); ++page) {
        const QList<QStringList> rows = rowTexts(page);
        for (const QStringList &row : rows) {
            if (!isLeftOutOfWrites(row))
                records.append(writeRecord(row));
        }
    }
    return records;
}

void ParameterPages::resetValueColours() const
{
    for (ParameterTable *table : tables)
        table->resetValueColours();
}

QByteArray ParameterPages::scpContents() const
{
    QList<ScpPage> pages;
    for (int page = 0; page < count(); ++page) {
        ScpPage content{tables.at(page)->code(0), {}};
        const QList<QStringList> rows = rowTexts(page);
        for (const QStringList &row : rows)
            content.values.append(row.value(TextValue));
        pages.append(content);
    }
    return scpFile(pages);
}

QByteArray ParameterPages::csvContents() const
{
    QList<CsvPage> pages;
    for (int page = 0; page < count(); ++page)
        pages.append({heads().mid(1), rowTexts(page)});
    return csvExport(pages);
}

void ParameterPages::takeScpContents(const QByteArray &contents) const
{
    QList<int> rowCounts;
    for (const ParameterTable *table : tables)
        rowCounts.append(table->rowCount());
    const QList<ScpValue> values = readScpFile(contents, rowCounts);
    for (const ScpValue &value : values)
        tables.at(value.page)->item(value.row, ParameterTable::ValueColumn)->setText(value.text);
}
