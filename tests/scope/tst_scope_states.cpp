// SPDX-License-Identifier: GPL-3.0-or-later
// The scope window's states, each left by every way out.
#include "scopebench.h"

#include "support/filedialoganswers.h"
#include "support/testdirectory.h"

using Tool = ScopeToolBar::Tool;

namespace {

const char *const fourNarrow = "0114 1000 1001 1002 1003";
const char *const firstOnly = "0114 1000 0000 0000 0000";
const char *const sampleOfFirst = "0114 000e 1001 0064 0000 0000 0000"; // 100 on CH1

QStringList stopLog()
{
    return {scopelog::withdrawal, "ended", scopelog::stopFrame, "stopped"};
}

} // namespace

class TestScopeStates : public QObject
{
    Q_OBJECT

public:
    enum State { Idle, FreeRun, Armed, Ending, StoppedByCondition, WithoutPort, Replaying };
    enum Way { Click, LinkLost, Close, Chunk, Open };
    Q_ENUM(State)
    Q_ENUM(Way)

private slots:
    void init();

    void everyStateIsLeftByEveryWay_data();
    void everyStateIsLeftByEveryWay();
    void conditionAndTimerLeadToTheEnd();
    void endOfTheFileEndsTheReplay();
    void windowWithoutAPortShowsARunThatNothingFeeds();
    void fieldsOfTheConditionStayOpenDuringItsRun();
    void enablingTheConditionDuringAReplayStartsNothing();
    void enablingTheConditionAfterARunItEndedShowsRun();
    void linkSlotsOutsideARunSendWhatTheySay();

private:
    void bring(ScopeBench *bench, State state);
    std::unique_ptr<TestDirectory> directory;
};

void TestScopeStates::init()
{
    directory.reset(); // it goes back to where it came from
    directory = std::make_unique<TestDirectory>();
    directory->setLanguage(QStringLiteral("en_US"));
}

void TestScopeStates::bring(ScopeBench *bench, State state)
{
    switch (state) {
    case Idle:
        break;
    case FreeRun:
        bench->run();
        break;
    case Armed:
    case Ending:
    case StoppedByCondition:
        bench->panel->stopBox->click();
        bench->panel->stopValueEdit->setText(QStringLiteral("100"));
        if (state == StoppedByCondition)
            bench->panel->lastForEdit->setText(QStringLiteral("0"));
        bench->run();
        if (state != Armed)
            bench->take(sampleOfFirst);
        if (state == StoppedByCondition)
            QTRY_COMPARE(bench->runText(), QString("Run"));
        break;
    case WithoutPort:
        SerialPort::portOpened = false;
        bench->run();
        SerialPort::portOpened = true;
        break;
    case Replaying: {
        QFile file(QStringLiteral("long.txt"));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("Pn-F00Motor speed\r\n" + QByteArray("1\r\n").repeated(300000));
        file.close();
        FileDialogAnswers dialogs;
        dialogs.expect(QStringLiteral("Open txt file"), QStringLiteral("long.txt"));
        bench->tool(Tool::Open)->trigger();
        break;
    }
    }
    bench->log.clear();
    bench->batches.clear();
}

void TestScopeStates::everyStateIsLeftByEveryWay_data()
{
    QTest::addColumn<State>("state");
    QTest::addColumn<Way>("way");
    QTest::addColumn<QStringList>("log");
    QTest::addColumn<QString>("runText");

    const auto row = [](const char *name, State state, Way way, const QStringList &log, const char *runText) {
        QTest::newRow(name) << state << way << log << runText;
    };
    const QStringList lost{scopelog::withdrawal, "ended", "stopped"};
    const QStringList free{"live", scopelog::request(fourNarrow), "running"};
    const QStringList conditional{"live", scopelog::request(firstOnly), "running"};
    const QStringList closed{"ended"};
    const QStringList halted{"ended", scopelog::stopFrame};
    const QStringList replay{"live"};

    row("idle, click", Idle, Click, free, "Stop");
    row("idle, link lost", Idle, LinkLost, {}, "Run");
    row("idle, close", Idle, Close, closed, "Run");
    row("idle, chunk", Idle, Chunk, {}, "Run");
    row("idle, open", Idle, Open, replay, "Stop");
    row("free run, click", FreeRun, Click, stopLog(), "Run");
    row("free run, link lost", FreeRun, LinkLost, lost, "Run");
    row("free run, close", FreeRun, Close, halted, "Stop");
    row("free run, open", FreeRun, Open, stopLog() + replay, "Stop");
    row("armed, click", Armed, Click, stopLog(), "Run");
    row("armed, link lost", Armed, LinkLost, lost, "Run");
    row("armed, close", Armed, Close, halted, "Stop");
    row("armed, condition", Armed, Chunk, {}, "Stop");
    row("armed, open", Armed, Open, stopLog() + replay, "Stop");
    row("ending, click", Ending, Click, stopLog(), "Run");
    row("ending, link lost", Ending, LinkLost, lost, "Run");
    row("ending, close", Ending, Close, halted, "Stop");
    row("ending, open", Ending, Open, stopLog() + replay, "Stop");
    row("stopped, click", StoppedByCondition, Click, conditional, "Stop");
    row("stopped, link lost", StoppedByCondition, LinkLost, {}, "Run");
    row("stopped, close", StoppedByCondition, Close, closed, "Run");
    row("stopped, chunk", StoppedByCondition, Chunk, {scopelog::stopFrame, scopelog::stopFrame}, "Run");
    row("stopped, open", StoppedByCondition, Open, replay, "Stop");
    row("without port, click", WithoutPort, Click, stopLog(), "Run");
    row("without port, link lost", WithoutPort, LinkLost, {}, "Stop");
    row("without port, close", WithoutPort, Close, closed, "Stop");
    row("without port, chunk", WithoutPort, Chunk, {}, "Stop");
    row("without port, open", WithoutPort, Open, stopLog() + replay, "Stop");
    row("replay, click", Replaying, Click, stopLog(), "Run");
    row("replay, link lost", Replaying, LinkLost, {}, "Stop");
    row("replay, close", Replaying, Close, closed, "Stop");
    row("replay, chunk", Replaying, Chunk, {}, "Stop");
    row("replay, open", Replaying, Open, stopLog() + replay, "Stop");
}

void TestScopeStates::everyStateIsLeftByEveryWay()
{
    QFETCH(State, state);
    QFETCH(Way, way);
    ScopeBench bench;
    bring(&bench, state);
    switch (way) {
    case Click:
        bench.run();
        break;
    case LinkLost:
        SerialPort::reconnecting = true;
        emit bench.link.stopscope();
        break;
    case Close:
        bench.close();
        break;
    case Chunk:
        bench.take(sampleOfFirst);
        break;
    case Open: {
        QFile file(QStringLiteral("short.txt"));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write("Pn-F01Speed command\r\n") > 0);
        file.close();
        FileDialogAnswers dialogs;
        dialogs.expect(QStringLiteral("Open txt file"), QStringLiteral("short.txt"));
        bench.tool(Tool::Open)->trigger();
        break;
    }
    }
    QTEST(bench.log, "log");
    QTEST(bench.runText(), "runText");
    QCOMPARE(bench.tool(Tool::Run)->toolTip(), bench.runText());
    const QIcon icon = bench.tool(Tool::Run)->icon();
    const QIcon expected(bench.runText() == "Stop" ? ":/pic/pic/stop.png" : ":/pic/pic/start.png");
    QCOMPARE(icon.pixmap(16).toImage(), expected.pixmap(16).toImage());
}

void TestScopeStates::conditionAndTimerLeadToTheEnd()
{
    ScopeBench bench;
    bring(&bench, Armed);
    bench.panel->lastForEdit->setText(QStringLiteral("30"));
    bench.take("0114 000e 1001 0063 0000 0000 0000"); // 99
    QCOMPARE(bench.batches.size(), 0);
    QCOMPARE(bench.data(1), QString("0"));
    bench.take(sampleOfFirst);
    QCOMPARE(bench.batches.size(), 1);
    QCOMPARE(bench.data(1), QString("100"));
    QTRY_COMPARE(bench.runText(), QString("Run"));
    QCOMPARE(bench.log, (QStringList{scopelog::stopFrame, "stopped"}));
    QVERIFY(bench.tool(Tool::Clear)->isEnabled());
    QVERIFY(bench.panel->stopBox->isEnabled());
    QVERIFY(bench.panel->stopValueEdit->isEnabled());
    for (int number = 1; number <= 4; ++number)
        QVERIFY(bench.channel(number)->checkBox->isEnabled());
}

void TestScopeStates::endOfTheFileEndsTheReplay()
{
    ScopeBench bench;
    bring(&bench, Replaying);
    QTRY_COMPARE_WITH_TIMEOUT(bench.runText(), QString("Run"), 60000);
    QCOMPARE(bench.log, stopLog());
    QVERIFY(bench.tool(Tool::Clear)->isEnabled());
}

void TestScopeStates::windowWithoutAPortShowsARunThatNothingFeeds()
{
    ScopeBench bench;
    SerialPort::portOpened = false;
    bench.run();
    QCOMPARE(bench.log, QStringList{"live"});
    QCOMPARE(bench.runText(), QString("Stop"));
    QVERIFY(bench.panel->stopBox->isEnabled());
    bench.panel->stopBox->click(); // the text follows the state
    QCOMPARE(bench.runText(), QString("Stop"));
}

void TestScopeStates::fieldsOfTheConditionStayOpenDuringItsRun()
{
    ScopeBench bench;
    bring(&bench, Armed);
    QVERIFY(bench.panel->stopValueEdit->isEnabled());
    QVERIFY(bench.panel->stopOperationButtons.at(0)->isEnabled());
    bench.panel->stopOperationButtons.at(1)->click(); // "="
    bench.take("0114 000e 1001 0065 0000 0000 0000"); // 101
    QCOMPARE(bench.batches.size(), 0);
    bench.take(sampleOfFirst);
    QCOMPARE(bench.batches.size(), 1);
}

void TestScopeStates::enablingTheConditionDuringAReplayStartsNothing()
{
    ScopeBench bench;
    bring(&bench, Replaying);
    bench.panel->stopBox->click();
    QCOMPARE(bench.runText(), QString("Stop"));
    QTRY_COMPARE_WITH_TIMEOUT(bench.runText(), QString("Run"), 60000);
    QVERIFY(!bench.log.contains("running"));
}

void TestScopeStates::enablingTheConditionAfterARunItEndedShowsRun()
{
    ScopeBench bench;
    bring(&bench, StoppedByCondition);
    bench.panel->stopBox->click(); // off
    bench.log.clear();
    bench.panel->stopBox->click(); // and on again
    QCOMPARE(bench.runText(), QString("Run"));
    QCOMPARE(bench.log, QStringList{scopelog::withdrawal}); // the stream is not told to stop
}

void TestScopeStates::linkSlotsOutsideARunSendWhatTheySay()
{
    ScopeBench bench;
    QMetaObject::invokeMethod(bench.scope, "communicationLostSlot");
    QCOMPARE(bench.log, QStringList{scopelog::withdrawal});
    bench.log.clear();
    bench.scope->closeWindowSlot();
    QCOMPARE(bench.log, QStringList());
    bench.run();
    bench.log.clear();
    bench.scope->closeWindowSlot();
    QCOMPARE(bench.log, QStringList{scopelog::stopFrame});
}

QTEST_MAIN(TestScopeStates)
#include "tst_scope_states.moc"
