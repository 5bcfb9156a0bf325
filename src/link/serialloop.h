// SPDX-License-Identifier: GPL-3.0-or-later
// One run of the link's worker: a strict half-duplex loop that writes the current frame on every turn until
// an acceptable chunk comes back. Lives on the worker thread, inside SerialPort::run(), which owns it.
#pragma once

#include "link/serialport.h"

#include <QSerialPort>

#include <optional>

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
    enum class ChunkKind { Stream, Good, Bad };

    void turn();
    void chooseWait();
    void takeScopeFrame();
    void takeRequest();
    void writeCurrent();
    bool isLineSilent();
    void drainInput();
    DeviceWait::Result waitForChunk();
    bool isIdle() const;
    bool isStreamDue() const;
    void countTimeout();
    void giveUp();
    ChunkKind judge(const QByteArray &chunk) const;
    QByteArray settle(const QByteArray &chunk, ChunkKind kind);
    void accept();
    void writeStopFrame();
    void sideWrites();
    void deliverStream(QByteArray chunk);
    void deliverAnswer(const QByteArray &answer);
    QByteArray readChunk();

    SerialPort &link;
    QSerialPort device;
    qint32 baudRate = 0;
    QByteArray probeFrame;
    QByteArray currentFrame; // written on every turn until a chunk is accepted
    bool wasWritten = false; // currentFrame has been written once at least
    int waitMs = 0;
    int probesLeft = 0;
    bool firstStream = true;
    std::chrono::microseconds gap;            // silence that RS-485 asks for before a request
    DeviceWait::Clock::time_point lastByte{}; // when the last bytes were read
    std::optional<DeviceWait::Clock::time_point> silenceAwaitedFrom; // while bytes keep a frame from leaving
};
