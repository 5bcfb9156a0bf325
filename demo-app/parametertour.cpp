// SPDX-License-Identifier: GPL-3.0-or-later
#include "demo-app/parametertour.h"

#include "catalogue/parametercode.h"
#include "demo-app/tour.h"
#include "demo-app/widgetcheck.h"
#include "link/communicationsetting.h"
#include "parameter/parametereditor.h"
#include "parameter/parametertable.h"
#include "shell/mainwindow.h"
#include "simulator/simulateddrive.h"
#include "support/editordriver.h"
#include "support/toolclick.h"
#include "widgets/runprogressdialog.h"

#include <QAction>
#include <QComboBox>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>
#include <QStackedWidget>
#include <QTest>

#include <algorithm>
#include <memory>

namespace {

ParameterEditor *editor()
{
    return Tour::visible<ParameterEditor>();
}

// Rows whose Value cell shows what stands in the drive's register; a row of two registers may have been read
// as one, where its code has no tilde.
int rowsThatAgree(kt500sim::SimulatedDrive *drive)
{
    const kt500sim::RegisterSnapshot registers = drive->registers();
    const auto word = [&registers](int offset) {
        return QString::number(registers.working.at(std::size_t(offset)), 16)
            .rightJustified(4, QLatin1Char('0'));
    };
    int count = 0;
    const EditorDriver driver(editor());
    for (int index = 0; index < driver.pageCount(); ++index) {
        const ParameterTable *const page = driver.page(index);
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

void addReading(Tour *tour, kt500sim::SimulatedDrive *drive, ParameterTourResult *result)
{
    const auto clock = std::make_shared<QElapsedTimer>();
    tour->add({QStringLiteral("parameter editor shows the catalogue"),
               [] { return editor() && EditorDriver(editor()).pageList()->currentRow() == 1; },
               [tour, drive, clock] {
                   drive->resetCounters();
                   clock->start();
                   if (!clickTool(editor(), "readAction"))
                       tour->fail(QStringLiteral("the editor does not show \"Read Parameters\""));
               },
               QStringLiteral("03-editor"), QStringLiteral("parameter/parametereditor.cpp ParameterEditor")});
    tour->add({QStringLiteral("parameters are being read"),
               [] {
                   const auto *const progress = Tour::visible<RunProgressDialog>();
                   return progress && progress->value() > progress->maximum() / 3;
               },
               {},
               QStringLiteral("04-reading"),
               QStringLiteral("parameter/parameterrundisplay.cpp RunProgressDialog")});
    tour->add(
        {QStringLiteral("all parameters have been read"),
         [] { return Tour::messageBox(ParameterEditor::tr("Parameters reading completed")) != nullptr; },
         [drive, clock, result] {
             result->seconds = clock->elapsed() / 1000.0;
             const kt500sim::Counters counters = drive->counters();
             result->frames = counters.requests + counters.replies;
             result->retransmissions = counters.retransmissions;
             result->parametersRead = rowsThatAgree(drive);
             QTest::keyClick(Tour::visible<QMessageBox>(), Qt::Key_Return);
         },
         QStringLiteral("05-completed"), QStringLiteral("parameter/parameterrundisplay.cpp QMessageBox"),
         QString(), 60000});
}

} // namespace

void addConnectionTour(Tour *tour, MainWindow *window)
{
    tour->add(
        {QStringLiteral("connection dialog opens with the simulated drive on top"),
         [window] {
             auto *const ports = Tour::visible<QComboBox>(QStringLiteral("portCombox"));
             return isOnScreen(window) && window->width() >= window->screen()->availableSize().width() &&
                    ports && ports->currentText().startsWith(QLatin1String("Brennic"));
         },
         [] {
             auto *const bauds = Tour::visible<QComboBox>(QStringLiteral("baudCombox"));
             QTest::keyClick(bauds, Qt::Key_Home);
             QTest::mouseClick(Tour::visible<QPushButton>(QStringLiteral("okButton")), Qt::LeftButton);
         },
         QStringLiteral("01-connection"),
         QStringLiteral("link/communicationsetting.cpp CommunicationSetting"), QStringLiteral("connection")});
    tour->add({QStringLiteral("indicator shows on-line"),
               [window] {
                   const auto *const shown = window->findChild<QAction *>(QStringLiteral("actiononOff"));
                   return !Tour::visible<CommunicationSetting>() &&
                          shown->toolTip() == QStringLiteral("在线");
               },
               {},
               QStringLiteral("02-online"),
               QStringLiteral("shell/mainwindow.cpp MainWindow")});
}

void addParameterTour(Tour *tour, MainWindow *window, kt500sim::SimulatedDrive *drive,
                      ParameterTourResult *result)
{
    tour->addClosed(QStringLiteral("parameter editor can be opened"), [tour, window] {
        if (!clickTool(window, "actionParameter_Editor"))
            tour->fail(QStringLiteral("the tool bar does not show the parameter editor"));
    });
    addReading(tour, drive, result);
    tour->addClosed(QStringLiteral("every row of the twelve pages shows what the drive holds"),
                    [tour, result] {
                        const EditorDriver driver(editor());
                        if (result->parametersRead != driver.rowCount())
                            tour->fail(QStringLiteral("%1 of %2 rows show what the drive holds")
                                           .arg(result->parametersRead)
                                           .arg(driver.rowCount()));
                        driver.clickPage(0);
                    });
    // Each page is a table of its own, with texts of its own.
    for (int page = 0; page < 12; ++page) {
        const QString number = QStringLiteral("%1").arg(page + 1, 2, 10, QLatin1Char('0'));
        tour->add({QStringLiteral("page %1 is chosen in the list").arg(number),
                   [page] { return EditorDriver(editor()).pageStack()->currentIndex() == page; },
                   [page] { EditorDriver(editor()).clickPage((page + 1) % 12); },
                   QStringLiteral("06-page-") + number, QString(),
                   page == 2 ? QStringLiteral("parameters") : QString()});
    }
}
