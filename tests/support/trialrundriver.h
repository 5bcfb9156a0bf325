// SPDX-License-Identifier: GPL-3.0-or-later
// Works the trial run as a hand does: finds its widgets, clicks, holds and types, and reads what it shows.
// Main thread; a value that does not own the window.
#pragma once

#include <QString>
#include <QStringList>

class HoldButton;
class QPushButton;
class QRadioButton;
class QTableWidget;
class QWidget;
class TrialRun;

class TrialRunDriver
{
public:
    explicit TrialRunDriver(TrialRun *window);

    TrialRun *window() const { return trialRun; }
    QWidget *page() const;
    QPushButton *servoOn() const;
    QPushButton *servoOff() const;
    QPushButton *jogRun() const;
    QPushButton *positionRun() const;
    // By its present object name, "Run" or "Pause"; null for the other.
    QPushButton *runButton(const char *name) const;
    HoldButton *jogForward() const;
    HoldButton *jogRollback() const;
    HoldButton *moveForward() const;
    HoldButton *moveRollback() const;
    QRadioButton *once() const;
    QRadioButton *continuous() const;
    QTableWidget *jogTable() const;
    QTableWidget *positionTable() const;

    static void click(QWidget *button);
    // Puts the mouse button down in the middle, and up again.
    static void hold(QWidget *button);
    static void letGo(QWidget *button);
    static QString cell(const QTableWidget *table, int row);
    // A double click on the value opens its editor, which is closed again.
    static bool opensForTyping(QTableWidget *table, int row);
    // Sets the value as an editor of the cell does.
    static void type(QTableWidget *table, int row, const QString &text);
    // Numbers of step two, as they are shown.
    QString forwardLimit() const;
    QString currentPosition() const;
    QString rollbackLimit() const;
    // Everything in the column "Value".
    static QStringList cells(const QTableWidget *table);

private:
    template <typename Widget>
    Widget *find(const char *name) const;
    QString shown(const char *name) const;

    TrialRun *trialRun;
};
