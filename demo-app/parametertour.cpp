// SPDX-License-Identifier: GPL-3.0-or-later
#include "demo-app/parametertour.h"

#include "link/communicationsetting.h"
#include "parameter/parametereditor.h"
#include "parameter/parametertable.h"
#include "shell/mainwindow.h"
#include "simulator/simulateddrive.h"

#include <QComboBox>
#include <QListWidget>
#include <QMessageBox>
#include <QProgressDialog>
#include <QPushButton>
#include <QStackedWidget>
#include <QTest>
#include <QToolBar>

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

int valuesShown(const ParameterEditor *editor)
{
    int count = 0;
    const QList<ParameterTable *> pages = pagesOf(editor);
    for (const ParameterTable *page : pages) {
        for (int row = 0; row < page->rowCount(); ++row)
            count += !page->text(row, ParameterTable::ValueColumn).isEmpty();
    }
    return count;
}

int rowsShown(const ParameterEditor *editor)
{
    int count = 0;
    const QList<ParameterTable *> pages = pagesOf(editor);
    for (const ParameterTable *page : pages)
        count += page->rowCount();
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
             result->parametersRead = valuesShown(editor());
             QTest::keyClick(Tour::visible<QMessageBox>(), Qt::Key_Return);
         },
         QStringLiteral("05-completed"), 60000});
    tour->add({QStringLiteral("every row of the twelve pages shows a value"),
               [] { return Tour::visible<QMessageBox>() == nullptr; },
               [tour, editor, result] {
                   if (result->parametersRead != rowsShown(editor()))
                       tour->fail(QStringLiteral("%1 of %2 rows show a value")
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
