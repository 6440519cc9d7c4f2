#pragma once

#include <QDate>
#include <QString>

namespace nfce {

class Conexoes;
class Registros;

// A sale with a part paid by `Vale` or `Outros` was sold on credit.
bool PagaAPrazo(const Registros& venda);

// Only real customers get a receivable: the sale's `cliente` is 2 or more, and the customer
// code that the emission driver read last is not the walk-in 999999 (that second test looks
// at the driver's value, not at the sale being exported).
bool ClienteComConta(const Registros& venda, qint32 codigoClienteDoEmissor);

// The remote contasreceber row of a sale, with the plan, due date and name of its payment
// method looked up in the local forpag (a missing method: plan 1, "30 DIAS", due in 30 days
// from `hoje`). With both `Vale` and `Outros` positive both amounts go in, one value more
// than there are columns: the remote side refuses that statement.
QString InsereContaReceber(const Registros& venda, Conexoes& conexoes, const QDate& hoje,
                           qint32 usuario);

} // namespace nfce
