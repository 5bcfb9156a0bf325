// SPDX-License-Identifier: GPL-3.0-or-later
// The editor's list of pages: a head that folds the twelve pages below it. Main thread; owned by
// ParameterEditor.
#pragma once

#include <QListWidget>

class ParameterPageList : public QListWidget
{
    Q_OBJECT

public:
    explicit ParameterPageList(QWidget *parent = nullptr);

    // Wide enough for the longest name; counts where no splitter state is kept.
    QSize sizeHint() const override;

    // Folds the pages away, or shows them again if they are.
    void toggleFold();

protected:
    void changeEvent(QEvent *event) override;

private:
    mutable int namesWidth = -1; // pixels of the longest name; -1: not known
};
