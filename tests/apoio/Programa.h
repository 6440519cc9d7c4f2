#pragma once

#include <QProcess>
#include <QStringList>

namespace nfce::teste {

// One run of the server program to its end: exit status, standard output and error.
struct Execucao {
    int status;
    QString saida, erro;
};

inline Execucao RodaServidor(const QStringList& argumentos) {
    QProcess processo;
    processo.start(QStringLiteral(NFCE_BINARIO_SERVIDOR), argumentos);
    processo.waitForFinished(60000);
    return {processo.exitCode(), QString::fromUtf8(processo.readAllStandardOutput()),
            QString::fromUtf8(processo.readAllStandardError())};
}

} // namespace nfce::teste
