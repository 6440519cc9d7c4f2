#include "nfce/Valores.h"

#include "storage/Formatacao.h"

namespace nfce {

Moeda MoedaDe(const QVariant& valor) {
    if (valor.isNull()) return {};
    if (EhNumero(valor)) return Moeda(valor.toDouble());
    return LeValor(valor.toString());
}

QString Dinheiro(double valor) {
    return ValorPonto(QVariant(valor));
}

QString Dinheiro(Moeda valor) {
    return ValorPonto(valor);
}

QString Maiusculas(const QString& texto) {
    QString maiusculas = texto;
    for (QChar& c : maiusculas)
        if (c != QChar(u'µ')) c = c.toUpper();
    return maiusculas;
}

} // namespace nfce
