// SPDX-License-Identifier: GPL-3.0-or-later
#include "parameter/loadededitor.h"
#include "support/eventcount.h"

#include <QAction>
#include <QHeaderView>
#include <QLayout>
#include <QPointer>
#include <QSignalSpy>
#include <QToolBar>

class ParameterBatchTest : public QObject
{
    Q_OBJECT

private slots:
    void windowIsATopLevelOfItsOwn();
    void tableHasItsColumnsAndNoRows();
    void headsOfTheMarksCarryFontAndColour();
    void toolsStandInTheirOrder();
    void editActionShowsTheWindow();
    void showingAgainHidesFirst();
    void minimisedWindowComesBack_data();
    void minimisedWindowComesBack();
    void closingOnlyHidesAndKeepsTheRows();
    void windowGoesWithTheEditor();
    void newRowsAreTickedAndGoToTheEnd();
    void deletingTakesTheLastRowWhateverIsSelected();
    void deletingFromAnEmptyListDoesNothing();
    void allRowsAreTickedAndUnticked();
    void tickingFillsNoRowAnew();
};

namespace {

void trigger(const LoadedEditor &loaded, const QString &text)
{
    const QList<QAction *> actions = loaded.batch->findChild<QToolBar *>()->actions();
    for (QAction *action : actions) {
        if (action->text() == text) {
            action->trigger();
            return;
        }
    }
    QFAIL(qPrintable(QStringLiteral("no tool is called ") + text));
}

Qt::CheckState tick(const LoadedEditor &loaded, int row)
{
    return loaded.batch->table()->item(row, 0)->checkState();
}

} // namespace

void ParameterBatchTest::windowIsATopLevelOfItsOwn()
{
    const LoadedEditor loaded;
    QVERIFY(loaded.batch);
    QVERIFY(loaded.batch->isWindow());
    QVERIFY(!loaded.batch->isVisible());
    QCOMPARE(loaded.batch->windowTitle(), QStringLiteral("Batch Parameter Modification"));
    QCOMPARE(loaded.batch->size(), QSize(900, 600));
    QCOMPARE(loaded.batch->layout()->contentsMargins(), QMargins());
    QCOMPARE(loaded.batch->layout()->spacing(), 0);
    QVERIFY(!loaded.batch->windowIcon().isNull());
    QCOMPARE(loaded.batch->findChild<QToolBar *>()->height(), 26);
}

void ParameterBatchTest::tableHasItsColumnsAndNoRows()
{
    const LoadedEditor loaded;
    const QTableWidget *const table = loaded.batch->table();
    QCOMPARE(table->rowCount(), 0);
    QStringList heads;
    for (int column = 0; column < table->columnCount(); ++column)
        heads.append(table->horizontalHeaderItem(column)->text());
    QCOMPARE(heads, (QStringList{"Function code", QString::fromUtf8("★"), QString::fromUtf8("■"),
                                 QString::fromUtf8("●"), QString::fromUtf8("▲"), "H", "Value", "Uint", "Min",
                                 "Max", "Default", "Description", "Real"}));
    QCOMPARE(table->font().family(), QString::fromUtf8("微软雅黑"));
    QCOMPARE(table->font().pointSize(), 9);
    QCOMPARE(table->selectionMode(), QAbstractItemView::SingleSelection);
    QCOMPARE(table->selectionBehavior(), QAbstractItemView::SelectRows);
    QCOMPARE(table->editTriggers(), QAbstractItemView::NoEditTriggers);
    QVERIFY(table->alternatingRowColors());
    QVERIFY(!table->horizontalHeader()->sectionsClickable());
    QVERIFY(table->verticalHeader()->isHidden());
}

void ParameterBatchTest::headsOfTheMarksCarryFontAndColour()
{
    const LoadedEditor loaded;
    const QTableWidget *const table = loaded.batch->table();
    const QStringList colours{"#008080", "#0000ff", "#ff0000", "#000000", "#bc00f3"};
    for (int i = 0; i < 5; ++i) {
        const QTableWidgetItem *const head = table->horizontalHeaderItem(1 + i);
        QCOMPARE(head->foreground().color().name(), colours.at(i));
        QCOMPARE(head->font().family(), i < 4 ? QStringLiteral("Helvetica") : QStringLiteral("Tahoma"));
        QCOMPARE(head->font().pointSize(), i < 4 ? 17 : 15);
    }
}

void ParameterBatchTest::toolsStandInTheirOrder()
{
    const LoadedEditor loaded;
    QStringList texts;
    const QList<QAction *> actions = loaded.batch->findChild<QToolBar *>()->actions();
    for (const QAction *action : actions) {
        texts.append(action->isSeparator() ? QStringLiteral("|") : action->text());
        QCOMPARE(action->statusTip(), action->text());
    }
    QCOMPARE(texts, (QStringList{"open parameter file", "save parameter file", "|", "", "read parameter",
                                 "write parameter file", "newRow", "deleteRow", "selectAll", "deselectAll"}));
}

void ParameterBatchTest::editActionShowsTheWindow()
{
    const LoadedEditor loaded;
    loaded.editor->findChild<QAction *>(QStringLiteral("editAction"))->trigger();
    QVERIFY(loaded.batch->isVisible());
}

void ParameterBatchTest::showingAgainHidesFirst()
{
    const LoadedEditor loaded;
    loaded.editor->editParaSlot();
    const EventCount hides(loaded.batch, QEvent::Hide);
    const EventCount shows(loaded.batch, QEvent::Show);
    loaded.editor->editParaSlot();
    QCOMPARE(hides.count, 1);
    QCOMPARE(shows.count, 1);
    QVERIFY(loaded.batch->isVisible());
}

void ParameterBatchTest::minimisedWindowComesBack_data()
{
    QTest::addColumn<Qt::WindowStates>("before");
    QTest::addColumn<Qt::WindowStates>("after");
    QTest::newRow("plain") << Qt::WindowStates(Qt::WindowMinimized) << Qt::WindowStates();
    QTest::newRow("maximised") << Qt::WindowStates(Qt::WindowMinimized | Qt::WindowMaximized)
                               << Qt::WindowStates(Qt::WindowMaximized);
}

void ParameterBatchTest::minimisedWindowComesBack()
{
    QFETCH(Qt::WindowStates, before);
    QFETCH(Qt::WindowStates, after);
    const LoadedEditor loaded;
    QAction *const edit = loaded.editor->findChild<QAction *>(QStringLiteral("editAction"));
    edit->trigger();
    loaded.batch->setWindowState(before);
    QVERIFY(loaded.batch->isMinimized());
    edit->trigger();
    QVERIFY(loaded.batch->isVisible());
    QCOMPARE(loaded.batch->windowState(), after);
    loaded.batch->setWindowState(before);
    loaded.batch->bringToFront();
    QVERIFY(loaded.batch->isVisible());
    QCOMPARE(loaded.batch->windowState(), after);
}

void ParameterBatchTest::closingOnlyHidesAndKeepsTheRows()
{
    const LoadedEditor loaded;
    loaded.editor->editParaSlot();
    loaded.editor->newRowSlot();
    loaded.batch->table()->item(0, 6)->setText(QStringLiteral("5"));
    QVERIFY(loaded.batch->close());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(!loaded.batch->isVisible());
    loaded.editor->editParaSlot();
    QCOMPARE(loaded.batch->table()->rowCount(), 1);
    QCOMPARE(loaded.batch->table()->item(0, 6)->text(), QStringLiteral("5"));
}

void ParameterBatchTest::windowGoesWithTheEditor()
{
    LoadedEditor loaded;
    const QPointer<ParameterBatch> batch(loaded.batch);
    loaded.editor->editParaSlot();
    loaded.editor.reset();
    QVERIFY(!batch);
}

void ParameterBatchTest::newRowsAreTickedAndGoToTheEnd()
{
    const LoadedEditor loaded;
    const QTableWidget *const table = loaded.batch->table();
    trigger(loaded, QStringLiteral("newRow"));
    table->item(0, 0)->setText(QStringLiteral("Pn-007"));
    trigger(loaded, QStringLiteral("newRow"));
    QCOMPARE(table->rowCount(), 2);
    QCOMPARE(table->item(0, 0)->text(), QStringLiteral("Pn-007"));
    QCOMPARE(table->item(1, 0)->text(), QStringLiteral("Pn-000"));
    QCOMPARE(tick(loaded, 1), Qt::Checked);
    QCOMPARE(Qt::Alignment(table->item(1, 0)->textAlignment()), Qt::AlignLeft | Qt::AlignVCenter);
    QCOMPARE(table->item(1, 12)->text(), QStringLiteral("default"));
    QCOMPARE(Qt::Alignment(table->item(1, 12)->textAlignment()), Qt::AlignCenter);
}

void ParameterBatchTest::deletingTakesTheLastRowWhateverIsSelected()
{
    const LoadedEditor loaded;
    QTableWidget *const table = loaded.batch->table();
    for (const char *value : {"1", "2", "3"}) {
        loaded.editor->newRowSlot();
        table->item(table->rowCount() - 1, 6)->setText(QLatin1String(value));
    }
    table->selectRow(0);
    trigger(loaded, QStringLiteral("deleteRow"));
    QCOMPARE(table->rowCount(), 2);
    QCOMPARE(table->item(0, 6)->text(), QStringLiteral("1"));
    QCOMPARE(table->item(1, 6)->text(), QStringLiteral("2"));
}

void ParameterBatchTest::deletingFromAnEmptyListDoesNothing()
{
    const LoadedEditor loaded;
    trigger(loaded, QStringLiteral("deleteRow"));
    QCOMPARE(loaded.batch->table()->rowCount(), 0);
}

void ParameterBatchTest::allRowsAreTickedAndUnticked()
{
    const LoadedEditor loaded;
    for (int i = 0; i < 3; ++i)
        loaded.editor->newRowSlot();
    loaded.batch->table()->item(1, 0)->setCheckState(Qt::Unchecked);
    trigger(loaded, QStringLiteral("deselectAll"));
    for (int row = 0; row < 3; ++row)
        QCOMPARE(tick(loaded, row), Qt::Unchecked);
    loaded.batch->table()->item(1, 0)->setCheckState(Qt::Checked);
    trigger(loaded, QStringLiteral("selectAll"));
    for (int row = 0; row < 3; ++row)
        QCOMPARE(tick(loaded, row), Qt::Checked);
}

void ParameterBatchTest::tickingFillsNoRowAnew()
{
    const LoadedEditor loaded;
    QTableWidget *const table = loaded.batch->table();
    loaded.editor->newRowSlot();
    loaded.editor->newRowSlot();
    table->item(0, 6)->setText(QStringLiteral("5"));
    table->item(1, 6)->setText(QStringLiteral("6"));
    // Now the table is listened to.
    loaded.editor->Csv_DoubleClickedSlot(1, 6);
    QSignalSpy changes(table, &QTableWidget::cellChanged);
    loaded.editor->deselectAllSlot();
    table->item(0, 0)->setCheckState(Qt::Checked);
    QCOMPARE(changes.count(), 0);
    QCOMPARE(table->item(0, 6)->text(), QStringLiteral("5"));
    QCOMPARE(table->item(1, 6)->text(), QStringLiteral("6"));
    QCOMPARE(tick(loaded, 0), Qt::Checked);
    QCOMPARE(tick(loaded, 1), Qt::Unchecked);
}

QTEST_MAIN(ParameterBatchTest)
#include "tst_parameterbatch.moc"
