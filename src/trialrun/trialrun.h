// SPDX-License-Identifier: GPL-3.0-or-later
// The trial run: takes the drive over, lets the user run the motor by JOG and between two positions, and
// gives the drive back as it was. The one window that moves a motor: what is held is held by the hand.
// Main thread; owned by its MDI sub-window, deletes itself on close.
#pragma once

#include "trialrun/jogstep.h"
#include "trialrun/positionstep.h"
#include "trialrun/trialstage.h"

#include <QByteArray>
#include <QScrollArea>

class HoldButton;
class QTableWidgetItem;
class TrialRunPage;
class TrialSequence;
class TrialTable;

class TrialRun : public QScrollArea
{
    Q_OBJECT

public:
    explicit TrialRun(QWidget *parent = nullptr);
    ~TrialRun() override;

    static QString title();

    // Tells a cell that is no number of the range's kind, and is false then.
    bool checkCellInput(const QString &rangeText, const QString &cellText);

signals:
    void writeToSerialPort(QByteArray data, QString windowName = "");
    // What this window has queued and the link has not sent must not be sent any more.
    void withdrawRequests(QString windowName);
    void closeTrialRunWindow();
    void windowStateChanged(QString windowTitle);

public slots:
    void handleTrialRun(QByteArray b);
    // The link's worker has ended.
    void linkEnded();
    void saveInitValue();
    void initWrite();
    void nextStepSlt();
    void previousStepSlt();
    void jogTableWidgetCellClicked(int row, int column);
    void operationTableWidgetCellClicked(int row, int column);
    void buttonReleasedSlt();

    void servoOnSlt();
    void servoOFFSlt();
    void jogforewardPressedSlt();
    void jogforewardReleasedSlt();
    void jogrollbackPressedSlt();
    void jogrollbackReleasedSlt();
    void readJogValues();
    void readAbsolutePosition();
    void jogitemChanged(QTableWidgetItem *item);

    void singleBtnToggledSlt(bool checked);
    void continuousBtnToggledSlt(bool checked);
    void positionforewardPressedSlt();
    void positionforewardReleasedSlt();
    void positionrollbackPressedSlt();
    void positionrollbackReleasedSlt();
    void positionPauseBtnSlt();
    void positionItemChanged(QTableWidgetItem *item);

protected:
    void changeEvent(QEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    void connectSequence();
    void connectPage();
    void takeValue(TrialStage readIn, int address, const QByteArray &bytes);
    void showMotionEnded();
    void endHolds();
    bool checkCell(TrialTable *table, const QTableWidgetItem *item);
    void finishClosing(bool failed);

    TrialSequence *sequence = nullptr;
    TrialRunPage *page = nullptr;
    JogStep jogStep;
    PositionStep positionStep;
    bool isClosing = false;
};
