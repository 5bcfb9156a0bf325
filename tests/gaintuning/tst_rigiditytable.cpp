// SPDX-License-Identifier: GPL-3.0-or-later
#include "gaintuning/rigiditychart.h"
#include "gaintuning/rigiditytable.h"
#include "support/eventcount.h"

#include <QtCharts/QBarSeries>
#include <QtCharts/QBarSet>
#include <QtCharts/QChartView>
#include <QtCharts/QLegend>

#include <QTest>

using namespace gaintuning;

class RigidityTableTest : public QObject
{
    Q_OBJECT

private slots:
    void everyGradeHasItsGains();
    void everyGradeHasItsColour();
    void chartIsBuiltAsTold();
    void barsUpToTheGradeAreColoured_data();
    void barsUpToTheGradeAreColoured();
    void loweringTheGradeGreysTheBarsAbove();
    void gradeIsRecolouredAtOnce();
};

namespace {

QList<QtCharts::QBarSet *> barsOf(const RigidityChart &chart)
{
    return static_cast<QtCharts::QBarSeries *>(chart.series().first())->barSets();
}

QColor colourOf(int grade)
{
    if (grade <= 3)
        return {200, 248, 200};
    if (grade <= 9)
        return {165, 203, 82};
    if (grade <= 13)
        return {23, 211, 23};
    if (grade <= 17)
        return {83, 154, 115};
    if (grade <= 21)
        return {0, 136, 45};
    if (grade <= 25)
        return {255, 174, 34};
    return grade <= 28 ? QColor(255, 106, 6) : QColor(255, 11, 43);
}

// The highest row with a pixel of this colour, -1 if there is none.
int topOf(const QImage &picture, const QColor &colour)
{
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            if (picture.pixelColor(x, y) == colour)
                return y;
        }
    }
    return -1;
}

} // namespace

void RigidityTableTest::everyGradeHasItsGains()
{
    static const char *const expected[32][4] = {
        {"2.0", "1.5", "370.0", "15.00"},  {"2.5", "2.0", "280.0", "11.00"},
        {"3.0", "2.5", "220.0", "9.00"},   {"4.0", "3.0", "190.0", "8.00"},
        {"4.5", "3.5", "160.0", "6.00"},   {"5.5", "4.5", "120.0", "5.00"},
        {"7.5", "6.0", "90.0", "4.00"},    {"9.5", "7.5", "70.0", "3.00"},
        {"11.5", "9.0", "60.0", "3.00"},   {"14.0", "11.0", "50.0", "2.00"},
        {"17.5", "14.0", "40.0", "2.00"},  {"32.0", "18.0", "31.0", "1.26"},
        {"39.0", "22.0", "25.0", "1.03"},  {"48.0", "27.0", "21.0", "0.84"},
        {"63.0", "35.0", "16.0", "0.65"},  {"72.0", "40.0", "14.0", "0.57"},
        {"90.0", "50.0", "12.0", "0.45"},  {"108.0", "60.0", "11.0", "0.38"},
        {"135.0", "75.0", "9.0", "0.30"},  {"162.0", "90.0", "8.0", "0.25"},
        {"206.0", "115.0", "7.0", "0.20"}, {"251.0", "140.0", "6.0", "0.16"},
        {"305.0", "170.0", "5.0", "0.13"}, {"377.0", "210.0", "4.0", "0.11"},
        {"449.0", "250.0", "4.0", "0.09"}, {"500.0", "280.0", "3.5", "0.08"},
        {"560.0", "310.0", "3.0", "0.07"}, {"610.0", "340.0", "3.0", "0.07"},
        {"660.0", "370.0", "2.5", "0.06"}, {"720.0", "400.0", "2.5", "0.06"},
        {"810.0", "450.0", "2.0", "0.05"}, {"900.0", "500.0", "2.0", "0.05"},
    };
    for (int grade = 0; grade < 32; ++grade) {
        const RigidityGains &gains = rigidityGains(grade);
        QCOMPARE(gains.positionLoopGain, expected[grade][0]);
        QCOMPARE(gains.speedLoopGain, expected[grade][1]);
        QCOMPARE(gains.speedLoopIntegralTime, expected[grade][2]);
        QCOMPARE(gains.torqueFilterTime, expected[grade][3]);
    }
}

void RigidityTableTest::everyGradeHasItsColour()
{
    for (int grade = 0; grade < 32; ++grade)
        QCOMPARE(rigidityColour(grade), colourOf(grade));
}

void RigidityTableTest::chartIsBuiltAsTold()
{
    const RigidityChart chart;
    QCOMPARE(chart.animationOptions(), QtCharts::QChart::SeriesAnimations);
    QVERIFY(!chart.legend()->isVisible());
    QCOMPARE(chart.maximumHeight(), 100.0);
    QCOMPARE(chart.margins(), QMargins(-8, -8, -8, -8));
    QCOMPARE(chart.backgroundBrush().color(), QColor(Qt::gray));
    QCOMPARE(static_cast<QtCharts::QBarSeries *>(chart.series().first())->barWidth(), 1.0);
    const auto bars = barsOf(chart);
    QCOMPARE(bars.size(), 32);
    for (int i = 0; i < 32; ++i) {
        QCOMPARE(bars.at(i)->label(), QStringLiteral("Grade"));
        QCOMPARE(bars.at(i)->count(), 1);
        QCOMPARE(bars.at(i)->at(0), double((i + 2) * i + 10));
    }
}

void RigidityTableTest::barsUpToTheGradeAreColoured_data()
{
    QTest::addColumn<int>("grade");
    for (int grade = 0; grade < 32; ++grade)
        QTest::addRow("grade %d", grade) << grade;
}

void RigidityTableTest::barsUpToTheGradeAreColoured()
{
    QFETCH(int, grade);
    RigidityChart chart;
    chart.setGrade(grade);
    const auto bars = barsOf(chart);
    for (int i = 0; i < 32; ++i)
        QCOMPARE(bars.at(i)->color(), i <= grade ? colourOf(i) : QColor(Qt::gray));
}

void RigidityTableTest::loweringTheGradeGreysTheBarsAbove()
{
    RigidityChart chart;
    chart.setGrade(20);
    chart.setGrade(10);
    const auto bars = barsOf(chart);
    for (int i = 0; i < 32; ++i)
        QCOMPARE(bars.at(i)->color(), i <= 10 ? colourOf(i) : QColor(Qt::gray));
}

// No bar grows anew, and there is no picture for each of the bars.
void RigidityTableTest::gradeIsRecolouredAtOnce()
{
    QtCharts::QChartView view;
    auto *const chart = new RigidityChart;
    view.setChart(chart);
    view.resize(700, 100);
    view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&view));
    chart->setGrade(31);
    const auto picture = [&view] { return view.grab().toImage(); };
    QImage settled;
    QTRY_VERIFY2(
        [&] {
            const QImage now = picture();
            const bool rests = now == settled && topOf(now, colourOf(31)) >= 0;
            settled = now;
            return rests;
        }(),
        "the bars have not come to rest");
    EventCount paints(view.viewport(), QEvent::Paint);
    chart->setGrade(0);
    QTRY_VERIFY(paints.count > 0);
    QVERIFY2(paints.count <= 2, qPrintable(QString::number(paints.count)));
    QCOMPARE(topOf(picture(), colourOf(31)), -1);
    chart->setGrade(31);
    QVERIFY(qAbs(topOf(picture(), colourOf(31)) - topOf(settled, colourOf(31))) <= 1);
}

QTEST_MAIN(RigidityTableTest)
#include "tst_rigiditytable.moc"
