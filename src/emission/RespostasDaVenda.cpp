#include "emission/RespostasDaVenda.h"

#include "nfce/ChaveAcesso.h"
#include "storage/ArquivoTexto.h"

#include <QStringTokenizer>

namespace nfce {

using namespace Qt::StringLiterals;

ErroDeConversao ErroDaConversao(QByteArrayView bytes) {
    const QStringList linhas = LinhasDoTexto(bytes);
    ErroDeConversao erro{{}, linhas.size()};
    for (const QString& linha : linhas) {
        if (linha.startsWith(u"xMotivo"_s)) erro.mensagem = u"Falha na Conversao da NFC-e - "_s;
        if (linha.startsWith(u"Segmento"_s)) erro.mensagem += linha.mid(9, 3);
    }
    return erro;
}

QStringList RecusasDoRecibo(QByteArrayView bytes) {
    QStringList recusas;
    for (const QString& linha : LinhasDoTexto(bytes))
        if (linha.startsWith(u"Message"_s)) recusas.append(linha.mid(8, 50).toUpper());
    return recusas;
}

namespace {

// Field 2 as LinhaProtocolo cuts the line is the key, read without cutting the whole line.
bool TemAChave(const QString& texto, const QString& chave) {
    int campo = 0;
    for (const QStringView valor : qTokenize(texto, u';'))
        if (campo++ == 2) return valor == chave;
    return false;
}

} // namespace

std::vector<LinhaDoRetorno> LinhasDoRetorno(QByteArrayView bytes, const QString& chave) {
    const bool valida = ChaveValida(chave);
    std::vector<LinhaDoRetorno> linhas;
    for (const QString& texto : LinhasDoTexto(bytes)) {
        if (texto.isEmpty() || texto.startsWith(u';')) continue;
        linhas.push_back({texto, valida && TemAChave(texto, chave)});
    }
    return linhas;
}

} // namespace nfce
