// SPDX-License-Identifier: GPL-3.0-or-later
#include "link/serialport.h"
#include "parameter/loadededitor.h"
#include "support/batchtexts.h"
#include "support/editortexts.h"
#include "support/modalanswers.h"
#include "support/wire.h"

#include <QElapsedTimer>
#include <QProgressBar>
#include <QProgressDialog>
#include <QTranslator>

class ParameterBatchTransferTest : public QObject
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
    void writeShowsItsProgress();
    void writeSendsEachRowAndThreeReadBacks();
    void writeLeavesOutUntickedReadOnlyAndReservedRows();
    void writeLeavesOutWhatTheInterfaceCallsReserved();
    void writeSendsAnUnknownRowAsZero();
    void writeGoesOnUntilTheDriveHoldsTheValue();
    void writeWithoutAReplyIsTold();
    void readBackWithoutAReplyClosesTheDialogSilently();
    void coloursOfThePagesStayAfterABatchWrite();
    void pageWriteAfterAFailedBatchWriteResetsTheColours();
    void everyParameterIsListedReadAndWritten();
};

namespace {

const QString &readDone = editortext::readingDone;
const QString &writeDone = editortext::writingDone;

QProgressDialog *progress(const LoadedEditor &loaded)
{
    return loaded.editor->findChild<QProgressDialog *>();
}

QByteArray silent(const QByteArray &, const QByteArray &)
{
    return QByteArray();
}

class ReservedTranslator : public QTranslator
{
public:
    bool isEmpty() const override { return false; }
    QString translate(const char *, const char *source, const char *, int) const override
    {
        return qstrcmp(source, "Reserved") == 0 ? QString::fromUtf8("保留") : QString();
    }
};

} // namespace

void ParameterBatchTransferTest::cleanup()
{
    SerialPort::portOpened = false;
}

void ParameterBatchTransferTest::readAsksForEveryRowTickedOrNot()
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

void ParameterBatchTransferTest::readShowsTheValuesBesideTheList()
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

void ParameterBatchTransferTest::readOfAnEmptyListIsCompleteAtOnce()
{
    const LoadedEditor loaded;
    QVERIFY(loaded.list().read());
    QVERIFY(loaded.peer.frames.isEmpty());
    QVERIFY(!progress(loaded)->isVisible());
}

void ParameterBatchTransferTest::readOfflineEndsWithoutAMessage()
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

void ParameterBatchTransferTest::readWithoutAReplyClosesTheDialogSilently()
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

void ParameterBatchTransferTest::readAfterATimeOutWorksThroughWhatIsLeftFirst()
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

void ParameterBatchTransferTest::readShowsItsProgress()
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

void ParameterBatchTransferTest::readCountsWhatATimeOutHasLeft()
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

void ParameterBatchTransferTest::readCountGoesOnInTheNextEditor()
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

void ParameterBatchTransferTest::writeShowsItsProgress()
{
    LoadedEditor loaded;
    QVERIFY(loaded.list().write()); // puts the count back
    loaded.list().addRow(QStringLiteral("Pn-007"), QStringLiteral("1.0"));
    loaded.list().addRow(QStringLiteral("Pn-000")); // read-only, so it does not count
    loaded.list().addRow(QStringLiteral("Pn-008"), QStringLiteral("1"));
    QList<int> values;
    loaded.peer.intercept = [&](const QByteArray &request, const QByteArray &reply) {
        if (request.at(1) == 0x03)
            values.append(progress(loaded)->value());
        return reply;
    };
    loaded.peer.held = true;
    ModalAnswers boxes;
    boxes.expect(writeDone);
    loaded.list().trigger(BatchDriver::WriteTool);
    QVERIFY(progress(loaded)->isVisible());
    QVERIFY(progress(loaded)->isModal());
    QCOMPARE(progress(loaded)->labelText(), QStringLiteral("Writing..."));
    QCOMPARE(progress(loaded)->minimum(), 0);
    QCOMPARE(progress(loaded)->maximum(), 2 + 1);
    QCOMPARE(progress(loaded)->value(), 1);
    loaded.peer.release();
    QTRY_VERIFY(boxes.isDone());
    QCOMPARE(values, (QList<int>{1, 1, 1, 2, 2, 2}));
    QVERIFY(!progress(loaded)->isVisible());
}

void ParameterBatchTransferTest::writeSendsEachRowAndThreeReadBacks()
{
    const LoadedEditor loaded;
    loaded.list().addRow(QStringLiteral("Pn-007"), QStringLiteral("123.4"));
    loaded.list().addRow(QStringLiteral("Pn-401"), QStringLiteral("-100.0"));
    loaded.list().addRow(QStringLiteral("Pn-300"), QStringLiteral("0x0011"));
    QVERIFY(loaded.list().write());
    const QByteArray first = wire::frame("01 03 20 07 00 01");
    const QByteArray second = wire::frame("01 03 21 91 00 02");
    const QByteArray third = wire::frame("01 03 21 2c 00 01");
    QCOMPARE(loaded.peer.frames,
             (QList<QByteArray>{wire::frame("01 10 e0 07 00 01 02 04 d2"), first, first, first,
                                wire::frame("01 10 e1 91 00 02 04 ff ff fc 18"), second, second, second,
                                wire::frame("01 10 e1 2c 00 01 02 00 11"), third, third, third}));
}

void ParameterBatchTransferTest::writeLeavesOutUntickedReadOnlyAndReservedRows()
{
    const LoadedEditor loaded;
    loaded.list().addRow(QStringLiteral("Pn-000")); // read-only
    loaded.list().addRow(QStringLiteral("Pn-112"));
    QCOMPARE(loaded.list().text(1, BatchDriver::Description), QStringLiteral("Reserved"));
    loaded.list().addRow(QStringLiteral("Pn-007"), QStringLiteral("1.0"));
    loaded.list().tick(2, false);
    loaded.list().addRow(QStringLiteral("Pn-340")); // spelt otherwise, so it counts
    QCOMPARE(loaded.list().text(3, BatchDriver::Description), QStringLiteral("Resevred"));
    loaded.list().setText(3, BatchDriver::Value, QStringLiteral("1"));
    QVERIFY(loaded.list().write());
    QCOMPARE(loaded.peer.frames.first(), wire::frame("01 10 e1 54 00 02 04 00 00 00 01"));
    QCOMPARE(loaded.peer.frames.size(), 4);
}

void ParameterBatchTransferTest::writeLeavesOutWhatTheInterfaceCallsReserved()
{
    ReservedTranslator translator;
    QCoreApplication::installTranslator(&translator);
    const LoadedEditor loaded(QStringLiteral("zh_CN"));
    loaded.list().addRow(QStringLiteral("Pn-112"));
    QCOMPARE(loaded.list().text(0, BatchDriver::Description), QString::fromUtf8("保留"));
    QVERIFY(loaded.list().write());
    QVERIFY(loaded.peer.frames.isEmpty());
}

void ParameterBatchTransferTest::writeSendsAnUnknownRowAsZero()
{
    const LoadedEditor loaded;
    loaded.list().addRow(QStringLiteral("Pn-C05"));
    QCOMPARE(loaded.list().text(0, BatchDriver::Value), batchtext::unknown);
    QVERIFY(loaded.list().write());
    QCOMPARE(loaded.peer.frames.first(), wire::frame("01 10 e4 b5 00 01 02 00 00"));
}

void ParameterBatchTransferTest::writeGoesOnUntilTheDriveHoldsTheValue()
{
    LoadedEditor loaded;
    loaded.list().addRow(QStringLiteral("Pn-007"), QStringLiteral("1.0"));
    int readBacks = 0;
    loaded.peer.intercept = [&readBacks](const QByteArray &request, const QByteArray &reply) {
        if (request.at(1) == 0x03 && ++readBacks <= 4)
            return wire::readReply(wire::bytes("00 09"));
        return reply;
    };
    QVERIFY(loaded.list().write());
    QCOMPARE(loaded.peer.frames.size(), 1 + 4 + 3);
}

void ParameterBatchTransferTest::writeWithoutAReplyIsTold()
{
    LoadedEditor loaded;
    loaded.peer.intercept = silent;
    loaded.list().addRow(QStringLiteral("Pn-007"));
    ModalAnswers boxes;
    boxes.expect(editortext::writeTimeout);
    loaded.list().trigger(BatchDriver::WriteTool);
    QTRY_VERIFY(boxes.isDone());
    QVERIFY(!progress(loaded)->isVisible());
    QCOMPARE(loaded.peer.frames.size(), 1);
}

void ParameterBatchTransferTest::readBackWithoutAReplyClosesTheDialogSilently()
{
    LoadedEditor loaded;
    loaded.peer.intercept = [](const QByteArray &request, const QByteArray &reply) {
        return request.at(1) == 0x03 ? QByteArray() : reply;
    };
    loaded.list().addRow(QStringLiteral("Pn-007"));
    const ModalAnswers noBox;
    loaded.list().trigger(BatchDriver::WriteTool);
    QTRY_COMPARE(loaded.peer.frames.size(), 2);
    QTRY_VERIFY(!progress(loaded)->isVisible());
}

void ParameterBatchTransferTest::coloursOfThePagesStayAfterABatchWrite()
{
    const LoadedEditor loaded;
    loaded.value(0, 7)->setForeground(Qt::red);
    loaded.value(1, 0)->setForeground(Qt::blue);
    loaded.list().addRow(QStringLiteral("Pn-007"));
    QVERIFY(loaded.list().write());
    QCOMPARE(loaded.value(0, 7)->foreground().color(), QColor(Qt::red));
    QCOMPARE(loaded.value(1, 0)->foreground().color(), QColor(Qt::blue));
}

void ParameterBatchTransferTest::pageWriteAfterAFailedBatchWriteResetsTheColours()
{
    LoadedEditor loaded;
    loaded.list().addRow(QStringLiteral("Pn-007"));
    loaded.value(0, 7)->setForeground(Qt::red);
    loaded.peer.intercept = silent;
    ModalAnswers boxes;
    boxes.expect(editortext::writeTimeout);
    loaded.list().trigger(BatchDriver::WriteTool);
    QTRY_VERIFY(boxes.isDone());
    loaded.peer.intercept = nullptr;
    boxes.expect(writeDone);
    loaded.editor->writePageSlt();
    QTRY_VERIFY_WITH_TIMEOUT(boxes.isDone(), 60000);
    QCOMPARE(loaded.value(0, 7)->foreground().color(), QColor(Qt::black));
}

void ParameterBatchTransferTest::everyParameterIsListedReadAndWritten()
{
    LoadedEditor loaded(QStringLiteral("zh_CN"));
    loaded.editor->editParaSlot();
    int writable = 0;
    for (const ParameterTable *page : qAsConst(loaded.pages)) {
        for (int row = 0; row < page->rowCount(); ++row) {
            loaded.list().addRow(page->verticalHeaderItem(row)->text());
            writable += page->item(row, 0)->text().isEmpty();
        }
    }
    QCOMPARE(loaded.list().rowCount(), 571);
    loaded.batch->setRows(loaded.batch->rows());
    QCOMPARE(loaded.list().rowCount(), 571);
    QVERIFY(loaded.list().read());
    QCOMPARE(loaded.peer.frames.size(), 571);
    loaded.peer.frames.clear();
    QVERIFY(loaded.list().write());
    QCOMPARE(loaded.peer.frames.size(), 4 * writable);
}

QTEST_MAIN(ParameterBatchTransferTest)
#include "tst_parameterbatch_transfer.moc"
