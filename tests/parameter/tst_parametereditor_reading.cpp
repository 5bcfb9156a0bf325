// SPDX-License-Identifier: GPL-3.0-or-later
// What the editor reads from the drive, in which order, and what it makes of the answers.
#include "editorbench.h"

#include "link/serialport.h"
#include "support/editortexts.h"
#include "support/modalanswers.h"
#include "support/testdirectory.h"
#include "support/wire.h"

#include <QSignalSpy>

using namespace editortext;

class ParameterEditorReadingTest : public QObject
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
    void exceptionReplyIsDecodedAsItStands();
    void singleReadUsesTheListForItsWidth_data();
    void singleReadUsesTheListForItsWidth();
    void singleReadTimesOut();
    void singleReadsWaitForOneAnother();
    void pageReadWaitsForASingleRead();

private:
    TestDirectory directory;
};

void ParameterEditorReadingTest::init()
{
    directory.clear();
    directory.setLanguage(QStringLiteral("en_US"));
    SerialPort::portOpened = true;
}

void ParameterEditorReadingTest::pageReadAsksForEveryCode_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<int>("frames");
    QTest::addColumn<QByteArray>("gear");   // the frame that reads Pn-304
    QTest::addColumn<QByteArray>("origin"); // and Pn-336
    // In the English file the hyphen pairs are read as one register, and Pn-336~Pn-337 as two.
    QTest::newRow("English") << "en_US" << 520 << wire::frame("010321300001") << wire::frame("010321500002");
    QTest::newRow("Chinese") << "zh_CN" << 571 << wire::frame("010321300002") << wire::frame("010321500001");
}

void ParameterEditorReadingTest::pageReadAsksForEveryCode()
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

void ParameterEditorReadingTest::pageReadShowsEveryValueAndFollowsIt()
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

void ParameterEditorReadingTest::pageReadWhileOfflineDoesNothing()
{
    ModalAnswers boxes;
    const EditorBench bench;
    QVERIFY(bench.waitForCatalogue());
    SerialPort::portOpened = false;
    bench.editor->readPageSlt();
    QVERIFY(bench.peer.frames.isEmpty());
    QVERIFY(bench.progress->isHidden());
}

void ParameterEditorReadingTest::progressRunsOverTheWholeRead()
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

void ParameterEditorReadingTest::missingReplyEndsThePageRead()
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

void ParameterEditorReadingTest::restOfAnEndedReadIsReadFirst()
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

void ParameterEditorReadingTest::unaskedReplyAfterAReadIsIgnored()
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

void ParameterEditorReadingTest::lateReplyDoesNotSetAnEndedReadGoing()
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

void ParameterEditorReadingTest::exceptionReplyIsDecodedAsItStands()
{
    EditorBench bench;
    QVERIFY(bench.waitForCatalogue());
    bench.peer.intercept = [](const QByteArray &, const QByteArray &) { return wire::bytes("018302C0F1"); };
    bench.editor->readCurrentParameter({QStringLiteral("Pn-100")});
    QTRY_COMPARE(bench.value(1, QStringLiteral("Pn-100")), QStringLiteral("33538"));
}

void ParameterEditorReadingTest::singleReadUsesTheListForItsWidth_data()
{
    QTest::addColumn<QString>("code");
    QTest::addColumn<QByteArray>("frame");
    QTest::newRow("Pn-007") << "Pn-007" << wire::frame("010320070001");
    QTest::newRow("Pn-304") << "Pn-304" << wire::frame("010321300002");
    QTest::newRow("Pn-336") << "Pn-336" << wire::frame("010321500001");
    QTest::newRow("Pn-B06") << "Pn-B06" << wire::frame("010324520002");
}

void ParameterEditorReadingTest::singleReadUsesTheListForItsWidth()
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

void ParameterEditorReadingTest::singleReadTimesOut()
{
    ModalAnswers boxes;
    EditorBench bench;
    bench.peer.held = true;
    boxes.expect(requestTimeout);
    bench.editor->readCurrentParameter({QStringLiteral("Pn-007")});
    QTRY_VERIFY(boxes.isDone());
    QCOMPARE(bench.peer.frames.size(), 1);
}

void ParameterEditorReadingTest::singleReadsWaitForOneAnother()
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

void ParameterEditorReadingTest::pageReadWaitsForASingleRead()
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

QTEST_MAIN(ParameterEditorReadingTest)
#include "tst_parametereditor_reading.moc"
