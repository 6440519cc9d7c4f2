// UniNFe's conversion error "<base>-nfe.err".
#include "emission/RespostasDaVenda.h"
#include "support/ProgramaFuzz.h"

using namespace nfce;
using namespace nfce::teste;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* dados, size_t tamanho) {
    const ErroDeConversao erro =
        ErroDaConversao(QByteArrayView(dados, static_cast<qsizetype>(tamanho)));
    if (erro.mensagem.contains(u'\r') || erro.mensagem.contains(u'\n'))
        Falha(QStringLiteral("fim de linha na mensagem: ") + erro.mensagem.left(80));
    if (erro.linhas == 0 && !erro.mensagem.isEmpty())
        Falha(QStringLiteral("mensagem sem resposta: ") + erro.mensagem.left(80));
    return 0;
}
