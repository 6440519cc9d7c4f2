#pragma once

#include "storage/ErroExecucao.h"

#include <functional>

namespace nfce::teste {

// The error that `chamada` raises; number 0 when it raises none.
inline ErroExecucao ErroDe(const std::function<void()>& chamada) {
    try {
        chamada();
    } catch (const ErroExecucao& erro) {
        return erro;
    }
    return ErroExecucao(0, {});
}

} // namespace nfce::teste
