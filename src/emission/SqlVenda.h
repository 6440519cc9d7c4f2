#pragma once

#include "context/EstadoVenda.h"

namespace nfce {

// The condition that names the sale being emitted by its sale number.
inline QString OndeCupom(const EstadoVenda& v) {
    return QStringLiteral(" WHERE cupom = ") + QString::number(v.NumCupom);
}

} // namespace nfce
