// The tray server left alone: the headless server on a program folder with nothing to send,
// for 60 seconds (or the seconds given), then the CPU time it used (target: under 0.6 s, 1 %
// of one core) and its peak memory (target: under 60 MB), read from /proc.
#include <QCoreApplication>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QThread>
#include <cstdio>
#include <unistd.h>

namespace {

// Seconds of user and system CPU of a process.
double SegundosDeCpu(qint64 pid) {
    QFile arquivo(QStringLiteral("/proc/%1/stat").arg(pid));
    if (!arquivo.open(QIODevice::ReadOnly)) return -1;
    const QByteArray linha = arquivo.readAll();
    // Fields after the command name, which ends at the last ')': state is field 3.
    const QList<QByteArray> campos = linha.mid(linha.lastIndexOf(')') + 2).split(' ');
    return (campos.value(11).toDouble() + campos.value(12).toDouble()) / sysconf(_SC_CLK_TCK);
}

double MegabytesDe(qint64 pid, const QByteArray& campo) {
    QFile arquivo(QStringLiteral("/proc/%1/status").arg(pid));
    if (!arquivo.open(QIODevice::ReadOnly)) return -1;
    for (const QByteArray& linha : arquivo.readAll().split('\n'))
        if (linha.startsWith(campo + ':'))
            return linha.mid(campo.size() + 1).trimmed().split(' ').value(0).toDouble() / 1024.0;
    return -1;
}

bool Roda(const QStringList& argumentos) {
    QProcess processo;
    processo.start(QStringLiteral(NFCE_BINARIO_SERVIDOR), argumentos);
    return processo.waitForFinished(60000) && processo.exitCode() == 0;
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    const int segundos = argc > 1 ? std::atoi(argv[1]) : 60;
    QTemporaryDir dir;
    const QString pasta = dir.filePath(QStringLiteral("loja"));
    if (!Roda({QStringLiteral("iniciar"), pasta})) {
        std::fprintf(stderr, "bench_ocioso: servidor-nfce iniciar failed\n");
        return 1;
    }
    QProcess servidor;
    servidor.start(QStringLiteral(NFCE_BINARIO_SERVIDOR),
                   {QStringLiteral("--pasta"), pasta, QStringLiteral("--sem-janela")});
    if (!servidor.waitForStarted()) return 1;
    const qint64 pid = servidor.processId();
    // A benchmark of real idleness has to let real time pass.
    QThread::sleep(static_cast<unsigned long>(segundos));
    const double cpu = SegundosDeCpu(pid);
    const double pico = MegabytesDe(pid, "VmHWM");
    const double agora = MegabytesDe(pid, "VmRSS");
    servidor.terminate();
    servidor.waitForFinished();
    std::printf("servidor ocioso por %d s: %.3f s de CPU (%.3f %% de um núcleo; alvo < 0,6 s), "
                "memória de pico %.1f MB (alvo < 60 MB), residente ao fim %.1f MB\n",
                segundos, cpu, 100.0 * cpu / segundos, pico, agora);
    return 0;
}
