// SPDX-License-Identifier: GPL-3.0-or-later
#include "monitor/alarm_error.h"

#include "catalogue/alarmcatalogue.h"
#include "link/replies.h"
#include "monitor/faulthistory.h"
#include "monitor/monitorpanel.h"
#include "monitor/polltable.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

constexpr int lampSize = 45; // pixels
constexpr int lampColumn = 4;

// The blanks belong to the texts; the style at the start has four fewer of them.
const QString redStyle =
    QStringLiteral("background-color: rgb(255, 0, 0);%1%2")
        .arg(QString(40, QLatin1Char(' ')), QLatin1String("border-radius:22px;border:1px solid black;"));
const QString greyStyle =
    QStringLiteral("background-color: rgb(232, 238, 247);%1%2")
        .arg(QString(40, QLatin1Char(' ')), QLatin1String("border-radius:22px;border:1px solid black;"));
const QString startStyle =
    QStringLiteral("background-color: rgb(232, 238, 247);%1%2")
        .arg(QString(36, QLatin1Char(' ')), QLatin1String("border-radius:22px;border:1px solid black;"));

// A text that stands there already is left alone, with whatever the user has marked in it.
void setText(QLineEdit *edit, const QString &text)
{
    if (edit->text() == text)
        return;
    edit->setText(text);
    edit->setCursorPosition(0);
}

// Not where the user is reading.
void showBeginning(QLineEdit *edit)
{
    if (!edit->hasFocus() && edit->cursorPosition() != 0)
        edit->setCursorPosition(0);
}

} // namespace

Alarm_Error::Alarm_Error(FaultHistory *history, QWidget *parent)
    : QWidget(parent)
{
    buildPanel();
    loadCatalogue();
    if (history)
        connect(this, &Alarm_Error::sendFaultInformation, history, &FaultHistory::receiveFaultInformation);
    emit sendFaultInformation(faultCatalogue);
    setFont(monitorFont());
}

void Alarm_Error::loadCatalogue()
{
    // Deliberate: "exit" stands where "exist" is meant.
    const AlarmCatalogue catalogue = readAlarmCatalogue(
        loadMonitorCatalogue(this, QStringLiteral(":/AlarmErrorInfor/AlarmError/AlarmError"),
                             {tr("Open Failed"), tr("File does not exit"), tr("Failed opening xmlFile")}));
    alarmCatalogue = catalogue.alarms;
    faultCatalogue = catalogue.faults;
}

void Alarm_Error::buildPanel()
{
    // Deliberate: "Alaem" is so spelt.
    QGridLayout *const alarmGrid = buildGrid(
        {tr("Alarm Current"), tr("Alarm Name"), tr("Alaem Cause"), tr("Alarm Corrective")},
        {"alarmCurrentEdit", "alarmNameEdit", "alarmCauseEdit", "alarmCorrectiveEdit"}, &alarmFields);
    QGridLayout *const faultGrid = buildGrid(
        {tr("Fault Current"), tr("Fault Name"), tr("Fault Cause"), tr("Fault Corrective")},
        {"faultCurrentEdit", "faultNameEdit", "faultCauseEdit", "faultCorrectiveEdit"}, &faultFields);

    faultResetButton = new QPushButton(tr("Fault\nReset"));
    faultResetButton->setObjectName(QStringLiteral("faultResetButton"));
    faultResetButton->setFixedSize(lampSize, lampSize);
    // A widget with a style sheet of its own does not take its parent's font.
    faultResetButton->setFont(monitorFont());
    setLamp(startStyle, false);
    connect(faultResetButton, &QPushButton::clicked, this, &Alarm_Error::faultResetBntClicked);
    faultGrid->addWidget(faultResetButton, 0, lampColumn, 2, 2);

    auto *group = new QGroupBox(tr("Alarm and Fault"));
    auto *inside = new QVBoxLayout(group);
    inside->setContentsMargins(4, 2, 4, 2);
    inside->addLayout(alarmGrid);
    inside->addLayout(faultGrid);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(group);
}

QGridLayout *Alarm_Error::buildGrid(const QStringList &labels, const QStringList &objectNames, Fields *fields)
{
    constexpr std::array<int, FieldCount> columnSpans{1, 1, 3, 4};
    auto *grid = new QGridLayout;
    grid->setSpacing(2);
    for (int i = 0; i < FieldCount; ++i) {
        auto *edit = new QLineEdit;
        edit->setObjectName(objectNames.at(i));
        edit->setReadOnly(true);
        fields->at(std::size_t(i)) = edit;
        grid->addWidget(new QLabel(labels.at(i)), i, 0);
        grid->addWidget(edit, i, 1, 1, columnSpans.at(std::size_t(i)));
    }
    // The column of one-cell fields takes the width that the lamp leaves.
    grid->setColumnStretch(1, 1);
    return grid;
}

void Alarm_Error::handAlarmErrorSlot(QByteArray bytes, int address)
{
    const int number = int(unsignedNumber(bytes));
    if (address == monitorregister::warningCode) {
        showRow(alarmCatalogue, alarmCode(number), alarmFields);
        if (number == 0)
            clearAlarm();
        for (QLineEdit *edit : alarmFields)
            showBeginning(edit);
    } else if (address == monitorregister::errorCode) {
        showRow(faultCatalogue, faultCode(number), faultFields);
        if (number == 0)
            clearFault();
        for (QLineEdit *edit : faultFields)
            showBeginning(edit);
    }
    updateLamp();
}

// A code without a row changes nothing; of several rows the last one shows.
void Alarm_Error::showRow(const QList<QStringList> &catalogue, const QString &code, const Fields &fields)
{
    for (const QStringList &row : catalogue) {
        if (row.value(CurrentField) != code)
            continue;
        for (int i = 0; i < FieldCount; ++i) {
            setText(fields.at(std::size_t(i)), row.value(i));
            if (i != CurrentField)
                fields.at(std::size_t(i))->setToolTip(row.value(i));
        }
    }
}

void Alarm_Error::clearAlarm()
{
    for (QLineEdit *edit : alarmFields)
        setText(edit, QString());
    // Deliberate: the tool tip of the name stays after the alarm has gone.
    alarmFields.at(CauseField)->setToolTip(QString());
    alarmFields.at(CorrectiveField)->setToolTip(QString());
}

void Alarm_Error::clearFault()
{
    for (QLineEdit *edit : faultFields) {
        setText(edit, QString());
        edit->setToolTip(QString());
    }
}

// A fault lights it, an alarm never does.
void Alarm_Error::updateLamp()
{
    const bool isFault = !faultFields.at(CurrentField)->text().isEmpty();
    setLamp(isFault ? redStyle : greyStyle, isFault);
}

void Alarm_Error::setLamp(const QString &style, bool isEnabled)
{
    if (faultResetButton->styleSheet() != style)
        faultResetButton->setStyleSheet(style);
    faultResetButton->setEnabled(isEnabled);
}

void Alarm_Error::faultResetBntClicked()
{
    faultResetButton->setEnabled(false);
    emit sendFaultClearSignal();
}
