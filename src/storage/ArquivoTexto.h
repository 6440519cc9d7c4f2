#pragma once

#include "storage/ErroExecucao.h"

#include <QStringList>

namespace nfce {

// UniNFe's exchange files are Windows-1252 text. Every byte decodes, so binary junk reads
// as odd characters, never as an error.

// No answer of UniNFe comes near these sizes (the authorised XML has the larger one): a larger
// file is damaged, and is never loaded.
inline constexpr qint64 LimiteResposta = 1 << 20;
inline constexpr qint64 LimiteXml = 8 << 20;

// More than `limite` bytes: a damaged answer.
bool GrandeDemais(const QString& caminho, qint64 limite);

// The bytes of a file; none when it cannot be opened (gone or locked since it was seen) or is
// larger than `limite`: the readers then wait and look again.
QByteArray ConteudoDoArquivo(const QString& caminho, qint64 limite = LimiteResposta);

// Windows-1252 bytes as text; every byte decodes.
QString TextoAnsi(QByteArrayView bytes);

// The lines of the text; a line ends at CR LF, CR or LF.
QStringList LinhasDoTexto(QByteArrayView bytes);

// The whole file as UTF-8 text (the authorised XML); "" when it cannot be opened or is larger
// than `limite`.
QString TextoDoArquivo(const QString& caminho, qint64 limite = LimiteXml);

// Creates or replaces the file with the lines, each ended by CR LF, whole or not at all
// (Publicacao): a full disk raises ErroDiscoCheio (61), a missing folder
// ErroCaminhoNaoEncontrado (76), any other failure ErroAcessoCaminho (75).
void GravaLinhas(const QString& caminho, const QStringList& linhas);

// The error of a file that could not be written, naming the file and why: a full disk,
// ErroDiscoCheio (61) saying "disco cheio"; its folder missing or not a folder,
// ErroCaminhoNaoEncontrado (76); otherwise ErroAcessoCaminho (75) with `causa`.
ErroExecucao ErroDeGravacao(const QString& caminho, const QString& causa);

// Copies over an existing target, whole or not at all, making its folder when missing (a month
// folder of the accounting copies may not exist yet). Raises as GravaLinhas does, and a
// source that cannot be read as ErroDeGravacao of the source.
void CopiaArquivo(const QString& origem, const QString& destino);

} // namespace nfce
