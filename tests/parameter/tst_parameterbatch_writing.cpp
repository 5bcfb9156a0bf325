// SPDX-License-Identifier: GPL-3.0-or-later
// What the batch window writes to the drive, and how it reads it back.
#include "batchtransfers.h"

#include "link/serialport.h"
#include "parameter/loadededitor.h"
#include "support/batchtexts.h"
#include "support/editortexts.h"
#include "support/modalanswers.h"
#include "support/wire.h"

#include <QTranslator>

using namespace batchtransfers;

namespace {

const QString &writeDone = editortext::writingDone;

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

class ParameterBatchWritingTest : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();
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

void ParameterBatchWritingTest::cleanup()
{
    SerialPort::portOpened = false;
}

void ParameterBatchWritingTest::writeShowsItsProgress()
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

void ParameterBatchWritingTest::writeSendsEachRowAndThreeReadBacks()
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

void ParameterBatchWritingTest::writeLeavesOutUntickedReadOnlyAndReservedRows()
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

void ParameterBatchWritingTest::writeLeavesOutWhatTheInterfaceCallsReserved()
{
    ReservedTranslator translator;
    QCoreApplication::installTranslator(&translator);
    const LoadedEditor loaded(QStringLiteral("zh_CN"));
    loaded.list().addRow(QStringLiteral("Pn-112"));
    QCOMPARE(loaded.list().text(0, BatchDriver::Description), QString::fromUtf8("保留"));
    QVERIFY(loaded.list().write());
    QVERIFY(loaded.peer.frames.isEmpty());
}

void ParameterBatchWritingTest::writeSendsAnUnknownRowAsZero()
{
    const LoadedEditor loaded;
    loaded.list().addRow(QStringLiteral("Pn-C05"));
    QCOMPARE(loaded.list().text(0, BatchDriver::Value), batchtext::unknown);
    QVERIFY(loaded.list().write());
    QCOMPARE(loaded.peer.frames.first(), wire::frame("01 10 e4 b5 00 01 02 00 00"));
}

void ParameterBatchWritingTest::writeGoesOnUntilTheDriveHoldsTheValue()
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

void ParameterBatchWritingTest::writeWithoutAReplyIsTold()
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

void ParameterBatchWritingTest::readBackWithoutAReplyClosesTheDialogSilently()
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

void ParameterBatchWritingTest::coloursOfThePagesStayAfterABatchWrite()
{
    const LoadedEditor loaded;
    loaded.value(0, 7)->setForeground(Qt::red);
    loaded.value(1, 0)->setForeground(Qt::blue);
    loaded.list().addRow(QStringLiteral("Pn-007"));
    QVERIFY(loaded.list().write());
    QCOMPARE(loaded.value(0, 7)->foreground().color(), QColor(Qt::red));
    QCOMPARE(loaded.value(1, 0)->foreground().color(), QColor(Qt::blue));
}

void ParameterBatchWritingTest::pageWriteAfterAFailedBatchWriteResetsTheColours()
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

void ParameterBatchWritingTest::everyParameterIsListedReadAndWritten()
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

QTEST_MAIN(ParameterBatchWritingTest)
#include "tst_parameterbatch_writing.moc"
