// SPDX-License-Identifier: GPL-3.0-or-later
// The range bar of the trial run: a ruler with a marker where the motor stands between its two ends.
// Main thread; owned by its form, which sets the fields and calls update().
#pragma once

#include <QLabel>

class IndicationLable : public QLabel
{
    Q_OBJECT

public:
    explicit IndicationLable(QWidget *parent = nullptr);

    double currentValue = 0; // position, in the unit of the ends
    double spanValue = 0;    // distance between the ends; 0 while none is known
    int forwardValue = 0;    // end on the left
    int rollbackValue = 0;   // end on the right

    // Left edge of the marker in pixels, for a bar of the given width. The forward side is on the left.
    double markerX(int barWidth) const;

protected:
    void paintEvent(QPaintEvent *event) override;
};
