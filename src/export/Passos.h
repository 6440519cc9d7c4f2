#pragma once

namespace nfce {

struct Servidor;
struct ResultadoExportacao;

// The two passes of the export, in this order; each ends by marking every local row of its
// table exported, found by the verification or not (a failed row is not sent again; the log
// keeps its keys).
void ExportaItens(Servidor& servidor, ResultadoExportacao& resultado);
void ExportaVendas(Servidor& servidor, ResultadoExportacao& resultado);

} // namespace nfce
