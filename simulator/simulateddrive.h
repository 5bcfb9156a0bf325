// SPDX-License-Identifier: GPL-3.0-or-later
// A whole KT500 drive on a pseudo-terminal: what a test, a demo or a person connects a client to.
//
// Runs on a thread of its own between start() and stop(), which belong to the owner; every other function may
// be called from any thread at any time, takes effect before it returns, and works on a stopped drive too.
#pragma once

#include "simulator/drive.h"
#include "simulator/driveloop.h"
#include "simulator/framelog.h"
#include "simulator/linefault.h"
#include "simulator/model/drivestate.h"
#include "simulator/model/plant.h"

#include <QString>

#include <memory>
#include <optional>

namespace kt500sim {

struct DriveOptions
{
    /// A stable path for clients: a symbolic link to the terminal, which has another name after each hang-up.
    /// Empty: none.
    QString linkPath;
    Pacing pacing;
    int station = 1;
    /// Sample instants per stream frame, 1 to 255: 40 make a frame every 5 ms.
    int samplesPerFrame = 40;
    /// Silence on the line that ends a frame whose end can't be told from its bytes.
    microseconds frameGap{5000};
};

/// Which of the two copies of a register.
enum class RegisterCopy { Working, Stored };

struct RegisterSnapshot
{
    RegisterFile::Words working{};
    RegisterFile::Words stored{};
};

class SimulatedDrive
{
public:
    /// The built-in register table, and a motor unless another \a model is given.
    explicit SimulatedDrive(const DriveOptions &options = {}, std::unique_ptr<DriveModel> model = nullptr);
    SimulatedDrive(const DriveOptions &options, const RegisterTable &table,
                   std::unique_ptr<DriveModel> model);
    ~SimulatedDrive();
    SimulatedDrive(const SimulatedDrive &) = delete;
    SimulatedDrive &operator=(const SimulatedDrive &) = delete;

    /// Opens the terminal and starts the thread. On failure returns false and sets \a error (if given).
    bool start(QString *error = nullptr);
    /// Closes the terminal and ends the thread; registers and settings are kept. Does nothing when stopped.
    void stop();
    bool isRunning() const;

    /// What a client opens: the link path if there is one, else devicePath().
    QString portName() const;
    /// The terminal itself, such as /dev/pts/3; changes with each hang-up.
    QString devicePath() const;

    void setFault(const Fault &fault);
    /// By its text form; on an unknown text returns false and sets \a error (if given).
    bool setFault(const QString &text, QString *error = nullptr);
    void clearFaults() { setFault(Fault::clear()); }
    /// Closes the terminal for \a duration; 0 until clearFaults().
    void hangUp(milliseconds duration);
    bool isHungUp();
    /// Whether a client has the port open, as far as the drive has noticed: what a client left unread is gone
    /// once this has been false. Always true on systems that don't tell.
    bool hasClient();

    /// \a listener is called on the drive's thread with false when the line hangs up and with true when it is
    /// back, by then under its new devicePath().
    void setLineListener(std::function<void(bool up)> listener);

    void setPacing(const Pacing &pacing);

    /// Working copy from the stored one, status restarted, stream ended. The line stays.
    void powerCycle();
    /// Factory values into both copies, and a power cycle.
    void factoryReset();

    /// Nothing for an offset without a register.
    std::optional<std::uint16_t> readRegister(int offset, RegisterCopy copy = RegisterCopy::Working);
    /// A 32-bit value, its high word at \a offset; nothing unless both registers exist.
    std::optional<std::int32_t> readPair(int offset, RegisterCopy copy = RegisterCopy::Working);
    /// Sets the working copy, or with Stored both, as a client's writes do, and read-only registers too.
    /// False for an offset without a register.
    bool writeRegister(int offset, std::uint16_t value, RegisterCopy copy = RegisterCopy::Working);
    bool writePair(int offset, std::int32_t value, RegisterCopy copy = RegisterCopy::Working);
    RegisterSnapshot registers();

    /// The model stands still until unfreeze() and moves only by advance().
    void freeze();
    void unfreeze();
    /// Moves the model on at once by \a time; stream frames that fall into it are sent.
    void advance(nanoseconds time);

    // What a person at the machine does. With a model that has no motor these change nothing, and give what a
    // new one has.
    void setPlant(const PlantSettings &settings);
    PlantSettings plant();
    /// Closes or opens the contact at DI \a number, 1 to 16.
    void setContact(int number, bool closed);
    std::uint16_t contacts();
    /// False if a fault is present already, or there is no such number (1 to 99).
    bool raiseFault(int number);
    void setWarning(int number, bool on);
    DriveState state();

    bool isStreaming();
    Counters counters();
    void resetCounters();

    /// \a listener is called on the drive's thread for every frame; an empty one ends that.
    void setFrameListener(FrameListener listener);
    /// One line for each frame, into a new file; an empty path ends that. False if it can't be written.
    bool logToFile(const QString &path, QString *error = nullptr);

private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace kt500sim
