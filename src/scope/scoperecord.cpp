// SPDX-License-Identifier: GPL-3.0-or-later
#include "scope/scoperecord.h"

#include "scope/recordfolder.h"

#include <QDateTime>
#include <QDir>

#include <algorithm>

namespace {

// Longer than any sample's text and its line end.
constexpr int sampleLength = 16; // bytes

} // namespace

ScopeRecord::ScopeRecord()
    : ScopeRecord(RecordFolder::ofThisProcess().path())
{
}

ScopeRecord::ScopeRecord(const QString &folder)
    : tempDir(folder)
{
}

void ScopeRecord::clearDirectory() const
{
    QDir().mkpath(tempDir);
    QDir dir(tempDir);
    const QStringList names = dir.entryList(QDir::Files, QDir::Time);
    for (const QString &name : names) {
        const QString path = dir.filePath(name);
        // Some systems let an open file be deleted, and the run would write into nowhere.
        const bool isHeld = std::any_of(channelFiles.begin(), channelFiles.end(), [&path](const QFile &file) {
            return file.isOpen() && file.fileName() == path;
        });
        if (!isHeld)
            dir.remove(name);
    }
}

void ScopeRecord::open()
{
    clearDirectory();
    const QString stamp = QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd hh.mm"));
    int number = 0;
    for (QFile &file : channelFiles) {
        ++number;
        if (file.isOpen())
            continue;
        file.setFileName(QStringLiteral("%1/%2_CH%3.txt").arg(tempDir, stamp).arg(number));
        if (!file.open(QIODevice::ReadWrite | QIODevice::Append))
            hasFailed = true;
    }
}

void ScopeRecord::close()
{
    for (QFile &file : channelFiles) {
        if (!file.isOpen())
            continue;
        if (!file.flush())
            hasFailed = true;
        file.close();
    }
}

void ScopeRecord::writeHeader(int channel, const QString &header)
{
    QFile &file = channelFiles.at(channel);
    if (header.isEmpty() || !file.isOpen())
        return;
    file.resize(0);
    write(channel, header.toLocal8Bit() + "\r\n");
}

void ScopeRecord::append(int channel, const QVector<double> &samples)
{
    if (hasFailed)
        return; // a file with a gap would be taken for a whole one
    QByteArray text;
    text.reserve(samples.size() * sampleLength);
    for (const double sample : samples)
        text.append(QByteArray::number(sample, 'g', 6)).append("\r\n");
    write(channel, text);
}

// At once: what has arrived is to be there for other programs, and after a crash.
void ScopeRecord::write(int channel, const QByteArray &bytes)
{
    QFile &file = channelFiles.at(channel);
    if (file.write(bytes) != bytes.size() || !file.flush())
        hasFailed = true;
}

QStringList ScopeRecord::copyTo(const QString &folder)
{
    for (QFile &file : channelFiles) {
        if (file.isOpen() && !file.flush())
            hasFailed = true;
    }
    const QDir from(tempDir);
    const QDir to(folder);
    QStringList left;
    const QStringList names = from.entryList(QDir::Files, QDir::Name);
    for (const QString &name : names) {
        if (!QFile::copy(from.filePath(name), to.filePath(name)))
            left.append(name);
    }
    return left;
}
