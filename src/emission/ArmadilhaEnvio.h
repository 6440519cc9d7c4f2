#pragma once

#include "storage/ErroExecucao.h"

#include <QString>

namespace nfce {

struct Servidor;

// The automatic sender's error trap. Some error numbers end the pass at once without a word
// on screen (only a log line); any other is shown and the pass goes on with the next step.
struct SaidaSilenciosa {};

bool ErroSilencioso(int numero);

// Silent numbers: a log line, and true (leave the pass). Others: the message box, and false.
bool TrataErroEnvio(Servidor& s, const ErroExecucao& erro);

// Runs one step under the trap.
template <class Passo> void SobArmadilha(Servidor& s, Passo&& passo) {
    try {
        passo();
    } catch (const ErroExecucao& erro) {
        if (TrataErroEnvio(s, erro)) throw SaidaSilenciosa{};
    }
}

} // namespace nfce
