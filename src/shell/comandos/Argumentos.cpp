#include "shell/comandos/Comandos.h"

namespace nfce {

namespace {
// Options followed by a value of their own.
bool TemValor(const QString& opcao) {
    return opcao == QLatin1String("--pasta");
}
} // namespace

QStringList ArgumentosPosicionais(const QStringList& argumentos) {
    QStringList posicionais;
    for (qsizetype i = 0; i < argumentos.size(); ++i) {
        if (!argumentos[i].startsWith(QLatin1String("--")))
            posicionais.append(argumentos[i]);
        else if (TemValor(argumentos[i]))
            ++i;
    }
    return posicionais;
}

QString ValorOpcao(const QStringList& argumentos, const QString& opcao) {
    const qsizetype i = argumentos.indexOf(opcao);
    return i >= 0 && i + 1 < argumentos.size() ? argumentos[i + 1] : QString();
}

bool FaltaValor(const QStringList& argumentos, const QString& opcao) {
    return argumentos.contains(opcao) && ValorOpcao(argumentos, opcao).isEmpty();
}

bool SoPasta(const QStringList& argumentos) {
    return ArgumentosPosicionais(argumentos).isEmpty() &&
           !FaltaValor(argumentos, QStringLiteral("--pasta"));
}

} // namespace nfce
