// SPDX-License-Identifier: GPL-3.0-or-later
#include "parameter/parameterrow.h"

#include "parameter/parametersymbols.h"

#include <QCoreApplication>

QStringList writeRecord(const QStringList &rowValues)
{
    return writeRecord(rowValues, rowValues.value(TextValue));
}

QStringList writeRecord(const QStringList &rowValues, const QString &text)
{
    return {rowValues.value(CodeValue), rowValues.value(HexValue), text,
            rowValues.value(UnitValue), rowValues.value(MinValue), rowValues.value(MaxValue)};
}

QString reservedName()
{
    return QCoreApplication::translate("ParameterTable", "Reserved");
}

bool isLeftOutOfWrites(const QStringList &rowValues)
{
    return rowValues.value(ReadOnlyValue) == readOnlyMark() || rowValues.value(NameValue) == reservedName();
}
