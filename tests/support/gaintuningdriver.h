// SPDX-License-Identifier: GPL-3.0-or-later
// Works the gain tuning window as a person would, and tells what it shows beside what a drive holds.
// Main thread; the window outlives it.
#pragma once

#include "simulator/simulateddrive.h"

#include <QString>
#include <QStringList>

class GainTuning;
class MainWindow;

class GainTuningDriver
{
public:
    // Opens the window by its tool button; window is null if none comes.
    explicit GainTuningDriver(const MainWindow *shell);
    // Of a window that is there.
    explicit GainTuningDriver(GainTuning *tuning)
        : window(tuning)
    {
    }

    bool hasReadAll() const;
    QString text(const QString &fieldName) const;
    void type(const QString &fieldName, const QString &text) const;
    void choose(const char *comboName, int index) const;
    void setGrade(int grade) const;
    void click(const char *buttonName) const;
    bool isEnabled(const char *widgetName) const;
    // Brings the notch filters into view, which stand last.
    void scrollDown() const;
    void typeIntoTable(int row, const QString &text) const;

    // A line for each value on the screen that is not the drive's; what is still empty counts as another one.
    QStringList differencesTo(kt500sim::SimulatedDrive *drive) const;

    GainTuning *window = nullptr;
};
