#pragma once

#include "storage/Formatacao.h"
#include "storage/Moeda.h"

#include <QString>
#include <QVariant>

namespace nfce {

// Database values as the generator reads them. Text columns may hold what the tills typed,
// so text is read by the regional rules; null and blank read as zero.

// Money (four decimals): text through LeValor ("12,50", "1.234,56"), numbers as they are.
// A value out of the currency range raises error 6.
Moeda MoedaDe(const QVariant& valor);

// An amount of the document: "0.00" with "." as decimal point.
QString Dinheiro(double valor);
QString Dinheiro(Moeda valor);

// Upper case letter by letter, so a text keeps its length and its Windows-1252 letters
// ("ç" gives "Ç"; "ß" and "µ", which have no single capital there, stay).
QString Maiusculas(const QString& texto);

} // namespace nfce
