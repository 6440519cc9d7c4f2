#pragma once

#include <QString>

namespace nfce {

struct Servidor;
class LinhaProtocolo;

// SEFAZ's rejection codes that the operator gets a plain explanation for. Every rule whose
// code stands in field 5 or 6 of the line runs, in the fixed order of the table; a code
// listed twice runs twice. A rule that ran replaces `mensagem` and stores its text in the sale.
// `autorizada`: a "100" line was already seen in this file (no re-emission then). A rule whose
// item number names no item of the sale stores SEFAZ's own reason instead of the explanation
// with the product code.
void DiagnosticaRejeicao(Servidor& s, const LinhaProtocolo& linha, bool autorizada,
                         QString& mensagem);

} // namespace nfce
