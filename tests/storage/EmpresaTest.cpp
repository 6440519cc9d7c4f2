#include "storage/Empresa.h"

#include "apoio/Erros.h"
#include "apoio/PastaPrograma.h"
#include "storage/Configuracao.h"

#include <gtest/gtest.h>

namespace nfce::teste {
namespace {

using namespace Qt::StringLiterals;

TEST(CarregaEmpresa, SerieComTresDigitosETextoHostilIntacto) {
    const std::pair<QString, QString> series[] = {{u"SERIE=7"_s, u"007"_s},
                                                  {u"SERIE= 7x"_s, u"007"_s},
                                                  {u"SERIE=12345"_s, u"12345"_s},
                                                  {u"SERIE=abc"_s, u"000"_s},
                                                  {u"OUTRA=1"_s, u"000"_s}};
    for (const auto& [linha, esperada] : series) {
        PastaPrograma pasta;
        pasta.EscreveEmpresa({u"CNPJ=18123456000104"_s, linha});
        EXPECT_EQ(CarregaEmpresa(pasta.caminho()).Serie, esperada) << linha.toStdString();
    }
    // The scrambling shifts each character by its position: long lines of high letters
    // cannot be stored, so the longest value is bounded.
    PastaPrograma pasta;
    const QString longo(70, u'X');
    pasta.EscreveEmpresa(
        {u"NOME=LOJA D'OESTE | FILIAL \"2\""_s, u"UF=SP"_s, u"ENDERECO="_s + longo});
    const Empresa e = CarregaEmpresa(pasta.caminho());
    EXPECT_EQ(e.Nome + e.Uf + e.Endereco + e.Cnpj, u"LOJA D'OESTE | FILIAL \"2\"SP"_s + longo);
    // Missing or damaged: the reader's error reaches the caller.
    PastaPrograma semRegistro, danificado;
    EXPECT_EQ(ErroDe([&] { CarregaEmpresa(semRegistro.caminho()); }).numero(),
              ErroArquivoNaoEncontrado);
    danificado.EscreveArquivo(u"Empresa.Bin"_s, QByteArray("\x01\x02\0\xff", 4));
    EXPECT_EQ(ErroDe([&] { CarregaEmpresa(danificado.caminho()); }).numero(),
              ErroArgumentoInvalido);
}

TEST(GravaRegistroEmpresa, IdaEVoltaSemLinhasEmBrancoOuNadaMuda) {
    PastaPrograma pasta;
    GravaRegistroEmpresa(pasta.caminho(),
                         {u"CNPJ=11222333000181"_s, u""_s, u"   "_s, u"NOME=A|B 'C' \"D\""_s});
    EXPECT_EQ(DecifraRegistroEmpresa(pasta.caminho()),
              QStringList({u"CNPJ=11222333000181"_s, u"NOME=A|B 'C' \"D\""_s}));
    EXPECT_EQ(LerEmpresa(pasta.caminho(), u"CNPJ"_s), u"11222333000181"_s);
    // A character that cannot be stored leaves the record as it was.
    const QByteArray antes = pasta.LeArquivo(u"Empresa.Bin"_s);
    for (const QString& linha : {u"CIDADE=SÃO PAULO"_s, u"NOME=\u4e2d"_s}) {
        EXPECT_EQ(ErroDe([&] { GravaRegistroEmpresa(pasta.caminho(), {linha}); }).numero(),
                  ErroArgumentoInvalido)
            << linha.toStdString();
        EXPECT_EQ(pasta.LeArquivo(u"Empresa.Bin"_s), antes);
    }
    EXPECT_EQ(
        ErroDe([&] { GravaRegistroEmpresa(pasta.Caminho(u"nao/existe"_s), {u"A=1"_s}); }).numero(),
        ErroAcessoCaminho);
}

} // namespace
} // namespace nfce::teste
