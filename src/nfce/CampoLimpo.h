#pragma once

#include <QString>
#include <optional>

namespace nfce {

// The byte of `c` in Windows-1252, the code page of the documents; none when it lacks `c`.
std::optional<char> ByteAnsi(char16_t c);

// A text of the database or the company record made fit for one field of a record: "|" and
// control characters become a space (they would add fields or records), a character
// Windows-1252 lacks becomes its plain letter ("ő" gives "o") or is dropped, and the result is
// cut to `maximo` characters. Ordinary text passes unchanged.
QString CampoLimpo(const QString& texto, qsizetype maximo);

} // namespace nfce
