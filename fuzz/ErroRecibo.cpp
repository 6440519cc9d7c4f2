// The lot file, then UniNFe's refusal of the lot "<lot>-pro-rec.err".
#include "apoio/ProgramaFuzz.h"
#include "emission/Retorno.h"

using namespace nfce;
using namespace nfce::teste;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* dados, size_t tamanho) {
    ProgramaFuzz& programa = ProgramaFuzz::Instancia();
    programa.NovaEntrada(false);
    const ParDeArquivos par = DivideNoNulo(dados, tamanho);
    programa.Escreve(QStringLiteral("RETORNO/") + ChaveFuzz() + QStringLiteral("-num-lot.txt"),
                     par.lote);
    programa.Escreve(QStringLiteral("RETORNO/000000000000054-pro-rec.err"), par.resposta);
    programa.Roda([](Servidor& s) { LeErroRecibo(s); });
    return 0;
}
