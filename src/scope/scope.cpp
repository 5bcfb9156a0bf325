// SPDX-License-Identifier: GPL-3.0-or-later
#include "scope/scope.h"

#include "link/linkstate.h"
#include "link/windownames.h"
#include "scope/channelconfig.h"
#include "scope/channelpanels.h"
#include "scope/plotter.h"
#include "scope/readplotdata.h"
#include "scope/sampledecoding.h"
#include "scope/scopefiles.h"
#include "scope/scopereplay.h"
#include "scope/scopesidepanel.h"
#include "scope/scopetoolbar.h"
#include "scope/scopeview.h"
#include "settings/settingskeys.h"
#include "widgets/messages.h"

#include <QAction>
#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QDebug>
#include <QLineEdit>
#include <QMetaMethod>
#include <QRadioButton>
#include <QSettings>
#include <QTimer>

#include <algorithm>

Scope::Scope(QWidget *parent)
    : ScopeWindow(parent)
    , acquisition(new ScopeAcquisition(scopeItems, this))
    , replay(new ScopeReplay(this))
{
    connect(this, &Scope::sendPlotterDataSignal, plot, &Plotter::receivePlotterDataScopeSlot);
    connect(this, &Scope::sendScopeIsStopSignal, plot, &Plotter::receiveScopIsStopSlot);
    connect(plot, &Plotter::sendMoveLineYSignal, this, &Scope::setchannelConfigValueSlot);
    connectAcquisition();
    if (view)
        connectWidgets();

    QSettings settings(settingsFile, QSettings::IniFormat);
    settings.beginGroup(settingskey::needSetYaxis);
    if (settings.value(settingskey::needSetYaxis, false).toBool())
        plot->loadYRange();
}

Scope::~Scope()
{
    replay->end(this);
}

void Scope::connectWidgets()
{
    using Tool = ScopeToolBar::Tool;
    connect(tools->action(Tool::Open), &QAction::triggered, this, &Scope::readDataSlot);
    connect(tools->action(Tool::Save), &QAction::triggered, this, &Scope::saveWaveData);
    connect(tools->action(Tool::Clear), &QAction::triggered, this, &Scope::clearSreenSlot);
    connect(tools->action(Tool::Run), &QAction::triggered, this, &Scope::runActSlot);
    for (const ChannelConfig *channel : channels->channels()) {
        connect(channel->checkBox, &QCheckBox::clicked, this, &Scope::hidePlot);
        connect(channel->comboBox, qOverload<int>(&QComboBox::currentIndexChanged), this,
                &Scope::comboxCurrentIndexChanged);
    }
    connect(panel->stopBox, &QCheckBox::clicked, this, &Scope::setStopCondition);
    for (const QRadioButton *button : panel->stopChannelButtons)
        connect(button, &QRadioButton::clicked, this, &Scope::radioButtonClicked);
    for (const QRadioButton *button : panel->stopOperationButtons)
        connect(button, &QRadioButton::clicked, this, &Scope::radioButtonClicked);
}

void Scope::connectAcquisition()
{
    connect(acquisition, &ScopeAcquisition::frameReady, this, &Scope::send);
    connect(acquisition, &ScopeAcquisition::runningChanged, this, &Scope::scopeRuning);
    connect(acquisition, &ScopeAcquisition::batchReady, this, &Scope::showBatch);
    connect(acquisition, &ScopeAcquisition::lastPartOver, this, &Scope::stopReceiveSlot);
    connect(acquisition, &ScopeAcquisition::decimalsChanged, plot, &Plotter::setDecimals);
    connect(acquisition, &ScopeAcquisition::stateChanged, this,
            [this] { tools->showRun(acquisition->offersStop()); });
    connect(replay, &ScopeReplay::over, this, &Scope::stopRun);
}

void Scope::send(const QByteArray &frame)
{
    emit writeToSerialPort(frame, scopeLinkName);
}

// The link asks over the slot that the click toggles, and a run that has ended meanwhile is not to begin
// anew.
bool Scope::isAskedByLink() const
{
    const QObject *const caller = sender();
    return caller && caller->metaObject()->method(senderSignalIndex()).name() == "stopscope";
}

void Scope::runActSlot()
{
    if (!view || (isAskedByLink() && !acquisition->isUnderWay()))
        return;
    if (acquisition->offersStop())
        stopRun();
    else
        startRun();
}

void Scope::startRun()
{
    acquisition->prepare();
    clearSreenSlot();
    emit sendScopeIsStopSignal(false);
    setRunLocked(true);
    if (!isLinkOpen()) {
        acquisition->showWithoutPort();
        return;
    }
    panel->setStopInputsEnabled(false);
    panel->stopBox->setEnabled(false);
    const bool withCondition = panel->stopBox->isChecked();
    if (withCondition) {
        // The fields of the condition stay open: they hold from the next batch on.
        channels->keepOnly(acquisition->condition().channelIndex());
        panel->setStopInputsEnabled(true);
    }
    acquisition->start(channels->settings(), withCondition);
    plot->setLive(true);
}

void Scope::stopRun()
{
    resetMeasurements();
    replay->end(this);
    acquisition->stop();
    panel->stopBox->setEnabled(true);
    panel->setStopInputsEnabled(panel->stopBox->isChecked());
    refreshTypes();
    showEnd();
}

void Scope::stopReceiveSlot()
{
    panel->stopBox->setEnabled(true);
    panel->setStopInputsEnabled(true);
    acquisition->stopByCondition();
    showEnd();
}

void Scope::showEnd()
{
    plot->setLive(false);
    emit sendScopeIsStopSignal(true);
    setRunLocked(false);
    tellIncompleteRecord();
}

// Later, since a link that has been lost waits for this window before it can come back.
void Scope::tellIncompleteRecord()
{
    if (!acquisition->record()->isIncomplete())
        return;
    acquisition->record()->forgetFailure();
    QTimer::singleShot(0, this, [] {
        showMessage(tr("The samples could not all be written to disk, the scope data files are incomplete!"));
    });
}

void Scope::setRunLocked(bool locked)
{
    tools->setPictureToolsEnabled(!locked);
    channels->setInputsEnabled(!locked);
}

void Scope::handleParameterScope(QByteArray b)
{
    if (view)
        acquisition->takeChunk(b, channels->settings(),
                               {panel->stopValueEdit->text().toDouble(), panel->lastForEdit->text().toInt()});
}

void Scope::showBatch(const ScopeSamples &samples, int onlyChannel)
{
    if (onlyChannel >= 0)
        plot->setVisibleAll(onlyChannel == 0, onlyChannel == 1, onlyChannel == 2, onlyChannel == 3, false);
    emit sendPlotterDataSignal(samples[0], samples[1], samples[2], samples[3]);
    for (int channel = 0; channel < scopeChannelCount; ++channel) {
        const QVector<double> &values = samples.at(channel);
        if (onlyChannel < 0 || (onlyChannel == channel && !values.isEmpty()))
            channels->showValue(channel, values.isEmpty() ? 0.0 : values.last(),
                                acquisition->decimals(channel));
    }
}

void Scope::setchannelConfigValueSlot(QVector<double> value)
{
    if (!view)
        return;
    const int count = std::min(value.size(), scopeChannelCount);
    for (int channel = 0; channel < count; ++channel)
        channels->showValue(channel, value.at(channel), acquisition->decimals(channel));
}

void Scope::clearSreenSlot()
{
    panel->tuningBox->setChecked(false);
    for (QCheckBox *box : panel->tuningBoxes) {
        box->setChecked(false);
        box->setEnabled(false);
    }
    plot->clearPlot();
    for (int channel = 0; channel < scopeChannelCount; ++channel) {
        plot->setColor(channel, QColor(colors.channels.at(channel)));
        plot->setVisible(channel, channels->channel(channel)->checkBox->isChecked());
    }
    channels->clearValues();
    plot->repaint();
    acquisition->renewRecord();
}

void Scope::communicationLostSlot()
{
    send(QByteArray());
}

void Scope::closeWindowSlot()
{
    acquisition->haltStream();
}

void Scope::hidePlot(bool state)
{
    channels->limitAfterCheck();
    const int changed = channels->indexOf(sender());
    if (changed >= 0)
        plot->setVisible(changed, state);
    refreshTypes();
    acquisition->reselect(channels->settings());
}

void Scope::comboxCurrentIndexChanged(int)
{
    const int changed = channels->indexOf(sender());
    if (changed < 0)
        return;
    qDebug() << "COMBOX" << sender()->objectName();
    refreshTypes();
    if (channels->channel(changed)->checkBox->isChecked())
        channels->limitAfterItem(changed);
}

void Scope::setStopCondition(bool enable)
{
    panel->setStopInputsEnabled(enable);
    if (!enable) {
        acquisition->setStopCondition({});
        return;
    }
    // Deliberate: whatever the radio buttons show, they count from their next click on.
    acquisition->setStopCondition({QStringLiteral("CH1"), QStringLiteral(">=")});
    tools->showRun(acquisition->offersStop());
    send(QByteArray());
}

void Scope::radioButtonClicked()
{
    acquisition->setStopCondition({panel->stopChannelText(), panel->stopOperationText()});
}

void Scope::saveWaveData()
{
    saveScopeRecord(acquisition->record(), this);
}

void Scope::readDataSlot()
{
    const QString fileName = askForScopeFile();
    if (fileName.isEmpty() || !view)
        return;
    if (acquisition->offersStop())
        stopRun();
    startReplay(fileName);
}

void Scope::startReplay(const QString &fileName)
{
    auto *reader = new ReadPlotData(plot, fileName);
    connect(reader, &ReadPlotData::openFailed, this, &Scope::openFailed, Qt::BlockingQueuedConnection);
    connect(reader, &ReadPlotData::getPnValue, this, &Scope::getPnValue, Qt::BlockingQueuedConnection);
    connect(reader, &ReadPlotData::readFilePlot, this, &Scope::readFilePlot, Qt::BlockingQueuedConnection);
    connect(reader, &ReadPlotData::readFinishSignal, this, &Scope::readFinishSlot,
            Qt::BlockingQueuedConnection);
    connect(reader, &ReadPlotData::fileUnreadable, this, [] { showMessage(tr("Open Scope File Failed!")); });
    plot->clearPlot();
    resetMeasurements();
    acquisition->beginReplay();
    plot->setLive(true);
    emit sendScopeIsStopSignal(false);
    setRunLocked(true);
    plot->setVisibleAll(true, false, false, false, false);
    replay->begin(reader);
}

void Scope::getPnValue(QString pn)
{
    if (!view || !replay->isCurrent(sender()))
        return;
    const int row = channels->rowOf(pn);
    if (row < 0)
        return;
    channels->channel(0)->comboBox->setCurrentIndex(row);
    refreshTypes();
    acquisition->setDecimals(0, sampleFormat(scopeItems, pn).decimals);
}

void Scope::readFilePlot(QVector<double> saveData)
{
    if (!view || !replay->isCurrent(sender()) || saveData.isEmpty())
        return;
    channels->channel(0)->dataEdit->setText(QString::number(saveData.last(), 'g', 6));
    plot->receivePlotterDataScopeSlot(saveData, {}, {}, {});
}

void Scope::readFinishSlot()
{
    if (replay->isCurrent(sender()))
        replay->finishLater();
}

// Later, so that the reader does not wait for the user.
void Scope::openFailed()
{
    if (replay->isCurrent(sender()))
        QTimer::singleShot(0, this, [] { showMessage(tr("Open Scope Data File Error!")); });
}

void Scope::closeEvent(QCloseEvent *event)
{
    isClosing = true;
    if (view) {
        const bool keepsRange = panel->keepRangeBox->isChecked();
        QSettings settings(settingsFile, QSettings::IniFormat);
        settings.beginGroup(settingskey::needSetYaxis);
        settings.setValue(settingskey::needSetYaxis, keepsRange);
        settings.sync();
        if (keepsRange)
            plot->saveYRange();
    }
    replay->end(this);
    acquisition->abandon();
    plot->close();
    ScopeWindow::closeEvent(event);
}
