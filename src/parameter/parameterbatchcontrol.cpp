// SPDX-License-Identifier: GPL-3.0-or-later
#include "parameter/parameterbatchcontrol.h"

#include "catalogue/parametercode.h"
#include "files/wholefile.h"
#include "parameter/parameterbatch.h"
#include "parameter/parametereditor.h"
#include "parameter/parameterrow.h"
#include "parameter/parametertransfer.h"
#include "widgets/messages.h"

#include <QAction>
#include <QFileDialog>
#include <QPointer>
#include <QTableWidget>

#include <functional>

ParameterBatchControl::ParameterBatchControl(ParameterPages editorPages, ParameterTransfer *parameterTransfer)
    : pages(std::move(editorPages))
    , transfer(parameterTransfer)
    , batch(std::make_unique<ParameterBatch>())
{
    addTools();
    QObject::connect(batch->table(), &QTableWidget::cellDoubleClicked, batch.get(),
                     [this](int, int column) { beginEditing(column); });
}

ParameterBatchControl::~ParameterBatchControl() = default;

void ParameterBatchControl::addTools()
{
    struct Tool
    {
        const char *icon;
        QString text;
        std::function<void()> run;
    };
    const QList<Tool> files{
        {"open file.png", ParameterEditor::tr("open parameter file"), [this] { openFile(); }},
        {"save.png", ParameterEditor::tr("save parameter file"), [this] { saveFile(); }},
    };
    const QList<Tool> others{
        {"downarrow.png", ParameterEditor::tr("read parameter"), [this] { readAll(); }},
        {"uparrow.png", ParameterEditor::tr("write parameter file"), [this] { writeTicked(); }},
        {"add.png", ParameterEditor::tr("newRow"), [this] { newRow(); }},
        {"sub.png", ParameterEditor::tr("deleteRow"), [this] { deleteRow(); }},
        {"selectAll.png", ParameterEditor::tr("selectAll"), [this] { tickAll(true); }},
        {"deselectAll.png", ParameterEditor::tr("deselectAll"), [this] { tickAll(false); }},
    };
    const auto add = [this](const QList<Tool> &tools) {
        for (const Tool &tool : tools) {
            QAction *const action = batch->addTool(QString::fromLatin1(tool.icon), tool.text);
            QObject::connect(action, &QAction::triggered, batch.get(), tool.run);
        }
    };
    add(files);
    batch->addToolGap();
    add(others);
}

void ParameterBatchControl::newRow()
{
    takeChange(batch->appendRow(), ParameterBatch::CodeColumn);
}

void ParameterBatchControl::deleteRow()
{
    batch->removeLastRow();
}

void ParameterBatchControl::tickAll(bool ticked)
{
    batch->setAllTicked(ticked);
}

void ParameterBatchControl::beginEditing(int column)
{
    batch->setEditing(column == ParameterBatch::CodeColumn || column == ParameterBatch::ValueColumn);
    QObject::disconnect(valueChange);
    valueChange = QObject::connect(batch->table(), &QTableWidget::cellChanged, batch.get(),
                                   [this](int row, int changed) { takeChange(row, changed); });
}

void ParameterBatchControl::takeChange(int row, int column)
{
    QObject::disconnect(valueChange);
    if (column != ParameterBatch::CodeColumn)
        return;
    const QString typed = batch->text(row, ParameterBatch::CodeColumn).trimmed();
    const QString code = catalogueSpelling(typed);
    const ParameterPages::Place place = pages.find(code);
    batch->spellCode(row, place.isValid() ? code : typed);
    batch->fillRow(row, pages.rowTexts(place));
}

void ParameterBatchControl::readAll()
{
    transfer->readBatch(batch->codes());
}

void ParameterBatchControl::showReply(int readsLeft, const QByteArray &bytes)
{
    // What an earlier read has left in the queue comes before the first row and is shown nowhere.
    batch->showReply(batch->table()->rowCount() - readsLeft, bytes);
}

// A list from a file may have lost its marks, or names reserved rows in the other language, so the page is
// asked too.
bool ParameterBatchControl::isWritten(int row) const
{
    const QStringList texts = batch->rowTexts(row);
    if (!batch->isTicked(row) || isLeftOutOfWrites(texts))
        return false;
    const QString code = shortCode(texts.value(CodeValue));
    const ParameterPages::Place place = pages.find(code);
    if (batch->isUnknown(row) || !place.isValid()) {
        // Deliberate: a code of no page is written as it stands. One that names nothing, but whose characters
        // make the register of a parameter, would overwrite that one.
        return !pages.holdRegisterOf(code);
    }
    return !isLeftOutOfWrites(pages.rowTexts(place));
}

void ParameterBatchControl::writeTicked()
{
    QList<QStringList> records;
    for (int row = 0; row < batch->table()->rowCount(); ++row) {
        if (!isWritten(row))
            continue;
        QStringList record = writeRecord(batch->rowTexts(row));
        record.first() = shortCode(record.first());
        records.append(record);
    }
    transfer->writeBatch(records);
}

void ParameterBatchControl::saveFile()
{
    const QString name = QFileDialog::getSaveFileName(batch.get(), ParameterEditor::tr("Save csv file"),
                                                      QString(), ParameterEditor::tr("CSV File(*.csv)"));
    if (name.isEmpty())
        return;
    if (!writeWholeFile(name, batchFile(batch->heads(), batch->rows()))) {
        showMessage(ParameterEditor::tr("Save file failed!"));
        return;
    }
    const QPointer<ParameterBatch> alive(batch.get());
    showMessage(ParameterEditor::tr("Save file completed"));
    if (alive)
        alive->bringToFront();
}

void ParameterBatchControl::openFile()
{
    const QString name =
        QFileDialog::getOpenFileName(batch.get(), ParameterEditor::tr("open csv file"), QString(),
                                     ParameterEditor::tr("Parameter File(*.csv)"));
    if (name.isEmpty())
        return;
    const auto contents = readWholeFile(name);
    const auto rows = contents ? readBatchFile(*contents) : std::nullopt;
    if (!rows) {
        showMessage(ParameterEditor::tr("Open file failed!"));
        return;
    }
    batch->setRows(*rows);
    batch->bringToFront();
}
