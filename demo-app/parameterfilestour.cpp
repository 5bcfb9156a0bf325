// SPDX-License-Identifier: GPL-3.0-or-later
#include "demo-app/parametertour.h"

#include "demo-app/tour.h"
#include "parameter/parameterbatch.h"
#include "parameter/parametereditor.h"
#include "support/toolclick.h"
#include "widgets/runprogressdialog.h"

#include <QAction>
#include <QFileInfo>
#include <QMenu>
#include <QMessageBox>
#include <QPrintPreviewDialog>
#include <QStyleOptionToolButton>
#include <QTest>
#include <QToolBar>
#include <QToolButton>

namespace {

const char *const printSource = "parameter/parameterprintcontrol.cpp";
const char *const fileSource = "parameter/parameterfiledialogs.cpp";

ParameterEditor *editor()
{
    return Tour::visible<ParameterEditor>();
}

QAction *editorAction(const char *name)
{
    return editor()->findChild<QAction *>(QLatin1String(name));
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

void clickEditorTool(Tour *tour, const char *name)
{
    if (!clickTool(editor(), name))
        tour->fail(QStringLiteral("the editor does not show ") + QLatin1String(name));
}

void addFiles(Tour *tour)
{
    tour->addClosed(QStringLiteral("parameters can be opened"),
                    [tour] { clickEditorTool(tour, "openAction"); });
    tour->addFileDialog(QStringLiteral("a file to open is asked for"), fileSource, QString());
    tour->addClosed(QStringLiteral("parameters can be saved"),
                    [tour] { clickEditorTool(tour, "saveAction"); });
    // No file can be made there.
    tour->addFileDialog(QStringLiteral("a name is asked for"), fileSource,
                        QStringLiteral("/proc/parameters.scp"));
    tour->addMessage(QStringLiteral("the file can't be written"), fileSource);
}

void addPreview(Tour *tour)
{
    tour->addClosed(QStringLiteral("pages can be printed"), [tour] { clickEditorTool(tour, "printAction"); });
    tour->add({QStringLiteral("pages are being laid out"),
               [] { return Tour::visible<RunProgressDialog>() != nullptr; },
               {},
               QString(),
               QLatin1String(printSource) + QStringLiteral(" RunProgressDialog"),
               QString(),
               10000,
               true});
    tour->add({QStringLiteral("print preview shows the pages"),
               [] { return Tour::visible<QPrintPreviewDialog>() && !Tour::visible<RunProgressDialog>(); },
               [] { Tour::visible<QPrintPreviewDialog>()->close(); }, QStringLiteral("11-print-preview"),
               QLatin1String(printSource) + QStringLiteral(" QPrintPreviewDialog")});
}

void addPdf(Tour *tour)
{
    const QString fileName = tour->pictureFolder() + QStringLiteral("/parameters.pdf");
    tour->addClosed(QStringLiteral("pages can be written to a PDF"), [] {
        const auto bars = editor()->findChildren<QToolBar *>();
        for (const QToolBar *bar : bars) {
            auto *const button =
                qobject_cast<QToolButton *>(bar->widgetForAction(editorAction("printAction")));
            if (button)
                QTest::mouseClick(button, Qt::LeftButton, {}, arrowIn(button));
        }
    });
    tour->add({QStringLiteral("menu of \"Print\" offers the PDF"), [] { return Tour::visible<QMenu>(); },
               [] {
                   auto *const menu = Tour::visible<QMenu>();
                   const QRect entry = menu->actionGeometry(editorAction("createPDFAction"));
                   QTest::mouseClick(menu, Qt::LeftButton, {}, entry.center());
               },
               QStringLiteral("12-print-menu"), QStringLiteral("parameter/parametertoolbar.cpp QMenu")});
    tour->addFileDialog(QStringLiteral("a name for the PDF is asked for"), printSource, fileName);
    tour->add(
        {QStringLiteral("the PDF has been written"),
         [] { return Tour::messageBox(ParameterEditor::tr("Finish create Parameter PDF ")) != nullptr; },
         [tour, fileName] {
             if (QFileInfo(fileName).size() == 0)
                 tour->fail(QStringLiteral("there is no PDF file"));
             QTest::keyClick(Tour::visible<QMessageBox>(), Qt::Key_Return);
         },
         QStringLiteral("13-pdf-written"), QLatin1String(printSource) + QStringLiteral(" QMessageBox")});
}

} // namespace

void addParameterFilesTour(Tour *tour)
{
    addFiles(tour);
    addPreview(tour);
    addPdf(tour);
}
