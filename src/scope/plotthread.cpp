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
    const QMutexLocker locker(&mutex);
    inputs = newInputs;
    hasNewInputs = true;
    changed.wakeOne();
}

void PlotThread::begin()
{
    if (isRunning())
        return;
    {
        // A picture that an earlier run of the thread sent may have been replaced since.
        const QMutexLocker locker(&mutex);
        isEnding = false;
        hasNewInputs = true;
    }
    start(QThread::InheritPriority);
}

void PlotThread::end()
{
    {
        const QMutexLocker locker(&mutex);
        isEnding = true;
        changed.wakeOne();
    }
    wait();
    quit();
}

bool PlotThread::takeInputs(PlotInputs *taken)
{
    const QMutexLocker locker(&mutex);
    while (!hasNewInputs && !isEnding)
        changed.wait(&mutex);
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
