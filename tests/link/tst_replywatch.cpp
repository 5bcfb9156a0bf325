// SPDX-License-Identifier: GPL-3.0-or-later
// The watch over a reply that stays away: when it tells, and when it must not.
#include "link/replywatch.h"
#include "link/serialport.h"
#include "support/signallog.h"

#include <QElapsedTimer>
#include <QTest>

namespace {

constexpr int wait = 200; // ms
constexpr int longer = 500;

} // namespace

class ReplyWatchTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void lostReplyIsToldOnce();
    void nothingIsToldBeforeARequest();
    void waitBeginsAnewWithEachRequest();
    void nothingIsToldWithoutALink();
    void nothingIsToldDuringACapture();
    void busyThreadLosesNoReply();

private:
    std::unique_ptr<ReplyWatch> watch;
    std::unique_ptr<SignalLog<>> told;
};

void ReplyWatchTest::init()
{
    SerialPort::portOpened = true;
    watch = std::make_unique<ReplyWatch>(wait);
    told = std::make_unique<SignalLog<>>(watch.get(), &ReplyWatch::overdue);
}

void ReplyWatchTest::cleanup()
{
    SerialPort::portOpened = false;
    SerialPort::scopeRunning = false;
}

void ReplyWatchTest::lostReplyIsToldOnce()
{
    QElapsedTimer clock;
    clock.start();
    watch->begin();
    QTRY_COMPARE(told->count(), 1);
    // A coarse timer may come up to a twentieth early.
    QVERIFY2(clock.elapsed() >= wait * 9 / 10, qPrintable(QString::number(clock.elapsed())));
    QVERIFY(!QTest::qWaitFor([this] { return told->count() > 1; }, longer));
}

void ReplyWatchTest::nothingIsToldBeforeARequest()
{
    QVERIFY(!QTest::qWaitFor([this] { return told->count() > 0; }, longer));
}

void ReplyWatchTest::waitBeginsAnewWithEachRequest()
{
    QElapsedTimer clock;
    clock.start();
    while (clock.elapsed() < 2 * longer) {
        watch->begin();
        QVERIFY(!QTest::qWaitFor([this] { return told->count() > 0; }, wait / 4));
    }
    QTRY_COMPARE(told->count(), 1);
}

void ReplyWatchTest::nothingIsToldWithoutALink()
{
    SerialPort::portOpened = false;
    watch->begin();
    QVERIFY(!QTest::qWaitFor([this] { return told->count() > 0; }, longer));
    // The link is back: from now on it is waited.
    QElapsedTimer clock;
    clock.start();
    SerialPort::portOpened = true;
    QTRY_COMPARE(told->count(), 1);
    QVERIFY2(clock.elapsed() >= wait * 9 / 10, qPrintable(QString::number(clock.elapsed())));
}

void ReplyWatchTest::nothingIsToldDuringACapture()
{
    SerialPort::scopeRunning = true;
    watch->begin();
    QVERIFY(!QTest::qWaitFor([this] { return told->count() > 0; }, longer));
    SerialPort::scopeRunning = false;
    QTRY_COMPARE(told->count(), 1);
}

void ReplyWatchTest::busyThreadLosesNoReply()
{
    watch->begin();
    QTest::qSleep(2 * wait);
    // The reply that has come meanwhile is taken later than the timer.
    QCoreApplication::processEvents();
    QCOMPARE(told->count(), 0);
}

QTEST_GUILESS_MAIN(ReplyWatchTest)
#include "tst_replywatch.moc"
