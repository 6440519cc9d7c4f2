#pragma once

#include <QByteArrayView>
#include <QString>

namespace nfce {

// The key an answer of UniNFe carries, as written there (blank: no key yet), and whether it is
// refused: not blank, not UniNFe's "0" and not the key of NFC-e `nNF` of the company `cnpj`,
// series `serie`.
struct ChaveLida {
    QString chave;
    bool recusada = false;
};

// "<nNF>-ret-gerar-chave.xml": characters 64-107 of the last line, up to a "<".
ChaveLida ChaveDoXml(QByteArrayView bytes, const QString& cnpj, const QString& serie, qint32 nNF);
// "<nNF>-ret-gerar-chave.txt": the last line.
ChaveLida ChaveDoTexto(QByteArrayView bytes, const QString& cnpj, const QString& serie, qint32 nNF);
// The conversion answer "<base>-nfe.txt": the first line with "ChaveNFe" at character 37,
// the key from character 47.
ChaveLida ChaveDaConversao(QByteArrayView bytes, const QString& cnpj, const QString& serie,
                           qint32 nNF);

} // namespace nfce
