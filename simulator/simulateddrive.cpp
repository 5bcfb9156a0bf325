// SPDX-License-Identifier: GPL-3.0-or-later
#include "simulator/simulateddrive.h"

#include "simulator/model/motormodel.h"

#include <QFile>

#include <atomic>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>

namespace kt500sim {
namespace {

// Between the owner's thread and the loop's, texts pass as bytes: Qt's shared strings are made and read on
// the calling thread alone.
std::string toBytes(const QString &path)
{
    return QFile::encodeName(path).toStdString();
}

QString fromBytes(const std::string &text)
{
    return QFile::decodeName(text.c_str());
}

void setError(QString *error, const std::string &text)
{
    if (error != nullptr)
        *error = fromBytes(text);
}

} // namespace

struct SimulatedDrive::Private
{
    Private(const DriveOptions &options, const RegisterTable &table, std::unique_ptr<DriveModel> model)
        : linkPath(toBytes(options.linkPath))
        , drive(table, model ? std::move(model) : std::make_unique<MotorModel>(), options.station,
                options.samplesPerFrame)
        , terminal(linkPath)
        , loop(drive, terminal, options.frameGap)
    {
        loop.setPacing(options.pacing);
    }

    void run();
    void runCommands();
    /// Runs \a command on the loop thread, or here while that does not run, and waits for its end.
    void perform(const std::function<void()> &command);

    template <typename Function>
    auto ask(const Function &function)
    {
        decltype(function()) result{};
        perform([&] { result = function(); });
        return result;
    }

    /// Asks the motor; a default value if the model has none.
    template <typename Function>
    auto askMotor(const Function &function)
    {
        return ask([&] {
            MotorModel *const motor = drive.motor();
            return motor != nullptr ? function(*motor) : decltype(function(*motor))();
        });
    }

    const std::string linkPath;

    // The loop thread's own while it runs, and the caller's (under the mutex) while it does not.
    Drive drive;
    PseudoTerminal terminal;
    DriveLoop loop;
    bool stopAsked = false;

    std::thread thread;
    std::atomic<std::thread::id> loopThread{};
    std::atomic<bool> commandsWait{false};

    mutable std::mutex mutex; ///< guards what follows
    std::condition_variable commandDone;
    std::deque<std::pair<const std::function<void()> *, bool *>> commands; ///< a command and its done flag
    bool running = false;                                                  ///< the loop takes commands
    std::string devicePath;
};

void SimulatedDrive::Private::run()
{
    makeThreadWaitsPrecise();
    while (!stopAsked) {
        loop.turn();
        if (commandsWait.load(std::memory_order_acquire))
            runCommands();
    }
    terminal.close();
    // From the moment that the flag falls, callers run their commands themselves, so nothing may be left.
    std::unique_lock<std::mutex> lock(mutex);
    while (!commands.empty()) {
        lock.unlock();
        runCommands();
        lock.lock();
    }
    running = false;
}

void SimulatedDrive::Private::runCommands()
{
    std::unique_lock<std::mutex> lock(mutex);
    commandsWait.store(false, std::memory_order_relaxed);
    while (!commands.empty()) {
        const auto [command, done] = commands.front();
        commands.pop_front();
        lock.unlock();
        (*command)();
        lock.lock();
        *done = true;
        commandDone.notify_all();
    }
}

void SimulatedDrive::Private::perform(const std::function<void()> &command)
{
    // A frame listener may ask the drive something from within the loop.
    if (loopThread.load() == std::this_thread::get_id()) {
        command();
        return;
    }
    std::unique_lock<std::mutex> lock(mutex);
    if (!running) {
        command();
        return;
    }
    bool done = false;
    commands.emplace_back(&command, &done);
    commandsWait.store(true, std::memory_order_release);
    terminal.wake();
    commandDone.wait(lock, [&done] { return done; });
}

SimulatedDrive::SimulatedDrive(const DriveOptions &options, std::unique_ptr<DriveModel> model)
    : SimulatedDrive(options, builtInRegisterTable(), std::move(model))
{
}

SimulatedDrive::SimulatedDrive(const DriveOptions &options, const RegisterTable &table,
                               std::unique_ptr<DriveModel> model)
    : d(std::make_unique<Private>(options, table, std::move(model)))
{
    setLineListener({});
}

SimulatedDrive::~SimulatedDrive()
{
    stop();
}

bool SimulatedDrive::start(QString *error)
{
    const std::lock_guard<std::mutex> lock(d->mutex);
    if (d->running)
        return true;
    const std::string failure = d->terminal.open();
    if (!failure.empty()) {
        setError(error, failure);
        return false;
    }
    d->devicePath = d->terminal.devicePath();
    d->loop.lineOpened();
    d->stopAsked = false;
    d->running = true;
    d->thread = std::thread([this] {
        d->loopThread = std::this_thread::get_id();
        d->run();
        d->loopThread = std::thread::id();
    });
    return true;
}

void SimulatedDrive::stop()
{
    if (!d->thread.joinable())
        return;
    d->perform([this] { d->stopAsked = true; });
    d->thread.join();
}

bool SimulatedDrive::isRunning() const
{
    const std::lock_guard<std::mutex> lock(d->mutex);
    return d->running;
}

QString SimulatedDrive::portName() const
{
    return d->linkPath.empty() ? devicePath() : fromBytes(d->linkPath);
}

QString SimulatedDrive::devicePath() const
{
    const std::lock_guard<std::mutex> lock(d->mutex);
    return fromBytes(d->devicePath);
}

void SimulatedDrive::setFault(const Fault &fault)
{
    d->perform([&] { d->loop.setFault(fault); });
}

bool SimulatedDrive::setFault(const QString &text, QString *error)
{
    const std::optional<Fault> fault = Fault::fromText(text, error);
    if (fault)
        setFault(*fault);
    return fault.has_value();
}

void SimulatedDrive::hangUp(milliseconds duration)
{
    setFault(Fault::hangUp(static_cast<int>(duration.count())));
}

bool SimulatedDrive::isHungUp()
{
    return d->ask([&] { return d->loop.isHungUp(); });
}

bool SimulatedDrive::hasClient()
{
    return d->ask([&] { return d->terminal.hasClient(); });
}

void SimulatedDrive::setLineListener(std::function<void(bool up)> listener)
{
    d->perform([&] {
        d->loop.setLineListener([this, listener = std::move(listener)](bool up) {
            if (up) {
                const std::lock_guard<std::mutex> lock(d->mutex);
                d->devicePath = d->terminal.devicePath();
            }
            if (listener)
                listener(up);
        });
    });
}

void SimulatedDrive::setPacing(const Pacing &pacing)
{
    d->perform([&] { d->loop.setPacing(pacing); });
}

void SimulatedDrive::powerCycle()
{
    d->perform([&] { d->loop.powerCycle(); });
}

void SimulatedDrive::factoryReset()
{
    d->perform([&] { d->loop.factoryReset(); });
}

std::optional<std::uint16_t> SimulatedDrive::readRegister(int offset, RegisterCopy copy)
{
    return d->ask([&]() -> std::optional<std::uint16_t> {
        const RegisterFile &registers = d->drive.registers();
        if (!registers.exists(offset))
            return std::nullopt;
        return copy == RegisterCopy::Working ? registers.working(offset) : registers.stored(offset);
    });
}

std::optional<std::int32_t> SimulatedDrive::readPair(int offset, RegisterCopy copy)
{
    return d->ask([&]() -> std::optional<std::int32_t> {
        const RegisterFile &registers = d->drive.registers();
        if (!registers.exists(offset) || !registers.exists(offset + 1))
            return std::nullopt;
        if (copy == RegisterCopy::Working)
            return registers.workingPair(offset);
        const std::uint32_t high = registers.stored(offset);
        return static_cast<std::int32_t>((high << 16) | registers.stored(offset + 1));
    });
}

bool SimulatedDrive::writeRegister(int offset, std::uint16_t value, RegisterCopy copy)
{
    return d->ask([&] {
        if (!d->drive.registers().exists(offset))
            return false;
        d->drive.setRegister(offset, value,
                             copy == RegisterCopy::Working ? RegisterFile::Copy::Working
                                                           : RegisterFile::Copy::WorkingAndStored);
        return true;
    });
}

bool SimulatedDrive::writePair(int offset, std::int32_t value, RegisterCopy copy)
{
    const auto bits = static_cast<std::uint32_t>(value);
    return writeRegister(offset, static_cast<std::uint16_t>(bits >> 16), copy) &&
           writeRegister(offset + 1, static_cast<std::uint16_t>(bits & 0xffff), copy);
}

RegisterSnapshot SimulatedDrive::registers()
{
    return d->ask([&] {
        const RegisterFile &registers = d->drive.registers();
        return RegisterSnapshot{registers.workingWords(), registers.storedWords()};
    });
}

void SimulatedDrive::freeze()
{
    d->perform([&] { d->loop.freeze(); });
}

void SimulatedDrive::unfreeze()
{
    d->perform([&] { d->loop.unfreeze(); });
}

void SimulatedDrive::advance(nanoseconds time)
{
    d->perform([&] { d->loop.step(time); });
}

void SimulatedDrive::setPlant(const PlantSettings &settings)
{
    d->askMotor([&](MotorModel &motor) {
        motor.setPlant(settings);
        return true;
    });
}

PlantSettings SimulatedDrive::plant()
{
    return d->askMotor([](MotorModel &motor) { return PlantSettings(motor.plantSettings()); });
}

void SimulatedDrive::setContact(int number, bool closed)
{
    d->askMotor([&](MotorModel &motor) { return motor.setContact(number, closed); });
}

std::uint16_t SimulatedDrive::contacts()
{
    return d->askMotor([](MotorModel &motor) { return motor.contacts(); });
}

bool SimulatedDrive::raiseFault(int number)
{
    return d->ask([&] { return d->drive.raiseFault(number); });
}

void SimulatedDrive::setWarning(int number, bool on)
{
    d->askMotor([&](MotorModel &motor) {
        motor.forceWarning(number, on);
        return true;
    });
}

DriveState SimulatedDrive::state()
{
    return d->askMotor([](MotorModel &motor) { return DriveState(motor.state()); });
}

bool SimulatedDrive::isStreaming()
{
    return d->ask([&] { return d->drive.stream().isRunning(); });
}

Counters SimulatedDrive::counters()
{
    return d->ask([&] { return d->loop.counters(); });
}

void SimulatedDrive::resetCounters()
{
    d->perform([&] { d->loop.resetCounters(); });
}

void SimulatedDrive::setFrameListener(FrameListener listener)
{
    d->perform([&] { d->loop.setListener(std::move(listener)); });
}

bool SimulatedDrive::logToFile(const QString &path, QString *error)
{
    const std::string bytes = toBytes(path);
    const std::string failure = d->ask([&] { return d->loop.logToFile(bytes); });
    setError(error, failure);
    return failure.empty();
}

} // namespace kt500sim
