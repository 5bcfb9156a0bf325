// SPDX-License-Identifier: GPL-3.0-or-later
// Operates the monitor window as a person would, and reads what it shows. Finds its widgets by name, so it
// works in either language. Main thread; a plain value beside the window, which it does not own.
#pragma once

#include <QString>
#include <QStringList>

class Parameter_Monitor;
class QComboBox;
class QLineEdit;
class QPushButton;
class QTabWidget;
class QTableWidget;

class MonitorDriver
{
public:
    explicit MonitorDriver(const Parameter_Monitor *monitor)
        : window(monitor)
    {
    }

    QTableWidget *table(const char *name) const;
    QComboBox *combo(const QString &name) const;
    QPushButton *button(const QString &name) const;
    QLineEdit *edit(const QString &name) const;
    QTabWidget *tabs() const;

    // Text of the Value column of a code such as "Pn-F00"; "no row" where there is none.
    QString status(const QString &code) const;
    QStringList statusCodes() const;
    // Symbol and dot of a row of "di" or "do", counted from 1.
    QString symbol(const QString &half, int row) const;
    bool isGreen(const QString &half, int row) const;
    // Codes of the record, newest first, empty ones left out.
    QStringList recordCodes() const;

    void click(const QString &buttonName) const;
    // Ends the editing of a line with Return.
    void type(const QString &editName, const QString &text) const;
    void choose(const QString &comboName, int index) const;

private:
    const Parameter_Monitor *window;
};
