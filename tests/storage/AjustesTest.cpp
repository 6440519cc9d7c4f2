#include "storage/Ajustes.h"

#include "storage/ErroExecucao.h"
#include "support/Erros.h"
#include "support/PastaPrograma.h"

#include <gtest/gtest.h>

namespace nfce::teste {
namespace {

using namespace Qt::StringLiterals;

// Each kind of key read from one Config.ini line: the value as text ("erro 6" when the read
// raises the overflow).
TEST(Ajustes, CadaTipoLeDoSeuJeito) {
    const AjusteTexto texto{u"CHAVE", u"padrao"};
    const AjusteSim sim{u"CHAVE"};
    const AjusteNumero numero{u"CHAVE"};
    const AjusteInteiro inteiro{u"CHAVE", 1};
    const AjusteSegundos segundos{u"CHAVE"};
    struct Caso {
        const char* linha;
        std::function<QString(const QString&)> le;
        QString esperado;
    };
    const auto T = [&](const QString& p) { return Le(p, texto); };
    const auto S = [&](const QString& p) { return QString::number(Le(p, sim)); };
    const auto N = [&](const QString& p) { return QString::number(Le(p, numero)); };
    const auto I = [&](const QString& p) { return QString::number(Le(p, inteiro)); };
    const auto G = [&](const QString& p) { return QString::number(Le(p, segundos, 3)); };
    const Caso casos[] = {
        {"CHAVE=  loja  ", T, u"loja"_s}, {"CHAVE=   ", T, u"padrao"_s},
        {"OUTRA=x", T, u"padrao"_s},      {"CHAVE=a'b|c", T, u"a'b|c"_s},
        {"CHAVE= SIM ", S, u"1"_s},       {"CHAVE=sim", S, u"0"_s},
        {"CHAVE=SIM!", S, u"0"_s},        {"CHAVE=2.5x", N, u"2.5"_s},
        {"CHAVE=2.9", I, u"2"_s},         {"CHAVE=abc", I, u"1"_s},
        {"CHAVE=-2", I, u"-2"_s},         {"CHAVE=1e300", I, u"erro 6"_s},
        {"CHAVE=2.9", G, u"2"_s},         {"CHAVE=-5", G, u"3"_s},
        {"CHAVE=0.5", G, u"3"_s},         {"CHAVE=32767", G, u"32767"_s},
        {"CHAVE=40000", G, u"erro 6"_s},
    };
    for (const Caso& c : casos) {
        PastaPrograma pasta;
        pasta.EscreveConfig({QString::fromLatin1(c.linha)});
        QString lido;
        const int erro = ErroDe([&] { lido = c.le(pasta.caminho()); }).numero();
        EXPECT_EQ(erro ? u"erro %1"_s.arg(erro) : lido, c.esperado) << c.linha;
    }
}

} // namespace
} // namespace nfce::teste
