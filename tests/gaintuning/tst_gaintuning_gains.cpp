// SPDX-License-Identifier: GPL-3.0-or-later
// Gain mode and notches: which fields may be typed into, and what the two buttons send.
#include "gainbench.h"
#include "support/modalanswers.h"

#include <QLocale>

class GainTuningGainsTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void gainModeSwitchesTheFields();
    void unknownGainModeLeavesTheBox();
    void gradeFillsTheGainsInTableModeOnly();
    void manualGainsAllGoOut();
    void tableModeSendsGradeAndThreeGains();
    void withoutAModeNothingIsSent();
    void failingGainIsToldAndNothingGoesOut();
    void notchModeSwitchesTheFields_data();
    void notchModeSwitchesTheFields();
    void notchFramesFollowTheMode_data();
    void notchFramesFollowTheMode();
    void notchOutOfRangeIsTold();
    void notchButtonWithoutAModeStaysDisabled();
};

void GainTuningGainsTest::initTestCase()
{
    // Numbers have a point all the same.
    QLocale::setDefault(QLocale(QLocale::German));
}

void GainTuningGainsTest::gainModeSwitchesTheFields()
{
    GainBench bench;
    bench.registers = plainDrive();
    bench.finishInitialRead();
    for (const int index : {1, 0}) {
        bench.combo("comBoxGainMode")->setCurrentIndex(index);
        const bool isManual = index == 0;
        for (const QString &name : tableGains) {
            QCOMPARE(bench.edit("set" + name)->isEnabled(), isManual);
            QCOMPARE(bench.edit("set" + name)->palette().color(QPalette::Text),
                     QColor(isManual ? Qt::black : Qt::gray));
        }
        QVERIFY(bench.edit(QStringLiteral("setInertiaRatio"))->isEnabled());
        QCOMPARE(bench.find<QSpinBox>("spinBoxRigidityGrade")->isEnabled(), !isManual);
    }
}

void GainTuningGainsTest::unknownGainModeLeavesTheBox()
{
    GainBench bench;
    bench.registers = plainDrive();
    bench.registers[0x2258] = 2;
    bench.finishInitialRead();
    QCOMPARE(bench.combo("comBoxGainMode")->currentIndex(), -1);
    QCOMPARE(bench.text("setPositionLoopGain"), QStringLiteral("48.0"));
}

void GainTuningGainsTest::gradeFillsTheGainsInTableModeOnly()
{
    GainBench bench;
    bench.registers = plainDrive();
    bench.finishInitialRead();
    auto *const grade = bench.find<QSpinBox>("spinBoxRigidityGrade");
    grade->setValue(16);
    QCOMPARE(bench.text("setPositionLoopGain"), QStringLiteral("48.0"));
    bench.combo("comBoxGainMode")->setCurrentIndex(1);
    QCOMPARE(bench.text("setPositionLoopGain"), QStringLiteral("90.0"));
    bench.frames.clear();
    grade->setValue(25);
    QCOMPARE(bench.text("setPositionLoopGain"), QStringLiteral("500.0"));
    QCOMPARE(bench.text("setSpeedLoopGain"), QStringLiteral("280.0"));
    QCOMPARE(bench.text("setSpeedLoopIntegralTime"), QStringLiteral("3.5"));
    QCOMPARE(bench.text("setTorqueFilterTime"), QStringLiteral("0.08"));
    QCOMPARE(bench.text("curPositionLoopGain"), QStringLiteral("48.0"));
    QVERIFY(bench.frames.isEmpty());
}

void GainTuningGainsTest::manualGainsAllGoOut()
{
    GainBench bench;
    bench.registers = plainDrive();
    bench.finishInitialRead();
    const QStringList texts{"4.2", "50", "30.55", "12", "0.45", "10", "1"};
    for (int i = 0; i < texts.size(); ++i)
        bench.edit("set" + gainNames.at(i))->setText(texts.at(i));
    bench.button("pbtnSettingsToCurrent")->click();
    QVERIFY(!bench.button("pbtnSettingsToCurrent")->isEnabled());
    QVERIFY(bench.frames.isEmpty());
    // Shown at once, without waiting for the drive, in the form of their fields.
    QCOMPARE(bench.text("curInertiaRatio"), QStringLiteral("4.2"));
    QCOMPARE(bench.text("lineEditCurrent"), QStringLiteral("4.2"));
    QCOMPARE(bench.text("curPositionLoopGain"), QStringLiteral("50.0"));
    QCOMPARE(bench.text("curTorqueFilterTime"), QStringLiteral("0.45"));
    QCOMPARE(bench.text("curSpeedFeedforwardFilterTime"), QStringLiteral("1.00"));
    QTRY_VERIFY(bench.button("pbtnSettingsToCurrent")->isEnabled() || !bench.unanswered.isEmpty());
    bench.answerAll();
    QVERIFY(bench.button("pbtnSettingsToCurrent")->isEnabled());
    QList<QByteArray> writes;
    for (const QByteArray &frame : bench.takeFrames()) {
        if (frame.at(1) == '\x10')
            writes.append(frame);
    }
    QCOMPARE(writes.size(), 7);
    QCOMPARE(writes.at(0), store(0xE25A, 42));
    QCOMPARE(writes.at(1), store(0xE262, 500));
    QVERIFY(writes.at(2) == store(0xE263, 305) || writes.at(2) == store(0xE263, 306));
    QCOMPARE(writes.at(3), store(0xE264, 120));
    QCOMPARE(writes.at(4), store(0xE1F6, 45));
    QCOMPARE(writes.at(5), store(0xE27D, 100));
    QCOMPARE(writes.at(6), store(0xE27E, 100));
}

void GainTuningGainsTest::tableModeSendsGradeAndThreeGains()
{
    GainBench bench;
    bench.registers = plainDrive();
    bench.registers[0x2258] = 1;
    bench.finishInitialRead();
    bench.find<QSpinBox>("spinBoxRigidityGrade")->setValue(20);
    bench.button("pbtnSettingsToCurrent")->click();
    QCOMPARE(bench.takeFrames(), QList<QByteArray>{store(0xE259, 20)});
    for (const QByteArray &expected : {store(0xE25A, 35), store(0xE27D, 5), store(0xE27E, 50)}) {
        bench.answer();
        QCOMPARE(bench.takeFrames(), QList<QByteArray>{expected});
        QVERIFY(!bench.button("pbtnSettingsToCurrent")->isEnabled());
    }
    bench.answer();
    QVERIFY(bench.button("pbtnSettingsToCurrent")->isEnabled());
    // The drive has them by the grade.
    QCOMPARE(bench.text("curPositionLoopGain"), QStringLiteral("206.0"));
    QCOMPARE(bench.text("curTorqueFilterTime"), QStringLiteral("0.20"));
}

void GainTuningGainsTest::withoutAModeNothingIsSent()
{
    GainBench bench;
    bench.registers = plainDrive();
    bench.registers[0x2258] = 2;
    bench.finishInitialRead();
    bench.edit(QStringLiteral("setInertiaRatio"))->setText(QStringLiteral("9"));
    bench.button("pbtnSettingsToCurrent")->click();
    QVERIFY(bench.frames.isEmpty());
    QVERIFY(!bench.button("pbtnSettingsToCurrent")->isEnabled());
    QCOMPARE(bench.text("curInertiaRatio"), QStringLiteral("9.0"));
}

void GainTuningGainsTest::failingGainIsToldAndNothingGoesOut()
{
    GainBench bench;
    bench.registers = plainDrive();
    bench.finishInitialRead();
    bench.edit(QStringLiteral("setSpeedLoopGain"))->setText(QStringLiteral("1000.1"));
    bench.edit(QStringLiteral("setTorqueFilterTime"))->setText(QString());
    ModalAnswers boxes;
    boxes.expect(message("0.1 ~ 1000.0"));
    bench.button("pbtnSettingsToCurrent")->click();
    QCOMPARE(boxes.seen.size(), 1);
    QCOMPARE(boxes.seen.first().title, QStringLiteral("Speed Loop Gain"));
    QCOMPARE(bench.text("setSpeedLoopGain"), QString());
    QVERIFY(bench.frames.isEmpty());
    QVERIFY(bench.button("pbtnSettingsToCurrent")->isEnabled());
    QCOMPARE(bench.text("curSpeedLoopGain"), QStringLiteral("27.0"));
}

void GainTuningGainsTest::notchModeSwitchesTheFields_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<QList<bool>>("editable"); // notches 1 to 4, button
    QTest::newRow("manual") << 0 << QList<bool>{true, true, true, true, true};
    QTest::newRow("third adaptive") << 1 << QList<bool>{true, true, false, true, true};
    QTest::newRow("two adaptive") << 2 << QList<bool>{true, true, false, false, true};
    QTest::newRow("adaptive") << 3 << QList<bool>{false, false, false, false, false};
    QTest::newRow("adaptive too") << 4 << QList<bool>{false, false, false, false, false};
}

void GainTuningGainsTest::notchModeSwitchesTheFields()
{
    QFETCH(int, mode);
    QFETCH(QList<bool>, editable);
    GainBench bench;
    bench.registers = {{0x2296, mode}};
    bench.finishInitialRead();
    const QStringList names = notchNames();
    for (int i = 0; i < names.size(); ++i) {
        QCOMPARE(bench.edit("set" + names.at(i))->isEnabled(), editable.at(i / 3));
        QCOMPARE(bench.edit("set" + names.at(i))->palette().color(QPalette::Text),
                 QColor(editable.at(i / 3) ? Qt::black : Qt::gray));
    }
    QCOMPARE(bench.button("pbtnSettingsToCurrent_Notch")->isEnabled(), editable.at(4));
}

void GainTuningGainsTest::notchFramesFollowTheMode_data()
{
    const QByteArray first = wire::frame("01 10 E2 97 00 06 0C 03 E8 00 15 00 16 03 EB 00 18 00 19");
    const QByteArray third = wire::frame("01 10 E2 9D 00 03 06 04 D2 00 1B 00 1C");
    const QByteArray fourth = wire::frame("01 10 E2 A0 00 03 06 03 F1 00 1E 00 1F");
    QTest::addColumn<int>("mode");
    QTest::addColumn<QList<QByteArray>>("expected");
    QTest::newRow("manual") << 0 << QList<QByteArray>{first, third, fourth};
    QTest::newRow("third adaptive") << 1 << QList<QByteArray>{first, fourth};
    QTest::newRow("two adaptive") << 2 << QList<QByteArray>{first};
}

void GainTuningGainsTest::notchFramesFollowTheMode()
{
    QFETCH(int, mode);
    QFETCH(QList<QByteArray>, expected);
    GainBench bench;
    bench.registers = plainDrive();
    bench.registers[0x2296] = mode;
    bench.finishInitialRead();
    bench.edit(QStringLiteral("setNotch3Frequency"))->setText(QStringLiteral("1234"));
    bench.button("pbtnSettingsToCurrent_Notch")->click();
    QVERIFY(!bench.button("pbtnSettingsToCurrent_Notch")->isEnabled());
    QCOMPARE(bench.text("curNotch3Frequency"), mode == 0 ? QStringLiteral("1234") : QStringLiteral("1006"));
    QList<QByteArray> writes;
    QTRY_VERIFY2_WITH_TIMEOUT(
        [&] {
            if (!bench.unanswered.isEmpty())
                bench.answer();
            for (const QByteArray &frame : bench.takeFrames()) {
                if (frame.at(1) == '\x10')
                    writes.append(frame);
            }
            return bench.button("pbtnSettingsToCurrent_Notch")->isEnabled();
        }(),
        "the notch write has not ended", 5000);
    QCOMPARE(writes, expected);
}

void GainTuningGainsTest::notchOutOfRangeIsTold()
{
    GainBench bench;
    bench.registers = plainDrive();
    bench.registers[0x2296] = 1;
    bench.finishInitialRead();
    const QList<QStringList> rows{{"setNotch1WidthGrade", "4097", "Notch-filter1 Width Grade", "1 ~ 4096"},
                                  {"setNotch3DeepGrade", "41", "Notch-filter3 Deep Grade", "0 ~ 40"},
                                  {"setNotch4Frequency", "49", "Notch-filter4 Frequency", "50 ~ 5000"}};
    for (const QStringList &row : rows) {
        ModalAnswers boxes;
        boxes.expect(message(qPrintable(row.at(3))));
        const QString before = bench.edit(row.at(0))->text();
        bench.edit(row.at(0))->setText(row.at(1));
        bench.button("pbtnSettingsToCurrent_Notch")->click();
        QCOMPARE(boxes.seen.size(), 1);
        QCOMPARE(boxes.seen.first().title, row.at(2));
        QCOMPARE(bench.edit(row.at(0))->text(), QString());
        QVERIFY(bench.button("pbtnSettingsToCurrent_Notch")->isEnabled());
        bench.edit(row.at(0))->setText(before);
    }
    QVERIFY(bench.frames.isEmpty());
}

void GainTuningGainsTest::notchButtonWithoutAModeStaysDisabled()
{
    GainBench bench;
    bench.registers = plainDrive();
    bench.registers[0x2296] = 9;
    bench.finishInitialRead();
    QCOMPARE(bench.combo("comBoxNotchMode")->currentIndex(), -1);
    bench.button("pbtnSettingsToCurrent_Notch")->click();
    QVERIFY(!bench.button("pbtnSettingsToCurrent_Notch")->isEnabled());
    QTRY_VERIFY(!bench.unanswered.isEmpty());
    bench.answerAll();
    QVERIFY(!bench.button("pbtnSettingsToCurrent_Notch")->isEnabled());
    for (const QByteArray &frame : qAsConst(bench.frames))
        QCOMPARE(frame.at(1), '\x03');
}

QTEST_MAIN(GainTuningGainsTest)
#include "tst_gaintuning_gains.moc"
