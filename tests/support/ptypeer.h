// SPDX-License-Identifier: GPL-3.0-or-later
// The other end of a serial line, byte by byte: records what comes in and answers as the test says.
// Made and used on the main thread; a thread of its own serves the terminal and calls the handler.
#pragma once

#include "simulator/pseudoterminal.h"

#include <QByteArray>
#include <QElapsedTimer>
#include <QList>
#include <QString>
#include <QTemporaryDir>

#include <atomic>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

class PtyPeer
{
public:
    struct Request
    {
        QByteArray frame;
        qint64 at = 0; // microseconds since the peer was made
    };
    // Gives the bytes to answer a request with, none for silence. Called on the peer's thread.
    using Handler = std::function<QByteArray(const QByteArray &request)>;

    explicit PtyPeer(Handler handler = {});
    ~PtyPeer();
    Q_DISABLE_COPY_MOVE(PtyPeer)

    // Path of the device, the same after a hang-up.
    QString path() const;
    // The path as the connection dialog would list it.
    QString entry() const;

    void setHandler(Handler newHandler);
    void write(const QByteArray &bytes);
    // Hangs up until open() is called again.
    void hangUp();
    void open();

    std::vector<Request> requests() const;
    QList<QByteArray> frames() const;
    // The same with one frame for each run of equal ones: what a busy machine makes the link repeat does not
    // show.
    QList<QByteArray> framesOnce() const;
    int frameCount() const;
    void forget();

private:
    void serve();
    void answer(const QByteArray &request);

    QTemporaryDir directory;
    kt500sim::PseudoTerminal terminal;
    std::thread thread;
    std::atomic<bool> stopping{false};
    QElapsedTimer clock;

    mutable std::mutex mutex; // guards what follows
    Handler handler;
    std::vector<Request> received;
    QByteArray toWrite;
    bool wantedOpen = true;
};
