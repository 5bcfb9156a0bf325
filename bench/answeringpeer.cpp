// SPDX-License-Identifier: GPL-3.0-or-later
#include "answeringpeer.h"

#include "link/framecodec.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <stdexcept>
#include <string>

#include <fcntl.h>
#include <spawn.h>
#include <stdlib.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

namespace {

constexpr char serveArgument[] = "--serve-terminal";
constexpr std::size_t requestSize = 8;
constexpr std::size_t countPlace = 5; // low byte of the register count

[[noreturn]] void fail(const char *what)
{
    throw std::runtime_error(std::string(what) + ": " + std::strerror(errno));
}

// Two replies to take in turn, so that what shows the value has something to show.
using Replies = std::array<QByteArray, 2>;

// Every read of one or two registers is answered; nothing else is asked of this peer.
void serve(int terminal)
{
    const std::array<Replies, 2> replies{
        {{withCrc(QByteArray::fromHex("010302000a")), withCrc(QByteArray::fromHex("0103020014"))},
         {withCrc(QByteArray::fromHex("0103040000000a")), withCrc(QByteArray::fromHex("01030400000014"))}}};
    std::array<char, 256> buffer{};
    std::size_t filled = 0;
    std::size_t turn = 0;
    for (;;) {
        const ssize_t size = ::read(terminal, buffer.data() + filled, buffer.size() - filled);
        if (size <= 0)
            return; // the last of those who had the line open has gone
        filled += static_cast<std::size_t>(size);
        if (filled < requestSize)
            continue;
        const Replies &ofThisLength = replies.at(buffer[countPlace] == 2 ? 1 : 0);
        const QByteArray &reply = ofThisLength.at(turn++ % 2);
        filled = 0;
        if (::write(terminal, reply.constData(), static_cast<std::size_t>(reply.size())) < 0)
            return;
    }
}

} // namespace

AnsweringPeer::AnsweringPeer()
{
    const int master = ::posix_openpt(O_RDWR | O_NOCTTY);
    if (master < 0 || ::grantpt(master) != 0 || ::unlockpt(master) != 0)
        fail("no pseudo-terminal");
    devicePath = ::ptsname(master);
    slave = ::open(devicePath.constData(), O_RDWR | O_NOCTTY | O_CLOEXEC);
    termios settings{};
    if (slave < 0 || ::tcgetattr(slave, &settings) != 0)
        fail("the pseudo-terminal can't be opened");
    ::cfmakeraw(&settings);
    ::tcsetattr(slave, TCSANOW, &settings);

    std::string program = "/proc/self/exe";
    std::string serving = serveArgument;
    std::string handle = std::to_string(master);
    const std::array<char *, 4> arguments{{program.data(), serving.data(), handle.data(), nullptr}};
    errno = ::posix_spawn(&process, program.c_str(), nullptr, nullptr, arguments.data(), environ);
    if (errno != 0)
        fail("the peer can't be started");
    ::close(master);
}

AnsweringPeer::~AnsweringPeer()
{
    ::close(slave);
    ::waitpid(process, nullptr, 0);
}

bool AnsweringPeer::serveIfAsked(int argc, char *argv[])
{
    if (argc != 3 || std::strcmp(argv[1], serveArgument) != 0)
        return false;
    serve(std::atoi(argv[2]));
    return true;
}
