// SPDX-License-Identifier: GPL-3.0-or-later
// The cursors of the plot, the tag of a point, and images of it all.
#include "plotmeasurebench.h"
#include "plotterbench.h"

#include "scope/plotter.h"
#include "support/filedialoganswers.h"
#include "support/modalanswers.h"
#include "support/rununtil.h"
#include "support/testdirectory.h"

#include <QImageReader>
#include <QSettings>
#include <QSignalSpy>
#include <QTest>

#include <cmath>

using namespace plotterbench;
using namespace plotmeasurebench;

namespace {

// Whether a vertical cursor stands at this pixel: a red point where no wave and no grid is.
bool hasCursorAt(Plotter *plotter, int x)
{
    const QImage image = plotter->grab().toImage();
    return hasColor(image, {x, 530, 1, 12}, Qt::red);
}

} // namespace

class PlotMeasureTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { directory.clear(); }
    void cursorIsDraggedAtItsHandle();
    void cursorStaysWhereTheButtonWasReleased();
    void firstCursorReadsVisibleChannelsOnly();
    void cursorIsNotGrabbedElsewhere_data();
    void cursorIsNotGrabbedElsewhere();
    void horizontalCursorFindsItsValue();
    void cursorStopsAtTheEdge();
    void cursorKeepsItsPlaceOnResize();
    void cursorsGoWhenSwitchedOff();
    void runHidesCursorsAndRefusesTheMouse();
    void tagShowsTheRightClickedPoint();
    void imageIsSaved_data();
    void imageIsSaved();
    void cancelledImageChangesNothing();
    void pictureOfAllLayers();

private:
    TestDirectory directory;
};

void PlotMeasureTest::cursorIsDraggedAtItsHandle()
{
    const auto plotter = makeStopped(ramp(8000));
    plotter->setXMeasurement(true);
    QVERIFY(hasCursorAt(plotter.get(), 750));
    QSignalSpy values(plotter.get(), &Plotter::sendMoveLineYSignal);
    QTest::mousePress(plotter.get(), Qt::LeftButton, {}, {55, 40});
    // 7 * 100 = 700: sample 560. 7 * 102 = 714 has none of its integer.
    moveMouse(plotter.get(), {150, 40});
    QCOMPARE(values.size(), 1);
    QCOMPARE(values.last().first().value<List>().first(), 560.0);
    moveMouse(plotter.get(), {152, 40});
    QCOMPARE(values.last().first().value<List>().first(), 560.0);
    moveMouse(plotter.get(), {250, 300});
    QCOMPARE(values.last().first().value<List>().first(), 1120.0);
    QTest::mouseRelease(plotter.get(), Qt::LeftButton, {}, {250, 300});
    QVERIFY(hasCursorAt(plotter.get(), 250));
    moveMouse(plotter.get(), {300, 40});
    QCOMPARE(values.size(), 3);
    QVERIFY(!hasCursorAt(plotter.get(), 300));
}

void PlotMeasureTest::cursorStaysWhereTheButtonWasReleased()
{
    const auto plotter = makeStopped(ramp(8000));
    plotter->setXMeasurement(true);
    plotter->setYMeasurement(true);
    QSignalSpy values(plotter.get(), &Plotter::sendMoveLineYSignal);
    // A quick hand's last move need not be reported.
    QTest::mousePress(plotter.get(), Qt::LeftButton, {}, {50, 40});
    QTest::mouseRelease(plotter.get(), Qt::LeftButton, {}, {250, 40});
    QVERIFY(hasCursorAt(plotter.get(), 250));
    QTest::mousePress(plotter.get(), Qt::LeftButton, {}, {750, 40});
    QTest::mouseRelease(plotter.get(), Qt::LeftButton, {}, {5000, 40});
    QVERIFY(hasCursorAt(plotter.get(), 750));
    QTest::mousePress(plotter.get(), Qt::LeftButton, {}, {40, 375});
    QTest::mouseRelease(plotter.get(), Qt::LeftButton, {}, {40, 250});
    QVERIFY(hasColor(plotter->grab().toImage(), {700, 250, 1, 1}, Qt::red));
    QCOMPARE(values.size(), 0); // the fields follow moves
}

void PlotMeasureTest::firstCursorReadsVisibleChannelsOnly()
{
    const auto plotter = makeStopped(ramp(8000), ramp(8000));
    plotter->setVisibleAll(true, false, true, true, true);
    plotter->setXMeasurement(true);
    QSignalSpy values(plotter.get(), &Plotter::sendMoveLineYSignal);
    QTest::mousePress(plotter.get(), Qt::LeftButton, {}, {50, 40});
    moveMouse(plotter.get(), {150, 40});
    QTest::mouseRelease(plotter.get(), Qt::LeftButton, {}, {150, 40});
    QCOMPARE(values.last().first().value<List>(), (List{560, 7999, 0, 0}));
    QTest::mousePress(plotter.get(), Qt::LeftButton, {}, {750, 40});
    moveMouse(plotter.get(), {250, 40});
    QCOMPARE(values.last().first().value<List>(), (List{1120, 1120, 0, 0}));
}

void PlotMeasureTest::cursorIsNotGrabbedElsewhere_data()
{
    QTest::addColumn<QPoint>("press");
    QTest::addColumn<bool>("x");
    QTest::addColumn<bool>("y");
    QTest::newRow("six pixels off") << QPoint(56, 40) << true << true;
    QTest::newRow("inside the plot") << QPoint(60, 300) << true << true;
    QTest::newRow("measurement off") << QPoint(50, 40) << false << true;
    QTest::newRow("y measurement off") << QPoint(40, 375) << true << false;
}

void PlotMeasureTest::cursorIsNotGrabbedElsewhere()
{
    QFETCH(QPoint, press);
    QFETCH(bool, x);
    QFETCH(bool, y);
    const auto plotter = makeStopped(ramp(8000));
    plotter->setXMeasurement(x);
    plotter->setYMeasurement(y);
    QSignalSpy values(plotter.get(), &Plotter::sendMoveLineYSignal);
    QTest::mousePress(plotter.get(), Qt::LeftButton, {}, press);
    moveMouse(plotter.get(), {200, 200});
    QCOMPARE(values.size(), 0);
}

void PlotMeasureTest::horizontalCursorFindsItsValue()
{
    const auto plotter = makeStopped(ramp(900));
    plotter->setYMeasurement(true);
    QSignalSpy values(plotter.get(), &Plotter::sendMoveLineYSignal);
    // y1 stands at 50 + 0.65 * 500; 4 units a pixel from 1000 at 50.
    QTest::mousePress(plotter.get(), Qt::LeftButton, {}, {40, 375});
    moveMouse(plotter.get(), {40, 200});
    QCOMPARE(values.last().first().value<List>().first(), 400.0);
    moveMouse(plotter.get(), {40, 310}); // -40: no sample has it
    QCOMPARE(values.last().first().value<List>().first(), 400.0);
    moveMouse(plotter.get(), {40, 250});
    QCOMPARE(values.last().first().value<List>().first(), 200.0);
    QTest::mouseRelease(plotter.get(), Qt::LeftButton, {}, {40, 250});
    QVERIFY(hasColor(plotter->grab().toImage(), {700, 250, 1, 1}, Qt::red));
}

void PlotMeasureTest::cursorStopsAtTheEdge()
{
    const auto plotter = makeStopped(ramp(8000));
    plotter->setXMeasurement(true);
    QTest::mousePress(plotter.get(), Qt::LeftButton, {}, {50, 40});
    moveMouse(plotter.get(), {300, 40});
    QVERIFY(hasCursorAt(plotter.get(), 300));
    moveMouse(plotter.get(), {5000, 40});
    QVERIFY(!hasCursorAt(plotter.get(), 300));
    QVERIFY(hasCursorAt(plotter.get(), 750));
}

void PlotMeasureTest::cursorKeepsItsPlaceOnResize()
{
    const auto plotter = makeStopped(ramp(8000));
    plotter->setXMeasurement(true);
    QTest::mousePress(plotter.get(), Qt::LeftButton, {}, {50, 40});
    moveMouse(plotter.get(), {400, 40});
    QTest::mouseRelease(plotter.get(), Qt::LeftButton, {}, {400, 40});
    plotter->resize(1000, 600);
    // 0.5 * (999 - 99) + 50
    QVERIFY(hasCursorAt(plotter.get(), 500));
    QVERIFY(hasCursorAt(plotter.get(), 950));
    QVERIFY(!hasCursorAt(plotter.get(), 400));
}

void PlotMeasureTest::cursorsGoWhenSwitchedOff()
{
    const auto plotter = makeStopped(ramp(8000));
    const QImage before = plotter->grab().toImage();
    plotter->setXMeasurement(true);
    plotter->setYMeasurement(true);
    QVERIFY(hasCursorAt(plotter.get(), 750));
    plotter->setXMeasurement(false);
    QVERIFY(!hasCursorAt(plotter.get(), 750));
    plotter->setYMeasurement(false);
    QCOMPARE(plotter->grab().toImage().copy(0, 0, 800, 48), before.copy(0, 0, 800, 48));
}

void PlotMeasureTest::runHidesCursorsAndRefusesTheMouse()
{
    const auto plotter = makeStopped(ramp(8000));
    plotter->setXMeasurement(true);
    plotter->receiveScopIsStopSlot(false);
    QVERIFY(!hasCursorAt(plotter.get(), 750));
    QSignalSpy values(plotter.get(), &Plotter::sendMoveLineYSignal);
    QTest::mousePress(plotter.get(), Qt::LeftButton, {}, {50, 40});
    moveMouse(plotter.get(), {300, 40});
    QTest::mouseRelease(plotter.get(), Qt::LeftButton, {}, {300, 40});
    QTest::mouseClick(plotter.get(), Qt::RightButton, {}, {300, 300});
    QCOMPARE(values.size(), 0);
    QVERIFY(!hasCursorAt(plotter.get(), 300));
}

void PlotMeasureTest::tagShowsTheRightClickedPoint()
{
    const auto plotter = makeStopped(ramp(8000));
    plotter->setVisibleAll(true, true, false, false, true);
    QTest::mouseClick(plotter.get(), Qt::RightButton, {}, {300, 200});
    QVERIFY(hasCursorAt(plotter.get(), 300));
    QImage image = plotter->grab().toImage();
    QCOMPARE(image.pixelColor(305, 200), QColor(Qt::darkCyan));
    QCOMPARE(image.pixelColor(554, 214), QColor(Qt::darkCyan));
    QCOMPARE(image.pixelColor(550, 210), QColor(80, 80, 80));
    QCOMPARE(image.pixelColor(305, 220), QColor(Qt::darkCyan));
    QVERIFY(image.pixelColor(305, 240) != QColor(Qt::darkCyan));
    keepPicture(plotter.get(), "tag.png");
    QTest::mouseClick(plotter.get(), Qt::RightButton, {}, {20, 200});
    QVERIFY(hasCursorAt(plotter.get(), 300));
    QTest::mouseClick(plotter.get(), Qt::LeftButton, {}, {20, 20});
    QVERIFY(!hasCursorAt(plotter.get(), 300));
}

void PlotMeasureTest::imageIsSaved_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("format");
    QTest::newRow("png") << "wave.png" << QByteArray("png");
    QTest::newRow("jpg") << "wave.jpg" << QByteArray("jpeg");
    QTest::newRow("bmp") << "wave.bmp" << QByteArray("bmp");
    QTest::newRow("svg can't be written") << "wave.svg" << QByteArray();
}

void PlotMeasureTest::imageIsSaved()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, format);
    const auto plotter = makeStopped(ramp(8000));
    FileDialogAnswers files;
    files.expect("SaveWaveImage", directory.path() + '/' + name);
    ModalAnswers answers;
    answers.expect("Succeed Save Wave Image ");
    plotter->saveImage();
    QVERIFY(files.isDone() && answers.isDone());
    QCOMPARE(answers.seen.first().title, QStringLiteral("Save  Wave Image"));
    QCOMPARE(QImageReader::imageFormat(directory.path() + '/' + name), format);
    if (!format.isEmpty())
        QCOMPARE(QImage(directory.path() + '/' + name).size(), QSize(800, 600));
    QCOMPARE(QSettings("settings.ini", QSettings::IniFormat).value("SavePath/savePixmapPath").toString(),
             directory.path());
}

void PlotMeasureTest::cancelledImageChangesNothing()
{
    const auto plotter = makeStopped(ramp(8000));
    FileDialogAnswers files;
    files.expectCancelled("SaveWaveImage");
    plotter->saveImage();
    QVERIFY(files.isDone());
    QVERIFY(!QSettings("settings.ini", QSettings::IniFormat).contains("SavePath/savePixmapPath"));
}

void PlotMeasureTest::pictureOfAllLayers()
{
    List noisy(8000);
    for (int i = 0; i < noisy.size(); ++i)
        noisy[i] = 600 * std::sin(i / 300.0) + (i * 7919) % 97;
    const auto plotter = makeStopped(noisy, ramp(8000));
    plotter->setDecimals(1, 2);
    plotter->showAllAdjust();
    plotter->setXMeasurement(true);
    plotter->setYMeasurement(true);
    QVERIFY(runUntil([&] { return plotter->grab().toImage().pixelColor(51, 300).isValid(); }, 1000));
    QCOMPARE(plotter->viewHistory().size(), 2);
    runUntil([] { return false; }, 300);
    keepPicture(plotter.get(), "all.png");
}

QTEST_MAIN(PlotMeasureTest)
#include "tst_plotmeasure.moc"
