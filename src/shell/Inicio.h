#pragma once

namespace nfce {

struct Servidor;

// The start-up routine, run once when the window loads: company record and TEMP, the working
// folders, the main connection (built, not opened) and the export one, then the schedule on.
// A missing or damaged Config.ini or Empresa.Bin goes to the caller.
void TimerInicio(Servidor& s);

} // namespace nfce
