// UniNFe's access-key answer in its text form, "<nNF>-ret-gerar-chave.txt".
#include "emission/LeituraChave.h"
#include "support/ProgramaFuzz.h"

using namespace nfce;
using namespace nfce::teste;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* dados, size_t tamanho) {
    ConfereChaveLida(ChaveDoTexto(QByteArrayView(dados, static_cast<qsizetype>(tamanho)),
                                  CnpjFuzz(), QStringLiteral("001"), NfceFuzz));
    return 0;
}
