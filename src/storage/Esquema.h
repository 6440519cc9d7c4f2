#pragma once

#include "storage/Conexao.h"

namespace nfce {

// Creates the tables of one database ("loja", "remota", "local") from the DDL compiled
// into the program, in the dialect of the connection (":/schema/<nome>.<sqlite|mysql>.sql").
// Tables that exist already are left as they are.
void CriaEsquema(Conexao& conexao, const QString& nome);

// The tables of the DDL of `nome` that the database of `conexao` lacks (open or not).
QStringList TabelasFaltando(Conexao& conexao, const QString& nome);

// Runs a script of the program's resources statement by statement; on SQLite in one
// transaction. A missing resource raises ErroArquivoNaoEncontrado.
void ExecutaScript(Conexao& conexao, const QString& recurso);

// A script cut into statements: a statement ends with ";" at the end of a line; lines that
// are only a "--" comment and empty statements are dropped.
QStringList DivideComandos(const QString& script);

} // namespace nfce
