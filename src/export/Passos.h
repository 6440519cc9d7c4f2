#pragma once

#include <QString>

namespace nfce {

struct Servidor;
struct ResultadoExportacao;

// The two passes of the export, in this order. Each marks exported only the rows the remote
// side was found to have; a row that failed goes again with the next export (the log keeps
// its keys).
void ExportaItens(Servidor& servidor, ResultadoExportacao& resultado);
void ExportaVendas(Servidor& servidor, ResultadoExportacao& resultado);

// The rows of `tabela` ("itens" or "vendas") still to go: never exported, or being sent when
// an earlier export stopped; cancelled rows never go.
QString SqlNaoExportados(const QString& tabela);

} // namespace nfce
