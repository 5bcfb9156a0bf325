// SPDX-License-Identifier: GPL-3.0-or-later
// Processor time from process start to a painted main window, beside an empty QMainWindow started alike.
#include "benchmain.h"
#include "report.h"

#include <QCoreApplication>

#include <array>
#include <stdexcept>
#include <string>

#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr int rounds = 21;

// Milliseconds of user and system time of one run of the program beside this one.
double processorTime(const char *name)
{
    std::string program = (QCoreApplication::applicationDirPath() + QLatin1Char('/') + QLatin1String(name))
                              .toLocal8Bit()
                              .toStdString();
    const std::array<char *, 2> arguments{{program.data(), nullptr}};
    pid_t process = 0;
    const int error = ::posix_spawn(&process, program.c_str(), nullptr, nullptr, arguments.data(), environ);
    int status = 0;
    rusage usage{};
    if (error != 0 || ::wait4(process, &status, 0, &usage) != process || status != 0)
        throw std::runtime_error(program + " does not run");
    const auto milliseconds = [](const timeval &time) {
        return double(time.tv_sec) * 1e3 + double(time.tv_usec) * 1e-3;
    };
    return milliseconds(usage.ru_utime) + milliseconds(usage.ru_stime);
}

void measure()
{
    const char *const productName = "bench-startup-app";
    const char *const bareName = "bench-startup-bare";
    // The first runs bring the files into memory.
    processorTime(productName);
    processorTime(bareName);
    QVector<double> product;
    QVector<double> bare;
    for (int round = 0; round < rounds; ++round) {
        product.append(processorTime(productName));
        bare.append(processorTime(bareName));
    }
    printTable(QStringLiteral("Processor time until the window is painted, median of %1 rounds").arg(rounds),
               {{"program", "milliseconds", "ratio", "spread"},
                {"main window and connection dialog", figure(median(product), 1),
                 figure(medianRatio(product, bare), 2), ratioSpread(product, bare)},
                {"empty QMainWindow", figure(median(bare), 1), "1.00", {}}});
}

} // namespace

int main(int argc, char *argv[])
{
    return runBenchmark(argc, argv, measure);
}
