// SPDX-License-Identifier: GPL-3.0-or-later
#include "parameter/parameterbatchfile.h"

#include "catalogue/parametercode.h"
#include "parameter/parameterfiles.h"

namespace {

const QLatin1String codeMark("pn"); // in every row's line and not in the line of heads
constexpr int tickPlace = 7;        // of "1" in "Pn-304-1"

BatchRow rowOfLine(const QString &line)
{
    QStringList fields = line.split(QLatin1Char(','));
    // Each field has a comma behind it, so what follows the last comma is not a field.
    fields.removeLast();

    const QString first = fields.value(0);
    BatchRow row;
    row.ticked = first.midRef(tickPlace, 1) == QLatin1String("1");
    row.cells = fields.mid(1, batchColumnCount - 1);
    row.cells.prepend(shortCode(first));
    return row;
}

} // namespace

QByteArray batchFile(const QStringList &heads, const QList<BatchRow> &rows)
{
    QByteArray file = csvLine(heads);
    for (const BatchRow &row : rows) {
        QStringList fields = row.cells;
        fields.first() += row.ticked ? QLatin1String("-1") : QLatin1String("-0");
        file += csvLine(fields);
    }
    return file;
}

std::optional<QList<BatchRow>> readBatchFile(const QByteArray &file)
{
    QList<BatchRow> rows;
    bool hasHeads = false;
    for (int start = 0; start < file.size();) {
        int end = file.indexOf('\n', start);
        if (end < 0)
            end = file.size();
        const QString line = QString::fromLocal8Bit(file.mid(start, end - start));
        start = end + 1;
        if (!line.contains(codeMark, Qt::CaseInsensitive)) {
            hasHeads = hasHeads || line.count(QLatin1Char(',')) == batchColumnCount;
            continue;
        }
        if (!line.contains(QLatin1Char(',')))
            continue;
        if (rows.size() == batchRowLimit)
            return std::nullopt;
        rows.append(rowOfLine(line));
    }
    // A list that was saved without rows holds its heads.
    if (rows.isEmpty() && !hasHeads)
        return std::nullopt;
    return rows;
}
