#include "storage/Empresa.h"

#include "storage/Configuracao.h"
#include "support/Erros.h"
#include "support/PastaPrograma.h"

#include <QRegularExpression>
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
        ErroCaminhoNaoEncontrado);
}

// Whatever is in Empresa.Bin, the check passes only a record that makes documents, and says in
// one description, naming the file, what is wrong.
TEST(VerificaEmpresa, RecusaRegistroQueNaoFazDocumento) {
    const QStringList valido = {
        u"CNPJ=18123456000104"_s,  u"NOME=Mercado Bom Preco Ltda"_s, u"SERIE=1"_s,
        u"CODMUNICIPIO=3106200"_s, u"ENDERECO=Rua da Bahia"_s,       u"NUMERO=1148"_s,
        u"BAIRRO=Centro"_s,        u"CIDADE=Belo Horizonte"_s,       u"UF=mg"_s,
        u"CEP=30.160-011"_s};
    const auto registro = [](const QStringList& linhas) {
        QByteArray dados;
        for (const QString& linha : linhas)
            dados += CifraLinha(linha) + "\r\n";
        return dados;
    };
    const auto com = [&](const QString& linha) {
        QStringList linhas = valido;
        linhas.replaceInStrings(QRegularExpression(u"^"_s + linha.section(u'=', 0, 0) + u"=.*"_s),
                                linha);
        return registro(linhas);
    };
    const QByteArray inteiro = registro(valido);
    const std::vector<std::pair<QByteArray, QString>> casos = {
        {inteiro, {}},
        {com(u"NOME=D'Agua \"Boa\" | Ltda"_s), {}},
        {{}, u"vazio"_s},
        {inteiro.left(inteiro.size() - 5), u"cortado"_s},
        {registro(valido.mid(0, 6)), u"falta BAIRRO"_s},
        {QByteArray(2000, '\xff') + "\r\n", u"não se decifra"_s},
        {QByteArray("\0\x01\x02\r\n", 5), u"não se decifra"_s},
        {com(u"CNPJ=18123456000105"_s), u"CNPJ inválido"_s},
        {com(u"CNPJ=18.123.456/0001-04"_s), u"CNPJ inválido"_s},
        {com(u"CNPJ=\"1812345600010|"_s), u"CNPJ inválido"_s},
        {com(u"CNPJ=00000000000000"_s), u"CNPJ inválido"_s},
        {com(u"CODMUNICIPIO=31062"_s), u"CODMUNICIPIO inválido"_s},
        {com(u"UF=XX"_s), u"UF inválida"_s},
        {com(u"CEP=30160"_s), u"CEP inválido"_s},
    };
    for (const auto& [conteudo, trecho] : casos) {
        SCOPED_TRACE(trecho.toStdString());
        PastaPrograma pasta;
        pasta.EscreveArquivo(u"Empresa.Bin"_s, conteudo);
        const ErroExecucao erro = ErroDe([&] { VerificaEmpresa(pasta.caminho()); });
        if (trecho.isEmpty()) {
            EXPECT_EQ(erro.numero(), 0) << erro.descricao().toStdString();
            continue;
        }
        EXPECT_EQ(erro.numero(), ErroArgumentoInvalido);
        EXPECT_TRUE(erro.descricao().contains(trecho) &&
                    erro.descricao().contains(u"Empresa.Bin"_s))
            << erro.descricao().toStdString();
    }
}

} // namespace
} // namespace nfce::teste
