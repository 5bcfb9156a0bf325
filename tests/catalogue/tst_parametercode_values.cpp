// SPDX-License-Identifier: GPL-3.0-or-later
// Values of parameters, from the words of a reply to their texts and back.
#include "catalogue/parametercode.h"

#include <QTest>

class ParameterCodeValuesTest : public QObject
{
    Q_OBJECT

private slots:
    void replyIsDecoded_data();
    void replyIsDecoded();
    void textIsEncoded_data();
    void textIsEncoded();
};

void ParameterCodeValuesTest::replyIsDecoded_data()
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

void ParameterCodeValuesTest::replyIsDecoded()
{
    QFETCH(QString, reply);
    QFETCH(QString, mark);
    QFETCH(QString, unit);
    QFETCH(QString, min);
    QFETCH(QString, max);
    QFETCH(QString, text);
    QCOMPARE(decodeValue(reply, mark, unit, min, max), text);
}

void ParameterCodeValuesTest::textIsEncoded_data()
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

void ParameterCodeValuesTest::textIsEncoded()
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

QTEST_GUILESS_MAIN(ParameterCodeValuesTest)
#include "tst_parametercode_values.moc"
