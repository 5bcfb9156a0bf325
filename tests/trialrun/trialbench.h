// SPDX-License-Identifier: GPL-3.0-or-later
// A trial run whose frames go to a peer that stands in for the link. Main thread; an object on the stack of a
// test function.
#pragma once

#include "link/serialport.h"
#include "support/registerpeer.h"
#include "support/rununtil.h"
#include "support/trialrundriver.h"
#include "support/wire.h"
#include "trialrun/trialrun.h"

#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QTableWidget>
#include <QTest>

// The 30 registers that are saved, in order, with the number of words.
struct SavedRegister
{
    int address;
    int words;
};
const QList<SavedRegister> savedRegisters{
    {0x20CA, 1}, {0x200B, 1}, {0x20C8, 1}, {0x20DB, 1}, {0x20DC, 1}, {0x20DD, 1}, {0x2007, 1}, {0x2008, 1},
    {0x2009, 1}, {0x200A, 1}, {0x213A, 2}, {0x213C, 1}, {0x213D, 1}, {0x2322, 1}, {0x2329, 1}, {0x2327, 2},
    {0x23EC, 2}, {0x23EE, 1}, {0x23EF, 1}, {0x23F0, 2}, {0x23F2, 2}, {0x23F4, 1}, {0x23F5, 1}, {0x23F6, 2},
    {0x2064, 1}, {0x2332, 2}, {0x2334, 2}, {0x212C, 1}, {0x23E8, 1}, {0x23E9, 1}};

inline QByteArray word(int value)
{
    return QByteArray().append(char(value >> 8)).append(char(value));
}

// The restoring writes of the first registers as they stand here, in order.
inline QList<QByteArray> restoringWrites(const QMap<int, quint16> &registers, int count = 30)
{
    QList<QByteArray> list;
    for (int i = 0; i < count; ++i) {
        const SavedRegister &saved = savedRegisters.at(i);
        QByteArray frame =
            wire::bytes("0110") + word(saved.address) + word(saved.words) + char(2 * saved.words);
        for (int k = 0; k < saved.words; ++k)
            frame += word(registers.value(saved.address + k));
        list.append(wire::frame(frame));
    }
    return list;
}

inline QByteArray panel(const char *value)
{
    return wire::frame(QByteArray::fromHex(QByteArray("010620CA") + value));
}

inline QList<QByteArray> frames(std::initializer_list<const char *> texts)
{
    QList<QByteArray> list;
    for (const char *text : texts)
        list.append(wire::frame(text));
    return list;
}

const QByteArray positionLook = QByteArray::fromHex("010325eb0002bf33");
const QByteArray withdrawal = "withdraw"; // stands among the frames
const QByteArray addressless = wire::frame("0110 0001 02 0064");

// Of a table of cells that are typed wrongly: where, what, and the text of the box that tells it.
inline void addWrongCellColumns()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("message");
}

class TrialBench
{
public:
    explicit TrialBench(bool linkOpen = true)
    {
        SerialPort::portOpened = linkOpen;
        SerialPort::scopeRunning = false;
        int value = 101;
        for (const SavedRegister &saved : savedRegisters) {
            for (int i = 0; i < saved.words; ++i)
                peer.registers[saved.address + i] = quint16(i == saved.words - 1 ? value++ : 0);
        }
        peer.registers[0x20CA] = 0;
        window = new TrialRun;
        window->setAttribute(Qt::WA_DeleteOnClose);
        QObject::connect(window.data(), &TrialRun::writeToSerialPort, &peer, &RegisterPeer::take);
        QObject::connect(&peer, &RegisterPeer::reply, window.data(), &TrialRun::handleTrialRun);
        QObject::connect(window.data(), &TrialRun::withdrawRequests, &peer,
                         [this] { peer.frames.append(withdrawal); });
        QObject::connect(window.data(), &TrialRun::closeTrialRunWindow, &peer, [this] { ++closings; });
        window->resize(980, 650);
        window->show();
    }
    ~TrialBench()
    {
        delete window;
        SerialPort::portOpened = false;
        SerialPort::scopeRunning = false;
    }
    Q_DISABLE_COPY_MOVE(TrialBench)

    TrialRunDriver drive() const { return TrialRunDriver(window); }
    // 30 reads, 6 writes and the 5 reads of the JOG table.
    bool waitUntilReady()
    {
        const bool ready = runUntil([this] { return drive().servoOn()->isEnabled(); }, 5000);
        peer.frames.clear();
        return ready;
    }
    // Into step three by its button, with every answer in.
    bool enterStepThree()
    {
        TrialRunDriver::click(drive().positionRun());
        const bool entered = waitForFrames(3);
        peer.frames.clear();
        return entered;
    }
    // On into one of its modes, with the table read.
    void enter(QRadioButton *mode)
    {
        enterStepThree();
        TrialRunDriver::click(mode);
        settled();
        peer.frames.clear();
    }
    // A cell of "Continuous" is typed whose second frame has no address: it has gone out last, and is never
    // answered.
    bool waitForAddressless()
    {
        if (!waitUntilReady() || !enterStepThree())
            return false;
        TrialRunDriver::click(drive().continuous());
        settled();
        peer.intercept = [](const QByteArray &request, const QByteArray &usual) {
            return request == addressless ? QByteArray() : usual;
        };
        TrialRunDriver::type(drive().positionTable(), 4, QStringLiteral("100"));
        settled();
        return peer.frames.endsWith(addressless);
    }
    // True when as many frames have gone out and no more follow, looks at the position left out.
    bool waitForFrames(int count)
    {
        return runUntil([this, count] { return sent().size() >= count; }, 5000) && settled();
    }
    // Lets all answers in that are on their way; what waits for a timer stays out.
    static bool settled()
    {
        for (int i = 0; i < 200; ++i)
            QCoreApplication::processEvents();
        return true;
    }
    // What went out, without looks at the position.
    QList<QByteArray> sent() const
    {
        QList<QByteArray> list;
        for (const QByteArray &frame : peer.frames) {
            if (frame != positionLook)
                list.append(frame);
        }
        return list;
    }

    RegisterPeer peer;
    QPointer<TrialRun> window;
    int closings = 0;
};
