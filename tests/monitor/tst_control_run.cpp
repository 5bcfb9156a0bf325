// SPDX-License-Identifier: GPL-3.0-or-later
// The panel of the control method and its parameters: what stands in it, and what each field signals.
#include "controlrunbench.h"

#include <QFormLayout>
#include <QLabel>

namespace {

using Bench = ControlRunBench;

const QStringList lowWidths{"0:600ns(830K)", "1:2.4us(208K)", "2:4.8us(104K)", "3:9.6us(52K)",
                            "4:No filtering"};
const QStringList highWidths{"0:150ns(3.33M)", "1:600ns(0.83M)", "2:1.2us(416K)", "3:2.4us(208K)",
                             "4:No filtering"};

QStringList itemsOf(const QComboBox *combo)
{
    QStringList items;
    for (int i = 0; i < combo->count(); ++i)
        items << combo->itemText(i);
    return items;
}

} // namespace

class ControlRunTest : public QObject
{
    Q_OBJECT

private slots:
    void fieldsStandWithTheirDefaults();
    void boxesHoldTheirItems_data();
    void boxesHoldTheirItems();
    void labelsStandInOrder_data();
    void labelsStandInOrder();
    void methodAndTabFollowEachOther();
    void positionBoxesMakeOneNumber();
    void terminalKeepsTheNumberOfTheWidth();
    void otherBoxesSayWhichTheyAre_data();
    void otherBoxesSayWhichTheyAre();
    void editIsSentOnce_data();
    void editIsSentOnce();
    void textThatIsNoNumberSendsNothing_data();
    void textThatIsNoNumberSendsNothing();
    void untouchedFieldSendsNothing();
    void onlyTheLastFieldTypedInIsSent();
    void lossOfFocusEndsTheEditing();
    void blankBoxSendsNothing();
};

void ControlRunTest::fieldsStandWithTheirDefaults()
{
    const Bench bench;
    QCOMPARE(bench.edits({0, 1, 2, 3, 4, 5, 6, 7, 8, 9}),
             QStringList({"10000", "131072", "10000", "100.0", "", "", "5000.0", "", "3000.0", "3000.0"}));
    const QPushButton *const enable = bench.button("enableButton");
    QVERIFY(enable->isCheckable());
    QCOMPARE(enable->size(), QSize(45, 45));
    QCOMPARE(enable->styleSheet(), QStringLiteral("border-radius:22px;"));
    QVERIFY(!bench.isOn());
    QCOMPARE(bench.button("readButton")->text(), QStringLiteral("Read"));
    QCOMPARE(bench.tabs()->tabText(0), QStringLiteral("Position Mode"));
    QCOMPARE(bench.tabs()->tabText(1), QStringLiteral("Speed Mode"));
    QCOMPARE(bench.tabs()->tabText(2), QStringLiteral("Torque Mode"));
}

void ControlRunTest::boxesHoldTheirItems_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QStringList>("items");
    QTest::newRow("method") << QByteArray("methodComboBox")
                            << QStringList{"0:Position Mode", "1:Speed Mode", "2:Torque Mode"};
    QTest::newRow("position source") << QByteArray("positionSourceComboBox")
                                     << QStringList{"0:Pulse command", "1:Internal number given",
                                                    "2:Internal multi-segment position command"};
    QTest::newRow("pulse shape") << QByteArray("pulseShapeComboBox")
                                 << QStringList{"0:Pulse+Direction", "1:Foward/Reverse pulse",
                                                "2:Orthogonal pulse"};
    QTest::newRow("terminal") << QByteArray("pulseTerminalComboBox")
                              << QStringList{"0:Low speed input terminal", "1:High speed input terminal"};
    QTest::newRow("pulse width") << QByteArray("pulseWidthComboBox") << lowWidths;
    QTest::newRow("speed source") << QByteArray("otherComboBox0")
                                  << QStringList{"0:External analog inout(V_REF)", "1:Internal digtal given",
                                                 "2:Internal multi-speed"};
    QTest::newRow("torque source") << QByteArray("otherComboBox1")
                                   << QStringList{"0:External analog input(T_REF)",
                                                  "1:Internal digital given", "2:Internal multi-torque"};
    QTest::newRow("speed limit source")
        << QByteArray("otherComboBox2")
        << QStringList{"0:Internal positive and negative speed limit", "1:Analog input V_REF for control",
                       "2:Select the first or second speed limit input with DI function"};
}

void ControlRunTest::boxesHoldTheirItems()
{
    QFETCH(QByteArray, name);
    QFETCH(QStringList, items);
    const Bench bench;
    QCOMPARE(itemsOf(bench.combo(name.constData())), items);
    QCOMPARE(bench.combo(name.constData())->currentIndex(), 0);
}

void ControlRunTest::labelsStandInOrder_data()
{
    QTest::addColumn<int>("tab");
    QTest::addColumn<QStringList>("labels");
    QTest::newRow("position") << 0
                              << QStringList{"Source of position command",
                                             "Pulse command shape",
                                             "Pulse command input terminal selection",
                                             "External pulse minimum pulse width",
                                             "Internal position command set value",
                                             "Electronic gear-numerator1",
                                             "Electronic gear-denominator"};
    QTest::newRow("speed") << 1
                           << QStringList{"Source of speed command", "Internal speed command set value",
                                          "Speed command accelerates time", "Speed command decelerates time",
                                          "Maximum speed limit"};
    QTest::newRow("torque") << 2
                            << QStringList{"Source of torque command", "Internal torque command set value",
                                           "Torque mode speed limit source",
                                           "Torque control forward speed limit value",
                                           "Torque control reverse speed limit value"};
}

void ControlRunTest::labelsStandInOrder()
{
    QFETCH(int, tab);
    QFETCH(QStringList, labels);
    const Bench bench;
    const auto *const form = qobject_cast<QFormLayout *>(bench.tabs()->widget(tab)->layout());
    QStringList found;
    for (int row = 0; row < form->rowCount(); ++row)
        found << qobject_cast<QLabel *>(form->itemAt(row, QFormLayout::LabelRole)->widget())->text();
    QCOMPARE(found, labels);
}

void ControlRunTest::methodAndTabFollowEachOther()
{
    Bench bench;
    bench.combo("methodComboBox")->setCurrentIndex(2);
    QCOMPARE(bench.tabs()->currentIndex(), 2);
    QCOMPARE(bench.said, QStringList("method 2"));
    bench.tabs()->setCurrentIndex(1);
    QCOMPARE(bench.combo("methodComboBox")->currentIndex(), 1);
    QCOMPARE(bench.said, QStringList({"method 2", "method 1"}));
}

void ControlRunTest::positionBoxesMakeOneNumber()
{
    Bench bench;
    bench.combo("positionSourceComboBox")->setCurrentIndex(1);
    bench.combo("pulseShapeComboBox")->setCurrentIndex(2);
    bench.combo("pulseTerminalComboBox")->setCurrentIndex(1);
    bench.combo("pulseWidthComboBox")->setCurrentIndex(4);
    bench.combo("positionSourceComboBox")->setCurrentIndex(0);
    QCOMPARE(bench.said, QStringList({"Pn300 1", "Pn300 21", "Pn300 121", "Pn300 4121", "Pn300 4120"}));
}

void ControlRunTest::terminalKeepsTheNumberOfTheWidth()
{
    Bench bench;
    QComboBox *const width = bench.combo("pulseWidthComboBox");
    width->setCurrentIndex(3);
    bench.said.clear();
    bench.combo("pulseTerminalComboBox")->setCurrentIndex(1);
    QCOMPARE(itemsOf(width), highWidths);
    QCOMPARE(width->currentIndex(), 3);
    QCOMPARE(bench.said, QStringList("Pn300 3100"));
    bench.combo("pulseTerminalComboBox")->setCurrentIndex(0);
    QCOMPARE(itemsOf(width), lowWidths);
    QCOMPARE(width->currentText(), QStringLiteral("3:9.6us(52K)"));
}

void ControlRunTest::otherBoxesSayWhichTheyAre_data()
{
    QTest::addColumn<int>("index");
    QTest::newRow("speed source") << 0;
    QTest::newRow("torque source") << 1;
    QTest::newRow("speed limit source") << 2;
}

void ControlRunTest::otherBoxesSayWhichTheyAre()
{
    QFETCH(int, index);
    Bench bench;
    bench.combo(qPrintable(QStringLiteral("otherComboBox%1").arg(index)))->setCurrentIndex(2);
    QCOMPARE(bench.said, QStringList(QStringLiteral("combo %1 2").arg(index)));
}

void ControlRunTest::editIsSentOnce_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("said");
    const auto row = [](const char *name, int index, const char *text, const char *said) {
        QTest::newRow(name) << index << QString::fromLatin1(text) << QString::fromLatin1(said);
    };
    row("position", 0, "-123456", "edit 0 -123456");
    row("position with a fraction is cut", 0, "12.9", "edit 0 12");
    row("position in the general format", 0, "1.5e+06", "edit 0 1500000");
    row("numerator", 1, "65536", "edit 1 65536");
    row("denominator", 2, "-5", "edit 2 -5");
    row("speed 100.5", 3, "100.5", "edit 3 1005");
    row("speed -100.0 without a rounding term", 3, "-100.0", "edit 3 -1000");
    row("speed 0", 3, "0", "edit 3 0");
    row("speed rounded up", 3, "0.05", "edit 3 1");
    row("negative speed is cut", 3, "-0.19", "edit 3 -1");
    row("speed beyond 32 bits", 3, "1e20", "edit 3 2147483647");
    row("acceleration", 4, "200", "edit 4 200");
    row("deceleration", 5, "300", "edit 5 300");
    row("maximum speed", 6, "4999.9", "edit 6 49999");
    row("torque", 7, "-50", "edit 7 -50");
    row("torque with a fraction is cut", 7, "-50.9", "edit 7 -50");
    row("forward limit", 8, "1234.5", "edit 8 12345");
    row("reverse limit", 9, "1.0", "edit 9 10");
}

void ControlRunTest::editIsSentOnce()
{
    QFETCH(int, index);
    QFETCH(QString, text);
    QFETCH(QString, said);
    Bench bench;
    bench.type(index, text);
    QCOMPARE(bench.said, QStringList(said));
    // The editing has ended: a second Return has nothing new to say.
    QTest::keyClick(bench.edit(index), Qt::Key_Return);
    QCOMPARE(bench.said.size(), 1);
}

void ControlRunTest::textThatIsNoNumberSendsNothing_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("text");
    for (int index = 0; index < 10; ++index) {
        QTest::addRow("field %d empty", index) << index << QString();
        QTest::addRow("field %d with letters", index) << index << QStringLiteral("12x");
        QTest::addRow("field %d with a minus alone", index) << index << QStringLiteral("-");
        QTest::addRow("field %d infinite", index) << index << QStringLiteral("inf");
        QTest::addRow("field %d not a number", index) << index << QStringLiteral("nan");
    }
    for (const int index : {1, 2, 4, 5})
        QTest::addRow("field %d with a fraction", index) << index << QStringLiteral("1.5");
}

void ControlRunTest::textThatIsNoNumberSendsNothing()
{
    QFETCH(int, index);
    QFETCH(QString, text);
    Bench bench;
    bench.edit(index)->setText(QStringLiteral("7"));
    bench.type(index, text);
    QVERIFY2(bench.said.isEmpty(), qPrintable(bench.said.join(QLatin1Char(','))));
}

void ControlRunTest::untouchedFieldSendsNothing()
{
    Bench bench;
    for (int index = 0; index < 10; ++index)
        QTest::keyClick(bench.edit(index), Qt::Key_Return);
    QVERIFY(bench.said.isEmpty());
}

void ControlRunTest::onlyTheLastFieldTypedInIsSent()
{
    Bench bench;
    bench.edit(1)->setText(QStringLiteral("5"));
    bench.edit(2)->setText(QStringLiteral("6"));
    QTest::keyClick(bench.edit(1), Qt::Key_Return);
    QTest::keyClick(bench.edit(2), Qt::Key_Return);
    QCOMPARE(bench.said, QStringList("edit 2 6"));
}

void ControlRunTest::lossOfFocusEndsTheEditing()
{
    Bench bench;
    bench.panel.show();
    bench.panel.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&bench.panel));
    bench.edit(1)->setFocus();
    bench.edit(1)->selectAll();
    QTest::keyClicks(bench.edit(1), QStringLiteral("77"));
    bench.edit(2)->setFocus();
    QCOMPARE(bench.said, QStringList("edit 1 77"));
}

void ControlRunTest::blankBoxSendsNothing()
{
    Bench bench;
    bench.panel.handleReadFinishSlot(0, {"0900", "00000000", "00000000", "00000000"});
    // One of the four digits is not known: the word can't be told.
    bench.combo("positionSourceComboBox")->setCurrentIndex(1);
    QVERIFY(bench.said.isEmpty());
    bench.combo("pulseTerminalComboBox")->setCurrentIndex(1);
    QCOMPARE(bench.said, QStringList("Pn300 101"));
    bench.said.clear();
    bench.combo("otherComboBox0")->setCurrentIndex(-1);
    bench.combo("methodComboBox")->setCurrentIndex(-1);
    QVERIFY(bench.said.isEmpty());
}

QTEST_MAIN(ControlRunTest)

#include "tst_control_run.moc"
