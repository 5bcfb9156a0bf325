// SPDX-License-Identifier: GPL-3.0-or-later
#include "messageboxes.h"

#include <QCoreApplication>
#include <QEvent>
#include <QMessageBox>
#include <QTimer>

MessageBoxes::MessageBoxes()
{
    QCoreApplication::instance()->installEventFilter(this);
}

bool MessageBoxes::eventFilter(QObject *object, QEvent *event)
{
    if (event->type() == QEvent::Show) {
        if (auto *box = qobject_cast<QMessageBox *>(object)) {
            texts.append(box->text());
            if (shown)
                shown();
            QTimer::singleShot(0, box, &QDialog::accept);
        }
    }
    return QObject::eventFilter(object, event);
}
