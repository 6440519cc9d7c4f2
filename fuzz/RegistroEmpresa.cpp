// The scrambled company record "Empresa.Bin", key by key and whole.
#include "storage/Configuracao.h"
#include "storage/ErroExecucao.h"
#include "support/ProgramaFuzz.h"

void nfce::teste::Alvo(QByteArrayView bytes) {
    try {
        const QString cnpj = ValorDaChave(bytes, QStringLiteral("CNPJ"), Cifra::Empresa, {});
        // The whole record shows every line the server reads a key from.
        if (!cnpj.isEmpty() && LinhasDoRegistro(bytes, {})
                                   .filter(QStringLiteral("CNPJ"), Qt::CaseInsensitive)
                                   .isEmpty())
            Falha(QStringLiteral("CNPJ lido mas ausente do registro inteiro: ") + cnpj);
    } catch (const ErroExecucao& erro) {
        // A byte that does not unscramble is error 5, as the rules say; nothing else may come.
        if (erro.numero() != ErroArgumentoInvalido)
            Falha(QStringLiteral("erro %1: ").arg(erro.numero()) + erro.descricao());
    }
}
