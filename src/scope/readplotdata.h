// SPDX-License-Identifier: GPL-3.0-or-later
// Reads one record file of the scope and hands its samples out in batches. run() is the reading; the signals
// are to be connected blocking, so that one batch at most is on its way. Owned by the scope's replay on the
// main thread.
#pragma once

#include <QString>
#include <QThread>
#include <QVector>

class Plotter;

class ReadPlotData : public QThread
{
    Q_OBJECT

public:
    // The plot is only kept: what is read reaches it through the window.
    ReadPlotData(Plotter *plot, const QString &fileName, QObject *parent = nullptr);

    Plotter *plotter() const { return plot; }

signals:
    // Line 1 names no item: this is no record file, and nothing more comes.
    void openFailed();
    // The file can't be read at all, and nothing more comes.
    void fileUnreadable();
    // The item's code from line 1.
    void getPnValue(QString pn);
    // The next lines as numbers, 1000 at most; 0 for a line that is none, line 1 among them.
    void readFilePlot(QVector<double> saveData);
    void readFinishSignal();

protected:
    void run() override;

private:
    Plotter *plot = nullptr;
    QString name;
};
