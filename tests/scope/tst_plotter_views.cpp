// SPDX-License-Identifier: GPL-3.0-or-later
// How keys, wheel, mouse and slots move the views of the plot, and which of them can be stepped back.
#include "plotterbench.h"

#include "scope/plotter.h"
#include "support/modalanswers.h"
#include "support/rununtil.h"
#include "support/testdirectory.h"

#include <QSignalSpy>
#include <QTest>
#include <QToolButton>
#include <QWheelEvent>

using namespace plotterbench;

namespace {

void roll(Plotter *plotter, const QPoint &delta)
{
    QWheelEvent event(QPointF(300, 300), plotter->mapToGlobal(QPoint(300, 300)), QPoint(), delta,
                      Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(plotter, &event);
}

} // namespace

class PlotterViewsTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { directory.clear(); }
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

private:
    TestDirectory directory;
};

void PlotterViewsTest::historyIsSteppedByKeysAndSlots()
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

void PlotterViewsTest::arrowsScrollAllChannels_data()
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

void PlotterViewsTest::arrowsScrollAllChannels()
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

void PlotterViewsTest::wheelScrollsWhileStopped()
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

void PlotterViewsTest::rubberBandZooms()
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

void PlotterViewsTest::smallRubberBandIsAClick()
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

void PlotterViewsTest::runEndsRubberBandAndCursor()
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

void PlotterViewsTest::zoomHintsAreShownOnce_data()
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

void PlotterViewsTest::zoomHintsAreShownOnce()
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

void PlotterViewsTest::zoomWithoutChannelStillAddsAnEntry()
{
    const auto plotter = makePlotter();
    ModalAnswers answers;
    answers.expect("请选择放大通道");
    plotter->showZoomIn();
    QCOMPARE(plotter->viewHistory().size(), 2);
    QVERIFY(view(*plotter) == PlotSettings());
}

void PlotterViewsTest::zoomHintOutlivesThePlot()
{
    auto plotter = makePlotter();
    plotter->setOption(0, true);
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

void PlotterViewsTest::verticalShiftAddsNoEntry()
{
    const auto plotter = makePlotter();
    plotter->moveUp();
    QCOMPARE(view(*plotter).minY[1], -1200.0);
    plotter->moveDown();
    plotter->moveDown();
    QCOMPARE(view(*plotter).minY[1], -800.0);
    QCOMPARE(plotter->viewHistory().size(), 1);
}

void PlotterViewsTest::horizontalShiftAddsAnEntry()
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

void PlotterViewsTest::eachTickAddsAnEntry()
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

QTEST_MAIN(PlotterViewsTest)
#include "tst_plotter_views.moc"
