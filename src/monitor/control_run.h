// SPDX-License-Identifier: GPL-3.0-or-later
// Control method, run parameters of each method, and the button that enables the servo. Sends nothing itself:
// every change is a signal. Main thread; owned by Parameter_Monitor.
#pragma once

#include <QStringList>
#include <QWidget>

#include <array>

class QComboBox;
class QFormLayout;
class QLineEdit;
class QPushButton;
class QTabWidget;

class Control_Run : public QWidget
{
    Q_OBJECT

public:
    explicit Control_Run(QWidget *parent = nullptr);

signals:
    void methodComboBoxchangedSignal(int index);
    void Pn300ComboBoxChangedSignal(int value);
    void LineEditChangedSignal(int index, int value);
    void otherComboBoxChangedSignal(int index, int value);
    void BtnEnableSignal(int index, bool status);
    void readBtnclickedSignal();

public slots:
    void EnableBtnclickedSlot(bool status);
    void methodComboBoxChangedSlot(int index);
    void methodtabChangedSlot(int index);
    void positionComboBoxChangedSlot(int index);
    void LineEditChangedSlot(QString LineStr);
    void LineEditeditingFinishSlot();
    void otherComboBoxChangedSlot(int index);
    // 1 is the auxiliary source, without which no input can be forced.
    void DIDOsourceChangedSlot(int index);
    void DIEnableSlot(bool status);
    // The input, 0 to 15, that has the function "Enabled Servo"; 16 for none.
    void DIEnableNumSlot(int index);
    void readBtnclickedSlot();
    // The values as hexadecimal text, in the order in which the method's parameters are read.
    void handleReadFinishSlot(int index, QStringList readList);
    // A request for inputs is given up: the picture follows the levels that hold.
    void showLevels(int levels);

private:
    enum PositionCombo { SourceCombo, ShapeCombo, TerminalCombo, WidthCombo, PositionComboCount };
    static constexpr int editCount = 10;
    static constexpr int otherCount = 3;

    void buildPanel();
    QWidget *buildHead();
    QWidget *buildPositionTab();
    QWidget *buildSpeedTab();
    QWidget *buildTorqueTab();
    static QComboBox *addCombo(QFormLayout *form, const QString &label, const QString &name,
                               const QStringList &items);
    void addOther(QFormLayout *form, int index, const QString &label, const QStringList &items);
    void addEdit(QFormLayout *form, int index, const QString &label, const QString &text);
    static QStringList pulseWidths(int terminal);
    void fillPulseWidths();
    void setEnablePicture(bool isOn);
    void showPosition(const QStringList &values);
    void showSpeed(const QStringList &values);
    void showTorque(const QStringList &values);
    void showOther(int index, const QString &value);
    void showEdit(int index, const QString &text);

    int enableDINumber = 16;      // row of the input that enables the servo; 16 for none
    int pn300Value = 0;           // as last sent, in decimal digits
    int lineEditIndexChanged = 0; // the last edited field
    int lineEditValueChanged = 0; // and its number for the drive
    bool lineEditDirty = false;

    QPushButton *enableButton = nullptr;
    QPushButton *readButton = nullptr;
    QComboBox *methodComboBox = nullptr;
    QTabWidget *methodTabs = nullptr;
    std::array<QComboBox *, PositionComboCount> positionCombos{};
    std::array<QComboBox *, otherCount> otherCombos{};
    std::array<QLineEdit *, editCount> lineEdits{};
};
