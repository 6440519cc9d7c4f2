#pragma once

#include "contexto/Servidor.h"
#include "storage/Formatacao.h"

namespace nfce {

// Setting TEMP in whole seconds; 0 (or missing) means 2.
inline int TempoDeEspera(const Servidor& s) {
    const int segundos = static_cast<int>(Val(s.LerConfig(QStringLiteral("TEMP"))));
    return segundos == 0 ? 2 : segundos;
}

} // namespace nfce
