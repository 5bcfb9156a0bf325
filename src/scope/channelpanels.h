// SPDX-License-Identifier: GPL-3.0-or-later
// The four channel panels side by side: what they ask for, and the budget that the drive puts on them.
// Main thread; owned by the scope window.
#pragma once

#include "scope/channelbudget.h"
#include "scope/scopechannels.h"

#include "catalogue/scopecatalogue.h"

#include <QFrame>
#include <QList>

class ChannelConfig;

class ChannelPanels : public QFrame
{
    Q_OBJECT

public:
    explicit ChannelPanels(const ScopeItems &items, QWidget *parent = nullptr);

    ChannelConfig *channel(int index) const { return channelList.at(index); }
    const QList<ChannelConfig *> &channels() const { return channelList; }
    // 0 to 3, by the object name of the panel or of a widget that bears it; -1 for any other.
    int indexOf(const QObject *widget) const;

    ScopeChannelSettings settings() const;
    // Catalogue row of a code, or -1.
    int rowOf(const QString &code) const;

    // The Type of each channel by its item; the colours of Data fields stay.
    void refreshTypes();
    // Closes what the budget leaves no room for, after a channel was switched on or off.
    void limitAfterCheck();
    // The same after a checked channel has got another item; each box that is unchecked says so by clicked().
    void limitAfterItem(int changed);
    // Switches all channels but one off, and locks them. With -1 all.
    void keepOnly(int index);
    // Lists and boxes, not the panels.
    void setInputsEnabled(bool enabled);

    // A channel that is off shows 0.
    void showValue(int index, double value, int decimals);
    void clearValues();

private:
    BudgetChannels budget() const;

    const ScopeItems scopeItems;
    const QStringList doubleAddressList; // codes of 32-bit items
    QList<ChannelConfig *> channelList;  // CH1 to CH4
};
