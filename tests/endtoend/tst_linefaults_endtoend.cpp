// SPDX-License-Identifier: GPL-3.0-or-later
// The whole product on a line that misbehaves: what the user is told, and what comes back by itself.
#include "link/serialport.h"
#include "parameter/parametereditor.h"
#include "parameter/parametersettinghelper.h"
#include "parameter/parametertable.h"
#include "shell/mainwindow.h"
#include "support/editordriver.h"
#include "support/modalanswers.h"
#include "support/rununtil.h"
#include "support/workplace.h"

#include <QAction>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPointer>
#include <QProgressDialog>
#include <QPushButton>
#include <QTest>

#include <functional>

namespace {

const QString readingDone = QStringLiteral("Parameters reading completed");
const QString writingDone = QStringLiteral("Parameters writing completed");
const QString writeTimeout = QStringLiteral("Write Timeout!");
const QString requestTimeout = QStringLiteral("Request Timeout!");
const QString failed = QStringLiteral("Fail to connect to the device via \nRead Modbus Failed!");
const QString rs485 = QStringLiteral("115200(485)");
const QString usb = QStringLiteral("USB");

bool isReading(const ParameterEditor *editor, int from)
{
    const QProgressDialog *const progress = EditorDriver(editor).progress();
    return progress->isVisible() && progress->value() >= from;
}

} // namespace

class LineFaultsEndToEndTest : public QObject
{
    Q_OBJECT

private slots:
    void refusedRequestsDoNotStopTheRead();
    void garbageEndsTheReadWithAMessage();
    void silenceInAPageReadIsToldAndTheLinkComesBack();
    void silenceInAPageWriteIsToldByTheLink();
    void unpluggedWhileIdleComesBackWhenUsed();
    void unpluggedInMidTransferIsToldAndComesBack();
    void streamOfAnEarlierSessionIsStopped();
    void closingTheEditorInMidTransferLeavesTheLink();
    void closingTheApplicationInMidTransferEnds();
    void nothingIsSentByItselfAfterAReconnect();
    void pageWriteWithoutALinkReachesNoDriveLater();
    void valueThatASilentDriveDidNotTakeIsToldLater_data();
    void valueThatASilentDriveDidNotTakeIsToldLater();

private:
    static void breakAPageRead(const std::function<void(kt500sim::SimulatedDrive *)> &fault);
};

void LineFaultsEndToEndTest::refusedRequestsDoNotStopTheRead()
{
    ModalAnswers boxes;
    Workplace place;
    const ParameterEditor *const editor = EditorDriver::openConnected(&place, usb);
    QVERIFY(editor);
    QVERIFY(place.drive->setFault(QStringLiteral("exception 2 5")));
    boxes.expect(readingDone);
    Workplace::clickAction(editor, "readAction");
    QVERIFY(runUntil([&boxes] { return boxes.isDone(); }, 60000));
    // A refusal completes its request, so the link stays and the read goes on to its end.
    QVERIFY(place.isShownOnline());
}

void LineFaultsEndToEndTest::garbageEndsTheReadWithAMessage()
{
    ModalAnswers boxes;
    Workplace place;
    const ParameterEditor *const editor = EditorDriver::openConnected(&place, rs485);
    QVERIFY(editor);
    boxes.expect(requestTimeout);
    Workplace::clickAction(editor, "readAction");
    QTRY_VERIFY(isReading(editor, 50));
    QVERIFY(place.drive->setFault(QStringLiteral("garbage on")));
    QVERIFY(runUntil([&boxes] { return boxes.isDone(); }, 10000));
    // Bytes arrive, so the link stays on-line.
    QVERIFY(place.isShownOnline());
    QVERIFY(!EditorDriver(editor).progress()->isVisible());
    QVERIFY(place.drive->setFault(QStringLiteral("garbage off")));
}

// A fault in the middle of a page read: both ends of it are told, and the rest and then the whole list are
// read by the user's own act when the link is back.
void LineFaultsEndToEndTest::breakAPageRead(const std::function<void(kt500sim::SimulatedDrive *)> &fault)
{
    ModalAnswers boxes;
    Workplace place;
    const ParameterEditor *const editor = EditorDriver::openConnected(&place, rs485);
    QVERIFY(editor);
    boxes.expect(requestTimeout);
    boxes.expectPassing(failed);
    Workplace::clickAction(editor, "readAction");
    QTRY_VERIFY(isReading(editor, 50));
    fault(place.drive.get());
    QTRY_VERIFY_WITH_TIMEOUT(!place.isShownOnline(), 10000);
    QVERIFY(runUntil([&boxes] { return boxes.isDone(); }, 10000));
    QTRY_VERIFY_WITH_TIMEOUT(place.isShownOnline(), 15000);
    place.drive->writeRegister(7, 4321);
    boxes.expect(readingDone);
    Workplace::clickAction(editor, "readAction");
    QVERIFY(runUntil([&boxes] { return boxes.isDone(); }, 60000));
    QCOMPARE(EditorDriver(editor).value(0, QStringLiteral("Pn-007")), QStringLiteral("432.1"));
    QCOMPARE(EditorDriver(editor).value(11, QStringLiteral("Pn-B95")),
             QString::number(*place.drive->readRegister(1195)));
}

void LineFaultsEndToEndTest::silenceInAPageReadIsToldAndTheLinkComesBack()
{
    breakAPageRead(
        [](kt500sim::SimulatedDrive *drive) { QVERIFY(drive->setFault(QStringLiteral("silence 5000"))); });
}

void LineFaultsEndToEndTest::silenceInAPageWriteIsToldByTheLink()
{
    ModalAnswers boxes;
    Workplace place;
    const ParameterEditor *const editor = EditorDriver::openConnected(&place, usb);
    QVERIFY(editor);
    boxes.expectPassing(failed);
    // A missing acknowledgement of a write is told, a missing read-back is not; chance decides which it is.
    boxes.allow(writeTimeout);
    Workplace::clickAction(editor, "writeAction");
    QTRY_VERIFY(isReading(editor, 30));
    QVERIFY(place.drive->setFault(QStringLiteral("silence 3000")));
    QTRY_VERIFY_WITH_TIMEOUT(!EditorDriver(editor).progress()->isVisible(), 10000);
    QVERIFY(runUntil([&boxes] { return boxes.isDone(); }, 10000));
    QTRY_VERIFY_WITH_TIMEOUT(place.isShownOnline(), 10000);
}

void LineFaultsEndToEndTest::unpluggedWhileIdleComesBackWhenUsed()
{
    ModalAnswers boxes;
    Workplace place;
    ParameterEditor *const editor = EditorDriver::openConnected(&place, usb);
    QVERIFY(editor);
    place.drive->hangUp(std::chrono::milliseconds(0));
    QTRY_VERIFY(place.drive->isHungUp());
    place.drive->clearFaults();
    QTRY_VERIFY(!place.drive->isHungUp());
    // The old handle is dead; the first request finds that out, is lost, and is told.
    boxes.expectPassing(failed);
    boxes.expect(requestTimeout);
    editor->readCurrentParameter({QStringLiteral("Pn-007")});
    QTRY_VERIFY_WITH_TIMEOUT(boxes.seen.size() == 2, 10000);
    QTRY_VERIFY_WITH_TIMEOUT(place.isShownOnline(), 10000);
    place.drive->writeRegister(7, 4321);
    editor->readCurrentParameter({QStringLiteral("Pn-007")});
    QTRY_COMPARE(EditorDriver(editor).value(0, QStringLiteral("Pn-007")), QStringLiteral("432.1"));
}

void LineFaultsEndToEndTest::unpluggedInMidTransferIsToldAndComesBack()
{
    breakAPageRead([](kt500sim::SimulatedDrive *drive) { drive->hangUp(std::chrono::milliseconds(3000)); });
}

void LineFaultsEndToEndTest::streamOfAnEarlierSessionIsStopped()
{
    ModalAnswers boxes;
    Workplace place;
    QVERIFY(place.drive->setFault(QStringLiteral("stream on")));
    QTRY_VERIFY(place.drive->isStreaming());
    place.connectTo(usb);
    QTRY_VERIFY(!place.drive->isStreaming());
    QTRY_VERIFY(place.isShownOnline());
    ParameterEditor *const editor = EditorDriver::open(place);
    place.drive->writeRegister(7, 4321);
    editor->readCurrentParameter({QStringLiteral("Pn-007")});
    QTRY_COMPARE(EditorDriver(editor).value(0, QStringLiteral("Pn-007")), QStringLiteral("432.1"));
}

void LineFaultsEndToEndTest::closingTheEditorInMidTransferLeavesTheLink()
{
    ModalAnswers boxes;
    Workplace place;
    place.connectTo(rs485);
    QTRY_VERIFY(place.isShownOnline());
    const QPointer<ParameterEditor> editor = EditorDriver::open(place);
    Workplace::clickAction(editor, "readAction");
    QTRY_VERIFY(isReading(editor, 50));
    place.window()->findChild<QMdiArea *>()->closeAllSubWindows();
    QTRY_VERIFY(!editor);
    QVERIFY(!QApplication::activeModalWidget());
    // A new editor works at once.
    const ParameterEditor *const next = EditorDriver::open(place);
    QVERIFY(next);
    boxes.expect(readingDone);
    Workplace::clickAction(next, "readAction");
    QVERIFY(runUntil([&boxes] { return boxes.isDone(); }, 60000));
}

void LineFaultsEndToEndTest::closingTheApplicationInMidTransferEnds()
{
    ModalAnswers boxes;
    Workplace place;
    place.connectTo(rs485);
    QTRY_VERIFY(place.isShownOnline());
    const QPointer<ParameterEditor> editor = EditorDriver::open(place);
    Workplace::clickAction(editor, "readAction");
    QTRY_VERIFY(isReading(editor, 50));
    QVERIFY(place.window()->close());
    QVERIFY(!SerialPort::portOpened);
    QTRY_VERIFY(!editor);
    const auto requests = place.drive->counters().requests;
    QElapsedTimer quiet;
    quiet.start();
    QTRY_VERIFY(quiet.elapsed() > 200);
    QCOMPARE(place.drive->counters().requests, requests);
}

void LineFaultsEndToEndTest::nothingIsSentByItselfAfterAReconnect()
{
    ModalAnswers boxes;
    boxes.expectPassing(failed);
    Workplace place;
    ParameterEditor *const editor = EditorDriver::openConnected(&place, usb);
    QVERIFY(editor);
    QVERIFY(place.drive->setFault(QStringLiteral("silence 2500")));
    boxes.expect(writeTimeout);
    editor->writeCurrentParameterToServo({"Pn-007", "", "55.5", "0.1rpm", "0.0", "6000.0"}, true);
    const quint16 before = *place.drive->readRegister(7);
    QVERIFY(runUntil([&boxes] { return boxes.seen.size() == 2; }, 10000));
    QTRY_VERIFY_WITH_TIMEOUT(place.isShownOnline() && !SerialPort::reconnecting, 10000);
    // The write in flight was lost with the link, and nobody repeats it.
    QCOMPARE(*place.drive->readRegister(7), before);
}

void LineFaultsEndToEndTest::pageWriteWithoutALinkReachesNoDriveLater()
{
    ModalAnswers boxes;
    Workplace place;
    place.drive->freeze();
    for (int offset = 0; offset < 1200; ++offset)
        place.drive->writeRegister(offset, quint16(3 * offset + 1), kt500sim::RegisterCopy::Stored);
    const auto before = place.drive->registers();
    place.closeConnectionDialog();
    ParameterEditor *const editor = EditorDriver::open(place);
    QVERIFY(editor);
    boxes.expect(writeTimeout);
    Workplace::clickAction(editor, "writeAction");
    QTRY_VERIFY(boxes.isDone());

    place.action("actionCommunication")->trigger();
    place.connectTo(rs485);
    QTRY_VERIFY(place.isShownOnline());
    // Whatever waited in the link's queue has left before this.
    editor->readCurrentParameter({QStringLiteral("Pn-007")});
    QTRY_COMPARE(EditorDriver(editor).value(0, QStringLiteral("Pn-007")), QStringLiteral("2.2"));
    const auto after = place.drive->registers();
    for (std::size_t i = 0; i < 1200; ++i) {
        QCOMPARE(after.working.at(i), before.working.at(i));
        QCOMPARE(after.stored.at(i), before.stored.at(i));
    }
}

void LineFaultsEndToEndTest::valueThatASilentDriveDidNotTakeIsToldLater_data()
{
    QTest::addColumn<QString>("speed");
    QTest::newRow("RS-485") << rs485;
    QTest::newRow("USB") << usb;
}

void LineFaultsEndToEndTest::valueThatASilentDriveDidNotTakeIsToldLater()
{
    QFETCH(QString, speed);
    const QString code = QStringLiteral("Pn-007");
    ModalAnswers boxes;
    Workplace place;
    const ParameterEditor *const editor = EditorDriver::openConnected(&place, speed);
    QVERIFY(editor);
    const quint16 before = *place.drive->readRegister(7);
    QVERIFY(before != 1234);
    const ParameterSettingHelper *const helper = EditorDriver(editor).openHelper(0, code);
    QVERIFY(helper);
    helper->findChild<QLineEdit *>(QStringLiteral("valueEdit"))->setText(QStringLiteral("123.4"));
    const auto showsTheNewValue = [&] {
        return EditorDriver(editor).value(0, code) == QLatin1String("123.4") &&
               EditorDriver(editor).colour(0, code) == QColor(Qt::red);
    };
    QVERIFY(!showsTheNewValue());
    QVERIFY(place.drive->setFault(QStringLiteral("silence 3000")));

    // The helper does not wait for the drive: the table has the value before anything is known of it.
    bool wasShownWhenTold = false;
    boxes.expect(writeTimeout, [&](QMessageBox *box) {
        wasShownWhenTold = showsTheNewValue();
        box->accept();
    });
    boxes.expectPassing(failed);
    QTest::mouseClick(helper->findChild<QPushButton *>(QStringLiteral("okButton")), Qt::LeftButton);
    QVERIFY(!helper->isVisible());
    QVERIFY(showsTheNewValue());
    QVERIFY(boxes.seen.isEmpty());

    QVERIFY(runUntil([&boxes] { return boxes.isDone(); }, 10000));
    QVERIFY(wasShownWhenTold);
    QTRY_VERIFY_WITH_TIMEOUT(place.isShownOnline() && !SerialPort::reconnecting, 10000);
    QVERIFY(showsTheNewValue());
    QCOMPARE(*place.drive->readRegister(7), before);
}

QTEST_MAIN(LineFaultsEndToEndTest)
#include "tst_linefaults_endtoend.moc"
