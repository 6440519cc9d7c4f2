#include "shell/comandos/Saida.h"

#include "storage/ErroExecucao.h"

#include <cstdio>

namespace nfce {

void EscreveSaida(const QString& texto) {
    std::fputs(texto.toUtf8().constData(), stdout);
    std::fflush(stdout);
}

void EscreveErro(const QString& texto) {
    std::fputs(texto.toUtf8().constData(), stderr);
    std::fflush(stderr);
}

int ErroDeUso(const QString& sintaxe) {
    EscreveErro(QStringLiteral("uso: servidor-nfce ") + sintaxe + QLatin1Char('\n'));
    return 2;
}

int ExecutaComando(const std::function<int()>& comando) {
    try {
        return comando();
    } catch (const ErroExecucao& erro) {
        EscreveErro(QStringLiteral("servidor-nfce: %1 (erro %2)\n")
                        .arg(erro.descricao())
                        .arg(erro.numero()));
        return 1;
    }
}

} // namespace nfce
