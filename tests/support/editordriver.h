// SPDX-License-Identifier: GPL-3.0-or-later
// Works the parameter editor as a person would, and tells what it shows. Main thread; the editor outlives it.
#pragma once

#include <QColor>
#include <QList>
#include <QString>
#include <QStringList>

class ParameterEditor;
class ParameterSettingHelper;
class ParameterTable;
class QListWidget;
class QPoint;
class QProgressDialog;
class QStackedWidget;
class Workplace;

class EditorDriver
{
public:
    // Of an editor that is there.
    EditorDriver(const ParameterEditor *editor);

    // Opens the editor by its tool button and waits for the catalogue; null if that fails.
    static ParameterEditor *open(const Workplace &workplace);
    // Connects, waits for the indicator to say so, and opens the editor; null if any of it fails.
    static ParameterEditor *openConnected(Workplace *workplace, const QString &speed);

    // The last thing that the reading of the catalogue does is to select the first page.
    bool waitForCatalogue() const;
    QListWidget *pageList() const;
    QStackedWidget *pageStack() const;
    int pageCount() const;
    ParameterTable *page(int index) const;
    QList<ParameterTable *> pages() const;
    static int rowOf(const ParameterTable *page, const QString &code);
    int rowOf(int index, const QString &code) const;
    // Of all pages.
    int rowCount() const;
    QString value(int index, const QString &code) const;
    QColor colour(int index, const QString &code) const;
    void setValue(int index, const QString &code, const QString &text) const;
    // Selects the page by a click on its name.
    void clickPage(int index) const;
    // Selects the page of a row and brings its Value cell into view; its centre, in the viewport.
    QPoint showValue(int index, const QString &code) const;
    // Opens the setting helper of a row by a double-click on its value; null if none comes.
    ParameterSettingHelper *openHelper(int index, const QString &code) const;
    QProgressDialog *progress() const;
    // Leaves the rows of these codes only, so that a transfer is short.
    void keepOnly(const QStringList &codes) const;

private:
    const ParameterEditor *window;
};
