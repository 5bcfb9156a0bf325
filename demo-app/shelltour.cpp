// SPDX-License-Identifier: GPL-3.0-or-later
#include "demo-app/shelltour.h"

#include "demo-app/tour.h"
#include "link/serialport.h"
#include "parameter/parametereditor.h"
#include "parameter/parametersettinghelper.h"
#include "shell/mainwindow.h"
#include "simulator/simulateddrive.h"
#include "support/editordriver.h"
#include "support/toolclick.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>

namespace {

const QString shownCode = QStringLiteral("Pn-007");

void addMenu(Tour *tour, MainWindow *window, int index)
{
    tour->add({QStringLiteral("menu %1 can be opened").arg(index + 1),
               [] { return !QApplication::activePopupWidget(); },
               [window, index] {
                   QMenuBar *const bar = window->menuBar();
                   const QRect title = bar->actionGeometry(bar->actions().at(index));
                   QTest::mouseClick(bar, Qt::LeftButton, {}, title.center());
               }});
    tour->add({QStringLiteral("menu %1 is open").arg(index + 1),
               [] { return Tour::visible<QMenu>() != nullptr; },
               [] {
                   while (QWidget *const popup = QApplication::activePopupWidget())
                       popup->close();
               },
               QStringLiteral("25-menu-%1").arg(index + 1), QStringLiteral("shell/mainwindow.ui QMenu")});
}

// The box of the language offers a restart; it is not taken.
void addLanguage(Tour *tour, MainWindow *window, const char *action, const QString &guide)
{
    tour->addClosed(QStringLiteral("a language can be chosen"),
                    [window, action] { window->findChild<QAction *>(QLatin1String(action))->trigger(); });
    tour->add({QStringLiteral("a restart is offered"), [] { return Tour::visible<QMessageBox>() != nullptr; },
               [] {
                   auto *const box = Tour::visible<QMessageBox>();
                   QTest::mouseClick(box->button(QMessageBox::Cancel), Qt::LeftButton);
               },
               QString(), QStringLiteral("shell/mainwindow.cpp QMessageBox"), guide});
}

void readParameters(Tour *tour)
{
    if (!clickTool(Tour::visible<ParameterEditor>(), "readAction"))
        tour->fail(QStringLiteral("the editor does not show \"Read Parameters\""));
}

// The editor may give up its request before the link gives up the line.
void answerTimeout()
{
    if (QMessageBox *const box = Tour::messageBox(ParameterEditor::tr("Request Timeout!")))
        box->accept();
}

} // namespace

void addMenusTour(Tour *tour, MainWindow *window)
{
    for (int index = 0; index < window->menuBar()->actions().size(); ++index)
        addMenu(tour, window, index);
}

void addLostLinkTour(Tour *tour, kt500sim::SimulatedDrive *drive)
{
    // The line is silent between two requests, and its loss is seen at the next one.
    tour->addClosed(QStringLiteral("line can be cut"), [tour, drive] {
        drive->hangUp(std::chrono::milliseconds(0));
        readParameters(tour);
    });
    tour->add({QStringLiteral("loss of the link is told"),
               [] {
                   answerTimeout();
                   return Tour::messageBox(SerialPort::tr(
                              "Fail to connect to the device via \nRead Modbus Failed!")) != nullptr;
               },
               {},
               QString(),
               QStringLiteral("link/serialport.cpp QMessageBox"),
               QStringLiteral("link-lost"),
               20000});
    tour->add(
        {QStringLiteral("a value can be set without a link"),
         [] {
             answerTimeout();
             return !QApplication::activeModalWidget() && !Tour::visible<QDialog>();
         },
         [] { EditorDriver(Tour::visible<ParameterEditor>()).openHelper(0, shownCode)->getParamValue(); }});
    tour->addMessage(QStringLiteral("the missing link is told"), "parameter/offlinenotice.cpp",
                     QStringLiteral("off-line"));
    tour->add({QStringLiteral("setting helper can be closed without a link"),
               [] { return !Tour::visible<QMessageBox>(); },
               [] { Tour::visible<ParameterSettingHelper>()->close(); }});
    tour->addClosed(QStringLiteral("line can be put back"), [drive] { drive->clearFaults(); });
}

void addLanguageTour(Tour *tour, MainWindow *window, bool isChinese)
{
    const char *const own = isChinese ? "actionSimplified_Chinese" : "actionEnglish";
    const char *const other = isChinese ? "actionEnglish" : "actionSimplified_Chinese";
    addLanguage(tour, window, other, QString());
    addLanguage(tour, window, own, QStringLiteral("language"));
    tour->addClosed(QStringLiteral("the tour ends in its own language"), [] {});
}
