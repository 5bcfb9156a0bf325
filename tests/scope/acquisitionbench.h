// SPDX-License-Identifier: GPL-3.0-or-later
// An acquisition without a window, what it sends and shows, and the record that it leaves. Main thread; a
// base of the test's class, begun before and ended after each of its functions.
#pragma once

#include "scope/scopeacquisition.h"

#include "link/serialport.h"
#include "support/wire.h"

#include <QDir>

namespace acquisitionbench {

using State = ScopeAcquisition::State;

inline const QString stopFrame = QStringLiteral("01140000000000000000dec2");
// One sample of CH1, all others off.
constexpr char five[] = "0114 000e 1001 0005 0000 0000 0000";
constexpr char nine[] = "0114 000e 1001 0009 0000 0000 0000";

class AcquisitionBench
{
protected:
    struct Batch
    {
        ScopeSamples samples;
        int onlyChannel = 0;
    };

    void begin()
    {
        acquisition = new ScopeAcquisition({{"Motor speed", "Pn-F00", "", "-6000", "6000", "1RPM"},
                                            {"Bus voltage", "Pn-F26", "", "0.0", "900.0", "0.1V"}});
        log.clear();
        batches.clear();
        const auto note = [this](auto signal, auto slot) {
            QObject::connect(acquisition, signal, acquisition, slot);
        };
        note(&ScopeAcquisition::frameReady,
             [this](const QByteArray &frame) { log.append(QString::fromLatin1(frame.toHex())); });
        note(&ScopeAcquisition::runningChanged,
             [this](bool isRunning) { log.append(isRunning ? "running" : "ended"); });
        note(&ScopeAcquisition::batchReady, [this](const ScopeSamples &samples, int only) {
            batches.append({samples, only});
        });
        note(&ScopeAcquisition::lastPartOver, &ScopeAcquisition::stopByCondition);
        acquisition->prepare();
    }
    void end()
    {
        delete acquisition;
        SerialPort::reconnecting = false;
    }

    void startFree(bool second = true) { acquisition->start(settings(second), false); }
    void startWithCondition(const QString &operation = QStringLiteral(">="))
    {
        acquisition->setStopCondition({QStringLiteral("CH1"), operation});
        acquisition->start(settings(false), true);
    }
    void take(const char *chunk, double value = 0, int lastFor = 20000)
    {
        acquisition->takeChunk(wire::bytes(chunk), settings(hasSecond), {value, lastFor});
    }
    ScopeChannelSettings settings(bool second)
    {
        hasSecond = second;
        return {{{true, false, "Pn-F00"}, {second, false, "Pn-F26"}, {}, {}}};
    }
    QByteArray recordOf(int channel) const
    {
        const QDir dir(acquisition->record()->directory());
        const QStringList names =
            dir.entryList({QStringLiteral("*_CH%1.txt").arg(channel + 1)}, QDir::Files, QDir::Name);
        QFile file(dir.filePath(names.value(0)));
        return names.size() == 1 && file.open(QIODevice::ReadOnly) ? file.readAll()
                                                                   : QByteArray("no such file");
    }
    QStringList recordNames() const
    {
        return QDir(acquisition->record()->directory()).entryList(QDir::Files, QDir::Name);
    }

    ScopeAcquisition *acquisition = nullptr;
    QStringList log; // frames as hexadecimal text, "running", "ended", in order
    QList<Batch> batches;
    bool hasSecond = true;
};

} // namespace acquisitionbench
