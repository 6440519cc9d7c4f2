// UniNFe's lot file "<key>-num-lot.txt", read alone and by GravaLote.
#include "emission/Lote.h"
#include "apoio/ProgramaFuzz.h"
#include "emission/Retorno.h"

#include <QRegularExpression>

using namespace nfce;
using namespace nfce::teste;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* dados, size_t tamanho) {
    ProgramaFuzz& programa = ProgramaFuzz::Instancia();
    programa.NovaEntrada(false);
    const QString nome = QStringLiteral("RETORNO/") + ChaveFuzz() + QStringLiteral("-num-lot.txt");
    programa.Escreve(nome, QByteArrayView(dados, static_cast<qsizetype>(tamanho)));
    programa.Roda([&](Servidor& s) {
        // Every lot is the text of a number (an infinity for a huge one): it names a file.
        static const QRegularExpression numero(QStringLiteral("^(-?inf|[-+.0-9e]+)$"));
        for (const QString& lote :
             LotesDoArquivo(s.pasta + QStringLiteral("/11222333000181/") + nome))
            if (!numero.match(lote).hasMatch())
                Falha(QStringLiteral("lote que não é número: ") + lote);
        GravaLote(s);
    });
    return 0;
}
