// SPDX-License-Identifier: GPL-3.0-or-later
// The replay of one record file at a time: owns the reader and tells its calls from those of an earlier one.
// Main thread; owned by the scope window.
#pragma once

#include <QObject>

class ReadPlotData;

class ScopeReplay : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;
    ~ScopeReplay() override;

    // Takes the reader over and starts it.
    void begin(ReadPlotData *reader);
    // Ends the reader; receiver is the object whose slots it may be waiting for.
    void end(QObject *receiver);
    // False for a reader that has been ended; true for any other caller.
    bool isCurrent(const QObject *caller) const;
    // Emits over() after the time that the last batch takes to be drawn, unless this replay has ended by
    // then.
    void finishLater();

signals:
    void over();

private:
    ReadPlotData *reader = nullptr;
};
