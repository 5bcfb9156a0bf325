// SPDX-License-Identifier: GPL-3.0-or-later
// The parameter editor's part in the batch window: what its tools do, and how it shares the request engine.
#include "parameter/parametereditor.h"

#include "catalogue/parametercode.h"
#include "files/wholefile.h"
#include "parameter/parameterbatch.h"
#include "parameter/parametertable.h"
#include "widgets/messages.h"

#include <QAction>
#include <QFileDialog>
#include <QPointer>
#include <QRegularExpression>
#include <QTableWidget>

namespace {

// The row of a page that holds the code, or -1. Where several rows have its number, as a mistyped code of the
// catalogue makes them, the one that is spelt like it goes first.
int rowOfCode(const ParameterTable *page, const QString &code, int number)
{
    int found = -1;
    for (int row = 0; row < page->rowCount(); ++row) {
        const QString rowCode = page->code(row);
        if (rowCode.midRef(4, 2).toInt() != number)
            continue;
        if (rowCode == code)
            return row;
        if (found < 0)
            found = row;
    }
    return found;
}

struct PageRow
{
    const ParameterTable *page = nullptr; // null: no page holds the code
    int row = -1;
};

PageRow pageRowOf(const QList<ParameterTable *> &pages, const QString &code)
{
    // A text that the catalogue could not spell so names no parameter.
    static const QRegularExpression form(QStringLiteral("^Pn-[0-9A-F][0-9]{2}$"));
    if (!form.match(code).hasMatch())
        return {};
    const ParameterPlace place = placeOfOffset(registerOf(code));
    if (place.group < 0)
        return {};
    const ParameterTable *const page = pages.at(place.group);
    const int row = rowOfCode(page, code, place.number);
    return row < 0 ? PageRow() : PageRow{page, row};
}

} // namespace

void ParameterEditor::buildBatchWindow()
{
    struct Tool
    {
        const char *icon;
        QString text;
        void (ParameterEditor::*slot)();
    };
    const QList<Tool> files{
        {"open file.png", tr("open parameter file"), &ParameterEditor::openCsvSlot},
        {"save.png", tr("save parameter file"), &ParameterEditor::saveCsvSlot},
    };
    const QList<Tool> others{
        {"downarrow.png", tr("read parameter"), &ParameterEditor::readParaCsvSlot},
        {"uparrow.png", tr("write parameter file"), &ParameterEditor::writeCsvSlot},
        {"add.png", tr("newRow"), &ParameterEditor::newRowSlot},
        {"sub.png", tr("deleteRow"), &ParameterEditor::deleteRowSlot},
        {"selectAll.png", tr("selectAll"), &ParameterEditor::selectAllSlot},
        {"deselectAll.png", tr("deselectAll"), &ParameterEditor::deselectAllSlot},
    };

    batch = std::make_unique<ParameterBatch>();
    const auto addTools = [this](const QList<Tool> &tools) {
        for (const Tool &tool : tools) {
            QAction *const action = batch->addTool(QString::fromLatin1(tool.icon), tool.text);
            connect(action, &QAction::triggered, this, tool.slot);
        }
    };
    addTools(files);
    batch->addToolGap();
    addTools(others);
    connect(batch->table(), &QTableWidget::cellDoubleClicked, this, &ParameterEditor::Csv_DoubleClickedSlot);
}

void ParameterEditor::editParaSlot()
{
    batch->bringToFront();
}

void ParameterEditor::newRowSlot()
{
    Csv_ValueChangedSlot(batch->appendRow(), ParameterBatch::CodeColumn);
}

void ParameterEditor::deleteRowSlot()
{
    batch->removeLastRow();
}

void ParameterEditor::selectAllSlot()
{
    batch->setAllTicked(true);
}

void ParameterEditor::deselectAllSlot()
{
    batch->setAllTicked(false);
}

void ParameterEditor::Csv_DoubleClickedSlot(int, int col)
{
    batch->setEditing(col == ParameterBatch::CodeColumn || col == ParameterBatch::ValueColumn);
    disconnect(batch->table(), &QTableWidget::cellChanged, this, &ParameterEditor::Csv_ValueChangedSlot);
    connect(batch->table(), &QTableWidget::cellChanged, this, &ParameterEditor::Csv_ValueChangedSlot);
}

void ParameterEditor::Csv_ValueChangedSlot(int row, int col)
{
    disconnect(batch->table(), &QTableWidget::cellChanged, this, &ParameterEditor::Csv_ValueChangedSlot);
    if (col != ParameterBatch::CodeColumn)
        return;

    const QString code = catalogueSpelling(batch->text(row, ParameterBatch::CodeColumn));
    const PageRow found = pageRowOf(pages, code);
    QStringList cells;
    if (found.page) {
        batch->spellCode(row, code);
        for (int column = 0; column < ParameterTable::ColumnCount; ++column)
            cells.append(found.page->text(found.row, ParameterTable::Column(column)));
    }
    batch->fillRow(row, cells);
}

void ParameterEditor::readParaCsvSlot()
{
    transfer->readBatch(batch->codes());
}

void ParameterEditor::writeCsvSlot()
{
    QList<QStringList> records;
    const QList<QStringList> listed = batch->writeRecords();
    for (const QStringList &record : listed) {
        // A list from a file may have lost its marks, or names reserved rows in the other language.
        const PageRow found = pageRowOf(pages, record.first());
        if (!found.page || !found.page->isLeftOutOfWrites(found.row))
            records.append(record);
    }
    transfer->writeBatch(records);
}

void ParameterEditor::saveCsvSlot()
{
    const QString name =
        QFileDialog::getSaveFileName(batch.get(), tr("Save csv file"), QString(), tr("CSV File(*.csv)"));
    if (name.isEmpty())
        return;
    if (!writeWholeFile(name, batchFile(batch->heads(), batch->rows()))) {
        showMessage(tr("Save file failed!"));
        return;
    }
    const QPointer<ParameterBatch> window(batch.get());
    showMessage(tr("Save file completed"));
    if (window)
        window->bringToFront();
}

void ParameterEditor::openCsvSlot()
{
    const QString name = QFileDialog::getOpenFileName(batch.get(), tr("open csv file"), QString(),
                                                      tr("Parameter File(*.csv)"));
    if (name.isEmpty())
        return;
    const auto contents = readWholeFile(name);
    if (!contents) {
        showMessage(tr("Open file failed!"));
        return;
    }
    batch->setRows(readBatchFile(*contents));
    batch->bringToFront();
}
