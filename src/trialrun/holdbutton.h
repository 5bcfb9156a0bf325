// SPDX-License-Identifier: GPL-3.0-or-later
// A button that is on while a hand holds it, drawn with a picture. However the hold ends, it is told once,
// and another one needs a new press. Main thread; owned by its form.
#pragma once

#include <QPushButton>

class HoldButton : public QPushButton
{
    Q_OBJECT

public:
    explicit HoldButton(QWidget *parent = nullptr);

    bool isHeld() const { return held; }
    // Ends a hold from within.
    void endHold();

signals:
    void holdBegan();
    void holdEnded();

protected:
    bool event(QEvent *event) override;
    bool eventFilter(QObject *object, QEvent *event) override;

private:
    void beginHold();
    void watchAncestors(bool watch);

    bool held = false;
};
