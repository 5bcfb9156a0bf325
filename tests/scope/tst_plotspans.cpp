// SPDX-License-Identifier: GPL-3.0-or-later
// What lies between the cursors of a stopped picture, and what a cursor's step paints anew.
#include "scope/plotter.h"
#include "support/testdirectory.h"

#include <QApplication>
#include <QBackingStore>
#include <QMouseEvent>
#include <QTest>

#include <qcustomplot.h>

#include <memory>

using List = QVector<double>;

// Shows what the plot measures.
class MeasuredPlotter : public Plotter
{
public:
    const Statistics &statistics(int channel) const { return measurement.statistics(channel); }
};

class PlotSpansTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { directory.clear(); }
    void cursorsAtTheirStartCoverTheWindowExactly();
    void zoomTakesTheStatisticsToTheNewWindow();
    void spanWithoutSamplesLeavesOldStatistics();
    void rightClickOutsideThePlotDrawsNothing();
    void movedCursorsLeaveTheSpectrumAlone();
    void spectrumWithoutAVisibleChannelOpensEmpty();
    void stepOfACursorPaintsWhatAWholePictureWould();
    void rubberBandPaintsWhatAWholePictureWould();

private:
    TestDirectory directory;
};

namespace {

// 800 by 600, 8000 samples of 0, 1, 2... on CH1; the window ends at this x.
std::unique_ptr<MeasuredPlotter> makeStopped(double maxX)
{
    List ramp(8000);
    for (int i = 0; i < ramp.size(); ++i)
        ramp[i] = i;
    auto plotter = std::make_unique<MeasuredPlotter>();
    plotter->resize(800, 600);
    plotter->show();
    plotter->receivePlotterDataScopeSlot({}, {}, {}, {});
    plotter->receivePlotterDataScopeSlot(ramp, {}, {}, {});
    plotter->runTimerOutSlot();
    PlotSettings settings;
    for (int c = 0; c < plotChannels; ++c)
        settings.maxX[c] = maxX;
    plotter->setPlotSettings(settings);
    return plotter;
}

void sendMouse(QWidget *widget, QEvent::Type type, const QPoint &point)
{
    const bool isMove = type == QEvent::MouseMove;
    QMouseEvent event(type, point, widget->mapToGlobal(point), isMove ? Qt::NoButton : Qt::LeftButton,
                      Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(widget, &event);
    QCoreApplication::processEvents(); // paints
}

// What stands on the screen, painted part by part.
QImage screenOf(QWidget *widget)
{
    const auto *const image = dynamic_cast<QImage *>(widget->backingStore()->paintDevice());
    return image ? image->convertToFormat(QImage::Format_RGB32) : QImage();
}

QImage wholePicture(QWidget *widget)
{
    return widget->grab().toImage().convertToFormat(QImage::Format_RGB32);
}

QCustomPlot *spectrumPlot(const char *channel)
{
    const auto windows = QApplication::topLevelWidgets();
    for (QWidget *window : windows)
        if (window->windowTitle() == "Fast Fourier Transform")
            return window->findChild<QCustomPlot *>(QLatin1String(channel));
    return nullptr;
}

} // namespace

void PlotSpansTest::cursorsAtTheirStartCoverTheWindowExactly()
{
    // Sample 3200 stands at 4000; the next one is outside.
    const auto plotter = makeStopped(4000);
    plotter->setXMeasurement(true);
    QCOMPARE(plotter->statistics(0).min, 0.0);
    QCOMPARE(plotter->statistics(0).max, 3200.0);
    QCOMPARE(plotter->statistics(0).average, 1600.0);
}

void PlotSpansTest::zoomTakesTheStatisticsToTheNewWindow()
{
    const auto plotter = makeStopped(5000);
    plotter->setXMeasurement(true);
    QCOMPARE(plotter->statistics(0).max, 4000.0);
    plotter->setOption(0, true);
    plotter->setOption(5, false);
    plotter->showZoomIn();
    // From 500 to 4500.
    QCOMPARE(plotter->statistics(0).min, 400.0);
    QCOMPARE(plotter->statistics(0).max, 3600.0);
    plotter->backButtonSlot();
    QCOMPARE(plotter->statistics(0).max, 4000.0);
}

void PlotSpansTest::spanWithoutSamplesLeavesOldStatistics()
{
    const auto plotter = makeStopped(4000);
    plotter->setXMeasurement(true);
    PlotSettings beyond;
    for (int c = 0; c < plotChannels; ++c) {
        beyond.minX[c] = 500000;
        beyond.maxX[c] = 500100;
    }
    plotter->setPlotSettings(beyond);
    plotter->setXMeasurement(true);
    QCOMPARE(plotter->statistics(0).max, 3200.0);
}

void PlotSpansTest::rightClickOutsideThePlotDrawsNothing()
{
    const auto plotter = makeStopped(4000);
    QCoreApplication::processEvents();
    const QImage before = wholePicture(plotter.get());
    for (const QPoint point : {QPoint(49, 300), QPoint(751, 300), QPoint(300, 49), QPoint(300, 551)}) {
        QTest::mouseClick(plotter.get(), Qt::RightButton, {}, point);
        QCOMPARE(wholePicture(plotter.get()), before);
    }
    QTest::mouseClick(plotter.get(), Qt::RightButton, {}, {750, 550});
    QVERIFY(wholePicture(plotter.get()) != before);
}

void PlotSpansTest::movedCursorsLeaveTheSpectrumAlone()
{
    const auto plotter = makeStopped(4000);
    plotter->setXMeasurement(true);
    plotter->showFFT();
    const QCustomPlot *const spectrum = spectrumPlot("CH1");
    QCOMPARE(spectrum->graph(0)->data()->size(), 2048); // 3201 samples
    QTest::mousePress(plotter.get(), Qt::LeftButton, {}, {750, 40});
    sendMouse(plotter.get(), QEvent::MouseMove, {100, 40});
    QTest::mouseRelease(plotter.get(), Qt::LeftButton, {}, {100, 40});
    QCOMPARE(spectrum->graph(0)->data()->size(), 2048);
    plotter->showFFT();
    QCOMPARE(spectrum->graph(0)->data()->size(), 256); // 229 samples
}

void PlotSpansTest::spectrumWithoutAVisibleChannelOpensEmpty()
{
    const auto plotter = makeStopped(4000);
    plotter->setXMeasurement(true);
    plotter->showFFT();
    QCOMPARE(spectrumPlot("CH1")->graphCount(), 1);
    plotter->setVisibleAll(false, false, false, false, true);
    spectrumPlot("CH1")->window()->close();
    plotter->showFFT();
    QVERIFY(spectrumPlot("CH1")->window()->isVisible());
    for (const char *channel : {"CH1", "CH2", "CH3", "CH4"})
        QCOMPARE(spectrumPlot(channel)->graphCount(), 0);
}

void PlotSpansTest::stepOfACursorPaintsWhatAWholePictureWould()
{
    const auto plotter = makeStopped(4000);
    plotter->setXMeasurement(true);
    plotter->setYMeasurement(true);
    QCoreApplication::processEvents();
    QVERIFY(!screenOf(plotter.get()).isNull());
    sendMouse(plotter.get(), QEvent::MouseButtonPress, {50, 40});
    for (const int x : {51, 60, 300, 299, 5000, 120}) {
        sendMouse(plotter.get(), QEvent::MouseMove, {x, 40});
        QCOMPARE(screenOf(plotter.get()), wholePicture(plotter.get()));
    }
    sendMouse(plotter.get(), QEvent::MouseButtonRelease, {120, 40});
    sendMouse(plotter.get(), QEvent::MouseButtonPress, {40, 375});
    for (const int y : {370, 100, 20, 5000, 300}) {
        sendMouse(plotter.get(), QEvent::MouseMove, {40, y});
        QCOMPARE(screenOf(plotter.get()), wholePicture(plotter.get()));
    }
}

void PlotSpansTest::rubberBandPaintsWhatAWholePictureWould()
{
    const auto plotter = makeStopped(4000);
    QCoreApplication::processEvents();
    sendMouse(plotter.get(), QEvent::MouseButtonPress, {200, 200});
    for (const QPoint point : {QPoint(300, 260), QPoint(250, 400), QPoint(100, 90), QPoint(200, 200)}) {
        sendMouse(plotter.get(), QEvent::MouseMove, point);
        QCOMPARE(screenOf(plotter.get()), wholePicture(plotter.get()));
    }
}

QTEST_MAIN(PlotSpansTest)
#include "tst_plotspans.moc"
