// SPDX-License-Identifier: GPL-3.0-or-later
// What the user sets around the plot: channels within the drive's budget, colours, fine tuning, folding.
#include "scopebench.h"

#include "scope/scopeview.h"
#include "support/modalanswers.h"
#include "support/testdirectory.h"

#include <QColorDialog>
#include <QFile>
#include <QLocale>
#include <QProcess>
#include <QPushButton>
#include <QScrollBar>
#include <QSettings>
#include <QWheelEvent>

using Tool = ScopeToolBar::Tool;

class TestScopePanels : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void panelsStartOnTheFirstFourItems();
    void toolsStandInOrder();
    void wideItemExcludesAnotherChannel_data();
    void wideItemExcludesAnotherChannel();
    void itemOfAChannelThatIsOffChangesItsTypeOnly();
    void narrowItemOpensTheOthersAgain();
    void switchingAChannelWithdrawsTheRequest();
    void widthInTheRequestFollowsTheType();
    void sixWordsAreAskedForThroughTheGapOfTheRule();
    void wheelOverAListChangesNothing();
    void colourOfAChannelIsChosenAndKept();
    void cancelledColourChangesNothing();
    void coloursComeFromTheSettings();
    void fineTuningOpensItsBoxes();
    void zoomWithoutAChannelGivesAHint();
    void framesFoldAway();
    void smallWindowScrolls();
    void chineseWindowHasTheChineseItems();
    void chineseSystemChoosesTheItemsWhereNoLanguageIsSet();
    void missingCatalogueLeavesTheShell();

private:
    std::unique_ptr<TestDirectory> directory;
};

namespace {

QString setting(const char *key)
{
    QSettings settings("settings.ini", QSettings::IniFormat);
    return settings.value(QLatin1String(key)).toString();
}

constexpr int wideRow = 7; // Pn-F07
constexpr int otherWideRow = 8;

} // namespace

void TestScopePanels::init()
{
    directory.reset(); // it goes back to where it came from
    directory = std::make_unique<TestDirectory>();
    directory->setLanguage(QStringLiteral("en_US"));
}

void TestScopePanels::panelsStartOnTheFirstFourItems()
{
    ScopeBench bench;
    const QStringList texts{"Motor speed[1RPM]", "Speed command[1RPM]", "Speed analog command[0.01V]",
                            "Torque command[1%]"};
    for (int number = 1; number <= 4; ++number) {
        const ChannelConfig *const channel = bench.channel(number);
        QCOMPARE(channel->comboBox->currentText(), texts.at(number - 1));
        QCOMPARE(channel->objectName(), QStringLiteral("CH%1").arg(number));
        QCOMPARE(channel->checkBox->text(), QStringLiteral("CH%1").arg(number));
        QVERIFY(channel->checkBox->isChecked());
        QCOMPARE(bench.data(number), QString("0"));
        QCOMPARE(bench.type(number), QString("16bit"));
        QVERIFY(channel->dataEdit->isReadOnly() && channel->typeEdit->isReadOnly());
    }
    QCOMPARE(bench.plot->objectName(), QString("1"));
    QCOMPARE(bench.panel->stopValueEdit->text(), QString("0"));
    QCOMPARE(bench.panel->lastForEdit->text(), QString("20000"));
}

void TestScopePanels::toolsStandInOrder()
{
    ScopeBench bench;
    QStringList texts;
    for (const QAction *action : bench.tools->actions())
        texts.append(action->isSeparator() ? "|" : action->text());
    QCOMPARE(texts, (QStringList{"Open a SCP File", "Save as a SCP File", "Print Screen",
                                 "Change Backgrond Color", "Zoom in", "Zoom Out", "Show all data in screen",
                                 "Show all data in screen, and adjust max/min value automatically",
                                 "Shift Left", "Shift Right", "Shift Up", "Shift Down", "X-Axis measurement",
                                 "Y-Axis measurement", "Clear Screen", "FFT", "|", "Run"}));
    QVERIFY(!bench.tool(Tool::ZoomIn)->isEnabled() && !bench.tool(Tool::ZoomOut)->isEnabled());
    QVERIFY(bench.tool(Tool::Open)->isEnabled() && bench.tool(Tool::ShiftLeft)->isEnabled());
}

void TestScopePanels::wideItemExcludesAnotherChannel_data()
{
    QTest::addColumn<QList<int>>("channels"); // that get a wide item, in order
    QTest::addColumn<QString>("on");
    QTest::addColumn<QString>("open");
    const auto row = [](const char *name, const QList<int> &channels, const char *on, const char *open) {
        QTest::newRow(name) << channels << on << open;
    };
    row("CH1", {1}, "123-", "123-");
    row("CH2", {2}, "123-", "123-");
    row("CH4", {4}, "12-4", "12-4");
    row("CH1, then CH2", {1, 2}, "12--", "12--");
    row("CH1, then CH3", {1, 3}, "1-3-", "1-3-");
    row("CH2, then CH3", {2, 3}, "-23-", "-23-");
    row("CH4, then CH2", {4, 2}, "-2-4", "-2-4");
    row("CH4, then CH1: no more is excluded", {4, 1}, "12-4", "1234");
}

void TestScopePanels::wideItemExcludesAnotherChannel()
{
    QFETCH(QList<int>, channels);
    ScopeBench bench;
    int row = wideRow;
    for (const int number : qAsConst(channels))
        bench.setItem(number, row++);
    QTEST(bench.onText(), "on");
    QTEST(bench.openText(), "open");
    for (const int number : qAsConst(channels))
        QCOMPARE(bench.type(number), QString("32bit"));
}

void TestScopePanels::itemOfAChannelThatIsOffChangesItsTypeOnly()
{
    ScopeBench bench;
    bench.click(2);
    bench.setItem(2, wideRow);
    QCOMPARE(bench.type(2), QString("32bit"));
    QCOMPARE(bench.onText(), QString("1-34"));
    QCOMPARE(bench.openText(), QString("1234"));
}

void TestScopePanels::narrowItemOpensTheOthersAgain()
{
    ScopeBench bench;
    bench.setItem(1, wideRow);
    QCOMPARE(bench.openText(), QString("123-"));
    bench.setItem(1, 0);
    QCOMPARE(bench.openText(), QString("1234"));
    QCOMPARE(bench.onText(), QString("123-"));
    bench.click(4);
    QCOMPARE(bench.onText(), QString("1234"));
    // Two wide ones leave no third.
    bench.setItem(1, wideRow);
    bench.setItem(2, otherWideRow);
    bench.click(2);
    QCOMPARE(bench.openText(), QString("1234"));
}

void TestScopePanels::switchingAChannelWithdrawsTheRequest()
{
    ScopeBench bench;
    bench.click(3);
    QCOMPARE(bench.log, QStringList{scopelog::withdrawal});
}

void TestScopePanels::widthInTheRequestFollowsTheType()
{
    ScopeBench bench;
    bench.setItem(3, wideRow); // CH4 goes
    bench.setItem(2, 3);
    bench.log.clear();
    bench.run();
    QCOMPARE(bench.log.value(1), scopelog::request("0114 1000 1003 2007 0000"));
    bench.take("0114 0014 1001 0001 1001 0002 2001 fffffffe 0000");
    QCOMPARE(bench.data(3), QString("-2"));
}

void TestScopePanels::sixWordsAreAskedForThroughTheGapOfTheRule()
{
    ScopeBench bench;
    bench.setItem(4, wideRow); // CH3 goes
    bench.setItem(1, otherWideRow);
    bench.click(3);
    QCOMPARE(bench.onText(), QString("1234"));
    QCOMPARE(bench.openText(), QString("1234"));
    bench.log.clear();
    bench.run();
    const QByteArray request = "0114 20" + QByteArray::number(otherWideRow, 16).rightJustified(2, '0') +
                               " 1001 1002 20" + QByteArray::number(wideRow, 16).rightJustified(2, '0');
    QCOMPARE(bench.log.value(1), scopelog::request(request.constData()));
}

void TestScopePanels::wheelOverAListChangesNothing()
{
    ScopeBench bench;
    QComboBox *const list = bench.channel(1)->comboBox;
    QWheelEvent wheel(QPointF(5, 5), QPointF(5, 5), QPoint(), QPoint(0, -120), Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(list, &wheel);
    QCOMPARE(list->currentIndex(), 0);
    QVERIFY(!wheel.isAccepted());
}

void TestScopePanels::colourOfAChannelIsChosenAndKept()
{
    ScopeBench bench;
    bench.channel(2)->colorButton->click();
    auto *const dialog = bench.scope->findChild<QColorDialog *>();
    QVERIFY(dialog && dialog->isModal() && dialog->isVisible());
    QCOMPARE(dialog->objectName(), QString("CH2"));
    dialog->setCurrentColor(QColor(0x12, 0x34, 0x56));
    dialog->accept();
    QCOMPARE(setting("ScopeColor/color2"), QString("#123456"));
    QCOMPARE(setting("ScopeColor/color1"), QString());
    QVERIFY(bench.channel(2)->colorButton->styleSheet().contains("#ff123456"));
    QVERIFY(bench.channel(2)->dataEdit->styleSheet().contains("color:#ff123456"));
}

void TestScopePanels::cancelledColourChangesNothing()
{
    ScopeBench bench;
    const QString before = bench.channel(1)->colorButton->styleSheet();
    bench.channel(1)->colorButton->click();
    auto *const dialog = bench.scope->findChild<QColorDialog *>();
    dialog->setCurrentColor(Qt::black);
    dialog->reject();
    QCOMPARE(bench.channel(1)->colorButton->styleSheet(), before);
    QCOMPARE(setting("ScopeColor/color1"), QString());
}

void TestScopePanels::coloursComeFromTheSettings()
{
    {
        ScopeBench bench;
        QVERIFY(bench.channel(2)->colorButton->styleSheet().contains("#55ff7f"));
    }
    {
        QSettings settings("settings.ini", QSettings::IniFormat);
        settings.setValue("ScopeColor/color2", "#010203");
    }
    ScopeBench bench;
    QCOMPARE(bench.channel(2)->colorButton->styleSheet(), QString("background-color:#010203"));
    QCOMPARE(bench.channel(2)->dataEdit->styleSheet(), QString("background-color:#008080;color:#010203;"));
}

void TestScopePanels::fineTuningOpensItsBoxes()
{
    ScopeBench bench;
    const auto &boxes = bench.panel->tuningBoxes;
    QStringList names;
    for (const QCheckBox *box : boxes) {
        names.append(box->objectName());
        QVERIFY(!box->isEnabled());
    }
    QCOMPARE(names, (QStringList{"CH1", "CH2", "CH3", "CH4", "Time-Axis", "Value-axis"}));
    bench.panel->tuningBox->click();
    QVERIFY(bench.tool(Tool::ZoomIn)->isEnabled() && bench.tool(Tool::ZoomOut)->isEnabled());
    QVERIFY(boxes.at(4)->isChecked() && boxes.at(5)->isChecked() && !boxes.at(0)->isChecked());
    boxes.at(0)->click();
    QVERIFY(bench.plot->viewSwitches().zoomChannel.at(0));
    const double before = bench.plot->viewHistory().current().maxX[0];
    bench.tool(Tool::ZoomIn)->trigger();
    QVERIFY(bench.plot->viewHistory().current().maxX[0] < before);
    bench.panel->tuningBox->click();
    for (const QCheckBox *box : boxes)
        QVERIFY(!box->isChecked() && !box->isEnabled());
    QVERIFY(!bench.plot->viewSwitches().zoomChannel.at(0));
}

void TestScopePanels::zoomWithoutAChannelGivesAHint()
{
    ScopeBench bench;
    bench.panel->tuningBox->click();
    ModalAnswers boxes;
    boxes.expect(QStringLiteral("请选择放大通道"));
    bench.tool(Tool::ZoomIn)->trigger();
    QVERIFY(boxes.isDone());
}

void TestScopePanels::framesFoldAway()
{
    ScopeBench bench;
    bench.scope->resize(900, 700);
    bench.scope->show();
    const auto *const view = bench.scope->findChild<ScopeView *>();
    QCOMPARE(bench.panels->objectName(), QString("bottomFrame"));
    view->bottomButton->click();
    QVERIFY(!bench.panels->isVisible());
    QCOMPARE(view->bottomButton->styleSheet(), QString("border-image: url(:/pic/pic/DownUp2.bmp);"));
    view->bottomButton->click();
    QVERIFY(bench.panels->isVisible());
    QCOMPARE(view->bottomButton->styleSheet(), QString("border-image: url(:/pic/pic/DownUp1.bmp);"));
    view->rightButton->click();
    QVERIFY(!bench.panel->isVisible());
    QCOMPARE(view->rightButton->styleSheet(), QString("border-image: url(:/pic/pic/ScrL.bmp);"));
    view->rightButton->click();
    QVERIFY(bench.panel->isVisible());
    QCOMPARE(view->rightButton->styleSheet(), QString("border-image: url(:/pic/pic/ScrR.bmp);"));
}

void TestScopePanels::smallWindowScrolls()
{
    ScopeBench bench;
    bench.scope->resize(1000, 800);
    bench.scope->show();
    QVERIFY(bench.scope->widgetResizable());
    bench.scope->resize(1000, 600);
    QVERIFY(!bench.scope->widgetResizable());
    QVERIFY(bench.scope->widget()->height() >= 646);
    QTRY_VERIFY(bench.scope->verticalScrollBar()->maximum() > 0);
    bench.scope->resize(700, 800);
    QVERIFY(!bench.scope->widgetResizable());
    QVERIFY(bench.scope->widget()->width() >= 800);
}

void TestScopePanels::chineseWindowHasTheChineseItems()
{
    directory->setLanguage(QStringLiteral("zh_CN"));
    ScopeBench bench;
    QCOMPARE(bench.channel(1)->comboBox->currentText(), QString("电机转速[1RPM]"));
}

// The system's language is read once in a process: this test runs anew in a Chinese one.
void TestScopePanels::chineseSystemChoosesTheItemsWhereNoLanguageIsSet()
{
    if (QLocale::system().name() == "zh_CN") {
        QVERIFY(!QFile::exists(QStringLiteral("settings.ini")) ||
                QFile::remove(QStringLiteral("settings.ini")));
        const ScopeBench bench;
        QCOMPARE(bench.channel(1)->comboBox->currentText(), QString("电机转速[1RPM]"));
        return;
    }
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("zh_CN.UTF-8"));
    process.setProcessEnvironment(environment);
    process.start(QCoreApplication::applicationFilePath(), {QTest::currentTestFunction()});
    QVERIFY(process.waitForFinished());
    const QByteArray output = process.readAll();
    QVERIFY2(process.exitCode() == 0 && output.contains("3 passed"), output.constData());
}

// Last, since it takes the files from the program.
void TestScopePanels::missingCatalogueLeavesTheShell()
{
    Q_CLEANUP_RESOURCE(catalogue);
    ModalAnswers boxes;
    boxes.expect(QStringLiteral("File does not exist"));
    {
        ScopeBench bench;
        QVERIFY(boxes.isDone());
        QCOMPARE(boxes.seen.first().title, QString("Open Failed"));
        QVERIFY(!bench.tools && !bench.panel);
        bench.scope->show();
        bench.scope->runActSlot();
        bench.take("0114 000e 1001 0001 0000 0000 0000");
        bench.scope->getPnValue("Pn-F00");
        bench.scope->readFilePlot({1});
        QCOMPARE(bench.log, QStringList());
        bench.close();
        QCOMPARE(bench.log, QStringList{"ended"});
    }
    Q_INIT_RESOURCE(catalogue);
}

QTEST_MAIN(TestScopePanels)
#include "tst_scopepanels.moc"
