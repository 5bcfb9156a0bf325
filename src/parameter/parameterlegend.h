// SPDX-License-Identifier: GPL-3.0-or-later
// The row below the editor's pages that says what the five marks mean. Main thread; owned by the window that
// it is put into.
#pragma once

#include <QWidget>

class ParameterLegend : public QWidget
{
    Q_OBJECT

public:
    explicit ParameterLegend(QWidget *parent = nullptr);
};
