#pragma once

#include "platform/Ambiente.h"

#include <initializer_list>

namespace nfce {

// How the readers poll for UniNFe's answers: rounds of pumping events, waiting and looking,
// until a look finds what it waits for. The order and the seconds within a round are each
// reader's own rule (they decide when UniNFe's answer can already be seen), so each spells them.
struct Passo {
    enum Tipo { Bombeia, Aguarda, AguardaSeNaoAchou, Olha } tipo;
    double segundos = 0;
};

// Up to `vezes` rounds of `passos`; `olha` returns true when it found what it waits for, which
// ends the polling after that round. True when something was found.
template <typename Olha>
bool Sonda(Ambiente& ambiente, int vezes, std::initializer_list<Passo> passos, Olha&& olha) {
    for (int vez = 0; vez < vezes; ++vez) {
        bool achou = false;
        for (const Passo& passo : passos) {
            switch (passo.tipo) {
            case Passo::Bombeia:
                ambiente.DoEvents();
                break;
            case Passo::Aguarda:
                ambiente.Aguarda(passo.segundos);
                break;
            case Passo::AguardaSeNaoAchou:
                if (!achou) ambiente.Aguarda(passo.segundos);
                break;
            case Passo::Olha:
                achou = olha();
                break;
            }
        }
        if (achou) return true;
    }
    return false;
}

} // namespace nfce
