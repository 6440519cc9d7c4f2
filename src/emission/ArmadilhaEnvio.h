#pragma once

#include "storage/ErroExecucao.h"

#include <QString>

namespace nfce {

struct Servidor;

// The automatic sender's error trap. Some errors end the step's sale or the whole pass; any
// other is shown and the pass goes on with the next step.
bool ErroSilencioso(int numero);

// Errors the trap does not resume after: the silent numbers, the database refusing a
// statement, a full disk, a value beyond the money type and an error of one sale's data.
bool InterrompeOPasso(const ErroExecucao& erro);

// Of these, the ones that belong to the sale being handled: recorded on it, and the pass goes
// on with the next sale. The others end the pass.
bool ErroDeUmaVenda(const ErroExecucao& erro);

// A silent number: a log line (the pass ends). The database or the disk: a log line and one
// message (the pass ends). Any other: the message box (the pass goes on).
void TrataErroEnvio(Servidor& s, const ErroExecucao& erro);

// Records `erro` on the sale of NFC-e `nfce` (the row's text) and in the log. An ErroDaVenda
// also takes the sale out of the queue until it is corrected (tempo '0', enviotime 1).
void AnotaErroNaVenda(Servidor& s, const QString& nfce, const ErroExecucao& erro);

// Runs one step under the trap.
template <class Passo> void SobArmadilha(Servidor& s, Passo&& passo) {
    try {
        passo();
    } catch (const ErroExecucao& erro) {
        if (InterrompeOPasso(erro)) throw;
        TrataErroEnvio(s, erro);
    }
}

} // namespace nfce
