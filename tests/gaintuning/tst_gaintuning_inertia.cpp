// SPDX-License-Identifier: GPL-3.0-or-later
// Inertia identification: the two modes, the table, and the calculated ratio that is adopted.
#include "gainbench.h"
#include "support/modalanswers.h"

#include <QLocale>

class GainTuningInertiaTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void onlineModeOfTheDriveSwitchesTheWidgets();
    void tableEditIsWritten_data();
    void tableEditIsWritten();
    void tableEditOutOfRangeIsToldAndEmptied();
    void tableEditInNormalFormSendsOneFrame();
    void onlyTheValueColumnCanBeEdited();
    void leavingTheOnlineModeWritesItsZeroOnce();
    void goingOnlineWritesNothing();
    void calculatedRatioIsAdoptedCut_data();
    void calculatedRatioIsAdoptedCut();
    void calculatedRatioIsNotRounded();
    void calculatedRatioOutOfRangeIsRefused();
};

void GainTuningInertiaTest::initTestCase()
{
    // Numbers have a point all the same.
    QLocale::setDefault(QLocale(QLocale::German));
}

void GainTuningInertiaTest::onlineModeOfTheDriveSwitchesTheWidgets()
{
    GainBench bench;
    bench.registers = {{0x22AE, 2}};
    bench.finishInitialRead();
    QVERIFY(bench.find<QRadioButton>("radioButtonOnline")->isChecked());
    QVERIFY(!bench.find<QRadioButton>("radioButtonOffline")->isChecked());
    QCOMPARE(bench.combo("comBoxonline")->currentIndex(), 2);
    QVERIFY(bench.combo("comBoxonline")->isEnabled());
    QVERIFY(!bench.combo("comBoxoffline")->isEnabled());
    QVERIFY(!bench.find<QTableWidget>("tableWidget")->isEnabled());
    QVERIFY(!bench.button("btnCalculatedToCurrent")->isEnabled());
}

void GainTuningInertiaTest::tableEditIsWritten_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("frame");
    QTest::newRow("speed") << 0 << "100" << store(0xE25D, 100);
    QTest::newRow("ramp") << 1 << "800" << store(0xE25E, 800);
    QTest::newRow("stroke") << 2 << "0" << store(0xE25F, 0);
    QTest::newRow("interval") << 3 << "5000" << store(0xE260, 5000);
}

void GainTuningInertiaTest::tableEditIsWritten()
{
    QFETCH(int, row);
    QFETCH(QString, text);
    GainBench bench;
    bench.registers = plainDrive();
    bench.finishInitialRead();
    bench.cell(row)->setText(text);
    QTEST(bench.takeFrames().value(0), "frame");
    QCOMPARE(bench.unanswered.size(), 1);
}

void GainTuningInertiaTest::tableEditOutOfRangeIsToldAndEmptied()
{
    GainBench bench;
    bench.registers = plainDrive();
    bench.finishInitialRead();
    for (const char *text : {"99", "1001", "abc", "100.5"}) {
        ModalAnswers boxes;
        boxes.expect(message("100 ~ 1000"));
        bench.cell(0)->setText(QLatin1String(text));
        QCOMPARE(boxes.seen.size(), 1);
        QCOMPARE(boxes.seen.first().title, QStringLiteral("Maxinum speed"));
        QCOMPARE(boxes.seen.first().icon, QMessageBox::Warning);
        QCOMPARE(bench.cell(0)->text(), QString());
    }
    QVERIFY(bench.frames.isEmpty());
}

void GainTuningInertiaTest::tableEditInNormalFormSendsOneFrame()
{
    GainBench bench;
    bench.registers = plainDrive();
    bench.finishInitialRead();
    bench.cell(0)->setText(QStringLiteral("+0500"));
    QCOMPARE(bench.cell(0)->text(), QStringLiteral("500"));
    QCOMPARE(bench.takeFrames(), QList<QByteArray>{store(0xE25D, 500)});
}

void GainTuningInertiaTest::onlyTheValueColumnCanBeEdited()
{
    GainBench bench;
    bench.registers = plainDrive();
    bench.finishInitialRead();
    bench.window.show();
    auto *const table = bench.find<QTableWidget>("tableWidget");
    QCOMPARE(table->editTriggers(), QAbstractItemView::NoEditTriggers);
    QCOMPARE(table->selectionMode(), QAbstractItemView::SingleSelection);
    QCOMPARE(table->selectionBehavior(), QAbstractItemView::SelectRows);
    for (int column = 3; column >= 0; --column) {
        const QPoint place = table->visualItemRect(table->item(1, column)).center();
        QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, place);
        QTest::mouseDClick(table->viewport(), Qt::LeftButton, {}, place);
        QCOMPARE(table->viewport()->findChildren<QLineEdit *>().size(), column == 3 ? 1 : 0);
        if (column == 3) {
            auto *const editor = table->viewport()->findChild<QLineEdit *>();
            editor->setText(QStringLiteral("250"));
            QTest::keyClick(editor, Qt::Key_Return);
            QTRY_VERIFY(!bench.frames.isEmpty());
            QCOMPARE(bench.takeFrames(), QList<QByteArray>{store(0xE25E, 250)});
            QTRY_VERIFY(!table->viewport()->findChild<QLineEdit *>());
        }
    }
}

void GainTuningInertiaTest::leavingTheOnlineModeWritesItsZeroOnce()
{
    GainBench bench;
    bench.registers = {{0x22AE, 2}};
    bench.finishInitialRead();
    bench.find<QRadioButton>("radioButtonOffline")->click();
    QCOMPARE(bench.takeFrames(), QList<QByteArray>{store(0xE2AE, 0)});
    QCOMPARE(bench.combo("comBoxonline")->currentIndex(), 0);
    QVERIFY(bench.combo("comBoxoffline")->isEnabled());
    QVERIFY(!bench.combo("comBoxonline")->isEnabled());
    QVERIFY(bench.find<QTableWidget>("tableWidget")->isEnabled());
    QVERIFY(bench.button("btnCalculatedToCurrent")->isEnabled());
}

void GainTuningInertiaTest::goingOnlineWritesNothing()
{
    GainBench bench;
    bench.finishInitialRead();
    bench.find<QRadioButton>("radioButtonOnline")->click();
    QVERIFY(bench.frames.isEmpty());
    QVERIFY(bench.combo("comBoxonline")->isEnabled());
    QVERIFY(!bench.combo("comBoxoffline")->isEnabled());
    bench.combo("comBoxonline")->setCurrentIndex(1);
    QCOMPARE(bench.takeFrames(), QList<QByteArray>{store(0xE2AE, 1)});
}

void GainTuningInertiaTest::calculatedRatioIsAdoptedCut_data()
{
    QTest::addColumn<int>("ratio"); // hundredths
    QTest::addColumn<int>("written");
    QTest::addColumn<QString>("shown");
    QTest::newRow("3.27") << 327 << 32 << "3.3";
    QTest::newRow("3.21") << 321 << 32 << "3.2";
    QTest::newRow("1.00") << 100 << 10 << "1.0";
    QTest::newRow("120.00") << 12000 << 1200 << "120.0";
}

void GainTuningInertiaTest::calculatedRatioIsAdoptedCut()
{
    QFETCH(int, ratio);
    QFETCH(int, written);
    QFETCH(QString, shown);
    GainBench bench;
    bench.registers = plainDrive();
    bench.registers[0x2618] = ratio;
    bench.finishInitialRead();
    bench.button("btnCalculatedToCurrent")->click();
    QCOMPARE(bench.takeFrames(), QList<QByteArray>{store(0xE25A, written)});
    QCOMPARE(bench.text("lineEditCurrent"), shown);
    QCOMPARE(bench.text("curInertiaRatio"), shown);
    QCOMPARE(bench.text("setInertiaRatio"), shown);
    QCOMPARE(bench.text("calculated"), QString::number(ratio / 100.0, 'f', 2));
}

void GainTuningInertiaTest::calculatedRatioIsNotRounded()
{
    GainBench bench;
    bench.registers = plainDrive(); // 3.25
    bench.finishInitialRead();
    bench.button("btnCalculatedToCurrent")->click();
    QCOMPARE(bench.takeFrames(), QList<QByteArray>{wire::frame("01 10 E2 5A 00 01 02 00 20")});
}

void GainTuningInertiaTest::calculatedRatioOutOfRangeIsRefused()
{
    GainBench bench;
    bench.registers = plainDrive();
    bench.registers[0x2618] = 99;
    bench.finishInitialRead();
    ModalAnswers boxes;
    boxes.expect(message("1.0 ~ 120.0"));
    bench.button("btnCalculatedToCurrent")->click();
    QCOMPARE(boxes.seen.first().title, QStringLiteral("Calculated"));
    QVERIFY(bench.frames.isEmpty());
    QCOMPARE(bench.text("lineEditCurrent"), QStringLiteral("3.5"));
}

QTEST_MAIN(GainTuningInertiaTest)
#include "tst_gaintuning_inertia.moc"
