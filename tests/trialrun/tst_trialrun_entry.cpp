// SPDX-License-Identifier: GPL-3.0-or-later
// How the trial run begins: what it saves, what it sets up, and when its controls may be used.
#include "trialbench.h"
#include "trialrun/holdbutton.h"

#include <QGroupBox>
#include <QSignalSpy>

#include <algorithm>

class TrialRunEntryTest : public QObject
{
    Q_OBJECT

private slots:
    void windowWithoutLinkWaitsForIt();
    void entrySavesSetsUpAndReadsTheTable();
    void framesGoOneByOne();
    void tableShowsTheDrivesValues();
    void controlsWaitForTheTable();
    void foreignReplyWhileSavingStartsAnew_data();
    void foreignReplyWhileSavingStartsAnew();
    void linkThatEndsWhileSavingStartsAnew();
    void readThatMayBeAnsweredTwiceIsAskedAgain();
    void unaskedReplyIsNobodys();
    void maximisedWindowReportsItsTitle();

private:
    static QList<QByteArray> entryFrames();
};

QList<QByteArray> TrialRunEntryTest::entryFrames()
{
    QList<QByteArray> list;
    for (const SavedRegister &saved : savedRegisters)
        list.append(wire::frame(wire::bytes("0103") + word(saved.address) + word(saved.words)));
    return list +
           frames({"0106200B0001", "010620DB0027", "010620DC0028", "010620DD0025", "010620C80701",
                   "011020640001020000", "010320070001", "010320080001", "010320090001", "0103200A0001"});
}

void TrialRunEntryTest::windowWithoutLinkWaitsForIt()
{
    TrialBench bench(false);
    QVERIFY(bench.window->isVisible());
    QVERIFY(!runUntil([&] { return !bench.peer.frames.isEmpty(); }, 350));
    SerialPort::portOpened = true;
    QVERIFY(runUntil([&] { return !bench.peer.frames.isEmpty(); }, 1000));
    QCOMPARE(bench.peer.frames.first(), QByteArray::fromHex("010320ca0001aff4"));
}

void TrialRunEntryTest::entrySavesSetsUpAndReadsTheTable()
{
    TrialBench bench;
    QVERIFY(runUntil([&] { return bench.drive().servoOn()->isEnabled(); }, 5000));
    QCOMPARE(bench.sent(), entryFrames());
    QCOMPARE(bench.peer.frames.count(positionLook), 1);
    QCOMPARE(bench.peer.windowNames.count(QStringLiteral("Trial Run")), bench.peer.frames.size());
}

void TrialRunEntryTest::framesGoOneByOne()
{
    TrialBench bench;
    bench.peer.held = true;
    QVERIFY(runUntil([&] { return !bench.peer.frames.isEmpty(); }, 1000));
    TrialBench::settled();
    QCOMPARE(bench.peer.frames.size(), 1);
    bench.window->handleTrialRun(wire::readReply(wire::bytes("0000")));
    QCOMPARE(bench.peer.frames.size(), 2);
    QCOMPARE(bench.peer.frames.last(), QByteArray::fromHex("0103200b0001fe08"));
}

void TrialRunEntryTest::tableShowsTheDrivesValues()
{
    TrialBench bench;
    bench.peer.registers[0x2007] = 12;
    bench.peer.registers[0x2008] = 60000;
    bench.peer.registers[0x2009] = 0;
    bench.peer.registers[0x200A] = 300;
    QVERIFY(bench.waitUntilReady());
    QCOMPARE(TrialRunDriver::cells(bench.drive().jogTable()), (QStringList{"1.2", "60000", "0", "300"}));
    // The look at the position that ends the row of reads fills nothing.
    QCOMPARE(bench.drive().currentPosition(), QString());
    // What was filled in is not written back.
    TrialBench::settled();
    QVERIFY(bench.peer.frames.isEmpty());
}

void TrialRunEntryTest::controlsWaitForTheTable()
{
    TrialBench bench;
    const TrialRunDriver drive = bench.drive();
    const QList<QWidget *> controls{drive.servoOn(),  drive.servoOff(),   drive.positionRun(), drive.jogRun(),
                                    drive.jogTable(), drive.jogForward(), drive.jogRollback()};
    const auto anyEnabled = [&] {
        return std::any_of(controls.begin(), controls.end(), [](QWidget *w) { return w->isEnabled(); });
    };
    int enabledTooEarly = anyEnabled() ? 1 : 0;
    bench.peer.intercept = [&](const QByteArray &, const QByteArray &usual) {
        enabledTooEarly += anyEnabled() ? 1 : 0;
        return usual;
    };
    QVERIFY(runUntil([&] { return drive.servoOn()->isEnabled(); }, 5000));
    QCOMPARE(bench.peer.frames.size(), 41);
    QCOMPARE(enabledTooEarly, 0);
    QVERIFY(drive.positionRun()->isEnabled());
    QVERIFY(drive.jogTable()->isEnabled());
    QVERIFY(!drive.servoOff()->isEnabled());
    for (const char *box : {"stepBox2", "stepBox3"}) {
        auto *const group = drive.page()->findChild<QGroupBox *>(QLatin1String(box));
        QVERIFY(!group->isEnabled());
        QCOMPARE(group->styleSheet(), QStringLiteral("color:gray"));
    }
}

void TrialRunEntryTest::foreignReplyWhileSavingStartsAnew_data()
{
    QTest::addColumn<QByteArray>("reply");
    QTest::newRow("a probe's") << wire::readReply(wire::bytes("00000001"));
    QTest::newRow("exception") << wire::frame("018302");
    QTest::newRow("of a write") << wire::frame("010620CA0000");
    QTest::newRow("cut short") << wire::frame("01030200");
}

void TrialRunEntryTest::foreignReplyWhileSavingStartsAnew()
{
    QFETCH(QByteArray, reply);
    TrialBench bench;
    int requests = 0;
    bench.peer.intercept = [&](const QByteArray &, const QByteArray &usual) {
        return ++requests == 6 ? reply : usual;
    };
    QVERIFY(bench.waitForFrames(6));
    QCOMPARE(bench.peer.frames.size(), 6);
    QElapsedTimer pause;
    pause.start();
    QVERIFY(runUntil([&] { return bench.peer.frames.size() > 6; }, 2000));
    QVERIFY(pause.elapsed() >= 200);
    bench.peer.frames = bench.peer.frames.mid(6);
    QVERIFY(runUntil([&] { return bench.drive().servoOn()->isEnabled(); }, 5000));
    QCOMPARE(bench.sent(), entryFrames());
    // What goes back is what the second reading gave, each register once.
    bench.peer.frames.clear();
    bench.window->close();
    QVERIFY(bench.waitForFrames(30));
    QCOMPARE(bench.sent().size(), 30);
}

void TrialRunEntryTest::linkThatEndsWhileSavingStartsAnew()
{
    TrialBench bench;
    bench.peer.held = true;
    QVERIFY(runUntil([&] { return !bench.peer.frames.isEmpty(); }, 1000));
    SerialPort::portOpened = false;
    bench.window->linkEnded();
    bench.peer.frames.clear();
    bench.peer.held = false;
    QVERIFY(!runUntil([&] { return !bench.peer.frames.isEmpty(); }, 500));
    SerialPort::portOpened = true;
    QVERIFY(runUntil([&] { return bench.drive().servoOn()->isEnabled(); }, 5000));
    QCOMPARE(bench.sent(), entryFrames());
}

// The second answer to a repeated request has the shape of the next register's.
void TrialRunEntryTest::readThatMayBeAnsweredTwiceIsAskedAgain()
{
    TrialBench bench;
    bench.peer.held = true;
    QVERIFY(runUntil([&] { return !bench.peer.frames.isEmpty(); }, 1000));
    ++SerialPort::repeatCount;
    bench.window->handleTrialRun(wire::readReply(wire::bytes("0000")));
    QCOMPARE(bench.peer.frames.size(), 1);
    // The second answer finds nobody who waits.
    bench.window->handleTrialRun(wire::readReply(wire::bytes("0000")));
    bench.peer.held = false;
    QVERIFY(runUntil([&] { return bench.peer.frames.size() > 1; }, 2000));
    QCOMPARE(bench.peer.frames.at(1), bench.peer.frames.first());
    bench.peer.frames.removeFirst();
    QVERIFY(runUntil([&] { return bench.drive().servoOn()->isEnabled(); }, 5000));
    QCOMPARE(bench.sent(), entryFrames());
}

void TrialRunEntryTest::unaskedReplyIsNobodys()
{
    TrialBench bench;
    QVERIFY(bench.waitUntilReady());
    bench.window->handleTrialRun(wire::readReply(wire::bytes("00000064")));
    TrialBench::settled();
    QVERIFY(bench.peer.frames.isEmpty());
    QCOMPARE(bench.drive().currentPosition(), QString());
}

void TrialRunEntryTest::maximisedWindowReportsItsTitle()
{
    TrialBench bench;
    QSignalSpy reports(bench.window, &TrialRun::windowStateChanged);
    bench.window->showMaximized();
    QCOMPARE(reports.last().first().toString(), QStringLiteral("Trial Run"));
    bench.window->showNormal();
    QCOMPARE(reports.last().first().toString(), QString());
}

QTEST_MAIN(TrialRunEntryTest)
#include "tst_trialrun_entry.moc"
