// SPDX-License-Identifier: GPL-3.0-or-later
// Codes of parameters: their registers, their spelling and their width.
#include "catalogue/doubleaddress.h"
#include "catalogue/parametercode.h"
#include "link/framecodec.h"

#include <QTest>

class ParameterCodeTest : public QObject
{
    Q_OBJECT

private slots:
    void registerFollowsTheCode_data();
    void registerFollowsTheCode();
    void replyIsPlacedByItsOffset_data();
    void replyIsPlacedByItsOffset();
    void codeIsSpeltAsInTheCatalogue_data();
    void codeIsSpeltAsInTheCatalogue();
    void hexadecimalTextIsFilledUp_data();
    void hexadecimalTextIsFilledUp();
    void widthFollowsTheList_data();
    void widthFollowsTheList();
    void missingListIsEmpty();
};

void ParameterCodeTest::registerFollowsTheCode_data()
{
    QTest::addColumn<QString>("code");
    QTest::addColumn<int>("offset");
    QTest::addColumn<int>("ram");
    QTest::addColumn<int>("eeprom");
    QTest::newRow("Pn-000") << "Pn-000" << 0 << 0x2000 << 0xE000;
    QTest::newRow("Pn-304") << "Pn-304" << 304 << 0x2130 << 0xE130;
    QTest::newRow("Pn-A04") << "Pn-A04" << 1004 << 0x23EC << 0xE3EC;
    QTest::newRow("Pn-B06") << "Pn-B06" << 1106 << 0x2452 << 0xE452;
    QTest::newRow("Pn-B99") << "Pn-B99" << 1199 << 0x24AF << 0xE4AF;
    QTest::newRow("Pn-F00") << "Pn-F00" << 1500 << 0x25DC << 0xE5DC;
    QTest::newRow("pair") << "Pn-336~Pn-337" << 336 << 0x2150 << 0xE150;
    QTest::newRow("lower-case group") << "Pn-a04" << 1004 << 0x23EC << 0xE3EC;
    // The row code of the English file, taken as it stands.
    QTest::newRow("Pn-0329") << "Pn-0329" << 32 << 0x2020 << 0xE020;
    QTest::newRow("empty") << "" << 0 << 0x2000 << 0xE000;
}

void ParameterCodeTest::registerFollowsTheCode()
{
    QFETCH(QString, code);
    QFETCH(int, offset);
    QFETCH(int, ram);
    QFETCH(int, eeprom);
    QCOMPARE(registerOf(code), offset);
    QCOMPARE(ramBase + registerOf(code), ram);
    QCOMPARE(eepromBase + registerOf(code), eeprom);
}

void ParameterCodeTest::replyIsPlacedByItsOffset_data()
{
    QTest::addColumn<int>("offset");
    QTest::addColumn<int>("group");
    QTest::addColumn<int>("number");
    QTest::newRow("first") << 0 << 0 << 0;
    QTest::newRow("end of group 0") << 99 << 0 << 99;
    QTest::newRow("group 1") << 100 << 1 << 0;
    QTest::newRow("Pn-A04") << 1004 << 10 << 4;
    QTest::newRow("last") << 1199 << 11 << 99;
    QTest::newRow("beyond group 11") << 1200 << -1 << 0;
    QTest::newRow("monitor registers") << 1500 << -1 << 0;
    QTest::newRow("negative") << -1 << -1 << 0;
}

void ParameterCodeTest::replyIsPlacedByItsOffset()
{
    QFETCH(int, offset);
    QFETCH(int, group);
    QFETCH(int, number);
    QCOMPARE(placeOfOffset(offset).group, group);
    QCOMPARE(placeOfOffset(offset).number, number);
}

void ParameterCodeTest::codeIsSpeltAsInTheCatalogue_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("code");
    QTest::newRow("as it is") << "Pn-A04"
                              << "Pn-A04";
    QTest::newRow("small letters") << "pn-b06"
                                   << "Pn-B06";
    QTest::newRow("another prefix") << "xx-A04"
                                    << "Pn-A04";
    QTest::newRow("blank behind") << "Pn-007 "
                                  << "Pn-007";
    QTest::newRow("pair") << "Pn-336~Pn-337"
                          << "Pn-336";
    QTest::newRow("group without a page") << "pn-c00"
                                          << "Pn-C00";
    QTest::newRow("no digits") << "Pn-A0x"
                               << "Pn-A0x";
    QTest::newRow("no group") << "Pn-G00"
                              << "Pn-G00";
    QTest::newRow("one digit") << "Pn-A4"
                               << "Pn-A04";
    QTest::newRow("one digit and a letter") << "Pn-A4x"
                                            << "Pn-A4x";
    QTest::newRow("blanks around") << " Pn-A4 "
                                   << "Pn-A04";
    QTest::newRow("too short") << "Pn-A"
                               << "Pn-A";
    QTest::newRow("empty") << ""
                           << "";
}

void ParameterCodeTest::codeIsSpeltAsInTheCatalogue()
{
    QFETCH(QString, text);
    QFETCH(QString, code);
    QCOMPARE(catalogueSpelling(text), code);
}

void ParameterCodeTest::hexadecimalTextIsFilledUp_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("filled");
    QTest::newRow("one digit") << "0x1"
                               << "0x0001";
    QTest::newRow("two digits") << "0x12"
                                << "0x0012";
    QTest::newRow("capital prefix") << "0X1F"
                                    << "0X001F";
    QTest::newRow("prefix alone") << "0x"
                                  << "0x0000";
    QTest::newRow("four digits") << "0x0139"
                                 << "0x0139";
    QTest::newRow("more digits") << "0x00012"
                                 << "0x00012";
    QTest::newRow("decimal") << "12"
                             << "12";
    QTest::newRow("empty") << ""
                           << "";
}

void ParameterCodeTest::hexadecimalTextIsFilledUp()
{
    QFETCH(QString, text);
    QFETCH(QString, filled);
    QCOMPARE(filledUpHex(text), filled);
}

void ParameterCodeTest::widthFollowsTheList_data()
{
    QTest::addColumn<QString>("code");
    QTest::addColumn<bool>("twoRegisters");
    QTest::newRow("Pn-304") << "Pn-304" << true;
    QTest::newRow("Pn-298") << "Pn-298" << true;
    QTest::newRow("Pn-B81") << "Pn-B81" << true;
    QTest::newRow("Pn-305, second of a pair") << "Pn-305" << false;
    QTest::newRow("Pn-336, a pair in the English file only") << "Pn-336" << false;
    QTest::newRow("Pn-007") << "Pn-007" << false;
    QTest::newRow("full code of a pair") << "Pn-304~Pn-305" << false;
    QTest::newRow("empty") << "" << false;
}

void ParameterCodeTest::widthFollowsTheList()
{
    QFETCH(QString, code);
    QFETCH(bool, twoRegisters);
    QCOMPARE(isDouble(code), twoRegisters);
}

void ParameterCodeTest::missingListIsEmpty()
{
    QVERIFY(readDoubleAddressList(QStringLiteral(":/config/config/none.txt")).isEmpty());
    QCOMPARE(readDoubleAddressList(QStringLiteral(":/config/config/address.txt")).size(), 66);
}

QTEST_GUILESS_MAIN(ParameterCodeTest)
#include "tst_parametercode.moc"
