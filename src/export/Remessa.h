#pragma once

#include <QString>
#include <functional>

namespace nfce {

struct Servidor;
struct ResultadoExportacao;

// The steps the item and sales passes share. `oQue` names the row in the log ("item",
// "venda"), `chave` gives its keys.

// Runs one step of sending a row. A value that cannot be written or a statement the remote
// side refuses goes to the log, and the pass goes on; false then.
bool Tenta(Servidor& servidor, const QString& oQue, const QString& chave,
           const std::function<void()>& passo);

// Tenta with the statement that `monta` builds, run on the remote database.
bool EnviaRemoto(Servidor& servidor, const std::function<QString()>& monta, const QString& oQue,
                 const QString& chave);

// Asks the remote side for the row (`confere`); when it is there, marks the local row exported
// (`marca`, whose failure is raised); otherwise logs the row with its keys and lists it in
// `resultado`. True when found.
bool ConfereRemoto(Servidor& servidor, const std::function<QString()>& confere,
                   const std::function<QString()>& marca, const QString& oQue, const QString& chave,
                   ResultadoExportacao& resultado);

} // namespace nfce
