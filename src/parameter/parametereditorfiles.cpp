// SPDX-License-Identifier: GPL-3.0-or-later
// The parameter editor's files: the dialogs, and the pages as the file formats see them.
#include "parameter/parametereditor.h"

#include "files/wholefile.h"
#include "parameter/parameterfiles.h"
#include "parameter/parametertable.h"
#include "widgets/messages.h"

#include <QFileDialog>

namespace {

QByteArray scpFileOf(const QList<ParameterTable *> &pages)
{
    QList<ScpPage> contents;
    for (const ParameterTable *page : pages) {
        ScpPage content{page->code(0), {}};
        for (int row = 0; row < page->rowCount(); ++row)
            content.values.append(page->text(row, ParameterTable::ValueColumn));
        contents.append(content);
    }
    return scpFile(contents);
}

QByteArray csvExportOf(const QList<ParameterTable *> &pages)
{
    QList<CsvPage> contents;
    for (const ParameterTable *page : pages) {
        CsvPage content;
        for (int column = 0; column < page->columnCount(); ++column)
            content.heads.append(page->horizontalHeaderItem(column)->text());
        for (int row = 0; row < page->rowCount(); ++row) {
            QStringList texts{page->code(row)};
            for (int column = 0; column < page->columnCount(); ++column)
                texts.append(page->text(row, ParameterTable::Column(column)));
            content.rows.append(texts);
        }
        contents.append(content);
    }
    return csvExport(contents);
}

} // namespace

void ParameterEditor::saveParameters()
{
    const QString name = QFileDialog::getSaveFileName(this, tr("Save scp file"), QString(),
                                                      tr("Parameter File(*.scp);;CSV File(*.csv)"));
    if (name.isEmpty())
        return;
    // The name alone decides the format, and one that names none leaves an empty file.
    QByteArray contents;
    if (name.endsWith(QLatin1String(".scp"), Qt::CaseInsensitive))
        contents = scpFileOf(pages);
    else if (name.endsWith(QLatin1String(".csv"), Qt::CaseInsensitive))
        contents = csvExportOf(pages);
    if (!writeWholeFile(name, contents))
        showMessage(tr("Save file failed!"));
}

void ParameterEditor::openExistParameter()
{
    const QString name =
        QFileDialog::getOpenFileName(this, tr("open scp file"), QString(), tr("Parameter File(*.scp)"));
    if (name.isEmpty())
        return;
    const auto contents = readWholeFile(name);
    if (!contents) {
        showMessage(tr("Open file failed!"));
        return;
    }
    QList<int> rowCounts;
    for (const ParameterTable *page : qAsConst(pages))
        rowCounts.append(page->rowCount());
    const QList<ScpValue> values = readScpFile(*contents, rowCounts);
    for (const ScpValue &value : values)
        pages.at(value.page)->item(value.row, ParameterTable::ValueColumn)->setText(value.text);
}
