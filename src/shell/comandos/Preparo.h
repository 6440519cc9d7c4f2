#pragma once

#include <QString>
#include <QStringList>

namespace nfce {

struct Servidor;

// What the start-up does before any sale is sent: company record, working folders (and
// UniNFe's input folder, which UniNFe itself makes when it runs), main connection, and the
// re-emission that some rejections start. Errors go to the caller.
void PreparaServidor(Servidor& servidor);

// The program folder of a command: "--pasta DIR" made absolute, else the program's own.
QString PastaDoComando(const QStringList& argumentos);
// The same, once VerificaInstalacao has passed (its error goes to the caller).
QString PastaVerificada(const QStringList& argumentos);

} // namespace nfce
