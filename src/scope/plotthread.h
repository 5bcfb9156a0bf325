// SPDX-License-Identifier: GPL-3.0-or-later
// The thread that draws the curves into an image. run() draws what setInputs() handed over last, sends the
// picture if it differs from the one before, and sleeps until something has changed. Main thread, but for
// run(); owned by the plot.
#pragma once

#include "scope/plotinputs.h"

#include <QImage>
#include <QThread>

#include <atomic>
#include <condition_variable>
#include <mutex>

class PlotThread : public QThread
{
    Q_OBJECT

public:
    explicit PlotThread(QObject *parent = nullptr);
    // Ends the thread and waits for it.
    ~PlotThread() override;

    void setInputs(const PlotInputs &newInputs);
    // Starts the thread unless it runs.
    void begin();
    // Ends the thread, in the middle of a picture, too, and waits for it.
    void end();

signals:
    void updateImage(QImage iamge);

protected:
    void run() override;

private:
    // Waits until there is something new; false when the thread is to end.
    bool takeInputs(PlotInputs *taken);

    std::mutex mutex; // guards the next two
    std::condition_variable changed;
    PlotInputs inputs;
    bool hasNewInputs = false;
    std::atomic<bool> isEnding{false};
};
