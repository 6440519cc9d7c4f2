#pragma once

#include <QStringList>

namespace nfce {

struct Servidor;

// What one export did, for the command line and the log.
struct ResultadoExportacao {
    bool ligada = false;    // VENDASONLINESRV is "SIM"
    bool conectada = false; // the remote database came up
    int itensLidos = 0;
    int itensEnviados = 0; // INSERTs the remote database took
    int itensConfirmados = 0;
    int vendasLidas = 0;
    int vendasEnviadas = 0;
    int vendasConfirmadas = 0;
    int contasEnviadas = 0;
    // Rows the verification did not find, with their keys ("item cupom 12, caixa 001, item 3").
    QStringList naoEncontrados;
};

// The "Transmitir" button: sends the local items and sales not yet exported to the remote
// database, with the stock movement and the receivables, and marks exported the rows the
// remote database was found to have. Failures of single statements go to the log and the
// pass goes on; a failing main database is raised.
ResultadoExportacao CmdExportar(Servidor& servidor);

} // namespace nfce
