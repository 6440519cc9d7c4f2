#pragma once

#include <QProcess>
#include <QStringList>

namespace nfce::teste {

// One run of the server program to its end, `entrada` on its standard input.
struct Execucao {
    int status;
    QString saida, erro;
};
inline Execucao RodaServidor(const QStringList& argumentos, const QByteArray& entrada = {}) {
    QProcess processo;
    processo.start(QStringLiteral(NFCE_BINARIO_SERVIDOR), argumentos);
    processo.write(entrada);
    processo.closeWriteChannel();
    processo.waitForFinished(60000);
    return {processo.exitCode(), QString::fromUtf8(processo.readAllStandardOutput()),
            QString::fromUtf8(processo.readAllStandardError())};
}

} // namespace nfce::teste
