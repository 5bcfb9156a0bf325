// SPDX-License-Identifier: GPL-3.0-or-later
// The record of a run on disk: names, contents, what survives the next opening, and its copies.
#include "scope/scoperecord.h"

#include "support/fulldisk.h"

#include <QDateTime>
#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

class TestRecordFiles : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void fourFilesBearTheTimeOfOpening();
    void samplesHaveSixDigits_data();
    void samplesHaveSixDigits();
    void headerReplacesWhatTheFileHolds();
    void whatHasArrivedIsOnDisk();
    void openFilesSurviveTheNextOpening();
    void earlierRecordGoesWithTheNextOpening();
    void secondRunOfAMinuteTakesTheNamesOfTheFirst();
    void copyHoldsWhatWasWrittenLast();
    void copyKeepsFilesThatExistAndNamesThem();
    void folderThatTakesNoFilesIsTold();
    void nothingIsWrittenBehindAFailure();

private:
    QByteArray contentOf(const QString &pattern, const QString &folder) const
    {
        const QDir dir(folder);
        QFile file(dir.filePath(dir.entryList({pattern}, QDir::Files).value(0)));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no such file");
    }
    QStringList names() const { return QDir(record->directory()).entryList(QDir::Files, QDir::Name); }
    QString place(const char *name) const { return directory->filePath(QLatin1String(name)); }

    std::unique_ptr<QTemporaryDir> directory;
    std::unique_ptr<ScopeRecord> record;
};

void TestRecordFiles::init()
{
    directory = std::make_unique<QTemporaryDir>();
    record = std::make_unique<ScopeRecord>(place("scope"));
}

void TestRecordFiles::cleanup()
{
    record.reset();
    directory.reset();
}

void TestRecordFiles::fourFilesBearTheTimeOfOpening()
{
    const QDateTime before = QDateTime::currentDateTime();
    record->open();
    const QDateTime after = QDateTime::currentDateTime();
    QVERIFY(record->isOpen());
    QCOMPARE(names().size(), 4);
    for (int channel = 1; channel <= 4; ++channel) {
        const auto named = [channel](const QDateTime &time) {
            return time.toString("yyyy-MM-dd hh.mm") + QStringLiteral("_CH%1.txt").arg(channel);
        };
        QVERIFY(names().at(channel - 1) == named(before) || names().at(channel - 1) == named(after));
    }
}

void TestRecordFiles::samplesHaveSixDigits_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("whole") << 1500.0 << QByteArray("1500");
    QTest::newRow("negative") << -0.25 << QByteArray("-0.25");
    QTest::newRow("a product that is not exact") << 3 * 0.1 << QByteArray("0.3");
    QTest::newRow("large values lose digits") << 1234567.0 << QByteArray("1.23457e+06");
}

void TestRecordFiles::samplesHaveSixDigits()
{
    QFETCH(double, value);
    QFETCH(QByteArray, text);
    record->open();
    record->append(1, {value, 0});
    record->close();
    QCOMPARE(contentOf("*_CH2.txt", record->directory()), text + "\r\n0\r\n");
    QCOMPARE(contentOf("*_CH1.txt", record->directory()), QByteArray());
}

void TestRecordFiles::headerReplacesWhatTheFileHolds()
{
    record->open();
    record->writeHeader(0, QStringLiteral("Pn-F00first"));
    record->append(0, {1, 2, 3});
    record->writeHeader(0, QStringLiteral("Pn-F01second"));
    record->append(0, {4});
    record->close();
    QCOMPARE(contentOf("*_CH1.txt", record->directory()), QByteArray("Pn-F01second\r\n4\r\n"));
}

void TestRecordFiles::whatHasArrivedIsOnDisk()
{
    record->open();
    record->writeHeader(0, QStringLiteral("Pn-F00Motor speed"));
    QCOMPARE(contentOf("*_CH1.txt", record->directory()), QByteArray("Pn-F00Motor speed\r\n"));
    record->append(0, {1, 2});
    QCOMPARE(contentOf("*_CH1.txt", record->directory()), QByteArray("Pn-F00Motor speed\r\n1\r\n2\r\n"));
}

void TestRecordFiles::openFilesSurviveTheNextOpening()
{
    record->open();
    const QStringList before = names();
    record->open();
    QCOMPARE(names(), before);
    record->append(3, {8});
    record->close();
    QCOMPARE(contentOf("*_CH4.txt", record->directory()), QByteArray("8\r\n"));
}

void TestRecordFiles::earlierRecordGoesWithTheNextOpening()
{
    record->open();
    record->append(0, {1});
    record->close();
    QFile(QDir(record->directory()).filePath("stray.txt")).open(QIODevice::WriteOnly);
    record->open();
    record->close();
    QCOMPARE(names().size(), 4);
    QCOMPARE(contentOf("*_CH1.txt", record->directory()), QByteArray());
    record->clearDirectory();
    QCOMPARE(names(), QStringList());
}

void TestRecordFiles::secondRunOfAMinuteTakesTheNamesOfTheFirst()
{
    QStringList first;
    // Within one minute, unless it has just ended between the two.
    for (int attempt = 0; attempt < 2; ++attempt) {
        record->open();
        record->append(0, {1});
        record->close();
        first = names();
        record->open();
        record->append(0, {2});
        record->close();
        if (names() == first)
            break;
    }
    QCOMPARE(names(), first);
    QCOMPARE(first.size(), 4);
    QCOMPARE(contentOf("*_CH1.txt", record->directory()), QByteArray("2\r\n"));
}

void TestRecordFiles::copyHoldsWhatWasWrittenLast()
{
    record->open();
    record->append(0, {42});
    QVERIFY(QDir().mkpath(place("copy")));
    QCOMPARE(record->copyTo(place("copy")), QStringList());
    QCOMPARE(contentOf("*_CH1.txt", place("copy")), QByteArray("42\r\n"));
    QCOMPARE(QDir(place("copy")).entryList(QDir::Files).size(), 4);
}

void TestRecordFiles::copyKeepsFilesThatExistAndNamesThem()
{
    record->open();
    record->append(0, {42});
    QVERIFY(QDir().mkpath(place("copy")));
    const QString taken = names().first();
    QFile earlier(QDir(place("copy")).filePath(taken));
    QVERIFY(earlier.open(QIODevice::WriteOnly));
    earlier.write("mine");
    earlier.close();
    QCOMPARE(record->copyTo(place("copy")), QStringList{taken});
    QCOMPARE(contentOf(taken, place("copy")), QByteArray("mine"));
    QCOMPARE(record->copyTo(place("nowhere")).size(), 4);
}

void TestRecordFiles::folderThatTakesNoFilesIsTold()
{
    QFile blocker(place("file"));
    QVERIFY(blocker.open(QIODevice::WriteOnly));
    ScopeRecord nowhere(place("file") + "/scope");
    QVERIFY(!nowhere.isIncomplete());
    nowhere.open();
    QVERIFY(nowhere.isIncomplete());
    nowhere.writeHeader(0, QStringLiteral("Pn-F00"));
    nowhere.append(0, {1});
    nowhere.close();
}

void TestRecordFiles::nothingIsWrittenBehindAFailure()
{
#ifdef Q_OS_UNIX
    record->open();
    const QVector<double> many(20000, 1);
    {
        const FullDisk disk(30000);
        record->append(0, many);
        record->append(0, many);
        QVERIFY(record->isIncomplete());
    }
    record->append(0, many);
    record->append(1, {1});
    record->close();
    QVERIFY(contentOf("*_CH1.txt", record->directory()).size() <= 30000);
    QCOMPARE(contentOf("*_CH2.txt", record->directory()), QByteArray());
#endif
}

QTEST_GUILESS_MAIN(TestRecordFiles)
#include "tst_recordfiles.moc"
