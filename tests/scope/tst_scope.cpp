// SPDX-License-Identifier: GPL-3.0-or-later
// The scope window's states, each left by every way out, and what a run shows.
#include "scopebench.h"

#include "support/filedialoganswers.h"
#include "support/modalanswers.h"
#include "support/testdirectory.h"

#include <QDir>
#include <QSettings>

using Tool = ScopeToolBar::Tool;

class TestScope : public QObject
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
    void runLocksThePictureToolsAndTheChannels();
    void windowWithoutAPortShowsARunThatNothingFeeds();
    void framesBearTheNameOfTheWindow();
    void dataFieldsShowTheLastSamples();
    void channelThatIsOffShowsZero();
    void conditionTakesItsChannelOnly();
    void fieldsOfTheConditionStayOpenDuringItsRun();
    void conditionStartsAtTheFirstChannelWhateverTheButtonsShow();
    void emptyFieldsOfTheConditionCountAsZero();
    void enablingTheConditionDuringAReplayStartsNothing();
    void enablingTheConditionAfterARunItEndedShowsRun();
    void firstBatchIsRecordedAndNotDrawn();
    void clearEmptiesThePictureAndTheFields();
    void linkSlotsOutsideARunSendWhatTheySay();
    void closingKeepsTheRangeIfAsked();
    void maximizedWindowReportsItsTitle();

private:
    void bring(ScopeBench *bench, State state);
    std::unique_ptr<TestDirectory> directory;
};

namespace {

const char *const fourNarrow = "0114 1000 1001 1002 1003";
const char *const firstOnly = "0114 1000 0000 0000 0000";
const char *const sampleOfFirst = "0114 000e 1001 0064 0000 0000 0000"; // 100 on CH1

QStringList stopLog()
{
    return {scopelog::withdrawal, "ended", scopelog::stopFrame, "stopped"};
}

} // namespace

void TestScope::init()
{
    directory.reset(); // it goes back to where it came from
    directory = std::make_unique<TestDirectory>();
    directory->setLanguage(QStringLiteral("en_US"));
}

void TestScope::bring(ScopeBench *bench, State state)
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

void TestScope::everyStateIsLeftByEveryWay_data()
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

void TestScope::everyStateIsLeftByEveryWay()
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

void TestScope::conditionAndTimerLeadToTheEnd()
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

void TestScope::endOfTheFileEndsTheReplay()
{
    ScopeBench bench;
    bring(&bench, Replaying);
    QTRY_COMPARE_WITH_TIMEOUT(bench.runText(), QString("Run"), 60000);
    QCOMPARE(bench.log, stopLog());
    QVERIFY(bench.tool(Tool::Clear)->isEnabled());
}

void TestScope::runLocksThePictureToolsAndTheChannels()
{
    ScopeBench bench;
    const QList<Tool> pictureTools{Tool::ShowAll,  Tool::ShowAllAdjusted, Tool::Clear, Tool::PrintScreen,
                                   Tool::MeasureX, Tool::MeasureY,        Tool::Fft};
    const auto areEnabled = [&](bool expected) {
        return std::all_of(pictureTools.begin(), pictureTools.end(),
                           [&](Tool tool) { return bench.tool(tool)->isEnabled() == expected; });
    };
    QVERIFY(areEnabled(false));
    bench.run();
    QVERIFY(areEnabled(false));
    QVERIFY(bench.tool(Tool::Save)->isEnabled());
    for (int number = 1; number <= 4; ++number) {
        QVERIFY(!bench.channel(number)->comboBox->isEnabled());
        QVERIFY(!bench.channel(number)->checkBox->isEnabled());
    }
    QVERIFY(!bench.panel->stopBox->isEnabled());
    bench.run();
    QVERIFY(areEnabled(true));
    QVERIFY(bench.channel(1)->comboBox->isEnabled() && bench.channel(4)->checkBox->isEnabled());
    QVERIFY(bench.panel->stopBox->isEnabled());
    QVERIFY(!bench.panel->stopValueEdit->isEnabled()); // as long as the condition is off
}

void TestScope::windowWithoutAPortShowsARunThatNothingFeeds()
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

void TestScope::framesBearTheNameOfTheWindow()
{
    ScopeBench bench;
    bench.run();
    bench.run();
    QCOMPARE(bench.windowNames, (QStringList{"Scope", "Scope", "Scope"}));
}

void TestScope::dataFieldsShowTheLastSamples()
{
    ScopeBench bench;
    bench.setItem(2, 2); // "Speed analog command", hundredths
    bench.run();
    bench.take("0114 001c 1002 0001 ffff 1002 0001 ff9c 1002 0003 0004 1002 0005 0006");
    QCOMPARE(bench.data(1), QString("-1"));
    QCOMPARE(bench.data(2), QString("-1.00"));
    QCOMPARE(bench.data(3), QString("0.04"));
    QCOMPARE(bench.data(4), QString("6"));
    bench.take("0114 000e 1001 0007 1000 1000 1000"); // the others had none: 0
    QCOMPARE(bench.data(1), QString("7"));
    QCOMPARE(bench.data(2), QString("0.00"));
    bench.take("0114 000c 1000 1000 1000 1000"); // no sample at all changes nothing
    QCOMPARE(bench.data(1), QString("7"));
    QCOMPARE(bench.batches.size(), 2);
}

void TestScope::channelThatIsOffShowsZero()
{
    ScopeBench bench;
    bench.click(2);
    bench.run();
    QCOMPARE(bench.log.value(2), scopelog::request("0114 1000 0000 1002 1003"));
    bench.take("0114 0012 1001 0001 0000 1001 0003 1001 0004");
    QCOMPARE(bench.data(2), QString("0"));
    QCOMPARE(bench.data(1), QString("1"));
    emit bench.plot->sendMoveLineYSignal({11, 22, 33, 44});
    QCOMPARE(bench.data(1), QString("11"));
    QCOMPARE(bench.data(2), QString("0"));
    emit bench.plot->sendMoveLineYSignal({});
    QCOMPARE(bench.data(1), QString("11"));
}

void TestScope::conditionTakesItsChannelOnly()
{
    ScopeBench bench;
    bench.panel->stopBox->click();
    bench.panel->stopChannelButtons.at(2)->click();
    bench.panel->stopOperationButtons.at(2)->click();
    bench.panel->stopValueEdit->setText(QStringLiteral("-5"));
    bench.log.clear();
    bench.run();
    QCOMPARE(bench.log.value(1), scopelog::request("0114 0000 0000 1002 0000"));
    QCOMPARE(bench.onText(), QString("--3-"));
    QVERIFY(bench.channel(3)->checkBox->isEnabled());
    QVERIFY(!bench.channel(1)->checkBox->isEnabled());
    bench.take("0114 000e 0000 0000 1001 fff0 0000"); // -0.16 is above -5
    QCOMPARE(bench.batches.size(), 0);
    bench.take("0114 000e 0000 0000 1001 f830 0000"); // -20.00
    QCOMPARE(bench.batches.size(), 1);
    QCOMPARE(bench.data(3), QString("-20.00"));
}

void TestScope::fieldsOfTheConditionStayOpenDuringItsRun()
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

void TestScope::conditionStartsAtTheFirstChannelWhateverTheButtonsShow()
{
    ScopeBench bench;
    bench.panel->stopBox->click();
    bench.panel->stopChannelButtons.at(1)->click();
    bench.panel->stopBox->click();
    QVERIFY(!bench.panel->stopChannelButtons.at(1)->isEnabled());
    bench.panel->stopBox->click();
    QVERIFY(bench.panel->stopChannelButtons.at(1)->isChecked());
    bench.run();
    QCOMPARE(bench.onText(), QString("1---"));
}

void TestScope::emptyFieldsOfTheConditionCountAsZero()
{
    ScopeBench bench;
    bench.panel->stopBox->click();
    bench.panel->stopValueEdit->clear();
    bench.panel->lastForEdit->setText(QStringLiteral("soon"));
    bench.run();
    bench.take("0114 000e 1001 ffff 0000 0000 0000"); // -1
    QCOMPARE(bench.batches.size(), 0);
    bench.take("0114 000e 1001 0000 0000 0000 0000");
    QCOMPARE(bench.batches.size(), 1);
    QTRY_COMPARE(bench.runText(), QString("Run"));
}

void TestScope::enablingTheConditionDuringAReplayStartsNothing()
{
    ScopeBench bench;
    bring(&bench, Replaying);
    bench.panel->stopBox->click();
    QCOMPARE(bench.runText(), QString("Stop"));
    QTRY_COMPARE_WITH_TIMEOUT(bench.runText(), QString("Run"), 60000);
    QVERIFY(!bench.log.contains("running"));
}

void TestScope::enablingTheConditionAfterARunItEndedShowsRun()
{
    ScopeBench bench;
    bring(&bench, StoppedByCondition);
    bench.panel->stopBox->click(); // off
    bench.log.clear();
    bench.panel->stopBox->click(); // and on again
    QCOMPARE(bench.runText(), QString("Run"));
    QCOMPARE(bench.log, QStringList{scopelog::withdrawal}); // the stream is not told to stop
}

void TestScope::firstBatchIsRecordedAndNotDrawn()
{
    ScopeBench bench;
    bench.run();
    bench.take("0114 0014 1001 0007 1001 0002 1001 0003 1001 0004");
    bench.take("0114 0014 1001 0008 1001 0002 1001 0003 1001 0004");
    bench.run();
    const PointTrack &points = bench.plot->plotData().channelPoints[0];
    QCOMPARE(points.size(), 1);
    QCOMPARE(points.valueAt(0), 8.0);
    const QDir dir(QCoreApplication::applicationDirPath() + "/scope");
    QFile record(dir.filePath(dir.entryList({"*_CH1.txt"}, QDir::Files).value(0)));
    QVERIFY(record.open(QIODevice::ReadOnly));
    QCOMPARE(record.readAll(), QByteArray("Pn-F00Motor speed\r\n7\r\n8\r\n"));
}

void TestScope::clearEmptiesThePictureAndTheFields()
{
    ScopeBench bench;
    bench.run();
    bench.take("0114 0014 1001 0001 1001 0002 1001 0003 1001 0004");
    bench.take("0114 0014 1001 0001 1001 0002 1001 0003 1001 0004");
    bench.run();
    bench.panel->tuningBox->click();
    QVERIFY(bench.panel->tuningBoxes.at(4)->isChecked());
    QCOMPARE(bench.data(1), QString("1"));
    bench.tool(Tool::Clear)->trigger();
    QCOMPARE(bench.data(1), QString("0"));
    QVERIFY(!bench.panel->tuningBox->isChecked());
    for (const QCheckBox *box : bench.panel->tuningBoxes)
        QVERIFY(!box->isChecked() && !box->isEnabled());
    QVERIFY(!bench.tool(Tool::ZoomIn)->isEnabled());
}

void TestScope::linkSlotsOutsideARunSendWhatTheySay()
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

void TestScope::closingKeepsTheRangeIfAsked()
{
    const auto setting = [](const char *key) {
        QSettings settings("settings.ini", QSettings::IniFormat);
        return settings.value(QLatin1String("NeedSetYaxis/") + QLatin1String(key));
    };
    {
        ScopeBench bench;
        bench.close();
        QCOMPARE(setting("NeedSetYaxis").toBool(), false);
        QVERIFY(!setting("Channel1Max").isValid());
    }
    {
        ScopeBench bench;
        QVERIFY(!bench.panel->keepRangeBox->isChecked());
        bench.panel->keepRangeBox->click();
        bench.close();
        QCOMPARE(setting("NeedSetYaxis").toBool(), true);
        QVERIFY(setting("Channel4Min").isValid());
    }
}

void TestScope::maximizedWindowReportsItsTitle()
{
    ScopeBench bench;
    QCOMPARE(bench.scope->windowTitle(), QString("Scope"));
    QStringList titles;
    connect(bench.scope, &Scope::windowStateChanged, this, [&titles](const QString &t) { titles.append(t); });
    bench.scope->showMaximized();
    QTRY_VERIFY(titles.contains("Scope"));
    bench.scope->showNormal();
    QTRY_COMPARE(titles.last(), QString());
}

QTEST_MAIN(TestScope)
#include "tst_scope.moc"
