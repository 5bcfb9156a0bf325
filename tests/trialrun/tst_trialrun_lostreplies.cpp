// SPDX-License-Identifier: GPL-3.0-or-later
// A reply to the trial run that never comes although the link stays open.
#include "link/replywatch.h"
#include "trialbench.h"
#include "trialrun/holdbutton.h"

#include <QElapsedTimer>

namespace {

constexpr int lossLimit =
    2 * ReplyWatch::longestWait; // ms in which a loss is noticed, however busy the machine
constexpr int longWait = ReplyWatch::longestWait + 1000; // ms

} // namespace

class TrialRunLostRepliesTest : public QObject
{
    Q_OBJECT

private slots:
    void lostRequestIsSentAgain_data();
    void lostRequestIsSentAgain();
    void lostTableReadIsAskedAgain();
    void addresslessFrameIsNotSentTwice();
    void pressIsNotRepeated();
    void restoreWaitsForTheLink();
    void nothingIsSentAgainWithoutALink();
};

void TrialRunLostRepliesTest::lostRequestIsSentAgain_data()
{
    QTest::addColumn<QByteArray>("request");
    QTest::newRow("first read of the saving") << wire::frame("010320CA0001");
    QTest::newRow("read of the saving") << wire::frame("010321 3A 0002");
    QTest::newRow("write of the set-up") << wire::frame("010620DC0028");
    QTest::newRow("last write of the set-up") << wire::frame("011020640001020000");
}

void TrialRunLostRepliesTest::lostRequestIsSentAgain()
{
    QFETCH(QByteArray, request);
    TrialBench bench;
    QElapsedTimer lost;
    int secondAfter = 0;
    bench.peer.intercept = [&](const QByteArray &frame, const QByteArray &usual) {
        if (frame != request)
            return usual;
        if (lost.isValid()) {
            secondAfter = int(lost.elapsed());
            return usual;
        }
        lost.start();
        return QByteArray();
    };
    QVERIFY(runUntil([&] { return bench.drive().servoOn()->isEnabled(); }, 5000 + lossLimit));
    QVERIFY2(secondAfter >= ReplyWatch::longestWait * 9 / 10, qPrintable(QString::number(secondAfter)));
    // 30 reads, 6 writes, 4 reads of the table, and the repetition behind the frame itself.
    const QList<QByteArray> sent = bench.sent();
    QCOMPARE(sent.size(), 41);
    QCOMPARE(sent.count(request), 2);
    QCOMPARE(sent.at(sent.indexOf(request) + 1), request);
}

void TrialRunLostRepliesTest::lostTableReadIsAskedAgain()
{
    TrialBench bench;
    QVERIFY(bench.waitUntilReady());
    QVERIFY(bench.enterStepThree());
    bench.peer.intercept = [&](const QByteArray &, const QByteArray &usual) {
        return bench.sent().size() == 1 ? QByteArray() : usual;
    };
    TrialRunDriver::click(bench.drive().once());
    QVERIFY(runUntil([&] { return bench.sent().size() > 1; }, lossLimit));
    TrialBench::settled();
    QCOMPARE(bench.sent().at(0), bench.sent().at(1));
    QCOMPARE(TrialRunDriver::cell(bench.drive().positionTable(), 0),
             QString::number(bench.peer.registers.value(0x213B)));
}

void TrialRunLostRepliesTest::addresslessFrameIsNotSentTwice()
{
    TrialBench bench;
    QVERIFY(bench.waitForAddressless());
    bench.peer.frames.clear();
    TrialRunDriver::type(bench.drive().positionTable(), 2, QStringLiteral("7"));
    QVERIFY(bench.sent().isEmpty());
    // What waits behind it goes on.
    QVERIFY(runUntil([&] { return bench.peer.registers.value(0x23F5) == 7; }, lossLimit));
    QVERIFY(!bench.sent().contains(addressless));
}

void TrialRunLostRepliesTest::pressIsNotRepeated()
{
    TrialBench bench;
    QVERIFY(bench.waitUntilReady());
    bench.enter(bench.drive().once());
    bench.peer.held = true;
    TrialRunDriver::hold(bench.drive().moveForward());
    TrialBench::settled();
    QCOMPARE(bench.sent().size(), 1);
    QVERIFY(!runUntil([&] { return bench.sent().size() > 1; }, longWait));
    TrialRunDriver::letGo(bench.drive().moveForward());
}

void TrialRunLostRepliesTest::restoreWaitsForTheLink()
{
    TrialBench bench;
    QVERIFY(bench.waitUntilReady());
    bench.peer.held = true;
    bench.window->close();
    QCOMPARE(bench.peer.frames.size(), 1);
    QVERIFY(!runUntil([&] { return bench.peer.frames.size() > 1; }, longWait));
    bench.peer.release();
    QVERIFY(runUntil([&] { return bench.window.isNull(); }, 5000));
    QCOMPARE(bench.peer.frames.size(), 30);
}

void TrialRunLostRepliesTest::nothingIsSentAgainWithoutALink()
{
    TrialBench bench;
    bench.peer.held = true;
    QVERIFY(runUntil([&] { return !bench.peer.frames.isEmpty(); }, 2000));
    SerialPort::portOpened = false;
    QVERIFY(!runUntil([&] { return bench.peer.frames.size() > 1; }, longWait));
}

QTEST_MAIN(TrialRunLostRepliesTest)
#include "tst_trialrun_lostreplies.moc"
