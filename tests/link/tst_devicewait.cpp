// SPDX-License-Identifier: GPL-3.0-or-later
// How the worker's waits end: by bytes, time, calls and stops, and at a device that takes nothing.
#include "failingwrites.h"

#include "link/devicewait.h"
#include "support/ptypeer.h"

#include <QElapsedTimer>
#include <QSerialPort>
#include <QTest>

#include <ctime>
#include <memory>
#include <thread>

class DeviceWaitTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void writingThatFailsEndsAtItsTimeAndDoesNotSpin();
    void stopEndsEveryWait_data();
    void stopEndsEveryWait();
    void resumedWaitsLastAgain();
    void waitThatOnlyTimeEndsOutlastsAStop();
    void bytesEndASilence();

private:
    PtyPeer peer;
    QSerialPort device;
};

void DeviceWaitTest::init()
{
    device.setPortName(peer.path());
    QVERIFY(device.open(QIODevice::ReadWrite));
}

void DeviceWaitTest::cleanup()
{
    device.close();
}

void DeviceWaitTest::writingThatFailsEndsAtItsTimeAndDoesNotSpin()
{
    DeviceWait wait;
    auto failing = std::make_unique<FailingWrites>(peer.path());
    device.write("01234567");
    QVERIFY(device.bytesToWrite() > 0);
    QElapsedTimer clock;
    clock.start();
    const std::clock_t before = std::clock();
    QCOMPARE(wait.wait(device, 200, DeviceWait::EndedBy::Stop), DeviceWait::Result::TimedOut);
    QVERIFY2(clock.elapsed() >= 199 && clock.elapsed() < 1000, qPrintable(QString::number(clock.elapsed())));
    const double busy = 1000.0 * double(std::clock() - before) / CLOCKS_PER_SEC;
    QVERIFY2(busy < 60, qPrintable(QString::number(busy)));
    // It is tried again by the next wait.
    failing.reset();
    wait.wait(device, 1, DeviceWait::EndedBy::Stop);
    QCOMPARE(device.bytesToWrite(), qint64(0));
}

void DeviceWaitTest::stopEndsEveryWait_data()
{
    QTest::addColumn<int>("kind");
    QTest::newRow("for a reply") << 0;
    QTest::newRow("for a request") << 1;
    QTest::newRow("for silence") << 2;
    QTest::newRow("a pause") << 3;
}

void DeviceWaitTest::stopEndsEveryWait()
{
    QFETCH(int, kind);
    DeviceWait wait;
    const auto doWait = [&] {
        const auto until = DeviceWait::Clock::now() + std::chrono::seconds(20);
        if (kind < 2) {
            const auto ends = kind == 0 ? DeviceWait::EndedBy::Stop : DeviceWait::EndedBy::StopOrCall;
            return wait.wait(device, 20000, ends) == DeviceWait::Result::Stopped;
        }
        if (kind == 2)
            return !wait.waitForSilence(device, until);
        wait.pause(until);
        return DeviceWait::Clock::now() < until;
    };
    std::thread stopper([&wait] {
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        wait.stop();
    });
    const bool ended = doWait();
    stopper.join();
    QVERIFY(ended);
    // And so for every one that follows.
    QVERIFY(doWait());
}

void DeviceWaitTest::resumedWaitsLastAgain()
{
    DeviceWait wait;
    wait.stop();
    wait.stop();
    wait.resume();
    QCOMPARE(wait.wait(device, 5, DeviceWait::EndedBy::StopOrCall), DeviceWait::Result::TimedOut);
}

void DeviceWaitTest::waitThatOnlyTimeEndsOutlastsAStop()
{
    DeviceWait wait;
    wait.stop();
    QCOMPARE(wait.wait(device, 5, DeviceWait::EndedBy::Time), DeviceWait::Result::TimedOut);
    peer.write("x");
    QCOMPARE(wait.wait(device, 5000, DeviceWait::EndedBy::Time), DeviceWait::Result::Ready);
    device.readAll();
}

void DeviceWaitTest::bytesEndASilence()
{
    DeviceWait wait;
    QVERIFY(wait.waitForSilence(device, DeviceWait::Clock::now() + std::chrono::milliseconds(5)));
    QVERIFY(wait.waitForSilence(device, DeviceWait::Clock::now() - std::chrono::milliseconds(5)));
    peer.write("x");
    QVERIFY(!wait.waitForSilence(device, DeviceWait::Clock::now() + std::chrono::seconds(20)));
    device.readAll();
    QVERIFY(wait.waitForSilence(device, DeviceWait::Clock::now() + std::chrono::milliseconds(5)));
}

QTEST_MAIN(DeviceWaitTest)
#include "tst_devicewait.moc"
