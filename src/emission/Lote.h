#pragma once

#include <QByteArrayView>
#include <QStringList>

namespace nfce {

// The lot numbers in UniNFe's "<key>-num-lot.txt" ("54;"): one for every line whose first
// 15 characters are not blank, as the text of the number they start with.
QStringList LotesDoTexto(QByteArrayView bytes);

} // namespace nfce
