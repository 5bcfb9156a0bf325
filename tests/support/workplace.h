// SPDX-License-Identifier: GPL-3.0-or-later
// The whole product at a simulated drive: main window, link and drive, operated as a person would.
// Main thread; one on the stack of a test function.
#pragma once

#include "simulator/simulateddrive.h"
#include "support/testdirectory.h"

#include <QString>

#include <memory>

class MainWindow;
class QAction;
class QTemporaryDir;
class QWidget;
struct Application;

class Workplace
{
public:
    explicit Workplace(const QString &language = QStringLiteral("en_US"));
    ~Workplace();
    Q_DISABLE_COPY_MOVE(Workplace)

    MainWindow *window() const;
    QAction *action(const char *name) const;
    // Picks the drive and the entry of the speed list in the connection dialog and clicks "Ok".
    void connectTo(const QString &speed);
    // Leaves the dialog without a connection.
    void closeConnectionDialog();
    bool isShownOnline() const;

    static void clickAction(const QWidget *window, const char *name);

private:
    TestDirectory directory;
    QTemporaryDir *linkFolder = nullptr;

public:
    std::unique_ptr<kt500sim::SimulatedDrive> drive;
    std::unique_ptr<Application> application;
};
