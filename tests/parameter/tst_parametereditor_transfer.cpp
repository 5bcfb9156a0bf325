// SPDX-License-Identifier: GPL-3.0-or-later
// What the editor asks the drive for, in which order, and what it makes of the answers.
#include "editorbench.h"

#include "link/serialport.h"
#include "support/editortexts.h"
#include "support/modalanswers.h"
#include "support/testdirectory.h"
#include "support/wire.h"

#include <QSignalSpy>

using namespace editortext;

class ParameterEditorTransferTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void pageReadAsksForEveryCode_data();
    void pageReadAsksForEveryCode();
    void pageReadShowsEveryValueAndFollowsIt();
    void pageReadWhileOfflineDoesNothing();
    void progressRunsOverTheWholeRead();
    void missingReplyEndsThePageRead();
    void restOfAnEndedReadIsReadFirst();
    void unaskedReplyAfterAReadIsIgnored();
    void lateReplyDoesNotSetAnEndedReadGoing();
    void lateReplyDoesNotSetAnEndedWriteGoing();
    void exceptionReplyIsDecodedAsItStands();
    void singleReadUsesTheListForItsWidth_data();
    void singleReadUsesTheListForItsWidth();
    void singleReadTimesOut();
    void singleWriteGoesToItsBase_data();
    void singleWriteGoesToItsBase();
    void singleWriteTimesOut();
    void pageWriteWritesAndReadsBackThreeTimes();
    void pageWriteLeavesOutReadOnlyAndReserved();
    void emptyValueIsWrittenAsZero();
    void readBackThatDiffersIsAskedAgain();
    void readBackWithAnotherFunctionIsAskedAgain();
    void pageWriteResetsTheColours();
    void pageWriteWhileOfflineTimesOut();
    void missingReadBackClosesTheProgressSilently();
    void newPageWriteStartsOver();
    void timeoutInIdleSaysNothing();
    void timeOutWithdrawsWhatHasNotLeft_data();
    void timeOutWithdrawsWhatHasNotLeft();
    void singleReadsWaitForOneAnother();
    void pageReadWaitsForASingleRead();

private:
    TestDirectory directory;
};

void ParameterEditorTransferTest::init()
{
    directory.clear();
    directory.setLanguage(QStringLiteral("en_US"));
    SerialPort::portOpened = true;
}

void ParameterEditorTransferTest::pageReadAsksForEveryCode_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<int>("frames");
    QTest::addColumn<QByteArray>("gear");   // the frame that reads Pn-304
    QTest::addColumn<QByteArray>("origin"); // and Pn-336
    // In the English file the hyphen pairs are read as one register, and Pn-336~Pn-337 as two.
    QTest::newRow("English") << "en_US" << 520 << wire::frame("010321300001") << wire::frame("010321500002");
    QTest::newRow("Chinese") << "zh_CN" << 571 << wire::frame("010321300002") << wire::frame("010321500001");
}

void ParameterEditorTransferTest::pageReadAsksForEveryCode()
{
    QFETCH(QString, language);
    QFETCH(int, frames);
    QFETCH(QByteArray, gear);
    QFETCH(QByteArray, origin);
    directory.setLanguage(language);
    ModalAnswers boxes;
    const EditorBench bench;
    QVERIFY(bench.waitForCatalogue());
    boxes.expect(readingDone);
    bench.editor->readPageSlt();
    QTRY_VERIFY_WITH_TIMEOUT(boxes.isDone(), 20000);
    QCOMPARE(bench.peer.frames.size(), frames);
    QCOMPARE(bench.peer.frames.first(), wire::frame("010320000001"));
    QCOMPARE(bench.peer.frames.last(), wire::frame("010324AB0001"));
    QCOMPARE(bench.peer.frames.count(gear), 1);
    QCOMPARE(bench.peer.frames.count(origin), 1);
    QCOMPARE(bench.peer.windowNames.count(QStringLiteral("Editor")), frames);
}

void ParameterEditorTransferTest::pageReadShowsEveryValueAndFollowsIt()
{
    directory.setLanguage(QStringLiteral("zh_CN"));
    ModalAnswers boxes;
    EditorBench bench;
    QVERIFY(bench.waitForCatalogue());
    bench.peer.registers[0x2007] = 1500;   // Pn-007, tenths
    bench.peer.registers[0x2003] = 0x0139; // Pn-003, hexadecimal
    bench.peer.registers[0x23EC] = 0xFFFF; // Pn-A04, 32 bits
    bench.peer.registers[0x23ED] = 0xD8F0;
    bench.peer.registers[0x20C8 + 53] = 0xFFFE; // Pn-253, signed
    boxes.expect(readingDone);
    bench.editor->readPageSlt();
    QTRY_VERIFY_WITH_TIMEOUT(boxes.isDone(), 20000);
    QCOMPARE(bench.value(0, QStringLiteral("Pn-007")), QStringLiteral("150.0"));
    QCOMPARE(bench.value(0, QStringLiteral("Pn-003")), QStringLiteral("0x0139"));
    QCOMPARE(bench.value(10, QStringLiteral("Pn-A04")), QStringLiteral("-10000"));
    QCOMPARE(bench.value(2, QStringLiteral("Pn-253")), QStringLiteral("-2"));
    QCOMPARE(bench.colour(0, QStringLiteral("Pn-007")), QColor(Qt::blue));
    // The view has followed the read to the last page.
    QCOMPARE(bench.list->currentRow(), 12);
    QCOMPARE(bench.stack->currentIndex(), 11);
    QVERIFY(!bench.progress->isVisible());
}

void ParameterEditorTransferTest::pageReadWhileOfflineDoesNothing()
{
    ModalAnswers boxes;
    const EditorBench bench;
    QVERIFY(bench.waitForCatalogue());
    SerialPort::portOpened = false;
    bench.editor->readPageSlt();
    QVERIFY(bench.peer.frames.isEmpty());
    QVERIFY(bench.progress->isHidden());
}

void ParameterEditorTransferTest::progressRunsOverTheWholeRead()
{
    ModalAnswers boxes;
    EditorBench bench;
    QVERIFY(bench.waitForCatalogue());
    QList<int> values;
    QString label;
    int maximum = 0;
    bench.peer.intercept = [&](const QByteArray &, const QByteArray &usual) {
        values.append(bench.progress->value());
        label = bench.progress->labelText();
        maximum = bench.progress->maximum();
        return usual;
    };
    boxes.expect(readingDone);
    bench.editor->readPageSlt();
    QTRY_VERIFY_WITH_TIMEOUT(boxes.isDone(), 20000);
    QCOMPARE(label, QStringLiteral("Reading..."));
    QCOMPARE(maximum, 521);
    QCOMPARE(values.first(), 1);
    QCOMPARE(values.last(), 520);
    // The next run starts anew.
    values.clear();
    boxes.expect(readingDone);
    bench.editor->readPageSlt();
    QTRY_VERIFY_WITH_TIMEOUT(boxes.isDone(), 20000);
    QCOMPARE(values.first(), 1);
}

void ParameterEditorTransferTest::missingReplyEndsThePageRead()
{
    ModalAnswers boxes;
    EditorBench bench;
    QVERIFY(bench.waitForCatalogue());
    const QByteArray silentAt = wire::frame("010320090001");
    bench.peer.intercept = [&silentAt](const QByteArray &request, const QByteArray &usual) {
        return request == silentAt ? QByteArray() : usual;
    };
    boxes.expect(requestTimeout);
    bench.editor->readPageSlt();
    QTRY_VERIFY(boxes.isDone());
    QCOMPARE(bench.peer.frames.last(), silentAt);
    QCOMPARE(bench.peer.frames.size(), 10);
    QVERIFY(bench.progress->isHidden());
}

void ParameterEditorTransferTest::restOfAnEndedReadIsReadFirst()
{
    ModalAnswers boxes;
    EditorBench bench;
    QVERIFY(bench.waitForCatalogue());
    const QByteArray silentAt = wire::frame("010320090001");
    bool silent = true;
    bench.peer.intercept = [&silentAt, &silent](const QByteArray &request, const QByteArray &usual) {
        return silent && request == silentAt ? QByteArray() : usual;
    };
    boxes.expect(requestTimeout);
    bench.editor->readPageSlt();
    QTRY_VERIFY(boxes.isDone());
    silent = false;
    bench.peer.frames.clear();
    boxes.expect(readingDone);
    bench.editor->readPageSlt();
    QTRY_VERIFY_WITH_TIMEOUT(boxes.isDone(), 20000);
    // 511 codes were left, and the whole list stands behind them.
    QCOMPARE(bench.peer.frames.size(), 511 + 520);
    QCOMPARE(bench.peer.frames.first(), silentAt);
    QCOMPARE(bench.peer.frames.at(511), wire::frame("010320000001"));
}

void ParameterEditorTransferTest::unaskedReplyAfterAReadIsIgnored()
{
    ModalAnswers boxes;
    EditorBench bench;
    QVERIFY(bench.waitForCatalogue());
    boxes.expect(readingDone);
    bench.editor->readPageSlt();
    QTRY_VERIFY_WITH_TIMEOUT(boxes.isDone(), 20000);
    const QString before = bench.value(11, QStringLiteral("Pn-B95"));
    // The reply to a restarted link's probe comes to the window that asked last.
    bench.editor->handleBaseParameter(wire::frame("01030411223344"));
    QCOMPARE(bench.value(11, QStringLiteral("Pn-B95")), before);
}

void ParameterEditorTransferTest::lateReplyDoesNotSetAnEndedReadGoing()
{
    ModalAnswers boxes;
    EditorBench bench;
    QVERIFY(bench.waitForCatalogue());
    bench.peer.held = true;
    boxes.expect(requestTimeout);
    bench.editor->readPageSlt();
    QTRY_VERIFY(boxes.isDone());
    const QString before = bench.value(0, QStringLiteral("Pn-000"));
    QSignalSpy replies(&bench.peer, &RegisterPeer::reply);
    bench.peer.release();
    QTRY_COMPARE(replies.count(), 1);
    QCOMPARE(bench.peer.frames.size(), 1);
    QCOMPARE(bench.value(0, QStringLiteral("Pn-000")), before);
    QVERIFY(bench.progress->isHidden());
}

void ParameterEditorTransferTest::lateReplyDoesNotSetAnEndedWriteGoing()
{
    ModalAnswers boxes;
    EditorBench bench;
    QVERIFY(bench.waitForCatalogue());
    bench.peer.held = true;
    boxes.expect(writeTimeout);
    bench.editor->writePageSlt();
    QTRY_VERIFY(boxes.isDone());
    QSignalSpy replies(&bench.peer, &RegisterPeer::reply);
    bench.peer.release();
    QTRY_COMPARE(replies.count(), 1);
    QCOMPARE(bench.peer.frames.size(), 1);
}

void ParameterEditorTransferTest::exceptionReplyIsDecodedAsItStands()
{
    EditorBench bench;
    QVERIFY(bench.waitForCatalogue());
    bench.peer.intercept = [](const QByteArray &, const QByteArray &) { return wire::bytes("018302C0F1"); };
    bench.editor->readCurrentParameter({QStringLiteral("Pn-100")});
    QTRY_COMPARE(bench.value(1, QStringLiteral("Pn-100")), QStringLiteral("33538"));
}

void ParameterEditorTransferTest::singleReadUsesTheListForItsWidth_data()
{
    QTest::addColumn<QString>("code");
    QTest::addColumn<QByteArray>("frame");
    QTest::newRow("Pn-007") << "Pn-007" << wire::frame("010320070001");
    QTest::newRow("Pn-304") << "Pn-304" << wire::frame("010321300002");
    QTest::newRow("Pn-336") << "Pn-336" << wire::frame("010321500001");
    QTest::newRow("Pn-B06") << "Pn-B06" << wire::frame("010324520002");
}

void ParameterEditorTransferTest::singleReadUsesTheListForItsWidth()
{
    QFETCH(QString, code);
    QFETCH(QByteArray, frame);
    ModalAnswers boxes;
    const EditorBench bench;
    QVERIFY(bench.waitForCatalogue());
    bench.editor->readCurrentParameter({code});
    QCOMPARE(bench.peer.frames, QList<QByteArray>({frame}));
    QVERIFY(bench.progress->isHidden());
    const int page = code.midRef(3, 1).toInt(nullptr, 16);
    QTRY_VERIFY(bench.value(page, code) == QLatin1String("0") ||
                bench.value(page, code) == QLatin1String("0.0"));
    QCOMPARE(bench.list->currentRow(), 1);
}

void ParameterEditorTransferTest::singleReadTimesOut()
{
    ModalAnswers boxes;
    EditorBench bench;
    bench.peer.held = true;
    boxes.expect(requestTimeout);
    bench.editor->readCurrentParameter({QStringLiteral("Pn-007")});
    QTRY_VERIFY(boxes.isDone());
    QCOMPARE(bench.peer.frames.size(), 1);
}

void ParameterEditorTransferTest::singleWriteGoesToItsBase_data()
{
    QTest::addColumn<bool>("toRam");
    QTest::addColumn<QByteArray>("frame");
    QTest::newRow("RAM") << true << wire::frame("01102007000102 05DC");
    QTest::newRow("EEPROM") << false << wire::frame("0110E007000102 05DC");
}

void ParameterEditorTransferTest::singleWriteGoesToItsBase()
{
    QFETCH(bool, toRam);
    QFETCH(QByteArray, frame);
    ModalAnswers boxes;
    EditorBench bench;
    bench.editor->writeCurrentParameterToServo({"Pn-007", "", "150.0", "0.1rpm", "0.0", "6000.0"}, toRam);
    QCOMPARE(bench.peer.frames, QList<QByteArray>({frame}));
    QTRY_COMPARE(bench.peer.registers.value(0x2007), quint16(1500));
    // No read-back and no message follow.
    QSignalSpy replies(&bench.peer, &RegisterPeer::reply);
    QTRY_COMPARE(replies.count(), 1);
    QCOMPARE(bench.peer.frames.size(), 1);
}

void ParameterEditorTransferTest::singleWriteTimesOut()
{
    ModalAnswers boxes;
    EditorBench bench;
    bench.peer.held = true;
    boxes.expect(writeTimeout);
    bench.editor->writeCurrentParameterToServo({"Pn-007", "", "150.0", "0.1rpm", "0.0", "6000.0"}, true);
    QTRY_VERIFY(boxes.isDone());
}

void ParameterEditorTransferTest::pageWriteWritesAndReadsBackThreeTimes()
{
    ModalAnswers boxes;
    const EditorBench bench;
    QVERIFY(bench.waitForCatalogue());
    bench.keepOnly({"Pn-007", "Pn-A04"});
    boxes.expect(writingDone);
    bench.editor->writePageSlt();
    QTRY_VERIFY(boxes.isDone());
    const QByteArray readJog = wire::frame("010320070001");
    const QByteArray readPath = wire::frame("010323EC0002");
    QCOMPARE(bench.peer.frames,
             QList<QByteArray>({wire::frame("0110E007000102 07D0"), readJog, readJog, readJog,
                                wire::frame("0110E3EC000204 00002710"), readPath, readPath, readPath}));
    QVERIFY(bench.progress->isHidden());
}

void ParameterEditorTransferTest::pageWriteLeavesOutReadOnlyAndReserved()
{
    ModalAnswers boxes;
    const EditorBench bench;
    QVERIFY(bench.waitForCatalogue());
    // Read-only, reserved, and a row whose spelling is not recognised.
    bench.keepOnly({"Pn-000", "Pn-002", "Pn-340"});
    boxes.expect(writingDone);
    bench.editor->writePageSlt();
    QTRY_VERIFY(boxes.isDone());
    QCOMPARE(bench.peer.frames.size(), 4);
    QCOMPARE(bench.peer.frames.first().left(7), wire::bytes("0110E154000204"));
}

void ParameterEditorTransferTest::emptyValueIsWrittenAsZero()
{
    ModalAnswers boxes;
    const EditorBench bench;
    QVERIFY(bench.waitForCatalogue());
    bench.keepOnly({"Pn-007"});
    bench.page(0)->item(0, ParameterTable::ValueColumn)->setText(QString());
    boxes.expect(writingDone);
    bench.editor->writePageSlt();
    QTRY_VERIFY(boxes.isDone());
    QCOMPARE(bench.peer.frames.first(), wire::frame("0110E007000102 0000"));
}

void ParameterEditorTransferTest::readBackThatDiffersIsAskedAgain()
{
    ModalAnswers boxes;
    EditorBench bench;
    QVERIFY(bench.waitForCatalogue());
    bench.keepOnly({"Pn-007"});
    const QByteArray read = wire::frame("010320070001");
    int reads = 0;
    bench.peer.intercept = [&read, &reads](const QByteArray &request, const QByteArray &usual) {
        // The matches need not follow one another.
        if (request == read && (++reads == 2 || reads == 3))
            return wire::frame("0103020001");
        return usual;
    };
    boxes.expect(writingDone);
    bench.editor->writePageSlt();
    QTRY_VERIFY(boxes.isDone());
    QCOMPARE(bench.peer.frames.count(read), 5);
    QCOMPARE(bench.peer.frames.size(), 6);
}

void ParameterEditorTransferTest::readBackWithAnotherFunctionIsAskedAgain()
{
    ModalAnswers boxes;
    EditorBench bench;
    QVERIFY(bench.waitForCatalogue());
    bench.keepOnly({"Pn-007"});
    const QByteArray read = wire::frame("010320070001");
    int reads = 0;
    bench.peer.intercept = [&read, &reads](const QByteArray &request, const QByteArray &usual) {
        return request == read && ++reads <= 2 ? wire::frame("01830207D0") : usual;
    };
    boxes.expect(writingDone);
    bench.editor->writePageSlt();
    QTRY_VERIFY(boxes.isDone());
    QCOMPARE(bench.peer.frames.count(read), 5);
}

void ParameterEditorTransferTest::pageWriteResetsTheColours()
{
    ModalAnswers boxes;
    const EditorBench bench;
    QVERIFY(bench.waitForCatalogue());
    bench.keepOnly({"Pn-007", "Pn-000"});
    bench.page(0)->item(0, ParameterTable::ValueColumn)->setForeground(Qt::blue);
    bench.page(0)->item(1, ParameterTable::ValueColumn)->setForeground(Qt::red);
    boxes.expect(writingDone);
    bench.editor->writePageSlt();
    QTRY_VERIFY(boxes.isDone());
    QCOMPARE(bench.colour(0, QStringLiteral("Pn-000")), QColor(Qt::black));
    QCOMPARE(bench.colour(0, QStringLiteral("Pn-007")), QColor(Qt::black));
}

void ParameterEditorTransferTest::pageWriteWhileOfflineTimesOut()
{
    ModalAnswers boxes;
    EditorBench bench;
    QVERIFY(bench.waitForCatalogue());
    SerialPort::portOpened = false;
    bench.peer.held = true;
    boxes.expect(writeTimeout);
    bench.editor->writePageSlt();
    QVERIFY(bench.progress->isVisible());
    QCOMPARE(bench.progress->labelText(), QStringLiteral("Writing..."));
    QTRY_VERIFY(boxes.isDone());
    QVERIFY(bench.progress->isHidden());
    QCOMPARE(bench.peer.frames.size(), 1);
}

void ParameterEditorTransferTest::missingReadBackClosesTheProgressSilently()
{
    ModalAnswers boxes;
    EditorBench bench;
    QVERIFY(bench.waitForCatalogue());
    bench.keepOnly({"Pn-007"});
    const QByteArray read = wire::frame("010320070001");
    bench.peer.intercept = [&read](const QByteArray &request, const QByteArray &usual) {
        return request == read ? QByteArray() : usual;
    };
    bench.editor->writePageSlt();
    QTRY_COMPARE(bench.peer.frames.size(), 2);
    QVERIFY(bench.progress->isVisible());
    QTRY_VERIFY(bench.progress->isHidden());
    QVERIFY(boxes.seen.isEmpty());
}

void ParameterEditorTransferTest::newPageWriteStartsOver()
{
    ModalAnswers boxes;
    EditorBench bench;
    QVERIFY(bench.waitForCatalogue());
    bench.keepOnly({"Pn-007", "Pn-A04"});
    bench.peer.held = true;
    boxes.expect(writeTimeout);
    bench.editor->writePageSlt();
    QTRY_VERIFY(boxes.isDone());
    bench.peer.held = false;
    bench.peer.frames.clear();
    boxes.expect(writingDone);
    bench.editor->writePageSlt();
    QTRY_VERIFY(boxes.isDone());
    QCOMPARE(bench.peer.frames.size(), 8);
}

void ParameterEditorTransferTest::timeoutInIdleSaysNothing()
{
    ModalAnswers boxes;
    const EditorBench bench;
    bench.editor->readWriteTimeout();
    QVERIFY(boxes.seen.isEmpty());
}

void ParameterEditorTransferTest::timeOutWithdrawsWhatHasNotLeft_data()
{
    QTest::addColumn<QString>("message");
    QTest::newRow("told") << writeTimeout;
    QTest::newRow("silent") << QString();
}

void ParameterEditorTransferTest::timeOutWithdrawsWhatHasNotLeft()
{
    QFETCH(const QString, message);
    ModalAnswers boxes;
    EditorBench bench;
    QVERIFY(bench.waitForCatalogue());
    bench.keepOnly({"Pn-007"});
    const QSignalSpy withdrawn(bench.editor.data(), &ParameterEditor::withdrawRequests);
    int withdrawnWhenTold = 0;
    if (message.isEmpty()) {
        bench.peer.intercept = [](const QByteArray &request, const QByteArray &usual) {
            return request.at(1) == 0x03 ? QByteArray() : usual;
        };
    } else {
        bench.peer.held = true;
        boxes.expect(message, [&](QMessageBox *box) {
            withdrawnWhenTold = withdrawn.count();
            box->accept();
        });
    }
    bench.editor->writePageSlt();
    QVERIFY(withdrawn.isEmpty());
    QTRY_COMPARE(withdrawn.count(), 1);
    QTRY_VERIFY(boxes.isDone());
    QCOMPARE(withdrawn.first().first().toString(), QStringLiteral("Editor"));
    QCOMPARE(withdrawnWhenTold, message.isEmpty() ? 0 : 1);
}

void ParameterEditorTransferTest::singleReadsWaitForOneAnother()
{
    ModalAnswers boxes;
    EditorBench bench;
    QVERIFY(bench.waitForCatalogue());
    bench.peer.registers[0x2007] = 1500;
    bench.peer.registers[0x2064] = 3;
    bench.peer.held = true;
    bench.editor->readCurrentParameter({QStringLiteral("Pn-007")});
    bench.editor->readCurrentParameter({QStringLiteral("Pn-100")});
    QCOMPARE(bench.peer.frames, QList<QByteArray>{wire::frame("010320070001")});
    bench.peer.release();
    QTRY_COMPARE(bench.value(1, QStringLiteral("Pn-100")), QStringLiteral("3"));
    QCOMPARE(bench.value(0, QStringLiteral("Pn-007")), QStringLiteral("150.0"));
}

void ParameterEditorTransferTest::pageReadWaitsForASingleRead()
{
    ModalAnswers boxes;
    EditorBench bench;
    QVERIFY(bench.waitForCatalogue());
    bench.peer.registers[0x2000] = 1;
    bench.peer.registers[0x2002] = 4;
    bench.peer.registers[0x2007] = 1500;
    bench.peer.held = true;
    boxes.expect(readingDone);
    bench.editor->readCurrentParameter({QStringLiteral("Pn-007")});
    bench.editor->readPageSlt();
    QCOMPARE(bench.peer.frames.size(), 1);
    bench.peer.release();
    QTRY_VERIFY_WITH_TIMEOUT(boxes.isDone(), 20000);
    QCOMPARE(bench.peer.frames.size(), 1 + 520);
    QCOMPARE(bench.value(0, QStringLiteral("Pn-000")), QStringLiteral("1"));
    QCOMPARE(bench.value(0, QStringLiteral("Pn-002")), QStringLiteral("4"));
    QCOMPARE(bench.value(0, QStringLiteral("Pn-007")), QStringLiteral("150.0"));
}

QTEST_MAIN(ParameterEditorTransferTest)
#include "tst_parametereditor_transfer.moc"
