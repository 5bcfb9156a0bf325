// SPDX-License-Identifier: GPL-3.0-or-later
// The frames of the trial run, byte for byte, and what may be typed.
#include "trialbench.h"
#include "trialrun/cellinput.h"
#include "trialrun/trialframes.h"

class TrialFramesTest : public QObject
{
    Q_OBJECT

private slots:
    void savedReadsAskForEachRegisterInOrder();
    void setUpSwitchesTheInputsOver();
    void restoringWriteHasTheBytesThatCame_data();
    void restoringWriteHasTheBytesThatCame();
    void savedMotionBitsGoLast_data();
    void savedMotionBitsGoLast();
    void stepThreeLimitsTheRange();
    void jogCellHasItsWireValue_data();
    void jogCellHasItsWireValue();
    void jogReplyHasItsText();
    void positionReplyHasItsText_data();
    void positionReplyHasItsText();
    void onceCellGoesToOneRegister_data();
    void onceCellGoesToOneRegister();
    void continuousCellGoesToBothSections_data();
    void continuousCellGoesToBothSections();
    void wholeTableLeavesBlankCellsOut();
    void mirrorComesBackTheSameWay();
    void onlyTheSecondFrameOfASingleRegisterIsAddressless();
    void cellIsChecked_data();
    void cellIsChecked();
};

void TrialFramesTest::savedReadsAskForEachRegisterInOrder()
{
    QCOMPARE(savedReads().size(), 30);
    for (int i = 0; i < savedRegisters.size(); ++i) {
        QCOMPARE(savedReads().at(i), wire::frame(wire::bytes("0103") + word(savedRegisters.at(i).address) +
                                                 word(savedRegisters.at(i).words)));
    }
}

void TrialFramesTest::setUpSwitchesTheInputsOver()
{
    QCOMPARE(setUpFrames(), frames({"0106200B0001", "010620DB0027", "010620DC0028", "010620DD0025",
                                    "010620C80701", "01102064000102 0000"}));
}

void TrialFramesTest::restoringWriteHasTheBytesThatCame_data()
{
    QTest::addColumn<int>("address");
    QTest::addColumn<QByteArray>("data");
    QTest::addColumn<QByteArray>("frame");
    QTest::newRow("one word") << 0x20CA << wire::bytes("0002") << wire::frame("0110 20CA 0001 02 0002");
    QTest::newRow("two words") << 0x213A << wire::bytes("FFFFFC18")
                               << wire::frame("0110 213A 0002 04 FFFFFC18");
}

void TrialFramesTest::restoringWriteHasTheBytesThatCame()
{
    QFETCH(int, address);
    QFETCH(QByteArray, data);
    QTEST(restoringFrame(address, data), "frame");
}

void TrialFramesTest::savedMotionBitsGoLast_data()
{
    QTest::addColumn<QByteArray>("saved");
    QTest::addColumn<bool>("last");
    for (const char *bits : {"0001", "0100", "0200", "0400", "0F03"})
        QTest::newRow(bits) << QByteArray::fromHex(bits) << true;
    for (const char *bits : {"0000", "0002", "0800", "F8FE"})
        QTest::newRow(bits) << QByteArray::fromHex(bits) << false;
}

void TrialFramesTest::savedMotionBitsGoLast()
{
    QFETCH(QByteArray, saved);
    QFETCH(bool, last);
    const QByteArray own = wire::frame(wire::bytes("011020CA000102") + saved);
    const QByteArray other = wire::frame("0110200B0001020000");
    QCOMPARE(restoringOrder({own, other}),
             last ? (QList<QByteArray>{panel("0000"), other, own}) : (QList<QByteArray>{own, other}));
    QCOMPARE(restoringOrder({other}), QList<QByteArray>{other});
    QVERIFY(restoringOrder({}).isEmpty());
}

void TrialFramesTest::stepThreeLimitsTheRange()
{
    QCOMPARE(stepThreeFrames(1000, -1000),
             frames({"0106200B0000", "0110 2332 0004 08 000003E8 FFFFFC18", "010620CA0000"}));
}

void TrialFramesTest::jogCellHasItsWireValue_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("frame");
    QTest::newRow("speed") << 0 << "1.2" << wire::frame("01062007000C");
    QTest::newRow("speed whole") << 0 << "300" << wire::frame("010620070BB8");
    QTest::newRow("speed highest") << 0 << "6000.0" << wire::frame("01062007EA60");
    QTest::newRow("speed zero") << 0 << "0" << wire::frame("010620070000");
    QTest::newRow("acceleration") << 1 << "60000" << wire::frame("01062008EA60");
    QTest::newRow("deceleration") << 2 << "5" << wire::frame("010620090005");
    QTest::newRow("torque") << 3 << "+300" << wire::frame("0106200A012C");
}

void TrialFramesTest::jogCellHasItsWireValue()
{
    QFETCH(int, row);
    QFETCH(QString, text);
    QTEST(jogCellFrame(row, text), "frame");
}

void TrialFramesTest::jogReplyHasItsText()
{
    QCOMPARE(jogCellText(0, wire::bytes("000C")), QStringLiteral("1.2"));
    QCOMPARE(jogCellText(0, wire::bytes("EA60")), QStringLiteral("6000.0"));
    QCOMPARE(jogCellText(1, wire::bytes("EA60")), QStringLiteral("60000"));
    QCOMPARE(jogCellText(3, wire::bytes("0000")), QStringLiteral("0"));
}

void TrialFramesTest::positionReplyHasItsText_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<QByteArray>("data");
    QTest::addColumn<QString>("text");
    QTest::newRow("distance") << 0 << wire::bytes("7FFFFFFF") << "2147483647";
    QTest::newRow("distance back") << 0 << wire::bytes("FFFFFC18") << "-1000";
    QTest::newRow("speed") << 1 << wire::bytes("7530") << "3000.0";
    QTest::newRow("acceleration") << 2 << wire::bytes("EA60") << "60000";
    QTest::newRow("wait") << 3 << wire::bytes("0036EE80") << "3600000";
    QTest::newRow("overspeed") << 5 << wire::bytes("000F") << "1.5";
    QTest::newRow("deviation") << 6 << wire::bytes("00C80000") << "13107200";
}

void TrialFramesTest::positionReplyHasItsText()
{
    QFETCH(int, row);
    QFETCH(QByteArray, data);
    QTEST(positionCellText(row, data), "text");
}

void TrialFramesTest::onceCellGoesToOneRegister_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("frame");
    QTest::newRow("distance") << 0 << "1000" << wire::frame("0110 213A 0002 04 000003E8");
    QTest::newRow("speed") << 1 << "12.3" << wire::frame("0110 213C 0001 02 007B");
    QTest::newRow("acceleration") << 2 << "200" << wire::frame("0110 213D 0001 02 00C8");
    QTest::newRow("wait") << 3 << "5" << QByteArray();
    QTest::newRow("overload") << 4 << "110" << wire::frame("0110 2322 0001 02 006E");
    QTest::newRow("overspeed") << 5 << "1.2" << wire::frame("0110 2329 0001 02 000C");
    QTest::newRow("deviation") << 6 << "13107200" << wire::frame("0110 2327 0002 04 00C80000");
}

void TrialFramesTest::onceCellGoesToOneRegister()
{
    QFETCH(int, row);
    QFETCH(QString, text);
    QTEST(onceCellFrame(row, text), "frame");
}

void TrialFramesTest::continuousCellGoesToBothSections_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QList<QByteArray>>("written");
    QTest::newRow("distance") << 0 << "1000"
                              << frames({"0110 23EC 0002 04 000003E8", "0110 23F2 0002 04 FFFFFC18"});
    QTest::newRow("speed") << 1 << "12.3" << frames({"0110 23EE 0001 02 007B", "0110 23F4 0001 02 007B"});
    QTest::newRow("acceleration") << 2 << "200"
                                  << frames({"0110 23EF 0001 02 00C8", "0110 23F5 0001 02 00C8"});
    QTest::newRow("wait") << 3 << "5" << frames({"0110 23F0 0002 04 00000005", "0110 23F6 0002 04 00000005"});
    QTest::newRow("overload") << 4 << "110" << frames({"0110 2322 0001 02 006E", "0110 0001 02 006E"});
    QTest::newRow("overspeed") << 5 << "1.2" << frames({"0110 2329 0001 02 000C", "0110 0001 02 000C"});
    QTest::newRow("deviation") << 6 << "7" << frames({"0110 2327 0002 04 00000007", "0110 0002 04 00000007"});
}

void TrialFramesTest::continuousCellGoesToBothSections()
{
    QFETCH(int, row);
    QFETCH(QString, text);
    QTEST(continuousCellFrames(row, text), "written");
}

void TrialFramesTest::wholeTableLeavesBlankCellsOut()
{
    const QStringList cells{"1000", "", "200", "5", "110", "", "7"};
    QCOMPARE(onceTableFrames(cells),
             frames({"0110 213A 0002 04 000003E8", "0110 213D 0001 02 00C8", "0110 2322 0001 02 006E",
                     "0110 2327 0002 04 00000007", "0106212C0001"}));
    QCOMPARE(
        continuousTableFrames(cells),
        frames({"0110 23EC 0002 04 000003E8", "0110 23F2 0002 04 FFFFFC18", "0110 23EF 0001 02 00C8",
                "0110 23F5 0001 02 00C8", "0110 23F0 0002 04 00000005", "0110 23F6 0002 04 00000005",
                "0110 2322 0001 02 006E", "0110 2327 0002 04 00000007", "010623E80001", "010623E90002"}));
}

void TrialFramesTest::mirrorComesBackTheSameWay()
{
    QCOMPARE(mirrorFrames({"-1000", "12.3", "200", "5", "110", "1.2", "7"}),
             frames({"0110 23F2 0002 04 000003E8", "0110 23F4 0001 02 007B", "0110 23F5 0001 02 00C8",
                     "0110 23F6 0002 04 00000005"}));
}

void TrialFramesTest::onlyTheSecondFrameOfASingleRegisterIsAddressless()
{
    QVERIFY(isAddressless(wire::frame("0110 0001 02 006E")));
    QVERIFY(isAddressless(wire::frame("0110 0002 04 00000007")));
    for (const QByteArray &frame : setUpFrames() + stepThreeFrames(1, -1) + onceReads() + continuousReads())
        QVERIFY(!isAddressless(frame));
    QVERIFY(!isAddressless(wire::frame("0110 2322 0001 02 006E")));
    QVERIFY(!isAddressless(wire::frame("0110 23EC 0002 04 000003E8")));
}

void TrialFramesTest::cellIsChecked_data()
{
    QTest::addColumn<QString>("range");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("good");
    const QString whole = QStringLiteral("0~60000");
    const QString tenths = QStringLiteral("0.0~6000.0");
    QTest::newRow("two digits behind the point") << tenths << "1.25" << false;
    QTest::newRow("one digit behind the point") << tenths << "1.2" << true;
    QTest::newRow("none needed") << tenths << "12" << true;
    QTest::newRow("point in a whole range") << whole << "1.5" << false;
    QTest::newRow("whole") << whole << "15" << true;
    QTest::newRow("signed") << whole << "-15" << true;
    QTest::newRow("plus") << tenths << "+1.5" << true;
    QTest::newRow("letters") << whole << "1e3" << false;
    QTest::newRow("point at the end") << tenths << "1." << false;
    QTest::newRow("point in front") << tenths << ".5" << false;
    QTest::newRow("blank around") << whole << " 5" << false;
    QTest::newRow("line end") << whole << "5\n" << false;
    QTest::newRow("other digits") << whole << QString::fromUtf8("\u0665") << false;
    QTest::newRow("wide digits") << tenths << QString::fromUtf8("１.５") << false;
}

void TrialFramesTest::cellIsChecked()
{
    QFETCH(QString, range);
    QFETCH(QString, text);
    QTEST(isWellFormedCell(range, text), "good");
}

QTEST_APPLESS_MAIN(TrialFramesTest)
#include "tst_trialframes.moc"
