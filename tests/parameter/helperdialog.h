// SPDX-License-Identifier: GPL-3.0-or-later
// A plain row as the table hands it to the setting helper, and the parts of the dialog that a test works
// with. Main thread.
#pragma once

#include <QLineEdit>
#include <QPushButton>
#include <QString>

namespace helperdialog {

inline QStringList row(const QString &value, const QString &min, const QString &max,
                       const QString &mark = QString())
{
    return {"Pn-007", "", "", "", "", mark, value, "0.1rpm", min, max, "200.0", "JOG speed value"};
}

inline QStringList tenths()
{
    return row("200.0", "0.0", "6000.0");
}

inline QPushButton *button(const QWidget &dialog, const char *name)
{
    return dialog.findChild<QPushButton *>(QLatin1String(name));
}

inline QLineEdit *valueEdit(const QWidget &dialog)
{
    return dialog.findChild<QLineEdit *>();
}

} // namespace helperdialog
