// SPDX-License-Identifier: GPL-3.0-or-later
// The plot as a widget: what it keeps, what it draws, and how it ends.
#include "curvescenes.h"
#include "plotterbench.h"

#include "scope/plotter.h"
#include "support/rununtil.h"
#include "support/testdirectory.h"

#include <QSettings>
#include <QSignalSpy>
#include <QTest>
#include <QThread>
#include <QToolButton>

using namespace plotterbench;

namespace {

// To and fro: fills the middle of the plot.
List alternating(int count)
{
    List values(count);
    for (int i = 0; i < count; ++i)
        values[i] = i % 2 == 0 ? 100 : -100;
    return values;
}

} // namespace

class PlotterTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { directory.clear(); }
    void widgetIsAsItsNeighboursExpect();
    void settersKeepWhatTheyAreTold();
    void autoAdjustFollowsTheExtremes();
    void curvesReachTheScreen();
    void lastSamplesReachTheScreenAtTheStop();
    void clearEmptiesAll();
    void rangesSurviveTheWindow();
    void rangesAreLeftAloneUnlessAskedFor();
    void smallPlotShowsNothing();
    void gridFollowsItsSwitchAndTheBackground();
    void plotterMayGoWhileItsThreadDraws();
    void closingEndsTheThread();

private:
    TestDirectory directory;
};

void PlotterTest::widgetIsAsItsNeighboursExpect()
{
    const auto plotter = makePlotter();
    QCOMPARE(plotter->sizeHint(), QSize(600, 400));
    QCOMPARE(plotter->minimumSizeHint(), QSize(300, 200));
    QCOMPARE(plotter->focusPolicy(), Qt::StrongFocus);
    QCOMPARE(plotter->backgroundRole(), QPalette::Dark);
    QVERIFY(plotter->autoFillBackground());
    QVERIFY(plotter->hasMouseTracking());
    QCOMPARE(plotter->sizePolicy().horizontalPolicy(), QSizePolicy::Expanding);
    QCOMPARE(plotter->sizePolicy().verticalPolicy(), QSizePolicy::Expanding);
    QStringList toolTips;
    const auto buttons = plotter->findChildren<QToolButton *>(QString(), Qt::FindDirectChildrenOnly);
    for (const QToolButton *button : buttons) {
        toolTips.append(button->toolTip());
        QVERIFY(button->isHidden());
        QVERIFY(!button->icon().isNull());
        QVERIFY(!button->isEnabled());
        QVERIFY(button->geometry().left() > width / 2 && button->geometry().bottom() < 50);
    }
    toolTips.sort();
    QCOMPARE(toolTips, (QStringList{"Recover", "Revocation"}));
    QCOMPARE(plotter->viewHistory().size(), 1);
}

void PlotterTest::settersKeepWhatTheyAreTold()
{
    const auto plotter = makePlotter();
    PlotSettings settings;
    settings.minX[2] = 77;
    plotter->moveLeft();
    plotter->setPlotSettings(settings);
    QCOMPARE(plotter->viewHistory().size(), 1);
    QCOMPARE(view(*plotter).minX[2], 77.0);
    for (int index = 0; index < 7; ++index)
        plotter->setOption(index, index % 2 == 0);
    const ViewSwitches &switches = plotter->viewSwitches();
    QCOMPARE(switches.zoomChannel, (QVector<bool>{true, false, true, false}));
    QVERIFY(switches.zoomTimeAxis);
    QVERIFY(!switches.zoomValueAxis);
    QVERIFY(switches.showGrid);
    plotter->setVisibleAll(true, false, false, true, false);
    QCOMPARE(switches.visible, (QVector<bool>{true, false, false, true}));
    plotter->setVisible(1, true);
    plotter->setVisible(0, false);
    QCOMPARE(switches.visible, (QVector<bool>{false, true, false, true}));
    plotter->setDecimals(3, 2);
    QCOMPARE(switches.decimals, (QVector<int>{0, 0, 0, 2}));
    plotter->setAutoAdjust(true);
    QVERIFY(switches.autoAdjust);
    QCOMPARE(plotter->viewHistory().size(), 1);
    plotter->setCoordinate(true);
    QVERIFY(switches.individualCoordinate);
    QCOMPARE(plotter->viewHistory().size(), 2);
    QVERIFY(plotter->isVisible());
    plotter->setVisible(false);
    QVERIFY(!plotter->isVisible());
}

void PlotterTest::autoAdjustFollowsTheExtremes()
{
    const auto plotter = makePlotter();
    plotter->setAutoAdjust(true);
    plotter->setVisibleAll(true, false, false, false, false);
    run(plotter.get(), {100, 200});
    QCOMPARE(view(*plotter).minY[0], 90.0);
    QCOMPARE(view(*plotter).maxY[0], 210.0);
}

void PlotterTest::curvesReachTheScreen()
{
    const auto plotter = makePlotter();
    plotter->setColors(Qt::blue, Qt::green, Qt::cyan, Qt::yellow);
    plotter->setVisibleAll(true, false, false, false, false);
    run(plotter.get(), alternating(400000));
    const QRect place(100, 280, 5, 5);
    QVERIFY(runUntil([&] { return hasColor(plotter->grab().toImage(), place, Qt::blue); }, 20000));
    plotter->setColor(0, Qt::darkRed);
    QVERIFY(runUntil([&] { return hasColor(plotter->grab().toImage(), place, Qt::darkRed); }, 20000));
    plotter->setVisible(0, false);
    QVERIFY(runUntil([&] { return !hasColor(plotter->grab().toImage(), place, Qt::darkRed); }, 20000));
}

void PlotterTest::lastSamplesReachTheScreenAtTheStop()
{
    const auto plotter = makePlotter();
    plotter->receiveScopIsStopSlot(false);
    plotter->setLive(true);
    plotter->receivePlotterDataScopeSlot({}, {}, {}, {});
    plotter->receivePlotterDataScopeSlot(alternating(600000), {}, {}, {});
    plotter->setLive(false);
    plotter->receiveScopIsStopSlot(true);
    QCOMPARE(plotter->plotData().xEnd[0], 750000.0);
    QCOMPARE(view(*plotter).maxX[0], 750000.0);
    const QRect place(700, 280, 5, 5);
    QVERIFY(runUntil([&] { return hasColor(plotter->grab().toImage(), place, Qt::red); }, 20000));
}

void PlotterTest::clearEmptiesAll()
{
    const auto plotter = makePlotter();
    run(plotter.get(), List(800000, 5.0));
    QSignalSpy values(plotter.get(), &Plotter::sendMoveLineYSignal);
    plotter->clearPlot();
    QCOMPARE(values.size(), 1);
    QCOMPARE(values.first().first().value<List>(), (List{0, 0, 0, 0}));
    QVERIFY(plotter->plotData().isEmpty);
    QCOMPARE(plotter->plotData().channelPoints[0].size(), 0);
    QCOMPARE(plotter->plotData().xStart[0], 0.0);
    QCOMPARE(plotter->plotData().xEnd[0], 600000.0);
    QCOMPARE(plotter->viewHistory().size(), 1);
    QVERIFY(view(*plotter) == PlotSettings());
}

void PlotterTest::rangesSurviveTheWindow()
{
    QSettings("settings.ini", QSettings::IniFormat).setValue("NeedSetYaxis/NeedSetYaxis", true);
    {
        const auto plotter = makePlotter();
        PlotSettings settings;
        for (int c = 0; c < plotChannels; ++c) {
            settings.minY[c] = -1.5 * (c + 1);
            settings.maxY[c] = 10.25 * (c + 1);
        }
        plotter->setPlotSettings(settings);
        plotter->saveYRange();
    }
    const QSettings stored("settings.ini", QSettings::IniFormat);
    QCOMPARE(stored.value("NeedSetYaxis/Channel1Max").toDouble(), 10.25);
    QCOMPARE(stored.value("NeedSetYaxis/Channel4Min").toDouble(), -6.0);
    const auto plotter = makePlotter();
    QCOMPARE(plotter->viewHistory().size(), 2);
    for (int c = 0; c < plotChannels; ++c) {
        QCOMPARE(view(*plotter).minY[c], -1.5 * (c + 1));
        QCOMPARE(view(*plotter).maxY[c], 10.25 * (c + 1));
        QCOMPARE(view(*plotter).maxX[c], 600000.0);
    }
    plotter->loadYRange();
    QCOMPARE(plotter->viewHistory().size(), 3);
}

void PlotterTest::rangesAreLeftAloneUnlessAskedFor()
{
    makePlotter()->saveYRange();
    QSettings("settings.ini", QSettings::IniFormat).setValue("NeedSetYaxis/Channel1Max", 7.0);
    const auto plotter = makePlotter();
    QCOMPARE(plotter->viewHistory().size(), 1);
    QCOMPARE(view(*plotter).maxY[0], 1000.0);
}

void PlotterTest::smallPlotShowsNothing()
{
    const auto plotter = makePlotter();
    run(plotter.get(), scenes::wave("noise", 40000));
    plotter->resize(99, 300);
    const QImage picture = plotter->grab().toImage();
    for (int x = 1; x < picture.width() - 1; ++x)
        for (int y = 1; y < picture.height() - 1; ++y)
            QCOMPARE(picture.pixelColor(x, y), QColor(Qt::white));
    drag(plotter.get(), {50, 60}, {60, 80});
    // At its old size the curve is there again, though no picture of it is new.
    plotter->resize(width, height);
    plotter->showAllDataSlot();
    QVERIFY(runUntil([&] { return hasColor(plotter->grab().toImage(), {52, 52, 20, 490}, Qt::red); }, 20000));
}

void PlotterTest::gridFollowsItsSwitchAndTheBackground()
{
    const auto plotter = makePlotter();
    plotter->setBackground(QColor(10, 20, 30));
    QImage picture = plotter->grab().toImage();
    // W is 799: the fifth line of ten stands at 50 + 5 * 699 / 10.
    const QRect line(399, 60, 1, 30);
    QVERIFY(hasColor(picture, line, QColor(245, 235, 225)));
    QVERIFY(hasColor(picture, line, QColor(10, 20, 30)));
    QCOMPARE(picture.pixelColor(50, 300), QColor(245, 235, 225));
    plotter->setOption(6, false);
    picture = plotter->grab().toImage();
    QVERIFY(!hasColor(picture, line, QColor(245, 235, 225)));
    QCOMPARE(picture.pixelColor(399, 552), QColor(245, 235, 225)); // the tick stays
    QCOMPARE(picture.pixelColor(50, 300), QColor(245, 235, 225));
}

void PlotterTest::plotterMayGoWhileItsThreadDraws()
{
    for (int i = 0; i < 5; ++i) {
        const auto plotter = makePlotter();
        plotter->setLive(true);
        plotter->receivePlotterDataScopeSlot({}, {}, {}, {});
        plotter->receivePlotterDataScopeSlot(scenes::wave("noise", 200000), {}, {}, {});
        plotter->runTimerOutSlot();
        runUntil([] { return false; }, i);
    }
    const auto plotter = makePlotter();
    QVERIFY(plotter->isVisible());
}

void PlotterTest::closingEndsTheThread()
{
    const auto plotter = makePlotter();
    run(plotter.get(), List(1000, 5.0));
    plotter->setLive(true);
    auto *thread = plotter->findChild<QThread *>();
    QVERIFY(thread && thread->isRunning());
    plotter->close();
    QVERIFY(thread->isFinished());
    QVERIFY(plotter->plotData().isEmpty);
    const int entries = plotter->viewHistory().size();
    QVERIFY(!runUntil([&] { return plotter->viewHistory().size() > entries; }, 400));
}

QTEST_MAIN(PlotterTest)
#include "tst_plotter.moc"
