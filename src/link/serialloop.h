// SPDX-License-Identifier: GPL-3.0-or-later
// One run of the link's worker: a strict half-duplex loop that writes the current frame on every turn until
// an acceptable chunk comes back. Made, used and destroyed inside SerialPort::run().
#pragma once

#include "link/serialport.h"

#include <QSerialPort>

class SerialPort::Loop
{
public:
    explicit Loop(SerialPort &serialPort);
    // Closes the device.
    ~Loop();
    Q_DISABLE_COPY_MOVE(Loop)

    // Opens the device; the result also stands in SerialPort::portOpened.
    bool open();
    // Goes round until the link is given up or told to stop.
    void turnUntilStopped();

private:
    void turn();
    void chooseWait();
    void takeScopeFrame();
    void takeRequest();
    void writeCurrent();
    void drainInput();
    void countTimeout();
    void giveUp();
    bool isAccepted(const QByteArray &chunk) const;
    void accept();
    void writeStopFrame();
    void sideWrites();
    void deliver(QByteArray chunk);
    QByteArray readChunk();

    SerialPort &link;
    QSerialPort device;
    qint32 baudRate = 0;
    QByteArray probeFrame;
    QByteArray currentFrame; // written on every turn until a chunk is accepted
    bool isWritten = false;  // once at least
    int waitMs = 0;
    int probesLeft = 0;
    bool firstStream = true;
    std::chrono::microseconds gap;            // silence that RS-485 asks for before a request
    DeviceWait::Clock::time_point lastByte{}; // when the last bytes were read
};
