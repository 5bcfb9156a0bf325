// SPDX-License-Identifier: GPL-3.0-or-later
// The gain tuning window and the drive: what the first read and the rounds show, and when nothing is sent.
#include "gainbench.h"

#include <QLocale>

class GainTuningTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void firstReadFillsEveryField();
    void framesCarryTheWindowsName();
    void comboBoxSetByAReplyWritesNothing();
    void roundShowsRatioAndResonance();
    void comboBoxesWriteTheirIndex_data();
    void comboBoxesWriteTheirIndex();
    void nothingHappensDuringTheFirstRead();
    void changesDuringTheFirstReadAreTakenBack();
    void refusedFirstReadLeavesNothingTyped();
    void closedWindowSendsNothingMore_data();
    void closedWindowSendsNothingMore();
};

void GainTuningTest::initTestCase()
{
    // Numbers have a point all the same.
    QLocale::setDefault(QLocale(QLocale::German));
}

void GainTuningTest::firstReadFillsEveryField()
{
    GainBench bench;
    bench.registers = plainDrive();
    bench.finishInitialRead();
    const QStringList gains{"3.5", "48.0", "27.0", "21.0", "0.84", "0.5", "0.50"};
    for (int i = 0; i < gains.size(); ++i) {
        QCOMPARE(bench.edit("set" + gainNames.at(i))->text(), gains.at(i));
        QCOMPARE(bench.edit("cur" + gainNames.at(i))->text(), gains.at(i));
    }
    const QStringList names = notchNames();
    for (int i = 0; i < names.size(); ++i) {
        const QString value = QString::number(i % 3 == 0 ? 1000 + i : 20 + i);
        QCOMPARE(bench.edit("set" + names.at(i))->text(), value);
        QCOMPARE(bench.edit("cur" + names.at(i))->text(), value);
    }
    QCOMPARE(bench.text("lineEditCurrent"), QStringLiteral("3.5"));
    QCOMPARE(bench.text("calculated"), QStringLiteral("3.25"));
    QCOMPARE(bench.text("ResonanceFrequency"), QStringLiteral("440"));
    QCOMPARE(bench.cell(0)->text(), QStringLiteral("500"));
    QCOMPARE(bench.cell(1)->text(), QStringLiteral("100"));
    QCOMPARE(bench.cell(2)->text(), QStringLiteral("10"));
    QCOMPARE(bench.cell(3)->text(), QStringLiteral("300"));
    QCOMPARE(bench.combo("comBoxoffline")->currentIndex(), 1);
    QCOMPARE(bench.combo("comBoxonline")->currentIndex(), 0);
    QCOMPARE(bench.combo("comBoxGainMode")->currentIndex(), 0);
    QCOMPARE(bench.combo("comBoxNotchMode")->currentIndex(), 0);
    QCOMPARE(bench.find<QSpinBox>("spinBoxRigidityGrade")->value(), 12);
}

void GainTuningTest::framesCarryTheWindowsName()
{
    GainBench bench;
    QTRY_VERIFY(!bench.unanswered.isEmpty());
    bench.answerAll();
    QCOMPARE(bench.names.size(), 33);
    for (const QString &name : qAsConst(bench.names))
        QCOMPARE(name, QStringLiteral("Gain Tuning"));
}

void GainTuningTest::comboBoxSetByAReplyWritesNothing()
{
    GainBench bench;
    bench.registers = {{0x2258, 1}, {0x225C, 1}, {0x22AE, 3}, {0x2296, 2}, {0x2259, 31}};
    QTRY_VERIFY(!bench.unanswered.isEmpty());
    bench.answerAll();
    QCOMPARE(bench.frames.size(), 33);
    for (const QByteArray &frame : qAsConst(bench.frames))
        QCOMPARE(frame.at(1), '\x03');
    QCOMPARE(bench.combo("comBoxonline")->currentIndex(), 3);
    QCOMPARE(bench.combo("comBoxNotchMode")->currentIndex(), 2);
}

void GainTuningTest::roundShowsRatioAndResonance()
{
    GainBench bench;
    bench.registers = plainDrive();
    bench.finishInitialRead();
    bench.registers[0x2618] = 1234;
    bench.registers[0x2601] = 512;
    bench.registers[0x225A] = 999;
    QTRY_VERIFY(!bench.unanswered.isEmpty());
    bench.answerAll();
    QCOMPARE(bench.text("calculated"), QStringLiteral("12.34"));
    QCOMPARE(bench.text("ResonanceFrequency"), QStringLiteral("512"));
    QCOMPARE(bench.text("lineEditCurrent"), QStringLiteral("3.5"));
}

void GainTuningTest::comboBoxesWriteTheirIndex_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<int>("before");
    QTest::addColumn<int>("index");
    QTest::addColumn<QByteArray>("frame");
    for (int index = 0; index < 2; ++index) {
        QTest::addRow("offline %d", index)
            << QByteArray("comBoxoffline") << 1 - index << index << store(0xE25C, index);
        QTest::addRow("gain mode %d", index)
            << QByteArray("comBoxGainMode") << 1 - index << index << store(0xE258, index);
    }
    for (int index = 0; index < 4; ++index)
        QTest::addRow("online %d", index)
            << QByteArray("comBoxonline") << (index + 1) % 4 << index << store(0xE2AE, index);
    for (int index = 0; index < 5; ++index)
        QTest::addRow("notch mode %d", index)
            << QByteArray("comBoxNotchMode") << (index + 1) % 5 << index << store(0xE296, index);
}

void GainTuningTest::comboBoxesWriteTheirIndex()
{
    QFETCH(QByteArray, name);
    QFETCH(int, before);
    QFETCH(int, index);
    GainBench bench;
    bench.registers = {{0x225C, before}, {0x2258, before}, {0x22AE, before}, {0x2296, before}};
    bench.finishInitialRead();
    QCOMPARE(bench.combo(name)->currentIndex(), before);
    bench.combo(name)->setCurrentIndex(index);
    QCOMPARE(bench.frames.size(), 1);
    QTEST(bench.frames.first(), "frame");
}

void GainTuningTest::nothingHappensDuringTheFirstRead()
{
    GainBench bench;
    bench.registers = plainDrive();
    QTRY_VERIFY(!bench.unanswered.isEmpty());
    bench.frames.clear();
    for (const char *name :
         {"btnCalculatedToCurrent", "pbtnSettingsToCurrent", "pbtnSettingsToCurrent_Notch"}) {
        bench.button(name)->click();
        QVERIFY2(bench.button(name)->isEnabled(), name);
    }
    bench.cell(0)->setText(QStringLiteral("99"));
    bench.combo("comBoxoffline")->setCurrentIndex(1);
    QVERIFY(bench.frames.isEmpty());
}

// They have been written nowhere, and would stand there as if the drive had them.
void GainTuningTest::changesDuringTheFirstReadAreTakenBack()
{
    GainBench bench;
    bench.registers = plainDrive();
    QTRY_VERIFY(!bench.unanswered.isEmpty());
    // The gains and the identification have been read, the notches not yet.
    for (int i = 0; i < 17; ++i)
        bench.answer();
    const int sent = bench.frames.size();
    bench.cell(0)->setText(QStringLiteral("250"));
    bench.combo("comBoxoffline")->setCurrentIndex(0);
    bench.find<QRadioButton>("radioButtonOnline")->click();
    bench.combo("comBoxonline")->setCurrentIndex(2);
    bench.combo("comBoxGainMode")->setCurrentIndex(1);
    bench.find<QSpinBox>("spinBoxRigidityGrade")->setValue(30);
    QCOMPARE(bench.frames.size(), sent);
    bench.answerAll();
    QCOMPARE(bench.cell(0)->text(), QStringLiteral("500"));
    QCOMPARE(bench.combo("comBoxoffline")->currentIndex(), 1);
    QVERIFY(bench.find<QRadioButton>("radioButtonOffline")->isChecked());
    QCOMPARE(bench.combo("comBoxonline")->currentIndex(), 0);
    QCOMPARE(bench.combo("comBoxGainMode")->currentIndex(), 0);
    QCOMPARE(bench.find<QSpinBox>("spinBoxRigidityGrade")->value(), 12);
    for (const QByteArray &frame : bench.takeFrames())
        QCOMPARE(frame.at(1), '\x03');
}

void GainTuningTest::refusedFirstReadLeavesNothingTyped()
{
    GainBench bench;
    bench.registers = plainDrive();
    QTRY_VERIFY(!bench.unanswered.isEmpty());
    for (int i = 0; i < 10; ++i)
        bench.answer();
    bench.cell(0)->setText(QStringLiteral("250"));
    bench.cell(3)->setText(QStringLiteral("250"));
    bench.frames.clear();
    bench.answerWith(wire::frame("01 83 02"));
    QCOMPARE(bench.cell(0)->text(), QStringLiteral("500"));
    QCOMPARE(bench.cell(3)->text(), QString());
    QVERIFY(bench.frames.isEmpty());
}

void GainTuningTest::closedWindowSendsNothingMore_data()
{
    QTest::addColumn<QByteArray>("button");
    QTest::newRow("gains") << QByteArray("pbtnSettingsToCurrent");
    QTest::newRow("notches") << QByteArray("pbtnSettingsToCurrent_Notch");
}

void GainTuningTest::closedWindowSendsNothingMore()
{
    QFETCH(QByteArray, button);
    GainBench bench;
    bench.registers = plainDrive();
    bench.finishInitialRead();
    bench.window.show();
    bench.button(button)->click();
    // The reply of a round starts the write; the next one is under way when the window closes.
    QTRY_VERIFY(!bench.unanswered.isEmpty());
    bench.answer();
    QVERIFY(!bench.button(button)->isEnabled());
    bench.window.close();
    bench.takeFrames();
    // Longer than any pause: another window's first round tells.
    GainBench other;
    other.registers = plainDrive();
    other.finishInitialRead();
    for (int round = 0; round < 2; ++round) {
        QTRY_VERIFY(!other.unanswered.isEmpty());
        other.answerAll();
        while (!bench.unanswered.isEmpty())
            bench.answer();
    }
    QCOMPARE(bench.takeFrames(), QList<QByteArray>());
}

QTEST_MAIN(GainTuningTest)
#include "tst_gaintuning.moc"
