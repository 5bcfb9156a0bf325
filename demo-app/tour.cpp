// SPDX-License-Identifier: GPL-3.0-or-later
#include "demo-app/tour.h"

#include "demo-app/tourwindows.h"
#include "demo-app/widgetcheck.h"
#include "settings/applanguage.h"

#include <QDialog>
#include <QDir>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPixmap>
#include <QPushButton>
#include <QScreen>
#include <QTest>
#include <QTimer>

namespace {

constexpr int pollInterval = 40; // ms
// What has just appeared gets its frame from the window manager, and is painted.
constexpr int settleTime = 200; // ms

QString classOf(const QString &entry)
{
    return entry.section(QLatin1Char(' '), -1);
}

QWidget *visibleOfClass(const QString &className)
{
    const QWidgetList widgets = QApplication::allWidgets();
    for (QWidget *widget : widgets) {
        if (widget->isVisible() && widget->inherits(qPrintable(className)))
            return widget;
    }
    return nullptr;
}

QString entryOf(const char *source, const char *className)
{
    return QLatin1String(source) + QLatin1Char(' ') + QLatin1String(className);
}

} // namespace

Tour::Tour(QString pictureFolder, QString pictureLanguage, QObject *parent)
    : QObject(parent)
    , folder(std::move(pictureFolder))
    , language(isChinese(pictureLanguage) ? QStringLiteral("zh") : QStringLiteral("en"))
{
    QDir().mkpath(folder + QStringLiteral("/guide/") + language);
}

void Tour::add(const Step &step)
{
    steps.append(step);
}

void Tour::addMessage(const QString &name, const char *source, const QString &guide)
{
    add({name, [] { return visible<QMessageBox>() != nullptr; },
         [] {
             auto *const box = visible<QMessageBox>();
             QPushButton *const button = box->defaultButton()
                                             ? box->defaultButton()
                                             : qobject_cast<QPushButton *>(box->buttons().value(0));
             if (button)
                 QTest::mouseClick(button, Qt::LeftButton);
         },
         QString(), entryOf(source, "QMessageBox"), guide});
}

void Tour::addFileDialog(const QString &name, const char *source, const QString &path)
{
    add({name, [] { return visible<QFileDialog>() != nullptr; },
         [path] {
             auto *const dialog = visible<QFileDialog>();
             if (path.isEmpty()) {
                 dialog->reject();
                 return;
             }
             auto *const line = dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
             line->setText(path);
             QTest::keyClick(line, Qt::Key_Return);
         },
         QString(), entryOf(source, "QFileDialog")});
}

void Tour::addClosed(const QString &name, const std::function<void()> &act)
{
    add({name, [] { return !QApplication::activeModalWidget() && !visible<QDialog>(); }, act});
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

void Tour::wait()
{
    QTimer::singleShot(pollInterval, this, &Tour::poll);
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
        sinceReady.invalidate();
        if (sinceStep.elapsed() > step.limit) {
            takePicture(QStringLiteral("failed"));
            fail(QStringLiteral("not seen within %1 s").arg(step.limit / 1000));
        }
        wait();
        return;
    }
    const bool isSeen = !step.picture.isEmpty() || !step.shows.isEmpty() || !step.guide.isEmpty();
    if (!sinceReady.isValid())
        sinceReady.start();
    if (isSeen && !step.passes && sinceReady.elapsed() < settleTime) {
        wait();
        return;
    }
    if (isSeen)
        show(step);
    // A step may open a dialog that runs its own event loop, so the next one is under way before it.
    QTimer::singleShot(pollInterval, this, [this] {
        ++current;
        sinceStep.restart();
        sinceReady.invalidate();
        poll();
    });
    if (step.act && !ended)
        step.act();
}

void Tour::show(const Step &step)
{
    look(step.name);
    const QWidgetList windows = windowsOnScreen();
    for (const QWidget *window : windows) {
        // What passes has not found its place yet.
        if (!step.passes && !isOnScreen(window))
            note(widgetPath(window) + QStringLiteral(": is not on the screen as a whole"), step.name);
    }
    if (!step.picture.isEmpty() && !takePicture(step.picture))
        fail(QStringLiteral("the picture could not be written"));
    if (!step.guide.isEmpty() && !takeGuidePicture(step))
        fail(QStringLiteral("the picture of the guide could not be written"));
    if (step.shows.isEmpty())
        return;
    if (!visibleOfClass(classOf(step.shows)))
        fail(QStringLiteral("%1 is not on the screen").arg(step.shows));
    shown.insert(step.shows);
    // Message boxes and the like are told apart by a picture as well.
    if (step.picture.isEmpty() && !takePicture(QStringLiteral("%1-%2").arg(current).arg(classOf(step.shows))))
        fail(QStringLiteral("the picture could not be written"));
}

QWidgetList Tour::windowsOnScreen()
{
    QWidgetList windows;
    const QWidgetList all = QApplication::topLevelWidgets();
    for (QWidget *window : all) {
        if (window->isVisible() && window->windowType() != Qt::ToolTip)
            windows.append(window);
    }
    return windows;
}

void Tour::note(const QString &fault, const QString &where)
{
    if (!faultPlaces.contains(fault))
        faultPlaces.insert(fault, where);
}

void Tour::look(const QString &where)
{
    const QWidgetList windows = windowsOnScreen();
    for (const QWidget *window : windows) {
        const QVector<WidgetFault> found = widgetFaults(window);
        for (const WidgetFault &fault : found)
            note(fault.text(), where);
    }
}

QStringList Tour::faults() const
{
    QStringList lines;
    for (auto fault = faultPlaces.begin(); fault != faultPlaces.end(); ++fault)
        lines.append(QStringLiteral("%1 (%2)").arg(fault.key(), fault.value()));
    return lines;
}

QStringList Tour::missing() const
{
    QStringList entries;
    for (const TourWindow &window : tourWindows()) {
        const QString entry = entryOf(window.source, window.className);
        if (!window.whyNever && !shown.contains(entry))
            entries.append(entry);
    }
    return entries;
}

bool Tour::takePicture(const QString &name) const
{
    return QApplication::primaryScreen()->grabWindow(0).save(QStringLiteral("%1/%2.png").arg(folder, name));
}

bool Tour::takeGuidePicture(const Step &step) const
{
    constexpr int smallest = 0; // quality: nothing is lost, it only takes longer
    const QWidget *subject = visibleOfClass(classOf(step.shows));
    subject = subject ? subject->window() : QApplication::activeWindow();
    QScreen *const screen = QApplication::primaryScreen();
    const QRect place = subject ? subject->frameGeometry() & screen->geometry() : screen->geometry();
    return screen->grabWindow(0, place.x(), place.y(), place.width(), place.height())
        .save(QStringLiteral("%1/guide/%2/%3.png").arg(folder, language, step.guide), "PNG", smallest);
}

QMessageBox *Tour::messageBox(const QString &text)
{
    auto *const box = visible<QMessageBox>();
    return box && box->text() == text ? box : nullptr;
}
