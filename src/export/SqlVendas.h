#pragma once

#include <QDate>
#include <QString>

namespace nfce {

class Registros;

// The statements of the sales pass, built from the current row of the local sales query.
// A row whose values cannot be written raises the error of the value (6 or 13).

// The remote vendas row; `hoje` is the export date.
QString InsereVenda(const Registros& venda, const QDate& hoje);
// Looks for the row on the remote side.
QString ConfereVenda(const Registros& venda);
// "cupom 12, caixa 001", for the log.
QString ChaveVenda(const Registros& venda);

} // namespace nfce
