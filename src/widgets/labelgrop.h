// SPDX-License-Identifier: GPL-3.0-or-later
// A caption above a framed value. Main thread; owned by its form.
#pragma once

#include <QWidget>

class QLabel;

class LabelGrop : public QWidget
{
    Q_OBJECT

public:
    explicit LabelGrop(const QString &caption, QWidget *parent = nullptr);

    QLabel *captionLabel = nullptr;
    QLabel *valueLabel = nullptr;
};
