#pragma once

namespace nfce {

struct Servidor;

// The start-up routine, run once when the window loads: company record and TEMP, the working
// folders, the main connection (built, not opened) and the export one, then the schedule on.
// A missing or damaged Config.ini or Empresa.Bin goes to the caller.
void TimerInicio(Servidor& s);

// The company record, and the working folders of today with UniNFe's input folder, which
// UniNFe itself makes when it runs: made here too, so a sale sent before UniNFe ever ran is
// not lost to a missing folder. Errors go to the caller.
void CarregaEmpresaEPastas(Servidor& s);

} // namespace nfce
