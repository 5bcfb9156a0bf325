// SPDX-License-Identifier: GPL-3.0-or-later
#include "link/portlist.h"
#include "link/portstamp.h"

#include <QDir>
#include <QSerialPortInfo>
#include <QTest>

#include <ctime>

class PortListTest : public QObject
{
    Q_OBJECT

private slots:
    void systemPortsComeFirstInTheirOrder();
    void addedPortIsListedUntilItIsRemoved();
    void addingAgainReplacesTheEntryInItsPlace();
    void stampChangesWithThePortsOnly();
    void watchingTheListCostsNextToNothing();
};

namespace {

QStringList names()
{
    QStringList list;
    const QList<SerialPortEntry> ports = serialPorts();
    for (const SerialPortEntry &port : ports)
        list.append(port.name);
    return list;
}

} // namespace

void PortListTest::systemPortsComeFirstInTheirOrder()
{
    QStringList expected;
    const QList<QSerialPortInfo> infos = QSerialPortInfo::availablePorts();
    for (const QSerialPortInfo &info : infos)
        expected.append(info.portName());
    addSerialPort({QStringLiteral("added"), QString(), QString()});
    expected.append(QStringLiteral("added"));
    QCOMPARE(names(), expected);
    removeSerialPort(QStringLiteral("added"));
    // A machine's own port is not taken for an adapter that has gone.
    const QList<SerialPortEntry> ports = serialPorts();
    for (int i = 0; i < ports.size(); ++i)
        QVERIFY(infos.at(i).hasVendorIdentifier() || !ports.at(i).manufacturer.isEmpty());
}

void PortListTest::addedPortIsListedUntilItIsRemoved()
{
    const QStringList before = names();
    addSerialPort({QStringLiteral("/dev/x"), QStringLiteral("Drive"), QStringLiteral("Maker")});
    QCOMPARE(names(), before + QStringList{QStringLiteral("/dev/x")});
    QCOMPARE(serialPorts().last().description, QStringLiteral("Drive"));
    QCOMPARE(serialPorts().last().manufacturer, QStringLiteral("Maker"));
    removeSerialPort(QStringLiteral("/dev/x"));
    removeSerialPort(QStringLiteral("/dev/none"));
    QCOMPARE(names(), before);
}

void PortListTest::addingAgainReplacesTheEntryInItsPlace()
{
    const QStringList before = names();
    addSerialPort({QStringLiteral("a"), QStringLiteral("first"), QString()});
    addSerialPort({QStringLiteral("b"), QString(), QString()});
    addSerialPort({QStringLiteral("a"), QStringLiteral("second"), QString()});
    QCOMPARE(names(), before + QStringList({QStringLiteral("a"), QStringLiteral("b")}));
    QCOMPARE(serialPorts().at(before.size()).description, QStringLiteral("second"));
    removeSerialPort(QStringLiteral("a"));
    removeSerialPort(QStringLiteral("b"));
}

void PortListTest::stampChangesWithThePortsOnly()
{
    const QByteArray stamp = portStamp();
    if (QDir("/sys/class/tty").exists()) {
        QVERIFY(stamp.contains(QDir("/sys/class/tty")
                                   .entryList(QDir::AllEntries | QDir::NoDotAndDotDot)
                                   .value(0)
                                   .toLocal8Bit()));
        QCOMPARE(portStamp(), stamp);
    } else {
        QCOMPARE(stamp, QByteArray());
    }
}

// The watch looks once a second, on the main thread.
void PortListTest::watchingTheListCostsNextToNothing()
{
    if (portStamp().isEmpty())
        return;
    serialPorts();
    const std::clock_t before = std::clock();
    for (int look = 0; look < 50; ++look)
        serialPorts();
    const double milliseconds = 1e3 * double(std::clock() - before) / CLOCKS_PER_SEC / 50;
    QVERIFY2(milliseconds < 2, QByteArray::number(milliseconds).constData());
}

QTEST_GUILESS_MAIN(PortListTest)
#include "tst_portlist.moc"
