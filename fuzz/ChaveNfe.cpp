// UniNFe's conversion answer "<base>-nfe.txt", whose "ChaveNFe" line carries the key.
#include "apoio/ProgramaFuzz.h"
#include "emission/Retorno.h"
#include "storage/ErroExecucao.h"

using namespace nfce;
using namespace nfce::teste;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* dados, size_t tamanho) {
    ProgramaFuzz& programa = ProgramaFuzz::Instancia();
    programa.NovaEntrada(false);
    programa.Escreve(QStringLiteral("RETORNO/000001234_11222333000181_001_15_11_2026-nfe.txt"),
                     QByteArrayView(dados, static_cast<qsizetype>(tamanho)));
    programa.Roda(
        [](Servidor& s) {
            const QString chave = LeChaveNfe(s);
            ConfereChave(chave);
            if (!chave.isEmpty() && s.painel.LblMens01 != chave)
                Falha(QStringLiteral("a chave lida não ficou no painel: ") + chave);
        },
        {ErroTipoIncompativel}); // a refused key
    return 0;
}
