#pragma once

#include "context/Servidor.h"
#include "nfce/VarianteGerador.h"

namespace nfce {

// Writes the NFC-e text of the sale whose NFC-e number is `nfce` (read as a whole number)
// into the company's exchange folder for UniNFe and returns the file's path. Waits 1 second
// first; the sale's surcharge and discount are spread over its items before they are
// written; after the file is in place it waits the setting TEMP in seconds (3 when 0 or
// less; beyond 16 bits error 6) so that UniNFe can take it. Afterwards DataArquivo, SerieNfce and
// CnpjEmpresa describe the file written. The date and time come from the panel (lblData, lblHora)
// unless the variant says otherwise. Errors go to the caller and leave no file: 5 for a number
// below 1, 13 for a panel without a valid date and time, 76 when the folder is missing, 75 when the
// file cannot be written, 3021 when the sale does not exist, 11 when the sale has items but no base
// to spread its discount over, 3265 for a missing column, and the database's own. A sale no
// document can carry (see VerificaVenda) raises ErroDaVenda before anything is written or changed.
QString GeraNfce(Servidor& servidor, const QString& nfce,
                 const VarianteGerador& variante = VarianteGerador::Atual());

// As the automatic sender does for each sale: the sale's number, its date ("dd/mm/yyyy") and
// time ("HH:MM:SS") into the state and the panel, then GeraNfce. A sale that does not exist
// raises ErroSemRegistroAtual (3021), one without a date ErroTipoIncompativel (13).
QString GeraNfceDaVenda(Servidor& servidor, qint64 nfce);

} // namespace nfce
