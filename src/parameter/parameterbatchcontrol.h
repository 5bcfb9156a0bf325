// SPDX-License-Identifier: GPL-3.0-or-later
// What the tools of the batch window do: its list between the pages, the files and the drive. It makes and
// owns the window. Main thread; owned by ParameterEditor.
#pragma once

#include "parameter/parameterpages.h"

#include <QMetaObject>

#include <memory>

class ParameterBatch;
class ParameterTransfer;

class ParameterBatchControl
{
public:
    ParameterBatchControl(ParameterPages editorPages, ParameterTransfer *parameterTransfer);
    ~ParameterBatchControl();
    Q_DISABLE_COPY_MOVE(ParameterBatchControl)

    ParameterBatch *window() const { return batch.get(); }

    void openFile();
    void saveFile();
    void readAll();
    void writeTicked();
    void newRow();
    void deleteRow();
    void tickAll(bool ticked);
    // Turns the table's editing on for a code or a value and off for the rest, and listens to its next
    // change.
    void beginEditing(int column);
    // Fills a row from the page that holds its code, and listens no longer.
    void takeChange(int row, int column);
    // Shows the reply of a batch read that has so many codes left, the one answered included.
    void showReply(int readsLeft, const QByteArray &bytes);

private:
    void addTools();
    bool isWritten(int row) const;

    ParameterPages pages;
    ParameterTransfer *const transfer;
    std::unique_ptr<ParameterBatch> batch;
    QMetaObject::Connection valueChange;
};
