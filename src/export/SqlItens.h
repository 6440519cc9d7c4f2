#pragma once

#include <QDate>
#include <QString>

namespace nfce {

class Registros;

// The statements of the item pass, built from the current row of the local item query.
// A row whose values cannot be written raises the error of the value (6 or 13).

// The remote itens row; `hoje` is the export date.
QString InsereItem(const Registros& item, const QDate& hoje);
// The stock movement on the remote produtos: `estoquefisico` or `estoque`.
QString BaixaEstoque(const Registros& item, bool estoqueFisico);
// Looks for the row on the remote side.
QString ConfereItem(const Registros& item);
// "cupom 12, caixa 001, item 3", for the log.
QString ChaveItem(const Registros& item);

} // namespace nfce
