#pragma once

#include <QString>

namespace nfce {

struct Servidor;

// Asks UniNFe for the situation of NFC-e `chave` at SEFAZ ("<key>-ped-sit.txt" in Envio),
// after clearing the company's RETORNO and Envio folders so that no stale answer is taken
// for this one. Leaves MesAutorizados as today's ddmmyyyy. A request that cannot be
// written raises the file error to the caller.
void ConsultaSituacao(Servidor& s, const QString& chave);

// Whether the national NF-e portal's page (settings key PORTALNFE, the national portal when
// missing) comes within 10 seconds.
bool TestaInternet(Servidor& s);

} // namespace nfce
