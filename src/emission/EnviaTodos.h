#pragma once

namespace nfce {

struct Servidor;

// The window's drivers over the local work list ncupom that ConsultaGrid fills.

// Works through ncupom from its first number: a sale whose erro starts with "ERRO" or whose
// tempo is 9 or 8 has its validated XML handed to UniNFe again, any other is generated anew
// by EnviaNota; then UniNFe's answers are read. After a finished outcome (the four texts or
// "Erro ao invocar") the list is refreshed and the next first number follows; any other
// outcome ends the call. Errors 0, 20, 3021 (the list or the sale ran out) and 3265 end it
// silently; any other is shown in a message box titled "Atenção".
void EnviaTodos(Servidor& s);

// Emits the sale of NumCupom / NumNfce with the window's generator, shows a conversion error
// in LblMens03, otherwise reads the answers and marks a finished sale. Errors go to the
// caller.
void EnviaNota(Servidor& s);

} // namespace nfce
