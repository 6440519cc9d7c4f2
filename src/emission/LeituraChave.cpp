#include "emission/LeituraChave.h"

#include "nfce/ChaveAcesso.h"
#include "storage/ArquivoTexto.h"
#include "storage/Configuracao.h"

namespace nfce {

namespace {

ChaveLida Confere(const QString& chave, const QString& cnpj, const QString& serie, qint32 nNF) {
    return {chave,
            !Vazio(chave) && !RespostaSemChave(chave) && !ChaveDaNota(chave, cnpj, serie, nNF)};
}

} // namespace

ChaveLida ChaveDoXml(QByteArrayView bytes, const QString& cnpj, const QString& serie, qint32 nNF) {
    const QStringList linhas = LinhasDoTexto(bytes);
    const QString chave = linhas.isEmpty() ? QString() : linhas.last().mid(63, 44);
    // UniNFe's "0" (no key) ends its element inside the 44 characters.
    return Confere(chave.section(u'<', 0, 0), cnpj, serie, nNF);
}

ChaveLida ChaveDoTexto(QByteArrayView bytes, const QString& cnpj, const QString& serie,
                       qint32 nNF) {
    const QStringList linhas = LinhasDoTexto(bytes);
    return Confere(linhas.isEmpty() ? QString() : linhas.last(), cnpj, serie, nNF);
}

ChaveLida ChaveDaConversao(QByteArrayView bytes, const QString& cnpj, const QString& serie,
                           qint32 nNF) {
    for (const QString& linha : LinhasDoTexto(bytes))
        if (QStringView(linha).mid(36, 8) == u"ChaveNFe")
            return Confere(linha.mid(46, 44), cnpj, serie, nNF);
    return {};
}

} // namespace nfce
