// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/messages.h"

#include <QMessageBox>

void showMessage(const QString &text)
{
    QMessageBox box;
    box.setText(text);
    box.exec();
}
