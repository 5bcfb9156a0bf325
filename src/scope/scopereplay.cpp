// SPDX-License-Identifier: GPL-3.0-or-later
#include "scope/scopereplay.h"

#include "scope/readplotdata.h"

#include <QCoreApplication>
#include <QPointer>
#include <QTimer>

#include <utility>

namespace {

constexpr int endDelay = 100; // ms

} // namespace

ScopeReplay::~ScopeReplay()
{
    end(parent());
}

void ScopeReplay::begin(ReadPlotData *newReader)
{
    reader = newReader;
    reader->start(QThread::HighestPriority);
}

void ScopeReplay::end(QObject *receiver)
{
    ReadPlotData *const ended = std::exchange(reader, nullptr);
    if (!ended)
        return;
    ended->requestInterruption();
    // It may wait for a slot of the receiver to return; those calls are made, and find no current replay.
    while (!ended->wait(1))
        QCoreApplication::sendPostedEvents(receiver, QEvent::MetaCall);
    delete ended;
}

bool ScopeReplay::isCurrent(const QObject *caller) const
{
    const auto *const from = qobject_cast<const ReadPlotData *>(caller);
    return !from || from == reader;
}

void ScopeReplay::finishLater()
{
    QTimer::singleShot(endDelay, this, [this, shown = QPointer<ReadPlotData>(reader)] {
        if (shown && shown == reader)
            emit over();
    });
}
