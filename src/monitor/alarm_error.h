// SPDX-License-Identifier: GPL-3.0-or-later
// The drive's present warning and fault in words, and the button that resets a fault.
// Main thread; owned by Parameter_Monitor.
#pragma once

#include <QByteArray>
#include <QList>
#include <QStringList>
#include <QWidget>

#include <array>

class FaultHistory;
class QGridLayout;
class QLineEdit;
class QPushButton;

class Alarm_Error : public QWidget
{
    Q_OBJECT

public:
    // The history gets the fault catalogue, once.
    explicit Alarm_Error(FaultHistory *history, QWidget *parent = nullptr);

signals:
    // Rows of code, name, cause and corrective.
    void sendFaultInformation(QList<QStringList> information);
    void sendFaultClearSignal();

public slots:
    // The number of the present warning or fault as two bytes; 0 is none.
    void handAlarmErrorSlot(QByteArray bytes, int address);
    void faultResetBntClicked();

private:
    enum Field { CurrentField, NameField, CauseField, CorrectiveField, FieldCount };
    using Fields = std::array<QLineEdit *, FieldCount>;

    void loadCatalogue();
    void buildPanel();
    static QGridLayout *buildGrid(const QStringList &labels, const QStringList &objectNames, Fields *fields);
    static void showRow(const QList<QStringList> &catalogue, const QString &code, const Fields &fields);
    void clearAlarm();
    void clearFault();
    void updateLamp();
    void setLamp(const QString &style, bool isEnabled);

    QList<QStringList> alarmCatalogue;
    QList<QStringList> faultCatalogue;
    Fields alarmFields{};
    Fields faultFields{};
    QPushButton *faultResetButton = nullptr;
};
