#pragma once

#include <QByteArrayView>
#include <QStringList>

namespace nfce {

// "Config.ini" and "Empresa.Bin" in the program folder. Nothing is cached: every call
// opens, scans and closes the file, so an edit takes effect at the next read.
// The key matches every line that begins with it (first match wins), case-insensitively;
// exactly one character after the key is skipped, whatever it is. A missing file raises
// error 53 (75 when it exists but cannot be read); a missing key gives "". Lines end at
// CR LF, CR or LF; the files are Windows-1252. The file names are found case-insensitively.
QString LerConfig(const QString& pastaPrograma, const QString& chave);
QString LerEmpresa(const QString& pastaPrograma, const QString& chave);

// The same rule on the bytes of either file, without touching the disk. `origem` names the file
// in the error of a line that does not unscramble.
enum class Cifra { Nenhuma, Empresa };
QString ValorDaChave(QByteArrayView dados, const QString& chave, Cifra cifra,
                     const QString& origem);
// Every non-empty line of the company record, unscrambled, for showing it whole.
QStringList LinhasDoRegistro(QByteArrayView dados, const QString& origem);
// The bytes of a settings file: error 53 when it is missing, 75 when it cannot be read.
QByteArray BytesDoAjuste(const QString& caminho);

// One stored line of "Empresa.Bin" unscrambled (bytes in Windows-1252); a byte below
// 79 + its position raises error 5.
QString DecifraLinha(const QByteArray& linha);
// The inverse, for the tool that writes the record; a character that cannot be stored
// (outside Windows-1252, or past code 255 once shifted) raises error 5.
QByteArray CifraLinha(const QString& texto);

// Leading and trailing spaces removed (only spaces: a tab belongs to the value).
QString Apara(const QString& texto);
// True when the text is empty or all spaces.
bool Vazio(const QString& texto);

} // namespace nfce
