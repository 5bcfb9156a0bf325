// SPDX-License-Identifier: GPL-3.0-or-later
// A trial run that is closed while drive or link are at fault: it restores, or the user is told.
#include "trialbench.h"

#include "support/modalanswers.h"

#include <QElapsedTimer>

namespace {

const QString failedText = QStringLiteral("初始参数回写失败！");

} // namespace

class TrialRunClosingFaultsTest : public QObject
{
    Q_OBJECT

private slots:
    void silentDriveIsToldAfterTheWatch();
    void idleClosingHasNoWatch();
    void secondCloseArmsTheWatch();
    void watchStopsWhenTheRestoreEnds();
    void refusedWriteIsTriedAgain();
    void refusedRestoreIsTold();
    void lateReplyOfBeforeDoesNotAdvanceTheRestore();
    void deadLinkLeavesTheServoOffBehind();
    void linkThatComesBackGoesOnRestoring();
};

void TrialRunClosingFaultsTest::silentDriveIsToldAfterTheWatch()
{
    ModalAnswers boxes;
    TrialBench bench;
    bench.peer.intercept = [&](const QByteArray &, const QByteArray &usual) {
        return bench.peer.frames.size() < 35 ? usual : QByteArray();
    };
    QVERIFY(bench.waitForFrames(35));
    bench.peer.frames.clear();
    bench.peer.intercept = [](const QByteArray &, const QByteArray &) { return QByteArray(); };
    boxes.expect(failedText);
    QElapsedTimer time;
    time.start();
    bench.window->close();
    QVERIFY(runUntil([&] { return bench.window.isNull(); }, 8000));
    QVERIFY2(time.elapsed() >= 3950, qPrintable(QString::number(time.elapsed())));
    QVERIFY(boxes.isDone());
    QCOMPARE(boxes.seen.first().title, QStringLiteral("失败"));
    QCOMPARE(boxes.seen.first().icon, QMessageBox::Critical);
    QCOMPARE(bench.closings, 1);
    // What the user was told to have failed does not leave later.
    QCOMPARE(bench.peer.frames.last(), withdrawal);
}

void TrialRunClosingFaultsTest::idleClosingHasNoWatch()
{
    TrialBench bench;
    QVERIFY(bench.waitUntilReady());
    bench.peer.held = true;
    bench.window->close();
    QVERIFY(!runUntil([&] { return bench.window.isNull(); }, 4500));
    bench.peer.release();
    QVERIFY(runUntil([&] { return bench.window.isNull(); }, 5000));
}

void TrialRunClosingFaultsTest::secondCloseArmsTheWatch()
{
    ModalAnswers boxes;
    TrialBench bench;
    QVERIFY(bench.waitUntilReady());
    bench.peer.held = true;
    bench.window->close();
    QVERIFY(!bench.window->close());
    QCOMPARE(bench.peer.frames.size(), 1);
    boxes.expect(failedText);
    QVERIFY(runUntil([&] { return bench.window.isNull(); }, 8000));
    QVERIFY(boxes.isDone());
}

void TrialRunClosingFaultsTest::watchStopsWhenTheRestoreEnds()
{
    ModalAnswers boxes; // none comes
    TrialBench bench;
    bench.peer.intercept = [&](const QByteArray &, const QByteArray &usual) {
        bench.peer.held = bench.peer.frames.size() == 35;
        return usual;
    };
    QVERIFY(runUntil([&] { return bench.peer.held; }, 5000));
    bench.peer.intercept = {};
    bench.window->close();
    bench.peer.release();
    QVERIFY(runUntil([&] { return bench.window.isNull(); }, 3000));
    QVERIFY(boxes.seen.isEmpty());
}

void TrialRunClosingFaultsTest::refusedWriteIsTriedAgain()
{
    TrialBench bench;
    const QMap<int, quint16> before = bench.peer.registers;
    QVERIFY(bench.waitUntilReady());
    bench.peer.intercept = [&](const QByteArray &, const QByteArray &usual) {
        return bench.peer.frames.size() <= 3 ? wire::frame("019004") : usual;
    };
    bench.window->close();
    QVERIFY(runUntil([&] { return bench.window.isNull(); }, 5000));
    const QByteArray first = restoringWrites(before, 1).first();
    QCOMPARE(bench.peer.frames, (QList<QByteArray>{first, first, first}) + restoringWrites(before));
}

void TrialRunClosingFaultsTest::refusedRestoreIsTold()
{
    ModalAnswers boxes;
    TrialBench bench;
    QVERIFY(bench.waitUntilReady());
    bench.peer.intercept = [&](const QByteArray &request, const QByteArray &usual) {
        return request.mid(2, 2) == word(0x23E9) ? wire::frame("019004") : usual;
    };
    boxes.expect(failedText);
    bench.window->close();
    QVERIFY(runUntil([&] { return bench.window.isNull(); }, 5000));
    QVERIFY(boxes.isDone());
    QCOMPARE(bench.peer.frames.size(), 29 + 11);
}

void TrialRunClosingFaultsTest::lateReplyOfBeforeDoesNotAdvanceTheRestore()
{
    TrialBench bench;
    QVERIFY(bench.waitUntilReady());
    bench.peer.held = true;
    TrialRunDriver::click(bench.drive().servoOn());
    bench.window->close();
    const int sent = bench.peer.frames.size();
    bench.window->handleTrialRun(panel("0001"));
    bench.window->handleTrialRun(wire::readReply(wire::bytes("00000064")));
    QCOMPARE(bench.peer.frames.size(), sent);
    bench.window->handleTrialRun(wire::frame("011020CA0001"));
    QCOMPARE(bench.peer.frames.size(), sent + 1);
    QCOMPARE(bench.peer.frames.last().mid(2, 2), word(0x200B));
}

void TrialRunClosingFaultsTest::deadLinkLeavesTheServoOffBehind()
{
    TrialBench bench;
    QVERIFY(bench.waitUntilReady());
    TrialRunDriver::click(bench.drive().servoOn());
    TrialBench::settled();
    bench.peer.held = true;
    SerialPort::portOpened = false;
    QVERIFY(bench.window->close());
    QCOMPARE(bench.peer.frames.mid(bench.peer.frames.size() - 2),
             (QList<QByteArray>{withdrawal, panel("0000")}));
}

void TrialRunClosingFaultsTest::linkThatComesBackGoesOnRestoring()
{
    TrialBench bench;
    const QMap<int, quint16> before = bench.peer.registers;
    QVERIFY(bench.waitUntilReady());
    bench.peer.intercept = [&](const QByteArray &, const QByteArray &usual) {
        return bench.peer.frames.size() < 7 ? usual : QByteArray();
    };
    bench.window->close();
    QVERIFY(bench.waitForFrames(7));
    SerialPort::portOpened = false;
    bench.peer.intercept = {};
    bench.window->linkEnded();
    SerialPort::portOpened = true;
    QVERIFY(runUntil([&] { return bench.window.isNull(); }, 5000));
    const QList<QByteArray> expected = restoringWrites(before);
    QCOMPARE(bench.peer.frames, expected.mid(0, 7) + QList<QByteArray>{withdrawal} + expected.mid(6));
}

QTEST_MAIN(TrialRunClosingFaultsTest)
#include "tst_trialrun_closingfaults.moc"
