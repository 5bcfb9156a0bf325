// SPDX-License-Identifier: GPL-3.0-or-later
// The widgets of the parameter editor: tool bar, pages, legend and note.
#include "parameter/parametereditor.h"

#include "catalogue/parametergroups.h"
#include "parameter/parameterpagelist.h"
#include "parameter/parametersymbols.h"
#include "parameter/parametertable.h"
#include "settings/settingskeys.h"
#include "widgets/heldprogressdialog.h"
#include "widgets/sunkenlabel.h"
#include "widgets/toolicons.h"

#include <QHBoxLayout>
#include <QSettings>
#include <QSplitter>
#include <QStackedWidget>
#include <QToolBar>
#include <QVBoxLayout>

void ParameterEditor::buildWindow()
{
    setWindowTitle(title());
    setWindowIcon(QIcon(QStringLiteral(":/pic/pic/logo.ico")));
    resize(700, 1000);
    setWidgetResizable(true);

    auto *note = new SunkenLabel(
        tr("Note: Double-click the Value can be call out the Parameter Setting Helper"), QString(), 10);
    note->setStyleSheet(QStringLiteral("color:red;"));
    QFont noteFont = note->font();
    noteFont.setBold(true);
    note->setFont(noteFont);

    auto *content = new QWidget;
    auto *layout = new QVBoxLayout(content);
    layout->setSpacing(0);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(buildToolBar());
    layout->addWidget(buildPages(), 9);
    layout->addWidget(buildLegend());
    layout->addWidget(note);
    setWidget(content);

    progressDialog = new HeldProgressDialog(this);
}

QToolBar *ParameterEditor::buildToolBar()
{
    const auto icon = [](const char *name) {
        return QIcon(QStringLiteral(":/pic/pic/") + QLatin1String(name));
    };

    auto *bar = new QToolBar;
    bar->setIconSize(toolIconSize);
    QAction *const open = bar->addAction(icon("open.png"), tr("&Open..."));
    open->setObjectName(QStringLiteral("openAction"));
    open->setStatusTip(tr("Open an existing file"));
    QAction *const save = bar->addAction(icon("save.png"), tr("&Save"));
    save->setObjectName(QStringLiteral("saveAction"));
    save->setStatusTip(tr("Save the document to disk"));
    bar->addSeparator();
    auto *spacer = new QLabel;
    spacer->setFixedWidth(40);
    bar->addWidget(spacer);
    QAction *const read = bar->addAction(icon("downarrow.png"), tr("&Read Parameters"));
    read->setObjectName(QStringLiteral("readAction"));
    read->setStatusTip(tr("Read Parameters"));
    QAction *const write = bar->addAction(icon("uparrow.png"), tr("&Write Parameters"));
    write->setObjectName(QStringLiteral("writeAction"));
    write->setStatusTip(tr("Write Parameters"));
    QAction *const print = bar->addAction(icon("print.png"), tr("Print"));
    print->setObjectName(QStringLiteral("printAction"));
    print->setStatusTip(tr("PrintPreview"));
    QAction *const edit = bar->addAction(icon("edit1.png"), tr("edit parameter"));
    edit->setObjectName(QStringLiteral("editAction"));
    addPdfMenu(bar, print);

    connect(open, &QAction::triggered, this, &ParameterEditor::openExistParameter);
    connect(save, &QAction::triggered, this, &ParameterEditor::saveParameters);
    connect(edit, &QAction::triggered, this, &ParameterEditor::editParaSlot);
    connect(read, &QAction::triggered, this, &ParameterEditor::readPageSlt);
    connect(write, &QAction::triggered, this, &ParameterEditor::writePageSlt);
    connect(print, &QAction::triggered, this, &ParameterEditor::doPrintPreviewSlot);
    return bar;
}

QSplitter *ParameterEditor::buildPages()
{
    pageList = new ParameterPageList;
    pageStack = new QStackedWidget;
    for (int i = 0; i < parameterGroupCount; ++i) {
        auto *page = new ParameterTable;
        connect(page, &ParameterTable::writeCurrentValue, this,
                &ParameterEditor::writeCurrentParameterToServo);
        connect(page, &ParameterTable::readCurrentVlue, this, &ParameterEditor::readCurrentParameter);
        pages.append(page);
        pageStack->addWidget(page);
    }
    connect(pageList, &QListWidget::currentRowChanged, this, &ParameterEditor::listWidgetcurrentRowChanged);
    connect(pageList, &QListWidget::clicked, this, &ParameterEditor::listWidgetClicked);

    splitter = new QSplitter;
    splitter->addWidget(pageList);
    splitter->addWidget(pageStack);
    splitter->setStretchFactor(1, 10);
    QSettings settings(settingsFile, QSettings::IniFormat);
    settings.beginGroup(settingskey::splitterSizes);
    splitter->restoreState(settings.value(settingskey::splitterSizes).toByteArray());
    return splitter;
}

QWidget *ParameterEditor::buildLegend()
{
    auto *legend = new QWidget;
    auto *layout = new QHBoxLayout(legend);
    layout->setSpacing(2);
    layout->setContentsMargins(0, 0, 0, 0);
    const auto symbols = parameterSymbols();
    for (const ParameterSymbol &symbol : symbols) {
        auto *mark = new QLabel(symbol.symbol);
        mark->setFont(symbol.font);
        mark->setAlignment(Qt::AlignCenter);
        mark->setStyleSheet(QStringLiteral("color:%1").arg(symbol.colour.name()));
        layout->addWidget(mark);
        layout->addWidget(new SunkenLabel(symbol.legend, QString(), 9), 1);
    }
    return legend;
}
