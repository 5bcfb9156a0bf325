// SPDX-License-Identifier: GPL-3.0-or-later
// A label with a sunken frame, as the parameter forms use it. Main thread; owned by its form.
#pragma once

#include <QLabel>

class SunkenLabel : public QLabel
{
    Q_OBJECT

public:
    // The weight word "Black" gives a weight of 95, any other word the normal one. Size in points.
    SunkenLabel(const QString &text, const QString &weight, int pointSize, QWidget *parent = nullptr);
};
