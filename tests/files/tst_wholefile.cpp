// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/wholefile.h"
#include "support/fulldisk.h"
#include "support/testdirectory.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTest>

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#include <unistd.h>
#endif

class WholeFileTest : public QObject
{
    Q_OBJECT

private slots:
    void whatIsWrittenIsRead_data();
    void whatIsWrittenIsRead();
    void shorterContentLeavesNothingOfTheOld();
    void nothingElseIsLeftInTheFolder();
    void missingFileGivesNothing();
    void folderGivesNothing();
    void fileOfTheLimitIsReadAndOneByteMoreIsNot();
    void folderThatDoesNotExistTakesNoFile();
    void fileTakesNoFileBelowIt();
    void folderIsNotReplacedByAFile();
#ifdef Q_OS_LINUX
    void fileWhoseReadFailsGivesNothing();
#endif
#ifdef Q_OS_UNIX
    void deviceWithoutEndIsNotRead();
    void fullDiskKeepsTheFileThatWasThere_data();
    void fullDiskKeepsTheFileThatWasThere();
    void fullDeviceIsAFailureAndStaysADevice();
    void deviceIsWrittenTo();
    void linkStaysALink();
    void permissionsStay();
    void fileIsWrittenInAFolderThatTakesNoOther();
#endif
};

namespace {

void put(const QString &name, const QByteArray &bytes)
{
    QFile file(name);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("the test can't write its own file");
}

QByteArray contentOf(const QString &name)
{
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no file");
}

#ifdef Q_OS_UNIX
// No rights above those of a common user while this lives.
class CommonUser
{
public:
    CommonUser()
    {
        if (before == 0 && seteuid(65534) != 0)
            qFatal("the test can't give up its rights");
    }
    ~CommonUser()
    {
        if (before == 0 && seteuid(before) != 0)
            qFatal("the test can't take back its rights");
    }
    Q_DISABLE_COPY_MOVE(CommonUser)

private:
    uid_t before = geteuid();
};
#endif

} // namespace

void WholeFileTest::whatIsWrittenIsRead_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QByteArray all;
    for (int i = 0; i < 256; ++i)
        all.append(char(i));
    QTest::newRow("nothing") << QByteArray("");
    QTest::newRow("lines") << QByteArray("one\r\ntwo\n");
    QTest::newRow("every byte") << all;
    QTest::newRow("a megabyte") << QByteArray(1024 * 1024, 'x');
}

void WholeFileTest::whatIsWrittenIsRead()
{
    QFETCH(QByteArray, bytes);
    const TestDirectory directory;
    QVERIFY(writeWholeFile(QStringLiteral("file"), bytes));
    QCOMPARE(contentOf(QStringLiteral("file")), bytes);
    const auto read = readWholeFile(QStringLiteral("file"));
    QVERIFY(read.has_value());
    QCOMPARE(*read, bytes);
}

void WholeFileTest::shorterContentLeavesNothingOfTheOld()
{
    const TestDirectory directory;
    put(QStringLiteral("file"), "a long content");
    QVERIFY(writeWholeFile(QStringLiteral("file"), "short"));
    QCOMPARE(contentOf(QStringLiteral("file")), QByteArray("short"));
}

void WholeFileTest::nothingElseIsLeftInTheFolder()
{
    const TestDirectory directory;
    put(QStringLiteral("file"), "old");
    QVERIFY(writeWholeFile(QStringLiteral("file"), "new"));
    QCOMPARE(QDir(directory.path()).entryList(QDir::Files | QDir::Hidden), QStringList{"file"});
}

void WholeFileTest::missingFileGivesNothing()
{
    const TestDirectory directory;
    QVERIFY(!readWholeFile(QStringLiteral("file")).has_value());
}

void WholeFileTest::folderGivesNothing()
{
    const TestDirectory directory;
    QVERIFY(!readWholeFile(directory.path()).has_value());
}

void WholeFileTest::fileOfTheLimitIsReadAndOneByteMoreIsNot()
{
    const TestDirectory directory;
    put(QStringLiteral("file"), QByteArray(int(wholeFileLimit), 'x'));
    const auto read = readWholeFile(QStringLiteral("file"));
    QVERIFY(read.has_value());
    QCOMPARE(qint64(read->size()), wholeFileLimit);
    put(QStringLiteral("file"), QByteArray(int(wholeFileLimit) + 1, 'x'));
    QVERIFY(!readWholeFile(QStringLiteral("file")).has_value());
}

void WholeFileTest::folderThatDoesNotExistTakesNoFile()
{
    const TestDirectory directory;
    QVERIFY(!writeWholeFile(QStringLiteral("missing/file"), "new"));
    QVERIFY(!QFileInfo::exists(QStringLiteral("missing")));
}

void WholeFileTest::fileTakesNoFileBelowIt()
{
    const TestDirectory directory;
    put(QStringLiteral("plain"), "old");
    QVERIFY(!writeWholeFile(QStringLiteral("plain/file"), "new"));
    QCOMPARE(contentOf(QStringLiteral("plain")), QByteArray("old"));
}

void WholeFileTest::folderIsNotReplacedByAFile()
{
    const TestDirectory directory;
    QVERIFY(QDir(directory.path()).mkdir(QStringLiteral("folder")));
    QVERIFY(!writeWholeFile(QStringLiteral("folder"), "new"));
    QVERIFY(QFileInfo(QStringLiteral("folder")).isDir());
}

#ifdef Q_OS_LINUX
void WholeFileTest::fileWhoseReadFailsGivesNothing()
{
    // It can be opened, but there is no memory at its start.
    const QString name = QStringLiteral("/proc/self/mem");
    QFile file(name);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QVERIFY(!readWholeFile(name).has_value());
}
#endif

#ifdef Q_OS_UNIX
void WholeFileTest::deviceWithoutEndIsNotRead()
{
    QVERIFY(!readWholeFile(QStringLiteral("/dev/zero")).has_value());
}

void WholeFileTest::fullDiskKeepsTheFileThatWasThere_data()
{
    QTest::addColumn<int>("size");
    QTest::newRow("one byte too much") << 1001;
    QTest::newRow("less than a buffer") << 5000;
    QTest::newRow("many buffers") << 100000;
}

void WholeFileTest::fullDiskKeepsTheFileThatWasThere()
{
    QFETCH(int, size);
    const TestDirectory directory;
    put(QStringLiteral("file"), "old");
    {
        const FullDisk disk(1000);
        QVERIFY(!writeWholeFile(QStringLiteral("file"), QByteArray(size, 'x')));
    }
    QCOMPARE(contentOf(QStringLiteral("file")), QByteArray("old"));
    QCOMPARE(QDir(directory.path()).entryList(QDir::Files | QDir::Hidden), QStringList{"file"});
}

void WholeFileTest::fullDeviceIsAFailureAndStaysADevice()
{
    const TestDirectory directory;
    QVERIFY(QFile::link(QStringLiteral("/dev/full"), QStringLiteral("file")));
    QVERIFY(!writeWholeFile(QStringLiteral("file"), "new"));
    QVERIFY(QFileInfo(QStringLiteral("file")).isSymLink());
    struct stat status
    {
    };
    QCOMPARE(stat("/dev/full", &status), 0);
    QVERIFY(S_ISCHR(status.st_mode));
}

void WholeFileTest::deviceIsWrittenTo()
{
    QVERIFY(writeWholeFile(QStringLiteral("/dev/null"), "new"));
    struct stat status
    {
    };
    QCOMPARE(stat("/dev/null", &status), 0);
    QVERIFY(S_ISCHR(status.st_mode));
}

void WholeFileTest::linkStaysALink()
{
    const TestDirectory directory;
    put(QStringLiteral("file"), "old");
    QVERIFY(QFile::link(QStringLiteral("file"), QStringLiteral("link")));
    QVERIFY(writeWholeFile(QStringLiteral("link"), "new"));
    QVERIFY(QFileInfo(QStringLiteral("link")).isSymLink());
    QCOMPARE(contentOf(QStringLiteral("file")), QByteArray("new"));
}

void WholeFileTest::permissionsStay()
{
    const TestDirectory directory;
    put(QStringLiteral("file"), "old");
    QCOMPARE(chmod("file", 0640), 0);
    QVERIFY(writeWholeFile(QStringLiteral("file"), "new"));
    struct stat status
    {
    };
    QCOMPARE(stat("file", &status), 0);
    QCOMPARE(int(status.st_mode & 0777), 0640);
}

void WholeFileTest::fileIsWrittenInAFolderThatTakesNoOther()
{
    const TestDirectory directory;
    put(QStringLiteral("file"), "an old content");
    QCOMPARE(chmod("file", 0666), 0);
    QCOMPARE(chmod(".", 0555), 0);
    bool written = false;
    bool another = true;
    {
        const CommonUser user;
        written = writeWholeFile(QStringLiteral("file"), "new");
        another = writeWholeFile(QStringLiteral("another"), "new");
    }
    QCOMPARE(chmod(".", 0755), 0);
    QVERIFY(written);
    QVERIFY(!another);
    QCOMPARE(contentOf(QStringLiteral("file")), QByteArray("new"));
}
#endif

QTEST_GUILESS_MAIN(WholeFileTest)
#include "tst_wholefile.moc"
