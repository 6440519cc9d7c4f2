#include "Chave.h"

namespace uninfesim {

namespace {

QString Digitos(qint64 valor, int largura) {
    return QString::number(valor).rightJustified(largura, u'0');
}

bool SoDigitos(const QString& texto) {
    for (QChar c : texto)
        if (c < u'0' || c > u'9') return false;
    return !texto.isEmpty();
}

} // namespace

int DigitoVerificador(const QString& digitos43) {
    int soma = 0;
    int peso = 2;
    for (qsizetype i = digitos43.size() - 1; i >= 0; --i) {
        soma += digitos43.at(i).digitValue() * peso;
        peso = peso == 9 ? 2 : peso + 1;
    }
    const int resto = soma % 11;
    return resto < 2 ? 0 : 11 - resto;
}

qint64 CodigoNumerico(qint64 nNF) {
    // Eight rounds; each puts in front the weighted sum (of the character codes of the first
    // eight characters) modulo 11. The first eight characters are the code.
    QString s = Digitos(nNF, 8);
    for (int rodada = 0; rodada < 8; ++rodada) {
        int soma = 0;
        for (int j = 0; j < 8; ++j)
            soma += s.at(j).unicode() * (j + 1);
        s.prepend(QString::number(soma % 11));
    }
    return s.left(8).toLongLong();
}

QString MontaChave(const CamposChave& c) {
    const qint64 cNF = c.cNF != 0 ? c.cNF : CodigoNumerico(c.nNF);
    const QString sem = Digitos(c.cUF, 2) + c.aamm + c.cnpj.rightJustified(14, u'0') +
                        Digitos(c.mod, 2) + Digitos(c.serie, 3) + Digitos(c.nNF, 9) +
                        Digitos(c.tpEmis, 1) + Digitos(cNF, 8);
    return sem + QString::number(DigitoVerificador(sem));
}

bool ChaveValida(const QString& chave) {
    return chave.size() == 44 && SoDigitos(chave) &&
           chave.at(43).digitValue() == DigitoVerificador(chave.left(43));
}

QString ComTipoEmissao(const QString& chave, int tpEmis) {
    const QString sem = chave.left(34) + QString::number(tpEmis) + chave.mid(35, 8);
    return sem + QString::number(DigitoVerificador(sem));
}

qint64 NumeroDaChave(const QString& chave) {
    return chave.mid(25, 9).toLongLong();
}

} // namespace uninfesim
