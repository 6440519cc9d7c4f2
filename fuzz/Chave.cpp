// UniNFe's access-key answer "<nNF>-ret-gerar-chave.txt" or ".xml", and its conversion answer
// "<base>-nfe.txt", whose "ChaveNFe" line carries the key.
#include "emission/LeituraChave.h"
#include "support/ProgramaFuzz.h"

void nfce::teste::Alvo(QByteArrayView bytes) {
    for (const auto leitor : {ChaveDoTexto, ChaveDoXml, ChaveDaConversao})
        ConfereChaveLida(leitor(bytes, CnpjFuzz, QStringLiteral("001"), NfceFuzz));
}
