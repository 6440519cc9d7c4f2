#pragma once

#include <QString>

namespace nfce {

struct Servidor;

// Emits the sale of NFC-e `nfce` again at once, with the generator of the printing module, and
// reads UniNFe's answers. Online (TipoEmissao other than 9) the outcome is left to
// ProcessaRetorno, which may call this again for a rejection it can correct. In offline
// contingency the validated XML is printed with uniDANFE when ImprimeCupom is set (started,
// never waited for), the sale whose cupom is the number given gets tempo '8', and its quote,
// when it came from one, is marked emitted. A conversion error is shown in a message box.
// Errors go to the caller.
void EmiteNfceImprime(Servidor& s, const QString& nfce);

// Points Servidor::EmiteNfceImprime at the routine above, unless something is set there
// already. A chain of re-emissions of a sale that keeps being rejected stops after a few
// levels, with a line in the log, instead of nesting without end.
void InstalaReemissao(Servidor& s);

} // namespace nfce
