// SPDX-License-Identifier: GPL-3.0-or-later
#include "driveprocess.h"

#include "simulator/simulateddrive.h"

#include <array>
#include <cstdlib>
#include <stdexcept>

#include <sys/wait.h>
#include <unistd.h>

namespace {

using Pipe = std::array<int, 2>;

// A motor that turns, until the other end of lifeLine is closed.
[[noreturn]] void runDrive(int nameEnd, int lifeLine)
{
    kt500sim::SimulatedDrive drive;
    if (!drive.start())
        std::_Exit(EXIT_FAILURE);
    drive.writeRegister(200, 0xFFFF);
    drive.writeRegister(100, 1);
    drive.writePair(401, 5000);
    drive.writeRegister(202, 1);
    const QByteArray name = drive.portName().toUtf8();
    if (::write(nameEnd, name.constData(), static_cast<std::size_t>(name.size())) != name.size())
        std::_Exit(EXIT_FAILURE);
    ::close(nameEnd);
    char end = 0;
    while (::read(lifeLine, &end, 1) > 0) {
    }
    drive.stop();
    std::_Exit(EXIT_SUCCESS);
}

} // namespace

DriveProcess::DriveProcess()
{
    Pipe name{};
    Pipe life{};
    if (::pipe(name.data()) != 0 || ::pipe(life.data()) != 0)
        throw std::runtime_error("no pipe");
    process = ::fork();
    if (process == 0) {
        ::close(name[0]);
        ::close(life[1]);
        runDrive(name[1], life[0]);
    }
    ::close(name[1]);
    ::close(life[0]);
    lifeLine = life[1];
    QByteArray text;
    std::array<char, 256> piece{};
    for (ssize_t count = 0; (count = ::read(name[0], piece.data(), piece.size())) > 0;)
        text.append(piece.data(), static_cast<int>(count));
    ::close(name[0]);
    port = QString::fromUtf8(text);
    if (process < 0 || port.isEmpty())
        throw std::runtime_error("the simulated drive does not start");
}

DriveProcess::~DriveProcess()
{
    ::close(lifeLine);
    if (process > 0)
        ::waitpid(process, nullptr, 0);
}
