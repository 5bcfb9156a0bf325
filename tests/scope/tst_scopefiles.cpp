// SPDX-License-Identifier: GPL-3.0-or-later
// The record saved, a file replayed, the picture saved: dialogs, boxes, and what the window shows of it.
#include "scopebench.h"

#include "scope/scoperecord.h"
#include "support/filedialoganswers.h"
#include "support/fulldisk.h"
#include "support/modalanswers.h"
#include "support/testdirectory.h"

#include <QDir>
#include <QImage>
#include <QSettings>

using Tool = ScopeToolBar::Tool;

class TestScopeFiles : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void firstSaveMakesAFolderOfItsOwn();
    void laterSaveTakesTheFolderChosen();
    void namesThatAreTakenAreTold();
    void recordsOwnFolderIsRefused();
    void cancelledSaveChangesNothing();
    void saveDuringARunHoldsWhatHasArrived();
    void failedWriteIsToldAfterTheStop();
    void replayShowsTheFileOnTheFirstChannel();
    void replayOfAnUnknownItemKeepsTheChannel();
    void shortFileShowsNothing();
    void foreignFileIsRefusedAndTheUserEndsIt();
    void fileThatCannotBeOpenedIsTold();
    void endOfAnEarlierReplayLeavesTheNextAlone();
    void cancelledOpenLeavesTheRunAlone();
    void replayLeavesTheRecordAlone();
    void pictureIsSavedByItsSuffix();

private:
    void write(const char *name, const QByteArray &content) const;
    void open(ScopeBench *bench, const char *name) const;
    static void record(ScopeBench *bench);
    static QString setting(const char *key);
    QStringList names(const char *folder) const { return QDir(QLatin1String(folder)).entryList(QDir::Files); }

    std::unique_ptr<TestDirectory> directory;
};

namespace {

const QString saved = QStringLiteral("Successfully save scope data file!");
const QString saveTitle = QStringLiteral("Save File");
const QString openTitle = QStringLiteral("Open txt file");

QString recordFolder()
{
    return ScopeRecord().directory();
}

QByteArray numbered(const char *header, int lines)
{
    QByteArray content = QByteArray(header) + "\r\n";
    for (int line = 1; line < lines; ++line)
        content += QByteArray::number(line) + "\r\n";
    return content;
}

} // namespace

void TestScopeFiles::init()
{
    directory.reset(); // it goes back to where it came from
    directory = std::make_unique<TestDirectory>();
    directory->setLanguage(QStringLiteral("en_US"));
}

void TestScopeFiles::write(const char *name, const QByteArray &content) const
{
    QFile file{QLatin1String(name)};
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
}

void TestScopeFiles::open(ScopeBench *bench, const char *name) const
{
    FileDialogAnswers dialogs;
    dialogs.expect(openTitle, QLatin1String(name));
    bench->tool(Tool::Open)->trigger();
}

void TestScopeFiles::record(ScopeBench *bench)
{
    bench->run();
    bench->take("0114 0014 1001 0001 1001 0002 1001 0003 1001 0004");
    bench->run();
}

QString TestScopeFiles::setting(const char *key)
{
    QSettings settings("settings.ini", QSettings::IniFormat);
    return settings.value(QLatin1String("SavePath/") + QLatin1String(key)).toString();
}

void TestScopeFiles::firstSaveMakesAFolderOfItsOwn()
{
    ScopeBench bench;
    record(&bench);
    QVERIFY(QDir().mkpath("chosen"));
    FileDialogAnswers dialogs;
    dialogs.expect(saveTitle, QStringLiteral("chosen"));
    ModalAnswers boxes;
    boxes.expect(saved);
    bench.tool(Tool::Save)->trigger();
    QCOMPARE(boxes.seen.first().title, QString());
    QCOMPARE(names("chosen/scope").size(), 4);
    QCOMPARE(names("chosen/scope"), QDir(recordFolder()).entryList(QDir::Files));
    QCOMPARE(setting("saveFilePath"), directory->path() + "/chosen/scope");
    QFile third("chosen/scope/" + names("chosen/scope").at(2));
    QVERIFY(third.open(QIODevice::ReadOnly));
    QCOMPARE(third.readAll(), QByteArray("Pn-F02Speed analog command\r\n0.03\r\n"));
}

void TestScopeFiles::laterSaveTakesTheFolderChosen()
{
    ScopeBench bench;
    QSettings("settings.ini", QSettings::IniFormat).setValue("SavePath/saveFilePath", directory->path());
    QVERIFY(QDir().mkpath("second"));
    FileDialogAnswers dialogs;
    dialogs.expect(saveTitle, QStringLiteral("second"));
    ModalAnswers boxes;
    boxes.expect(saved); // nothing has been recorded, and success is told all the same
    bench.tool(Tool::Save)->trigger();
    QCOMPARE(names("second"), QStringList());
    QCOMPARE(setting("saveFilePath"), directory->path() + "/second");
}

void TestScopeFiles::namesThatAreTakenAreTold()
{
    ScopeBench bench;
    record(&bench);
    QVERIFY(QDir().mkpath("second/scope"));
    const QString taken = QDir(recordFolder()).entryList(QDir::Files).at(1);
    write(qPrintable("second/scope/" + taken), "mine");
    FileDialogAnswers dialogs;
    dialogs.expect(saveTitle, QStringLiteral("second"));
    ModalAnswers boxes;
    boxes.expect(saved + "\nNot saved, since the name is taken or the folder takes no files:\n" + taken);
    bench.tool(Tool::Save)->trigger();
    QCOMPARE(names("second/scope").size(), 4);
}

void TestScopeFiles::recordsOwnFolderIsRefused()
{
    ScopeBench bench;
    record(&bench);
    const QString before = QCoreApplication::applicationDirPath();
    QSettings("settings.ini", QSettings::IniFormat).setValue("SavePath/saveFilePath", before);
    FileDialogAnswers dialogs;
    dialogs.expect(saveTitle, recordFolder());
    ModalAnswers boxes;
    boxes.expect(QStringLiteral("The record already lies in this folder, and the next run deletes it. Please "
                                "choose another folder."));
    bench.tool(Tool::Save)->trigger();
    QCOMPARE(setting("saveFilePath"), before);
    QCOMPARE(QDir(recordFolder()).entryList(QDir::Files).size(), 4);
}

void TestScopeFiles::cancelledSaveChangesNothing()
{
    ScopeBench bench;
    FileDialogAnswers dialogs;
    dialogs.expectCancelled(saveTitle);
    bench.tool(Tool::Save)->trigger();
    QCOMPARE(setting("saveFilePath"), QString());
    QVERIFY(!QDir("scope").exists());
}

void TestScopeFiles::saveDuringARunHoldsWhatHasArrived()
{
    ScopeBench bench;
    bench.run();
    bench.take("0114 0014 1001 0001 1001 0002 1001 0003 1001 0004");
    QVERIFY(QDir().mkpath("chosen"));
    FileDialogAnswers dialogs;
    dialogs.expect(saveTitle, QStringLiteral("chosen"));
    ModalAnswers boxes;
    boxes.expect(saved);
    bench.tool(Tool::Save)->trigger();
    QFile first("chosen/scope/" + names("chosen/scope").first());
    QVERIFY(first.open(QIODevice::ReadOnly));
    QCOMPARE(first.readAll(), QByteArray("Pn-F00Motor speed\r\n1\r\n"));
    QCOMPARE(bench.runText(), QString("Stop"));
}

void TestScopeFiles::failedWriteIsToldAfterTheStop()
{
#ifdef Q_OS_UNIX
    ScopeBench bench;
    bench.run();
    {
        const FullDisk disk(4096);
        for (int i = 0; i < 5000; ++i)
            bench.take("0114 0014 1001 0001 1001 0002 1001 0003 1001 0004");
    }
    QCOMPARE(bench.data(1), QString("1"));
    ModalAnswers boxes;
    boxes.expect(
        QStringLiteral("The samples could not all be written to disk, the scope data files are incomplete!"));
    bench.run();
    QCOMPARE(bench.log.last(), QString("stopped")); // the end does not wait for the user
    QTRY_VERIFY(boxes.isDone());
    record(&bench); // the next run has nothing to tell
    QCoreApplication::processEvents();
#endif
}

void TestScopeFiles::replayShowsTheFileOnTheFirstChannel()
{
    ScopeBench bench;
    write("replay.txt", numbered("Pn-F02Speed analog command", 2500));
    open(&bench, "replay.txt");
    QCOMPARE(bench.runText(), QString("Stop"));
    QVERIFY(!bench.tool(Tool::Clear)->isEnabled());
    QVERIFY(!bench.channel(1)->comboBox->isEnabled());
    QTRY_COMPARE_WITH_TIMEOUT(bench.runText(), QString("Run"), 10000);
    QCOMPARE(setting("openFilePath"), directory->path());
    QCOMPARE(bench.channel(1)->comboBox->currentIndex(), 2);
    QCOMPARE(bench.log, (QStringList{"live", scopelog::withdrawal, "ended", scopelog::stopFrame, "stopped"}));
    // The plot leaves out the first batch.
    QCOMPARE(bench.plot->plotData().channelPoints[0].size(), 1500);
    QCOMPARE(bench.plot->plotData().channelPoints[1].size(), 0);
    QCOMPARE(bench.data(1), QString("2499"));
    // A hundredth is the unit of this item.
    emit bench.plot->sendMoveLineYSignal({1, 2, 3, 4});
    QCOMPARE(bench.data(1), QString("1.00"));
}

void TestScopeFiles::replayOfAnUnknownItemKeepsTheChannel()
{
    ScopeBench bench;
    write("replay.txt", numbered("PN-F02Speed analog command", 1200));
    open(&bench, "replay.txt");
    QTRY_COMPARE_WITH_TIMEOUT(bench.runText(), QString("Run"), 10000);
    QCOMPARE(bench.channel(1)->comboBox->currentIndex(), 0);
    QCOMPARE(bench.plot->plotData().channelPoints[0].size(), 200);
}

void TestScopeFiles::shortFileShowsNothing()
{
    ScopeBench bench;
    write("replay.txt", numbered("Pn-F00Motor speed", 999));
    open(&bench, "replay.txt");
    QTRY_COMPARE_WITH_TIMEOUT(bench.runText(), QString("Run"), 10000);
    QCOMPARE(bench.plot->plotData().channelPoints[0].size(), 0);
    QCOMPARE(bench.data(1), QString("998"));
    // The last batch of a file of whole thousands is empty, and leaves the field alone.
    write("replay.txt", numbered("Pn-F00Motor speed", 1000));
    open(&bench, "replay.txt");
    QTRY_COMPARE_WITH_TIMEOUT(bench.runText(), QString("Run"), 10000);
    QCOMPARE(bench.data(1), QString("999"));
}

void TestScopeFiles::foreignFileIsRefusedAndTheUserEndsIt()
{
    ScopeBench bench;
    write("letter.txt", "Dear Sir,\r\n");
    ModalAnswers boxes;
    boxes.expect(QStringLiteral("Open Scope Data File Error!"));
    open(&bench, "letter.txt");
    QTRY_VERIFY(boxes.isDone());
    QCOMPARE(bench.runText(), QString("Stop"));
    bench.run();
    QCOMPARE(bench.runText(), QString("Run"));
}

void TestScopeFiles::fileThatCannotBeOpenedIsTold()
{
    ScopeBench bench;
    write("gone.txt", "Pn-F00\r\n");
    FileDialogAnswers dialogs;
    dialogs.expect(openTitle, QStringLiteral("gone.txt"), [] { QFile::remove("gone.txt"); });
    ModalAnswers boxes;
    boxes.expect(QStringLiteral("Open Scope File Failed!"));
    bench.tool(Tool::Open)->trigger();
    QTRY_VERIFY(boxes.isDone());
    QCOMPARE(bench.runText(), QString("Stop"));
    bench.run();
    QCOMPARE(bench.runText(), QString("Run"));
}

void TestScopeFiles::endOfAnEarlierReplayLeavesTheNextAlone()
{
    ScopeBench bench;
    write("short.txt", "Pn-F00Motor speed\r\n");
    write("long.txt", "Pn-F00Motor speed\r\n" + QByteArray("1\r\n").repeated(500000));
    open(&bench, "short.txt");
    // Its header has been taken, and its end is due in a moment.
    QTRY_COMPARE(bench.plot->plotData().channelPoints[0].size(), 0);
    open(&bench, "long.txt");
    bench.log.clear();
    QTRY_VERIFY(bench.plot->plotData().channelPoints[0].size() > 100000);
    QCOMPARE(bench.runText(), QString("Stop"));
    QTRY_COMPARE_WITH_TIMEOUT(bench.runText(), QString("Run"), 30000);
    QCOMPARE(bench.plot->plotData().channelPoints[0].size(), 500001 - 1000);
}

void TestScopeFiles::cancelledOpenLeavesTheRunAlone()
{
    ScopeBench bench;
    bench.run();
    bench.log.clear();
    FileDialogAnswers dialogs;
    dialogs.expectCancelled(openTitle);
    bench.tool(Tool::Open)->trigger();
    QCOMPARE(bench.log, QStringList());
    QCOMPARE(bench.runText(), QString("Stop"));
}

void TestScopeFiles::replayLeavesTheRecordAlone()
{
    ScopeBench bench;
    record(&bench);
    const QStringList before = QDir(recordFolder()).entryList(QDir::Files);
    write("replay.txt", numbered("Pn-F00Motor speed", 1100));
    open(&bench, "replay.txt");
    bench.take("0114 0014 1001 0009 1001 0009 1001 0009 1001 0009");
    QTRY_COMPARE_WITH_TIMEOUT(bench.runText(), QString("Run"), 10000);
    QCOMPARE(QDir(recordFolder()).entryList(QDir::Files), before);
    QFile first(recordFolder() + "/" + before.first());
    QVERIFY(first.open(QIODevice::ReadOnly));
    QCOMPARE(first.readAll(), QByteArray("Pn-F00Motor speed\r\n1\r\n"));
}

void TestScopeFiles::pictureIsSavedByItsSuffix()
{
    ScopeBench bench;
    bench.scope->resize(900, 685);
    bench.scope->show();
    record(&bench);
    for (const char *name : {"wave.png", "wave.jpg", "wave.bmp"}) {
        FileDialogAnswers dialogs;
        dialogs.expect(QStringLiteral("SaveWaveImage"), QLatin1String(name));
        ModalAnswers boxes;
        boxes.expect(QStringLiteral("Succeed Save Wave Image "));
        bench.tool(Tool::PrintScreen)->trigger();
        QCOMPARE(boxes.seen.first().title, QString("Save  Wave Image"));
        QCOMPARE(QImage(QLatin1String(name)).size(), bench.plot->size());
    }
    QCOMPARE(setting("savePixmapPath"), directory->path());
}

QTEST_MAIN(TestScopeFiles)
#include "tst_scopefiles.moc"
