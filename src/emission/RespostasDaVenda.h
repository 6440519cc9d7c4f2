#pragma once

#include <QByteArrayView>
#include <QStringList>
#include <vector>

namespace nfce {

// UniNFe's answers about the sale being emitted, read from their bytes; the routines of
// Retorno.h look for the files and apply what these give.

// "<base>-nfe.err": "Falha na Conversao da NFC-e - " for an "xMotivo" line, then the
// characters 10 to 12 of every "Segmento" line; `linhas`, the file's lines (none: no answer).
struct ErroDeConversao {
    QString mensagem;
    qsizetype linhas = 0;
};
ErroDeConversao ErroDaConversao(QByteArrayView bytes);

// "<lot>-pro-rec.err": SEFAZ's refusal of the lot, the text after "Message|" (50 characters)
// in capitals, once for every such line.
QStringList RecusasDoRecibo(QByteArrayView bytes);

// "<lot>-pro-rec.txt": its protocol lines (blank lines and UniNFe's lot-status line, which
// starts with ";", left out; each read with LinhaProtocolo), with whether each is about the
// sale of `chave`: a valid key that the line carries in field 2.
struct LinhaDoRetorno {
    QString texto;
    bool daVenda = false;
};
std::vector<LinhaDoRetorno> LinhasDoRetorno(QByteArrayView bytes, const QString& chave);

} // namespace nfce
