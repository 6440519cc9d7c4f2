#include "storage/Empresa.h"

#include "apoio/Erros.h"
#include "apoio/PastaPrograma.h"
#include "storage/Configuracao.h"

#include <gtest/gtest.h>

namespace nfce::teste {
namespace {

using namespace Qt::StringLiterals;

TEST(CarregaEmpresa, SerieSempreComTresDigitosENuncaCortada) {
    const std::vector<std::pair<QString, QString>> casos = {
        {u"SERIE=7"_s, u"007"_s},       {u"SERIE=007"_s, u"007"_s}, {u"SERIE= 7x"_s, u"007"_s},
        {u"SERIE=12345"_s, u"12345"_s}, {u"SERIE=abc"_s, u"000"_s}, {u"SERIE="_s, u"000"_s},
        {u"OUTRA=1"_s, u"000"_s},
    };
    for (const auto& [linha, esperada] : casos) {
        PastaPrograma pasta;
        pasta.EscreveEmpresa({u"CNPJ=18123456000190"_s, linha});
        EXPECT_EQ(CarregaEmpresa(pasta.caminho()).Serie, esperada) << linha.toStdString();
    }
}

TEST(CarregaEmpresa, CamposAusentesFicamVaziosETextoHostilPassaIntacto) {
    PastaPrograma pasta;
    // The scrambling shifts each character by its position: long lines of high letters
    // cannot be stored, so the longest value is bounded.
    const QString longo(70, u'X');
    pasta.EscreveEmpresa(
        {u"NOME=LOJA D'OESTE | FILIAL \"2\""_s, u"UF=SP"_s, u"ENDERECO="_s + longo});
    const Empresa e = CarregaEmpresa(pasta.caminho());
    EXPECT_EQ(e.Nome, u"LOJA D'OESTE | FILIAL \"2\""_s);
    EXPECT_EQ(e.Uf, u"SP"_s);
    EXPECT_EQ(e.Endereco, longo);
    EXPECT_TRUE(e.Cnpj.isEmpty());
    EXPECT_TRUE(e.Cep.isEmpty());
}

TEST(CarregaEmpresa, RegistroAusenteOuDanificadoChegaAoChamador) {
    PastaPrograma semRegistro;
    EXPECT_EQ(ErroDe([&] { CarregaEmpresa(semRegistro.caminho()); }).numero(),
              ErroArquivoNaoEncontrado);
    PastaPrograma danificado;
    danificado.EscreveArquivo(u"Empresa.Bin"_s, QByteArray("\x01\x02\0\xff", 4));
    EXPECT_EQ(ErroDe([&] { CarregaEmpresa(danificado.caminho()); }).numero(),
              ErroArgumentoInvalido);
}

TEST(GravaRegistroEmpresa, IdaEVoltaSemLinhasEmBranco) {
    PastaPrograma pasta;
    GravaRegistroEmpresa(pasta.caminho(),
                         {u"CNPJ=11222333000181"_s, u""_s, u"   "_s, u"NOME=A|B 'C' \"D\""_s});
    EXPECT_EQ(DecifraRegistroEmpresa(pasta.caminho()),
              QStringList({u"CNPJ=11222333000181"_s, u"NOME=A|B 'C' \"D\""_s}));
    EXPECT_EQ(LerEmpresa(pasta.caminho(), u"CNPJ"_s), u"11222333000181"_s);
}

TEST(GravaRegistroEmpresa, CaractereQueNaoCabeNaoEstragaORegistroAnterior) {
    PastaPrograma pasta;
    GravaRegistroEmpresa(pasta.caminho(), {u"CNPJ=1"_s});
    const QByteArray antes = pasta.LeArquivo(u"Empresa.Bin"_s);
    for (const QString& linha : {u"CIDADE=SÃO PAULO"_s, u"NOME=\u4e2d"_s}) {
        EXPECT_EQ(ErroDe([&] { GravaRegistroEmpresa(pasta.caminho(), {linha}); }).numero(),
                  ErroArgumentoInvalido)
            << linha.toStdString();
        EXPECT_EQ(pasta.LeArquivo(u"Empresa.Bin"_s), antes);
    }
}

TEST(GravaRegistroEmpresa, PastaInexistenteEhErro75) {
    PastaPrograma pasta;
    EXPECT_EQ(
        ErroDe([&] { GravaRegistroEmpresa(pasta.Caminho(u"nao/existe"_s), {u"A=1"_s}); }).numero(),
        ErroAcessoCaminho);
}

} // namespace
} // namespace nfce::teste
