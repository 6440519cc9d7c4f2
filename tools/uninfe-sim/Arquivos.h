#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace uninfesim {

// Windows, where UniNFe runs, does not tell "Retorno" from "RETORNO"; on a case-sensitive disk
// the stand-in finds each folder under whatever case the server gave it.

// The child `nome` of `pai` as spelled on disk: an exact match first, then the first name
// (in sorted order) that differs only in case; "" when there is none.
QString NomeNoDisco(const QString& pai, const QString& nome);

// `partes` below `base`, each in the spelling found on disk; a missing part is created with
// the given spelling. "" when a part cannot be created.
QString Pasta(const QString& base, const QStringList& partes);

// Every folder directly below `base` named `nome` in any case.
QStringList Variantes(const QString& base, const QString& nome);

// Files of `pastas` whose names end in `sufixo` (any case), sorted by name.
QStringList TerminadosEm(const QStringList& pastas, const QString& sufixo);

// The name without the ending `sufixo` (which it is known to carry, in any case).
QString SemSufixo(const QString& nome, const QString& sufixo);

// False when the file is gone or cannot be read (taken away between the listing and the read).
bool Le(const QString& caminho, QByteArray& conteudo);
// Written under a temporary name and renamed into place, so a reader never sees half a file.
bool Grava(const QString& caminho, const QByteArray& conteudo);
// Replaces a file already at `destino`.
bool Move(const QString& origem, const QString& destino);

} // namespace uninfesim
