// SPDX-License-Identifier: GPL-3.0-or-later
#include "scope/plotthread.h"

#include "scope/curverasteriser.h"

PlotThread::PlotThread(QObject *parent)
    : QThread(parent)
{
}

PlotThread::~PlotThread()
{
    end();
}

void PlotThread::setInputs(const PlotInputs &newInputs)
{
    const std::lock_guard<std::mutex> lock(mutex);
    inputs = newInputs;
    hasNewInputs = true;
    changed.notify_one();
}

void PlotThread::begin()
{
    if (isRunning())
        return;
    {
        // A picture that an earlier run of the thread sent may have been replaced since.
        const std::lock_guard<std::mutex> lock(mutex);
        isEnding = false;
        hasNewInputs = true;
    }
    start(QThread::InheritPriority);
}

void PlotThread::end()
{
    {
        const std::lock_guard<std::mutex> lock(mutex);
        isEnding = true;
        changed.notify_one();
    }
    wait();
    quit();
}

bool PlotThread::takeInputs(PlotInputs *taken)
{
    std::unique_lock<std::mutex> lock(mutex);
    changed.wait(lock, [this] { return hasNewInputs || isEnding; });
    hasNewInputs = false;
    *taken = inputs;
    return !isEnding;
}

void PlotThread::run()
{
    CurveRasteriser rasteriser;
    PlotInputs taken;
    QImage last;
    while (takeInputs(&taken)) {
        if (!taken.plotRect.isValid() || !rasteriser.draw(taken, isEnding))
            continue;
        if (rasteriser.image() == last)
            continue;
        last = rasteriser.image().copy();
        emit updateImage(last);
    }
}
