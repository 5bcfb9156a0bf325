// SPDX-License-Identifier: GPL-3.0-or-later
// Exchanges per second over a pseudo-terminal to a peer that answers at once, beside libmodbus and Qt's own
// Modbus master. Nothing but software is measured: there is no wire time and no gap.
// With the name of one client (libmodbus, link, editor, pageread, serialbus) and a time in milliseconds it
// runs that one alone, for a profiler to look at.
#include "answeringpeer.h"
#include "benchmain.h"
#include "exchangeclients.h"
#include "report.h"

#include <QCoreApplication>
#include <QHash>

#include <cstdio>
#include <stdexcept>

namespace {

constexpr int rounds = 9;
constexpr int roundTime = 500; // ms

void measure()
{
    const AnsweringPeer peer;
    QVector<double> libmodbus;
    QVector<double> link;
    QVector<double> editor;
    QVector<double> pageRead;
    QVector<double> serialBus;
    for (int round = 0; round < rounds; ++round) {
        libmodbus.append(libmodbusRate(peer.path(), roundTime));
        link.append(linkRate(peer.path(), roundTime));
        editor.append(editorRate(peer.path(), roundTime));
        pageRead.append(pageReadRate(peer.path()));
        serialBus.append(serialBusRate(peer.path(), roundTime));
    }
    const auto row = [&libmodbus, &serialBus](const char *name, const QVector<double> &rates) {
        return QStringList{QString::fromLatin1(name), figure(median(rates), 0),
                           figure(medianRatio(rates, libmodbus), 2), ratioSpread(rates, libmodbus),
                           figure(medianRatio(rates, serialBus), 1)};
    };
    printTable(QStringLiteral("Exchanges per second, median of %1 interleaved rounds").arg(rounds),
               {{"client", "per second", "to libmodbus", "spread", "to Qt SerialBus"},
                row("libmodbus", libmodbus),
                row("link alone", link),
                row("editor, single reads", editor),
                row("editor, page read", pageRead),
                row("Qt SerialBus", serialBus)});
}

using Client = double (*)(const QByteArray &path, int milliseconds);

Client clientOfName(const QString &name)
{
    static const QHash<QString, Client> clients{
        {QStringLiteral("libmodbus"), libmodbusRate},
        {QStringLiteral("link"), linkRate},
        {QStringLiteral("editor"), editorRate},
        {QStringLiteral("pageread"), [](const QByteArray &path, int) { return pageReadRate(path); }},
        {QStringLiteral("serialbus"), serialBusRate}};
    const Client client = clients.value(name, nullptr);
    if (!client)
        throw std::runtime_error("no client of that name");
    return client;
}

void runAlone(const QString &name, int milliseconds)
{
    const AnsweringPeer peer;
    std::printf("%.0f exchanges per second\n", clientOfName(name)(peer.path(), milliseconds));
}

} // namespace

int main(int argc, char *argv[])
{
    if (AnsweringPeer::serveIfAsked(argc, argv))
        return 0;
    return runBenchmark(argc, argv, [] {
        const QStringList arguments = QCoreApplication::arguments();
        if (arguments.size() == 3)
            runAlone(arguments.at(1), arguments.at(2).toInt());
        else
            measure();
    });
}
