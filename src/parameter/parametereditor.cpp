// SPDX-License-Identifier: GPL-3.0-or-later
#include "parameter/parametereditor.h"

#include "catalogue/doubleaddress.h"
#include "catalogue/parametercode.h"
#include "catalogue/parametergroups.h"
#include "catalogue/readxmlthread.h"
#include "link/framecodec.h"
#include "link/linkstate.h"
#include "link/windownames.h"
#include "parameter/parameterbatch.h"
#include "parameter/parameterbatchcontrol.h"
#include "parameter/parameterfiledialogs.h"
#include "parameter/parameterlegend.h"
#include "parameter/parameterpagelist.h"
#include "parameter/parameterprintcontrol.h"
#include "parameter/parameterrundisplay.h"
#include "parameter/parametertable.h"
#include "parameter/parametertoolbar.h"
#include "settings/settingskeys.h"
#include "widgets/drawingpace.h"
#include "widgets/pictures.h"
#include "widgets/sunkenlabel.h"
#include "widgets/windowstate.h"

#include <QCloseEvent>
#include <QLabel>
#include <QSettings>
#include <QSplitter>
#include <QStackedWidget>
#include <QToolBar>
#include <QVBoxLayout>

namespace {

// Between two drawings of a page that a read turns over. One takes eight milliseconds, in which sixteen
// exchanges would find time at USB.
constexpr int pageInterval = 150; // ms

} // namespace

ParameterEditor::ParameterEditor(QWidget *parent)
    : QScrollArea(parent)
{
    for (int i = 0; i < parameterGroupCount; ++i)
        pageCodeLists.append(QStringList());
    buildTransfer();
    buildWindow();
    batch = std::make_unique<ParameterBatchControl>(pages, transfer);
    new ParameterRunDisplay(transfer, this, batch->window());
    print = new ParameterPrintControl(pages, this);
    loadCatalogue();
}

ParameterEditor::~ParameterEditor()
{
    readXmlThread->requestInterruption();
    readXmlThread->wait();
}

void ParameterEditor::buildTransfer()
{
    transfer =
        new ParameterTransfer(readDoubleAddressList(QStringLiteral(":/config/config/address.txt")), this);
    connect(transfer, &ParameterTransfer::frameReady, this,
            [this](const QByteArray &frame) { emit writeToSerialPort(frame, editorLinkName); });
    connect(transfer, &ParameterTransfer::withdrawn, this, [this] { emit withdrawRequests(editorLinkName); });
    connect(transfer, &ParameterTransfer::answered, this, &ParameterEditor::showAnswer);
    connect(transfer, &ParameterTransfer::ended, this, [this](ParameterTransfer::End end) {
        if (end == ParameterTransfer::End::WriteDone)
            pages.resetValueColours();
    });
}

void ParameterEditor::buildWindow()
{
    setWindowTitle(tr("Parameter Editor"));
    setWindowIcon(QIcon(logoPicture));
    resize(700, 1000);
    setWidgetResizable(true);

    auto *note = new SunkenLabel(
        tr("Note: Double-click the Value can be call out the Parameter Setting Helper"), QString(), 10);
    note->setStyleSheet(QStringLiteral("color:red;"));
    QFont noteFont = note->font();
    noteFont.setBold(true);
    note->setFont(noteFont);
    note->setWordWrap(true);

    auto *content = new QWidget;
    auto *layout = new QVBoxLayout(content);
    layout->setSpacing(0);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(makeParameterToolBar(this));
    layout->addWidget(buildPages(), 9);
    layout->addWidget(new ParameterLegend);
    layout->addWidget(note);
    setWidget(content);
}

QSplitter *ParameterEditor::buildPages()
{
    pageList = new ParameterPageList;
    pageStack = new QStackedWidget;
    pagePace = new DrawingPace(pageStack, pageInterval);
    QList<ParameterTable *> tables;
    for (int i = 0; i < parameterGroupCount; ++i) {
        auto *page = new ParameterTable;
        connect(page, &ParameterTable::writeCurrentValue, this,
                &ParameterEditor::writeCurrentParameterToServo);
        connect(page, &ParameterTable::readCurrentVlue, this, &ParameterEditor::readCurrentParameter);
        tables.append(page);
        pageStack->addWidget(page);
    }
    pages = ParameterPages(tables);
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

void ParameterEditor::loadCatalogue()
{
    readXmlThread = new ReadXmlThread(this);
    connect(readXmlThread, &ReadXmlThread::readXml, this, &ParameterEditor::readXml);
    connect(readXmlThread, &QThread::finished, this, &ParameterEditor::readXmlFinished);
    readXmlThread->start();
}

void ParameterEditor::readXml(int index, QStringList values, QStringList description)
{
    if (index < 0 || index >= pages.count())
        return;
    pages.at(index)->rowDescriptions.append(description);
    pages.at(index)->addRow(values);
    pageCodeLists[index].append(values.value(1));
}

void ParameterEditor::readXmlFinished()
{
    pageList->setCurrentRow(1);
}

void ParameterEditor::communicationLostSlot() {}

void ParameterEditor::linkEnded()
{
    transfer->loseReply();
}

void ParameterEditor::listWidgetcurrentRowChanged(int index)
{
    if (index > 0)
        pageStack->setCurrentIndex(index - 1);
}

void ParameterEditor::listWidgetClicked(QModelIndex index)
{
    if (index.row() == 0)
        pageList->toggleFold();
}

void ParameterEditor::handleBaseParameter(QByteArray b)
{
    transfer->takeReply(b);
}

void ParameterEditor::showAnswer(int offset, const QByteArray &bytes)
{
    if (transfer->state() == ParameterTransfer::StateReadBatch) {
        batch->showReply(transfer->readsLeft(), bytes);
        return;
    }
    const ParameterPlace place = placeOfOffset(offset);
    if (place.group < 0)
        return;
    if (transfer->state() == ParameterTransfer::StateReadPage && pageList->currentRow() != place.group + 1) {
        pagePace->touch();
        pageList->setCurrentRow(place.group + 1);
    }
    pages.at(place.group)->showReply(place.number, bytes);
}

void ParameterEditor::readCurrentParameter(QStringList dataList)
{
    transfer->readOne(dataList.value(0));
}

void ParameterEditor::writeCurrentParameterToServo(QStringList dataList, bool isWriteRAM)
{
    transfer->writeOne(dataList, isWriteRAM ? ramBase : eepromBase);
}

void ParameterEditor::readPageSlt()
{
    if (!isLinkOpen())
        return;
    QStringList codes;
    for (const QStringList &ofPage : qAsConst(pageCodeLists))
        codes.append(ofPage);
    transfer->readPages(codes);
}

void ParameterEditor::writePageSlt()
{
    transfer->writePages(pages.writeRecords());
}

void ParameterEditor::readRAM(QByteArray)
{
    transfer->sendReadBack();
}

void ParameterEditor::readWriteTimeout()
{
    transfer->timeOut();
}

void ParameterEditor::saveParameters()
{
    saveParameterFile(pages, this);
}

void ParameterEditor::openExistParameter()
{
    openParameterFile(pages, this);
}

void ParameterEditor::editParaSlot()
{
    batch->window()->bringToFront();
}

void ParameterEditor::openCsvSlot()
{
    batch->openFile();
}

void ParameterEditor::saveCsvSlot()
{
    batch->saveFile();
}

void ParameterEditor::readParaCsvSlot()
{
    batch->readAll();
}

void ParameterEditor::writeCsvSlot()
{
    batch->writeTicked();
}

void ParameterEditor::newRowSlot()
{
    batch->newRow();
}

void ParameterEditor::deleteRowSlot()
{
    batch->deleteRow();
}

void ParameterEditor::selectAllSlot()
{
    batch->tickAll(true);
}

void ParameterEditor::deselectAllSlot()
{
    batch->tickAll(false);
}

void ParameterEditor::Csv_DoubleClickedSlot(int, int col)
{
    batch->beginEditing(col);
}

void ParameterEditor::Csv_ValueChangedSlot(int row, int col)
{
    batch->takeChange(row, col);
}

void ParameterEditor::doPrintPreviewSlot()
{
    print->preview();
}

void ParameterEditor::printPreviewSlot(QPrinter *printer)
{
    print->paint(printer);
}

void ParameterEditor::createPDFSlot()
{
    print->createPdf();
}

void ParameterEditor::changeEvent(QEvent *event)
{
    QScrollArea::changeEvent(event);
    if (event->type() == QEvent::WindowStateChange)
        emit windowStateChanged(reportedWindowState(this, isClosing));
}

void ParameterEditor::hideEvent(QHideEvent *event)
{
    QScrollArea::hideEvent(event);
    emit windowStateChanged(QString());
}

void ParameterEditor::closeEvent(QCloseEvent *event)
{
    isClosing = true;
    {
        QSettings settings(settingsFile, QSettings::IniFormat);
        settings.beginGroup(settingskey::splitterSizes);
        settings.setValue(settingskey::splitterSizes, splitter->saveState());
    }
    emit subWindowClosed();
    QScrollArea::closeEvent(event);
}
