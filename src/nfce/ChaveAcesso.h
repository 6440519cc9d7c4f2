#pragma once

#include <QString>

namespace nfce {

// 44 digits whose last is the check digit of the first 43 (modulo 11, weights 2 to 9 from the
// right; a remainder of 0 or 1 gives 0).
bool ChaveValida(const QString& chave);

// A valid key of NFC-e `nNF` (model 65) of the company `cnpj` (punctuation ignored), series
// `serie`: the only key an answer about that sale may carry.
bool ChaveDaNota(const QString& chave, const QString& cnpj, const QString& serie, qint32 nNF);

// UniNFe's answer when it has no key: digits, all of them 0 ("0").
bool RespostaSemChave(const QString& texto);

} // namespace nfce
