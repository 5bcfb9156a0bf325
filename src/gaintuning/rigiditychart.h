// SPDX-License-Identifier: GPL-3.0-or-later
// The bar chart of the rigidity grades: bars up to the grade that is set carry their colour, the others are
// grey. Main thread; owned by its chart view.
#pragma once

#include <QtCharts/QChart>

#include <QList>

QT_CHARTS_BEGIN_NAMESPACE
class QBarSet;
QT_CHARTS_END_NAMESPACE

class RigidityChart : public QtCharts::QChart
{
    Q_OBJECT

public:
    explicit RigidityChart(QGraphicsItem *parent = nullptr);

    // Colours the bars up to the grade, 0 to 31. Only the bars between the old and the new grade change.
    void setGrade(int grade);

private:
    void colour(int grade, bool isReached);

    QList<QtCharts::QBarSet *> bars; // one a grade
    int shownGrade = -1;
};
