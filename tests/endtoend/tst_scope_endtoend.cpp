// SPDX-License-Identifier: GPL-3.0-or-later
// The scope on the whole way: main window, link and simulated drive, and a line that misbehaves in
// mid-stream.
#include "catalogue/scopecatalogue.h"
#include "link/serialport.h"
#include "scope/channelconfig.h"
#include "scope/channelpanels.h"
#include "scope/scope.h"
#include "scope/scoperecord.h"
#include "scope/scopesidepanel.h"
#include "scope/scopetoolbar.h"
#include "shell/mainwindow.h"
#include "support/modalanswers.h"
#include "support/ptypeer.h"
#include "support/rununtil.h"
#include "support/wire.h"
#include "support/workplace.h"

#include <QAction>
#include <QCheckBox>
#include <QDir>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QSet>
#include <QSignalSpy>
#include <QTest>
#include <QtEndian>

#include <array>
#include <mutex>

class ScopeEndToEndTest : public QObject
{
    Q_OBJECT

private slots:
    void fourChannelsAreRecordedAsTheDriveSendsThem();
    void runRefusesOtherWindowsAndTheClosing();
    void silenceEndsTheRunAndTheLinkComesBack();
    void runStoppedByItsConditionKeepsItsRecord();
    void runWithoutChannelsKeepsTheLink();
    void disturbedStreamKeepsWholeFrames_data();
    void disturbedStreamKeepsWholeFrames();
    void streamThatGoesOnAfterTheStopIsNotRecorded();
};

namespace {

const QString rs485 = QStringLiteral("115200(485)");
constexpr int silence = 3000; // ms: 20 time-outs and the watch that would tell of them
const QString failed = QStringLiteral("Fail to connect to the device via \nRead Modbus Failed!");

Scope *openScope(const Workplace &place)
{
    Workplace::clickAction(place.window(), "actionData_Scope");
    return place.window()->findChild<Scope *>();
}

void run(const Scope *scope)
{
    auto *const tools = scope->findChild<ScopeToolBar *>();
    QTest::mouseClick(tools->widgetForAction(tools->action(ScopeToolBar::Run)), Qt::LeftButton);
}

QString runText(const Scope *scope)
{
    return scope->findChild<ScopeToolBar *>()->action(ScopeToolBar::Run)->text();
}

QByteArray recordOf(int channel)
{
    const QDir dir(ScopeRecord().directory());
    QFile file(
        dir.filePath(dir.entryList({QStringLiteral("*_CH%1.txt").arg(channel)}, QDir::Files).value(0)));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no such file");
}

// What stands behind the header.
QList<QByteArray> linesOf(int channel)
{
    QList<QByteArray> lines = recordOf(channel).split('\n');
    lines.removeFirst();
    lines.removeLast();
    for (QByteArray &line : lines)
        line = line.trimmed();
    return lines;
}

// Scope and link at a peer of bytes, without a shell.
struct Bench
{
    Bench()
    {
        SerialPort::portOpened = false;
        SerialPort::scopeRunning = false;
        SerialPort::reconnecting = false;
        peer.setHandler([](const QByteArray &request) {
            // The stream's requests have no reply.
            return request.at(1) == '\x14' ? QByteArray() : wire::replyTo(request, QByteArray(4, '\1'));
        });
        QObject::connect(&port, &SerialPort::handleParameterScope, &scope, &Scope::handleParameterScope);
        QObject::connect(&scope, &Scope::writeToSerialPort, &port, &SerialPort::writeScopeData);
        QObject::connect(&scope, &Scope::scopeRuning, &port, &SerialPort::scopeIsRunning);
        QObject::connect(&port, &SerialPort::stopscope, &scope, &Scope::runActSlot);
        QObject::connect(&scope, &Scope::sendPlotterDataSignal, &scope, [this] { ++batches; });
        for (int channel = 1; channel < 4; ++channel)
            scope.findChild<ChannelPanels *>()->channel(channel)->checkBox->click();
    }
    ~Bench()
    {
        port.prepareShutdown();
        port.wait();
        SerialPort::scopeRunning = false;
    }
    bool start()
    {
        port.getPortName(peer.entry(), 115200);
        const QByteArray request = wire::frame("0114 1000 0000 0000 0000");
        if (!QTest::qWaitFor([] { return bool(SerialPort::portOpened); }) ||
            !QTest::qWaitFor([this] { return peer.frameCount() > 0; }))
            return false;
        scope.runActSlot();
        return QTest::qWaitFor([&] { return peer.frames().contains(request); });
    }
    bool takes(int count)
    {
        return QTest::qWaitFor([&] { return batches >= count; });
    }

    PtyPeer peer;
    SerialPort port;
    Scope scope;
    int batches = 0;
};

// A frame with one sample of CH1.
QByteArray frameOf(int value)
{
    return wire::bytes("0114 000e 1001") + QByteArray(1, char(value >> 8)) + QByteArray(1, char(value)) +
           QByteArray(6, '\0');
}

} // namespace

void ScopeEndToEndTest::fourChannelsAreRecordedAsTheDriveSendsThem()
{
    Workplace place;
    place.connectTo(rs485);
    QTRY_VERIFY(place.isShownOnline());
    Scope *const scope = openScope(place);
    QVERIFY(scope);
    const QMdiSubWindow *const window = place.window()->findChild<QMdiArea *>()->activeSubWindow();
    QCOMPARE(window->size(), QSize(900, 685));
    QCOMPARE(window->pos(), QPoint(0, 0));

    std::mutex mutex;
    QList<QByteArray> sent;
    place.drive->setFrameListener([&](const kt500sim::LoggedFrame &frame) {
        if (frame.kind != kt500sim::FrameKind::StreamFrame)
            return;
        const std::lock_guard<std::mutex> lock(mutex);
        sent.append(QByteArray(reinterpret_cast<const char *>(frame.bytes.data()), int(frame.bytes.size())));
    });
    int batches = 0;
    connect(scope, &Scope::sendPlotterDataSignal, this, [&batches] { ++batches; });
    // A motor that runs up to 1000 rpm.
    place.drive->freeze();
    place.drive->writeRegister(100, 1);
    place.drive->writePair(401, 10000);
    place.drive->writeRegister(200, 1);
    place.drive->writeRegister(202, 1);
    run(scope);
    QTRY_VERIFY(place.drive->isStreaming());
    // One frame at a time: the last of several in a chunk would be all that is taken.
    constexpr int frames = 100;
    for (int frame = 1; frame <= frames; ++frame) {
        place.drive->advance(std::chrono::milliseconds(5));
        QTRY_COMPARE(batches, frame);
    }
    run(scope);
    QCOMPARE(runText(scope), QString("Run"));
    place.drive->unfreeze();
    QTRY_VERIFY(!place.drive->isStreaming());
    place.drive->setFrameListener({});
    QCOMPARE(batches, frames);

    // The samples by hand: a head of four bytes, then blocks of flag, count and big-endian words.
    const std::array<double, 4> factors{1, 1, 0.01, 1};
    std::array<QList<QByteArray>, 4> expected;
    for (const QByteArray &frame : qAsConst(sent).mid(0, frames)) {
        int at = 4;
        for (std::size_t channel = 0; channel < 4; ++channel) {
            const int count = quint8(frame.at(at + 1));
            QCOMPARE(count, 40);
            at += 2;
            for (int i = 0; i < count; ++i, at += 2) {
                const double value = qFromBigEndian<qint16>(frame.constData() + at) * factors.at(channel);
                expected.at(channel).append(QByteArray::number(value, 'g', 6));
            }
        }
    }
    for (int channel = 1; channel <= 4; ++channel) {
        QCOMPARE(linesOf(channel).size(), frames * 40);
        QCOMPARE(linesOf(channel), expected.at(channel - 1));
    }
    QVERIFY(recordOf(1).startsWith("Pn-F00Motor speed\r\n"));
    // Something has moved.
    QVERIFY(QSet<QByteArray>(expected.at(0).begin(), expected.at(0).end()).size() > 10);
}

void ScopeEndToEndTest::runRefusesOtherWindowsAndTheClosing()
{
    Workplace place;
    place.connectTo(rs485);
    QTRY_VERIFY(place.isShownOnline());
    Scope *const scope = openScope(place);
    run(scope);
    QVERIFY(!place.action("actionParameter_Editor")->isEnabled());
    QTRY_VERIFY(place.drive->isStreaming());
    {
        ModalAnswers boxes;
        boxes.expect(QStringLiteral("Please close \"Scope\" window frist"));
        QVERIFY(!place.window()->close());
    }
    QSignalSpy batches(scope, &Scope::sendPlotterDataSignal);
    QTRY_VERIFY(batches.count() > 10);
    run(scope);
    QVERIFY(place.action("actionParameter_Editor")->isEnabled());
    QTRY_VERIFY(!place.drive->isStreaming());
    // Closing the scope in mid-run stops the drive.
    run(scope);
    QTRY_VERIFY(place.drive->isStreaming());
    place.window()->findChild<QMdiArea *>()->activeSubWindow()->close();
    QTRY_VERIFY(!place.drive->isStreaming());
    QVERIFY(place.action("actionParameter_Editor")->isEnabled());
    QVERIFY(place.isShownOnline());
}

void ScopeEndToEndTest::silenceEndsTheRunAndTheLinkComesBack()
{
    ModalAnswers boxes;
    Workplace place;
    place.connectTo(rs485);
    QTRY_VERIFY(place.isShownOnline());
    Scope *const scope = openScope(place);
    QSignalSpy batches(scope, &Scope::sendPlotterDataSignal);
    run(scope);
    QTRY_VERIFY(batches.count() > 10);
    boxes.expectPassing(failed);
    place.drive->setFault(kt500sim::Fault::silence(3000));
    QTRY_COMPARE_WITH_TIMEOUT(runText(scope), QString("Run"), 10000);
    QVERIFY(place.action("actionParameter_Editor")->isEnabled());
    QVERIFY(linesOf(1).size() > 0); // what had arrived stays recorded
    QVERIFY(runUntil([&] { return boxes.isDone() && place.isShownOnline(); }, 20000));
    // The stream that nobody wants any more is stopped.
    QTRY_VERIFY_WITH_TIMEOUT(!place.drive->isStreaming(), 10000);
    QCOMPARE(runText(scope), QString("Run"));
    // The next run is a new one.
    batches.clear();
    run(scope);
    QTRY_VERIFY(place.drive->isStreaming());
    QTRY_VERIFY(batches.count() > 10);
    run(scope);
    QTRY_VERIFY(!place.drive->isStreaming());
}

void ScopeEndToEndTest::runStoppedByItsConditionKeepsItsRecord()
{
    Workplace place;
    place.connectTo(rs485);
    QTRY_VERIFY(place.isShownOnline());
    Scope *const scope = openScope(place);
    const auto *const panel = scope->findChild<ScopeSidePanel *>();
    panel->stopBox->click();
    panel->stopValueEdit->setText(QStringLiteral("-100000")); // met by the first sample
    panel->lastForEdit->setText(QStringLiteral("200"));
    run(scope);
    QTRY_COMPARE(runText(scope), QString("Stop"));
    QTRY_COMPARE_WITH_TIMEOUT(runText(scope), QString("Run"), 10000);
    QTRY_VERIFY(!place.drive->isStreaming());
    // The drive is silent for longer than a link lives without an answer.
    QSignalSpy runs(scope, &Scope::scopeRuning);
    QVERIFY(!runs.wait(silence));
    QCOMPARE(runText(scope), QString("Run"));
    QVERIFY(place.isShownOnline());
    place.window()->findChild<QMdiArea *>()->activeSubWindow()->close();
    QTRY_VERIFY(!place.window()->findChild<Scope *>());
    QVERIFY(linesOf(1).size() > 100);
}

void ScopeEndToEndTest::runWithoutChannelsKeepsTheLink()
{
    Workplace place;
    place.connectTo(rs485);
    QTRY_VERIFY(place.isShownOnline());
    Scope *const scope = openScope(place);
    for (int channel = 0; channel < 4; ++channel)
        scope->findChild<ChannelPanels *>()->channel(channel)->checkBox->click();
    run(scope);
    QSignalSpy runs(scope, &Scope::scopeRuning);
    QVERIFY(!runs.wait(silence));
    QCOMPARE(runText(scope), QString("Stop"));
    QVERIFY(place.isShownOnline());
    run(scope);
    QCOMPARE(runText(scope), QString("Run"));
}

void ScopeEndToEndTest::disturbedStreamKeepsWholeFrames_data()
{
    QTest::addColumn<QList<QByteArray>>("writes"); // between frames of 1 and of 9
    QTest::addColumn<QList<QByteArray>>("recorded");
    const QByteArray five = frameOf(5);
    QTest::newRow("undisturbed") << QList<QByteArray>{five} << QList<QByteArray>{"1", "5", "9"};
    QTest::newRow("cut frame") << QList<QByteArray>{five.left(9)} << QList<QByteArray>{"1", "9"};
    QTest::newRow("two frames in a chunk")
        << QList<QByteArray>{five + frameOf(6)} << QList<QByteArray>{"1", "6", "9"};
    QTest::newRow("a frame and a part")
        << QList<QByteArray>{five + five.left(3)} << QList<QByteArray>{"1", "5", "9"};
    QTest::newRow("a burst") << QList<QByteArray>{five.repeated(50) + frameOf(8)}
                             << QList<QByteArray>{"1", "8", "9"};
    QTest::newRow("noise") << QList<QByteArray>{wire::bytes("ff00aa55ff00aa55")}
                           << QList<QByteArray>{"1", "9"};
    QTest::newRow("length 0") << QList<QByteArray>{wire::bytes("0114 0000 1001 0005")}
                              << QList<QByteArray>{"1", "9"};
    QTest::newRow("length beyond the chunk")
        << QList<QByteArray>{wire::bytes("0114 ffff 1001 0005 0000")} << QList<QByteArray>{"1", "9"};
}

void ScopeEndToEndTest::disturbedStreamKeepsWholeFrames()
{
    QFETCH(QList<QByteArray>, writes);
    QFETCH(QList<QByteArray>, recorded);
    Bench bench;
    QVERIFY(bench.start());
    bench.peer.write(frameOf(1));
    QVERIFY(bench.takes(1));
    // Each write is taken before the next: they are not to meet in one chunk.
    for (const QByteArray &bytes : qAsConst(writes)) {
        bool taken = false;
        const auto connection =
            connect(&bench.port, &SerialPort::servoONOFFLine, this, [&taken] { taken = true; });
        bench.peer.write(bytes);
        QTRY_VERIFY(taken);
        disconnect(connection);
    }
    bench.peer.write(frameOf(9));
    QTRY_COMPARE(bench.batches, recorded.size());
    bench.scope.runActSlot();
    QCOMPARE(linesOf(1), recorded);
}

void ScopeEndToEndTest::streamThatGoesOnAfterTheStopIsNotRecorded()
{
    Bench bench;
    QVERIFY(bench.start());
    bench.peer.write(frameOf(1));
    QVERIFY(bench.takes(1));
    bench.scope.runActSlot();
    // The stop frame goes out between two chunks.
    const QByteArray stopFrame = wire::bytes("01140000000000000000dec2");
    for (int i = 0; i < 3; ++i) {
        bool taken = false;
        const auto connection =
            connect(&bench.port, &SerialPort::handleParameterScope, this, [&taken] { taken = true; });
        bench.peer.write(frameOf(7));
        QTRY_VERIFY(taken);
        disconnect(connection);
    }
    QTRY_VERIFY(bench.peer.frames().contains(stopFrame));
    QCOMPARE(bench.batches, 1);
    QCOMPARE(linesOf(1), QList<QByteArray>{"1"});
    QCOMPARE(runText(&bench.scope), QString("Run"));
}

QTEST_MAIN(ScopeEndToEndTest)
#include "tst_scope_endtoend.moc"
