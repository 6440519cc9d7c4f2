// UniNFe's conversion error "<base>-nfe.err" and its refusal of the lot "<lot>-pro-rec.err".
#include "emission/RespostasDaVenda.h"
#include "support/ProgramaFuzz.h"

void nfce::teste::Alvo(QByteArrayView bytes) {
    const ErroDeConversao erro = ErroDaConversao(bytes);
    ConfereLinha(erro.mensagem, "mensagem");
    if (erro.linhas == 0 && !erro.mensagem.isEmpty())
        Falha(QStringLiteral("mensagem sem resposta: ") + erro.mensagem.left(80));
    for (const QString& recusa : RecusasDoRecibo(bytes))
        ConfereLinha(recusa, "recusa");
}
