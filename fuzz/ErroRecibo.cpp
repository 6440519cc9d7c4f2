// UniNFe's refusal of the lot "<lot>-pro-rec.err".
#include "emission/RespostasDaVenda.h"
#include "support/ProgramaFuzz.h"

using namespace nfce;
using namespace nfce::teste;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* dados, size_t tamanho) {
    for (const QString& recusa :
         RecusasDoRecibo(QByteArrayView(dados, static_cast<qsizetype>(tamanho))))
        if (recusa.contains(u'\r') || recusa.contains(u'\n'))
            Falha(QStringLiteral("fim de linha na recusa: ") + recusa.left(80));
    return 0;
}
