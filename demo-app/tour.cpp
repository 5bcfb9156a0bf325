// SPDX-License-Identifier: GPL-3.0-or-later
#include "demo-app/tour.h"

#include <QAction>
#include <QDir>
#include <QMessageBox>
#include <QScreen>
#include <QTest>
#include <QTimer>
#include <QToolBar>

namespace {

constexpr int pollInterval = 40; // ms

} // namespace

Tour::Tour(QString pictureFolder, QString pictureLanguage, QObject *parent)
    : QObject(parent)
    , folder(std::move(pictureFolder))
    , language(std::move(pictureLanguage))
{
    QDir().mkpath(folder);
}

void Tour::add(const Step &step)
{
    steps.append(step);
}

void Tour::start()
{
    sinceStep.start();
    QTimer::singleShot(0, this, &Tour::poll);
}

void Tour::fail(const QString &reason)
{
    if (ended)
        return;
    ended = true;
    emit failed(current < steps.size() ? steps.at(current).name : QString(), reason);
}

void Tour::poll()
{
    if (ended)
        return;
    if (current >= steps.size()) {
        ended = true;
        emit finished();
        return;
    }
    const Step step = steps.at(current);
    if (!step.isReady()) {
        if (sinceStep.elapsed() > step.limit) {
            takePicture(QStringLiteral("failed"));
            fail(QStringLiteral("not seen within %1 s").arg(step.limit / 1000));
        }
        QTimer::singleShot(pollInterval, this, &Tour::poll);
        return;
    }
    // What has just appeared is painted before its picture is taken.
    QCoreApplication::processEvents();
    if (!step.picture.isEmpty() && !takePicture(step.picture)) {
        fail(QStringLiteral("the picture could not be written"));
        return;
    }
    // A step may open a dialog that runs its own event loop, so the next one is under way before it.
    QTimer::singleShot(pollInterval, this, [this] {
        ++current;
        sinceStep.restart();
        poll();
    });
    if (step.act)
        step.act();
}

bool Tour::takePicture(const QString &name)
{
    const QString path = QStringLiteral("%1/%2-%3.png").arg(folder, name, language);
    return QApplication::primaryScreen()->grabWindow(0).save(path);
}

QMessageBox *Tour::messageBox(const QString &text)
{
    auto *const box = visible<QMessageBox>();
    return box && box->text() == text ? box : nullptr;
}

bool Tour::clickAction(QAction *action)
{
    if (!action)
        return false;
    const QList<QWidget *> shownOn = action->associatedWidgets();
    for (QWidget *widget : shownOn) {
        auto *const bar = qobject_cast<QToolBar *>(widget);
        if (!bar || !bar->isVisible())
            continue;
        QWidget *const button = bar->widgetForAction(action);
        if (button && button->isVisible()) {
            QTest::mouseClick(button, Qt::LeftButton);
            return true;
        }
    }
    return false;
}
