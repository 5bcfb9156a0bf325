// SPDX-License-Identifier: GPL-3.0-or-later
#include "parameter/parametertoolbar.h"

#include "parameter/parametereditor.h"
#include "widgets/toolicons.h"

#include <QIcon>
#include <QLabel>
#include <QMenu>
#include <QToolBar>
#include <QToolButton>

namespace {

struct Tool
{
    const char *name;
    const char *icon;
    QString text;
    QString statusTip;
    void (ParameterEditor::*slot)();
};

QAction *addTool(QToolBar *bar, const Tool &tool, ParameterEditor *editor)
{
    QAction *const action =
        bar->addAction(QIcon(QStringLiteral(":/pic/pic/") + QLatin1String(tool.icon)), tool.text);
    action->setObjectName(QLatin1String(tool.name));
    if (!tool.statusTip.isEmpty())
        action->setStatusTip(tool.statusTip);
    QObject::connect(action, &QAction::triggered, editor, tool.slot);
    return action;
}

// The tool bar's buttons are fixed, so the other way to paper opens from the arrow of "Print".
void addPdfMenu(QToolBar *bar, QAction *print, ParameterEditor *editor)
{
    auto *const button = qobject_cast<QToolButton *>(bar->widgetForAction(print));
    auto *const menu = new QMenu(button);
    QAction *const createPdf =
        menu->addAction(ParameterEditor::tr("createPDF..."), editor, &ParameterEditor::createPDFSlot);
    createPdf->setObjectName(QStringLiteral("createPDFAction"));
    createPdf->setStatusTip(ParameterEditor::tr("Create PDF"));
    button->setMenu(menu);
    button->setPopupMode(QToolButton::MenuButtonPopup);
}

} // namespace

QToolBar *makeParameterToolBar(ParameterEditor *editor)
{
    using Editor = ParameterEditor;
    constexpr int gapWidth = 40; // pixels
    const QList<Tool> files{
        {"openAction", "open.png", ParameterEditor::tr("&Open..."),
         ParameterEditor::tr("Open an existing file"), &Editor::openExistParameter},
        {"saveAction", "save.png", ParameterEditor::tr("&Save"),
         ParameterEditor::tr("Save the document to disk"), &Editor::saveParameters},
    };
    const QList<Tool> drive{
        {"readAction", "downarrow.png", ParameterEditor::tr("&Read Parameters"),
         ParameterEditor::tr("Read Parameters"), &Editor::readPageSlt},
        {"writeAction", "uparrow.png", ParameterEditor::tr("&Write Parameters"),
         ParameterEditor::tr("Write Parameters"), &Editor::writePageSlt},
    };

    auto *const bar = new QToolBar;
    bar->setIconSize(toolIconSize);
    for (const Tool &tool : files)
        addTool(bar, tool, editor);
    bar->addSeparator();
    auto *const gap = new QLabel;
    gap->setFixedWidth(gapWidth);
    bar->addWidget(gap);
    for (const Tool &tool : drive)
        addTool(bar, tool, editor);
    QAction *const print = addTool(bar,
                                   {"printAction", "print.png", ParameterEditor::tr("Print"),
                                    ParameterEditor::tr("PrintPreview"), &Editor::doPrintPreviewSlot},
                                   editor);
    addTool(bar,
            {"editAction", "edit1.png", ParameterEditor::tr("edit parameter"), {}, &Editor::editParaSlot},
            editor);
    addPdfMenu(bar, print, editor);
    return bar;
}
