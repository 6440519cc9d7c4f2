#pragma once

namespace nfce {

struct Servidor;
struct ResultadoExportacao;

// The two passes of the export, in this order. Each marks exported only the rows the remote
// side was found to have; a row that failed goes again with the next export (the log keeps
// its keys).
void ExportaItens(Servidor& servidor, ResultadoExportacao& resultado);
void ExportaVendas(Servidor& servidor, ResultadoExportacao& resultado);

} // namespace nfce
