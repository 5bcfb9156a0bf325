// SPDX-License-Identifier: GPL-3.0-or-later
#include "simulator/signalmodel.h"

#include <QtTest>

#include <algorithm>
#include <set>
#include <vector>

using namespace kt500sim;

namespace {

/// One second of an item.
std::vector<std::int32_t> record(SignalModel *model, int item)
{
    RegisterFile registers(builtInRegisterTable());
    model->powerOn(registers);
    std::vector<std::int32_t> samples;
    for (int i = 0; i < samplesPerSecond; ++i) {
        model->advance(registers, 1);
        samples.push_back(model->scopeValue(item));
    }
    return samples;
}

} // namespace

class TestSignalModel : public QObject
{
    Q_OBJECT

private slots:
    void scopeItemShowsItsStatusRegister_data()
    {
        QTest::addColumn<int>("item");
        QTest::addColumn<int>("offset");
        QTest::newRow("motor speed") << 0 << 1500;
        QTest::newRow("torque command") << 3 << 1503;
        QTest::newRow("first wide item") << 7 << 1507;
        QTest::newRow("position deviation") << 10 << 1513;
        QTest::newRow("motor current") << 15 << 1522;
        QTest::newRow("bus voltage") << 16 << 1523;
        QTest::newRow("beyond the registers") << 60 << -1;
        QTest::newRow("no item") << -1 << -1;
    }
    void scopeItemShowsItsStatusRegister()
    {
        QFETCH(int, item);
        QFETCH(int, offset);
        QCOMPARE(SignalModel::offsetOfItem(item), offset);
        if (offset < 0)
            return;
        SignalModel model;
        RegisterFile registers(builtInRegisterTable());
        model.advance(registers, 1234);
        QCOMPARE(model.scopeValue(item), model.statusValue(offset));
    }

    void itemMoves_data()
    {
        QTest::addColumn<int>("item");
        QTest::addColumn<int>("low");
        QTest::addColumn<int>("high");
        QTest::newRow("motor speed") << 0 << -1480 << 1540;
        QTest::newRow("speed command") << 1 << -1480 << 1540;
        QTest::newRow("torque command") << 3 << -90 << 90;
        QTest::newRow("bus voltage") << 16 << 3070 << 3150;
        QTest::newRow("test sine") << 50 << -1000 << 1000;
    }
    void itemMoves()
    {
        QFETCH(int, item);
        QFETCH(int, low);
        QFETCH(int, high);
        SignalModel model;
        const std::vector<std::int32_t> samples = record(&model, item);
        const auto [least, most] = std::minmax_element(samples.begin(), samples.end());
        QVERIFY(*least >= low && *most <= high);
        // It fills at least half of its range, so it does move.
        QVERIFY(*most - *least >= (high - low) / 2);
    }

    void sameSampleHasTheSameValueAtEveryRun()
    {
        SignalModel first;
        SignalModel second;
        QVERIFY(record(&first, 0) == record(&second, 0));
    }

    void oneLongStepEqualsManyShortOnes()
    {
        SignalModel steps;
        record(&steps, 0);
        SignalModel jump;
        RegisterFile registers(builtInRegisterTable());
        jump.advance(registers, samplesPerSecond);
        for (int offset = statusStart; offset < registerSpace; ++offset)
            QCOMPARE(jump.statusValue(offset), steps.statusValue(offset));
    }

    void statusRegistersFollowTheModel()
    {
        SignalModel model;
        RegisterFile registers(builtInRegisterTable());
        model.powerOn(registers);
        const std::int32_t position = registers.workingPair(1511);
        std::set<std::uint16_t> voltages;
        for (int i = 0; i < 100; ++i) {
            model.advance(registers, 7);
            model.refreshStatus(registers);
            voltages.insert(registers.working(1523));
        }
        QVERIFY(voltages.size() > 5);
        QVERIFY(registers.workingPair(1511) != position);
        QCOMPARE(registers.workingPair(1511), model.statusValue(1511));
    }

    void runningTimeCountsHundredthsOfAnHour()
    {
        SignalModel model;
        RegisterFile registers(builtInRegisterTable());
        model.powerOn(registers);
        const std::int32_t before = model.statusValue(1529);
        model.advance(registers, std::int64_t{36} * samplesPerSecond);
        QCOMPARE(model.statusValue(1529), before + 1);
    }

    void powerOnStartsFromTheBeginning()
    {
        SignalModel model;
        RegisterFile registers(builtInRegisterTable());
        model.powerOn(registers);
        const auto atStart = registers.workingWords();
        model.advance(registers, 12345);
        model.refreshStatus(registers);
        QVERIFY(registers.workingWords() != atStart);
        model.powerOn(registers);
        QVERIFY(registers.workingWords() == atStart);
    }
};

QTEST_APPLESS_MAIN(TestSignalModel)
#include "tst_simulator_signalmodel.moc"
