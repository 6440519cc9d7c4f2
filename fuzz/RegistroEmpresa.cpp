// The scrambled company record "Empresa.Bin", key by key and whole.
#include "storage/Configuracao.h"
#include "storage/Empresa.h"
#include "storage/ErroExecucao.h"
#include "support/ProgramaFuzz.h"

using namespace nfce;
using namespace nfce::teste;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* dados, size_t tamanho) {
    static const QString pasta = PastaDeArquivos();
    EscreveArquivo(pasta + QStringLiteral("/Empresa.Bin"),
                   QByteArrayView(dados, static_cast<qsizetype>(tamanho)));
    try {
        LerEmpresa(pasta, QStringLiteral("CNPJ"));
        CarregaEmpresa(pasta);
        DecifraRegistroEmpresa(pasta);
    } catch (const ErroExecucao& erro) {
        // A byte that does not unscramble is error 5, as the rules say; nothing else may come.
        if (erro.numero() != ErroArgumentoInvalido)
            Falha(QStringLiteral("erro %1: ").arg(erro.numero()) + erro.descricao());
    }
    return 0;
}
