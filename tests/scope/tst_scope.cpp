// SPDX-License-Identifier: GPL-3.0-or-later
// What the scope window shows and locks in a run.
#include "scopebench.h"

#include "support/testdirectory.h"

#include <QDir>
#include <QSettings>

using Tool = ScopeToolBar::Tool;

class TestScope : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void runLocksThePictureToolsAndTheChannels();
    void framesBearTheNameOfTheWindow();
    void dataFieldsShowTheLastSamples();
    void channelThatIsOffShowsZero();
    void conditionTakesItsChannelOnly();
    void conditionStartsAtTheFirstChannelWhateverTheButtonsShow();
    void emptyFieldsOfTheConditionCountAsZero();
    void firstBatchIsRecordedAndNotDrawn();
    void clearEmptiesThePictureAndTheFields();
    void closingKeepsTheRangeIfAsked();
    void maximizedWindowReportsItsTitle();

private:
    std::unique_ptr<TestDirectory> directory;
};

void TestScope::init()
{
    directory.reset(); // it goes back to where it came from
    directory = std::make_unique<TestDirectory>();
    directory->setLanguage(QStringLiteral("en_US"));
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
