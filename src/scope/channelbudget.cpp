// SPDX-License-Identifier: GPL-3.0-or-later
#include "scope/channelbudget.h"

#include <algorithm>

namespace {

constexpr int ch3 = 2;
constexpr int ch4 = 3;

void exclude(BudgetChannel *channel)
{
    channel->enabled = false;
    channel->checked = false;
}

template <typename Condition>
void excludeIf(BudgetChannels *channels, Condition condition)
{
    for (BudgetChannel &channel : *channels) {
        if (condition(channel))
            exclude(&channel);
    }
}

template <typename Condition>
void enableIf(BudgetChannels *channels, Condition condition)
{
    for (BudgetChannel &channel : *channels) {
        if (condition(channel))
            channel.enabled = true;
    }
}

bool isUnchecked(const BudgetChannel &channel)
{
    return !channel.checked;
}

bool isWideAndChecked(const BudgetChannel &channel)
{
    return channel.checked && channel.wide;
}

void limitTwo(BudgetChannels *channels, int wide)
{
    if (wide == 2)
        excludeIf(channels, isUnchecked);
    else
        enableIf(channels, isUnchecked);
}

void limitThree(BudgetChannels *channels, int wide)
{
    if (wide == 2)
        excludeIf(channels, [](const BudgetChannel &channel) { return !isWideAndChecked(channel); });
    else if (wide == 1)
        excludeIf(channels, isUnchecked);
    else
        enableIf(channels, isUnchecked);
}

void limitFour(BudgetChannels *channels, int wide)
{
    if (wide == 1)
        exclude(&channels->at(channels->at(ch4).wide ? ch3 : ch4));
}

} // namespace

BudgetChannels limitedAfterCheck(BudgetChannels channels)
{
    const auto checked =
        std::count_if(channels.begin(), channels.end(), [](const auto &channel) { return channel.checked; });
    const auto wide = int(std::count_if(channels.begin(), channels.end(), isWideAndChecked));
    switch (checked) {
    case 2:
        limitTwo(&channels, wide);
        break;
    case 3:
        limitThree(&channels, wide);
        break;
    case 4:
        limitFour(&channels, wide);
        break;
    default:
        enableIf(&channels, [](const BudgetChannel &) { return true; });
        break;
    }
    return channels;
}

QVector<int> excludedByItem(const BudgetChannels &channels, int changedChannel)
{
    QVector<int> wide;
    QVector<int> narrow;
    for (int channel = 0; channel < scopeChannelCount; ++channel)
        (channels.at(channel).wide ? wide : narrow).append(channel);
    if (wide.size() == 1)
        return {wide.first() == ch4 || changedChannel == ch4 ? ch3 : ch4};
    // Deliberate: CH1 and CH4 together leave the other two as they are, though that takes six words.
    if (wide.size() != 2 || wide == QVector<int>{0, ch4})
        return {};
    return narrow;
}
