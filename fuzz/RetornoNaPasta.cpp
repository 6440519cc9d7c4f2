// The protocol reader with its effects, on a program folder (the slow target): the lot file,
// then UniNFe's protocol file "<lot>-pro-rec.txt" with the authorisation and the rejection
// diagnosis. Inputs of even length find the authorised XML in place, odd ones not (the
// situation query path).
#include "emission/Retorno.h"
#include "support/ProgramaFuzz.h"

void nfce::teste::Alvo(QByteArrayView bytes) {
    ProgramaFuzz& programa = ProgramaFuzz::Instancia();
    programa.NovaEntrada(bytes.size() % 2 == 0);
    // Up to the first NUL the lot file, the rest the answer of lot 54; no NUL: UniNFe's "54;".
    const qsizetype nulo = bytes.indexOf('\0');
    programa.Escreve(QStringLiteral("RETORNO/") + ChaveFuzz + QStringLiteral("-num-lot.txt"),
                     nulo < 0 ? QByteArrayView("54;") : bytes.first(nulo));
    programa.Escreve(QStringLiteral("RETORNO/000000000000054-pro-rec.txt"), bytes.sliced(nulo + 1));
    // A reason naming an item the sale does not have keeps SEFAZ's text: no error at all.
    programa.Roda([](Servidor& s) { ProcessaRetorno(s); });
}
