// SPDX-License-Identifier: GPL-3.0-or-later
#include "gaintuning/gaintuning.h"
#include "ui_gaintuning.h"

#include "gaintuning/gainfields.h"
#include "gaintuning/gainfieldwidgets.h"
#include "gaintuning/gaintuningframes.h"
#include "gaintuning/gaintuninglink.h"
#include "gaintuning/rigiditychart.h"
#include "gaintuning/rigiditytable.h"
#include "link/windownames.h"
#include "widgets/windowstate.h"

#include <QCloseEvent>
#include <QTimer>

#include <utility>

using namespace gaintuning;

namespace {

constexpr int valueColumn = GainFieldWidgets::valueColumn;
constexpr int firstGain = FieldInertiaRatio;
constexpr int firstTableGain = 5; // the four fields that a rigidity grade fills
constexpr int lastTableGain = 8;
constexpr int fieldsPerNotch = 3;
constexpr int notches = 4;
constexpr int notchModes = 5;

} // namespace

GainTuning::GainTuning(QWidget *parent)
    : QWidget(parent)
    , ui(std::make_unique<Ui::GainTuning>())
    , link(new GainTuningLink(this))
{
    setStyleSheet(QStringLiteral("font:\"微软雅黑\";"));
    ui->setupUi(this);
    fields = std::make_unique<GainFieldWidgets>(this, ui->tableWidget);
    // What only shows looks as if nothing could be typed into it. A palette would be lost when the window is
    // put into the MDI area.
    ui->scrollAreaWidgetContents->setStyleSheet(
        QStringLiteral("QLineEdit[readOnly=\"true\"] {background: rgb(240, 240, 240);}"));
    ui->comBoxGainMode->setCurrentIndex(-1);
    ui->comBoxNotchMode->setCurrentIndex(-1);
    buildTable();
    buildFocusRules();
    showOnlineMode(false);
    chart = new RigidityChart;
    // The view comes with a chart of its own and gives it away for another one.
    const std::unique_ptr<QtCharts::QChart> emptyChart(ui->chartViewBar->chart());
    ui->chartViewBar->setChart(chart);
    connectLink();
    QTimer::singleShot(0, this, &GainTuning::writeToSerial);
}

GainTuning::~GainTuning() = default;

void GainTuning::buildTable()
{
    QTableWidget *const table = ui->tableWidget;
    for (QHeaderView *header : {table->horizontalHeader(), table->verticalHeader()}) {
        header->setSectionsClickable(false);
        header->setSectionsMovable(false);
        header->setSectionResizeMode(QHeaderView::Fixed);
    }
    table->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    table->horizontalHeader()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
    const int frame = 2 * table->frameWidth();
    table->setFixedHeight(table->horizontalHeader()->sizeHint().height() + table->verticalHeader()->length() +
                          frame);
}

// The page scrolls, and what the wheel chose on its way would be stored in the drive.
void GainTuning::buildFocusRules()
{
    for (QWidget *box :
         {static_cast<QWidget *>(ui->comBoxoffline), static_cast<QWidget *>(ui->comBoxonline),
          static_cast<QWidget *>(ui->comBoxGainMode), static_cast<QWidget *>(ui->spinBoxRigidityGrade),
          static_cast<QWidget *>(ui->comBoxNotchMode)})
        box->installEventFilter(this);
}

void GainTuning::connectLink()
{
    connect(link, &GainTuningLink::frameReady, this,
            [this](const QByteArray &frame) { emit writeToSerialPort(frame, gainTuningLinkName); });
    connect(link, &GainTuningLink::valueRead, this, &GainTuning::showValue);
    connect(link, &GainTuningLink::firstReadEnds, this, &GainTuning::endFirstRead);
    connect(link, &GainTuningLink::valueMonitored, this, &GainTuning::showMonitoredValue);
    connect(link, &GainTuningLink::batchWritten, this,
            [this] { ui->pbtnSettingsToCurrent->setEnabled(true); });
    connect(link, &GainTuningLink::notchesWritten, this,
            [this] { ui->pbtnSettingsToCurrent_Notch->setEnabled(true); });
}

bool GainTuning::isInitialRead() const
{
    return link->state() == GainTuningLink::InitialRead;
}

void GainTuning::handleGaintuning(QByteArray reply, int address)
{
    link->takeReply(reply, address);
}

void GainTuning::writeToSerial_ReadInertia()
{
    link->fillInertiaReads();
}

void GainTuning::writeToSerial_ReadGainMode()
{
    link->fillGainModeReads();
}

void GainTuning::writeToSerial_ReadVibration()
{
    link->fillVibrationReads();
}

void GainTuning::writeToSerial()
{
    writeToSerial_ReadVibration();
    writeToSerial_ReadInertia();
    writeToSerial_ReadGainMode();
    link->start();
}

void GainTuning::timeout_count()
{
    link->startRound();
}

void GainTuning::showValue(int address, quint32 value)
{
    const QString text = valueText(address, value);
    const int field = fieldOfRegister(address);
    valuesRead.insert(address, value);
    if (field >= 0)
        fields->show(field, text);
    switch (address) {
    case RegisterInertiaRatio:
        ui->lineEditCurrent->setText(text);
        break;
    case RegisterOfflineMode:
        ui->comBoxoffline->setCurrentIndex(int(value));
        break;
    case RegisterOnlineMode:
        ui->comBoxonline->setCurrentIndex(int(value));
        on_radioButtonOnline_clicked(value != 0);
        break;
    case RegisterRigidityGrade:
        ui->spinBoxRigidityGrade->setValue(int(value));
        break;
    case RegisterGainMode:
        if (value < quint32(ui->comBoxGainMode->count()))
            ui->comBoxGainMode->setCurrentIndex(int(value));
        break;
    case RegisterNotchMode:
        ui->comBoxNotchMode->setCurrentIndex(int(value));
        break;
    case RegisterResonance:
        ui->ResonanceFrequency->setText(text);
        break;
    default:
        break;
    }
}

// What the hand changed meanwhile has been written nowhere, and must not stand there as if the drive had it.
void GainTuning::endFirstRead()
{
    const QMap<int, quint32> values = std::exchange(valuesRead, {});
    for (int field = FieldMaximumSpeed; field < FieldInertiaRatio; ++field) {
        const auto value = values.constFind(fieldRegister(field));
        fields->show(field, value == values.constEnd() ? QString() : valueText(fieldRegister(field), *value));
    }
    for (const int mode : {RegisterOfflineMode, RegisterOnlineMode, RegisterRigidityGrade, RegisterGainMode,
                           RegisterNotchMode}) {
        if (values.contains(mode))
            showValue(mode, values.value(mode));
    }
    valuesRead.clear();
}

void GainTuning::showMonitoredValue(int address, quint32 value)
{
    if (address == RegisterCalculatedRatio)
        ui->calculated->setText(valueText(address, value));
    else if (address == RegisterResonance)
        ui->ResonanceFrequency->setText(valueText(address, value));
}

// Inertia identification

void GainTuning::showOnlineMode(bool isOnline)
{
    (isOnline ? ui->radioButtonOnline : ui->radioButtonOffline)->setChecked(true);
    ui->comBoxoffline->setEnabled(!isOnline);
    ui->comBoxonline->setEnabled(isOnline);
    ui->tableWidget->setEnabled(!isOnline);
    ui->btnCalculatedToCurrent->setEnabled(!isOnline);
}

void GainTuning::on_radioButtonOffline_clicked(bool checked)
{
    showOnlineMode(!checked);
    if (!checked || isInitialRead())
        return;
    link->write(storeFrame(RegisterOnlineMode, 0));
    // The 0 has gone out already.
    const QSignalBlocker blocker(ui->comBoxonline);
    ui->comBoxonline->setCurrentIndex(0);
}

void GainTuning::on_radioButtonOnline_clicked(bool checked)
{
    showOnlineMode(checked);
}

void GainTuning::on_comBoxoffline_currentIndexChanged(int index)
{
    if (index < 0 || index > 1)
        return;
    inertiaMode = index == 0 ? 4 : 5;
    link->write(storeFrame(RegisterOfflineMode, index));
}

void GainTuning::on_comBoxonline_currentIndexChanged(int index)
{
    if (index >= 0)
        link->write(storeFrame(RegisterOnlineMode, index));
}

void GainTuning::on_tableWidget_cellDoubleClicked(int, int column)
{
    ui->tableWidget->setEditTriggers(column == valueColumn ? QAbstractItemView::DoubleClicked |
                                                                 QAbstractItemView::EditKeyPressed
                                                           : QAbstractItemView::NoEditTriggers);
}

void GainTuning::on_tableWidget_itemChanged(QTableWidgetItem *item)
{
    if (isInitialRead() || item->text().isEmpty() || !item->tableWidget() || item->column() != valueColumn)
        return;
    const int field = item->row();
    if (fields->check(field))
        link->write(storeFrame(fieldRegister(field), item->text().toInt()));
}

void GainTuning::on_btnCalculatedToCurrent_clicked()
{
    if (isInitialRead() || !fields->check(FieldCalculated))
        return;
    const double ratio = ui->calculated->text().toDouble();
    // Deliberate: cut, not rounded, while the fields show it rounded.
    link->write(storeFrame(RegisterInertiaRatio, int(ratio * fieldScale(FieldInertiaRatio))));
    const QString text = QString::number(ratio, 'f', 1);
    ui->lineEditCurrent->setText(text);
    ui->curInertiaRatio->setText(text);
    // Or the next "==>" of the gains would undo it.
    ui->setInertiaRatio->setText(text);
}

// Gain mode

void GainTuning::showGainsOfGrade()
{
    const RigidityGains &gains = rigidityGains(rigidityGrade);
    ui->setPositionLoopGain->setText(QLatin1String(gains.positionLoopGain));
    ui->setSpeedLoopGain->setText(QLatin1String(gains.speedLoopGain));
    ui->setSpeedLoopIntegralTime->setText(QLatin1String(gains.speedLoopIntegralTime));
    ui->setTorqueFilterTime->setText(QLatin1String(gains.torqueFilterTime));
}

void GainTuning::on_comBoxGainMode_currentIndexChanged(int index)
{
    if (index < 0 || index > 1) {
        gainMode = 1;
        return;
    }
    const bool isManual = index == 0;
    gainMode = isManual ? 2 : 3;
    for (int field = firstTableGain; field <= lastTableGain; ++field)
        fields->setEditable(field, isManual);
    ui->spinBoxRigidityGrade->setEnabled(!isManual);
    if (!isManual)
        showGainsOfGrade();
    link->write(storeFrame(RegisterGainMode, index));
}

void GainTuning::on_spinBoxRigidityGrade_valueChanged(int arg1)
{
    chart->setGrade(arg1);
    rigidityGrade = arg1;
    if (gainMode == 3)
        showGainsOfGrade();
}

QByteArray GainTuning::gainFrame(int field) const
{
    return storeFrame(fieldRegister(field), scaledValue(fields->setting(field)->text(), fieldScale(field)));
}

void GainTuning::on_pbtnSettingsToCurrent_clicked()
{
    if (isInitialRead() || !fields->checkAll(firstGain, FieldLastGain))
        return;
    ui->pbtnSettingsToCurrent->setEnabled(false);
    QByteArray gradeFrame;
    QList<QByteArray> frames;
    for (int field = firstGain; field <= FieldLastGain; ++field) {
        const bool isOfTable = field >= firstTableGain && field <= lastTableGain;
        if (gainMode == 2 || (gainMode == 3 && !isOfTable))
            frames.append(gainFrame(field));
        fields->current(field)->setText(fields->setting(field)->text());
    }
    if (gainMode == 3)
        gradeFrame = storeFrame(RegisterRigidityGrade, ui->spinBoxRigidityGrade->value());
    ui->lineEditCurrent->setText(ui->setInertiaRatio->text());
    link->writeBatch(gradeFrame, frames);
}

// Vibration suppression

void GainTuning::on_comBoxNotchMode_currentIndexChanged(int index)
{
    if (index < 0 || index >= notchModes)
        return;
    notchMode = 10 + index;
    // The drive adapts notch 3, notches 3 and 4, or all by itself.
    static const bool editable[notchModes][notches] = {{true, true, true, true},
                                                       {true, true, false, true},
                                                       {true, true, false, false},
                                                       {false, false, false, false},
                                                       {false, false, false, false}};
    for (int field = FieldFirstNotch; field <= FieldLastNotch; ++field)
        fields->setEditable(field, editable[index][(field - FieldFirstNotch) / fieldsPerNotch]);
    ui->pbtnSettingsToCurrent_Notch->setEnabled(editable[index][0]);
    link->write(storeFrame(RegisterNotchMode, index));
}

QByteArray GainTuning::notchFrame(int notch, int count)
{
    const int first = FieldFirstNotch + notch * fieldsPerNotch;
    QList<int> words;
    for (int field = first; field < first + count * fieldsPerNotch; ++field) {
        const QString text = fields->setting(field)->text();
        words.append(text.toInt());
        fields->current(field)->setText(text);
    }
    return storeFrame(fieldRegister(first), words);
}

void GainTuning::on_pbtnSettingsToCurrent_Notch_clicked()
{
    if (isInitialRead() || !fields->checkAll(FieldFirstNotch, FieldLastNotch))
        return;
    ui->pbtnSettingsToCurrent_Notch->setEnabled(false);
    if (notchMode < 10 || notchMode > 12)
        return;
    QList<QByteArray> frames{notchFrame(0, 2)};
    if (notchMode == 10)
        frames.append(notchFrame(2, 1));
    if (notchMode != 12)
        frames.append(notchFrame(3, 1));
    link->writeNotches(frames);
}

// Window

bool GainTuning::eventFilter(QObject *object, QEvent *event)
{
    return event->type() == QEvent::Wheel || QWidget::eventFilter(object, event);
}

void GainTuning::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::WindowStateChange)
        emit windowStateChanged(reportedWindowState(this, isClosing));
}

void GainTuning::hideEvent(QHideEvent *event)
{
    QWidget::hideEvent(event);
    emit windowStateChanged(QString());
}

void GainTuning::closeEvent(QCloseEvent *event)
{
    isClosing = true;
    // Nothing of a write that has begun follows a closed window.
    disconnect(link, nullptr, this, nullptr);
    QWidget::closeEvent(event);
}
