// SPDX-License-Identifier: GPL-3.0-or-later
#include "curvescenes.h"
#include "scope/curverasteriser.h"
#include "scope/plotthread.h"
#include "support/rununtil.h"

#include <QElapsedTimer>
#include <QTest>

#include <ctime>

namespace {

// The thread sanitizer has a thread of its own and makes every access to memory several times dearer.
#ifdef __SANITIZE_THREAD__
constexpr int slowdown = 10;
#else
constexpr int slowdown = 1;
#endif

// Collects the pictures that a thread sends.
class Pictures : public QObject
{
public:
    explicit Pictures(PlotThread *thread)
    {
        connect(thread, &PlotThread::updateImage, this, [this](const QImage &image) { all.append(image); });
    }
    bool waitFor(int count)
    {
        return runUntil([this, count] { return all.size() >= count; }, 20000);
    }

    QList<QImage> all;
};

double seconds(clockid_t clock)
{
    timespec used{};
    clock_gettime(clock, &used);
    return static_cast<double>(used.tv_sec) + 1e-9 * static_cast<double>(used.tv_nsec);
}

// Processor time of all threads but this one.
double otherThreadsSeconds()
{
    return seconds(CLOCK_PROCESS_CPUTIME_ID) - seconds(CLOCK_THREAD_CPUTIME_ID);
}

PlotInputs someInputs(const QByteArray &kind, int count = 4000)
{
    return scenes::inputs(scenes::wave(kind, count), 0, 1.25 * count, -1000, 1000, {400, 300});
}

QImage drawn(const PlotInputs &in)
{
    CurveRasteriser rasteriser;
    const std::atomic<bool> isEnding{false};
    rasteriser.draw(in, isEnding);
    return rasteriser.image();
}

} // namespace

class PlotThreadTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { qRegisterMetaType<QImage>(); }
    void pictureOfTheInputsComes();
    void inputsSetBeforeTheStartAreDrawn();
    void samePictureIsSentOnce();
    void lastInputsWin();
    void threadSleepsWhenNothingChanges();
    void inputsWithoutRoomDrawNothing();
    void threadEndsInTheMiddleOfAPicture();
    void threadStartsAgain();
    void samplesMayComeWhileItDraws();
};

void PlotThreadTest::pictureOfTheInputsComes()
{
    PlotThread thread;
    Pictures pictures(&thread);
    thread.begin();
    thread.setInputs(someInputs("noisy sine"));
    QVERIFY(pictures.waitFor(1));
    QCOMPARE(pictures.all.last(), drawn(someInputs("noisy sine")));
    thread.setInputs(someInputs("steps"));
    QVERIFY(pictures.waitFor(2));
    QCOMPARE(pictures.all.last(), drawn(someInputs("steps")));
}

void PlotThreadTest::inputsSetBeforeTheStartAreDrawn()
{
    PlotThread thread;
    Pictures pictures(&thread);
    thread.setInputs(someInputs("ramp"));
    QVERIFY(!thread.isRunning());
    thread.begin();
    QVERIFY(pictures.waitFor(1));
    QCOMPARE(pictures.all.last(), drawn(someInputs("ramp")));
}

void PlotThreadTest::samePictureIsSentOnce()
{
    PlotThread thread;
    Pictures pictures(&thread);
    thread.begin();
    for (int i = 0; i < 5; ++i)
        thread.setInputs(someInputs("ramp"));
    QVERIFY(pictures.waitFor(1));
    // Samples outside the window change the inputs, but not the picture.
    PlotInputs more = someInputs("ramp");
    for (int c = 0; c < plotChannels; ++c)
        more.settings.lastMinX[c] = 7;
    thread.setInputs(more);
    thread.setInputs(someInputs("steps"));
    QVERIFY(runUntil([&] { return pictures.all.last() == drawn(someInputs("steps")); }, 20000));
    QCOMPARE(pictures.all.size(), 2);
}

void PlotThreadTest::lastInputsWin()
{
    PlotThread thread;
    Pictures pictures(&thread);
    thread.begin();
    for (int i = 1; i <= 200; ++i) {
        PlotInputs in = someInputs("noise", 20000);
        in.settings.maxX[0] = 1000.0 * i;
        thread.setInputs(in);
    }
    PlotInputs last = someInputs("fast sine");
    thread.setInputs(last);
    QVERIFY(runUntil([&] { return !pictures.all.isEmpty() && pictures.all.last() == drawn(last); }, 20000));
    QVERIFY(pictures.all.size() <= 201);
}

void PlotThreadTest::threadSleepsWhenNothingChanges()
{
    PlotThread thread;
    Pictures pictures(&thread);
    thread.begin();
    thread.setInputs(someInputs("noise", 100000));
    QVERIFY(pictures.waitFor(1));
    // Until the thread has compared its picture and gone to sleep: then it takes less than 1 % of a core.
    double share = 1;
    for (int attempt = 0; attempt < 50 && share >= 0.01 * slowdown; ++attempt) {
        const double before = otherThreadsSeconds();
        QElapsedTimer timer;
        timer.start();
        runUntil([] { return false; }, 300);
        share = (otherThreadsSeconds() - before) / (static_cast<double>(timer.elapsed()) / 1e3);
    }
    QVERIFY2(share < 0.01 * slowdown, QByteArray::number(share).constData());
    QCOMPARE(pictures.all.size(), 1);
}

void PlotThreadTest::inputsWithoutRoomDrawNothing()
{
    PlotThread thread;
    Pictures pictures(&thread);
    thread.begin();
    PlotInputs in = someInputs("ramp");
    in.plotRect = QRect(QPoint(50, 50), QPoint(40, 40));
    thread.setInputs(in);
    thread.setInputs(PlotInputs());
    thread.setInputs(someInputs("steps"));
    QVERIFY(pictures.waitFor(1));
    QCOMPARE(pictures.all.first(), drawn(someInputs("steps")));
}

void PlotThreadTest::threadEndsInTheMiddleOfAPicture()
{
    const PlotInputs in = scenes::inputs(scenes::wave("noise", 800000), 0, 1e6, -1000, 1000);
    for (int delay = 0; delay < 60; delay += 6) {
        PlotThread thread;
        thread.begin();
        thread.setInputs(in);
        runUntil([] { return false; }, delay);
        QElapsedTimer timer;
        timer.start();
        thread.end();
        QVERIFY2(timer.elapsed() < 100 * slowdown, QByteArray::number(timer.elapsed()).constData());
        QVERIFY(thread.isFinished());
    }
}

void PlotThreadTest::threadStartsAgain()
{
    PlotThread thread;
    Pictures pictures(&thread);
    thread.begin();
    thread.setInputs(someInputs("ramp"));
    QVERIFY(pictures.waitFor(1));
    thread.end();
    thread.setInputs(someInputs("steps"));
    thread.begin();
    QVERIFY(pictures.waitFor(2));
    QCOMPARE(pictures.all.last(), drawn(someInputs("steps")));
}

void PlotThreadTest::samplesMayComeWhileItDraws()
{
    PlotThread thread;
    Pictures pictures(&thread);
    thread.begin();
    PlotInputs in = scenes::inputs({}, 0, 100000, -1000, 1000, {400, 300});
    const QVector<double> y = scenes::wave("noisy sine", 80000);
    PointTrack track;
    for (int from = 0; from < y.size(); from += 400) {
        track.append(PointTrack::sampleStep * from, y.mid(from, 400));
        in.curveMap[0] = track;
        thread.setInputs(in);
        QCoreApplication::processEvents();
    }
    in.curveMap[0] = track;
    const QImage whole = drawn(in);
    QVERIFY(runUntil([&] { return !pictures.all.isEmpty() && pictures.all.last() == whole; }, 20000));
}

QTEST_MAIN(PlotThreadTest)
#include "tst_plotthread.moc"
