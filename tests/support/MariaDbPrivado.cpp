#include "support/MariaDbPrivado.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <poll.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace nfce::teste {

namespace {

// A first start creates the data folder: several seconds on a slow machine.
constexpr int LimiteMs = 180000;

QString Script() {
    return QDir::cleanPath(QStringLiteral(NFCE_DADOS_TESTE "/../../scripts/mariadb-privado"));
}

// 127.x.y.z from the process id: test processes running side by side never share one, and
// none is the shared server's 127.0.0.1.
QString EnderecoDoProcesso() {
    const qint64 pid = QCoreApplication::applicationPid();
    return QStringLiteral("127.%1.%2.%3")
        .arg(1 + (pid >> 16) % 254)
        .arg((pid >> 8) & 255)
        .arg(pid & 255);
}

QString ErroDoSistema(const char* oQue) {
    return QStringLiteral("%1: %2").arg(QLatin1String(oQue),
                                        QString::fromLocal8Bit(std::strerror(errno)));
}

} // namespace

bool MariaDbPrivado::Disponivel() {
    return !QStandardPaths::findExecutable(QStringLiteral("mariadbd")).isEmpty();
}

MariaDbPrivado::MariaDbPrivado() : endereco_(EnderecoDoProcesso()) {}

MariaDbPrivado::~MariaDbPrivado() {
    if (QFile::exists(dir_.filePath(QStringLiteral("mariadbd.pid")))) Mata();
}

bool MariaDbPrivado::Inicia() {
    QProcess script;
    script.setProcessChannelMode(QProcess::MergedChannels);
    script.start(QStringLiteral("bash"),
                 {Script(), QStringLiteral("inicia"), dir_.path(), endereco_});
    const bool ok = script.waitForFinished(LimiteMs) &&
                    script.exitStatus() == QProcess::NormalExit && script.exitCode() == 0;
    if (!ok)
        erro_ = Script() + QStringLiteral(": ") + script.errorString() + u'\n' +
                QString::fromLocal8Bit(script.readAll());
    return ok;
}

bool MariaDbPrivado::Mata() {
    QFile arquivo(dir_.filePath(QStringLiteral("mariadbd.pid")));
    bool lido = false;
    const pid_t pid =
        arquivo.open(QIODevice::ReadOnly) ? arquivo.readAll().trimmed().toInt(&lido) : 0;
    // The pid file outlives the server; its number may since belong to another program.
    QFile nome(QStringLiteral("/proc/%1/comm").arg(pid));
    if (!lido || pid <= 0 || !nome.open(QIODevice::ReadOnly) || nome.readAll() != "mariadbd\n") {
        erro_ = QStringLiteral("no server running from ") + dir_.path();
        return false;
    }
    // A descriptor of the process becomes readable when it ends: a wait without polling.
    const int processo = static_cast<int>(syscall(SYS_pidfd_open, pid, 0));
    if (processo < 0) {
        erro_ = ErroDoSistema("pidfd_open");
        return false;
    }
    pollfd espera{processo, POLLIN, 0};
    const bool morto = ::kill(pid, SIGKILL) == 0 && ::poll(&espera, 1, LimiteMs) == 1;
    if (!morto) erro_ = ErroDoSistema("kill");
    ::close(processo);
    return morto;
}

} // namespace nfce::teste
