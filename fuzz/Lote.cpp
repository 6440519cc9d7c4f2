// UniNFe's lot file "<key>-num-lot.txt".
#include "emission/Lote.h"
#include "support/ProgramaFuzz.h"

#include <QRegularExpression>

using namespace nfce;
using namespace nfce::teste;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* dados, size_t tamanho) {
    // Every lot is the text of a number (an infinity for a huge one): it names a file.
    static const QRegularExpression numero(QStringLiteral("^(-?inf|[-+.0-9e]+)$"));
    const QByteArrayView bytes(dados, static_cast<qsizetype>(tamanho));
    for (const QualLote qual : {QualLote::Primeiro, QualLote::Ultimo}) {
        const QString lote = LoteDoTexto(bytes, qual);
        if (!lote.isEmpty() && !numero.match(lote).hasMatch())
            Falha(QStringLiteral("lote que não é número: ") + lote);
    }
    return 0;
}
