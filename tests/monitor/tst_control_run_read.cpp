// SPDX-License-Identifier: GPL-3.0-or-later
// The panel of the control method: how a read of the drive is shown, and the button that enables the servo.
#include "controlrunbench.h"
#include "support/modalanswers.h"

namespace {

using Bench = ControlRunBench;

} // namespace

class ControlRunReadTest : public QObject
{
    Q_OBJECT

private slots:
    void readIsAskedOnce();
    void readFillsTheFields_data();
    void readFillsTheFields();
    void readShowsThePositionBoxes_data();
    void readShowsThePositionBoxes();
    void readWritesNothingBack();
    void readEndsWhatWasBeingTyped();
    void valueThatWasNotReadLeavesItsFieldEmpty();
    void methodBeyondTheThreeFillsNothing_data();
    void methodBeyondTheThreeFillsNothing();
    void enableIsDisabledUntilTheSourceAllowsIt();
    void enableGoesThroughItsInput();
    void enableWithoutAnInputSaysSo();
    void enableWithoutAnInputSaysSoOnceMore();
    void enableFollowsTheLevelButton();
    void withdrawnLevelTakesTheEnableBack_data();
    void withdrawnLevelTakesTheEnableBack();
};

void ControlRunReadTest::readIsAskedOnce()
{
    Bench bench;
    bench.button("readButton")->click();
    bench.button("readButton")->click();
    QCOMPARE(bench.said, QStringList("read"));
    QVERIFY(!bench.button("readButton")->isEnabled());
    bench.panel.handleReadFinishSlot(1, {"0001", "000003ed", "0064", "00c8", "c350"});
    QVERIFY(bench.button("readButton")->isEnabled());
}

void ControlRunReadTest::readFillsTheFields_data()
{
    QTest::addColumn<int>("method");
    QTest::addColumn<QStringList>("values");
    QTest::addColumn<QList<int>>("fields");
    QTest::addColumn<QStringList>("texts");
    QTest::addColumn<QString>("box");
    QTest::addColumn<int>("choice");
    const QList<int> position{0, 1, 2};
    const QList<int> speed{3, 4, 5, 6};
    const QList<int> torque{7, 8, 9};
    QTest::newRow("position") << 0 << QStringList{"0000", "00002710", "00020000", "00002710"} << position
                              << QStringList{"10000", "131072", "10000"} << "positionSourceComboBox" << 0;
    QTest::newRow("position with six digits")
        << 0 << QStringList{"0002", "00bc614e", "00bc614e", "ffffffff"} << position
        << QStringList{"1.23457e+07", "12345678", "-1"} << "positionSourceComboBox" << 2;
    QTest::newRow("position below zero")
        << 0 << QStringList{"0001", "ffffd8f0", "80000000", "7fffffff"} << position
        << QStringList{"-10000", "-2147483648", "2147483647"} << "positionSourceComboBox" << 1;
    QTest::newRow("speed") << 1 << QStringList{"0001", "000003ed", "0064", "ffff", "c350"} << speed
                           << QStringList{"100.5", "100", "65535", "5000.0"} << "otherComboBox0" << 1;
    QTest::newRow("speed below zero") << 1 << QStringList{"0002", "fffffc18", "0000", "0001", "0000"} << speed
                                      << QStringList{"-100.0", "0", "1", "0.0"} << "otherComboBox0" << 2;
    QTest::newRow("torque") << 2 << QStringList{"0002", "0032", "0001", "7530", "7535"} << torque
                            << QStringList{"50", "3000.0", "3000.5"} << "otherComboBox1" << 2;
    QTest::newRow("torque below zero") << 2 << QStringList{"0000", "ffce", "0002", "ffff", "0000"} << torque
                                       << QStringList{"-50", "6553.5", "0.0"} << "otherComboBox2" << 2;
    QTest::newRow("choice that the box has not")
        << 1 << QStringList{"0007", "00000000", "0", "0", "0"} << speed << QStringList{"0.0", "0", "0", "0.0"}
        << "otherComboBox0" << -1;
    QTest::newRow("choice with a letter")
        << 1 << QStringList{"000a", "00000000", "0000", "0000", "0000"} << speed
        << QStringList{"0.0", "0", "0", "0.0"} << "otherComboBox0" << -1;
}

void ControlRunReadTest::readFillsTheFields()
{
    QFETCH(int, method);
    QFETCH(QStringList, values);
    QFETCH(QList<int>, fields);
    QFETCH(QStringList, texts);
    QFETCH(QString, box);
    QFETCH(int, choice);
    Bench bench;
    const QStringList before = bench.edits({0, 1, 2, 3, 4, 5, 6, 7, 8, 9});
    bench.panel.handleReadFinishSlot(method, values);
    QCOMPARE(bench.edits(fields), texts);
    QCOMPARE(bench.combo(qPrintable(box))->currentIndex(), choice);
    QCOMPARE(bench.combo("methodComboBox")->currentIndex(), method);
    QCOMPARE(bench.tabs()->currentIndex(), method);
    for (int index = 0; index < 10; ++index) {
        if (!fields.contains(index))
            QCOMPARE(bench.edit(index)->text(), before.at(index));
    }
    QVERIFY(bench.said.isEmpty());
}

void ControlRunReadTest::readShowsThePositionBoxes_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<QStringList>("texts");
    QTest::newRow("all first") << "0000"
                               << QStringList{"0:Pulse command", "0:Pulse+Direction",
                                              "0:Low speed input terminal", "0:600ns(830K)"};
    QTest::newRow("width of the high speed terminal")
        << "2121"
        << QStringList{"1:Internal number given", "2:Orthogonal pulse", "1:High speed input terminal",
                       "2:1.2us(416K)"};
    QTest::newRow("width of the low speed terminal")
        << "4012"
        << QStringList{"2:Internal multi-segment position command", "1:Foward/Reverse pulse",
                       "0:Low speed input terminal", "4:No filtering"};
    QTest::newRow("digits without a choice") << "9959" << QStringList{"", "", "", ""};
    QTest::newRow("a letter") << "00a0" << QStringList{"", "", "", ""};
    QTest::newRow("not read") << "" << QStringList{"", "", "", ""};
}

void ControlRunReadTest::readShowsThePositionBoxes()
{
    QFETCH(QString, value);
    QFETCH(QStringList, texts);
    Bench bench;
    bench.panel.handleReadFinishSlot(0, {value, "00000000", "00000000", "00000000"});
    QCOMPARE(bench.positions(), texts);
    QVERIFY(bench.said.isEmpty());
}

void ControlRunReadTest::readWritesNothingBack()
{
    Bench bench;
    const QList<QStringList> values{{"2121", "00000001", "00000002", "00000003"},
                                    {"0002", "00000001", "0002", "0003", "0004"},
                                    {"0001", "0001", "0002", "0003", "0004"}};
    for (int method = 0; method < 3; ++method) {
        bench.panel.handleReadFinishSlot(method, values.at(method));
        for (int index = 0; index < 10; ++index)
            QTest::keyClick(bench.edit(index), Qt::Key_Return);
    }
    QVERIFY(bench.said.isEmpty());
}

void ControlRunReadTest::readEndsWhatWasBeingTyped()
{
    Bench bench;
    bench.edit(3)->setText(QStringLiteral("55"));
    bench.panel.handleReadFinishSlot(1, {"0001", "000003ed", "0064", "00c8", "c350"});
    QTest::keyClick(bench.edit(3), Qt::Key_Return);
    QVERIFY(bench.said.isEmpty());
    // A field of another method is none of those that were read.
    bench.edit(0)->setText(QStringLiteral("55"));
    bench.panel.handleReadFinishSlot(1, {"0001", "000003ed", "0064", "00c8", "c350"});
    QTest::keyClick(bench.edit(0), Qt::Key_Return);
    QCOMPARE(bench.said, QStringList("edit 0 55"));
}

void ControlRunReadTest::valueThatWasNotReadLeavesItsFieldEmpty()
{
    Bench bench;
    bench.panel.handleReadFinishSlot(1, {QString(), "000003ed", QString(), "00c8", QString()});
    QCOMPARE(bench.edits({3, 4, 5, 6}), QStringList({"100.5", "", "200", ""}));
    QCOMPARE(bench.combo("otherComboBox0")->currentIndex(), -1);
}

void ControlRunReadTest::methodBeyondTheThreeFillsNothing_data()
{
    QTest::addColumn<int>("method");
    QTest::newRow("3") << 3;
    QTest::newRow("65535") << 65535;
}

void ControlRunReadTest::methodBeyondTheThreeFillsNothing()
{
    QFETCH(int, method);
    Bench bench;
    bench.button("readButton")->click();
    bench.said.clear();
    const QStringList before = bench.edits({0, 1, 2, 3, 4, 5, 6, 7, 8, 9});
    bench.panel.handleReadFinishSlot(method, {});
    QCOMPARE(bench.edits({0, 1, 2, 3, 4, 5, 6, 7, 8, 9}), before);
    QCOMPARE(bench.tabs()->currentIndex(), 0);
    QVERIFY(bench.combo("methodComboBox")->currentText().isEmpty());
    QVERIFY(bench.button("readButton")->isEnabled());
    QVERIFY(bench.said.isEmpty());
}

void ControlRunReadTest::enableIsDisabledUntilTheSourceAllowsIt()
{
    Bench bench;
    QVERIFY(!bench.button("enableButton")->isEnabled());
    bench.panel.DIDOsourceChangedSlot(1);
    QVERIFY(bench.button("enableButton")->isEnabled());
    bench.panel.DIDOsourceChangedSlot(0);
    QVERIFY(!bench.button("enableButton")->isEnabled());
}

void ControlRunReadTest::enableGoesThroughItsInput()
{
    Bench bench;
    bench.panel.DIDOsourceChangedSlot(1);
    bench.panel.DIEnableNumSlot(4);
    bench.button("enableButton")->click();
    QVERIFY(bench.isOn());
    bench.button("enableButton")->click();
    QVERIFY(!bench.isOn());
    QCOMPARE(bench.said, QStringList({"enable 4 1", "enable 4 0"}));
}

void ControlRunReadTest::enableWithoutAnInputSaysSo()
{
    Bench bench;
    ModalAnswers boxes;
    boxes.expect(QStringLiteral("Failed to enable the servo \nPlease select a DI to Enabled Servo"));
    bench.panel.DIDOsourceChangedSlot(1);
    bench.button("enableButton")->click();
    QVERIFY(boxes.isDone());
    QCOMPARE(boxes.seen.first().title, QString());
    QVERIFY(!bench.isOn());
    QVERIFY(bench.said.isEmpty());
}

// The input has lost its function while the button was on.
void ControlRunReadTest::enableWithoutAnInputSaysSoOnceMore()
{
    Bench bench;
    ModalAnswers boxes;
    boxes.expect(QStringLiteral("Failed to enable the servo \nPlease select a DI to Enabled Servo"));
    bench.panel.DIDOsourceChangedSlot(1);
    bench.panel.DIEnableNumSlot(4);
    bench.button("enableButton")->click();
    bench.panel.DIEnableNumSlot(16);
    bench.button("enableButton")->click();
    QVERIFY(boxes.isDone());
    QVERIFY(!bench.isOn());
    QCOMPARE(bench.said, QStringList("enable 4 1"));
}

void ControlRunReadTest::enableFollowsTheLevelButton()
{
    Bench bench;
    bench.panel.DIEnableSlot(true);
    QVERIFY(bench.isOn());
    bench.panel.DIEnableSlot(false);
    QVERIFY(!bench.isOn());
    QVERIFY(bench.said.isEmpty());
}

void ControlRunReadTest::withdrawnLevelTakesTheEnableBack_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("levels");
    QTest::addColumn<bool>("isOn");
    QTest::newRow("its own level is low") << 4 << 0xFFEF << false;
    QTest::newRow("its own level is high") << 4 << 0x10 << true;
    QTest::newRow("the last row") << 15 << 0x8000 << true;
    QTest::newRow("no row") << 16 << 0xFFFF << false;
}

void ControlRunReadTest::withdrawnLevelTakesTheEnableBack()
{
    QFETCH(int, row);
    QFETCH(int, levels);
    QFETCH(bool, isOn);
    Bench bench;
    bench.panel.DIEnableNumSlot(row);
    bench.panel.DIEnableSlot(!isOn);
    bench.panel.showLevels(levels);
    QCOMPARE(bench.isOn(), isOn);
}

QTEST_MAIN(ControlRunReadTest)

#include "tst_control_run_read.moc"
