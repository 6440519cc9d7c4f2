// UniNFe's access-key answer in its text form, "<nNF>-ret-gerar-chave.txt".
#include "apoio/ProgramaFuzz.h"
#include "nfce/PedidoChave.h"
#include "storage/ErroExecucao.h"

using namespace nfce;
using namespace nfce::teste;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* dados, size_t tamanho) {
    ProgramaFuzz& programa = ProgramaFuzz::Instancia();
    programa.NovaEntrada(false);
    programa.Escreve(QStringLiteral("RETORNO/0000001234-ret-gerar-chave.txt"),
                     QByteArrayView(dados, static_cast<qsizetype>(tamanho)));
    // A refused key is raised as a type mismatch.
    programa.Roda([](Servidor& s) { ConfereChave(LeChaveTxt(s, NfceFuzz)); },
                  {ErroTipoIncompativel});
    return 0;
}
