#pragma once

#include <QDate>
#include <QString>

namespace nfce {

// The working tree below the program folder: LOG, LOG\BK, PDV, XML, Contabil, then the
// company's folder (named by its CNPJ exactly as stored) with Envio, Contabilidade, RETORNO,
// Contabilidade\MMyyyy, Eventos and Eventos\MMyyyy for the month of `hoje`. One directory
// creation per folder, parent before child, never a whole chain: a parent that cannot be
// made leaves its children out too. Every failure is ignored and nothing is reported.
void Alterar(const QString& pastaPrograma, const QString& cnpj, const QDate& hoje);

// `relativo` is written as the system writes its paths ("\" or "/" between the parts, e.g.
// cnpj + "\RETORNO\" + nome); it is placed below `raiz`, which is taken as it is. Each part
// that exists under another case ("Retorno" for "RETORNO", "Validar\Validado" for
// "VALIDAR\VALIDADO") takes the spelling found on disk, an exact match first; parts that do
// not exist keep the given spelling. A "\" or "/" inside a part (a CNPJ written with one)
// therefore makes nested folders. The result uses "/". A part ".." or a result outside `raiz`
// raises ErroAcessoCaminho (75): parts may come from answer files.
QString Caminho(const QString& raiz, const QString& relativo);

// A regular file, or a folder, exists at `caminho`. Callers pass a path made by Caminho or
// a raw absolute path (either separator); each part is resolved as Caminho does. A folder is
// not a file; an empty path exists as neither.
bool ArquivoExiste(const QString& caminho);
bool PastaExiste(const QString& caminho);

} // namespace nfce
