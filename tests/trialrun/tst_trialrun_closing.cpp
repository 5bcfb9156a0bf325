// SPDX-License-Identifier: GPL-3.0-or-later
// Whenever the trial run is closed, the drive gets its own values back.
#include "trialbench.h"

#include "trialrun/holdbutton.h"

#include <QElapsedTimer>

class TrialRunClosingTest : public QObject
{
    Q_OBJECT

private slots:
    void idleWindowRestoresEverythingInReadingOrder();
    void controlPanelGetsTimeOfItsOwn();
    void savedMotionBitsGoLast();
    void closingAtAnyFrameRestoresWhatWasRead_data();
    void closingAtAnyFrameRestoresWhatWasRead();
    void closingInEachStageRestoresEverything_data();
    void closingInEachStageRestoresEverything();
    void windowWithoutLinkClosesAtOnce();
    void windowThatHasReadNothingClosesAtOnce();
    void nothingElseIsSentDuringTheRestore();
    void heldButtonIsReleasedBeforeTheRestore();
};

void TrialRunClosingTest::idleWindowRestoresEverythingInReadingOrder()
{
    TrialBench bench;
    bench.peer.registers[0x20CA] = 0x0802;
    bench.peer.registers[0x213A] = 0xFFFF;
    const QMap<int, quint16> before = bench.peer.registers;
    QVERIFY(bench.waitUntilReady());
    QVERIFY(!bench.window->close());
    QVERIFY(bench.window->isVisible());
    QVERIFY(!bench.drive().page()->isEnabled());
    QVERIFY(runUntil([&] { return bench.window.isNull(); }, 5000));
    QCOMPARE(bench.peer.frames, restoringWrites(before));
    QCOMPARE(bench.closings, 1);
    QCOMPARE(bench.peer.registers, before);
}

void TrialRunClosingTest::controlPanelGetsTimeOfItsOwn()
{
    TrialBench bench;
    QVERIFY(bench.waitUntilReady());
    QElapsedTimer time;
    qint64 second = 0;
    bench.peer.intercept = [&](const QByteArray &, const QByteArray &usual) {
        if (bench.peer.frames.size() == 1)
            time.start();
        else if (bench.peer.frames.size() == 2)
            second = time.elapsed();
        return usual;
    };
    bench.window->close();
    QVERIFY(runUntil([&] { return bench.window.isNull(); }, 5000));
    QVERIFY2(second >= 50, qPrintable(QString::number(second)));
}

void TrialRunClosingTest::savedMotionBitsGoLast()
{
    TrialBench bench;
    bench.peer.registers[0x20CA] = 0x0101;
    const QMap<int, quint16> before = bench.peer.registers;
    QVERIFY(bench.waitUntilReady());
    bench.window->close();
    QVERIFY(runUntil([&] { return bench.window.isNull(); }, 5000));
    QList<QByteArray> expected = restoringWrites(before);
    expected.append(expected.takeFirst());
    expected.prepend(panel("0000"));
    QCOMPARE(bench.peer.frames, expected);
}

void TrialRunClosingTest::closingAtAnyFrameRestoresWhatWasRead_data()
{
    QTest::addColumn<int>("sent");
    // 30 reads, 6 writes of the set-up, 5 reads for the table.
    for (int sent = 1; sent <= 41; ++sent)
        QTest::addRow("frame %d", sent) << sent;
}

void TrialRunClosingTest::closingAtAnyFrameRestoresWhatWasRead()
{
    QFETCH(int, sent);
    TrialBench bench;
    const QMap<int, quint16> before = bench.peer.registers;
    bench.peer.intercept = [&](const QByteArray &, const QByteArray &usual) {
        if (bench.peer.frames.size() == sent)
            bench.peer.held = true;
        return usual;
    };
    QVERIFY(runUntil([&] { return bench.peer.held; }, 5000));
    bench.peer.intercept = {};
    bench.peer.frames.clear();
    const int read = qMin(sent - 1, 30);
    QCOMPARE(bench.window->close(), read == 0);
    bench.peer.release();
    QVERIFY(runUntil([&] { return bench.window.isNull(); }, 5000));
    QCOMPARE(bench.peer.frames, restoringWrites(before, read));
    for (const SavedRegister &saved : savedRegisters)
        QCOMPARE(bench.peer.registers.value(saved.address), before.value(saved.address));
}

void TrialRunClosingTest::closingInEachStageRestoresEverything_data()
{
    QTest::addColumn<QString>("stage");
    for (const char *stage : {"servo on", "held", "servo off", "entering", "step three", "reading once",
                              "once", "moving", "reading continuous", "continuous", "running", "paused",
                              "typed once", "typed continuous", "whole table", "back again"})
        QTest::newRow(stage) << QString::fromLatin1(stage);
}

void TrialRunClosingTest::closingInEachStageRestoresEverything()
{
    QFETCH(QString, stage);
    TrialBench bench;
    const QMap<int, quint16> before = bench.peer.registers;
    QVERIFY(bench.waitUntilReady());
    const TrialRunDriver drive = bench.drive();
    using Act = std::function<void()>;
    const Act servoOn = [&] { TrialRunDriver::click(drive.servoOn()); };
    const Act stepThree = [&] {
        TrialRunDriver::click(drive.positionRun());
        TrialBench::settled();
    };
    const Act once = [&] {
        stepThree();
        TrialRunDriver::click(drive.once());
        TrialBench::settled();
    };
    const Act continuous = [&] {
        stepThree();
        TrialRunDriver::click(drive.continuous());
        TrialBench::settled();
    };
    const QMap<QString, Act> acts{
        {"servo on", servoOn},
        {"held", [&] { servoOn(), TrialRunDriver::hold(drive.jogForward()), TrialBench::settled(); }},
        {"servo off", [&] { servoOn(), TrialBench::settled(), TrialRunDriver::click(drive.servoOff()); }},
        {"entering", [&] { TrialRunDriver::click(drive.positionRun()); }},
        {"step three", stepThree},
        {"reading once", [&] { stepThree(), TrialRunDriver::click(drive.once()); }},
        {"once", once},
        {"moving", [&] { once(), TrialRunDriver::hold(drive.moveForward()), TrialBench::settled(); }},
        {"reading continuous", [&] { stepThree(), TrialRunDriver::click(drive.continuous()); }},
        {"continuous", continuous},
        {"running", [&] { continuous(), TrialRunDriver::click(drive.runButton("Run")); }},
        {"paused",
         [&] {
             continuous(), TrialRunDriver::click(drive.runButton("Run")), TrialBench::settled(),
                 TrialRunDriver::click(drive.runButton("Pause"));
         }},
        {"typed once", [&] { once(), TrialRunDriver::type(drive.positionTable(), 0, "5000"); }},
        {"typed continuous", [&] { continuous(), TrialRunDriver::type(drive.positionTable(), 4, "100"); }},
        {"whole table", [&] { once(), TrialRunDriver::click(drive.continuous()); }},
        {"back again", [&] { once(), TrialRunDriver::click(drive.jogRun()); }},
    };
    acts.value(stage)();
    bench.window->close();
    QVERIFY(runUntil([&] { return bench.window.isNull(); }, 5000));
    for (const SavedRegister &saved : savedRegisters) {
        for (int i = 0; i < saved.words; ++i)
            QCOMPARE(bench.peer.registers.value(saved.address + i), before.value(saved.address + i));
    }
    // The whole restore, and nothing behind it.
    QCOMPARE(bench.sent().mid(bench.sent().size() - 30), restoringWrites(before));
}

void TrialRunClosingTest::windowWithoutLinkClosesAtOnce()
{
    TrialBench bench;
    QVERIFY(bench.waitUntilReady());
    SerialPort::portOpened = false;
    QVERIFY(bench.window->close());
    QCOMPARE(bench.peer.frames, QList<QByteArray>{withdrawal});
    QCOMPARE(bench.closings, 0);
}

void TrialRunClosingTest::windowThatHasReadNothingClosesAtOnce()
{
    TrialBench bench;
    QVERIFY(bench.window->close());
    QVERIFY(bench.peer.frames.isEmpty());
}

void TrialRunClosingTest::nothingElseIsSentDuringTheRestore()
{
    TrialBench bench;
    QVERIFY(bench.waitUntilReady());
    bench.peer.held = true;
    bench.window->close();
    TrialRun *const window = bench.window;
    window->servoOnSlt();
    window->servoOFFSlt();
    window->jogforewardPressedSlt();
    window->jogforewardReleasedSlt();
    window->jogrollbackPressedSlt();
    window->jogrollbackReleasedSlt();
    window->readJogValues();
    window->readAbsolutePosition();
    window->nextStepSlt();
    window->previousStepSlt();
    window->singleBtnToggledSlt(true);
    window->continuousBtnToggledSlt(true);
    window->positionforewardPressedSlt();
    window->positionforewardReleasedSlt();
    window->positionrollbackPressedSlt();
    window->positionrollbackReleasedSlt();
    window->positionPauseBtnSlt();
    window->saveInitValue();
    window->initWrite();
    TrialRunDriver::type(bench.drive().jogTable(), 1, QStringLiteral("5"));
    TrialRunDriver::type(bench.drive().positionTable(), 1, QStringLiteral("5"));
    QCOMPARE(bench.peer.frames.size(), 1);
    bench.peer.release();
    QVERIFY(runUntil([&] { return bench.window.isNull(); }, 5000));
    QCOMPARE(bench.peer.frames.size(), 30);
}

void TrialRunClosingTest::heldButtonIsReleasedBeforeTheRestore()
{
    TrialBench bench;
    QVERIFY(bench.waitUntilReady());
    TrialRunDriver::click(bench.drive().servoOn());
    TrialRunDriver::hold(bench.drive().jogForward());
    TrialBench::settled();
    bench.peer.frames.clear();
    bench.window->close();
    QCOMPARE(bench.sent().first(), panel("0001"));
    QVERIFY(runUntil([&] { return bench.window.isNull(); }, 5000));
    QCOMPARE(bench.sent().size(), 31);
}

QTEST_MAIN(TrialRunClosingTest)
#include "tst_trialrun_closing.moc"
