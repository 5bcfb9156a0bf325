// SPDX-License-Identifier: GPL-3.0-or-later
// Processor time of the main thread for another rigidity grade, in the window of gain tuning, beside a bare
// widget that fills as many rectangles.
#include "benchmain.h"
#include "gaintuning/gaintuning.h"
#include "gaintuning/rigiditytable.h"
#include "report.h"
#include "support/gaintuningdriver.h"

#include <QCoreApplication>
#include <QEvent>
#include <QPainter>
#include <QtCharts/QChartView>

#include <algorithm>
#include <stdexcept>

namespace {

constexpr int rounds = 7;
constexpr int repetitions = 20;
constexpr int paintLimit = 2000; // turns of the event loop

class BareBars : public QWidget
{
public:
    void setGrade(int newGrade)
    {
        grade = newGrade;
        update();
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        const int width = this->width() / gaintuning::rigidityGrades;
        for (int i = 0; i < gaintuning::rigidityGrades; ++i) {
            const int height = gaintuning::rigidityBarHeight(i) * this->height() / 1100;
            painter.fillRect(i * width, this->height() - height, width, height,
                             i <= grade ? gaintuning::rigidityColour(i) : QColor(Qt::gray));
        }
    }

private:
    int grade = 0;
};

class PaintWatch : public QObject
{
public:
    explicit PaintWatch(QWidget *widget) { widget->installEventFilter(this); }
    bool painted = false;

protected:
    bool eventFilter(QObject *object, QEvent *event) override
    {
        painted = painted || event->type() == QEvent::Paint;
        return QObject::eventFilter(object, event);
    }
};

// Milliseconds from one grade to the other and back, halved: the longer of the two ways would hide in a mean,
// so that both are of one kind.
template <typename SetGrade>
double cost(QWidget *painted, const SetGrade &setGrade, int from, int to)
{
    PaintWatch watch(painted);
    double used = 0;
    for (int i = 0; i < repetitions; ++i) {
        for (const int grade : {to, from}) {
            watch.painted = false;
            const double before = threadSeconds();
            setGrade(grade);
            for (int turn = 0; !watch.painted; ++turn) {
                if (turn == paintLimit)
                    throw std::runtime_error("nothing was painted");
                QCoreApplication::processEvents();
            }
            used += threadSeconds() - before;
        }
    }
    return used / (2 * repetitions) * 1e3;
}

void measure()
{
    GainTuning window;
    window.show();
    auto *const view = window.findChild<QtCharts::QChartView *>();
    const GainTuningDriver driver(&window);
    BareBars bare;
    bare.resize(view->size());
    bare.show();
    // The bars grow when the window opens.
    view->chart()->setAnimationOptions(QtCharts::QChart::NoAnimation);
    view->chart()->setAnimationOptions(QtCharts::QChart::SeriesAnimations);
    QCoreApplication::processEvents();

    QVector<QStringList> table{{"change", "chart", "longest", "bare bars", "ratio", "spread"}};
    for (const auto &[name, from, to] :
         {std::make_tuple("one grade", 15, 16), std::make_tuple("all grades", 0, 31)}) {
        QVector<double> chart;
        QVector<double> peer;
        for (int round = 0; round < rounds; ++round) {
            chart.append(cost(
                view->viewport(), [&driver](int grade) { driver.setGrade(grade); }, from, to));
            peer.append(cost(
                &bare, [&bare](int grade) { bare.setGrade(grade); }, from, to));
        }
        table.append({QString::fromLatin1(name), figure(median(chart), 2),
                      figure(*std::max_element(chart.begin(), chart.end()), 2), figure(median(peer), 3),
                      figure(medianRatio(chart, peer), 1), ratioSpread(chart, peer)});
    }
    printTable(
        QStringLiteral("Recolouring the rigidity grades, milliseconds, drawing included, median of %1 rounds")
            .arg(rounds),
        table);
}

} // namespace

int main(int argc, char *argv[])
{
    return runBenchmark(argc, argv, measure);
}
