// How much CPU a 10-second wait of the production event loop costs (target: under 1 %
// of one core, i.e. under 0.1 s). The window must stay live, but the process must sleep.
#include "platform/AmbienteQt.h"

#include <QCoreApplication>
#include <QTimer>
#include <cstdio>
#include <sys/resource.h>

namespace {
double SegundosDeCpu() {
    rusage uso{};
    getrusage(RUSAGE_SELF, &uso);
    return uso.ru_utime.tv_sec + uso.ru_stime.tv_sec +
           (uso.ru_utime.tv_usec + uso.ru_stime.tv_usec) / 1e6;
}
} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    nfce::AmbienteQt ambiente;
    // A timer ticking as the window's does, so the wait also serves events.
    int ticks = 0;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] { ++ticks; });
    timer.start(500);

    const double cpuAntes = SegundosDeCpu();
    const qint64 inicio = ambiente.Monotonico();
    ambiente.Aguarda(10);
    const double real = (ambiente.Monotonico() - inicio) / 1000.0;
    const double cpu = SegundosDeCpu() - cpuAntes;
    std::printf(
        "Aguarda(10): %.3f s real, %.4f s CPU (%.3f %% of one core), %d timer ticks served\n", real,
        cpu, 100.0 * cpu / real, ticks);
    return 0;
}
