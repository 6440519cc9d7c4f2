#pragma once

#include "context/Servidor.h"
#include "storage/Ajustes.h"

namespace nfce {

// Setting TEMP; without a number of seconds the return processing waits 2.
constexpr int EsperaPadraoDoRetorno = 2;

inline int TempoDeEspera(const Servidor& s) {
    return Le(s.pasta, ajustes::Temp, EsperaPadraoDoRetorno);
}

} // namespace nfce
