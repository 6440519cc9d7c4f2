#pragma once

#include <QByteArray>
#include <QString>

namespace uninfesim {

// Windows-1252, the code page of the shops' machines, in which UniNFe reads the text layout
// and writes its TXT answers. Kept here rather than asked of the system's codecs so that the
// stand-in behaves the same on every machine.
QString DeAnsi(const QByteArray& bytes);
// Characters outside the code page become "?", as the Windows conversion does.
QByteArray ParaAnsi(const QString& texto);

} // namespace uninfesim
