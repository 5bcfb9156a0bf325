// SPDX-License-Identifier: GPL-3.0-or-later
// The whole product at a simulated drive: main window, link and drive, operated as a person would.
// Main thread; one on the stack of a test function.
#pragma once

#include "simulator/simulateddrive.h"
#include "support/testdirectory.h"

#include <QColor>
#include <QString>

#include <memory>

class MainWindow;
class ParameterEditor;
class ParameterSettingHelper;
class ParameterTable;
class QAction;
class QListWidget;
class QPoint;
class QProgressDialog;
class QTemporaryDir;
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
    bool isShownOnline() const;

    // Opens the parameter editor by its tool button and waits for the catalogue; null if that fails.
    ParameterEditor *openEditor() const;
    // Connects, waits for the indicator to say so, and opens the editor; null if any of it fails.
    ParameterEditor *openConnectedEditor(const QString &speed);
    static void clickAction(const QWidget *window, const char *name);
    static ParameterTable *page(const ParameterEditor *editor, int index);
    static int rowOf(const ParameterTable *page, const QString &code);
    static QString value(const ParameterEditor *editor, int index, const QString &code);
    static QColor colour(const ParameterEditor *editor, int index, const QString &code);
    static void setValue(const ParameterEditor *editor, int index, const QString &code, const QString &text);
    // Selects the page of a row and brings its Value cell into view; its centre, in the viewport.
    static QPoint showValue(const ParameterEditor *editor, int index, const QString &code);
    // Opens the setting helper of a row by a double-click on its value; null if none comes.
    static ParameterSettingHelper *openHelper(const ParameterEditor *editor, int index, const QString &code);
    static QProgressDialog *progress(const ParameterEditor *editor);
    // Leaves the rows of these codes only, so that a transfer is short.
    static void keepOnly(const ParameterEditor *editor, const QStringList &codes);

private:
    TestDirectory directory;
    QTemporaryDir *linkFolder = nullptr;

public:
    std::unique_ptr<kt500sim::SimulatedDrive> drive;
    std::unique_ptr<Application> application;
};
