// SPDX-License-Identifier: GPL-3.0-or-later
// Where the drive takes its inputs and outputs from, which function each has, and their forced levels. Sends
// nothing itself: every change is a signal. Main thread; owned by Parameter_Monitor.
#pragma once

#include "catalogue/didocatalogue.h"

#include <QByteArray>
#include <QList>
#include <QWidget>

#include <array>

class QComboBox;
class QGridLayout;
class QPushButton;

class io_control : public QWidget
{
    Q_OBJECT

public:
    explicit io_control(QWidget *parent = nullptr);

signals:
    void DIsourceChangedSignal(int index);
    void DOsourceChangedSignal(int index);
    void DIfunctionChangedSignal(int num, int index);
    void DOfunctionChangedSignal(int num, int index);
    void DIBtnclickedSignal(int DIstatus);
    void DOBtnclickedSignal(int DOstatus);
    void DIEnableSignal(bool status);
    void DIEnableNumSignal(int index);

public slots:
    void DIBtnclickedSlot(bool status);
    void DOBtnclickedSlot(bool status);
    // A function register that was polled; never leads to a write.
    void handleio_DIDOFuncSlot(QByteArray bytes, int address);
    void ComboBoxChangedSlot(int index);
    // The servo button of the other panel forces input index, 0 to 15.
    void handleBtnEnableSlot(int index, bool status);
    // A request for levels is given up: buttons and words go back to the levels that hold.
    void restoreDILevels(int levels);
    void restoreDOLevels(int levels);

private:
    static constexpr int rowCount = 16;

    // The inputs, or the outputs.
    struct Half
    {
        QComboBox *source = nullptr;
        std::array<QComboBox *, rowCount> functions{};
        std::array<QPushButton *, rowCount> buttons{};
        quint32 levels = 0; // one bit a row
    };

    void buildHalf(Half *half, QGridLayout *grid, int column, const QString &name,
                   const QList<DidoFunction> &rows, const QStringList &sources);
    static int rowOf(const Half &half, const QObject *button);
    static int rowOfFunction(const Half &half, const QObject *combo);
    static void setLevel(Half *half, int row, bool isHigh);
    static void restore(Half *half, int levels);
    void reportEnableRow();

    Half inputs;
    Half outputs;
    QList<DidoFunction> diFunctionRows;
    QList<DidoFunction> doFunctionRows;
};
