// SPDX-License-Identifier: GPL-3.0-or-later
#include "link/portlist.h"

#include <QSerialPortInfo>
#include <QTest>

class PortListTest : public QObject
{
    Q_OBJECT

private slots:
    void systemPortsComeFirstInTheirOrder();
    void addedPortIsListedUntilItIsRemoved();
    void addingAgainReplacesTheEntryInItsPlace();
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

QTEST_GUILESS_MAIN(PortListTest)
#include "tst_portlist.moc"
