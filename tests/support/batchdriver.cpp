// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/batchdriver.h"

#include "parameter/parameterbatch.h"
#include "support/batchtexts.h"
#include "support/editortexts.h"
#include "support/filedialoganswers.h"
#include "support/modalanswers.h"

#include <QAction>
#include <QApplication>
#include <QLineEdit>
#include <QTableWidget>
#include <QTest>
#include <QToolBar>

namespace {

constexpr int transferLimit = 60000; // ms
constexpr int besideTheBox = 20;     // pixels, from the middle of a cell with a check box

} // namespace

ParameterBatch *BatchDriver::find()
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget *window : windows) {
        if (auto *const batch = qobject_cast<ParameterBatch *>(window))
            return batch;
    }
    return nullptr;
}

QTableWidget *BatchDriver::table() const
{
    return batchWindow->table();
}

QToolBar *BatchDriver::toolBar() const
{
    return batchWindow->findChild<QToolBar *>();
}

QList<QAction *> BatchDriver::tools() const
{
    return toolBar()->actions();
}

void BatchDriver::trigger(Tool tool) const
{
    tools().at(tool)->trigger();
}

void BatchDriver::click(Tool tool) const
{
    QTest::mouseClick(toolBar()->widgetForAction(tools().at(tool)), Qt::LeftButton);
}

int BatchDriver::rowCount() const
{
    return table()->rowCount();
}

QString BatchDriver::text(int row, int column) const
{
    return table()->item(row, column)->text();
}

QStringList BatchDriver::texts(int row, int from, int to) const
{
    QStringList list;
    for (int column = from; column <= to; ++column)
        list.append(text(row, column));
    return list;
}

QList<QStringList> BatchDriver::allTexts() const
{
    QList<QStringList> list;
    for (int row = 0; row < rowCount(); ++row)
        list.append(texts(row));
    return list;
}

QStringList BatchDriver::heads() const
{
    QStringList list;
    for (int column = 0; column < table()->columnCount(); ++column)
        list.append(table()->horizontalHeaderItem(column)->text());
    return list;
}

bool BatchDriver::isTicked(int row) const
{
    return table()->item(row, Code)->checkState() == Qt::Checked;
}

void BatchDriver::tick(int row, bool ticked) const
{
    table()->item(row, Code)->setCheckState(ticked ? Qt::Checked : Qt::Unchecked);
}

void BatchDriver::beginEditing(int row, int column) const
{
    emit table()->cellDoubleClicked(row, column);
}

void BatchDriver::setCode(int row, const QString &code) const
{
    beginEditing(row, Code);
    setText(row, Code, code);
}

void BatchDriver::setText(int row, int column, const QString &text) const
{
    table()->item(row, column)->setText(text);
}

void BatchDriver::addRow(const QString &code, const QString &value) const
{
    trigger(NewRowTool);
    const int row = rowCount() - 1;
    setCode(row, code);
    if (!value.isEmpty())
        setText(row, Value, value);
}

void BatchDriver::doubleClick(int row, int column) const
{
    QPoint place = table()->visualRect(table()->model()->index(row, column)).center();
    if (column == Code)
        place.rx() += besideTheBox;
    QTest::mouseClick(table()->viewport(), Qt::LeftButton, Qt::NoModifier, place);
    QTest::mouseDClick(table()->viewport(), Qt::LeftButton, Qt::NoModifier, place);
}

QLineEdit *BatchDriver::openEditor() const
{
    return table()->viewport()->findChild<QLineEdit *>();
}

bool BatchDriver::type(int row, int column, const QString &text) const
{
    doubleClick(row, column);
    QLineEdit *const editor = openEditor();
    if (!editor)
        return false;
    editor->selectAll();
    QTest::keyClicks(editor, text);
    QTest::keyClick(editor, Qt::Key_Return);
    return QTest::qWaitFor([this] { return !openEditor(); });
}

bool BatchDriver::transfer(Tool tool, const QString &done) const
{
    ModalAnswers boxes;
    boxes.expect(done);
    trigger(tool);
    return QTest::qWaitFor([&boxes] { return boxes.isDone(); }, transferLimit);
}

bool BatchDriver::read() const
{
    return transfer(ReadTool, editortext::readingDone);
}

bool BatchDriver::write() const
{
    return transfer(WriteTool, editortext::writingDone);
}

void BatchDriver::openFile(const QString &name) const
{
    FileDialogAnswers dialogs;
    dialogs.expect(batchtext::openDialog, name);
    trigger(OpenTool);
}

void BatchDriver::saveFile(const QString &name) const
{
    FileDialogAnswers dialogs;
    dialogs.expect(batchtext::saveDialog, name);
    trigger(SaveTool);
}
