// SPDX-License-Identifier: GPL-3.0-or-later
// The window of all drive parameters: twelve pages, which the drive fills and which are written to it. Main
// thread; a sub-window of MainWindow that deletes itself on close.
#pragma once

#include "parameter/parameterpages.h"
#include "parameter/parametertransfer.h"

#include <QByteArray>
#include <QList>
#include <QModelIndex>
#include <QScrollArea>
#include <QStringList>

#include <memory>

class DrawingPace;
class ParameterBatchControl;
class ParameterPageList;
class ParameterPrintControl;
class QPrinter;
class QSplitter;
class QStackedWidget;
class ReadXmlThread;

class ParameterEditor : public QScrollArea
{
    Q_OBJECT

public:
    explicit ParameterEditor(QWidget *parent = nullptr);
    ~ParameterEditor() override;

signals:
    void writeToSerialPort(QByteArray data, QString windowName);
    void writeToSerialPort(QByteArray data);
    // What the window has asked for and what has not left yet is not to leave any more.
    void withdrawRequests(QString windowName);
    // The title when the window becomes maximized, an empty text when it stops being so.
    void windowStateChanged(QString title);
    void subWindowClosed();

public slots:
    void readCurrentParameter(QStringList dataList);
    void writeCurrentParameterToServo(QStringList dataList, bool isWriteRAM);
    void saveParameters();
    void handleBaseParameter(QByteArray b);
    void readPageSlt();
    void openExistParameter();
    void writePageSlt();
    void openCsvSlot();
    void saveCsvSlot();
    void writeCsvSlot();
    void newRowSlot();
    void deleteRowSlot();
    void editParaSlot();
    void readParaCsvSlot();
    void selectAllSlot();
    void deselectAllSlot();
    // Turns the batch table's editing on for a code or a value and off for the rest, and listens to its next
    // change.
    void Csv_DoubleClickedSlot(int row, int col);
    // Fills a batch row from the page that holds its code, and listens no longer.
    void Csv_ValueChangedSlot(int row, int col);
    // Shows all pages as they would be printed, and prints them from there.
    void doPrintPreviewSlot();
    void printPreviewSlot(QPrinter *printer);
    // Asks for a name and writes all pages to a PDF file.
    void createPDFSlot();
    void readWriteTimeout();
    // Sends the read-back of the head of the write queue; the reply that it follows is not looked at.
    void readRAM(QByteArray b);
    void listWidgetcurrentRowChanged(int index);
    void listWidgetClicked(QModelIndex index);
    void readXml(int index, QStringList values, QStringList description);
    void readXmlFinished();
    void communicationLostSlot();
    // The link's worker has ended. Nothing is said; a request that was under way will be overdue.
    void linkEnded();

protected:
    void changeEvent(QEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    void buildTransfer();
    void buildWindow();
    QSplitter *buildPages();
    void loadCatalogue();
    void showAnswer(int offset, const QByteArray &bytes);

    ParameterPages pages; // one a group
    ParameterPageList *pageList = nullptr;
    QStackedWidget *pageStack = nullptr;
    DrawingPace *pagePace = nullptr; // of the pages that a read turns over
    QSplitter *splitter = nullptr;
    QList<QStringList> pageCodeLists; // full codes of each group, as the catalogue writes them
    ReadXmlThread *readXmlThread = nullptr;
    ParameterTransfer *transfer = nullptr;
    ParameterPrintControl *print = nullptr;
    std::unique_ptr<ParameterBatchControl> batch;
    bool isClosing = false; // the MDI area still reports a state after a maximized window has gone
};
