// SPDX-License-Identifier: GPL-3.0-or-later
#include "trialrun/holdbutton.h"

#include <QEvent>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QWindow>

namespace {

// What ends a hold when it happens to the button itself.
bool endsHold(QEvent::Type type)
{
    switch (type) {
    case QEvent::MouseButtonRelease:
    case QEvent::FocusOut:
    case QEvent::Leave:
    case QEvent::UngrabMouse:
    case QEvent::ContextMenu:
        return true;
    default:
        return false;
    }
}

// The same for the button and every widget around it.
bool endsHoldAround(QEvent::Type type)
{
    switch (type) {
    case QEvent::Hide:
    case QEvent::Close:
    case QEvent::WindowDeactivate:
    case QEvent::WindowBlocked:
    case QEvent::WindowStateChange:
    case QEvent::EnabledChange:
    case QEvent::ParentChange:
        return true;
    default:
        return false;
    }
}

} // namespace

HoldButton::HoldButton(QWidget *parent)
    : QPushButton(parent)
{
    setFlat(true);
    setFocusPolicy(Qt::StrongFocus);
    connect(this, &QAbstractButton::pressed, this, &HoldButton::beginHold);
    connect(this, &QAbstractButton::released, this, &HoldButton::endHold);
    connect(qGuiApp, &QGuiApplication::focusWindowChanged, this, &HoldButton::endHold);
    connect(qGuiApp, &QGuiApplication::applicationStateChanged, this, &HoldButton::endHold);
}

void HoldButton::beginHold()
{
    if (held)
        return;
    held = true;
    watchAncestors(true);
    emit holdBegan();
}

void HoldButton::endHold()
{
    if (!held)
        return;
    held = false;
    watchAncestors(false);
    setDown(false);
    emit holdEnded();
}

void HoldButton::watchAncestors(bool watch)
{
    for (QWidget *around = parentWidget(); around; around = around->parentWidget()) {
        if (watch)
            around->installEventFilter(this);
        else
            around->removeEventFilter(this);
    }
}

bool HoldButton::event(QEvent *event)
{
    // The base takes a hand that comes back with the mouse button still down for a new press.
    if (event->type() == QEvent::MouseMove) {
        if (held && !rect().contains(static_cast<QMouseEvent *>(event)->pos()))
            endHold();
        return true;
    }
    const bool handled = QPushButton::event(event);
    if (endsHold(event->type()) || endsHoldAround(event->type()))
        endHold();
    return handled;
}

bool HoldButton::eventFilter(QObject *object, QEvent *event)
{
    if (endsHoldAround(event->type()))
        endHold();
    return QPushButton::eventFilter(object, event);
}
