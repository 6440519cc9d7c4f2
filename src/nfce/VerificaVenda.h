#pragma once

#include "context/Servidor.h"

namespace nfce {

// Before anything of sale `nNF` is written or changed: the sale must exist (ErroExecucao 3021)
// and carry values a document can hold, or it raises ErroDaVenda naming the item and the
// value: no open items, a quantity that is zero, negative or not a number, a product that does
// not exist, an amount beyond the money range.
void VerificaVenda(Servidor& servidor, qint64 nNF);

} // namespace nfce
