#include "emission/Lote.h"

#include "storage/ArquivoTexto.h"
#include "storage/Configuracao.h"
#include "storage/Formatacao.h"

namespace nfce {

QStringList LotesDoTexto(QByteArrayView bytes) {
    QStringList lotes;
    for (const QString& linha : LinhasDoTexto(bytes))
        if (!Vazio(linha.left(15))) lotes.append(TextoNumero(Val(linha.left(15))));
    return lotes;
}

} // namespace nfce
