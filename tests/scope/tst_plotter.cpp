// SPDX-License-Identifier: GPL-3.0-or-later
#include "curvescenes.h"
#include "scope/plotter.h"
#include "support/modalanswers.h"
#include "support/rununtil.h"
#include "support/testdirectory.h"

#include <QMouseEvent>
#include <QSettings>
#include <QSignalSpy>
#include <QTest>
#include <QThread>
#include <QToolButton>
#include <QWheelEvent>

#include <memory>

using List = QVector<double>;

namespace {

constexpr int width = 800;
constexpr int height = 600;

// A plot of 800 by 600 that is shown: 700 and 500 pixels of window by the rules of the cursors.
std::unique_ptr<Plotter> makePlotter()
{
    auto plotter = std::make_unique<Plotter>();
    plotter->resize(width, height);
    plotter->show();
    return plotter;
}

// A live run that is over: these samples on the screen.
void run(Plotter *plotter, const List &data1, const List &data2 = {})
{
    plotter->receiveScopIsStopSlot(false);
    plotter->setLive(true);
    plotter->receivePlotterDataScopeSlot({}, {}, {}, {});
    plotter->receivePlotterDataScopeSlot(data1, data2, {}, {});
    plotter->runTimerOutSlot();
    plotter->setLive(false);
    plotter->receiveScopIsStopSlot(true);
}

// To and fro: fills the middle of the plot.
List alternating(int count)
{
    List values(count);
    for (int i = 0; i < count; ++i)
        values[i] = i % 2 == 0 ? 100 : -100;
    return values;
}

const PlotSettings &view(const Plotter &plotter)
{
    return plotter.viewHistory().current();
}

// As the window system reports it; QTest only moves the cursor of the screen.
void moveMouse(Plotter *plotter, const QPoint &point)
{
    QMouseEvent event(QEvent::MouseMove, point, plotter->mapToGlobal(point), Qt::NoButton, Qt::LeftButton,
                      Qt::NoModifier);
    QCoreApplication::sendEvent(plotter, &event);
}

void drag(Plotter *plotter, const QPoint &from, const QPoint &to)
{
    QTest::mousePress(plotter, Qt::LeftButton, {}, from);
    moveMouse(plotter, to);
    QTest::mouseRelease(plotter, Qt::LeftButton, {}, to);
}

void roll(Plotter *plotter, const QPoint &delta)
{
    QWheelEvent event(QPointF(300, 300), plotter->mapToGlobal(QPoint(300, 300)), QPoint(), delta,
                      Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(plotter, &event);
}

bool hasColor(const QImage &image, const QRect &area, const QColor &color)
{
    for (int y = area.top(); y <= area.bottom(); ++y)
        for (int x = area.left(); x <= area.right(); ++x)
            if (image.pixelColor(x, y) == color)
                return true;
    return false;
}

} // namespace

class PlotterTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { directory.clear(); }
    void widgetIsAsItsNeighboursExpect();
    void settersKeepWhatTheyAreTold();
    void historyIsSteppedByKeysAndSlots();
    void arrowsScrollAllChannels_data();
    void arrowsScrollAllChannels();
    void wheelScrollsWhileStopped();
    void rubberBandZooms();
    void smallRubberBandIsAClick();
    void runEndsRubberBandAndCursor();
    void zoomHintsAreShownOnce_data();
    void zoomHintsAreShownOnce();
    void zoomWithoutChannelStillAddsAnEntry();
    void zoomHintOutlivesThePlot();
    void verticalShiftAddsNoEntry();
    void horizontalShiftAddsAnEntry();
    void eachTickAddsAnEntry();
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

void PlotterTest::historyIsSteppedByKeysAndSlots()
{
    const auto plotter = makePlotter();
    plotter->showAllDataSlot();
    plotter->showAllAdjust();
    QCOMPARE(plotter->viewHistory().index(), 2);
    QTest::keyClick(plotter.get(), Qt::Key_Minus);
    QCOMPARE(plotter->viewHistory().index(), 1);
    plotter->backButtonSlot();
    plotter->backButtonSlot();
    QCOMPARE(plotter->viewHistory().index(), 0);
    QTest::keyClick(plotter.get(), Qt::Key_Plus);
    QCOMPARE(plotter->viewHistory().index(), 1);
    plotter->advanceButtonSlot();
    plotter->advanceButtonSlot();
    QCOMPARE(plotter->viewHistory().index(), 2);
    for (const QToolButton *button :
         plotter->findChildren<QToolButton *>(QString(), Qt::FindDirectChildrenOnly))
        QCOMPARE(button->isEnabled(), button->toolTip() == "Revocation");
}

void PlotterTest::arrowsScrollAllChannels_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<double>("minX");
    QTest::addColumn<double>("minY");
    QTest::newRow("left") << int(Qt::Key_Left) << -60000.0 << -1000.0;
    QTest::newRow("right") << int(Qt::Key_Right) << 60000.0 << -1000.0;
    QTest::newRow("up") << int(Qt::Key_Up) << 0.0 << -800.0;
    QTest::newRow("down") << int(Qt::Key_Down) << 0.0 << -1200.0;
    QTest::newRow("other") << int(Qt::Key_A) << 0.0 << -1000.0;
}

void PlotterTest::arrowsScrollAllChannels()
{
    QFETCH(int, key);
    QFETCH(double, minX);
    QFETCH(double, minY);
    const auto plotter = makePlotter();
    QTest::keyClick(plotter.get(), static_cast<Qt::Key>(key));
    for (int c = 0; c < plotChannels; ++c) {
        QCOMPARE(view(*plotter).minX[c], minX);
        QCOMPARE(view(*plotter).minY[c], minY);
    }
    QCOMPARE(plotter->viewHistory().size(), 1);
}

void PlotterTest::wheelScrollsWhileStopped()
{
    const auto plotter = makePlotter();
    roll(plotter.get(), {0, 240});
    QCOMPARE(view(*plotter).minY[3], -600.0);
    roll(plotter.get(), {-120, 0});
    QCOMPARE(view(*plotter).minX[0], -60000.0);
    plotter->receiveScopIsStopSlot(false);
    roll(plotter.get(), {120, 120});
    QCOMPARE(view(*plotter).minX[0], -60000.0);
    QCOMPARE(view(*plotter).minY[3], -600.0);
}

void PlotterTest::rubberBandZooms()
{
    const auto plotter = makePlotter();
    plotter->setPlotSettings([] {
        PlotSettings s;
        for (int c = 0; c < plotChannels; ++c)
            s.maxX[c] = 7000; // 10 units a pixel
        return s;
    }());
    QTest::mousePress(plotter.get(), Qt::LeftButton, {}, {150, 150});
    QCOMPARE(plotter->cursor().shape(), Qt::CrossCursor);
    moveMouse(plotter.get(), {250, 350});
    const QImage picture = plotter->grab().toImage();
    QVERIFY(hasColor(picture, {250, 200, 1, 1}, Qt::black));
    QVERIFY(!hasColor(picture, {252, 215, 1, 1}, Qt::black));
    QTest::mouseRelease(plotter.get(), Qt::LeftButton, {}, {250, 350});
    QVERIFY(plotter->cursor().shape() != Qt::CrossCursor);
    for (int c = 0; c < plotChannels; ++c) {
        QCOMPARE(view(*plotter).minX[c], 1000.0);
        QCOMPARE(view(*plotter).maxX[c], 2000.0);
        QCOMPARE(view(*plotter).maxY[c], 600.0);
        QCOMPARE(view(*plotter).minY[c], -200.0);
    }
    QCOMPARE(plotter->viewHistory().size(), 2);
}

void PlotterTest::smallRubberBandIsAClick()
{
    const auto plotter = makePlotter();
    drag(plotter.get(), {200, 200}, {201, 300});
    drag(plotter.get(), {200, 200}, {300, 201});
    drag(plotter.get(), {49, 200}, {300, 400});
    QCOMPARE(plotter->viewHistory().size(), 1);
    drag(plotter.get(), {200, 200}, {202, 202});
    QCOMPARE(plotter->viewHistory().size(), 2);
    plotter->receiveScopIsStopSlot(false);
    drag(plotter.get(), {200, 200}, {300, 300});
    QCOMPARE(plotter->viewHistory().size(), 2);
}

void PlotterTest::runEndsRubberBandAndCursor()
{
    const auto plotter = makePlotter();
    run(plotter.get(), List(1000, 5.0));
    plotter->setXMeasurement(true);
    QTest::mousePress(plotter.get(), Qt::LeftButton, {}, {200, 200});
    const int entries = plotter->viewHistory().size();
    plotter->receiveScopIsStopSlot(false);
    QVERIFY(plotter->cursor().shape() != Qt::CrossCursor);
    QTest::mouseRelease(plotter.get(), Qt::LeftButton, {}, {300, 300});
    QCOMPARE(plotter->viewHistory().size(), entries);
    plotter->receiveScopIsStopSlot(true);
    plotter->setXMeasurement(true);
    QTest::mousePress(plotter.get(), Qt::LeftButton, {}, {50, 40});
    plotter->receiveScopIsStopSlot(false);
    plotter->receiveScopIsStopSlot(true);
    QSignalSpy moved(plotter.get(), &Plotter::sendMoveLineYSignal);
    moveMouse(plotter.get(), {200, 40});
    QCOMPARE(moved.size(), 0);
}

void PlotterTest::zoomHintsAreShownOnce_data()
{
    QTest::addColumn<bool>("in");
    QTest::addColumn<bool>("axis");
    QTest::addColumn<bool>("channel");
    QTest::addColumn<QStringList>("hints");
    QTest::newRow("in, nothing lacking") << true << true << true << QStringList{};
    QTest::newRow("in, no axis") << true << false << true << QStringList{"请选择放大轴线"};
    QTest::newRow("in, no channel") << true << true << false << QStringList{"请选择放大通道"};
    QTest::newRow("in, neither") << true << false << false << QStringList{"请选择放大轴线", "请选择放大通道"};
    QTest::newRow("out, no axis") << false << false << true << QStringList{"请选择缩小轴线"};
    QTest::newRow("out, no channel") << false << true << false << QStringList{"请选择缩小通道"};
    QTest::newRow("out, neither") << false << false << false
                                  << QStringList{"请选择缩小轴线", "请选择缩小通道"};
}

void PlotterTest::zoomHintsAreShownOnce()
{
    QFETCH(bool, in);
    QFETCH(bool, axis);
    QFETCH(bool, channel);
    QFETCH(QStringList, hints);
    const auto plotter = makePlotter();
    plotter->setOption(0, channel);
    plotter->setOption(1, channel);
    plotter->setOption(4, axis);
    plotter->setOption(5, false);
    ModalAnswers answers;
    for (const QString &hint : hints)
        answers.expect(hint);
    if (in)
        plotter->showZoomIn();
    else
        plotter->showZoomOut();
    QVERIFY(answers.isDone());
    QStringList texts;
    for (const ModalAnswers::Seen &seen : qAsConst(answers.seen)) {
        QCOMPARE(seen.title, QStringLiteral("提示"));
        QCOMPARE(seen.icon, QMessageBox::Information);
        texts.append(seen.text);
    }
    QCOMPARE(texts, hints);
    QCOMPARE(plotter->viewHistory().size(), 2);
}

void PlotterTest::zoomWithoutChannelStillAddsAnEntry()
{
    const auto plotter = makePlotter();
    ModalAnswers answers;
    answers.expect("请选择放大通道");
    plotter->showZoomIn();
    QCOMPARE(plotter->viewHistory().size(), 2);
    QVERIFY(view(*plotter) == PlotSettings());
}

void PlotterTest::zoomHintOutlivesThePlot()
{
    auto plotter = makePlotter();
    plotter->setOption(4, false);
    plotter->setOption(5, false);
    ModalAnswers answers;
    answers.expect("请选择放大轴线", [&plotter](QMessageBox *box) {
        plotter.reset();
        box->accept();
    });
    plotter->showZoomIn();
    QVERIFY(!plotter);
}

void PlotterTest::verticalShiftAddsNoEntry()
{
    const auto plotter = makePlotter();
    plotter->moveUp();
    QCOMPARE(view(*plotter).minY[1], -1200.0);
    plotter->moveDown();
    plotter->moveDown();
    QCOMPARE(view(*plotter).minY[1], -800.0);
    QCOMPARE(plotter->viewHistory().size(), 1);
}

void PlotterTest::horizontalShiftAddsAnEntry()
{
    const auto plotter = makePlotter();
    PlotSettings settings;
    for (int c = 0; c < plotChannels; ++c) {
        settings.minX[c] = 1000;
        settings.maxX[c] = 2000;
    }
    plotter->setPlotSettings(settings);
    plotter->moveLeft();
    QCOMPARE(view(*plotter).minX[3], 1100.0);
    plotter->moveRight();
    plotter->moveRight();
    QCOMPARE(view(*plotter).minX[3], 900.0);
    QCOMPARE(plotter->viewHistory().size(), 4);
}

void PlotterTest::eachTickAddsAnEntry()
{
    const auto plotter = makePlotter();
    plotter->setLive(true);
    plotter->receivePlotterDataScopeSlot({1}, {}, {}, {});
    plotter->receivePlotterDataScopeSlot(List(800, 1234.0), List(800, -8000.0), {}, {});
    const int before = plotter->viewHistory().size();
    QVERIFY(runUntil([&] { return plotter->viewHistory().size() >= before + 3; }, 20000));
    QCOMPARE(view(*plotter).maxY[0], 10000.0);
    QCOMPARE(view(*plotter).minY[3], -10000.0);
    QCOMPARE(plotter->plotData().xEnd[0], 1000.0);
    QCOMPARE(plotter->plotData().lastValue, (List{1234, -8000, 0, 0}));
    plotter->setLive(false);
    const int after = plotter->viewHistory().size();
    QVERIFY(!runUntil([&] { return plotter->viewHistory().size() > after; }, 500));
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
