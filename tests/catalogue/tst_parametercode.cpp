// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/doubleaddress.h"
#include "catalogue/parametercatalogue.h"
#include "catalogue/parametercode.h"
#include "link/framecodec.h"

#include <QFile>
#include <QRandomGenerator>
#include <QTest>

#include <cmath>

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
    void replyIsDecoded_data();
    void replyIsDecoded();
    void textIsEncoded_data();
    void textIsEncoded();
    void everyRowGivesItsTextBack_data();
    void everyRowGivesItsTextBack();
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

void ParameterCodeTest::replyIsDecoded_data()
{
    QTest::addColumn<QString>("reply");
    QTest::addColumn<QString>("mark");
    QTest::addColumn<QString>("unit");
    QTest::addColumn<QString>("min");
    QTest::addColumn<QString>("max");
    QTest::addColumn<QString>("text");
    QTest::newRow("hexadecimal by mark") << "01ab"
                                         << "H"
                                         << ""
                                         << ""
                                         << ""
                                         << "0x01AB";
    QTest::newRow("hexadecimal by max") << "0012"
                                        << ""
                                        << ""
                                        << "0x000"
                                        << "0x0199"
                                        << "0x0012";
    QTest::newRow("hexadecimal, two registers") << "0001abcd"
                                                << "H"
                                                << ""
                                                << ""
                                                << ""
                                                << "0x0001ABCD";
    QTest::newRow("whole") << "00c8"
                           << ""
                           << "ms"
                           << "0"
                           << "5000"
                           << "200";
    QTest::newRow("signed 16 bits from -300") << "ffff"
                                              << ""
                                              << ""
                                              << "-300"
                                              << "300"
                                              << "-1";
    QTest::newRow("signed 16 bits, tenths") << "ffff"
                                            << ""
                                            << "0.1%"
                                            << "-300"
                                            << "300"
                                            << "-0.1";
    QTest::newRow("signed by -300 only") << "ffff"
                                         << ""
                                         << "0.1%"
                                         << "-300.0"
                                         << "300.0"
                                         << "6553.5";
    QTest::newRow("unsigned 16 bits") << "ffff"
                                      << ""
                                      << ""
                                      << "0"
                                      << "65535"
                                      << "65535";
    QTest::newRow("Pn-297 shows its raw value") << "ffff"
                                                << ""
                                                << ""
                                                << "-32768"
                                                << "32767"
                                                << "65535";
    QTest::newRow("signed 32 bits") << "ffffffff"
                                    << ""
                                    << "pp"
                                    << "-2147483647"
                                    << "2147483647"
                                    << "-1";
    QTest::newRow("signed 32 bits, tenths") << "fffffc18"
                                            << ""
                                            << "0.1rpm"
                                            << "-6000.0"
                                            << "6000.0"
                                            << "-100.0";
    QTest::newRow("a point that is no scale") << "fffe"
                                              << ""
                                              << "6.03mv"
                                              << "-300"
                                              << "300"
                                              << "-2";
    QTest::newRow("tenths by min and max") << "07d0"
                                           << ""
                                           << "0.1rpm"
                                           << "0.0"
                                           << "6000.0"
                                           << "200.0";
    QTest::newRow("hundredths by unit") << "0032"
                                        << ""
                                        << "0.01ms"
                                        << "0.10"
                                        << "100.00"
                                        << "0.50";
    QTest::newRow("hundredths by max") << "0032"
                                       << ""
                                       << "ms"
                                       << "0.1"
                                       << "1.00"
                                       << "0.50";
    QTest::newRow("hundredths by min") << "0032"
                                       << ""
                                       << "0.1ms"
                                       << ".00"
                                       << "1"
                                       << "0.50";
    QTest::newRow("thousandths") << "0032"
                                 << ""
                                 << "0.001s"
                                 << "0"
                                 << "1"
                                 << "0.050";
    QTest::newRow("bare number as unit") << "000c"
                                         << ""
                                         << "0.1"
                                         << "1.0"
                                         << "3.0"
                                         << "1.2";
    QTest::newRow("no data") << ""
                             << ""
                             << ""
                             << "0"
                             << "1"
                             << "0";
    QTest::newRow("no data, hexadecimal") << ""
                                          << "H"
                                          << ""
                                          << ""
                                          << ""
                                          << "0x";
    QTest::newRow("what an exception leaves") << "8302"
                                              << ""
                                              << ""
                                              << "0"
                                              << "1"
                                              << "33538";
}

void ParameterCodeTest::replyIsDecoded()
{
    QFETCH(QString, reply);
    QFETCH(QString, mark);
    QFETCH(QString, unit);
    QFETCH(QString, min);
    QFETCH(QString, max);
    QFETCH(QString, text);
    QCOMPARE(decodeValue(reply, mark, unit, min, max), text);
}

void ParameterCodeTest::textIsEncoded_data()
{
    QTest::addColumn<QString>("code");
    QTest::addColumn<QString>("mark");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("unit");
    QTest::addColumn<QString>("min");
    QTest::addColumn<QString>("max");
    QTest::addColumn<QByteArray>("bytes");
    const auto hex = [](const char *text) { return QByteArray::fromHex(text); };
    QTest::newRow("-1 in 16 bits") << "Pn-253"
                                   << ""
                                   << "-1"
                                   << "6.03mv"
                                   << "-300"
                                   << "300" << hex("FFFF");
    QTest::newRow("-1 in 32 bits") << "Pn-314"
                                   << ""
                                   << "-1"
                                   << "pp"
                                   << "-2147483647"
                                   << "2147483647" << hex("FFFFFFFF");
    QTest::newRow("0.05 of 0.1rpm") << "Pn-007"
                                    << ""
                                    << "0.05"
                                    << "0.1rpm"
                                    << "0.0"
                                    << "6000.0" << hex("0001");
    QTest::newRow("-0.05 of 0.1rpm") << "Pn-B06"
                                     << ""
                                     << "-0.05"
                                     << "0.1rpm"
                                     << "-6000.0"
                                     << "6000.0" << hex("00000000");
    QTest::newRow("200.0 of 0.1rpm") << "Pn-007"
                                     << ""
                                     << "200.0"
                                     << "0.1rpm"
                                     << "0.0"
                                     << "6000.0" << hex("07D0");
    QTest::newRow("-100.0 of 0.1rpm, 32 bits") << "Pn-401"
                                               << ""
                                               << "-100.0"
                                               << "0.1rpm"
                                               << "-6000.0"
                                               << "6000.0" << hex("FFFFFC18");
    QTest::newRow("hexadecimal by its text") << "Pn-007"
                                             << ""
                                             << "0x1A"
                                             << "0.1rpm"
                                             << "0.0"
                                             << "6000.0" << hex("001A");
    QTest::newRow("hexadecimal by the mark") << "Pn-004"
                                             << "H"
                                             << "0101"
                                             << ""
                                             << "0x0000"
                                             << "0x1111" << hex("0101");
    QTest::newRow("odd count of digits") << "Pn-003"
                                         << "H"
                                         << "0x123"
                                         << ""
                                         << "0x000"
                                         << "0x0199" << hex("0123");
    QTest::newRow("capital X") << "Pn-003"
                               << "H"
                               << "0X0100"
                               << ""
                               << "0x000"
                               << "0x0199" << hex("0100");
    QTest::newRow("hexadecimal of 32 bits") << "Pn-304"
                                            << "H"
                                            << "0x12345678"
                                            << ""
                                            << ""
                                            << "" << hex("12345678");
    QTest::newRow("too many digits lose the first") << "Pn-250"
                                                    << "H"
                                                    << "0x000012"
                                                    << ""
                                                    << ""
                                                    << "" << hex("0012");
    QTest::newRow("hundredths") << "Pn-638"
                                << ""
                                << "0.50"
                                << "0.01ms"
                                << "0.10"
                                << "100.00" << hex("0032");
    // For this code alone a unit of tenths is no factor of ten by itself: its limits decide.
    QTest::newRow("tenths of the one exception") << "Pn-638"
                                                 << ""
                                                 << "0.50"
                                                 << "0.1ms"
                                                 << "0.00"
                                                 << "100.00" << hex("0032");
    QTest::newRow("tenths of its neighbour") << "Pn-637"
                                             << ""
                                             << "0.50"
                                             << "0.1ms"
                                             << "0.00"
                                             << "100.00" << hex("0005");
    QTest::newRow("hundredths by the limits") << "Pn-601"
                                              << ""
                                              << "1.25"
                                              << "ms"
                                              << "0.00"
                                              << "9.00" << hex("007D");
    QTest::newRow("thousandths") << "Pn-601"
                                 << ""
                                 << "0.05"
                                 << "0.001s"
                                 << "0"
                                 << "1" << hex("0032");
    QTest::newRow("tenths by the limits") << "Pn-601"
                                          << ""
                                          << "2.5"
                                          << ""
                                          << "0.0"
                                          << "9.0" << hex("0019");
    QTest::newRow("0.1 in the unit goes first") << "Pn-601"
                                                << ""
                                                << "2.5"
                                                << "0.1s"
                                                << "0.00"
                                                << "9.00" << hex("0019");
    QTest::newRow("no scale by 6.03") << "Pn-253"
                                      << ""
                                      << "7.9"
                                      << "6.03mv"
                                      << "-300"
                                      << "300" << hex("0007");
    QTest::newRow("whole is truncated") << "Pn-601"
                                        << ""
                                        << "2.9"
                                        << ""
                                        << "0"
                                        << "9" << hex("0002");
    QTest::newRow("65535") << "Pn-601"
                           << ""
                           << "65535"
                           << ""
                           << "0"
                           << "65535" << hex("FFFF");
    QTest::newRow("empty") << "Pn-601"
                           << ""
                           << ""
                           << "0.1rpm"
                           << "0.0"
                           << "9.0" << hex("0000");
    QTest::newRow("no number") << "Pn-601"
                               << ""
                               << "abc"
                               << ""
                               << "0"
                               << "9" << hex("0000");
    QTest::newRow("nan") << "Pn-601"
                         << ""
                         << "nan"
                         << ""
                         << "0"
                         << "9" << hex("0000");
    QTest::newRow("beyond 32 bits") << "Pn-314"
                                    << ""
                                    << "1e300"
                                    << "pp"
                                    << "0"
                                    << "9" << hex("7FFFFFFF");
}

void ParameterCodeTest::textIsEncoded()
{
    QFETCH(QString, code);
    QFETCH(QString, mark);
    QFETCH(QString, text);
    QFETCH(QString, unit);
    QFETCH(QString, min);
    QFETCH(QString, max);
    QFETCH(QByteArray, bytes);
    QCOMPARE(encodeValue(code, mark, text, unit, min, max).toHex(), bytes.toHex());
}

namespace {

struct Row
{
    QString code;
    QString mark;
    QString byDefault;
    QString unit;
    QString min;
    QString max;
};

QList<Row> rowsOf(const QString &path)
{
    QFile file(path);
    QList<Row> rows;
    if (!file.open(QIODevice::ReadOnly))
        return rows;
    readParameterCatalogue(file.readAll(), [&rows](int, const QStringList &values, const QStringList &) {
        rows.append({shortCode(values.at(1)),
                     values.at(3) == QLatin1String("1") ? QStringLiteral("H") : QString(), values.at(13),
                     values.at(14), values.at(15), values.at(16)});
    });
    return rows;
}

int digitsOf(const QString &text)
{
    const int point = text.indexOf(QLatin1Char('.'));
    return point < 0 ? 0 : text.size() - point - 1;
}

// Values of the row's resolution: the limits, the default and some between the limits.
QStringList valuesOf(const Row &row, QRandomGenerator *random)
{
    QStringList values;
    if (row.max.contains(QLatin1String("0x"))) {
        for (int i = 0; i < 8; ++i)
            values.append(QStringLiteral("0x%1")
                              .arg(random->bounded(0x10000), 4, 16, QLatin1Char('0'))
                              .toUpper()
                              .replace(QLatin1Char('X'), QLatin1Char('x')));
        return values;
    }
    if (row.min.isEmpty() || row.max.isEmpty())
        return values;
    values << row.min << row.max;
    const int digits = qMax(digitsOf(row.min), digitsOf(row.max));
    const double scale = std::pow(10, digits);
    const double low = row.min.toDouble() * scale;
    const double span = row.max.toDouble() * scale - low;
    for (int i = 0; i < 8; ++i) {
        const double number = std::floor(low + span * random->generateDouble());
        values.append(QString::number(number / scale, 'f', digits));
    }
    if (!row.byDefault.isEmpty() && digitsOf(row.byDefault) == digits)
        values.append(row.byDefault);
    return values;
}

} // namespace

void ParameterCodeTest::everyRowGivesItsTextBack_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<int>("rowCount");
    QTest::newRow("English") << ":/parameter/parameter/parameters_en_US.xml" << 520;
    QTest::newRow("Chinese") << ":/parameter/parameter/parameters_zh_CN.xml" << 571;
}

void ParameterCodeTest::everyRowGivesItsTextBack()
{
    QFETCH(QString, path);
    QFETCH(int, rowCount);
    const QList<Row> rows = rowsOf(path);
    QCOMPARE(rows.size(), rowCount);
    QRandomGenerator random(20260101);
    int tried = 0;
    for (const Row &row : rows) {
        const QStringList values = valuesOf(row, &random);
        for (const QString &value : values) {
            // A 16-bit row of negative range shows its raw number, unless it begins at -300.
            if (value.startsWith(QLatin1Char('-')) && !isDouble(row.code) && row.min.toInt() != -300)
                continue;
            const QByteArray bytes = encodeValue(row.code, row.mark, value, row.unit, row.min, row.max);
            QCOMPARE(bytes.size(), isDouble(row.code) ? 4 : 2);
            const QString back =
                decodeValue(QString::fromLatin1(bytes.toHex()), row.mark, row.unit, row.min, row.max);
            // A 32-bit row of hexadecimal form shows eight digits.
            const QString expected = back.size() == 10 && value.startsWith(QLatin1String("0x"))
                                         ? QLatin1String("0x0000") + value.mid(2)
                                         : value;
            QVERIFY2(back == expected, qPrintable(row.code + ": " + value + " came back as " + back));
            ++tried;
        }
    }
    QVERIFY(tried > 4000);
}

QTEST_GUILESS_MAIN(ParameterCodeTest)
#include "tst_parametercode.moc"
