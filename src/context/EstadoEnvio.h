#pragma once

#include "storage/Registros.h"

namespace nfce {

// The automatic sender's own state. A pass started inside a wait of another (a timer tick,
// a click, a key read as "0") works on the same rows and closes them at its end, and the
// outer pass then stops at its next look at them.
struct EstadoEnvio {
    Registros Pendentes;
    int Aninhamento = 0; // passes running one inside another
};

} // namespace nfce
