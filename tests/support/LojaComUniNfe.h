#pragma once

#include "support/Loja.h"

namespace nfce::teste {

// The shop with UniNFe running from the start.
class LojaComUniNfe : public Loja {
protected:
    LojaComUniNfe() { uninfeRodando = true; }
};

} // namespace nfce::teste
