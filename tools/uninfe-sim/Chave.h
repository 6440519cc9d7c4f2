#pragma once

#include <QString>

namespace uninfesim {

// The parts of an access key: cUF(2) AAMM(4) CNPJ(14) mod(2) serie(3) nNF(9) tpEmis(1)
// cNF(8) cDV(1).
struct CamposChave {
    int cUF = 0;
    QString aamm;
    QString cnpj; // digits only
    int mod = 55;
    int serie = 0;
    qint64 nNF = 0;
    int tpEmis = 1;
    qint64 cNF = 0; // 0: derived from nNF
};

// Modulo 11 over the first 43 digits, weights 2..9 from the right; remainders 0 and 1 give 0.
int DigitoVerificador(const QString& digitos43);

// The numeric code UniNFe puts in a key when the request gives none: a function of nNF alone,
// so that the key asked for beforehand and the key of the converted document agree.
qint64 CodigoNumerico(qint64 nNF);

QString MontaChave(const CamposChave& campos);

// 44 digits whose last one is the check digit of the others.
bool ChaveValida(const QString& chave);

// The key of the same document under another emission type (check digit recomputed).
QString ComTipoEmissao(const QString& chave, int tpEmis);

// nNF as it stands in the key (characters 26 to 34).
qint64 NumeroDaChave(const QString& chave);

} // namespace uninfesim
