// UniNFe's lot file "<key>-num-lot.txt".
#include "emission/Lote.h"
#include "support/ProgramaFuzz.h"

#include <QRegularExpression>

void nfce::teste::Alvo(QByteArrayView bytes) {
    // Every lot is the text of a number (an infinity for a huge one): it names a file.
    static const QRegularExpression numero(QStringLiteral("^(-?inf|[-+.0-9e]+)$"));
    for (const QualLote qual : {QualLote::Primeiro, QualLote::Ultimo}) {
        const QString lote = LoteDoTexto(bytes, qual);
        if (!lote.isEmpty() && !numero.match(lote).hasMatch())
            Falha(QStringLiteral("lote que não é número: ") + lote);
    }
}
