// SPDX-License-Identifier: GPL-3.0-or-later
// The start request for every choice of channels. The checksum comes from the simulated drive's table.
#include "scope/scoperequest.h"
#include "scope/stopcondition.h"

#include "support/wire.h"

#include <QtTest>

class TestScopeRequest : public QObject
{
    Q_OBJECT

private slots:
    void eachChannelHasFlagAndItem_data();
    void eachChannelHasFlagAndItem();
    void allChannelsOffIsTheStopFrame();
    void conditionLooksAtEverySample_data();
    void conditionLooksAtEverySample();
    void conditionNamesItsChannel();
};

namespace {

// Row n has the code "Pn-F" and n in two digits.
ScopeItems items()
{
    ScopeItems result;
    for (int row = 0; row < 50; ++row)
        result.append({QString(), QStringLiteral("Pn-F%1").arg(row, 2, 10, QLatin1Char('0')), QString(),
                       QString(), QString(), QString()});
    return result;
}

} // namespace

// All 81 choices of off, 16 and 32 bit, on rows 0, 3, 7 and 49.
void TestScopeRequest::eachChannelHasFlagAndItem_data()
{
    QTest::addColumn<QByteArray>("letters");
    const char all[] = {'-', 'n', 'w'};
    for (const char a : all)
        for (const char b : all)
            for (const char c : all)
                for (const char d : all) {
                    const QByteArray letters{std::initializer_list<char>{a, b, c, d}.begin(), 4};
                    QTest::newRow(letters.constData()) << letters;
                }
}

void TestScopeRequest::eachChannelHasFlagAndItem()
{
    QFETCH(QByteArray, letters);
    const std::array<const char *, 4> codes{"Pn-F00", "Pn-F03", "Pn-F07", "Pn-F49"};
    const std::array<const char *, 4> itemBytes{"00", "03", "07", "31"};
    ScopeChannelSettings channels;
    QByteArray expected = "0114";
    for (int i = 0; i < scopeChannelCount; ++i) {
        const char letter = letters.at(i);
        channels.at(i) = {letter != '-', letter == 'w', QLatin1String(codes.at(i))};
        expected +=
            letter == '-' ? QByteArray("0000") : QByteArray(letter == 'w' ? "20" : "10") + itemBytes.at(i);
    }
    QCOMPARE(scopeStartRequest(channels, items()).toHex(), wire::frame(expected.constData()).toHex());
}

void TestScopeRequest::allChannelsOffIsTheStopFrame()
{
    QCOMPARE(scopeStartRequest({}, items()).toHex(), QByteArray("01140000000000000000dec2"));
    QCOMPARE(scopeStopRequest().toHex(), QByteArray("01140000000000000000dec2"));
}

void TestScopeRequest::conditionLooksAtEverySample_data()
{
    QTest::addColumn<QString>("operation");
    QTest::addColumn<double>("value");
    QTest::addColumn<bool>("isMet"); // by 1, 0.3 (3 times 0.1) and 7

    QTest::newRow("at least, by the last") << ">=" << 7.0 << true;
    QTest::newRow("at least, by none") << ">=" << 7.5 << false;
    QTest::newRow("at most, by the second") << "<=" << 0.5 << true;
    QTest::newRow("at most, by none") << "<=" << 0.25 << false;
    QTest::newRow("equal") << "=" << 1.0 << true;
    QTest::newRow("equal compares doubles exactly") << "=" << 0.3 << false;
    QTest::newRow("any other operation") << "<" << 100.0 << false;
    QTest::newRow("no operation") << "" << 1.0 << false;
}

void TestScopeRequest::conditionLooksAtEverySample()
{
    QFETCH(QString, operation);
    QFETCH(double, value);
    const StopCondition condition{QStringLiteral("CH2"), operation};
    QTEST(condition.isMetBy({1.0, 3 * 0.1, 7.0}, value), "isMet");
    QVERIFY(!condition.isMetBy({}, value));
}

void TestScopeRequest::conditionNamesItsChannel()
{
    const auto index = [](const char *text) {
        return StopCondition{QLatin1String(text), QStringLiteral("=")}.channelIndex();
    };
    QCOMPARE(index("CH1"), 0);
    QCOMPARE(index("CH4"), 3);
    QCOMPARE(index("CH5"), -1);
    QCOMPARE(index("CH0"), -1);
    QCOMPARE(index("CHx"), -1);
    QCOMPARE(index(""), -1);
}

QTEST_GUILESS_MAIN(TestScopeRequest)
#include "tst_scoperequest.moc"
