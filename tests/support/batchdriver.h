// SPDX-License-Identifier: GPL-3.0-or-later
// Works the batch window of the parameter editor as a person would, and tells what it shows. Knows its tools
// by their places, so it works in either language. Main thread; the window outlives it.
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

class ParameterBatch;
class QAction;
class QLineEdit;
class QTableWidget;
class QToolBar;

class BatchDriver
{
public:
    // Columns of the list, by their places.
    enum Column {
        Code = 0,
        ReadOnly = 1,
        Value = 6,
        Default = 10,
        Description = 11,
        Real = 12,
        ColumnCount = 13
    };
    // Tools, by their places in the bar; 2 and 3 are the separator and the gap.
    enum Tool {
        OpenTool = 0,
        SaveTool = 1,
        ReadTool = 4,
        WriteTool = 5,
        NewRowTool = 6,
        DeleteRowTool = 7,
        TickAllTool = 8,
        UntickAllTool = 9
    };

    explicit BatchDriver(ParameterBatch *batch)
        : batchWindow(batch)
    {
    }
    // The one that there is, shown or not; null where no editor stands.
    static ParameterBatch *find();

    ParameterBatch *window() const { return batchWindow; }
    QTableWidget *table() const;
    QToolBar *toolBar() const;
    QList<QAction *> tools() const;
    void trigger(Tool tool) const;
    // By the mouse, on the tool's button.
    void click(Tool tool) const;

    int rowCount() const;
    QString text(int row, int column) const;
    // The cells of a row from one column to another, both included.
    QStringList texts(int row, int from = Code, int to = Real) const;
    QList<QStringList> allTexts() const;
    QStringList heads() const;
    bool isTicked(int row) const;
    void tick(int row, bool ticked) const;

    // Give a cell another text as the editing of it does.
    void setCode(int row, const QString &code) const;
    void setText(int row, int column, const QString &text) const;
    // A new row at the end, with this code and, unless it is empty, this value.
    void addRow(const QString &code, const QString &value = QString()) const;
    // What a double-click on a cell sets going, without the mouse.
    void beginEditing(int row, int column) const;
    void doubleClick(int row, int column) const;
    // The editor of a cell that is open, or null.
    QLineEdit *openEditor() const;
    // Types into a cell by mouse and keys; false if it does not open or does not close again.
    bool type(int row, int column, const QString &text) const;

    // Read or write the list, and answer the box that says it is done. False if none comes.
    bool read() const;
    bool write() const;
    // Answer the file dialog with this name. A box fails a test that has not announced it.
    void openFile(const QString &name) const;
    void saveFile(const QString &name) const;

private:
    bool transfer(Tool tool, const QString &done) const;

    ParameterBatch *batchWindow;
};
