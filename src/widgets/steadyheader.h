// SPDX-License-Identifier: GPL-3.0-or-later
// A header that keeps what each head needs until a head changes: Qt measures them all at every show and hide
// of their table. Main thread; owned by the table that it is made for.
#pragma once

#include <QHeaderView>
#include <QVector>

class SteadyHeader : public QHeaderView
{
    Q_OBJECT

public:
    SteadyHeader(Qt::Orientation orientation, QWidget *table);

    void setModel(QAbstractItemModel *model) override;

protected:
    void changeEvent(QEvent *event) override;
    bool viewportEvent(QEvent *event) override;
    QSize sectionSizeFromContents(int logicalIndex) const override;

private:
    void forget();

    mutable QVector<QSize> sizes; // pixels; an invalid one is not known
};
