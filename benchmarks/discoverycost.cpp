// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

// What a search costs, measured on pseudo-terminals; takes four minutes. Ends with 1 when a figure is missed.

#include <printdevicefinder.h>
#include <simulatorthread.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QLoggingCategory>
#include <QThread>

#include <algorithm>
#include <cstdio>
#include <random>

#include <sys/resource.h>

using namespace printersim;

namespace {

constexpr int Ports = 40;
constexpr int Cancels = 500;
constexpr double LongestCancelMs = 100;
constexpr double MostExcess = 0.01; // of the time that the timeouts sum up to
constexpr double MostShare = 0.01; // of a core
// 54 x 2 x 300, 54 x 1400, 24 x 300, 1000 and 27 x 1000 ms.
constexpr double SumOfTimeoutsMs = 32'400 + 75'600 + 7'200 + 1'000 + 27'000;

double cpuSeconds()
{
    rusage usage = {};
    getrusage(RUSAGE_SELF, &usage);
    const auto seconds = [](const timeval &time) {
        return double(time.tv_sec) + double(time.tv_usec) / 1e6;
    };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

/** A printer that hears nothing but its own settings, as most do. */
Personality quietElsewhere(const char *name, const LineSettings &line)
{
    Personality player = *personality(QString::fromLatin1(name));
    player.voices.first().line = line;
    player.isGarbledElsewhere = false;
    return player;
}

QStringList silentPorts(SimulatorThread *simulator)
{
    QStringList names;
    for (int i = 0; i < Ports; ++i) {
        names.append(simulator->add(*personality(QStringLiteral("AV_268")), {EFault::Silent, {}, 1})->portName());
    }
    return names;
}

double searchMs(const QStringList &ports)
{
    PrintDeviceFinder finder;
    QEventLoop loop;
    QElapsedTimer clock;
    clock.start();
    QObject::connect(&finder, &PrintDeviceFinder::finished, &loop, &QEventLoop::quit, Qt::QueuedConnection);
    finder.start(ports);
    loop.exec();
    return double(clock.nsecsElapsed()) / 1e6;
}

void measureFinding()
{
    SimulatorThread simulator;
    const QString first = simulator.add(quietElsewhere("CUSTOM_VKP_80", {115200, EFlow::None, {}}))->portName();
    const QString last = simulator.add(quietElsewhere("CUSTOM_VKP_80", {4800, EFlow::Software, {}}))->portName();
    std::printf("found on the first candidate: %.1f ms\n", searchMs({first}));
    // The third of the nine settings at the slowest speed: a pseudo-terminal knows no parity.
    std::printf("found on the last speed of the first probe: %.0f ms (47 silent settings before: 28200 ms)\n",
                searchMs({last}));
}

bool measureCancelling()
{
    SimulatorThread simulator;
    const QStringList ports = silentPorts(&simulator);
    PrintDeviceFinder finder;
    std::minstd_rand random(1);
    QVector<double> times;
    for (int i = 0; i < Cancels; ++i) {
        finder.start(ports);
        QThread::usleep(random() % 60'000);
        QElapsedTimer clock;
        clock.start();
        finder.cancel();
        times.append(double(clock.nsecsElapsed()) / 1e6);
    }
    std::sort(times.begin(), times.end());
    std::printf("cancel with %d ports, %d times: median %.1f ms, worst %.1f ms\n", Ports, Cancels,
                times.at(Cancels / 2), times.last());
    return times.last() <= LongestCancelMs;
}

bool measureWalk()
{
    SimulatorThread simulator;
    const QStringList ports = silentPorts(&simulator);
    const double cpuBefore = cpuSeconds();
    const double elapsedMs = searchMs(ports);
    const double cpu = cpuSeconds() - cpuBefore;
    const double excess = elapsedMs / SumOfTimeoutsMs - 1.0;
    const double share = cpu / Ports / (elapsedMs / 1000.0);
    std::printf("walk of %d silent ports: %.0f ms, the timeouts are %.0f ms: %+.2f %%\n", Ports, elapsedMs,
                SumOfTimeoutsMs, 100.0 * excess);
    std::printf("processor time per waiting port, its simulator included: %.3f %% of a core\n", 100.0 * share);
    return excess <= MostExcess && share <= MostShare;
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    QLoggingCategory::setFilterRules(QStringLiteral("*.debug=false"));
    std::setvbuf(stdout, nullptr, _IOLBF, 0);
    bool isGood = measureCancelling();
    measureFinding();
    isGood = measureWalk() && isGood;
    return isGood ? 0 : 1;
}
