// UniNFe's protocol file "<lot>-pro-rec.txt", line by line, for the sale of the fuzz key.
#include "emission/LinhaProtocolo.h"
#include "emission/RespostasDaVenda.h"
#include "support/ProgramaFuzz.h"

void nfce::teste::Alvo(QByteArrayView bytes) {
    // Only the sale's own key makes a line the sale's.
    for (const LinhaDoRetorno& linha : LinhasDoRetorno(bytes, ChaveFuzz))
        if (linha.daVenda && LinhaProtocolo(linha.texto).Campo(2) != ChaveFuzz)
            Falha(QStringLiteral("linha de outra venda tomada como desta"));
}
