#include "storage/Configuracao.h"

#include "storage/Ajustes.h"
#include "storage/Empresa.h"
#include "storage/ErroExecucao.h"
#include "support/Erros.h"
#include "support/PastaPrograma.h"

#include <QDir>
#include <QRegularExpression>
#include <QStringEncoder>
#include <gtest/gtest.h>

namespace nfce::teste {
namespace {

using namespace Qt::StringLiterals;

std::string T(const QString& texto) {
    return texto.toStdString();
}

// What `le` gives, or "erro N" for the error it raises.
QString Lido(const std::function<QString()>& le) {
    QString lido;
    const int erro = ErroDe([&] { lido = le(); }).numero();
    return erro ? u"erro %1"_s.arg(erro) : lido;
}

// The first line that begins with the key gives what follows the one character after it.
TEST(Configuracao, LerConfigPeloPrefixoDaLinha) {
    const std::tuple<QByteArray, const char*, QString> casos[] = {
        {"VENDASONLINESRV=NAO\r\nVENDASONLINE=SIM\r\n", "VENDASONLINE", u"RV=NAO"_s},
        {"basedados=Loja\r\n", "BaseDados", u"Loja"_s},
        {"TEMP = 3\r\nTEMP=2\r\n", "TEMP", u"= 3"_s},
        {"TEM\r\nTEMP\r\nTEMP=9\r\n", "TEMP", u""_s},
        {"A=1\rB=2\nNOME=   Loja   Centro   ", "NOME", u"Loja   Centro"_s},
        {"", "TEMP", u""_s},
        {QByteArray("X\0=1\r\nNOME=A\0B|'\"", 17), "NOME", QString(u"A\0B|'\""_s)},
        {QStringEncoder("windows-1252")(u"ação=SÃO € JOSÉ"_s), "AÇÃO", u"SÃO € JOSÉ"_s},
        {QByteArray(100000, 'A') + "\r\nTEMP=6", "TEMP", u"6"_s}};
    PastaPrograma pasta;
    for (const auto& [arquivo, chave, esperado] : casos) {
        pasta.EscreveArquivo(u"Config.ini"_s, arquivo);
        EXPECT_EQ(T(LerConfig(pasta.caminho(), QString::fromUtf8(chave))), T(esperado)) << chave;
    }
    EXPECT_EQ(T(Apara(u"  \ta b\t  "_s)), "\ta b\t");
    EXPECT_TRUE(Vazio(u"   "_s) && !Vazio(u"\t"_s));
}

TEST(Configuracao, ArquivosLidosACadaChamada) {
    PastaPrograma pasta;
    const ErroExecucao erro = ErroDe([&] { LerConfig(pasta.caminho(), u"TEMP"_s); });
    EXPECT_EQ(erro.numero(), ErroArquivoNaoEncontrado);
    EXPECT_TRUE(erro.descricao().endsWith(QDir::toNativeSeparators(u"/Config.ini"_s)));
    for (const QString& serie : {u"1"_s, u"2"_s}) {
        pasta.EscreveArquivo(u"CONFIG.INI"_s, "SERIE=" + serie.toLatin1());
        pasta.EscreveEmpresa({u"SERIE="_s + serie});
        EXPECT_EQ(
            T(LerConfig(pasta.caminho(), u"SERIE"_s) + LerEmpresa(pasta.caminho(), u"SERIE"_s)),
            T(serie + serie));
    }
    ASSERT_TRUE(QDir(pasta.caminho()).mkdir(u"Config.ini"_s));
    EXPECT_EQ(ErroDe([&] { LerConfig(pasta.caminho(), u"TEMP"_s); }).numero(), ErroAcessoCaminho);
}

// Each byte is stored shifted by 79 plus its position, up to 255.
TEST(Configuracao, LerEmpresaDecifraAsLinhas) {
    EXPECT_EQ(CifraLinha(u"X=1"_s), QByteArray("\xA8\x8E\x83"));
    const QString limite = QString(53, u'A') + u'z';
    EXPECT_EQ(T(DecifraLinha(CifraLinha(limite))), T(limite));
    for (const auto& chamada : std::initializer_list<std::function<void()>>{
             [] { DecifraLinha("\x4F"); }, [] { DecifraLinha("\xFF\x50"); },
             [&] { CifraLinha(u'A' + limite); }, [] { CifraLinha(u"NOME=日本"_s); }})
        EXPECT_EQ(ErroDe(chamada).numero(), ErroArgumentoInvalido);
    const QByteArray a = CifraLinha(u"A=1"_s) + "\r\n";
    const std::pair<QByteArray, QString> casos[] = {
        {a + "\r" + CifraLinha(u"obs=€ Š"_s) + "\n", u"€ Š"_s},
        {CifraLinha(u"OBS=7"_s) + QByteArray("\r\nlixo\0\r\n", 9), u"7"_s},
        {a + "OBS=18123456000104\r\n", u"erro 5"_s}};

    PastaPrograma pasta;
    for (const auto& [conteudo, esperado] : casos) {
        pasta.EscreveArquivo(u"Empresa.Bin"_s, conteudo);
        EXPECT_EQ(T(Lido([&] { return LerEmpresa(pasta.caminho(), u"OBS"_s); })), T(esperado));
    }
    EXPECT_TRUE(ErroDe([&] { LerEmpresa(pasta.caminho(), u"OBS"_s); })
                    .descricao()
                    .contains(u"Empresa.Bin"_s));
}

QString LeAjuste(const QString& p, char tipo) {
    if (tipo == 't') return Le(p, AjusteTexto{u"K", u"padrao"});
    if (tipo == 's') return QString::number(Le(p, AjusteSim{u"K"}));
    if (tipo == 'n') return QString::number(Le(p, AjusteNumero{u"K"}));
    if (tipo == 'i') return QString::number(Le(p, AjusteInteiro{u"K", 1}));
    return QString::number(Le(p, AjusteSegundos{u"K"}, 3));
}

TEST(Configuracao, CadaAjusteLeDoSeuJeito) {
    const std::tuple<const char*, char, const char*> casos[] = {
        {"K=   ", 't', "padrao"},   {"OUTRA=x", 't', "padrao"}, {"K= SIM ", 's', "1"},
        {"K=sim", 's', "0"},        {"K=SIM!", 's', "0"},       {"K=2.5x", 'n', "2.5"},
        {"K=2.9", 'i', "2"},        {"K=abc", 'i', "1"},        {"K=-2", 'i', "-2"},
        {"K=1e300", 'i', "erro 6"}, {"K=2.9", 'g', "2"},        {"K=-5", 'g', "3"},
        {"K=0.5", 'g', "3"},        {"K=32767", 'g', "32767"},  {"K=40000", 'g', "erro 6"}};
    PastaPrograma pasta;
    for (const auto& [linha, tipo, esperado] : casos) {
        pasta.EscreveConfig({QString::fromLatin1(linha)});
        EXPECT_EQ(T(Lido([&] { return LeAjuste(pasta.caminho(), tipo); })), esperado) << linha;
    }
}

// A record is written whole or not at all.
TEST(Configuracao, CarregaEGravaAEmpresa) {
    PastaPrograma pasta;
    const std::pair<const char*, const char*> series[] = {
        {" 7x", "007"}, {"12345", "12345"}, {"abc", "000"}};
    for (const auto& [serie, esperada] : series) {
        pasta.EscreveEmpresa({u"SERIE="_s + QString::fromLatin1(serie)});
        EXPECT_EQ(T(CarregaEmpresa(pasta.caminho()).Serie), esperada);
    }
    GravaRegistroEmpresa(pasta.caminho(), {u"CNPJ=11222333000181"_s, u""_s, u"   "_s, u"UF=MG"_s});
    EXPECT_EQ(DecifraRegistroEmpresa(pasta.caminho()),
              QStringList({u"CNPJ=11222333000181"_s, u"UF=MG"_s}));
    const QByteArray antes = pasta.LeArquivo(u"Empresa.Bin"_s);
    const QStringList ruim = {u"A=1"_s, u"CIDADE=SÃO PAULO"_s};
    EXPECT_EQ(ErroDe([&] { GravaRegistroEmpresa(pasta.caminho(), ruim); }).numero(),
              ErroArgumentoInvalido);
    EXPECT_EQ(pasta.LeArquivo(u"Empresa.Bin"_s), antes);
    EXPECT_EQ(ErroDe([&] { GravaRegistroEmpresa(pasta.Caminho(u"nao/existe"_s), {}); }).numero(),
              ErroCaminhoNaoEncontrado);
}

TEST(Configuracao, VerificaEmpresaRecusaRegistroQueNaoFazDocumento) {
    PastaPrograma pasta;
    const auto com = [&](const QString& troca) {
        QStringList linhas = {u"CNPJ=18123456000104"_s,  u"NOME=D'Agua | Ltda"_s, u"SERIE=1"_s,
                              u"CODMUNICIPIO=3106200"_s, u"ENDERECO=Rua"_s,       u"NUMERO=1"_s,
                              u"BAIRRO=Centro"_s,        u"CIDADE=BH"_s,          u"UF=mg"_s,
                              u"CEP=30.160-011"_s};
        linhas.replaceInStrings(QRegularExpression(u"^"_s + troca.section(u'=', 0, 0) + u"=.*"_s),
                                troca);
        pasta.EscreveEmpresa(linhas);
        return pasta.LeArquivo(u"Empresa.Bin"_s);
    };
    const QByteArray inteiro = com({});
    const std::pair<QByteArray, QString> casos[] = {
        {inteiro, {}},
        {{}, u"vazio"_s},
        {inteiro.chopped(5), u"cortado"_s},
        {com(u"BAIRRO= "_s), u"falta BAIRRO"_s},
        {com(u"CNPJ=18123456000105"_s), u"CNPJ inválido"_s},
        {com(u"CNPJ=00000000000000"_s), u"CNPJ inválido"_s},
        {com(u"CODMUNICIPIO=31062"_s), u"CODMUNICIPIO inválido"_s},
        {com(u"UF=XX"_s), u"UF inválida"_s},
        {com(u"CEP=30160"_s), u"CEP inválido"_s}};
    for (const auto& [conteudo, trecho] : casos) {
        pasta.EscreveArquivo(u"Empresa.Bin"_s, conteudo);
        const QString erro = ErroDe([&] { VerificaEmpresa(pasta.caminho()); }).descricao();
        EXPECT_TRUE(erro.contains(trecho) && erro.contains(u"Empresa.Bin"_s) != trecho.isEmpty())
            << T(erro);
    }
}

} // namespace
} // namespace nfce::teste
