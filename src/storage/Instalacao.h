#pragma once

#include <QDate>
#include <QString>

namespace nfce {

// A ready program folder on the embedded database: Config.ini (TIPOBANCO=SQLITE), a sample
// Empresa.Bin, the shop's and the remote databases with their tables, Local.db and the
// working folders of `hoje`. With `exemplos` the shop's database also gets sample products,
// customers and sales. Refuses (error 58) when the folder already has a Config.ini, so a
// shop's settings are never overwritten.
void CriaPastaPrograma(const QString& pasta, bool exemplos, const QDate& hoje);

} // namespace nfce
