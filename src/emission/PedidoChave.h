#pragma once

#include <QString>

namespace nfce {

struct Servidor;

// Asks UniNFe to compute the access key of NFC-e `nNF` before the document goes: the
// request "<nNF 10 digits>-gerar-chave.xml" in the company's Envio folder, then a 1 s wait.
// A missing Envio folder raises ErroCaminhoNaoEncontrado.
void PedeChave(Servidor& s, qint32 nNF, const QString& AAMM, int tpEmis);

// Wait for UniNFe's answer (XML form: the key at characters 64-107 of a line; text form: the
// last line), store it in vendas.chave and return it; "" when none came in 10 looks. Only the
// sale's own key or UniNFe's "0" is taken: any other text is refused (RecusaChave): its error is
// raised.
QString LeChaveXml(Servidor& s, qint32 nNF);
QString LeChaveTxt(Servidor& s, qint32 nNF);

} // namespace nfce
