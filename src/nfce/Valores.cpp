#include "nfce/Valores.h"

#include "storage/Formatacao.h"

namespace nfce {

namespace {

bool EhNumero(const QVariant& valor) {
    switch (valor.typeId()) {
    case QMetaType::Double:
    case QMetaType::Float:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Bool:
        return true;
    default:
        return false;
    }
}

} // namespace

Moeda MoedaDe(const QVariant& valor) {
    if (valor.isNull()) return {};
    if (EhNumero(valor)) return Moeda(valor.toDouble());
    return LeValor(valor.toString());
}

qint64 InteiroDe(const QVariant& valor) {
    if (valor.isNull()) return 0;
    if (valor.typeId() == QMetaType::LongLong || valor.typeId() == QMetaType::Int)
        return valor.toLongLong();
    return Inteiro64(EhNumero(valor) ? valor.toDouble() : Val(valor.toString()), valor.toString());
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
