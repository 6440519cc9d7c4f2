#include "nfce/ChaveAcesso.h"

#include "storage/Formatacao.h"

#include <algorithm>

namespace nfce {

namespace {

bool SoDigitos(const QString& texto) {
    return std::all_of(texto.begin(), texto.end(), [](QChar c) { return c >= u'0' && c <= u'9'; });
}

int DigitoVerificador(const QString& corpo) {
    int soma = 0;
    int peso = 2;
    for (auto c = corpo.crbegin(); c != corpo.crend(); ++c) {
        soma += c->digitValue() * peso;
        peso = peso == 9 ? 2 : peso + 1;
    }
    const int resto = soma % 11;
    return resto < 2 ? 0 : 11 - resto;
}

} // namespace

bool ChaveValida(const QString& chave) {
    return chave.size() == 44 && SoDigitos(chave) &&
           DigitoVerificador(chave.left(43)) == chave.at(43).digitValue();
}

bool ChaveDaNota(const QString& chave, const QString& cnpj, const QString& serie, qint32 nNF) {
    // cUF(2) AAMM(4) CNPJ(14) mod(2) serie(3) nNF(9) tpEmis(1) cNF(8) cDV(1)
    return ChaveValida(chave) && chave.mid(6, 14) == Zeros(LimpaTexto(cnpj), 14) &&
           chave.mid(20, 2) == u"65" && chave.mid(22, 3) == Zeros(serie, 3) &&
           chave.mid(25, 9) == Zeros(nNF, 9);
}

bool RespostaSemChave(const QString& texto) {
    return !texto.isEmpty() &&
           std::all_of(texto.begin(), texto.end(), [](QChar c) { return c == u'0'; });
}

} // namespace nfce
