#include "shell/comandos/Comandos.h"

#include "platform/AmbienteQt.h"
#include "shell/comandos/Saida.h"
#include "storage/Instalacao.h"

#include <QDir>

namespace nfce {

// servidor-nfce iniciar DIR [--exemplos]: a ready program folder on the embedded database.
int ComandoIniciar(const QStringList& argumentos) {
    const QStringList posicionais = ArgumentosPosicionais(argumentos);
    if (posicionais.size() != 1) return ErroDeUso(QStringLiteral("iniciar DIR [--exemplos]"));
    const QString pasta = QDir(posicionais.first()).absolutePath();
    CriaPastaPrograma(pasta, argumentos.contains(QStringLiteral("--exemplos")),
                      AmbienteQt().Data());
    EscreveSaida(pasta + QLatin1Char('\n'));
    return 0;
}

} // namespace nfce
