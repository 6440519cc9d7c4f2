// UniNFe's conversion error "<base>-nfe.err".
#include "apoio/ProgramaFuzz.h"
#include "emission/Retorno.h"

using namespace nfce;
using namespace nfce::teste;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* dados, size_t tamanho) {
    ProgramaFuzz& programa = ProgramaFuzz::Instancia();
    programa.NovaEntrada(false);
    programa.Escreve(QStringLiteral("RETORNO/000001234_11222333000181_001_15_11_2026-nfe.err"),
                     QByteArrayView(dados, static_cast<qsizetype>(tamanho)));
    programa.Roda([](Servidor& s) { LeErroNfe(s); });
    return 0;
}
