#include "shell/InstanciaUnica.h"
#include "support/PastaPrograma.h"

#include <QDir>
#include <gtest/gtest.h>

namespace nfce::teste {
namespace {

using namespace Qt::StringLiterals;

using Resultado = InstanciaUnica::Resultado;

// One per folder until the first ends; a lock file left by a server that died does not count.
TEST(InstanciaUnica, UmaPorPastaAteAPrimeiraAcabar) {
    PastaPrograma pasta;
    pasta.EscreveArquivo(u"servidor-nfce.lock"_s, "12345\nservidor-nfce\n");
    auto primeira = std::make_unique<InstanciaUnica>(pasta.caminho());
    ASSERT_EQ(primeira->Obtem(), Resultado::Obtida);
    EXPECT_EQ(InstanciaUnica(pasta.caminho()).Obtem(), Resultado::OutraRodando);
    QDir().mkpath(pasta.Caminho(u"outra"_s));
    EXPECT_EQ(InstanciaUnica(pasta.Caminho(u"outra"_s)).Obtem(), Resultado::Obtida);
    primeira.reset();
    EXPECT_EQ(InstanciaUnica(pasta.caminho()).Obtem(), Resultado::Obtida);

    InstanciaUnica emArquivo(pasta.Caminho(u"servidor-nfce.lock"_s));
    EXPECT_EQ(emArquivo.Obtem(), Resultado::Falhou);
    EXPECT_TRUE(emArquivo.Motivo().contains(u"servidor-nfce.lock"_s));
}

} // namespace
} // namespace nfce::teste
