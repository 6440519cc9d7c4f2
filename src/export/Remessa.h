#pragma once

#include <QString>
#include <functional>

namespace nfce {

struct Servidor;
struct ResultadoExportacao;
class Registros;

// The steps the item and sales passes share.

// One local row on its way to the remote side: `tabela` its table on both sides, `oQue` its
// name in the log ("item", "venda"), `chave` its keys, `confere` the query that finds it on the
// remote side.
struct Linha {
    const Registros& rs;
    QString tabela;
    QString oQue;
    QString chave;
    std::function<QString()> confere;
};

// `exportado` of a local row: 0 not sent, 2 sent and not yet found on the remote side, 1 found
// there. Only what was found is marked, so a row that failed, and rows written or cancelled
// meanwhile, go with the next export.
enum class Marca { Confirmada = 1, Enviada = 2 };

// The local UPDATE of that one row (by its id). A row is confirmed only while it is still
// marked sent: one that a till put back to 0 meanwhile is sent again.
QString MarcaExportado(const Linha& linha, Marca marca);

// Exports one row: marks it sent, runs `envia`, and marks it confirmed when the remote side
// has it; otherwise logs the row with its keys and lists it in `resultado`. A row an earlier
// export sent without confirming is looked for first and only marked when it is there, so a
// row never reaches the remote side twice; when the remote side cannot say, it waits for the
// next export. A failure of the local marks is raised. True when confirmed.
bool ExportaLinha(Servidor& servidor, const Linha& linha, const std::function<void()>& envia,
                  ResultadoExportacao& resultado);

// Runs one step of sending a row. A value that cannot be written or a statement the remote
// side refuses goes to the log, and the pass goes on; false then.
bool Tenta(Servidor& servidor, const QString& oQue, const QString& chave,
           const std::function<void()>& passo);

// Tenta with the statement that `monta` builds, run on the remote database.
bool EnviaRemoto(Servidor& servidor, const std::function<QString()>& monta, const QString& oQue,
                 const QString& chave);

} // namespace nfce
