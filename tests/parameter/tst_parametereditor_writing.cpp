// SPDX-License-Identifier: GPL-3.0-or-later
// What the editor writes to the drive, how it reads it back, and how a write ends that is not answered.
#include "editorbench.h"

#include "link/serialport.h"
#include "support/editortexts.h"
#include "support/modalanswers.h"
#include "support/testdirectory.h"
#include "support/wire.h"

#include <QSignalSpy>

using namespace editortext;

namespace {

const QByteArray readJog = wire::frame("010320070001"); // reads Pn-007

} // namespace

class ParameterEditorWritingTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void lateReplyDoesNotSetAnEndedWriteGoing();
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

private:
    TestDirectory directory;
};

void ParameterEditorWritingTest::init()
{
    directory.clear();
    directory.setLanguage(QStringLiteral("en_US"));
    SerialPort::portOpened = true;
}

void ParameterEditorWritingTest::lateReplyDoesNotSetAnEndedWriteGoing()
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

void ParameterEditorWritingTest::singleWriteGoesToItsBase_data()
{
    QTest::addColumn<bool>("toRam");
    QTest::addColumn<QByteArray>("frame");
    QTest::newRow("RAM") << true << wire::frame("01102007000102 05DC");
    QTest::newRow("EEPROM") << false << wire::frame("0110E007000102 05DC");
}

void ParameterEditorWritingTest::singleWriteGoesToItsBase()
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

void ParameterEditorWritingTest::singleWriteTimesOut()
{
    ModalAnswers boxes;
    EditorBench bench;
    bench.peer.held = true;
    boxes.expect(writeTimeout);
    bench.editor->writeCurrentParameterToServo({"Pn-007", "", "150.0", "0.1rpm", "0.0", "6000.0"}, true);
    QTRY_VERIFY(boxes.isDone());
}

void ParameterEditorWritingTest::pageWriteWritesAndReadsBackThreeTimes()
{
    ModalAnswers boxes;
    const EditorBench bench;
    QVERIFY(bench.waitForCatalogue());
    bench.keepOnly({"Pn-007", "Pn-A04"});
    boxes.expect(writingDone);
    bench.editor->writePageSlt();
    QTRY_VERIFY(boxes.isDone());
    const QByteArray readPath = wire::frame("010323EC0002");
    QCOMPARE(bench.peer.frames,
             QList<QByteArray>({wire::frame("0110E007000102 07D0"), readJog, readJog, readJog,
                                wire::frame("0110E3EC000204 00002710"), readPath, readPath, readPath}));
    QVERIFY(bench.progress->isHidden());
}

void ParameterEditorWritingTest::pageWriteLeavesOutReadOnlyAndReserved()
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

void ParameterEditorWritingTest::emptyValueIsWrittenAsZero()
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

void ParameterEditorWritingTest::readBackThatDiffersIsAskedAgain()
{
    ModalAnswers boxes;
    EditorBench bench;
    QVERIFY(bench.waitForCatalogue());
    bench.keepOnly({"Pn-007"});
    int reads = 0;
    bench.peer.intercept = [&reads](const QByteArray &request, const QByteArray &usual) {
        // The matches need not follow one another.
        if (request == readJog && (++reads == 2 || reads == 3))
            return wire::frame("0103020001");
        return usual;
    };
    boxes.expect(writingDone);
    bench.editor->writePageSlt();
    QTRY_VERIFY(boxes.isDone());
    QCOMPARE(bench.peer.frames.count(readJog), 5);
    QCOMPARE(bench.peer.frames.size(), 6);
}

void ParameterEditorWritingTest::readBackWithAnotherFunctionIsAskedAgain()
{
    ModalAnswers boxes;
    EditorBench bench;
    QVERIFY(bench.waitForCatalogue());
    bench.keepOnly({"Pn-007"});
    int reads = 0;
    bench.peer.intercept = [&reads](const QByteArray &request, const QByteArray &usual) {
        return request == readJog && ++reads <= 2 ? wire::frame("01830207D0") : usual;
    };
    boxes.expect(writingDone);
    bench.editor->writePageSlt();
    QTRY_VERIFY(boxes.isDone());
    QCOMPARE(bench.peer.frames.count(readJog), 5);
}

void ParameterEditorWritingTest::pageWriteResetsTheColours()
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

void ParameterEditorWritingTest::pageWriteWhileOfflineTimesOut()
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

void ParameterEditorWritingTest::missingReadBackClosesTheProgressSilently()
{
    ModalAnswers boxes;
    EditorBench bench;
    QVERIFY(bench.waitForCatalogue());
    bench.keepOnly({"Pn-007"});
    bench.peer.intercept = [](const QByteArray &request, const QByteArray &usual) {
        return request == readJog ? QByteArray() : usual;
    };
    bench.editor->writePageSlt();
    QTRY_COMPARE(bench.peer.frames.size(), 2);
    QVERIFY(bench.progress->isVisible());
    QTRY_VERIFY(bench.progress->isHidden());
    QVERIFY(boxes.seen.isEmpty());
}

void ParameterEditorWritingTest::newPageWriteStartsOver()
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

void ParameterEditorWritingTest::timeoutInIdleSaysNothing()
{
    ModalAnswers boxes;
    const EditorBench bench;
    bench.editor->readWriteTimeout();
    QVERIFY(boxes.seen.isEmpty());
}

void ParameterEditorWritingTest::timeOutWithdrawsWhatHasNotLeft_data()
{
    QTest::addColumn<QString>("message");
    QTest::newRow("told") << writeTimeout;
    QTest::newRow("silent") << QString();
}

void ParameterEditorWritingTest::timeOutWithdrawsWhatHasNotLeft()
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

QTEST_MAIN(ParameterEditorWritingTest)
#include "tst_parametereditor_writing.moc"
