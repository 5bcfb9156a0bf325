// SPDX-License-Identifier: GPL-3.0-or-later
#include "gaintuning/rigiditychart.h"

#include "gaintuning/rigiditytable.h"

#include <QtCharts/QBarSeries>
#include <QtCharts/QBarSet>
#include <QtCharts/QLegend>

using namespace gaintuning;

namespace {

constexpr int chartHeight = 100; // pixels
constexpr int margin = -8;       // pixels: the chart's own frame is wider than the bars need

} // namespace

RigidityChart::RigidityChart(QGraphicsItem *parent)
    : QtCharts::QChart(parent)
{
    auto *const series = new QtCharts::QBarSeries;
    for (int grade = 0; grade < rigidityGrades; ++grade) {
        auto *const bar = new QtCharts::QBarSet(tr("Grade"));
        bar->append(rigidityBarHeight(grade));
        bars.append(bar);
        series->append(bar);
        colour(grade, false);
    }
    series->setBarWidth(1.0);
    addSeries(series);
    setAnimationOptions(QtCharts::QChart::SeriesAnimations);
    legend()->hide();
    setMaximumHeight(chartHeight);
    setMargins(QMargins(margin, margin, margin, margin));
    setBackgroundBrush(Qt::gray);
    setBackgroundRoundness(0);
    setGrade(0);
}

void RigidityChart::setGrade(int grade)
{
    for (int i = grade + 1; i <= shownGrade; ++i)
        colour(i, false);
    for (int i = shownGrade + 1; i <= grade; ++i)
        colour(i, true);
    shownGrade = grade;
}

void RigidityChart::colour(int grade, bool isReached)
{
    bars.at(grade)->setColor(isReached ? rigidityColour(grade) : QColor(Qt::gray));
}
