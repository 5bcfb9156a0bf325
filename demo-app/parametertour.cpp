// SPDX-License-Identifier: GPL-3.0-or-later
#include "demo-app/parametertour.h"

#include "catalogue/parametercode.h"
#include "link/communicationsetting.h"
#include "parameter/parameterbatch.h"
#include "parameter/parametereditor.h"
#include "parameter/parametersettinghelper.h"
#include "parameter/parametertable.h"
#include "shell/mainwindow.h"
#include "simulator/simulateddrive.h"

#include <QComboBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMessageBox>
#include <QPrintPreviewDialog>
#include <QProgressDialog>
#include <QPushButton>
#include <QStackedWidget>
#include <QStyleOptionToolButton>
#include <QTest>
#include <QToolBar>
#include <QToolButton>

#include <algorithm>
#include <memory>

namespace {

QAction *action(const QWidget *window, const char *name)
{
    return window->findChild<QAction *>(QLatin1String(name));
}

QList<ParameterTable *> pagesOf(const ParameterEditor *editor)
{
    QList<ParameterTable *> pages;
    const auto *const stack = editor->findChild<QStackedWidget *>();
    for (int i = 0; i < stack->count(); ++i)
        pages.append(qobject_cast<ParameterTable *>(stack->widget(i)));
    return pages;
}

// Selects a page by a click on its name.
void clickPage(const ParameterEditor *editor, int row)
{
    auto *const list = editor->findChild<QListWidget *>();
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(list->item(row)).center());
}

int rowsShown(const ParameterEditor *editor)
{
    int count = 0;
    const QList<ParameterTable *> pages = pagesOf(editor);
    for (const ParameterTable *page : pages)
        count += page->rowCount();
    return count;
}

// Rows whose Value cell shows what stands in the drive's register; a row of two registers may have been read
// as one, where its code has no tilde.
int rowsThatAgree(const ParameterEditor *editor, kt500sim::SimulatedDrive *drive)
{
    const kt500sim::RegisterSnapshot registers = drive->registers();
    const auto word = [&registers](int offset) {
        return QString::number(registers.working.at(std::size_t(offset)), 16)
            .rightJustified(4, QLatin1Char('0'));
    };
    int count = 0;
    const QList<ParameterTable *> pages = pagesOf(editor);
    for (int index = 0; index < pages.size(); ++index) {
        const ParameterTable *const page = pages.at(index);
        for (int row = 0; row < page->rowCount(); ++row) {
            const QStringList record = writeRecord(page->rowTexts(row));
            // A reply goes to the rows of its number on its page, whatever group their code names.
            const int offset = index * 100 + record.at(0).midRef(4, 2).toInt();
            const QStringList readings{word(offset), word(offset) + word(offset + 1)};
            count += std::any_of(readings.begin(), readings.end(), [&record](const QString &reading) {
                return record.at(2) ==
                       decodeValue(reading, record.at(1), record.at(3), record.at(4), record.at(5));
            });
        }
    }
    return count;
}

} // namespace

void addParameterTour(Tour *tour, MainWindow *window, kt500sim::SimulatedDrive *drive,
                      ParameterTourResult *result)
{
    const auto editor = [] { return Tour::visible<ParameterEditor>(); };
    const auto clock = std::make_shared<QElapsedTimer>();

    tour->add({QStringLiteral("connection dialog opens with the simulated drive on top"),
               [] {
                   auto *const ports = Tour::visible<QComboBox>(QStringLiteral("portCombox"));
                   return ports && ports->currentText().startsWith(QLatin1String("Brennic"));
               },
               [] {
                   auto *const bauds = Tour::visible<QComboBox>(QStringLiteral("baudCombox"));
                   QTest::keyClick(bauds, Qt::Key_Home);
                   QTest::mouseClick(Tour::visible<QPushButton>(QStringLiteral("okButton")), Qt::LeftButton);
               },
               QStringLiteral("01-connection")});
    tour->add({QStringLiteral("indicator shows on-line"),
               [window] {
                   return !Tour::visible<CommunicationSetting>() &&
                          action(window, "actiononOff")->toolTip() == QStringLiteral("在线");
               },
               [tour, window] {
                   if (!Tour::clickAction(action(window, "actionParameter_Editor")))
                       tour->fail(QStringLiteral("the tool bar does not show the parameter editor"));
               },
               QStringLiteral("02-online")});
    tour->add({QStringLiteral("parameter editor shows the catalogue"),
               [editor] { return editor() && editor()->findChild<QListWidget *>()->currentRow() == 1; },
               [tour, editor, drive, clock] {
                   drive->resetCounters();
                   clock->start();
                   if (!Tour::clickAction(action(editor(), "readAction")))
                       tour->fail(QStringLiteral("the editor does not show \"Read Parameters\""));
               },
               QStringLiteral("03-editor")});
    tour->add({QStringLiteral("parameters are being read"),
               [] {
                   const auto *const progress = Tour::visible<QProgressDialog>();
                   return progress && progress->value() > progress->maximum() / 3;
               },
               {},
               QStringLiteral("04-reading")});
    tour->add(
        {QStringLiteral("all parameters have been read"),
         [] { return Tour::messageBox(ParameterEditor::tr("Parameters reading completed")) != nullptr; },
         [editor, drive, clock, result] {
             result->seconds = clock->elapsed() / 1000.0;
             const kt500sim::Counters counters = drive->counters();
             result->frames = counters.requests + counters.replies;
             result->retransmissions = counters.retransmissions;
             result->parametersRead = rowsThatAgree(editor(), drive);
             QTest::keyClick(Tour::visible<QMessageBox>(), Qt::Key_Return);
         },
         QStringLiteral("05-completed"), 60000});
    tour->add({QStringLiteral("every row of the twelve pages shows what the drive holds"),
               [] { return Tour::visible<QMessageBox>() == nullptr; },
               [tour, editor, result] {
                   if (result->parametersRead != rowsShown(editor()))
                       tour->fail(QStringLiteral("%1 of %2 rows show what the drive holds")
                                      .arg(result->parametersRead)
                                      .arg(rowsShown(editor())));
                   clickPage(editor(), 3);
               },
               QString()});
    tour->add({QStringLiteral("a page is chosen in the list"),
               [editor] { return editor()->findChild<QStackedWidget *>()->currentIndex() == 2; },
               {},
               QStringLiteral("06-page")});
}

namespace {

// Opens the setting helper of a row as a person does, by a double-click on its value.
void doubleClickValue(const ParameterEditor *editor, int page, const QString &code)
{
    ParameterTable *const table = pagesOf(editor).at(page);
    for (int row = 0; row < table->rowCount(); ++row) {
        if (table->code(row) != code)
            continue;
        table->scrollToItem(table->item(row, ParameterTable::ValueColumn));
        const QRect cell = table->visualItemRect(table->item(row, ParameterTable::ValueColumn));
        QTest::mouseDClick(table->viewport(), Qt::LeftButton, {}, cell.center());
    }
}

void addHelperSteps(Tour *tour, const QString &what, int page, const QString &code, const QString &picture)
{
    const auto editor = [] { return Tour::visible<ParameterEditor>(); };
    const auto list = [editor] { return editor()->findChild<QListWidget *>(); };
    tour->add({QStringLiteral("page of %1 can be chosen").arg(code),
               [] { return !Tour::visible<ParameterSettingHelper>(); },
               [editor, page] { clickPage(editor(), page + 1); }, QString()});
    tour->add({QStringLiteral("page of %1 is shown").arg(code),
               [list, page] { return list()->currentRow() == page + 1; },
               [editor, page, code] { doubleClickValue(editor(), page, code); }, QString()});
    tour->add({QStringLiteral("setting helper opens on %1 row").arg(what),
               [] { return Tour::visible<ParameterSettingHelper>() != nullptr; },
               [] { Tour::visible<ParameterSettingHelper>()->close(); }, picture});
}

QToolButton *buttonOf(QAction *action)
{
    const QList<QWidget *> shownOn = action->associatedWidgets();
    for (QWidget *widget : shownOn) {
        if (const auto *const bar = qobject_cast<QToolBar *>(widget))
            return qobject_cast<QToolButton *>(bar->widgetForAction(action));
    }
    return nullptr;
}

// Where a person finds the arrow of a tool button that has a menu beside its own click.
QPoint arrowIn(QToolButton *button)
{
    QStyleOptionToolButton option;
    option.initFrom(button);
    option.subControls = QStyle::SC_ToolButton | QStyle::SC_ToolButtonMenu;
    option.features = QStyleOptionToolButton::MenuButtonPopup | QStyleOptionToolButton::HasMenu;
    return button->style()
        ->subControlRect(QStyle::CC_ToolButton, &option, QStyle::SC_ToolButtonMenu, button)
        .center();
}

QAction *toolOf(const QWidget *window, const QString &text)
{
    const QList<QAction *> actions = window->findChild<QToolBar *>()->actions();
    for (QAction *action : actions) {
        if (action->text() == text)
            return action;
    }
    return nullptr;
}

// Types a code into the list's last row.
void typeCode(ParameterBatch *batch, const QString &code)
{
    QTableWidget *const table = batch->table();
    const QTableWidgetItem *const cell = table->item(table->rowCount() - 1, ParameterBatch::CodeColumn);
    const QPoint place = table->visualItemRect(cell).center();
    QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, place);
    QTest::mouseDClick(table->viewport(), Qt::LeftButton, {}, place);
    if (auto *const edit = table->findChild<QLineEdit *>()) {
        edit->selectAll();
        QTest::keyClicks(edit, code);
        QTest::keyClick(edit, Qt::Key_Return);
    }
}

} // namespace

void addParameterWindowsTour(Tour *tour)
{
    const auto editor = [] { return Tour::visible<ParameterEditor>(); };
    addHelperSteps(tour, QStringLiteral("a hexadecimal"), 0, QStringLiteral("Pn-004"),
                   QStringLiteral("07-helper-hexadecimal"));
    addHelperSteps(tour, QStringLiteral("a decimal"), 0, QStringLiteral("Pn-007"),
                   QStringLiteral("08-helper-decimal"));
    addHelperSteps(tour, QStringLiteral("a read-only"), 0, QStringLiteral("Pn-000"),
                   QStringLiteral("09-helper-read-only"));
    tour->add({QStringLiteral("batch window can be opened"),
               [] { return !Tour::visible<ParameterSettingHelper>(); },
               [tour, editor] {
                   if (!Tour::clickAction(action(editor(), "editAction")))
                       tour->fail(QStringLiteral("the editor does not show \"edit parameter\""));
               },
               QString()});
    const QStringList codes{"Pn-007", "Pn-100", "Pn-610", "Pn-702", "Pn-A04"};
    for (int row = 0; row < codes.size(); ++row) {
        // A typed code is taken over by the event loop, so each row is a step of its own.
        tour->add({QStringLiteral("batch window shows %1 rows").arg(row),
                   [row, codes] {
                       const ParameterBatch *const batch = Tour::visible<ParameterBatch>();
                       return batch && batch->codes() == codes.mid(0, row) &&
                              !batch->table()->findChild<QLineEdit *>();
                   },
                   [editor, row, codes] {
                       editor()->newRowSlot();
                       typeCode(Tour::visible<ParameterBatch>(), codes.at(row));
                   },
                   QString()});
    }
    tour->add({QStringLiteral("batch window shows the rows that were typed"),
               [] {
                   const ParameterBatch *const batch = Tour::visible<ParameterBatch>();
                   return batch->codes().size() == 5 && batch->codes().last() == QLatin1String("Pn-A04") &&
                          batch->text(4, ParameterBatch::UnitColumn) == QLatin1String("pp");
               },
               [tour] {
                   if (!Tour::clickAction(
                           toolOf(Tour::visible<ParameterBatch>(), ParameterEditor::tr("read parameter"))))
                       tour->fail(QStringLiteral("the batch window does not show \"read parameter\""));
               },
               QString()});
    tour->add(
        {QStringLiteral("rows of the batch window have been read"),
         [] { return Tour::messageBox(ParameterEditor::tr("Parameters reading completed")) != nullptr; },
         [] { QTest::keyClick(Tour::visible<QMessageBox>(), Qt::Key_Return); }, QString()});
    tour->add({QStringLiteral("batch window shows what the drive holds beside what it would write"),
               [] {
                   const ParameterBatch *const batch = Tour::visible<ParameterBatch>();
                   return !Tour::visible<QMessageBox>() && batch->text(0, ParameterBatch::RealColumn) ==
                                                               batch->text(0, ParameterBatch::ValueColumn);
               },
               [] { Tour::visible<ParameterBatch>()->close(); }, QStringLiteral("10-batch")});
    tour->add({QStringLiteral("pages can be printed"), [] { return !Tour::visible<ParameterBatch>(); },
               [tour, editor] {
                   if (!Tour::clickAction(action(editor(), "printAction")))
                       tour->fail(QStringLiteral("the editor does not show \"Print\""));
               },
               QString()});
    tour->add({QStringLiteral("print preview shows the pages"),
               [] { return Tour::visible<QPrintPreviewDialog>() && !Tour::visible<QProgressDialog>(); },
               [] { Tour::visible<QPrintPreviewDialog>()->close(); }, QStringLiteral("11-print-preview")});
}

void addParameterPdfTour(Tour *tour, const QString &fileName)
{
    const auto editor = [] { return Tour::visible<ParameterEditor>(); };
    tour->add({QStringLiteral("pages can be written to a PDF"),
               [] { return !Tour::visible<QPrintPreviewDialog>(); },
               [tour, editor] {
                   QToolButton *const button = buttonOf(action(editor(), "printAction"));
                   if (!button)
                       tour->fail(QStringLiteral("the editor does not show \"Print\""));
                   else
                       QTest::mouseClick(button, Qt::LeftButton, {}, arrowIn(button));
               },
               QString()});
    tour->add({QStringLiteral("menu of \"Print\" offers the PDF"), [] { return Tour::visible<QMenu>(); },
               [editor] {
                   auto *const menu = Tour::visible<QMenu>();
                   const QRect entry = menu->actionGeometry(action(editor(), "createPDFAction"));
                   QTest::mouseClick(menu, Qt::LeftButton, {}, entry.center());
               },
               QStringLiteral("12-print-menu")});
    tour->add({QStringLiteral("a name for the PDF is asked for"),
               [] { return Tour::visible<QFileDialog>() != nullptr; },
               [fileName] {
                   auto *const name = Tour::visible<QFileDialog>()->findChild<QLineEdit *>();
                   name->setText(fileName);
                   QTest::keyClick(name, Qt::Key_Return);
               },
               QString()});
    tour->add(
        {QStringLiteral("the PDF has been written"),
         [] { return Tour::messageBox(ParameterEditor::tr("Finish create Parameter PDF ")) != nullptr; },
         [tour, fileName] {
             if (QFileInfo(fileName).size() == 0)
                 tour->fail(QStringLiteral("there is no PDF file"));
             QTest::keyClick(Tour::visible<QMessageBox>(), Qt::Key_Return);
         },
         QStringLiteral("13-pdf-written")});
}
