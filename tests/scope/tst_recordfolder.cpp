// SPDX-License-Identifier: GPL-3.0-or-later
// Who records where, with a second process that is this program again: it takes a folder, tells it, and holds
// it until its input ends.
#include "scope/recordfolder.h"
#include "scope/scoperecord.h"

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#include <cstdio>

namespace {

// Where this is set the program is that second process; where it is empty that takes the folder of a program.
const char placeVariable[] = "VELMORA_TEST_RECORD_PLACE";

class OtherProcess
{
public:
    explicit OtherProcess(const QString &place,
                          const QString &program = QCoreApplication::applicationFilePath())
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QLatin1String(placeVariable), place);
        environment.insert(QStringLiteral("XDG_DATA_HOME"), QFileInfo(program).path() + "/data");
        process.setProcessEnvironment(environment);
        process.start(program, QStringList());
        while (!process.canReadLine() && process.waitForReadyRead(20000)) {
        }
        folder = QString::fromLocal8Bit(process.readLine()).trimmed();
    }
    bool end()
    {
        process.closeWriteChannel();
        return process.waitForFinished(20000) && process.exitCode() == 0;
    }
    bool kill()
    {
        process.kill();
        return process.waitForFinished(20000);
    }

    QString folder;

private:
    QProcess process;
};

} // namespace

class TestRecordFolder : public QObject
{
    Q_OBJECT

private slots:
    void init() { directory = std::make_unique<QTemporaryDir>(); }

    void firstTakesTheUsualName();
    void nextOnesTakeNumbers();
    void otherProcessHoldsItsOwn();
    void recordOfAnotherProcessSurvivesARun();
    void folderIsFreeAgainAfterItsHolder_data();
    void folderIsFreeAgainAfterItsHolder();
    void placeThatTakesNoFilesIsPassedOver();
    void withoutAnyPlaceTheLastIsNamed();
    void programRecordsBesideItselfOrWithTheUser_data();
    void programRecordsBesideItselfOrWithTheUser();
    void windowsOfOneProcessRecordIntoOneFolder();

private:
    QString place(const char *name = "") const
    {
        return QDir(directory->filePath(QLatin1String(name))).path();
    }

    std::unique_ptr<QTemporaryDir> directory;
};

void TestRecordFolder::firstTakesTheUsualName()
{
    const RecordFolder folder({place()});
    QCOMPARE(folder.path(), place("scope"));
    QVERIFY(QDir(folder.path()).exists());
    QVERIFY(QDir(folder.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot).isEmpty());
}

void TestRecordFolder::nextOnesTakeNumbers()
{
    const RecordFolder first({place()});
    auto second = std::make_unique<RecordFolder>(QStringList{place()});
    const RecordFolder third({place()});
    QCOMPARE(second->path(), place("scope-2"));
    QCOMPARE(third.path(), place("scope-3"));
    second.reset();
    QCOMPARE(RecordFolder({place()}).path(), place("scope-2"));
}

void TestRecordFolder::otherProcessHoldsItsOwn()
{
    OtherProcess other(place());
    QCOMPARE(other.folder, place("scope"));
    const RecordFolder own({place()});
    QCOMPARE(own.path(), place("scope-2"));
    QVERIFY(other.end());
}

void TestRecordFolder::recordOfAnotherProcessSurvivesARun()
{
    OtherProcess other(place());
    QFile record(other.folder + "/2026-11-21 10.00_CH1.txt");
    QVERIFY(record.open(QIODevice::WriteOnly));
    record.close();
    const RecordFolder folder({place()});
    ScopeRecord own(folder.path());
    own.open();
    own.close();
    QVERIFY(record.exists());
    QCOMPARE(QDir(own.directory()).entryList(QDir::Files).size(), 4);
    QVERIFY(other.end());
}

void TestRecordFolder::folderIsFreeAgainAfterItsHolder_data()
{
    QTest::addColumn<bool>("killed");
    QTest::newRow("that has ended") << false;
    QTest::newRow("that was killed") << true;
}

void TestRecordFolder::folderIsFreeAgainAfterItsHolder()
{
    QFETCH(bool, killed);
    OtherProcess other(place());
    QVERIFY(killed ? other.kill() : other.end());
    QCOMPARE(RecordFolder({place()}).path(), other.folder);
}

void TestRecordFolder::placeThatTakesNoFilesIsPassedOver()
{
    QFile blocker(place("blocked"));
    QVERIFY(blocker.open(QIODevice::WriteOnly));
    const RecordFolder folder({place("blocked"), place("new/one")});
    QCOMPARE(folder.path(), place("new/one/scope"));
    QVERIFY(QDir(folder.path()).exists());
}

void TestRecordFolder::withoutAnyPlaceTheLastIsNamed()
{
    QFile blocker(place("blocked"));
    QVERIFY(blocker.open(QIODevice::WriteOnly));
    const RecordFolder folder({place("blocked/one"), place("blocked/two")});
    QCOMPARE(folder.path(), place("blocked/two/scope"));
}

void TestRecordFolder::programRecordsBesideItselfOrWithTheUser_data()
{
    QTest::addColumn<bool>("blocked");
    QTest::addColumn<QString>("folder");
    QTest::newRow("its folder takes files") << false << "scope";
    QTest::newRow("its folder takes none") << true << "data/program/scope";
}

void TestRecordFolder::programRecordsBesideItselfOrWithTheUser()
{
    QFETCH(bool, blocked);
    QFETCH(QString, folder);
    QVERIFY(QFile::copy(QCoreApplication::applicationFilePath(), place("program")));
    if (blocked)
        QVERIFY(QFile(place("scope")).open(QIODevice::WriteOnly)); // a file in the folder's place
    OtherProcess other(QString(), place("program"));
    QCOMPARE(other.folder, directory->filePath(folder));
    QVERIFY(QDir(other.folder).exists());
    QVERIFY(other.end());
}

void TestRecordFolder::windowsOfOneProcessRecordIntoOneFolder()
{
    const ScopeRecord one;
    const ScopeRecord other;
    QCOMPARE(one.directory(), other.directory());
}

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    if (qEnvironmentVariableIsSet(placeVariable)) {
        const QString place = QFile::decodeName(qgetenv(placeVariable));
        std::unique_ptr<RecordFolder> own;
        if (!place.isEmpty())
            own = std::make_unique<RecordFolder>(QStringList{place});
        const RecordFolder &folder = own ? *own : RecordFolder::ofThisProcess();
        std::puts(QFile::encodeName(folder.path()).constData());
        std::fflush(stdout);
        while (std::getchar() != EOF) {
        }
        return 0;
    }
    TestRecordFolder test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_recordfolder.moc"
