// SPDX-License-Identifier: GPL-3.0-or-later
#include "scope/readplotdata.h"

#include <QFile>

namespace {

constexpr int batchLines = 1000;
constexpr int codeLength = 6; // characters
// No line of a record is longer. What follows within the line is skipped: a file without line ends must not
// be read into memory as one.
constexpr qint64 longestLine = 4096; // bytes

QString readLine(QFile *file)
{
    const QByteArray line = file->readLine(longestLine);
    QByteArray rest = line;
    while (!rest.isEmpty() && !rest.endsWith('\n'))
        rest = file->readLine(longestLine);
    return QString::fromLocal8Bit(line);
}

} // namespace

ReadPlotData::ReadPlotData(Plotter *plotWidget, const QString &fileName, QObject *parent)
    : QThread(parent)
    , plot(plotWidget)
    , name(fileName)
{
}

void ReadPlotData::run()
{
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly)) {
        emit fileUnreadable();
        return;
    }
    QVector<double> buffer;
    buffer.reserve(batchLines);
    int count = 0;
    bool isFirst = true;
    while (!file.atEnd() && !isInterruptionRequested()) {
        const QString line = readLine(&file);
        if (isFirst) {
            isFirst = false;
            if (!line.contains(QLatin1String("pn"), Qt::CaseInsensitive)) {
                emit openFailed();
                return;
            }
            emit getPnValue(line.left(codeLength));
        }
        buffer.append(line.toDouble());
        if (++count == batchLines) {
            emit readFilePlot(buffer);
            buffer.clear();
            count = 0;
        }
    }
    if (isInterruptionRequested())
        return;
    emit readFilePlot(buffer);
    emit readFinishSignal();
}
