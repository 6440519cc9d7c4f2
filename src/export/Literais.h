#pragma once

#include "storage/Moeda.h"

#include <QStringList>

namespace nfce {

class Registros;

// The values of an export INSERT: each between single quotes (escaped, so the remote side
// receives the text unchanged), joined by ", ", the statement closed with " )".
QString ListaDeValores(const QStringList& valores);

// A value that goes into a statement without quotes must be a plain number; anything else
// raises error 13 naming the field, so no stored text can change what a statement does.
QString NumeroSemAspas(const Registros& rs, const QString& campo);

// Val(field) written back as text: "007" gives "7", "" gives "0"; a number too large for
// a double raises error 6.
QString TextoDeVal(const Registros& rs, const QString& campo);

// Format(field, "HH:MM:SS"); "" for a missing or unreadable time, as for a missing date.
QString HoraSql(const Registros& rs, const QString& campo);

// A money field: text is read as a regional amount, a value out of range raises error 6.
Moeda ValorDe(const Registros& rs, const QString& campo);

// The field's Val is not 0 (the NFC-e number of a row, for the fiscal marks).
bool DiferenteDeZero(const Registros& rs, const QString& campo);

// The till's number as the remote side keeps it: three digits.
QString Caixa(const Registros& rs);

// A stored key as it goes into a log line, cut when it is unreasonably long.
QString TextoDeChave(const Registros& rs, const QString& campo);

} // namespace nfce
