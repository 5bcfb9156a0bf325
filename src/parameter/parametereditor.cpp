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
#include "parameter/parameterpagelist.h"
#include "parameter/parametertable.h"
#include "parameter/parametertransfer.h"
#include "settings/settingskeys.h"
#include "widgets/messages.h"
#include "widgets/runprogressdialog.h"

#include <QCloseEvent>
#include <QSettings>
#include <QSplitter>
#include <QStackedWidget>

ParameterEditor::ParameterEditor(QWidget *parent)
    : QScrollArea(parent)
{
    for (int i = 0; i < parameterGroupCount; ++i)
        pageCodeLists.append(QStringList());
    transfer =
        new ParameterTransfer(readDoubleAddressList(QStringLiteral(":/config/config/address.txt")), this);
    connect(transfer, &ParameterTransfer::frameReady, this,
            [this](const QByteArray &frame) { emit writeToSerialPort(frame, editorLinkName); });
    connect(transfer, &ParameterTransfer::withdrawn, this, [this] { emit withdrawRequests(editorLinkName); });
    connect(transfer, &ParameterTransfer::answered, this, &ParameterEditor::showAnswer);
    connect(transfer, &ParameterTransfer::progress, this, &ParameterEditor::showProgress);
    connect(transfer, &ParameterTransfer::ended, this, &ParameterEditor::finishTransfer);
    buildWindow();
    buildBatchWindow();
    loadCatalogue();
}

ParameterEditor::~ParameterEditor()
{
    readXmlThread->requestInterruption();
    readXmlThread->wait();
}

QString ParameterEditor::title()
{
    return tr("Parameter Editor");
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
    if (index < 0 || index >= pages.size())
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
        // What an earlier read has left in the queue comes before the first row and is shown nowhere.
        batch->showReply(batch->table()->rowCount() - transfer->readsLeft(), bytes);
        return;
    }
    const ParameterPlace place = placeOfOffset(offset);
    if (place.group < 0)
        return;
    if (transfer->state() == ParameterTransfer::StateReadPage)
        pageList->setCurrentRow(place.group + 1);
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

void ParameterEditor::showProgress(int value, int total)
{
    if (progressDialog->isHidden()) {
        progressDialog->setRange(0, total + 1);
        progressDialog->setLabelText(transfer->isWriting() ? tr("Writing...") : tr("Reading..."));
        progressDialog->showOver(transfer->isBatchRun() ? static_cast<QWidget *>(batch.get()) : this);
    }
    progressDialog->showValue(value);
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
    QList<QStringList> records;
    for (const ParameterTable *page : qAsConst(pages)) {
        for (int row = 0; row < page->rowCount(); ++row) {
            if (!page->isLeftOutOfWrites(row))
                records.append(page->writeRecord(row));
        }
    }
    transfer->writePages(records);
}

void ParameterEditor::readRAM(QByteArray)
{
    transfer->sendReadBack();
}

void ParameterEditor::readWriteTimeout()
{
    transfer->timeOut();
}

void ParameterEditor::finishTransfer(ParameterTransfer::End end)
{
    progressDialog->finish();
    switch (end) {
    case ParameterTransfer::End::ReadDone:
        showMessage(tr("Parameters reading completed"));
        break;
    case ParameterTransfer::End::WriteDone:
        for (ParameterTable *page : qAsConst(pages))
            page->resetValueColours();
        showMessage(tr("Parameters writing completed"));
        break;
    case ParameterTransfer::End::BatchWriteDone:
        showMessage(tr("Parameters writing completed"));
        break;
    case ParameterTransfer::End::RequestTimeout:
        showMessage(tr("Request Timeout!"));
        break;
    case ParameterTransfer::End::WriteTimeout:
        showMessage(tr("Write Timeout!"));
        break;
    case ParameterTransfer::End::SilentTimeout:
    case ParameterTransfer::End::Cancelled:
        break;
    }
}

void ParameterEditor::changeEvent(QEvent *event)
{
    QScrollArea::changeEvent(event);
    if (event->type() == QEvent::WindowStateChange)
        emit windowStateChanged(isMaximized() && !isClosing ? windowTitle() : QString());
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
