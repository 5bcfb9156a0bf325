// SPDX-License-Identifier: GPL-3.0-or-later
// The link of the file system that leads to the terminal of a drive.
#include "terminalclient.h"

#include "simulator/simulateddrive.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

using namespace kt500sim;

namespace {

const char probe[] = "010320600002cfd5";
const char probeReply[] = "0103044b540500af57";

} // namespace

class TestPortLink : public QObject
{
    Q_OBJECT

private slots:
    void linkLeadsToTheTerminalWhileItIsOpen()
    {
        QTemporaryDir folder;
        DriveOptions options;
        options.linkPath = folder.filePath(QStringLiteral("drive"));
        SimulatedDrive drive(options);
        QVERIFY(drive.start());
        QCOMPARE(drive.portName(), options.linkPath);
        QCOMPARE(QFile::symLinkTarget(options.linkPath), drive.devicePath());
        TerminalClient client(drive.portName());
        QCOMPARE(client.ask(probe, 9), QByteArray(probeReply));
        drive.stop();
        QVERIFY(!QFile::exists(options.linkPath));
        QVERIFY(QFile::symLinkTarget(options.linkPath).isEmpty());
    }

    void linkOfAnotherDriveStays()
    {
        QTemporaryDir folder;
        DriveOptions options;
        options.linkPath = folder.filePath(QStringLiteral("drive"));
        SimulatedDrive first(options);
        QVERIFY(first.start());
        SimulatedDrive second(options);
        QVERIFY(second.start());
        QCOMPARE(QFile::symLinkTarget(options.linkPath), second.devicePath());
        first.stop();
        QCOMPARE(QFile::symLinkTarget(options.linkPath), second.devicePath());
        TerminalClient client(options.linkPath);
        QCOMPARE(client.ask(probe, 9), QByteArray(probeReply));
    }

    void linkNeverReplacesAFile()
    {
        QTemporaryDir folder;
        DriveOptions options;
        options.linkPath = folder.filePath(QStringLiteral("precious"));
        QFile file(options.linkPath);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("data");
        file.close();
        SimulatedDrive drive(options);
        QString error;
        QVERIFY(!drive.start(&error));
        QVERIFY2(error.contains(QLatin1String("exists and is no symbolic link")), qPrintable(error));
        QVERIFY(!drive.isRunning());
        QCOMPARE(file.size(), qint64(4));
    }

    void staleLinkIsReplaced()
    {
        QTemporaryDir folder;
        DriveOptions options;
        options.linkPath = folder.filePath(QStringLiteral("drive"));
        QVERIFY(QFile::link(QStringLiteral("/dev/null"), options.linkPath));
        SimulatedDrive drive(options);
        QVERIFY(drive.start());
        QCOMPARE(QFile::symLinkTarget(options.linkPath), drive.devicePath());
    }
};

QTEST_APPLESS_MAIN(TestPortLink)
#include "tst_simulator_portlink.moc"
