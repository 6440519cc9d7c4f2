#include "storage/Ajustes.h"

#include "storage/Configuracao.h"
#include "storage/Formatacao.h"

#include <cmath>

namespace nfce {

using namespace Qt::StringLiterals;

namespace {

QString Valor(const QString& pasta, const char16_t* chave) {
    return LerConfig(pasta, QString::fromUtf16(chave));
}

} // namespace

QString Le(const QString& pasta, const AjusteTexto& ajuste) {
    const QString valor = Valor(pasta, ajuste.chave);
    return valor.isEmpty() ? QString::fromUtf16(ajuste.padrao) : valor;
}

bool Le(const QString& pasta, const AjusteSim& ajuste) {
    return Valor(pasta, ajuste.chave) == u"SIM"_s;
}

double Le(const QString& pasta, const AjusteNumero& ajuste) {
    return Val(Valor(pasta, ajuste.chave));
}

qint64 Le(const QString& pasta, const AjusteInteiro& ajuste) {
    const QString valor = Valor(pasta, ajuste.chave);
    const qint64 numero = InteiroDe(valor);
    return numero == 0 ? ajuste.padrao : numero;
}

int Le(const QString& pasta, const AjusteSegundos& ajuste, int seNenhum) {
    const QString valor = Valor(pasta, ajuste.chave);
    // The start-up keeps it in a 16-bit integer: a value that does not fit is refused
    // wherever it is read.
    Inteiro16(valor, Chave(ajuste));
    const double segundos = std::trunc(Val(valor));
    return segundos > 0 ? static_cast<int>(segundos) : seNenhum;
}

bool Definido(const QString& pasta, const AjusteTexto& ajuste) {
    return !Valor(pasta, ajuste.chave).isEmpty();
}

} // namespace nfce
