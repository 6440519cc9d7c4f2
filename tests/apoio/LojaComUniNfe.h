#pragma once

#include "Simulador.h"
#include "apoio/BancoTeste.h"
#include "contexto/Servidor.h"

#include <memory>

namespace nfce::teste {

// A shop whose emission runs against the UniNFe stand-in, answering at every pump of the
// virtual clock while `uninfeRodando` (today 15/11/2026). Sales are of today, one cash item each.
class LojaComUniNfe : public BancoTeste {
protected:
    void SetUp() override;
    void TearDown() override;

    void Venda(int nfce, int cupom, const QString& tempo = QStringLiteral("5"),
               const QString& erro = {});
    void PoeNaFila(const QStringList& numeros);
    QString Coluna(const QString& coluna, int nfce);
    bool Existe(const QString& relativo) const; // below the company folder

    std::unique_ptr<Servidor> s;
    std::unique_ptr<uninfesim::Simulador> sim;
    bool uninfeRodando = true;
};

} // namespace nfce::teste
