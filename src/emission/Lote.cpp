#include "emission/Lote.h"

#include "storage/ArquivoTexto.h"
#include "storage/Configuracao.h"
#include "storage/Formatacao.h"

namespace nfce {

namespace {

QString LoteDaLinha(const QString& linha) {
    const QString inicio = linha.left(15);
    return Vazio(inicio) ? QString() : TextoNumero(Val(inicio));
}

} // namespace

QString LoteDoTexto(QByteArrayView bytes, QualLote qual) {
    const QStringList linhas = LinhasDoTexto(bytes);
    const auto procura = [](auto inicio, auto fim) {
        for (auto linha = inicio; linha != fim; ++linha)
            if (QString lote = LoteDaLinha(*linha); !lote.isEmpty()) return lote;
        return QString();
    };
    return qual == QualLote::Primeiro ? procura(linhas.cbegin(), linhas.cend())
                                      : procura(linhas.crbegin(), linhas.crend());
}

} // namespace nfce
