// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/editordriver.h"

#include "parameter/parametereditor.h"
#include "parameter/parametersettinghelper.h"
#include "parameter/parametertable.h"
#include "shell/mainwindow.h"
#include "support/workplace.h"

#include <QListWidget>
#include <QProgressDialog>
#include <QStackedWidget>
#include <QTest>

namespace {

constexpr int catalogueLimit = 20000; // ms

} // namespace

EditorDriver::EditorDriver(const ParameterEditor *editor)
    : window(editor)
{
}

ParameterEditor *EditorDriver::open(const Workplace &workplace)
{
    Workplace::clickAction(workplace.window(), "actionParameter_Editor");
    auto *const editor = workplace.window()->findChild<ParameterEditor *>();
    return editor && EditorDriver(editor).waitForCatalogue() ? editor : nullptr;
}

ParameterEditor *EditorDriver::openConnected(Workplace *workplace, const QString &speed)
{
    workplace->connectTo(speed);
    return QTest::qWaitFor([workplace] { return workplace->isShownOnline(); }) ? open(*workplace) : nullptr;
}

bool EditorDriver::waitForCatalogue() const
{
    const QListWidget *const list = pageList();
    return QTest::qWaitFor([list] { return list->currentRow() == 1; }, catalogueLimit);
}

QListWidget *EditorDriver::pageList() const
{
    return window->findChild<QListWidget *>();
}

QStackedWidget *EditorDriver::pageStack() const
{
    return window->findChild<QStackedWidget *>();
}

int EditorDriver::pageCount() const
{
    return pageStack()->count();
}

ParameterTable *EditorDriver::page(int index) const
{
    return qobject_cast<ParameterTable *>(pageStack()->widget(index));
}

QList<ParameterTable *> EditorDriver::pages() const
{
    QList<ParameterTable *> tables;
    for (int index = 0; index < pageCount(); ++index)
        tables.append(page(index));
    return tables;
}

int EditorDriver::rowOf(const ParameterTable *page, const QString &code)
{
    for (int row = 0; row < page->rowCount(); ++row) {
        if (page->code(row) == code)
            return row;
    }
    return -1;
}

int EditorDriver::rowOf(int index, const QString &code) const
{
    return rowOf(page(index), code);
}

int EditorDriver::rowCount() const
{
    int count = 0;
    for (int index = 0; index < pageCount(); ++index)
        count += page(index)->rowCount();
    return count;
}

QString EditorDriver::value(int index, const QString &code) const
{
    return page(index)->text(rowOf(index, code), ParameterTable::ValueColumn);
}

QColor EditorDriver::colour(int index, const QString &code) const
{
    return page(index)->item(rowOf(index, code), ParameterTable::ValueColumn)->foreground().color();
}

void EditorDriver::setValue(int index, const QString &code, const QString &text) const
{
    page(index)->item(rowOf(index, code), ParameterTable::ValueColumn)->setText(text);
}

void EditorDriver::clickPage(int index) const
{
    QListWidget *const list = pageList();
    const QRect name = list->visualItemRect(list->item(index + 1));
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, name.center());
}

QPoint EditorDriver::showValue(int index, const QString &code) const
{
    pageList()->setCurrentRow(index + 1);
    ParameterTable *const table = page(index);
    const QTableWidgetItem *const cell = table->item(rowOf(index, code), ParameterTable::ValueColumn);
    table->scrollToItem(cell);
    return table->visualItemRect(cell).center();
}

ParameterSettingHelper *EditorDriver::openHelper(int index, const QString &code) const
{
    const QPoint place = showValue(index, code);
    ParameterTable *const table = page(index);
    QTest::mouseDClick(table->viewport(), Qt::LeftButton, {}, place);
    const QList<ParameterSettingHelper *> helpers = table->findChildren<ParameterSettingHelper *>();
    for (ParameterSettingHelper *helper : helpers) {
        if (helper->isVisible())
            return helper;
    }
    return nullptr;
}

QProgressDialog *EditorDriver::progress() const
{
    return window->findChild<QProgressDialog *>();
}

void EditorDriver::keepOnly(const QStringList &codes) const
{
    const QList<ParameterTable *> tables = pages();
    for (ParameterTable *table : tables) {
        for (int row = table->rowCount() - 1; row >= 0; --row) {
            if (!codes.contains(table->code(row)))
                table->removeRow(row);
        }
    }
}
