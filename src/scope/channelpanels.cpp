// SPDX-License-Identifier: GPL-3.0-or-later
#include "scope/channelpanels.h"

#include "catalogue/doubleaddress.h"
#include "scope/channelconfig.h"

#include <QCheckBox>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLineEdit>

namespace {

constexpr int leftMargin = -10; // pixels

const QLatin1String wideType("32bit");
const QLatin1String narrowType("16bit");

} // namespace

ChannelPanels::ChannelPanels(const ScopeItems &items, QWidget *parent)
    : QFrame(parent)
    , scopeItems(items)
    , doubleAddressList(readDoubleAddressList(QStringLiteral(":/config/config/scope_double_address.txt")))
{
    setObjectName(QStringLiteral("bottomFrame"));
    QStringList texts;
    for (const QStringList &item : items)
        texts.append(scopeItemText(item));
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(leftMargin, 0, 0, 0);
    for (const QString &name : {tr("CH1"), tr("CH2"), tr("CH3"), tr("CH4")}) {
        auto *channel = new ChannelConfig(name, texts);
        channel->comboBox->setCurrentIndex(channelList.size());
        row->addWidget(channel);
        channelList.append(channel);
    }
}

int ChannelPanels::indexOf(const QObject *widget) const
{
    for (int index = 0; index < channelList.size(); ++index) {
        if (widget && channelList.at(index)->objectName() == widget->objectName())
            return index;
    }
    return -1;
}

ScopeChannelSettings ChannelPanels::settings() const
{
    ScopeChannelSettings result;
    for (int index = 0; index < channelList.size(); ++index) {
        const ChannelConfig *const channel = channelList.at(index);
        result.at(index) = {channel->checkBox->isChecked(), channel->typeEdit->text() == wideType,
                            scopeItems.value(channel->comboBox->currentIndex()).value(scopeitem::code)};
    }
    return result;
}

int ChannelPanels::rowOf(const QString &code) const
{
    for (int row = 0; row < scopeItems.size(); ++row) {
        if (scopeItems.at(row).at(scopeitem::code) == code)
            return row;
    }
    return -1;
}

BudgetChannels ChannelPanels::budget() const
{
    BudgetChannels result;
    for (int index = 0; index < channelList.size(); ++index) {
        const ChannelConfig *const channel = channelList.at(index);
        result.at(index) = {channel->isEnabled(), channel->checkBox->isChecked(),
                            channel->typeEdit->text().contains(wideType)};
    }
    return result;
}

void ChannelPanels::refreshTypes()
{
    const ScopeChannelSettings chosen = settings();
    for (int index = 0; index < channelList.size(); ++index)
        channelList.at(index)->typeEdit->setText(
            doubleAddressList.contains(chosen.at(index).code) ? wideType : narrowType);
}

void ChannelPanels::limitAfterCheck()
{
    const BudgetChannels limited = limitedAfterCheck(budget());
    for (int index = 0; index < channelList.size(); ++index) {
        channelList.at(index)->setEnabled(limited.at(index).enabled);
        channelList.at(index)->checkBox->setChecked(limited.at(index).checked);
    }
}

void ChannelPanels::limitAfterItem(int changed)
{
    for (ChannelConfig *channel : qAsConst(channelList))
        channel->setEnabled(true);
    const QVector<int> excluded = excludedByItem(budget(), changed);
    for (const int index : excluded) {
        ChannelConfig *const channel = channelList.at(index);
        channel->setEnabled(false);
        channel->checkBox->setChecked(false);
        emit channel->checkBox->clicked(false);
    }
}

void ChannelPanels::keepOnly(int index)
{
    for (int i = 0; i < channelList.size(); ++i) {
        channelList.at(i)->checkBox->setEnabled(i == index);
        channelList.at(i)->checkBox->setChecked(i == index);
    }
}

void ChannelPanels::setInputsEnabled(bool enabled)
{
    for (const ChannelConfig *channel : qAsConst(channelList)) {
        channel->comboBox->setEnabled(enabled);
        channel->checkBox->setEnabled(enabled);
    }
}

void ChannelPanels::showValue(int index, double value, int decimals)
{
    const ChannelConfig *const channel = channelList.at(index);
    channel->dataEdit->setText(channel->checkBox->isChecked() ? QString::number(value, 'f', decimals)
                                                              : QStringLiteral("0"));
}

void ChannelPanels::clearValues()
{
    for (const ChannelConfig *channel : qAsConst(channelList))
        channel->dataEdit->setText(QStringLiteral("0"));
}
