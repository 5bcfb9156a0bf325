// SPDX-License-Identifier: GPL-3.0-or-later
#include "parameter/parameterfiles.h"

namespace {

const QLatin1String lineEnd("\r\n");
const QLatin1String headMark("pn"); // in every code and in no value

QByteArray scpLine(const QString &text)
{
    return text.toLocal8Bit().toBase64() + lineEnd.data();
}

// The page that a head names, or -1: a damaged head must not send its values to another page.
int pageOfHead(const QString &head)
{
    bool ok = false;
    const int page = head.midRef(3, 1).toInt(&ok, 16);
    return ok ? page : -1;
}

} // namespace

QByteArray scpFile(const QList<ScpPage> &pages)
{
    QByteArray file;
    for (const ScpPage &page : pages) {
        if (page.values.isEmpty())
            continue;
        file += scpLine(page.firstCode);
        for (const QString &value : page.values)
            file += scpLine(value);
    }
    return file;
}

QList<ScpValue> readScpFile(const QByteArray &file, const QList<int> &rowCounts)
{
    QList<ScpValue> values;
    int page = -1;
    int row = 0;
    for (int start = 0; start < file.size();) {
        int end = file.indexOf('\n', start);
        if (end < 0)
            end = file.size();
        // The decoder passes over what is no Base64, the carriage return among it.
        const QByteArray line = QByteArray::fromBase64(file.mid(start, end - start));
        start = end + 1;

        const QString text = QString::fromLocal8Bit(line);
        if (text.contains(headMark, Qt::CaseInsensitive)) {
            page = pageOfHead(text);
            row = 0;
            continue;
        }
        if (row < rowCounts.value(page))
            values.append({page, row, text});
        ++row;
    }
    return values;
}

QByteArray csvLine(const QStringList &fields)
{
    QString line;
    for (const QString &field : fields)
        line += field + QLatin1Char(',');
    return line.toLocal8Bit() + '\n';
}

QByteArray csvExport(const QList<CsvPage> &pages)
{
    QByteArray file;
    for (const CsvPage &page : pages) {
        if (!file.isEmpty())
            file += lineEnd.data();
        file += csvLine(QStringList(QString()) + page.heads);
        for (const QStringList &row : page.rows)
            file += csvLine(row);
    }
    return file;
}
