// SPDX-License-Identifier: GPL-3.0-or-later
// A gain tuning window at a scripted drive: every frame is recorded and answered when the test says so. And
// what its fields are called. Main thread; an object on the stack of a test function.
#pragma once

#include "gaintuning/gaintuning.h"
#include "support/wire.h"

#include <QComboBox>
#include <QLineEdit>
#include <QMap>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QTableWidget>
#include <QTest>

inline const QStringList gainNames{"InertiaRatio",
                                   "PositionLoopGain",
                                   "SpeedLoopGain",
                                   "SpeedLoopIntegralTime",
                                   "TorqueFilterTime",
                                   "SpeedFeedforwardGain",
                                   "SpeedFeedforwardFilterTime"};
inline const QStringList tableGains = gainNames.mid(1, 4);

inline QStringList notchNames()
{
    QStringList names;
    for (int notch = 1; notch <= 4; ++notch) {
        for (const char *kind : {"Frequency", "WidthGrade", "DeepGrade"})
            names.append(QStringLiteral("Notch%1%2").arg(notch).arg(QLatin1String(kind)));
    }
    return names;
}

inline QByteArray store(int address, int value)
{
    QByteArray bytes = wire::bytes("01 10");
    bytes.append(char(address >> 8)).append(char(address)).append(wire::bytes("00 01 02"));
    return wire::frame(bytes.append(char(value >> 8)).append(char(value)));
}

inline QString message(const char *range)
{
    return QStringLiteral("Input value execteeds the range!\nRange: ") + QLatin1String(range);
}

// A drive as it might stand: manual gains, manual notches, offline.
inline QMap<int, int> plainDrive()
{
    QMap<int, int> registers{{0x2258, 0},   {0x2259, 12},  {0x225A, 35},  {0x2262, 480}, {0x2263, 270},
                             {0x2264, 210}, {0x21F6, 84},  {0x227D, 5},   {0x227E, 50},  {0x225D, 500},
                             {0x225E, 100}, {0x225F, 10},  {0x2260, 300}, {0x225C, 1},   {0x22AE, 0},
                             {0x2618, 325}, {0x2601, 440}, {0x2600, 11},  {0x2602, 22},  {0x2296, 0}};
    for (int i = 0; i < 12; ++i)
        registers.insert(0x2297 + i, i % 3 == 0 ? 1000 + i : 20 + i);
    return registers;
}

class GainBench
{
public:
    GainBench()
    {
        QObject::connect(&window, qOverload<QByteArray, QString>(&GainTuning::writeToSerialPort), &window,
                         [this](const QByteArray &frame, const QString &name) {
                             frames.append(frame);
                             unanswered.append(frame);
                             names.append(name);
                         });
    }

    template <typename Widget>
    Widget *find(const char *name) const
    {
        return window.findChild<Widget *>(QLatin1String(name));
    }
    QLineEdit *edit(const QString &name) const { return window.findChild<QLineEdit *>(name); }
    QString text(const char *name) const { return edit(QLatin1String(name))->text(); }
    QPushButton *button(const char *name) const { return find<QPushButton>(name); }
    QComboBox *combo(const char *name) const { return find<QComboBox>(name); }
    QTableWidgetItem *cell(int row) const { return find<QTableWidget>("tableWidget")->item(row, 3); }

    static int addressOf(const QByteArray &frame) { return quint8(frame.at(2)) << 8 | quint8(frame.at(3)); }

    // Answers the oldest request from the registers, as the drive would.
    void answer()
    {
        const QByteArray request = unanswered.takeFirst();
        const int address = addressOf(request);
        const int value = registers.value(address, 0);
        const QByteArray data = QByteArray().append(char(value >> 8)).append(char(value));
        window.handleGaintuning(wire::replyTo(request, data), address);
    }
    void answerWith(const QByteArray &reply)
    {
        const QByteArray request = unanswered.takeFirst();
        window.handleGaintuning(reply, addressOf(request));
    }
    // Answers everything until the pause between two rounds, whose timer alone goes on.
    void answerAll()
    {
        while (!unanswered.isEmpty())
            answer();
    }
    // Waits for the first frame and answers the first read of everything.
    void finishInitialRead()
    {
        QTRY_VERIFY(!unanswered.isEmpty());
        answerAll();
        frames.clear();
        names.clear();
    }
    QList<QByteArray> takeFrames()
    {
        const QList<QByteArray> taken = frames;
        frames.clear();
        return taken;
    }

    GainTuning window;
    QMap<int, int> registers; // by the address of reads
    QList<QByteArray> frames;
    QList<QByteArray> unanswered;
    QStringList names;
};
