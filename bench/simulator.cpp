// SPDX-License-Identifier: GPL-3.0-or-later
// How much faster than the clock the simulated motor runs, beside the simulated drive's plain waveforms, and
// what a drive with a connected client takes of a core.
#include "benchmain.h"
#include "report.h"
#include "simulator/model/motormodel.h"
#include "simulator/model/statusvalues.h"
#include "simulator/signalmodel.h"
#include "simulator/simulateddrive.h"

#include <QFile>
#include <QThread>

#include <ctime>
#include <stdexcept>

namespace {

using namespace kt500sim;

constexpr int rounds = 7;
constexpr int simulatedSeconds = 20;
constexpr int wantedRatio = 300;
constexpr double wantedShare = 0.03;

/// A model on the bench, for as long as the figures of one kind are taken.
template <typename Model>
struct Bench
{
    explicit Bench(Model *benchModel)
        : registers(builtInRegisterTable())
        , model(benchModel)
    {
        model->powerOn(registers);
    }
    void write(int offset, std::uint16_t value)
    {
        registers.set(offset, value);
        model->registersWritten(registers, offset, 1);
    }
    /// Position method, back and forth over two sections without end.
    void startSections()
    {
        write(1000, 1);
        write(1010, 0xffff);
        write(1011, 0xd8f0); // -10000
        write(1009, 0);      // no pause
        write(1015, 0);
        write(300, 2);
        write(200, 1);
        model->advance(registers, 8);
        write(202, 1);
        model->advance(registers, samplesPerSecond);
    }

    RegisterFile registers;
    Model *model;
};

// Simulated seconds in a second of processor time.
template <typename Model>
double speedOf(Bench<Model> *bench, bool allItems)
{
    const double before = threadSeconds();
    std::int64_t sum = 0;
    if (allItems) {
        for (int i = 0; i < simulatedSeconds * samplesPerSecond; ++i) {
            bench->model->advance(bench->registers, 1);
            for (int item = 0; item < scopeItemCount; ++item)
                sum += bench->model->scopeValue(item);
        }
    } else {
        bench->model->advance(bench->registers, simulatedSeconds * samplesPerSecond);
    }
    if (allItems && sum == 0)
        throw std::runtime_error("the items show nothing");
    return simulatedSeconds / (threadSeconds() - before);
}

void measureSpeed()
{
    MotorModel motor;
    Bench<MotorModel> moving(&motor);
    moving.startSections();
    SignalModel waveforms;
    Bench<SignalModel> plain(&waveforms);
    QVector<double> steps;
    QVector<double> items;
    QVector<double> plainItems;
    for (int round = 0; round < rounds; ++round) {
        steps.append(speedOf(&moving, false));
        items.append(speedOf(&moving, true));
        plainItems.append(speedOf(&plain, true));
    }
    if (!motor.state().energised)
        throw std::runtime_error("the motor did not run");
    const auto row = [&plainItems](const char *name, const QVector<double> &speeds) {
        return QStringList{QString::fromLatin1(name), figure(median(speeds), 0),
                           figure(medianRatio(speeds, plainItems), 2), ratioSpread(speeds, plainItems)};
    };
    printTable(
        QStringLiteral("Times the speed of the clock, median of %1 rounds of %2 s; the target is at least %3")
            .arg(rounds)
            .arg(simulatedSeconds)
            .arg(wantedRatio),
        {{"model", "times", "to waveforms", "spread"},
         row("motor at work", steps),
         row("motor at work, all scope items", items),
         row("waveforms, all scope items", plainItems)});
}

// Share of one core that this process takes in a second of \a drive at work.
double shareOf(SimulatedDrive *drive)
{
    QFile client(drive->portName());
    if (!client.open(QIODevice::ReadWrite | QIODevice::Unbuffered))
        throw std::runtime_error("the port does not open");
    QThread::msleep(200);
    const std::clock_t before = std::clock();
    QThread::sleep(2);
    return static_cast<double>(std::clock() - before) / CLOCKS_PER_SEC / 2;
}

void measureRest()
{
    SimulatedDrive drive;
    if (!drive.start())
        throw std::runtime_error("the drive does not start");
    const double idle = shareOf(&drive);
    drive.writeRegister(200, 1);
    drive.writeRegister(202, 1);
    const double holding = shareOf(&drive);
    drive.writeRegister(100, 1);
    drive.writePair(401, 10000);
    const double moving = shareOf(&drive);
    const auto row = [](const char *name, double share) {
        return QStringList{QString::fromLatin1(name), figure(100 * share, 2)};
    };
    printTable(QStringLiteral("Percent of one core with a connected client; idle, the target is at most %1")
                   .arg(100 * wantedShare),
               {{"drive", "percent"},
                row("servo off", idle),
                row("servo on, at rest", holding),
                row("moving", moving)});
}

} // namespace

int main(int argc, char *argv[])
{
    return runBenchmark(argc, argv, [] {
        measureSpeed();
        measureRest();
    });
}
