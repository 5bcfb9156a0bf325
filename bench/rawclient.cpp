// SPDX-License-Identifier: GPL-3.0-or-later
#include "rawclient.h"

#include "link/requests.h"

#include <QElapsedTimer>
#include <QVector>

#include <array>
#include <cerrno>
#include <cstring>
#include <stdexcept>
#include <string>

#include <fcntl.h>
#include <poll.h>
#include <termios.h>
#include <unistd.h>

namespace {

constexpr int replyLimit = 1000; // ms
constexpr int replyOverhead = 5; // bytes beside the registers: station, function, byte count, CRC
constexpr int bytesPerRegister = 2;

[[noreturn]] void fail(const char *what)
{
    throw std::runtime_error(std::string(what) + ": " + std::strerror(errno));
}

// The device, open and raw: read() never waits.
class RawDevice
{
public:
    explicit RawDevice(const QByteArray &path)
        : handle(::open(path.constData(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC))
    {
        if (handle < 0)
            fail("the device can't be opened");
        termios settings{};
        ::tcgetattr(handle, &settings);
        ::cfmakeraw(&settings);
        settings.c_cflag |= CLOCAL | CREAD;
        settings.c_cc[VMIN] = 0;
        settings.c_cc[VTIME] = 0;
        ::tcsetattr(handle, TCSANOW, &settings);
    }
    ~RawDevice() { ::close(handle); }
    Q_DISABLE_COPY_MOVE(RawDevice)

    void write(const QByteArray &frame)
    {
        if (::write(handle, frame.constData(), static_cast<std::size_t>(frame.size())) != frame.size())
            fail("the device does not take the frame");
    }

    // Sleeps until that many bytes have come.
    void skip(int size)
    {
        std::array<char, 256> buffer{};
        while (size > 0) {
            pollfd readable{handle, POLLIN, 0};
            if (::poll(&readable, 1, replyLimit) != 1)
                throw std::runtime_error("the line has gone silent");
            const ssize_t count = ::read(handle, buffer.data(), buffer.size());
            if (count < 0)
                fail("the device can't be read");
            size -= static_cast<int>(count);
        }
    }

private:
    const int handle;
};

} // namespace

double secondsOfRawReads(const QByteArray &path, const QList<RegisterRead> &reads)
{
    QVector<QByteArray> frames;
    for (const RegisterRead &read : reads)
        frames.append(readRequest(read.address, read.registers));
    RawDevice device(path);
    QElapsedTimer clock;
    clock.start();
    for (int i = 0; i < reads.size(); ++i) {
        device.write(frames.at(i));
        device.skip(replyOverhead + reads.at(i).registers * bytesPerRegister);
    }
    return double(clock.nsecsElapsed()) * 1e-9;
}
