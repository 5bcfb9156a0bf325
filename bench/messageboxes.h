// SPDX-License-Identifier: GPL-3.0-or-later
// Accepts every message box as soon as it is shown, for the object's life, and keeps its text.
// Main thread; on the stack of what is measured.
#pragma once

#include <QObject>
#include <QStringList>

#include <functional>

class MessageBoxes : public QObject
{
public:
    MessageBoxes();

    // Called when a box appears, before it is answered.
    std::function<void()> shown;
    QStringList texts;

protected:
    bool eventFilter(QObject *object, QEvent *event) override;
};
