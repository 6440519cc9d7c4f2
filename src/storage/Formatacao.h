#pragma once

#include "storage/Moeda.h"

#include <QDate>
#include <QString>
#include <QVariant>
#include <optional>

namespace nfce {

// Numbers and dates as the shops' Brazilian regional settings write them (decimal
// comma, grouping point), built in so the output is the same on every machine.
// "Blank" below is the space character only; tabs and line breaks are kept.

// The leading number of a text: blanks, tabs and line feeds are skipped anywhere; an
// optional sign, digits, "." as decimal point, an exponent with E or D; the first
// other character ends it. "&H" and "&O" read hexadecimal and octal, a value that
// fits 16 (or 32) bits being signed ("&HFFFF" is -1). No number gives 0; a number too
// large for a double gives an infinity. Never throws.
double Val(const QString& texto);

// The one reader of whole numbers in database values and settings: text through Val, cut
// towards zero; null and blank read as zero. One beyond 64 bits raises error 6.
qint64 InteiroDe(const QVariant& valor);
// True for the numeric types a database driver gives (a text column gives a string).
bool EhNumero(const QVariant& valor);

// A number that goes into a statement or a file name unquoted (an NFC-e number from the
// command line or the queue): digits only, from 1 to `maximo`; none otherwise.
std::optional<qint64> NumeroEstrito(const QString& texto, qint64 maximo);

// Val rounded half to even into a 16-bit integer, as the system's integer variables take a
// number; beyond their range error 6, naming `oQue`.
qint16 Inteiro16(const QString& texto, const QString& oQue);

// Format patterns made of "0" (digit always written), "#" (digit written when
// significant), "," (grouping by thousands, wherever it stands) and "." (the decimal
// position). Rounds half away from zero on the value's shortest decimal form, so
// 2.675 gives "2,68" with "0.00". A zero result carries no minus sign; infinities and
// not-a-number give "inf", "-inf" and "nan". Any other pattern raises error 5.
QString FormataNumero(double valor, const QString& padrao);
QString FormataNumero(Moeda valor, const QString& padrao);

// The value rounded as FormataNumero does, with exactly `casas` decimals after a ".",
// no grouping: TextoDecimal(2.675, 2) is "2.68".
QString TextoDecimal(double valor, int casas);

// The shortest text that reads back as the same double, "." as decimal point, no
// grouping (45 gives "45", 12.5 gives "12.5"); exponent form only below 1e-6 and from
// 1e21 on. For numbers that go into SQL statements and files.
QString TextoNumero(double valor);

QString DataMySQL(const QDate& data);

// "0.00" with the first "," turned into "." and read back with Val.
Moeda ValorMoeda(double valor);

// "#,##0.00" for display: 1234.5 gives "1.234,50".
QString FormataValor(double valor);

// Amounts for SQL and documents: "0.00" with every "," turned into ".". Text is first
// read as a regional amount (LeValor): "12,5" and "12.50" both give "12.50"; null,
// empty and blank text give "0.00".
QString ValorPonto(const QVariant& valor);
QString ValorPonto(Moeda valor);

// Quantities: "#,###0.000" with every "," turned into ".", so 1234.5 gives "1.234.500"
// (the grouping point stays). Text is read as ValorPonto reads it.
QString QuantPonto(double valor);
QString QuantPonto(const QVariant& valor);

// Int(valor * 10^casas + 0.5) / 10^casas: halves go up (-0.125 gives -0.12).
double Arredonda(double valor, int casas);

// Cuts to `casas` decimals after rounding the scaled value to one decimal with ties
// to even, so 1.9999999 keeps its cent; the cut goes downwards (-0.339 gives -0.34).
double Trunca(double valor, int casas);

// A decimal number written with "," or ".", possibly with thousands separators: the
// last separator is the decimal point ("1.234,56" is 1234.56; "1.500" is 1.5).
// A value out of the currency range raises error 6.
Moeda LeValor(const QString& texto);

// Safe for single-quoted SQL values: blanks trimmed, every "'" removed, trimmed again.
QString TiraAspas(const QVariant& valor);

// Tax numbers, postcodes and telephones: blanks trimmed, then blank ( ) . - / _ ,
// removed: "18.123.456/0001-04" gives "18123456000104".
QString LimpaTexto(const QVariant& valor);

// The value trimmed and padded with "0" in front to `tamanho`; never cut.
QString Zeros(const QVariant& valor, int tamanho);

} // namespace nfce
