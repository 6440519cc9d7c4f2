// The protocol reader with its effects, on a program folder (the slow target): the lot file,
// then UniNFe's protocol file "<lot>-pro-rec.txt" with the authorisation and the rejection
// diagnosis. Inputs of even length find the authorised XML in place, odd ones not (the
// situation query path).
#include "emission/Retorno.h"
#include "support/ProgramaFuzz.h"

using namespace nfce;
using namespace nfce::teste;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* dados, size_t tamanho) {
    ProgramaFuzz& programa = ProgramaFuzz::Instancia();
    programa.NovaEntrada(tamanho % 2 == 0);
    const ParDeArquivos par = DivideNoNulo(dados, tamanho);
    programa.Escreve(QStringLiteral("RETORNO/") + ChaveFuzz() + QStringLiteral("-num-lot.txt"),
                     par.lote);
    programa.Escreve(QStringLiteral("RETORNO/000000000000054-pro-rec.txt"), par.resposta);
    // A reason naming an item the sale does not have keeps SEFAZ's text: no error at all.
    programa.Roda([](Servidor& s) { ProcessaRetorno(s); });
    return 0;
}
