#pragma once

#include <QString>
#include <functional>

namespace nfce {

struct Servidor;

// How one sale of a pass ended: the outcome line as the return readers left it, and whether
// it is one of the finished texts (the row then has tempo 1 and enviotime 1).
struct DesfechoDaVenda {
    qint32 cupom = 0;
    QString nfce;
    QString texto;
    bool finalizada = false;
};
using AoTerminarVenda = std::function<void(const DesfechoDaVenda&)>;

// One line for the operator: "cupom 101 NFC-e 1001: <outcome> (finalizada|pendente)"; an
// outcome that spans lines is joined, an empty one says UniNFe did not answer.
QString DescreveDesfecho(const DesfechoDaVenda& desfecho);

// One pass of the automatic sender over every pending sale, oldest sale number first: key
// request, NFC-e text, UniNFe's answers, and tempo = 1, enviotime = 1 for a finished outcome.
// The pass ends after the last row, when a pass started inside it has closed the rows,
// silently on the trap's silent errors, or with one message when the database refuses a
// statement or the disk is full. An error of one sale's own data (see ErroDeUmaVenda) is
// recorded on that sale and the pass goes on; any other error is shown and the pass goes on
// with the next step. `aoTerminar` hears of every sale that reached the outcome test (in this
// pass and in the passes it starts itself).
void EnviaPendentes(Servidor& s, const AoTerminarVenda& aoTerminar = {});

// The selection of the pending sales, as the system sends it.
QString SqlPendentes();

} // namespace nfce
