// SPDX-License-Identifier: GPL-3.0-or-later
#include "parameter/loadededitor.h"
#include "support/batchtexts.h"
#include "support/wire.h"

#include <QLineEdit>

class ParameterBatchFillTest : public QObject
{
    Q_OBJECT

private slots:
    void newRowIsFilledAtOnce();
    void codeFillsTheRowFromItsPage_data();
    void codeFillsTheRowFromItsPage();
    void filledCellsAreCentredAndMarksHaveFontAndColour();
    void codeOfNoPageGivesF_data();
    void codeOfNoPageGivesF();
    void presentValueOfThePageIsTaken();
    void codeIsSpeltAsOnThePage_data();
    void codeIsSpeltAsOnThePage();
    void doubleClickTurnsEditingOnOrOff_data();
    void doubleClickTurnsEditingOnOrOff();
    void typedCodeFillsTheRow();
    void typedCodeIsTransferredInItsWidth_data();
    void typedCodeIsTransferredInItsWidth();
    void typedValueStaysAndFillsNothing();
    void onlyOneChangeIsHeardAfterADoubleClick();
    void changeSlotFillsARowByItsCodeOnly();
    void doubleClicksMakeOneLink();
    void otherColumnsAreNotOpenedByTheTabulator();
    void valueBeingTypedIsTakenByATool();
};

void ParameterBatchFillTest::newRowIsFilledAtOnce()
{
    const LoadedEditor loaded;
    loaded.list().trigger(BatchDriver::NewRowTool);
    QCOMPARE(loaded.list().texts(0, BatchDriver::ReadOnly, BatchDriver::Description),
             (QStringList{QString::fromUtf8("★"), "", "", "", "", "", "", "", "", "", "CPU VERSION"}));
}

void ParameterBatchFillTest::codeFillsTheRowFromItsPage_data()
{
    QTest::addColumn<QString>("code");
    QTest::addColumn<int>("page");
    QTest::addColumn<QString>("pageCode");
    QTest::newRow("first") << "Pn-000" << 0 << "Pn-000";
    QTest::newRow("tenths") << "Pn-007" << 0 << "Pn-007";
    QTest::newRow("hexadecimal") << "Pn-300" << 3 << "Pn-300";
    QTest::newRow("pair") << "Pn-401" << 4 << "Pn-401";
    QTest::newRow("code that stands twice") << "Pn-606" << 6 << "Pn-606";
    QTest::newRow("page of a letter") << "Pn-A04" << 10 << "Pn-A04";
    QTest::newRow("small letter") << "Pn-b06" << 11 << "Pn-B06";
    QTest::newRow("last") << "Pn-B95" << 11 << "Pn-B95";
    // The row Pn-0329 of the page has this number too, and stands before it.
    QTest::newRow("number of a mistyped code") << "Pn-332" << 3 << "Pn-332";
    QTest::newRow("another prefix") << "xxx401" << 4 << "Pn-401";
}

void ParameterBatchFillTest::codeFillsTheRowFromItsPage()
{
    QFETCH(QString, code);
    QFETCH(int, page);
    QFETCH(QString, pageCode);
    const LoadedEditor loaded;
    loaded.list().trigger(BatchDriver::NewRowTool);
    loaded.list().setCode(0, QStringLiteral("none"));
    loaded.list().setCode(0, code);
    const int row = loaded.rowOf(page, pageCode);
    QVERIFY(row >= 0);
    QStringList wanted;
    for (int column = 0; column < 11; ++column)
        wanted.append(loaded.pages.at(page)->item(row, column)->text());
    QCOMPARE(loaded.list().texts(0, BatchDriver::ReadOnly, BatchDriver::Description), wanted);
    if (code == QLatin1String("Pn-401"))
        QCOMPARE(loaded.list().texts(0, BatchDriver::ReadOnly, BatchDriver::Description),
                 (QStringList{"", "", "", "", "", "100.0", "0.1rpm", "-6000.0", "6000.0", "100.0",
                              "Internal speed command setting"}));
}

void ParameterBatchFillTest::filledCellsAreCentredAndMarksHaveFontAndColour()
{
    const LoadedEditor loaded;
    const QTableWidget *const table = loaded.batch->table();
    loaded.list().trigger(BatchDriver::NewRowTool);
    loaded.list().setCode(0, QStringLiteral("Pn-004"));
    QCOMPARE(loaded.list().texts(0, 1, 5), (QStringList{"", QString::fromUtf8("■"), "", "", "H"}));
    for (int column = 1; column <= 12; ++column)
        QCOMPARE(Qt::Alignment(table->item(0, column)->textAlignment()), Qt::AlignCenter);
    QCOMPARE(table->item(0, 2)->foreground().color(), QColor(0, 0, 255));
    QCOMPARE(table->item(0, 2)->font().family(), QStringLiteral("Helvetica"));
    QCOMPARE(table->item(0, 2)->font().pointSize(), 17);
    QCOMPARE(table->item(0, 5)->foreground().color(), QColor(188, 0, 243));
    QCOMPARE(table->item(0, 5)->font().family(), QStringLiteral("Tahoma"));
    QCOMPARE(table->item(0, 5)->font().pointSize(), 15);
}

void ParameterBatchFillTest::codeOfNoPageGivesF_data()
{
    QTest::addColumn<QString>("code");
    QTest::newRow("second of a pair") << "Pn-A05";
    QTest::newRow("beyond the last row") << "Pn-199";
    QTest::newRow("before the last row") << "Pn-B07";
    QTest::newRow("group without a page") << "Pn-C00";
    QTest::newRow("last group") << "Pn-F07";
    QTest::newRow("group that is no digit") << "Pn-G00";
    QTest::newRow("number that is none") << "Pn-1x1";
    QTest::newRow("number with a sign") << "Pn-0-7";
    QTest::newRow("too short") << "Pn-1";
    QTest::newRow("empty") << "";
    QTest::newRow("digits of another script") << QString::fromUtf8("Pn-1١١");
}

void ParameterBatchFillTest::codeOfNoPageGivesF()
{
    QFETCH(QString, code);
    const LoadedEditor loaded;
    loaded.list().trigger(BatchDriver::NewRowTool);
    loaded.list().setCode(0, code);
    QStringList wanted;
    for (int i = 0; i < 11; ++i)
        wanted.append(batchtext::unknown);
    QCOMPARE(loaded.list().texts(0, BatchDriver::ReadOnly, BatchDriver::Description), wanted);
    for (int column = 1; column <= 11; ++column)
        QCOMPARE(Qt::Alignment(loaded.batch->table()->item(0, column)->textAlignment()), Qt::AlignCenter);
    QCOMPARE(loaded.list().text(0, 12), batchtext::notRead);
}

void ParameterBatchFillTest::presentValueOfThePageIsTaken()
{
    const LoadedEditor loaded;
    loaded.value(0, loaded.rowOf(0, QStringLiteral("Pn-007")))->setText(QStringLiteral("321.0"));
    loaded.list().trigger(BatchDriver::NewRowTool);
    loaded.list().setCode(0, QStringLiteral("Pn-007"));
    QCOMPARE(loaded.list().text(0, 6), QStringLiteral("321.0"));
    QCOMPARE(loaded.list().text(0, 10), QStringLiteral("200.0"));
}

void ParameterBatchFillTest::codeIsSpeltAsOnThePage_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("code");
    QTest::newRow("as it is") << "Pn-A04"
                              << "Pn-A04";
    QTest::newRow("small letters") << "pn-a04"
                                   << "Pn-A04";
    QTest::newRow("blank behind") << "Pn-A04 "
                                  << "Pn-A04";
    QTest::newRow("second code behind") << "Pn-A04~Pn-A05"
                                        << "Pn-A04";
    QTest::newRow("another prefix") << "xx-A04"
                                    << "Pn-A04";
    QTest::newRow("one digit") << "Pn-08"
                               << "Pn-008";
    QTest::newRow("one digit, zero") << "Pn-10"
                                     << "Pn-100";
    QTest::newRow("blanks around") << " Pn-08 "
                                   << "Pn-008";
    QTest::newRow("no page") << "pn-c00"
                             << "pn-c00";
    QTest::newRow("no page, blanks around") << " pn-c00 "
                                            << "pn-c00";
}

void ParameterBatchFillTest::codeIsSpeltAsOnThePage()
{
    QFETCH(QString, typed);
    QFETCH(QString, code);
    const LoadedEditor loaded;
    loaded.list().trigger(BatchDriver::NewRowTool);
    loaded.list().setCode(0, typed);
    QCOMPARE(loaded.list().text(0, 0), code);
}

void ParameterBatchFillTest::doubleClickTurnsEditingOnOrOff_data()
{
    QTest::addColumn<int>("column");
    QTest::addColumn<bool>("edits");
    for (int column = 0; column < 13; ++column)
        QTest::addRow("column %d", column) << column << (column == 0 || column == 6);
}

void ParameterBatchFillTest::doubleClickTurnsEditingOnOrOff()
{
    QFETCH(int, column);
    QFETCH(bool, edits);
    const LoadedEditor loaded;
    loaded.editor->editParaSlot();
    loaded.list().trigger(BatchDriver::NewRowTool);
    QTableWidget *const table = loaded.batch->table();
    // From the other state each time.
    loaded.list().beginEditing(0, edits ? 1 : 0);
    loaded.list().doubleClick(0, column);
    QCOMPARE(table->editTriggers() != QAbstractItemView::NoEditTriggers, edits);
    QCOMPARE(loaded.list().openEditor() != nullptr, edits);
}

void ParameterBatchFillTest::typedCodeFillsTheRow()
{
    const LoadedEditor loaded;
    loaded.editor->editParaSlot();
    loaded.list().trigger(BatchDriver::NewRowTool);
    QVERIFY(loaded.list().type(0, 0, QStringLiteral("Pn-401")));
    QCOMPARE(loaded.list().text(0, 0), QStringLiteral("Pn-401"));
    QVERIFY(loaded.list().isTicked(0));
    QCOMPARE(loaded.list().text(0, 6), QStringLiteral("100.0"));
    QCOMPARE(loaded.list().text(0, 11), QStringLiteral("Internal speed command setting"));
}

void ParameterBatchFillTest::typedCodeIsTransferredInItsWidth_data()
{
    QTest::addColumn<QString>("typed");
    QTest::newRow("as it is") << "Pn-A04";
    QTest::newRow("small letters") << "pn-a04";
    QTest::newRow("another prefix") << "xx-A04";
    QTest::newRow("blank behind") << "Pn-A04 ";
}

void ParameterBatchFillTest::typedCodeIsTransferredInItsWidth()
{
    QFETCH(QString, typed);
    LoadedEditor loaded;
    loaded.editor->editParaSlot();
    loaded.list().trigger(BatchDriver::NewRowTool);
    QVERIFY(loaded.list().type(0, 0, typed));
    QVERIFY(loaded.list().type(0, 6, QStringLiteral("65541")));
    QVERIFY(loaded.list().write());
    const QByteArray readFrame = wire::frame("01 03 23 ec 00 02");
    QCOMPARE(loaded.peer.frames, (QList<QByteArray>{wire::frame("01 10 e3 ec 00 02 04 00 01 00 05"),
                                                    readFrame, readFrame, readFrame}));
    loaded.peer.frames.clear();
    QVERIFY(loaded.list().read());
    QCOMPARE(loaded.peer.frames, QList<QByteArray>{readFrame});
    QCOMPARE(loaded.list().text(0, 12), QStringLiteral("65541"));
}

void ParameterBatchFillTest::typedValueStaysAndFillsNothing()
{
    const LoadedEditor loaded;
    loaded.editor->editParaSlot();
    loaded.list().trigger(BatchDriver::NewRowTool);
    loaded.list().setCode(0, QStringLiteral("Pn-401"));
    const QStringList before = loaded.list().texts(0, 7, 12);
    QVERIFY(loaded.list().type(0, 6, QStringLiteral("12.5")));
    QCOMPARE(loaded.list().text(0, 6), QStringLiteral("12.5"));
    QCOMPARE(loaded.list().texts(0, 7, 12), before);
}

void ParameterBatchFillTest::onlyOneChangeIsHeardAfterADoubleClick()
{
    const LoadedEditor loaded;
    loaded.list().trigger(BatchDriver::NewRowTool);
    QTableWidget *const table = loaded.batch->table();
    table->item(0, 0)->setText(QStringLiteral("Pn-007"));
    QCOMPARE(table->item(0, 11)->text(), QStringLiteral("CPU VERSION"));
    loaded.editor->Csv_DoubleClickedSlot(0, 6);
    table->item(0, 6)->setText(QStringLiteral("5"));
    table->item(0, 0)->setText(QStringLiteral("Pn-401"));
    QCOMPARE(table->item(0, 11)->text(), QStringLiteral("CPU VERSION"));
    loaded.editor->Csv_DoubleClickedSlot(0, 3);
    table->item(0, 0)->setText(QStringLiteral("Pn-007"));
    QCOMPARE(table->item(0, 11)->text(), QStringLiteral("JOG speed value"));
}

void ParameterBatchFillTest::changeSlotFillsARowByItsCodeOnly()
{
    const LoadedEditor loaded;
    loaded.list().trigger(BatchDriver::NewRowTool);
    loaded.list().setText(0, BatchDriver::Code, QStringLiteral("Pn-007"));
    loaded.editor->Csv_ValueChangedSlot(0, BatchDriver::Value);
    QCOMPARE(loaded.list().text(0, BatchDriver::Description), QStringLiteral("CPU VERSION"));
    loaded.editor->Csv_ValueChangedSlot(0, BatchDriver::Code);
    QCOMPARE(loaded.list().text(0, BatchDriver::Description), QStringLiteral("JOG speed value"));
}

void ParameterBatchFillTest::doubleClicksMakeOneLink()
{
    const LoadedEditor loaded;
    loaded.list().trigger(BatchDriver::NewRowTool);
    QTableWidget *const table = loaded.batch->table();
    for (int i = 0; i < 3; ++i)
        loaded.list().beginEditing(0, 0);
    // The first change takes the one link away; a second one would fill the row.
    table->item(0, 6)->setText(QStringLiteral("5"));
    table->item(0, 0)->setText(QStringLiteral("Pn-007"));
    QCOMPARE(table->item(0, 11)->text(), QStringLiteral("CPU VERSION"));
}

void ParameterBatchFillTest::otherColumnsAreNotOpenedByTheTabulator()
{
    const LoadedEditor loaded;
    loaded.editor->editParaSlot();
    loaded.list().trigger(BatchDriver::NewRowTool);
    QTableWidget *const table = loaded.batch->table();
    loaded.list().doubleClick(0, 6);
    QLineEdit *const editor = loaded.list().openEditor();
    QVERIFY(editor);
    QTest::keyClicks(editor, QStringLiteral("7"));
    QTest::keyClick(editor, Qt::Key_Tab);
    QTRY_VERIFY(!loaded.list().openEditor());
    QCOMPARE(table->item(0, 6)->text(), QStringLiteral("7"));
}

void ParameterBatchFillTest::valueBeingTypedIsTakenByATool()
{
    const LoadedEditor loaded;
    loaded.editor->editParaSlot();
    loaded.list().trigger(BatchDriver::NewRowTool);
    QVERIFY(QTest::qWaitForWindowActive(loaded.batch));
    QTableWidget *const table = loaded.batch->table();
    loaded.list().doubleClick(0, 6);
    QLineEdit *const editor = loaded.list().openEditor();
    QVERIFY(editor);
    QTest::keyClicks(editor, QStringLiteral("7"));
    loaded.list().click(BatchDriver::UntickAllTool);
    QVERIFY(!loaded.list().isTicked(0));
    QCOMPARE(table->item(0, 6)->text(), QStringLiteral("7"));
}

QTEST_MAIN(ParameterBatchFillTest)
#include "tst_parameterbatch_fill.moc"
