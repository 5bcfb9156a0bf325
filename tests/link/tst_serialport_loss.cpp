// SPDX-License-Identifier: GPL-3.0-or-later
// How the link is given up, told and brought back.
#include "link/framecodec.h"
#include "link/portlist.h"
#include "link/serialport.h"
#include "support/modalanswers.h"
#include "support/ptypeer.h"
#include "support/rununtil.h"
#include "support/signallog.h"
#include "support/wire.h"

#include <QPointer>
#include <QTest>
#include <QTimer>

#include <chrono>
#include <ctime>

namespace {

const QByteArray probe = wire::bytes("010320600002cfd5");
const QByteArray readA = wire::frame("010320070001");
const QByteArray readB = wire::frame("010320080001");
const QString failed = QStringLiteral("Fail to connect to the device via \nRead Modbus Failed!");
constexpr int rs485 = 115200;
constexpr int usb = 100;

QByteArray answerAll(const QByteArray &request)
{
    return wire::replyTo(request, QByteArray(4, '\0'));
}

// A port of that name in the list for the life of the object.
class ListedPort
{
public:
    explicit ListedPort(const QString &name, const QString &manufacturer = QStringLiteral("Maker"))
        : portName(name)
    {
        addSerialPort({name, QStringLiteral("Test drive"), manufacturer});
    }
    ~ListedPort() { removeSerialPort(portName); }
    Q_DISABLE_COPY_MOVE(ListedPort)

private:
    QString portName;
};

} // namespace

class SerialPortLossTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void driveThatNeverAnswersIsToldOnceThenTriedSilently();
    void lostLinkComesBackAndServesItsQueue();
    void nextFailureIsToldAgain();
    void staleBytesAreDrainedWhileReconnecting();
    void noticeClosesItselfWhileTheWatchGoesOn();
    void runningCaptureIsStoppedOnALoss();
    void noNoticeWhileClosing();
    void portThatCannotBeOpenedIsToldAndTriedAgain();
    void withoutAnyPortNothingIsTried();
    void adapterWithoutManufacturerEndsTheLink();
    void laterPortWithoutManufacturerEndsItToo();
    void earlierPortWithoutManufacturerDoesNot();
    void hungUpDeviceDoesNotSpinWhenIdle();
    void hungUpDeviceIsGivenUpInMidTransferAndComesBack();
    void afterTheShutdownNothingIsOpenedAnyMore();
    void portOfADescriptionWithBracketsIsFound();
};

void SerialPortLossTest::init()
{
    SerialPort::portOpened = false;
    SerialPort::scopeRunning = false;
    SerialPort::reconnecting = false;
}

void SerialPortLossTest::driveThatNeverAnswersIsToldOnceThenTriedSilently()
{
    ModalAnswers boxes;
    PtyPeer peer;
    const ListedPort listed(peer.path());
    SerialPort port;
    const SignalLog online(&port, &SerialPort::servoONOFFLine);
    const SignalLog failures(&port, &SerialPort::connetFailedSig);
    port.getPortName(peer.entry(), rs485);
    QTRY_VERIFY(port.isFinished());
    QCOMPARE(peer.frames(), QList<QByteArray>({probe, probe, probe}));
    QTRY_VERIFY(online.count() >= 1);
    QCOMPARE(online.count(false), 1);
    QVERIFY(!SerialPort::portOpened);

    boxes.expectPassing(failed);
    QTRY_COMPARE_WITH_TIMEOUT(failures.count(), 1, 3000);
    QTRY_VERIFY_WITH_TIMEOUT(peer.frameCount() >= 9, 6000);
    QVERIFY(SerialPort::reconnecting);
    QCOMPARE(failures.count(), 1);
    QCOMPARE(boxes.seen.size(), 1);
}

void SerialPortLossTest::lostLinkComesBackAndServesItsQueue()
{
    ModalAnswers boxes;
    boxes.expectPassing(failed);
    PtyPeer peer(
        [](const QByteArray &request) { return request == readA ? QByteArray() : answerAll(request); });
    const ListedPort listed(peer.path());
    SerialPort port;
    const SignalLog replies(&port, &SerialPort::handleBaseParameter);
    const SignalLog online(&port, &SerialPort::servoONOFFLine);
    port.getPortName(peer.entry(), usb);
    QTRY_VERIFY(online.count() >= 1);
    // Queued as soon as the link is lost: the worker begins anew behind the notice.
    const int repeatsBefore = SerialPort::repeatCount;
    int writesUntilLost = 0;
    const QObject whileThisRuns;
    connect(&port, &SerialPort::servoONOFFLine, &whileThisRuns, [&](bool isOnline) {
        if (isOnline || writesUntilLost > 0)
            return;
        writesUntilLost = 1 + SerialPort::repeatCount - repeatsBefore;
        port.writeSlot(readB, QStringLiteral("Editor"));
    });
    port.writeSlot(readA, QStringLiteral("Editor"));
    QTRY_VERIFY_WITH_TIMEOUT(boxes.isDone(), 5000);
    QTRY_COMPARE_WITH_TIMEOUT(replies.count(), 1, 5000);
    QVERIFY(!SerialPort::reconnecting);
    QVERIFY(SerialPort::portOpened);
    // The request in flight was lost with the worker; the queued one served as the probe.
    QCOMPARE(peer.frames().count(readA), writesUntilLost);
    QCOMPARE(peer.frames().last(), readB);
    QCOMPARE(peer.framesOnce().size(), 3);
}

void SerialPortLossTest::nextFailureIsToldAgain()
{
    ModalAnswers boxes;
    boxes.expectPassing(failed);
    std::atomic<bool> deaf{true};
    PtyPeer peer([&deaf](const QByteArray &request) { return deaf ? QByteArray() : answerAll(request); });
    const ListedPort listed(peer.path());
    SerialPort port;
    port.getPortName(peer.entry(), usb);
    QTRY_VERIFY_WITH_TIMEOUT(boxes.isDone(), 5000);
    deaf = false;
    QTRY_VERIFY_WITH_TIMEOUT(SerialPort::portOpened && !SerialPort::reconnecting, 5000);
    boxes.expectPassing(failed);
    deaf = true;
    port.writeSlot(readA, QStringLiteral("Editor"));
    QTRY_VERIFY_WITH_TIMEOUT(boxes.isDone(), 6000);
}

void SerialPortLossTest::staleBytesAreDrainedWhileReconnecting()
{
    PtyPeer peer(answerAll);
    // Left over from an earlier session, they would make the probe's chunk a bad one.
    SerialPort port;
    SerialPort::reconnecting = true;
    std::thread noise([&peer] {
        for (int i = 0; i < 30; ++i) {
            peer.write(wire::bytes("AABBCC"));
            std::this_thread::sleep_for(std::chrono::milliseconds(2));
        }
    });
    port.getPortName(peer.entry(), rs485);
    noise.join();
    QTRY_VERIFY(!SerialPort::reconnecting);
    QCOMPARE(peer.framesOnce(), QList<QByteArray>({probe}));
    QVERIFY(SerialPort::portOpened);
}

void SerialPortLossTest::noticeClosesItselfWhileTheWatchGoesOn()
{
    ModalAnswers boxes;
    PtyPeer peer;
    const ListedPort listed(peer.path());
    SerialPort port;
    port.getPortName(peer.entry(), usb);
    QTRY_VERIFY(port.isFinished());
    // A coarse timer that begins in this part of a second would fire a tenth of a second early.
    QVERIFY(runUntil(
        [] {
            const auto now = std::chrono::steady_clock::now().time_since_epoch();
            const auto part = std::chrono::duration_cast<std::chrono::milliseconds>(now).count() % 500;
            return part >= 120 && part < 160;
        },
        5000));
    peer.forget();
    QElapsedTimer shown;
    int probesWhileShown = 0;
    QPointer<QMessageBox> notice;
    boxes.expect(failed, [&shown, &notice](QMessageBox *box) {
        shown.start();
        notice = box;
    });
    // The slot returns when the box has gone.
    QTimer::singleShot(1800, &port, [&probesWhileShown, &peer, &notice] {
        if (notice && notice->isVisible())
            probesWhileShown = peer.frameCount();
    });
    port.connetFailedSlt();
    QVERIFY2(shown.elapsed() >= 1950 && shown.elapsed() < 4000, qPrintable(QString::number(shown.elapsed())));
    QVERIFY(probesWhileShown >= 3);
    QCOMPARE(boxes.seen.first().icon, QMessageBox::NoIcon);
    QCOMPARE(boxes.seen.first().buttons, QStringList());
    QCOMPARE(boxes.seen.first().title, QString());
}

void SerialPortLossTest::runningCaptureIsStoppedOnALoss()
{
    ModalAnswers boxes;
    boxes.expectPassing(failed);
    SerialPort port;
    const SignalLog stopped(&port, &SerialPort::stopscope);
    bool runningWhenTold = false;
    connect(&port, &SerialPort::stopscope, &port,
            [&runningWhenTold] { runningWhenTold = SerialPort::reconnecting; });
    SerialPort::scopeRunning = true;
    port.connetFailedSlt();
    QCOMPARE(stopped.count(), 1);
    QVERIFY(runningWhenTold);
    QVERIFY(!SerialPort::scopeRunning);
}

void SerialPortLossTest::noNoticeWhileClosing()
{
    ModalAnswers boxes;
    SerialPort port;
    port.prepareShutdown();
    port.connetFailedSlt();
    QVERIFY(!SerialPort::reconnecting);
    QVERIFY(boxes.seen.isEmpty());
}

void SerialPortLossTest::portThatCannotBeOpenedIsToldAndTriedAgain()
{
    ModalAnswers boxes;
    boxes.expectPassing(failed);
    QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("none"));
    const ListedPort listed(path);
    SerialPort port;
    const SignalLog online(&port, &SerialPort::servoONOFFLine);
    port.getPortName(QStringLiteral("x(%1)").arg(path), rs485);
    QTRY_COMPARE(online.count(false), 1);
    QVERIFY(!SerialPort::portOpened);
    QTRY_VERIFY_WITH_TIMEOUT(boxes.isDone() && online.count(false) >= 3, 6000);
    QCOMPARE(online.count(true), 0);
}

void SerialPortLossTest::withoutAnyPortNothingIsTried()
{
    // A machine with a port of its own tries and tells; one without waits for a port to appear.
    const bool hasPort = !serialPorts().isEmpty();
    ModalAnswers boxes;
    if (hasPort)
        boxes.expectPassing(failed);
    PtyPeer peer;
    SerialPort port;
    port.getPortName(peer.entry(), usb);
    QTRY_VERIFY(port.isFinished());
    QCOMPARE(peer.frameCount(), 3);
    port.checkUsbSlt();
    QCOMPARE(SerialPort::reconnecting.load(), hasPort);
    QCOMPARE(port.isRunning(), hasPort);
}

void SerialPortLossTest::adapterWithoutManufacturerEndsTheLink()
{
    ModalAnswers boxes;
    boxes.expectPassing(failed);
    std::atomic<bool> unplugged{false};
    PtyPeer peer(
        [&unplugged](const QByteArray &request) { return unplugged ? QByteArray() : answerAll(request); });
    const ListedPort listed(peer.path(), QString());
    SerialPort port;
    const SignalLog online(&port, &SerialPort::servoONOFFLine);
    port.getPortName(peer.entry(), usb);
    QTRY_VERIFY(online.count(true) >= 1);
    unplugged = true;
    QTRY_VERIFY_WITH_TIMEOUT(boxes.isDone(), 3000);
    QVERIFY(online.count(false) >= 1);
    QVERIFY(SerialPort::reconnecting);
    // Told once; the restarts that follow are silent.
    QTRY_VERIFY_WITH_TIMEOUT(peer.frameCount() >= 8, 6000);
}

void SerialPortLossTest::laterPortWithoutManufacturerEndsItToo()
{
    ModalAnswers boxes;
    boxes.expectPassing(failed);
    std::atomic<bool> unplugged{false};
    PtyPeer peer(
        [&unplugged](const QByteArray &request) { return unplugged ? QByteArray() : answerAll(request); });
    const ListedPort listed(peer.path());
    const ListedPort later(QStringLiteral("later"), QString());
    SerialPort port;
    const SignalLog online(&port, &SerialPort::servoONOFFLine);
    port.getPortName(peer.entry(), usb);
    QTRY_VERIFY(online.count(true) >= 1);
    unplugged = true;
    QTRY_VERIFY_WITH_TIMEOUT(boxes.isDone(), 3000);
    QVERIFY(online.count(false) >= 1);
}

void SerialPortLossTest::earlierPortWithoutManufacturerDoesNot()
{
    ModalAnswers boxes;
    PtyPeer peer(answerAll);
    const ListedPort earlier(QStringLiteral("earlier"), QString());
    const ListedPort listed(peer.path());
    SerialPort port;
    const SignalLog online(&port, &SerialPort::servoONOFFLine);
    port.getPortName(peer.entry(), usb);
    QTRY_VERIFY(online.count(true) >= 1);
    port.checkUsbSlt();
    QVERIFY(port.isRunning());
    QCOMPARE(online.count(false), 0);
    QVERIFY(!SerialPort::reconnecting);
}

void SerialPortLossTest::hungUpDeviceDoesNotSpinWhenIdle()
{
    PtyPeer peer(answerAll);
    SerialPort port;
    port.getPortName(peer.entry(), rs485);
    QTRY_VERIFY(peer.frameCount() >= 1);
    peer.hangUp();
    QElapsedTimer idle;
    idle.start();
    const std::clock_t before = std::clock();
    QTRY_VERIFY(idle.elapsed() >= 600);
    const double share = double(std::clock() - before) / CLOCKS_PER_SEC / (idle.elapsed() / 1000.0);
    QVERIFY2(share < 0.6, qPrintable(QString::number(share)));
    QVERIFY(port.isRunning());
}

void SerialPortLossTest::hungUpDeviceIsGivenUpInMidTransferAndComesBack()
{
    ModalAnswers boxes;
    boxes.expectPassing(failed);
    PtyPeer peer(answerAll);
    const ListedPort listed(peer.path());
    SerialPort port;
    int replies = 0;
    connect(&port, &SerialPort::handleBaseParameter, &port, [&port, &replies] {
        ++replies;
        port.writeSlot(readA, QStringLiteral("Editor"));
    });
    port.getPortName(peer.entry(), usb);
    port.writeSlot(readA, QStringLiteral("Editor"));
    QTRY_VERIFY(replies > 50);
    peer.hangUp();
    QTRY_VERIFY_WITH_TIMEOUT(boxes.isDone(), 5000);
    const int before = replies;
    peer.open();
    QTRY_VERIFY_WITH_TIMEOUT(replies > before + 50, 8000);
    QVERIFY(SerialPort::portOpened);
}

void SerialPortLossTest::afterTheShutdownNothingIsOpenedAnyMore()
{
    ModalAnswers boxes;
    PtyPeer peer(answerAll);
    const ListedPort listed(peer.path(), QString());
    SerialPort port;
    port.getPortName(peer.entry(), usb);
    QTRY_VERIFY(peer.frameCount() >= 1);
    port.prepareShutdown();
    QVERIFY(port.wait(1000));
    SerialPort::reconnecting = true;
    port.checkUsbSlt();
    QVERIFY(!port.isRunning());
    QVERIFY(!SerialPort::portOpened);
    // Nor does the watch tick on by itself.
    const int before = peer.frameCount();
    QElapsedTimer waited;
    waited.start();
    QTRY_VERIFY(waited.elapsed() > 1200);
    QCOMPARE(peer.frameCount(), before);
}

void SerialPortLossTest::portOfADescriptionWithBracketsIsFound()
{
    PtyPeer peer(answerAll);
    SerialPort port;
    const SignalLog online(&port, &SerialPort::servoONOFFLine);
    port.getPortName(QStringLiteral("Adapter (rev. 2) [A](%1)").arg(peer.path()), usb);
    QTRY_VERIFY(online.count(true) >= 1);
    QCOMPARE(peer.framesOnce(), QList<QByteArray>({probe}));
}

QTEST_MAIN(SerialPortLossTest)
#include "tst_serialport_loss.moc"
