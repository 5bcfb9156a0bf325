// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/scopecatalogue.h"

#include <QXmlStreamReader>

#include <algorithm>

namespace {

int columnOfElement(const QStringRef &element)
{
    if (element == QLatin1String("code"))
        return scopeitem::code;
    if (element == QLatin1String("parameter_description"))
        return scopeitem::description;
    if (element == QLatin1String("min"))
        return scopeitem::min;
    if (element == QLatin1String("max"))
        return scopeitem::max;
    if (element == QLatin1String("unit"))
        return scopeitem::unit;
    return -1;
}

// The elements inside one "parameter" element, up to its end.
QStringList readRow(QXmlStreamReader *xml)
{
    QStringList row;
    for (int column = 0; column < scopeitem::columns; ++column)
        row.append(QString());
    row[scopeitem::name] = xml->attributes().value(QLatin1String("name")).toString();
    while (xml->readNextStartElement()) {
        const int column = columnOfElement(xml->name());
        const QString text = xml->readElementText(QXmlStreamReader::IncludeChildElements);
        if (column >= 0)
            row[column] = text;
    }
    return row;
}

} // namespace

ScopeItems readScopeItems(const QByteArray &xml)
{
    ScopeItems items;
    QXmlStreamReader reader(xml);
    while (!reader.atEnd()) {
        if (reader.readNext() != QXmlStreamReader::StartElement ||
            reader.name() != QLatin1String("parameter"))
            continue;
        const QStringList row = readRow(&reader);
        if (!reader.hasError())
            items.append(row);
    }
    return items;
}

QString scopeItemText(const QStringList &item)
{
    const QString &unit = item.at(scopeitem::unit);
    const QString &name = item.at(scopeitem::name);
    return unit.isEmpty() ? name : name + QLatin1Char('[') + unit + QLatin1Char(']');
}

int scopeItemNumber(const ScopeItems &items, const QString &code)
{
    for (int row = items.size() - 1; row >= 0; --row) {
        if (items.at(row).contains(code))
            return row;
    }
    return -1;
}

QStringList scopeItemOfCode(const ScopeItems &items, const QString &code)
{
    const auto found = std::find_if(items.begin(), items.end(), [&code](const QStringList &item) {
        return item.at(scopeitem::code) == code;
    });
    return found == items.end() ? QStringList() : *found;
}

QString scopeRecordHeader(const ScopeItems &items, const QString &code)
{
    QString header;
    for (const QStringList &item : items) {
        if (item.at(scopeitem::code) == code)
            header = code + item.at(scopeitem::name);
    }
    return header;
}
