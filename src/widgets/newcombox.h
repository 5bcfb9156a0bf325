// SPDX-License-Identifier: GPL-3.0-or-later
// A caption left of a combo box, which users reach directly. Main thread; owned by its form.
#pragma once

#include <QStringList>
#include <QWidget>

class QComboBox;
class QLabel;

class NewCombox : public QWidget
{
    Q_OBJECT

public:
    // The combo box holds the digits "0" to "9".
    explicit NewCombox(const QString &caption, QWidget *parent = nullptr);
    NewCombox(const QString &caption, const QStringList &items, QWidget *parent = nullptr);

    QLabel *label = nullptr;
    QComboBox *comboBox = nullptr;
};
