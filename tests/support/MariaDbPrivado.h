#pragma once

#include <QCoreApplication>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <csignal>
#include <poll.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace nfce::teste {

using namespace Qt::StringLiterals;

// A MariaDB of one test process, to kill without touching the shared one: on data in a temporary
// folder, user master, on a loopback address from the process id that no other process shares.
class MariaDbPrivado {
public:
    static bool Disponivel() { return !QStandardPaths::findExecutable(u"mariadbd"_s).isEmpty(); }

    ~MariaDbPrivado() {
        if (QFile::exists(dir_.filePath(u"mariadbd.pid"_s))) Mata();
    }

    // Starts it, or again on the same data; false with the reason in erro().
    bool Inicia() {
        const QString script = NFCE_DADOS_TESTE "/../../scripts/mariadb-privado"_L1;
        QProcess processo;
        processo.setProcessChannelMode(QProcess::MergedChannels);
        processo.start(u"bash"_s, {script, u"inicia"_s, dir_.path(), endereco_});
        if (processo.waitForFinished(LimiteMs) && processo.exitStatus() == QProcess::NormalExit &&
            processo.exitCode() == 0)
            return true;
        erro_ = script + u": "_s + processo.errorString() + u'\n' +
                QString::fromLocal8Bit(processo.readAll());
        return false;
    }
    // SIGKILL, as a crash or a pulled plug would end it; returns once the process is gone.
    bool Mata() {
        QFile numero(dir_.filePath(u"mariadbd.pid"_s));
        const pid_t pid = numero.open(QIODevice::ReadOnly) ? numero.readAll().trimmed().toInt() : 0;
        // The pid file outlives the server; its number may since belong to another program.
        QFile nome(u"/proc/%1/comm"_s.arg(pid));
        if (pid <= 0 || !nome.open(QIODevice::ReadOnly) || nome.readAll() != "mariadbd\n") {
            erro_ = u"no server running from "_s + dir_.path();
            return false;
        }
        // A descriptor of the process becomes readable when it ends: a wait without polling.
        const int processo = static_cast<int>(syscall(SYS_pidfd_open, pid, 0));
        pollfd espera{processo, POLLIN, 0};
        const bool morto =
            processo >= 0 && ::kill(pid, SIGKILL) == 0 && ::poll(&espera, 1, LimiteMs) == 1;
        if (!morto) erro_ = u"kill: "_s + qt_error_string();
        if (processo >= 0) ::close(processo);
        return morto;
    }

    const QString& endereco() const { return endereco_; }
    const QString& erro() const { return erro_; }

private:
    static constexpr int LimiteMs = 180000; // a first start creates the data: seconds when slow
    const qint64 pid_ = QCoreApplication::applicationPid();
    QTemporaryDir dir_;
    QString endereco_ =
        u"127.%1.%2.%3"_s.arg(1 + (pid_ >> 16) % 254).arg((pid_ >> 8) & 255).arg(pid_ & 255);
    QString erro_;
};

} // namespace nfce::teste
