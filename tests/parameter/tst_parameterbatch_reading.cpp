// SPDX-License-Identifier: GPL-3.0-or-later
// What the batch window reads from the drive, and how it counts.
#include "batchtransfers.h"

#include "link/serialport.h"
#include "parameter/loadededitor.h"
#include "support/batchtexts.h"
#include "support/editortexts.h"
#include "support/modalanswers.h"
#include "support/wire.h"

#include <QProgressBar>

using namespace batchtransfers;

namespace {

const QString &readDone = editortext::readingDone;

} // namespace

class ParameterBatchReadingTest : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();
    void readAsksForEveryRowTickedOrNot();
    void readShowsTheValuesBesideTheList();
    void readOfAnEmptyListIsCompleteAtOnce();
    void readOfflineEndsWithoutAMessage();
    void readWithoutAReplyClosesTheDialogSilently();
    void readAfterATimeOutWorksThroughWhatIsLeftFirst();
    void readShowsItsProgress();
    void readCountsWhatATimeOutHasLeft();
    void readCountGoesOnInTheNextEditor();
};

void ParameterBatchReadingTest::cleanup()
{
    SerialPort::portOpened = false;
}

void ParameterBatchReadingTest::readAsksForEveryRowTickedOrNot()
{
    const LoadedEditor loaded;
    loaded.list().addRow(QStringLiteral("Pn-007"));
    loaded.list().addRow(QStringLiteral("Pn-401"));
    loaded.list().addRow(QStringLiteral("Pn-000"));
    loaded.list().addRow(QStringLiteral("Pn-A04"));
    loaded.list().tick(1, false);
    QVERIFY(loaded.list().read());
    QCOMPARE(loaded.peer.frames,
             (QList<QByteArray>{wire::frame("01 03 20 07 00 01"), wire::frame("01 03 21 91 00 02"),
                                wire::frame("01 03 20 00 00 01"), wire::frame("01 03 23 ec 00 02")}));
    QCOMPARE(loaded.peer.windowNames, (QStringList{"Editor", "Editor", "Editor", "Editor"}));
}

void ParameterBatchReadingTest::readShowsTheValuesBesideTheList()
{
    LoadedEditor loaded;
    loaded.list().addRow(QStringLiteral("Pn-007"), QStringLiteral("5"));
    loaded.list().addRow(QStringLiteral("Pn-401"));
    loaded.list().addRow(QStringLiteral("Pn-300"));
    loaded.list().addRow(QStringLiteral("Pn-253"));
    loaded.list().addRow(QStringLiteral("Pn-007"));
    loaded.peer.registers[0x2007] = 2000;
    loaded.peer.registers[0x2191] = 0xFFFF;
    loaded.peer.registers[0x2192] = 0xFC18;
    loaded.peer.registers[0x212C] = 0x0A11;
    loaded.peer.registers[0x20FD] = 0xFFFF;
    QVERIFY(loaded.list().read());
    QCOMPARE(loaded.list().text(0, BatchDriver::Real), QStringLiteral("200.0"));
    QCOMPARE(loaded.list().text(1, BatchDriver::Real), QStringLiteral("-100.0"));
    QCOMPARE(loaded.list().text(2, BatchDriver::Real), QStringLiteral("0x0A11"));
    QCOMPARE(loaded.list().text(3, BatchDriver::Real), QStringLiteral("-1"));
    QCOMPARE(loaded.list().text(4, BatchDriver::Real), QStringLiteral("200.0"));
    QCOMPARE(Qt::Alignment(loaded.batch->table()->item(0, 12)->textAlignment()), Qt::AlignCenter);
    // Neither the value to write nor the page is touched.
    QCOMPARE(loaded.list().text(0, BatchDriver::Value), QStringLiteral("5"));
    QCOMPARE(loaded.value(4, loaded.rowOf(4, QStringLiteral("Pn-401")))->text(), QStringLiteral("100.0"));
}

void ParameterBatchReadingTest::readOfAnEmptyListIsCompleteAtOnce()
{
    const LoadedEditor loaded;
    QVERIFY(loaded.list().read());
    QVERIFY(loaded.peer.frames.isEmpty());
    QVERIFY(!progress(loaded)->isVisible());
}

void ParameterBatchReadingTest::readOfflineEndsWithoutAMessage()
{
    LoadedEditor loaded;
    loaded.peer.intercept = silent;
    QVERIFY(!SerialPort::portOpened);
    loaded.list().addRow(QStringLiteral("Pn-007"));
    const ModalAnswers noBox;
    loaded.list().trigger(BatchDriver::ReadTool);
    QCOMPARE(loaded.peer.frames.size(), 1);
    QVERIFY(progress(loaded)->isVisible());
    QTRY_VERIFY(!progress(loaded)->isVisible());
    QVERIFY(noBox.seen.isEmpty());
    QCOMPARE(loaded.list().text(0, BatchDriver::Real), batchtext::notRead);
}

void ParameterBatchReadingTest::readWithoutAReplyClosesTheDialogSilently()
{
    LoadedEditor loaded;
    loaded.peer.intercept = [](const QByteArray &request, const QByteArray &reply) {
        return request == wire::frame("01 03 21 91 00 02") ? QByteArray() : reply;
    };
    loaded.list().addRow(QStringLiteral("Pn-007"));
    loaded.list().addRow(QStringLiteral("Pn-401"));
    loaded.list().addRow(QStringLiteral("Pn-007"));
    const ModalAnswers noBox;
    loaded.list().trigger(BatchDriver::ReadTool);
    QTRY_COMPARE(loaded.peer.frames.size(), 2);
    QTRY_VERIFY(!progress(loaded)->isVisible());
    QCOMPARE(loaded.list().text(0, BatchDriver::Real), QStringLiteral("0.0"));
    QCOMPARE(loaded.list().text(1, BatchDriver::Real), batchtext::notRead);
    QCOMPARE(loaded.peer.frames.size(), 2);
}

void ParameterBatchReadingTest::readAfterATimeOutWorksThroughWhatIsLeftFirst()
{
    LoadedEditor loaded;
    loaded.list().addRow(QStringLiteral("Pn-007"));
    loaded.list().addRow(QStringLiteral("Pn-008"));
    loaded.peer.registers[0x2007] = 70;
    loaded.peer.registers[0x2008] = 80;
    loaded.peer.intercept = silent;
    loaded.list().trigger(BatchDriver::ReadTool);
    QTRY_VERIFY(!progress(loaded)->isVisible());
    loaded.peer.intercept = nullptr;
    loaded.peer.frames.clear();
    QVERIFY(loaded.list().read());
    const QByteArray first = wire::frame("01 03 20 07 00 01");
    const QByteArray second = wire::frame("01 03 20 08 00 01");
    QCOMPARE(loaded.peer.frames, (QList<QByteArray>{first, second, first, second}));
    QCOMPARE(loaded.list().text(0, BatchDriver::Real), QStringLiteral("7.0"));
    QCOMPARE(loaded.list().text(1, BatchDriver::Real), QStringLiteral("80"));
}

void ParameterBatchReadingTest::readShowsItsProgress()
{
    LoadedEditor loaded;
    QVERIFY(
        loaded.list().read()); // a read that comes to its end puts the count back, which a time-out leaves
    for (int i = 0; i < 3; ++i)
        loaded.list().addRow(QStringLiteral("Pn-007"));
    loaded.peer.held = true;
    ModalAnswers boxes;
    boxes.expect(readDone);
    loaded.list().trigger(BatchDriver::ReadTool);
    QVERIFY(progress(loaded)->isVisible());
    QVERIFY(progress(loaded)->isModal());
    QCOMPARE(progress(loaded)->labelText(), QStringLiteral("Reading..."));
    QCOMPARE(progress(loaded)->minimum(), 0);
    QCOMPARE(progress(loaded)->maximum(), 4);
    QCOMPARE(progress(loaded)->findChild<QProgressBar *>()->value(), 1);
    loaded.peer.release();
    QTRY_VERIFY(boxes.isDone());
    QVERIFY(!progress(loaded)->isVisible());
}

void ParameterBatchReadingTest::readCountsWhatATimeOutHasLeft()
{
    LoadedEditor loaded;
    QVERIFY(loaded.list().read()); // puts the count back
    loaded.list().addRow(QStringLiteral("Pn-007"));
    loaded.list().addRow(QStringLiteral("Pn-008"));
    const QByteArray second = wire::frame("01 03 20 08 00 01");
    loaded.peer.intercept = [&second](const QByteArray &request, const QByteArray &reply) {
        return request == second ? QByteArray() : reply;
    };
    loaded.list().trigger(BatchDriver::ReadTool);
    QTRY_COMPARE(loaded.peer.frames.size(), 2);
    QTRY_VERIFY(!progress(loaded)->isVisible());

    // One code is left in the queue, and the count stands at two.
    loaded.list().addRow(QStringLiteral("Pn-009"));
    loaded.peer.intercept = nullptr;
    loaded.peer.held = true;
    ModalAnswers boxes;
    boxes.expect(readDone);
    loaded.list().trigger(BatchDriver::ReadTool);
    QVERIFY(progress(loaded)->isVisible());
    QCOMPARE(progress(loaded)->minimum(), 0);
    QCOMPARE(progress(loaded)->maximum(), 1 + 3 + 1);
    QCOMPARE(progress(loaded)->value(), 3);
    QList<int> values;
    loaded.peer.intercept = [&](const QByteArray &, const QByteArray &reply) {
        // Set before the frame goes out.
        values.append(progress(loaded)->value());
        return reply;
    };
    loaded.peer.release();
    QTRY_VERIFY(boxes.isDone());
    // Beyond the end of the range the bar stays where it is.
    QCOMPARE(values, (QList<int>{4, 5, 5}));

    loaded.peer.intercept = nullptr;
    loaded.peer.held = true;
    boxes.expect(readDone);
    loaded.list().trigger(BatchDriver::ReadTool);
    QCOMPARE(progress(loaded)->maximum(), 3 + 1);
    QCOMPARE(progress(loaded)->value(), 1);
    loaded.peer.release();
    QTRY_VERIFY(boxes.isDone());
}

void ParameterBatchReadingTest::readCountGoesOnInTheNextEditor()
{
    {
        LoadedEditor loaded;
        QVERIFY(loaded.list().read()); // puts the count back
        loaded.list().addRow(QStringLiteral("Pn-007"));
        loaded.peer.intercept = silent;
        loaded.list().trigger(BatchDriver::ReadTool);
        QTRY_VERIFY(!progress(loaded)->isVisible());
    }
    LoadedEditor loaded;
    for (int i = 0; i < 3; ++i)
        loaded.list().addRow(QStringLiteral("Pn-007"));
    loaded.peer.held = true;
    ModalAnswers boxes;
    boxes.expect(readDone);
    loaded.list().trigger(BatchDriver::ReadTool);
    QCOMPARE(progress(loaded)->maximum(), 3 + 1);
    QCOMPARE(progress(loaded)->value(), 2);
    loaded.peer.release();
    QTRY_VERIFY(boxes.isDone());
}

QTEST_MAIN(ParameterBatchReadingTest)
#include "tst_parameterbatch_reading.moc"
