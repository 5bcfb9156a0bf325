// SPDX-License-Identifier: GPL-3.0-or-later
// The panel of one channel: switch, colour, item, and the last value. Main thread; owned by the scope window,
// which reaches its widgets directly.
#pragma once

#include <QFrame>
#include <QStringList>

class QCheckBox;
class QComboBox;
class QGroupBox;
class QHBoxLayout;
class QLineEdit;
class QPushButton;

class ChannelConfig : public QFrame
{
    Q_OBJECT

public:
    // The name, "CH1" to "CH4", is the object name of the panel and of its box, list and colour button.
    ChannelConfig(const QString &name, const QStringList &items, QWidget *parent = nullptr);

    // "#rrggbb" or "#aarrggbb".
    void setColor(const QString &color);

    QGroupBox *groupBox = nullptr;
    QLineEdit *dataEdit = nullptr; // the last value
    QComboBox *comboBox = nullptr; // row n is row n of the catalogue
    QCheckBox *checkBox = nullptr; // the channel is on
    QPushButton *colorButton = nullptr;
    QLineEdit *typeEdit = nullptr; // "16bit" or "32bit"

    // Rolling the wheel over the list changes nothing.
    bool eventFilter(QObject *object, QEvent *event) override;
};
