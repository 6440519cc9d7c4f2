#include "export/Literais.h"

#include "storage/ErroExecucao.h"
#include "storage/Formatacao.h"
#include "storage/Registros.h"
#include "storage/Sql.h"

#include <QRegularExpression>
#include <cmath>

namespace nfce {

using namespace Qt::StringLiterals;

namespace {
constexpr qsizetype LimiteDaChave = 40;
}

QString ListaDeValores(const QStringList& valores) {
    QStringList escapados;
    escapados.reserve(valores.size());
    for (const QString& valor : valores)
        escapados.append(EscapaTexto(valor));
    return u"'"_s + escapados.join(u"', '"_s) + u"' )"_s;
}

QString NumeroSemAspas(const Registros& rs, const QString& campo) {
    static const QRegularExpression numero(u"^-?[0-9]+(\\.[0-9]+)?$"_s);
    const QString texto = rs.Texto(campo);
    if (!numero.match(texto).hasMatch())
        throw ErroExecucao(ErroTipoIncompativel,
                           u"Tipos incompatíveis: %1 não é um número (\"%2\")"_s.arg(
                               campo, TextoDeChave(rs, campo)));
    return texto;
}

QString TextoDeVal(const Registros& rs, const QString& campo) {
    const double valor = Val(rs.Texto(campo));
    if (!std::isfinite(valor))
        throw ErroExecucao(ErroEstouro, u"Estouro: %1 grande demais"_s.arg(campo));
    return TextoNumero(valor);
}

QString HoraSql(const Registros& rs, const QString& campo) {
    const QTime hora = rs.Hora(campo);
    return hora.isValid() ? hora.toString(u"HH:mm:ss") : QString();
}

Moeda ValorDe(const Registros& rs, const QString& campo) {
    const QVariant valor = rs.Campo(campo);
    if (valor.isNull()) return {};
    const int tipo = valor.typeId();
    if (tipo == QMetaType::QString || tipo == QMetaType::QByteArray)
        return LeValor(rs.Texto(campo));
    return Moeda(valor.toDouble());
}

bool DiferenteDeZero(const Registros& rs, const QString& campo) {
    return Val(rs.Texto(campo)) != 0;
}

QString TextoDeChave(const Registros& rs, const QString& campo) {
    const QString texto = rs.Texto(campo);
    return texto.size() <= LimiteDaChave ? texto : texto.left(LimiteDaChave) + u"..."_s;
}

QString Caixa(const Registros& rs) {
    return Zeros(rs.Campo(u"caixa"_s), 3);
}

} // namespace nfce
