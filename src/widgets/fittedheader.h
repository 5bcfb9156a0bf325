// SPDX-License-Identifier: GPL-3.0-or-later
// The column heads of a table whose columns are as wide as their contents. One column, whose texts change all
// the time, is looked at only when its widest text changes. Main thread; owned by the table that it is made
// for.
#pragma once

#include "widgets/steadyheader.h"

#include <QVector>

class FittedHeader : public SteadyHeader
{
    Q_OBJECT

public:
    // The column is the one whose texts change; they all have the table's font.
    FittedHeader(int changingColumn, QWidget *table);

public slots:
    void reset() override;

protected:
    void changeEvent(QEvent *event) override;

protected slots:
    void dataChanged(const QModelIndex &topLeft, const QModelIndex &bottomRight,
                     const QVector<int> &roles = QVector<int>()) override;
    void rowsInserted(const QModelIndex &parent, int start, int end) override;
    void rowsAboutToBeRemoved(const QModelIndex &parent, int start, int end) override;

private:
    int textWidth(int row) const;
    int widest() const;

    const int column;
    QVector<int> widths; // pixels of the text of each row in that column
    int fittedWidth = 0; // pixels of the widest text when the columns were last fitted
};
