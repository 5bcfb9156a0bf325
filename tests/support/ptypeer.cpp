// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/ptypeer.h"

#include "support/wire.h"

#include <algorithm>
#include <array>
#include <stdexcept>

PtyPeer::PtyPeer(Handler firstHandler)
    : terminal(path().toStdString())
    , handler(std::move(firstHandler))
{
    clock.start();
    const std::string error = terminal.open();
    if (!error.empty())
        throw std::runtime_error(error);
    thread = std::thread([this] { serve(); });
}

PtyPeer::~PtyPeer()
{
    stopping = true;
    terminal.wake();
    thread.join();
}

QString PtyPeer::path() const
{
    return directory.filePath(QStringLiteral("drive"));
}

QString PtyPeer::entry() const
{
    return QStringLiteral("Test drive(%1)").arg(path());
}

void PtyPeer::setHandler(Handler newHandler)
{
    const std::lock_guard<std::mutex> lock(mutex);
    handler = std::move(newHandler);
}

void PtyPeer::write(const QByteArray &bytes)
{
    {
        const std::lock_guard<std::mutex> lock(mutex);
        toWrite += bytes;
    }
    terminal.wake();
}

void PtyPeer::hangUp()
{
    {
        const std::lock_guard<std::mutex> lock(mutex);
        wantedOpen = false;
    }
    terminal.wake();
}

void PtyPeer::open()
{
    {
        const std::lock_guard<std::mutex> lock(mutex);
        wantedOpen = true;
    }
    terminal.wake();
}

std::vector<PtyPeer::Request> PtyPeer::requests() const
{
    const std::lock_guard<std::mutex> lock(mutex);
    return received;
}

QList<QByteArray> PtyPeer::frames() const
{
    QList<QByteArray> list;
    const std::vector<Request> all = requests();
    for (const Request &request : all)
        list.append(request.frame);
    return list;
}

QList<QByteArray> PtyPeer::framesOnce() const
{
    QList<QByteArray> list = frames();
    list.erase(std::unique(list.begin(), list.end()), list.end());
    return list;
}

int PtyPeer::frameCount() const
{
    const std::lock_guard<std::mutex> lock(mutex);
    return int(received.size());
}

void PtyPeer::forget()
{
    const std::lock_guard<std::mutex> lock(mutex);
    received.clear();
}

void PtyPeer::answer(const QByteArray &request)
{
    Handler answering;
    {
        const std::lock_guard<std::mutex> lock(mutex);
        received.push_back({request, clock.nsecsElapsed() / 1000});
        answering = handler;
    }
    const QByteArray reply = answering ? answering(request) : QByteArray();
    terminal.write(reinterpret_cast<const std::uint8_t *>(reply.constData()), std::size_t(reply.size()));
}

void PtyPeer::serve()
{
    QByteArray stream;
    std::array<std::uint8_t, 4096> buffer{};
    while (!stopping) {
        const bool ready = terminal.isOpen()
                               ? terminal.wait(std::nullopt)
                               : terminal.wait(kt500sim::Clock::now() + std::chrono::milliseconds(5));
        QByteArray writing;
        bool wanted = true;
        {
            const std::lock_guard<std::mutex> lock(mutex);
            std::swap(writing, toWrite);
            wanted = wantedOpen;
        }
        if (wanted != terminal.isOpen()) {
            stream.clear();
            if (wanted)
                terminal.open();
            else
                terminal.close();
            continue;
        }
        terminal.write(reinterpret_cast<const std::uint8_t *>(writing.constData()),
                       std::size_t(writing.size()));
        if (!ready)
            continue;
        const std::size_t count = terminal.read(buffer.data(), buffer.size());
        stream.append(reinterpret_cast<const char *>(buffer.data()), int(count));
        const QList<QByteArray> cut = wire::requests(&stream);
        for (const QByteArray &request : cut)
            answer(request);
    }
}
