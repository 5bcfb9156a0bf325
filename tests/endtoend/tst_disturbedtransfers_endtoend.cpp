// SPDX-License-Identifier: GPL-3.0-or-later
// Transfers of the parameter editor on a line that delays, cuts, spoils and loses replies: every shown value
// and every register is what it must be.
#include "parameter/parametereditor.h"
#include "parameter/parametertable.h"
#include "support/batchdriver.h"
#include "support/editordriver.h"
#include "support/modalanswers.h"
#include "support/rununtil.h"
#include "support/workplace.h"

#include <QApplication>
#include <QProgressDialog>
#include <QTableWidget>
#include <QTest>

#include <functional>

namespace {

const QString readingDone = QStringLiteral("Parameters reading completed");
const QString rs485 = QStringLiteral("115200(485)");
const QString slowRs485 = QStringLiteral("9600(485)");
const QString usb = QStringLiteral("USB");

// The text of every Value cell, each with its code.
QStringList cellsOf(const ParameterEditor *editor)
{
    QStringList cells;
    for (int index = 0; index < 12; ++index) {
        const ParameterTable *const page = EditorDriver(editor).page(index);
        for (int row = 0; row < page->rowCount(); ++row)
            cells.append(page->code(row) + QLatin1Char(' ') + page->text(row, ParameterTable::ValueColumn));
    }
    return cells;
}

void emptyCells(const ParameterEditor *editor)
{
    for (int index = 0; index < 12; ++index) {
        const ParameterTable *const page = EditorDriver(editor).page(index);
        for (int row = 0; row < page->rowCount(); ++row)
            page->item(row, ParameterTable::ValueColumn)->setText(QStringLiteral("unread"));
    }
}

// The entries that differ, as text.
QString differences(const QStringList &actual, const QStringList &expected)
{
    QStringList list;
    for (int i = 0; i < qMax(actual.size(), expected.size()); ++i) {
        if (actual.value(i) != expected.value(i))
            list.append(actual.value(i) + QLatin1String(" for ") + expected.value(i));
    }
    return list.join(QLatin1String("; "));
}

// The registers of the parameter groups, both copies.
QStringList registersOf(kt500sim::SimulatedDrive *drive)
{
    const kt500sim::RegisterSnapshot registers = drive->registers();
    QStringList list;
    for (std::size_t i = 0; i < 1200; ++i)
        list.append(QStringLiteral("%1: %2, %3").arg(i).arg(registers.working[i]).arg(registers.stored[i]));
    return list;
}

bool isReading(const ParameterEditor *editor, int from)
{
    const QProgressDialog *const progress = EditorDriver(editor).progress();
    return progress->isVisible() && progress->value() >= from;
}

QStringList realValuesOf(const BatchDriver &list)
{
    QStringList values;
    for (int row = 0; row < list.rowCount(); ++row)
        values.append(list.text(row, BatchDriver::Code) + QLatin1Char(' ') +
                      list.text(row, BatchDriver::Real));
    return values;
}

} // namespace

class DisturbedTransfersEndToEndTest : public QObject
{
    Q_OBJECT

private slots:
    void passingFaultLeavesTheReadWhole_data();
    void passingFaultLeavesTheReadWhole();
    void passingFaultLeavesTheWriteWhole_data();
    void passingFaultLeavesTheWriteWhole();
    void passingFaultLeavesSingleReadsRight_data();
    void passingFaultLeavesSingleReadsRight();
    void passingFaultLeavesTheBatchReadWhole_data();
    void passingFaultLeavesTheBatchReadWhole();
};

void DisturbedTransfersEndToEndTest::passingFaultLeavesTheReadWhole_data()
{
    QTest::addColumn<QString>("fault");
    QTest::addColumn<QString>("speed");
    QTest::newRow("replies lost") << "noreply 3" << rs485;
    QTest::newRow("bad checksums") << "badcrc 5" << rs485;
    QTest::newRow("replies in two pieces") << "split 4 5" << rs485;
    QTest::newRow("stale bytes in front") << "stale 3" << rs485;
    QTest::newRow("replies in three pieces") << "splinter 3 7" << rs485;
    QTest::newRow("late reply") << "late 1 70" << rs485;
    QTest::newRow("very late reply") << "late 1 400" << rs485;
    QTest::newRow("several late replies") << "late 3 60" << rs485;
    QTest::newRow("silent for a while") << "silence 300" << rs485;
    QTest::newRow("late reply, 9600") << "late 1 120" << slowRs485;
    QTest::newRow("replies in two pieces, 9600") << "split 4 5" << slowRs485;
    // At "USB" the link is given up after 70 ms of silence, or 20 after a bad chunk.
    QTest::newRow("late reply, USB") << "late 1 55" << usb;
    QTest::newRow("replies in two pieces, USB") << "split 4 1" << usb;
    QTest::newRow("bad checksums, USB") << "badcrc 5" << usb;
}

void DisturbedTransfersEndToEndTest::passingFaultLeavesTheReadWhole()
{
    QFETCH(QString, fault);
    QFETCH(QString, speed);
    ModalAnswers boxes;
    Workplace place;
    place.drive->freeze();
    // No value is another register's, so that none can stand in the place of another unnoticed.
    for (int offset = 0; offset < 1200; ++offset)
        place.drive->writeRegister(offset, quint16(3 * offset + 1));
    const ParameterEditor *const editor = EditorDriver::openConnected(&place, speed);
    QVERIFY(editor);
    const auto readAll = [&boxes, editor](const std::function<void()> &meanwhile) {
        emptyCells(editor);
        boxes.expect(readingDone);
        Workplace::clickAction(editor, "readAction");
        QVERIFY(runUntil([editor] { return isReading(editor, 100); }, 10000));
        meanwhile();
        QVERIFY(runUntil([&boxes] { return boxes.isDone(); }, 60000));
    };
    readAll([] {});
    const QStringList undisturbed = cellsOf(editor);
    QCOMPARE(EditorDriver(editor).value(0, QStringLiteral("Pn-007")), QStringLiteral("2.2"));
    readAll([&place, fault] { QVERIFY(place.drive->setFault(fault)); });
    const QString wrong = differences(cellsOf(editor), undisturbed);
    QVERIFY2(wrong.isEmpty(), qPrintable(wrong));
    QVERIFY(place.drive->counters().retransmissions > 0);
    QVERIFY(place.isShownOnline());
}

void DisturbedTransfersEndToEndTest::passingFaultLeavesTheWriteWhole_data()
{
    QTest::addColumn<QString>("fault");
    QTest::addColumn<QString>("speed");
    QTest::newRow("replies in two pieces") << "split 3 5" << rs485;
    QTest::newRow("late reply") << "late 1 70" << rs485;
    QTest::newRow("very late reply") << "late 1 400" << rs485;
    QTest::newRow("bad checksums and a lost reply") << "badcrc 3;noreply 1" << rs485;
    QTest::newRow("replies in two pieces, 9600") << "split 3 5" << slowRs485;
    QTest::newRow("late reply, USB") << "late 1 55" << usb;
}

void DisturbedTransfersEndToEndTest::passingFaultLeavesTheWriteWhole()
{
    QFETCH(QString, fault);
    QFETCH(QString, speed);
    ModalAnswers boxes;
    // The English catalogue reads ten pairs by their first word alone.
    Workplace place(QStringLiteral("zh_CN"));
    place.drive->freeze();
    const ParameterEditor *const editor = EditorDriver::openConnected(&place, speed);
    QVERIFY(editor);
    // What the drive comes with is shown first, then written back: neither cells nor registers change.
    boxes.expect(QStringLiteral("参数读取完成"));
    Workplace::clickAction(editor, "readAction");
    QVERIFY(runUntil([&boxes] { return boxes.isDone(); }, 60000));
    EditorDriver(editor).setValue(0, QStringLiteral("Pn-007"), QStringLiteral("321.5"));
    place.drive->writeRegister(7, 3215, kt500sim::RegisterCopy::Stored);
    const QStringList cells = cellsOf(editor);
    const QStringList registers = registersOf(place.drive.get());
    place.drive->writeRegister(7, 1, kt500sim::RegisterCopy::Stored);
    boxes.expect(QStringLiteral("参数写入完成"));
    Workplace::clickAction(editor, "writeAction");
    QVERIFY(runUntil([editor] { return isReading(editor, 40); }, 20000));
    const QStringList faults = fault.split(QLatin1Char(';'));
    for (const QString &one : faults)
        QVERIFY(place.drive->setFault(one));
    QVERIFY(runUntil([&boxes] { return boxes.isDone(); }, 60000));
    const QString wrongCells = differences(cellsOf(editor), cells);
    QVERIFY2(wrongCells.isEmpty(), qPrintable(wrongCells));
    const QString wrongRegisters = differences(registersOf(place.drive.get()), registers);
    QVERIFY2(wrongRegisters.isEmpty(), qPrintable(wrongRegisters));
    QVERIFY(place.drive->counters().retransmissions > 0);
}

void DisturbedTransfersEndToEndTest::passingFaultLeavesSingleReadsRight_data()
{
    QTest::addColumn<QString>("fault");
    QTest::addColumn<QString>("speed");
    for (const QString &speed : {rs485, slowRs485, usb}) {
        for (const char *fault : {"late 1 55", "split 1 1", "splinter 1 3", "badcrc 1", "noreply 1"})
            QTest::newRow(qPrintable(QLatin1String(fault) + QLatin1String(", ") + speed)) << fault << speed;
    }
    QTest::newRow("late 1 200") << "late 1 200" << rs485;
}

void DisturbedTransfersEndToEndTest::passingFaultLeavesSingleReadsRight()
{
    QFETCH(QString, fault);
    QFETCH(QString, speed);
    ModalAnswers boxes;
    Workplace place;
    place.drive->freeze();
    ParameterEditor *const editor = EditorDriver::openConnected(&place, speed);
    QVERIFY(editor);
    place.drive->writeRegister(7, 4321);
    place.drive->writeRegister(8, 777);
    place.drive->writeRegister(9, 123);
    QVERIFY(place.drive->setFault(fault));
    // Each is asked when the one before is shown.
    editor->readCurrentParameter({QStringLiteral("Pn-007")});
    QTRY_COMPARE(EditorDriver(editor).value(0, QStringLiteral("Pn-007")), QStringLiteral("432.1"));
    editor->readCurrentParameter({QStringLiteral("Pn-008")});
    QTRY_COMPARE(EditorDriver(editor).value(0, QStringLiteral("Pn-008")), QStringLiteral("777"));
    editor->readCurrentParameter({QStringLiteral("Pn-009")});
    QTRY_COMPARE(EditorDriver(editor).value(0, QStringLiteral("Pn-009")), QStringLiteral("123"));
    QCOMPARE(EditorDriver(editor).value(0, QStringLiteral("Pn-007")), QStringLiteral("432.1"));
    QCOMPARE(EditorDriver(editor).value(0, QStringLiteral("Pn-008")), QStringLiteral("777"));
}

void DisturbedTransfersEndToEndTest::passingFaultLeavesTheBatchReadWhole_data()
{
    QTest::addColumn<QString>("fault");
    QTest::addColumn<QString>("speed");
    QTest::newRow("replies in two pieces") << "split 2 1" << rs485;
    QTest::newRow("late reply") << "late 1 70" << rs485;
    QTest::newRow("very late reply") << "late 1 400" << rs485;
    QTest::newRow("bad checksum") << "badcrc 1" << rs485;
    QTest::newRow("replies in two pieces, 9600") << "split 2 1" << slowRs485;
    QTest::newRow("late reply, 9600") << "late 1 120" << slowRs485;
    QTest::newRow("replies in two pieces, USB") << "split 2 1" << usb;
    QTest::newRow("late reply, USB") << "late 1 55" << usb;
}

void DisturbedTransfersEndToEndTest::passingFaultLeavesTheBatchReadWhole()
{
    QFETCH(QString, fault);
    QFETCH(QString, speed);
    ModalAnswers boxes;
    Workplace place;
    place.drive->freeze();
    ParameterEditor *const editor = EditorDriver::openConnected(&place, speed);
    QVERIFY(editor);
    const BatchDriver list(BatchDriver::find());
    QVERIFY(list.window());
    for (int number = 0; number < 30; ++number) {
        const QString code = QStringLiteral("Pn-1%1").arg(number, 2, 10, QLatin1Char('0'));
        place.drive->writeRegister(100 + number, quint16(3 * number + 1));
        list.addRow(code);
    }
    const auto readAll = [&boxes, &list] {
        boxes.expect(readingDone);
        list.trigger(BatchDriver::ReadTool);
        QVERIFY(runUntil([&boxes] { return boxes.isDone(); }, 20000));
    };
    readAll();
    const QStringList undisturbed = realValuesOf(list);
    for (int row = 0; row < list.rowCount(); ++row)
        list.setText(row, BatchDriver::Real, QStringLiteral("unread"));
    QVERIFY(place.drive->setFault(fault));
    readAll();
    const QString wrong = differences(realValuesOf(list), undisturbed);
    QVERIFY2(wrong.isEmpty(), qPrintable(wrong));
    QVERIFY(place.drive->counters().disturbedReplies > 0);
}

QTEST_MAIN(DisturbedTransfersEndToEndTest)
#include "tst_disturbedtransfers_endtoend.moc"
