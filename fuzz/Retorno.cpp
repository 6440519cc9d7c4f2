// UniNFe's protocol file "<lot>-pro-rec.txt", line by line, for the sale of the fuzz key.
#include "emission/LinhaProtocolo.h"
#include "emission/RespostasDaVenda.h"
#include "support/ProgramaFuzz.h"

using namespace nfce;
using namespace nfce::teste;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* dados, size_t tamanho) {
    static const QString chave = ChaveFuzz();
    for (const LinhaDoRetorno& linha :
         LinhasDoRetorno(QByteArrayView(dados, static_cast<qsizetype>(tamanho)), chave)) {
        // Only the sale's own key makes a line the sale's.
        if (linha.daVenda && LinhaProtocolo(linha.texto).Campo(2) != chave)
            Falha(QStringLiteral("linha de outra venda tomada como desta"));
    }
    return 0;
}
