#pragma once

#include <QString>

namespace nfce {

// Before the server starts and before each command that works on a program folder: the
// company record must make documents (VerificaEmpresa) and the shop's database named in
// Config.ini must open and have every table of its schema. Otherwise raises ErroExecucao with
// one line naming the file and what is wrong. Writes nothing, makes no folder.
void VerificaInstalacao(const QString& pasta);

} // namespace nfce
