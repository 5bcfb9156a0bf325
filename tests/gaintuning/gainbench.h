// SPDX-License-Identifier: GPL-3.0-or-later
// A gain tuning window at a scripted drive: every frame is recorded and answered when the test says so.
// Main thread; an object on the stack of a test function.
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
