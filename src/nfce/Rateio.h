#pragma once

#include "context/Servidor.h"

namespace nfce {

// Spread the sale's surcharge (discount) over its open items in proportion to each item's
// total, truncated to cents, and put the remainder on the item with the largest total; the
// shares are stored in the items' `acrescimo` (`desconto`) of that sale only. Kept as the
// shops' data expect: items tied for the largest total all take the remainder. A sale whose
// base is 0 with items present raises ErroDivisaoPorZero. `nfce` is read as a whole number.
void RateiaAcrescimo(Servidor& servidor, const QString& nfce);
void RateiaDesconto(Servidor& servidor, const QString& nfce);

} // namespace nfce
