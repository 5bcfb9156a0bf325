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
#include "parameter/parameterframes.h"
#include "parameter/parameterpagelist.h"
#include "parameter/parametertable.h"
#include "settings/settingskeys.h"
#include "widgets/heldprogressdialog.h"
#include "widgets/messages.h"
#include "widgets/windowstate.h"

#include <QCloseEvent>
#include <QSettings>
#include <QSplitter>
#include <QStackedWidget>

namespace {

constexpr int replyTimeout = 1000; // ms
constexpr int equalReadBacks = 3;

// Shared by all editors of the process, and kept when a transfer ends with a time-out.
quint16 readProgress = 0;
quint16 writeProgress = 0;
quint8 confirmCount = 0;

} // namespace

ParameterEditor::ParameterEditor(QWidget *parent)
    : QScrollArea(parent)
{
    for (int i = 0; i < parameterGroupCount; ++i)
        pageCodeLists.append(QStringList());
    doubleAddressList = readDoubleAddressList(QStringLiteral(":/config/config/address.txt"));

    replyTimer.setInterval(replyTimeout);
    connect(&replyTimer, &QTimer::timeout, this, &ParameterEditor::readWriteTimeout);
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

bool ParameterEditor::isRegisterPair(const QString &code) const
{
    return doubleAddressList.contains(shortCode(code));
}

void ParameterEditor::send(const QByteArray &frame)
{
    emit writeToSerialPort(frame, editorLinkName);
    lastRegisterBytes = frame.mid(2, 2);
}

void ParameterEditor::handleBaseParameter(QByteArray b)
{
    // Nobody waits for this one: it comes after the time-out that ended its transfer, or answers the probe of
    // a restarted link, which goes to the window that asked last. The state outlives a transfer, so such a
    // reply would be shown as another parameter's value, or set an ended write going again.
    if (!replyTimer.isActive())
        return;
    replyTimer.stop();
    switch (requestState) {
    case StateReadCurrent:
        showReplyInTable(b, false);
        break;
    case StateReadPage:
        // The state outlives the read, and a restarted link's probe is answered to the window that asked
        // last: without a code in flight the reply means nothing.
        if (readQueue.isEmpty())
            break;
        showReplyInTable(b, true);
        readQueue.removeFirst();
        sendNextRead();
        break;
    case StateWritePage:
        readRAM(b);
        break;
    case StateVerifyWrite:
        compareReadBack(b);
        break;
    case StateReadBatch:
        takeBatchReply(b);
        break;
    default:
        break;
    }
}

void ParameterEditor::showReplyInTable(const QByteArray &reply, bool follow)
{
    const int offset = lastRegisterBytes.toHex().toInt(nullptr, 16) - ramBase;
    const ParameterPlace place = placeOfOffset(offset);
    if (place.group < 0)
        return;
    if (follow)
        pageList->setCurrentRow(place.group + 1);
    pages.at(place.group)->showReply(place.number, replyData(reply));
}

void ParameterEditor::readCurrentParameter(QStringList dataList)
{
    replyTimer.start();
    requestState = StateReadCurrent;
    const QString code = dataList.value(0);
    send(parameterReadFrame(code, isRegisterPair(code)));
}

void ParameterEditor::writeCurrentParameterToServo(QStringList dataList, bool isWriteRAM)
{
    replyTimer.start();
    requestState = StateWriteCurrent;
    send(parameterWriteFrame(dataList, isWriteRAM ? ramBase : eepromBase));
}

void ParameterEditor::showProgress(const QString &label, int total)
{
    if (!progressDialog->isHidden())
        return;
    progressDialog->setRange(0, total + 1);
    progressDialog->setLabelText(label);
    // A batch write that ran into a time-out has left its flag.
    const bool isBatchRun =
        requestState == StateReadBatch || (requestState == StateWritePage && batchWriteFlag);
    progressDialog->showOver(isBatchRun ? static_cast<QWidget *>(batch.get()) : this);
}

void ParameterEditor::readPageSlt()
{
    if (!isLinkOpen())
        return;
    for (const QStringList &codes : qAsConst(pageCodeLists))
        readQueue.append(codes);
    readTotal = readQueue.size();
    requestState = StateReadPage;
    sendNextRead();
}

void ParameterEditor::sendNextRead()
{
    if (readQueue.isEmpty()) {
        finishRead();
        return;
    }
    replyTimer.start();
    showProgress(tr("Reading..."), readTotal);
    progressDialog->showValue(++readProgress);
    // A page read goes by the full code of the catalogue, and there the tilde marks a pair.
    const QString code = readQueue.first();
    send(parameterReadFrame(code, code.contains(QLatin1Char('~'))));
}

void ParameterEditor::finishRead()
{
    replyTimer.stop();
    progressDialog->close();
    showMessage(tr("Parameters reading completed"));
    readProgress = 0;
}

void ParameterEditor::writePageSlt()
{
    writeQueue.clear();
    writeTotal = 0;
    batchWriteFlag = false; // a batch write that ran into a time-out has left it
    requestState = StateWritePage;
    for (const ParameterTable *page : qAsConst(pages)) {
        for (int row = 0; row < page->rowCount(); ++row) {
            if (!page->isLeftOutOfWrites(row))
                writeQueue.append(page->writeRecord(row));
        }
    }
    writeTotal = writeQueue.size();
    sendNextWrite();
}

void ParameterEditor::sendNextWrite()
{
    replyTimer.start();
    showProgress(tr("Writing..."), writeTotal);
    if (writeQueue.isEmpty()) {
        finishWrite();
        return;
    }
    send(parameterWriteFrame(writeQueue.first(), eepromBase));
    progressDialog->showValue(++writeProgress);
}

void ParameterEditor::readRAM(QByteArray)
{
    if (writeQueue.isEmpty())
        return;
    requestState = StateVerifyWrite;
    replyTimer.start();
    const QString code = writeQueue.first().value(0);
    send(parameterReadFrame(code, isRegisterPair(code)));
}

void ParameterEditor::compareReadBack(const QByteArray &reply)
{
    if (writeQueue.isEmpty())
        return;
    if (judgeReadBack(reply, writeQueue.first()) != ReadBack::Equal) {
        // Asked again without a limit: the value is not in the drive until the drive says so.
        readRAM(reply);
    } else if (confirmCount < equalReadBacks - 1) {
        ++confirmCount;
        readRAM(reply);
    } else {
        confirmCount = 0;
        writeQueue.removeFirst();
        requestState = StateWritePage;
        sendNextWrite();
    }
}

void ParameterEditor::finishWrite()
{
    replyTimer.stop();
    progressDialog->showValue(writeTotal);
    progressDialog->close();
    if (!batchWriteFlag) {
        for (ParameterTable *page : qAsConst(pages))
            page->resetValueColours();
    }
    batchWriteFlag = false;
    requestState = StateIdle;
    showMessage(tr("Parameters writing completed"));
    writeProgress = 0;
}

void ParameterEditor::readWriteTimeout()
{
    replyTimer.stop();
    progressDialog->close();
    if (requestState >= 1 && requestState <= StateReadPage)
        showMessage(tr("Request Timeout!"));
    else if (requestState >= StateWritePage && requestState <= 7)
        showMessage(tr("Write Timeout!"));
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
