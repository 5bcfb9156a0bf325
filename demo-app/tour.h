// SPDX-License-Identifier: GPL-3.0-or-later
// A guided walk through the real windows: steps that wait for something to be seen, then click or type.
// Main thread; lives as long as the walk does.
#pragma once

#include <QElapsedTimer>
#include <QList>
#include <QObject>
#include <QString>

#include <functional>

class QAction;
class QMessageBox;
class QWidget;

class Tour : public QObject
{
    Q_OBJECT

public:
    struct Step
    {
        QString name;
        // True when what the step waits for is on the screen.
        std::function<bool()> isReady;
        // What is done then; a picture is taken before it.
        std::function<void()> act;
        // File name of the picture without its ending; empty for none.
        QString picture;
        int limit = 10000; // ms
    };

    // Pictures go into the folder, which is made if need be; their names get the language behind them.
    Tour(QString folder, QString language, QObject *parent = nullptr);

    void add(const Step &step);
    // Walks the steps in order, beside the application's event loop.
    void start();

    // The visible widget of a class, or null.
    template <typename T>
    static T *visible(const QString &objectName = QString());
    // The visible message box with this text, or null.
    static QMessageBox *messageBox(const QString &text);
    // Clicks the tool button or menu entry that shows the action; false if none is to be seen.
    static bool clickAction(QAction *action);

signals:
    void finished();
    // A step's time has passed, or it said so itself.
    void failed(QString step, QString reason);

public slots:
    // Ends the walk from within a step.
    void fail(const QString &reason);

private:
    void poll();
    bool takePicture(const QString &name);

    QString folder;
    QString language;
    QList<Step> steps;
    int current = 0;
    bool ended = false;
    QElapsedTimer sinceStep;
};

#include <QApplication>

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
