// The scrambled company record "Empresa.Bin", key by key and whole.
#include "storage/Configuracao.h"
#include "storage/ErroExecucao.h"
#include "support/ProgramaFuzz.h"

using namespace nfce;
using namespace nfce::teste;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* dados, size_t tamanho) {
    const QByteArrayView bytes(dados, static_cast<qsizetype>(tamanho));
    const QString origem = QStringLiteral("fuzz");
    try {
        const QString cnpj = ValorDaChave(bytes, QStringLiteral("CNPJ"), Cifra::Empresa, origem);
        const QStringList linhas = LinhasDoRegistro(bytes, origem);
        // The whole record shows every line the server reads a key from.
        if (!cnpj.isEmpty() && linhas.filter(QStringLiteral("CNPJ"), Qt::CaseInsensitive).isEmpty())
            Falha(QStringLiteral("CNPJ lido mas ausente do registro inteiro: ") + cnpj);
    } catch (const ErroExecucao& erro) {
        // A byte that does not unscramble is error 5, as the rules say; nothing else may come.
        if (erro.numero() != ErroArgumentoInvalido)
            Falha(QStringLiteral("erro %1: ").arg(erro.numero()) + erro.descricao());
    }
    return 0;
}
