#include "shell/InstanciaUnica.h"
#include "support/PastaPrograma.h"

#include <QDir>
#include <gtest/gtest.h>

namespace nfce::teste {
namespace {

using namespace Qt::StringLiterals;

using Resultado = InstanciaUnica::Resultado;

TEST(InstanciaUnica, UmaPorPastaAteAPrimeiraAcabar) {
    PastaPrograma pasta;
    auto primeira = std::make_unique<InstanciaUnica>(pasta.caminho());
    ASSERT_EQ(primeira->Obtem(), Resultado::Obtida);
    EXPECT_EQ(InstanciaUnica(pasta.caminho()).Obtem(), Resultado::OutraRodando);
    QDir().mkpath(pasta.Caminho(u"outra"_s));
    EXPECT_EQ(InstanciaUnica(pasta.Caminho(u"outra"_s)).Obtem(), Resultado::Obtida);
    primeira.reset();
    EXPECT_EQ(InstanciaUnica(pasta.caminho()).Obtem(), Resultado::Obtida);
}

// A lock file left behind by a server that died does not stop the next one, whatever it holds.
TEST(InstanciaUnica, ArquivoDeixadoParaTrasNaoImpede) {
    const QByteArray conteudos[] = {
        "12345\nservidor-nfce\n",
        "",
        QByteArray("\x00\x01\xff|'\"", 7),
        QByteArray(100000, '9'),
    };
    for (const QByteArray& conteudo : conteudos) {
        PastaPrograma pasta;
        pasta.EscreveArquivo(u"servidor-nfce.lock"_s, conteudo);
        EXPECT_EQ(InstanciaUnica(pasta.caminho()).Obtem(), Resultado::Obtida)
            << conteudo.left(30).toHex().toStdString();
    }
}

TEST(InstanciaUnica, PastaQueNaoAceitaATravaFalhaComMotivo) {
    PastaPrograma pasta;
    pasta.EscreveArquivo(u"arquivo"_s, "x");
    InstanciaUnica instancia(pasta.Caminho(u"arquivo"_s));
    EXPECT_EQ(instancia.Obtem(), Resultado::Falhou);
    EXPECT_TRUE(instancia.Motivo().contains(u"servidor-nfce.lock"_s));
}

} // namespace
} // namespace nfce::teste
