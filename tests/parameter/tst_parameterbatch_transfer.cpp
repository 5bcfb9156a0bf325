// SPDX-License-Identifier: GPL-3.0-or-later
#include "link/serialport.h"
#include "parameter/loadededitor.h"
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

void addRow(const LoadedEditor &loaded, const QString &code, const QString &value = QString())
{
    loaded.editor->newRowSlot();
    QTableWidget *const table = loaded.batch->table();
    const int row = table->rowCount() - 1;
    loaded.editor->Csv_DoubleClickedSlot(row, 0);
    table->item(row, 0)->setText(code);
    if (!value.isEmpty())
        table->item(row, 6)->setText(value);
}

QProgressDialog *progress(const LoadedEditor &loaded)
{
    return loaded.editor->findChild<QProgressDialog *>();
}

QString real(const LoadedEditor &loaded, int row)
{
    return loaded.batch->table()->item(row, 12)->text();
}

void read(const LoadedEditor &loaded)
{
    ModalAnswers boxes;
    boxes.expect(readDone);
    loaded.editor->readParaCsvSlot();
    QTRY_VERIFY_WITH_TIMEOUT(boxes.isDone(), 60000);
}

void write(const LoadedEditor &loaded)
{
    ModalAnswers boxes;
    boxes.expect(writeDone);
    loaded.editor->writeCsvSlot();
    QTRY_VERIFY_WITH_TIMEOUT(boxes.isDone(), 60000);
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
    addRow(loaded, QStringLiteral("Pn-007"));
    addRow(loaded, QStringLiteral("Pn-401"));
    addRow(loaded, QStringLiteral("Pn-000"));
    addRow(loaded, QStringLiteral("Pn-A04"));
    loaded.batch->table()->item(1, 0)->setCheckState(Qt::Unchecked);
    read(loaded);
    QCOMPARE(loaded.peer.frames,
             (QList<QByteArray>{wire::frame("01 03 20 07 00 01"), wire::frame("01 03 21 91 00 02"),
                                wire::frame("01 03 20 00 00 01"), wire::frame("01 03 23 ec 00 02")}));
    QCOMPARE(loaded.peer.windowNames, (QStringList{"Editor", "Editor", "Editor", "Editor"}));
}

void ParameterBatchTransferTest::readShowsTheValuesBesideTheList()
{
    LoadedEditor loaded;
    addRow(loaded, QStringLiteral("Pn-007"), QStringLiteral("5"));
    addRow(loaded, QStringLiteral("Pn-401"));
    addRow(loaded, QStringLiteral("Pn-300"));
    addRow(loaded, QStringLiteral("Pn-253"));
    addRow(loaded, QStringLiteral("Pn-007"));
    loaded.peer.registers[0x2007] = 2000;
    loaded.peer.registers[0x2191] = 0xFFFF;
    loaded.peer.registers[0x2192] = 0xFC18;
    loaded.peer.registers[0x212C] = 0x0A11;
    loaded.peer.registers[0x20FD] = 0xFFFF;
    read(loaded);
    QCOMPARE(real(loaded, 0), QStringLiteral("200.0"));
    QCOMPARE(real(loaded, 1), QStringLiteral("-100.0"));
    QCOMPARE(real(loaded, 2), QStringLiteral("0x0A11"));
    QCOMPARE(real(loaded, 3), QStringLiteral("-1"));
    QCOMPARE(real(loaded, 4), QStringLiteral("200.0"));
    QCOMPARE(Qt::Alignment(loaded.batch->table()->item(0, 12)->textAlignment()), Qt::AlignCenter);
    // Neither the value to write nor the page is touched.
    QCOMPARE(loaded.batch->table()->item(0, 6)->text(), QStringLiteral("5"));
    QCOMPARE(loaded.value(4, loaded.rowOf(4, QStringLiteral("Pn-401")))->text(), QStringLiteral("100.0"));
}

void ParameterBatchTransferTest::readOfAnEmptyListIsCompleteAtOnce()
{
    const LoadedEditor loaded;
    read(loaded);
    QVERIFY(loaded.peer.frames.isEmpty());
    QVERIFY(!progress(loaded)->isVisible());
}

void ParameterBatchTransferTest::readOfflineEndsWithoutAMessage()
{
    LoadedEditor loaded;
    loaded.peer.intercept = silent;
    QVERIFY(!SerialPort::portOpened);
    addRow(loaded, QStringLiteral("Pn-007"));
    const ModalAnswers noBox;
    loaded.editor->readParaCsvSlot();
    QCOMPARE(loaded.peer.frames.size(), 1);
    QVERIFY(progress(loaded)->isVisible());
    QTRY_VERIFY(!progress(loaded)->isVisible());
    QVERIFY(noBox.seen.isEmpty());
    QCOMPARE(real(loaded, 0), QStringLiteral("default"));
}

void ParameterBatchTransferTest::readWithoutAReplyClosesTheDialogSilently()
{
    LoadedEditor loaded;
    loaded.peer.intercept = [](const QByteArray &request, const QByteArray &reply) {
        return request == wire::frame("01 03 21 91 00 02") ? QByteArray() : reply;
    };
    addRow(loaded, QStringLiteral("Pn-007"));
    addRow(loaded, QStringLiteral("Pn-401"));
    addRow(loaded, QStringLiteral("Pn-007"));
    const ModalAnswers noBox;
    loaded.editor->readParaCsvSlot();
    QTRY_COMPARE(loaded.peer.frames.size(), 2);
    QTRY_VERIFY(!progress(loaded)->isVisible());
    QCOMPARE(real(loaded, 0), QStringLiteral("0.0"));
    QCOMPARE(real(loaded, 1), QStringLiteral("default"));
    QCOMPARE(loaded.peer.frames.size(), 2);
}

void ParameterBatchTransferTest::readAfterATimeOutWorksThroughWhatIsLeftFirst()
{
    LoadedEditor loaded;
    addRow(loaded, QStringLiteral("Pn-007"));
    addRow(loaded, QStringLiteral("Pn-008"));
    loaded.peer.registers[0x2007] = 70;
    loaded.peer.registers[0x2008] = 80;
    loaded.peer.intercept = silent;
    loaded.editor->readParaCsvSlot();
    QTRY_VERIFY(!progress(loaded)->isVisible());
    loaded.peer.intercept = nullptr;
    loaded.peer.frames.clear();
    read(loaded);
    const QByteArray first = wire::frame("01 03 20 07 00 01");
    const QByteArray second = wire::frame("01 03 20 08 00 01");
    QCOMPARE(loaded.peer.frames, (QList<QByteArray>{first, second, first, second}));
    QCOMPARE(real(loaded, 0), QStringLiteral("7.0"));
    QCOMPARE(real(loaded, 1), QStringLiteral("80"));
}

void ParameterBatchTransferTest::readShowsItsProgress()
{
    LoadedEditor loaded;
    read(loaded); // a read that comes to its end puts the count back, which a time-out leaves
    for (int i = 0; i < 3; ++i)
        addRow(loaded, QStringLiteral("Pn-007"));
    loaded.peer.held = true;
    ModalAnswers boxes;
    boxes.expect(readDone);
    loaded.editor->readParaCsvSlot();
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
    read(loaded); // puts the count back
    addRow(loaded, QStringLiteral("Pn-007"));
    addRow(loaded, QStringLiteral("Pn-008"));
    const QByteArray second = wire::frame("01 03 20 08 00 01");
    loaded.peer.intercept = [&second](const QByteArray &request, const QByteArray &reply) {
        return request == second ? QByteArray() : reply;
    };
    loaded.editor->readParaCsvSlot();
    QTRY_COMPARE(loaded.peer.frames.size(), 2);
    QTRY_VERIFY(!progress(loaded)->isVisible());

    // One code is left in the queue, and the count stands at two.
    addRow(loaded, QStringLiteral("Pn-009"));
    loaded.peer.intercept = nullptr;
    loaded.peer.held = true;
    ModalAnswers boxes;
    boxes.expect(readDone);
    loaded.editor->readParaCsvSlot();
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
    loaded.editor->readParaCsvSlot();
    QCOMPARE(progress(loaded)->maximum(), 3 + 1);
    QCOMPARE(progress(loaded)->value(), 1);
    loaded.peer.release();
    QTRY_VERIFY(boxes.isDone());
}

void ParameterBatchTransferTest::readCountGoesOnInTheNextEditor()
{
    {
        LoadedEditor loaded;
        read(loaded); // puts the count back
        addRow(loaded, QStringLiteral("Pn-007"));
        loaded.peer.intercept = silent;
        loaded.editor->readParaCsvSlot();
        QTRY_VERIFY(!progress(loaded)->isVisible());
    }
    LoadedEditor loaded;
    for (int i = 0; i < 3; ++i)
        addRow(loaded, QStringLiteral("Pn-007"));
    loaded.peer.held = true;
    ModalAnswers boxes;
    boxes.expect(readDone);
    loaded.editor->readParaCsvSlot();
    QCOMPARE(progress(loaded)->maximum(), 3 + 1);
    QCOMPARE(progress(loaded)->value(), 2);
    loaded.peer.release();
    QTRY_VERIFY(boxes.isDone());
}

void ParameterBatchTransferTest::writeShowsItsProgress()
{
    LoadedEditor loaded;
    write(loaded); // puts the count back
    addRow(loaded, QStringLiteral("Pn-007"), QStringLiteral("1.0"));
    addRow(loaded, QStringLiteral("Pn-000")); // read-only, so it does not count
    addRow(loaded, QStringLiteral("Pn-008"), QStringLiteral("1"));
    QList<int> values;
    loaded.peer.intercept = [&](const QByteArray &request, const QByteArray &reply) {
        if (request.at(1) == 0x03)
            values.append(progress(loaded)->value());
        return reply;
    };
    loaded.peer.held = true;
    ModalAnswers boxes;
    boxes.expect(writeDone);
    loaded.editor->writeCsvSlot();
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
    addRow(loaded, QStringLiteral("Pn-007"), QStringLiteral("123.4"));
    addRow(loaded, QStringLiteral("Pn-401"), QStringLiteral("-100.0"));
    addRow(loaded, QStringLiteral("Pn-300"), QStringLiteral("0x0011"));
    write(loaded);
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
    addRow(loaded, QStringLiteral("Pn-000")); // read-only
    addRow(loaded, QStringLiteral("Pn-112"));
    QCOMPARE(loaded.batch->table()->item(1, 11)->text(), QStringLiteral("Reserved"));
    addRow(loaded, QStringLiteral("Pn-007"), QStringLiteral("1.0"));
    loaded.batch->table()->item(2, 0)->setCheckState(Qt::Unchecked);
    addRow(loaded, QStringLiteral("Pn-340")); // spelt otherwise, so it counts
    QCOMPARE(loaded.batch->table()->item(3, 11)->text(), QStringLiteral("Resevred"));
    loaded.batch->table()->item(3, 6)->setText(QStringLiteral("1"));
    write(loaded);
    QCOMPARE(loaded.peer.frames.first(), wire::frame("01 10 e1 54 00 02 04 00 00 00 01"));
    QCOMPARE(loaded.peer.frames.size(), 4);
}

void ParameterBatchTransferTest::writeLeavesOutWhatTheInterfaceCallsReserved()
{
    ReservedTranslator translator;
    QCoreApplication::installTranslator(&translator);
    const LoadedEditor loaded(QStringLiteral("zh_CN"));
    addRow(loaded, QStringLiteral("Pn-112"));
    QCOMPARE(loaded.batch->table()->item(0, 11)->text(), QString::fromUtf8("保留"));
    write(loaded);
    QVERIFY(loaded.peer.frames.isEmpty());
}

void ParameterBatchTransferTest::writeSendsAnUnknownRowAsZero()
{
    const LoadedEditor loaded;
    addRow(loaded, QStringLiteral("Pn-C05"));
    QCOMPARE(loaded.batch->table()->item(0, 6)->text(), QStringLiteral("F"));
    write(loaded);
    QCOMPARE(loaded.peer.frames.first(), wire::frame("01 10 e4 b5 00 01 02 00 00"));
}

void ParameterBatchTransferTest::writeGoesOnUntilTheDriveHoldsTheValue()
{
    LoadedEditor loaded;
    addRow(loaded, QStringLiteral("Pn-007"), QStringLiteral("1.0"));
    int readBacks = 0;
    loaded.peer.intercept = [&readBacks](const QByteArray &request, const QByteArray &reply) {
        if (request.at(1) == 0x03 && ++readBacks <= 4)
            return wire::readReply(wire::bytes("00 09"));
        return reply;
    };
    write(loaded);
    QCOMPARE(loaded.peer.frames.size(), 1 + 4 + 3);
}

void ParameterBatchTransferTest::writeWithoutAReplyIsTold()
{
    LoadedEditor loaded;
    loaded.peer.intercept = silent;
    addRow(loaded, QStringLiteral("Pn-007"));
    ModalAnswers boxes;
    boxes.expect(editortext::writeTimeout);
    loaded.editor->writeCsvSlot();
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
    addRow(loaded, QStringLiteral("Pn-007"));
    const ModalAnswers noBox;
    loaded.editor->writeCsvSlot();
    QTRY_COMPARE(loaded.peer.frames.size(), 2);
    QTRY_VERIFY(!progress(loaded)->isVisible());
}

void ParameterBatchTransferTest::coloursOfThePagesStayAfterABatchWrite()
{
    const LoadedEditor loaded;
    loaded.value(0, 7)->setForeground(Qt::red);
    loaded.value(1, 0)->setForeground(Qt::blue);
    addRow(loaded, QStringLiteral("Pn-007"));
    write(loaded);
    QCOMPARE(loaded.value(0, 7)->foreground().color(), QColor(Qt::red));
    QCOMPARE(loaded.value(1, 0)->foreground().color(), QColor(Qt::blue));
}

void ParameterBatchTransferTest::pageWriteAfterAFailedBatchWriteResetsTheColours()
{
    LoadedEditor loaded;
    addRow(loaded, QStringLiteral("Pn-007"));
    loaded.value(0, 7)->setForeground(Qt::red);
    loaded.peer.intercept = silent;
    ModalAnswers boxes;
    boxes.expect(editortext::writeTimeout);
    loaded.editor->writeCsvSlot();
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
            addRow(loaded, page->verticalHeaderItem(row)->text());
            writable += page->item(row, 0)->text().isEmpty();
        }
    }
    QCOMPARE(loaded.batch->table()->rowCount(), 571);
    loaded.batch->setRows(loaded.batch->rows());
    QCOMPARE(loaded.batch->table()->rowCount(), 571);
    read(loaded);
    QCOMPARE(loaded.peer.frames.size(), 571);
    loaded.peer.frames.clear();
    write(loaded);
    QCOMPARE(loaded.peer.frames.size(), 4 * writable);
}

QTEST_MAIN(ParameterBatchTransferTest)
#include "tst_parameterbatch_transfer.moc"
