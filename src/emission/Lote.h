#pragma once

#include <QByteArrayView>
#include <QString>

namespace nfce {

// The lot number in UniNFe's "<key>-num-lot.txt" ("54;"): that of the first or of the last
// line whose first 15 characters are not blank, as the text of the number they start with;
// "" when no line has one.
enum class QualLote { Primeiro, Ultimo };
QString LoteDoTexto(QByteArrayView bytes, QualLote qual);

} // namespace nfce
