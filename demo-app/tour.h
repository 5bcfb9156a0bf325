// SPDX-License-Identifier: GPL-3.0-or-later
// A guided walk through the real windows: steps that wait for something to be seen, look over the windows
// that are on the screen, and then click or type.
// Main thread; lives as long as the walk does.
#pragma once

#include <QApplication>
#include <QElapsedTimer>
#include <QList>
#include <QMap>
#include <QObject>
#include <QSet>
#include <QString>

#include <functional>

class QMessageBox;

class Tour : public QObject
{
    Q_OBJECT

public:
    struct Step
    {
        QString name;
        // True when what the step waits for is on the screen.
        std::function<bool()> isReady;
        // What is done then; the windows are looked over and a picture is taken before it.
        std::function<void()> act;
        // File name of the picture without its ending; empty for none.
        QString picture = {};
        // The entry of tourWindows() that the step shows, such as "scope/plotter.cpp QMessageBox".
        QString shows = {};
        // Name of the picture in the user guide; of a dialog it shows the dialog alone.
        QString guide = {};
        int limit = 10000;   // ms
        bool passes = false; // what it shows goes by itself, so it is looked at at once
    };

    // Pictures go into the folder, which is made if need be.
    Tour(QString folder, QString language, QObject *parent = nullptr);

    void add(const Step &step);
    // Waits for a message box, shows it as a window of this source file, and presses its default button.
    void addMessage(const QString &name, const char *source, const QString &guide = {});
    // The same for a file dialog, which is given this path; with an empty one it is cancelled.
    void addFileDialog(const QString &name, const char *source, const QString &path);
    // Waits until no dialog is open.
    void addClosed(const QString &name, const std::function<void()> &act);
    // Walks the steps in order, beside the application's event loop.
    void start();

    // Looks over the windows on the screen; what is wrong with them is told at the end.
    void look(const QString &where);
    // What was wrong with the windows, a line each.
    QStringList faults() const;
    // The entries of tourWindows() that have not been shown.
    QStringList missing() const;
    QString pictureFolder() const { return folder; }

    // The visible widget of a class, or null.
    template <typename T>
    static T *visible(const QString &objectName = QString());
    // The visible message box with this text, or null.
    static QMessageBox *messageBox(const QString &text);

signals:
    void finished();
    // A step's time has passed, or it said so itself.
    void failed(QString step, QString reason);

public slots:
    // Ends the walk from within a step.
    void fail(const QString &reason);

private:
    void poll();
    void wait();
    static QWidgetList windowsOnScreen();
    void note(const QString &fault, const QString &where);
    void show(const Step &step);
    bool takePicture(const QString &name) const;
    bool takeGuidePicture(const Step &step) const;

    QString folder;
    QString language;
    QList<Step> steps;
    int current = 0;
    bool ended = false;
    QElapsedTimer sinceStep;
    QElapsedTimer sinceReady; // invalid while the current step waits
    QSet<QString> shown;
    QMap<QString, QString> faultPlaces; // step in which a fault was seen first
};

template <typename T>
T *Tour::visible(const QString &objectName)
{
    const QWidgetList widgets = QApplication::allWidgets();
    for (QWidget *widget : widgets) {
        T *const found = qobject_cast<T *>(widget);
        if (found && found->isVisible() && (objectName.isEmpty() || found->objectName() == objectName))
            return found;
    }
    return nullptr;
}
