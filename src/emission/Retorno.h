#pragma once

#include <QString>

namespace nfce {

struct Servidor;

// UniNFe's answers for the sale being emitted (Servidor::venda), read from the company's
// RETORNO folder and applied to the sale; RespostasDaVenda.h reads them. Each routine looks as
// often as its answer deserves, so its caller reads it once. A missing answer is no error: the
// routine waits, looks again, and returns "" when its looks run out.

// The access key from "<base>-nfe.txt"; written to LblMens01 and vendas.chave. A key that is
// not the sale's is refused (RecusaChave): its error is raised.
QString LeChaveNfe(Servidor& s);
// "Falha na Conversao da NFC-e - <segments>" from "<base>-nfe.err", stored in vendas.erro.
QString LeErroNfe(Servidor& s);
// The lot number of "<key>-num-lot.txt" into vendas.lote.
void GravaLote(Servidor& s);
// SEFAZ's refusal of the lot ("<lot>-pro-rec.err"), in capitals, stored in vendas.erro.
QString LeErroRecibo(Servidor& s);
// The outcome of the protocol file "<lot>-pro-rec.txt": authorisation, recognised rejection
// or "<code> - <reason>"; "" when no answer came in about 20 seconds. Only lines carrying the
// key in LblMens01 count; another key is refused on the sale.
QString ProcessaRetorno(Servidor& s);

} // namespace nfce
