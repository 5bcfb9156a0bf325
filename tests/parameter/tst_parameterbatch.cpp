// SPDX-License-Identifier: GPL-3.0-or-later
#include "parameter/loadededitor.h"
#include "support/batchtexts.h"
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

void ParameterBatchTest::windowIsATopLevelOfItsOwn()
{
    const LoadedEditor loaded;
    QVERIFY(loaded.batch);
    QVERIFY(loaded.batch->isWindow());
    QVERIFY(!loaded.batch->isVisible());
    QCOMPARE(loaded.batch->windowTitle(), batchtext::title);
    QCOMPARE(loaded.batch->size(), QSize(900, 600));
    QCOMPARE(loaded.batch->layout()->contentsMargins(), QMargins());
    QCOMPARE(loaded.batch->layout()->spacing(), 0);
    QVERIFY(!loaded.batch->windowIcon().isNull());
    QCOMPARE(loaded.list().toolBar()->height(), 26);
}

void ParameterBatchTest::tableHasItsColumnsAndNoRows()
{
    const LoadedEditor loaded;
    const QTableWidget *const table = loaded.batch->table();
    QCOMPARE(table->rowCount(), 0);
    QCOMPARE(loaded.list().heads(),
             (QStringList{"Function code", QString::fromUtf8("★"), QString::fromUtf8("■"),
                          QString::fromUtf8("●"), QString::fromUtf8("▲"), "H", "Value", "Uint", "Min", "Max",
                          "Default", "Description", "Real"}));
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
    const QList<QAction *> actions = loaded.list().tools();
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
    loaded.list().trigger(BatchDriver::NewRowTool);
    loaded.list().setText(0, 6, QStringLiteral("5"));
    QVERIFY(loaded.batch->close());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(!loaded.batch->isVisible());
    loaded.editor->editParaSlot();
    QCOMPARE(loaded.list().rowCount(), 1);
    QCOMPARE(loaded.list().text(0, 6), QStringLiteral("5"));
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
    loaded.list().trigger(BatchDriver::NewRowTool);
    table->item(0, 0)->setText(QStringLiteral("Pn-007"));
    loaded.list().trigger(BatchDriver::NewRowTool);
    QCOMPARE(table->rowCount(), 2);
    QCOMPARE(table->item(0, 0)->text(), QStringLiteral("Pn-007"));
    QCOMPARE(table->item(1, 0)->text(), QStringLiteral("Pn-000"));
    QVERIFY(loaded.list().isTicked(1));
    QCOMPARE(Qt::Alignment(table->item(1, 0)->textAlignment()), Qt::AlignLeft | Qt::AlignVCenter);
    QCOMPARE(table->item(1, 12)->text(), batchtext::notRead);
    QCOMPARE(Qt::Alignment(table->item(1, 12)->textAlignment()), Qt::AlignCenter);
}

void ParameterBatchTest::deletingTakesTheLastRowWhateverIsSelected()
{
    const LoadedEditor loaded;
    QTableWidget *const table = loaded.batch->table();
    for (const char *value : {"1", "2", "3"}) {
        loaded.list().trigger(BatchDriver::NewRowTool);
        table->item(table->rowCount() - 1, 6)->setText(QLatin1String(value));
    }
    table->selectRow(0);
    loaded.list().trigger(BatchDriver::DeleteRowTool);
    QCOMPARE(table->rowCount(), 2);
    QCOMPARE(table->item(0, 6)->text(), QStringLiteral("1"));
    QCOMPARE(table->item(1, 6)->text(), QStringLiteral("2"));
}

void ParameterBatchTest::deletingFromAnEmptyListDoesNothing()
{
    const LoadedEditor loaded;
    loaded.list().trigger(BatchDriver::DeleteRowTool);
    QCOMPARE(loaded.list().rowCount(), 0);
}

void ParameterBatchTest::allRowsAreTickedAndUnticked()
{
    const LoadedEditor loaded;
    for (int i = 0; i < 3; ++i)
        loaded.list().trigger(BatchDriver::NewRowTool);
    loaded.list().tick(1, false);
    loaded.list().trigger(BatchDriver::UntickAllTool);
    for (int row = 0; row < 3; ++row)
        QVERIFY(!loaded.list().isTicked(row));
    loaded.list().tick(1, true);
    loaded.list().trigger(BatchDriver::TickAllTool);
    for (int row = 0; row < 3; ++row)
        QVERIFY(loaded.list().isTicked(row));
}

void ParameterBatchTest::tickingFillsNoRowAnew()
{
    const LoadedEditor loaded;
    QTableWidget *const table = loaded.batch->table();
    loaded.list().trigger(BatchDriver::NewRowTool);
    loaded.list().trigger(BatchDriver::NewRowTool);
    table->item(0, 6)->setText(QStringLiteral("5"));
    table->item(1, 6)->setText(QStringLiteral("6"));
    // Now the table is listened to.
    loaded.list().beginEditing(1, BatchDriver::Value);
    QSignalSpy changes(table, &QTableWidget::cellChanged);
    loaded.list().trigger(BatchDriver::UntickAllTool);
    loaded.list().tick(0, true);
    QCOMPARE(changes.count(), 0);
    QCOMPARE(table->item(0, 6)->text(), QStringLiteral("5"));
    QCOMPARE(table->item(1, 6)->text(), QStringLiteral("6"));
    QVERIFY(loaded.list().isTicked(0));
    QVERIFY(!loaded.list().isTicked(1));
}

QTEST_MAIN(ParameterBatchTest)
#include "tst_parameterbatch.moc"
