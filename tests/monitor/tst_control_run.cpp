// SPDX-License-Identifier: GPL-3.0-or-later
// The panel of the control method and its parameters: what each field signals, how a read is shown, and the
// button that enables the servo.
#include "monitor/control_run.h"

#include "support/modalanswers.h"
#include "support/testdirectory.h"

#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>

namespace {

QByteArray pictureOf(const QIcon &icon)
{
    const QImage image = icon.pixmap(40, 40).toImage();
    return QByteArray(reinterpret_cast<const char *>(image.constBits()), int(image.sizeInBytes()));
}

// The panel, and all that it says, in order.
class Bench
{
public:
    Bench()
    {
        QObject::connect(&panel, &Control_Run::methodComboBoxchangedSignal,
                         [this](int index) { said << QStringLiteral("method %1").arg(index); });
        QObject::connect(&panel, &Control_Run::Pn300ComboBoxChangedSignal,
                         [this](int value) { said << QStringLiteral("Pn300 %1").arg(value); });
        QObject::connect(&panel, &Control_Run::LineEditChangedSignal, [this](int index, int value) {
            said << QStringLiteral("edit %1 %2").arg(index).arg(value);
        });
        QObject::connect(&panel, &Control_Run::otherComboBoxChangedSignal, [this](int index, int value) {
            said << QStringLiteral("combo %1 %2").arg(index).arg(value);
        });
        QObject::connect(&panel, &Control_Run::BtnEnableSignal, [this](int index, bool status) {
            said << QStringLiteral("enable %1 %2").arg(index).arg(int(status));
        });
        QObject::connect(&panel, &Control_Run::readBtnclickedSignal, [this] { said << "read"; });
    }

    QComboBox *combo(const char *name) const { return panel.findChild<QComboBox *>(QLatin1String(name)); }
    QLineEdit *edit(int index) const
    {
        return panel.findChild<QLineEdit *>(QStringLiteral("lineEdit%1").arg(index));
    }
    QPushButton *button(const char *name) const
    {
        return panel.findChild<QPushButton *>(QLatin1String(name));
    }
    QTabWidget *tabs() const { return panel.findChild<QTabWidget *>(); }
    // The picture of the enable button; whether it is pressed in must say the same.
    bool isOn() const
    {
        const QPushButton *const enable = button("enableButton");
        const bool isStop = pictureOf(enable->icon()) == pictureOf(QIcon(":/pic/pic/stop.png"));
        if (!isStop && pictureOf(enable->icon()) != pictureOf(QIcon(":/pic/pic/start.png")))
            qWarning("neither picture");
        if (isStop != enable->isChecked())
            qWarning("picture and state differ");
        return isStop;
    }
    // Types into a field and ends the editing.
    void type(int index, const QString &text) const
    {
        edit(index)->selectAll();
        if (text.isEmpty())
            QTest::keyClick(edit(index), Qt::Key_Delete);
        else
            QTest::keyClicks(edit(index), text);
        QTest::keyClick(edit(index), Qt::Key_Return);
    }
    QStringList positions() const
    {
        QStringList list;
        for (const char *name :
             {"positionSourceComboBox", "pulseShapeComboBox", "pulseTerminalComboBox", "pulseWidthComboBox"})
            list << combo(name)->currentText();
        return list;
    }
    QStringList edits(const QList<int> &indices) const
    {
        QStringList list;
        for (const int index : indices)
            list << edit(index)->text();
        return list;
    }

    TestDirectory directory;
    Control_Run panel;
    QStringList said;
};

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
    void blankBoxSendsNothing();
    void enableIsDisabledUntilTheSourceAllowsIt();
    void enableGoesThroughItsInput();
    void enableWithoutAnInputSaysSo();
    void enableWithoutAnInputSaysSoOnceMore();
    void enableFollowsTheLevelButton();
    void withdrawnLevelTakesTheEnableBack_data();
    void withdrawnLevelTakesTheEnableBack();
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

void ControlRunTest::readIsAskedOnce()
{
    Bench bench;
    bench.button("readButton")->click();
    bench.button("readButton")->click();
    QCOMPARE(bench.said, QStringList("read"));
    QVERIFY(!bench.button("readButton")->isEnabled());
    bench.panel.handleReadFinishSlot(1, {"0001", "000003ed", "0064", "00c8", "c350"});
    QVERIFY(bench.button("readButton")->isEnabled());
}

void ControlRunTest::readFillsTheFields_data()
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

void ControlRunTest::readFillsTheFields()
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

void ControlRunTest::readShowsThePositionBoxes_data()
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

void ControlRunTest::readShowsThePositionBoxes()
{
    QFETCH(QString, value);
    QFETCH(QStringList, texts);
    Bench bench;
    bench.panel.handleReadFinishSlot(0, {value, "00000000", "00000000", "00000000"});
    QCOMPARE(bench.positions(), texts);
    QVERIFY(bench.said.isEmpty());
}

void ControlRunTest::readWritesNothingBack()
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

void ControlRunTest::readEndsWhatWasBeingTyped()
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

void ControlRunTest::valueThatWasNotReadLeavesItsFieldEmpty()
{
    Bench bench;
    bench.panel.handleReadFinishSlot(1, {QString(), "000003ed", QString(), "00c8", QString()});
    QCOMPARE(bench.edits({3, 4, 5, 6}), QStringList({"100.5", "", "200", ""}));
    QCOMPARE(bench.combo("otherComboBox0")->currentIndex(), -1);
}

void ControlRunTest::methodBeyondTheThreeFillsNothing_data()
{
    QTest::addColumn<int>("method");
    QTest::newRow("3") << 3;
    QTest::newRow("65535") << 65535;
}

void ControlRunTest::methodBeyondTheThreeFillsNothing()
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

void ControlRunTest::enableIsDisabledUntilTheSourceAllowsIt()
{
    Bench bench;
    QVERIFY(!bench.button("enableButton")->isEnabled());
    bench.panel.DIDOsourceChangedSlot(1);
    QVERIFY(bench.button("enableButton")->isEnabled());
    bench.panel.DIDOsourceChangedSlot(0);
    QVERIFY(!bench.button("enableButton")->isEnabled());
}

void ControlRunTest::enableGoesThroughItsInput()
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

void ControlRunTest::enableWithoutAnInputSaysSo()
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
void ControlRunTest::enableWithoutAnInputSaysSoOnceMore()
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

void ControlRunTest::enableFollowsTheLevelButton()
{
    Bench bench;
    bench.panel.DIEnableSlot(true);
    QVERIFY(bench.isOn());
    bench.panel.DIEnableSlot(false);
    QVERIFY(!bench.isOn());
    QVERIFY(bench.said.isEmpty());
}

void ControlRunTest::withdrawnLevelTakesTheEnableBack_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("levels");
    QTest::addColumn<bool>("isOn");
    QTest::newRow("its own level is low") << 4 << 0xFFEF << false;
    QTest::newRow("its own level is high") << 4 << 0x10 << true;
    QTest::newRow("the last row") << 15 << 0x8000 << true;
    QTest::newRow("no row") << 16 << 0xFFFF << false;
}

void ControlRunTest::withdrawnLevelTakesTheEnableBack()
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

QTEST_MAIN(ControlRunTest)

#include "tst_control_run.moc"
