// SPDX-License-Identifier: GPL-3.0-or-later
// The four words a sample instant that the drive streams, kept by two rules.
#include "scope/channelbudget.h"

#include <QtTest>

class TestChannelBudget : public QObject
{
    Q_OBJECT

private slots:
    void switchingAChannelLimitsTheOthers_data();
    void switchingAChannelLimitsTheOthers();
    void anItemExcludesOthers_data();
    void anItemExcludesOthers();
};

namespace {

// One letter a channel: capital checked, small unchecked; n 16-bit, w 32-bit. A following "!" means disabled.
BudgetChannels channelsOf(const QString &text)
{
    BudgetChannels channels;
    int channel = -1;
    for (const QChar letter : text) {
        if (letter == QLatin1Char('!'))
            channels.at(channel).enabled = false;
        else
            channels.at(++channel) = {true, letter.isUpper(), letter.toLower() == QLatin1Char('w')};
    }
    return channels;
}

QString textOf(const BudgetChannels &channels)
{
    QString text;
    for (const BudgetChannel &channel : channels) {
        const QChar letter = QLatin1Char(channel.wide ? 'w' : 'n');
        text += channel.checked ? letter.toUpper() : letter;
        if (!channel.enabled)
            text += QLatin1Char('!');
    }
    return text;
}

} // namespace

void TestChannelBudget::switchingAChannelLimitsTheOthers_data()
{
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("after");
    const auto row = [](const char *name, const char *before, const char *after) {
        QTest::newRow(name) << before << after;
    };
    row("none: all open", "n!w!n!n!", "nwnn");
    row("one, wide: all open", "W!n!n!n!", "Wnnn");
    row("two wide: the rest closes", "WnWn", "Wn!Wn!");
    row("two, one wide: the rest opens", "WNn!n!", "WNnn");
    row("two narrow: the rest opens", "NNn!n!", "NNnn");
    row("two, one wide, an unchecked wide one: the rest opens", "WNw!n!", "WNwn");
    row("two narrow, checked ones stay as they are", "N!Nn!n", "N!Nnn");
    row("three, two wide: the third is unchecked too", "WWNn", "WWn!n!");
    row("three, two wide, an unchecked wide one", "WNWw", "Wn!Ww!");
    row("three, one wide: the fourth closes", "WNNn", "WNNn!");
    row("three, none wide: the fourth opens", "NNNn!", "NNNn");
    row("three, all wide: the fourth opens", "WWWn!", "WWWn");
    row("four, CH1 wide: CH4 goes", "WNNN", "WNNn!");
    row("four, CH2 wide: CH4 goes", "NWNN", "NWNn!");
    row("four, CH3 wide: CH4 goes", "NNWN", "NNWn!");
    row("four, CH4 wide: CH3 goes", "NNNW", "NNn!W");
    row("four narrow: nothing", "NNNN", "NNNN");
    row("four, two wide: nothing", "WWNN", "WWNN");
    row("four, all wide: nothing", "WWWW", "WWWW");
}

void TestChannelBudget::switchingAChannelLimitsTheOthers()
{
    QFETCH(QString, before);
    QTEST(textOf(limitedAfterCheck(channelsOf(before))), "after");
}

void TestChannelBudget::anItemExcludesOthers_data()
{
    QTest::addColumn<QString>("channels");
    QTest::addColumn<int>("changed");
    QTest::addColumn<QVector<int>>("excluded");
    const auto row = [](const char *name, const char *channels, int changed, const QVector<int> &excluded) {
        QTest::newRow(name) << channels << changed << excluded;
    };
    row("no wide one", "NNNN", 0, {});
    row("CH1 wide", "WNNN", 0, {3});
    row("CH2 wide", "NWNN", 1, {3});
    row("CH3 wide", "NNWN", 2, {3});
    row("CH4 wide", "NNNW", 3, {2});
    row("CH1 wide, CH4 changed to a narrow one", "WNNN", 3, {2});
    row("an unchecked wide one counts", "wNNN", 1, {3});
    row("CH4 wide and unchecked", "NNNw", 0, {2});
    row("CH1 and CH2", "WWNN", 1, {2, 3});
    row("CH1 and CH3", "WNWN", 2, {1, 3});
    row("CH1 and CH4: six words pass", "WNNW", 3, {});
    row("CH2 and CH3", "NWWN", 2, {0, 3});
    row("CH2 and CH4", "NWNW", 3, {0, 2});
    row("CH3 and CH4", "NNWW", 3, {0, 1});
    row("two wide, one of them unchecked", "WwNN", 0, {2, 3});
    row("three", "WWWN", 2, {});
    row("four", "WWWW", 3, {});
}

void TestChannelBudget::anItemExcludesOthers()
{
    QFETCH(QString, channels);
    QFETCH(int, changed);
    QTEST(excludedByItem(channelsOf(channels), changed), "excluded");
}

QTEST_GUILESS_MAIN(TestChannelBudget)
#include "tst_channelbudget.moc"
