#include "shell/comandos/Comandos.h"

#include "context/Servidor.h"
#include "nfce/GeraNfce.h"
#include "platform/AmbienteQt.h"
#include "shell/comandos/Preparo.h"
#include "shell/comandos/Saida.h"
#include "storage/ErroExecucao.h"
#include "storage/Formatacao.h"

#include <QDir>

namespace nfce {

using namespace Qt::StringLiterals;

namespace {

// An NFC-e number: 1 to 999999999, digits only (0 is the tills' "no NFC-e").
qint64 NumeroNfce(const QString& texto) {
    const auto numero = NumeroEstrito(texto, 999999999);
    if (!numero)
        throw ErroExecucao(ErroArgumentoInvalido,
                           u"Número de NFC-e inválido: \"%1\""_s.arg(texto.left(40)));
    return *numero;
}

} // namespace

// servidor-nfce gerar NFCE [--pasta DIR]: the NFC-e text of one sale, written as the
// automatic sender writes it; prints the file's path.
int ComandoGerar(const QStringList& argumentos) {
    const QStringList posicionais = ArgumentosPosicionais(argumentos);
    if (posicionais.size() != 1 || FaltaValor(argumentos, u"--pasta"_s))
        return ErroDeUso(u"gerar NFCE [--pasta DIR]"_s);
    const qint64 nfce = NumeroNfce(posicionais.first());
    AmbienteQt ambiente;
    Servidor servidor(PastaVerificada(argumentos), ambiente);
    PreparaServidor(servidor);
    EscreveSaida(QDir::toNativeSeparators(GeraNfceDaVenda(servidor, nfce)) + u'\n');
    return 0;
}

} // namespace nfce
