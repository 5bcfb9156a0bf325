// SPDX-License-Identifier: GPL-3.0-or-later
// The record of the latest run on disk: one text file a channel, line 1 the item, then a sample a line.
// Main thread; owned by the acquisition.
#pragma once

#include "scope/scopechannels.h"

#include <QFile>
#include <QString>
#include <QStringList>

class ScopeRecord
{
public:
    // In the folder of this process.
    ScopeRecord();
    explicit ScopeRecord(const QString &folder);
    Q_DISABLE_COPY_MOVE(ScopeRecord)

    QString directory() const { return tempDir; }

    // Makes the folder and deletes the files in it; those held open stay.
    void clearDirectory() const;
    // The same, and opens the files that are not open under the time of now.
    void open();
    void close();
    bool isOpen() const { return channelFiles.front().isOpen(); }

    // Makes the header all that the file holds.
    void writeHeader(int channel, const QString &header);
    void append(int channel, const QVector<double> &samples);

    // Begins the watch over the writes of a run.
    void forgetFailure() { hasFailed = false; }
    // A write since then has failed; what followed was not recorded.
    bool isIncomplete() const { return hasFailed; }

    // Copies all files into a folder that exists; the names of those that could not be copied.
    QStringList copyTo(const QString &folder);

private:
    void write(int channel, const QByteArray &bytes);

    QString tempDir;
    std::array<QFile, scopeChannelCount> channelFiles;
    bool hasFailed = false;
};
