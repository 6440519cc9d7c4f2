#include "nfce/GravadorLinhas.h"
#include "storage/Ajustes.h"
#include "storage/ArquivoTexto.h"
#include "storage/Conexoes.h"
#include "storage/Configuracao.h"
#include "storage/Empresa.h"
#include "storage/Instalacao.h"
#include "storage/Pastas.h"
#include "support/DiscoPequeno.h"
#include "support/Erros.h"
#include "support/PastaPrograma.h"

#include <QDirIterator>
#include <QRegularExpression>
#include <QStringEncoder>
#include <gtest/gtest.h>

namespace nfce::teste {
namespace {

using namespace Qt::StringLiterals;

const QDate Hoje(2027, 1, 5);

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
        {"A=1\rB=2\nNOME=   Loja \tCentro\t  ", "NOME", u"Loja \tCentro\t"_s},
        {"", "TEMP", u""_s},
        {QStringEncoder("windows-1252")(u"ação=SÃO € JOSÉ"_s), "AÇÃO", u"SÃO € JOSÉ"_s},
        {QByteArray(100000, 'A') + "\r\nTEMP=6", "TEMP", u"6"_s}};
    PastaPrograma pasta;
    for (const auto& [arquivo, chave, esperado] : casos) {
        pasta.EscreveArquivo(u"Config.ini"_s, arquivo);
        EXPECT_EQ(T(LerConfig(pasta.caminho(), QString::fromUtf8(chave))), T(esperado)) << chave;
    }
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
}

// Each byte is stored shifted by 79 plus its position, up to 255.
TEST(Configuracao, LerEmpresaDecifraAsLinhas) {
    EXPECT_EQ(CifraLinha(u"X=1"_s), QByteArray("\xA8\x8E\x83"));
    const QString limite = QString(53, u'A') + u'z';
    EXPECT_EQ(T(DecifraLinha(CifraLinha(limite))), T(limite));
    EXPECT_EQ(ErroDe([] { CifraLinha(u"NOME=日本"_s); }).numero(), ErroArgumentoInvalido);
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
    const ErroExecucao erro = ErroDe([&] {
        GravaRegistroEmpresa(pasta.caminho(), {u"A=1"_s, u"CIDADE=SÃO PAULO"_s});
    });
    EXPECT_TRUE(erro.numero() == ErroArgumentoInvalido &&
                pasta.LeArquivo(u"Empresa.Bin"_s) == antes);
}

TEST(Configuracao, VerificaEmpresaRecusaRegistroQueNaoFazDocumento) {
    PastaPrograma pasta;
    const auto com = [&](const QString& troca) {
        const QRegularExpression chave(u"^"_s + troca.section(u'=', 0, 0) + u"=.*"_s);
        pasta.EscreveEmpresa(QStringList(RegistroDaLoja).replaceInStrings(chave, troca));
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

// Run twice over a file and a folder made first: what cannot be made is skipped, a folder under
// another case is reused.
TEST(Pastas, AlterarCriaAsPastasQueFaltam) {
    PastaPrograma pasta;
    pasta.EscreveArquivo(u"PDV"_s, "x");
    ASSERT_TRUE(QDir().mkpath(pasta.Caminho(u"C/eventos"_s)));
    Alterar(pasta.caminho(), u"c"_s, Hoje);
    QStringList arvore;
    for (QDirIterator it(pasta.caminho(), QDir::AllEntries | QDir::NoDotAndDotDot,
                         QDirIterator::Subdirectories);
         it.hasNext();)
        arvore << QDir(pasta.caminho()).relativeFilePath(it.next());
    arvore.sort();
    EXPECT_EQ(arvore,
              QStringList({u"C"_s, u"C/Contabilidade"_s, u"C/Contabilidade/012027"_s, u"C/Envio"_s,
                           u"C/RETORNO"_s, u"C/eventos"_s, u"C/eventos/012027"_s, u"Contabil"_s,
                           u"LOG"_s, u"LOG/BK"_s, u"PDV"_s, u"XML"_s}));
}

// Parts come from answer files too: none may climb out of the root.
TEST(Pastas, CaminhoUsaONomeDoDiscoENuncaSaiDaRaiz) {
    PastaPrograma pasta;
    const QString p = pasta.caminho();
    for (const QString& f :
         {u"C/Validar/Validado"_s, u"C/ENVIADO"_s, u"C/Duas/RETORNO"_s, u"C/Duas/Retorno"_s})
        ASSERT_TRUE(QDir().mkpath(pasta.Caminho(f)));
    pasta.EscreveArquivo(u"C/Retorno/a-num-lot.txt"_s, "1");
    QStringList achados;
    for (const QString& relativo :
         {u"C\\RETORNO\\a-num-lot.txt"_s, u"c/validar/validado/"_s, u"C\\\\Enviado\\Autorizados"_s,
          u"C\\Duas\\Retorno"_s, u"C\\Duas\\retorno"_s})
        achados << Caminho(p, relativo).mid(p.size());
    EXPECT_EQ(achados, QStringList({u"/C/Retorno/a-num-lot.txt"_s, u"/C/Validar/Validado"_s,
                                    u"/C/ENVIADO/Autorizados"_s, u"/C/Duas/Retorno"_s,
                                    u"/C/Duas/RETORNO"_s}));
    for (const QString& fora : {u"C\\Retorno\\./../../../../outra/x"_s, u"C/Retorno/../x"_s})
        EXPECT_EQ(ErroDe([&] { Caminho(p, fora); }).numero(), ErroAcessoCaminho);
    const QString nativo = QString(p).replace(u'/', u'\\') + u"\\c\\retorno"_s;
    EXPECT_TRUE(ArquivoExiste(nativo + u"\\A-NUM-LOT.TXT"_s) &&
                !PastaExiste(nativo + u"\\A-NUM-LOT.TXT"_s) && PastaExiste(nativo) &&
                !ArquivoExiste(nativo) && !PastaExiste({}));
}

int Linhas(const QString& banco, const QString& tabela = u"vendas"_s) {
    Conexao loja(TipoBanco::Sqlite, banco);
    loja.Abre();
    Registros vendas;
    vendas.AbreConsulta(loja, u"SELECT COUNT(*) AS n FROM "_s + tabela);
    return vendas.Campo(u"n"_s).toInt();
}

// Every key reads back its own line, so no key shadows another.
TEST(Pastas, CriaPastaProgramaProntaParaOServidor) {
    PastaPrograma pasta;
    const QString p = pasta.caminho();
    CriaPastaPrograma(p, true, Hoje);
    QStringList lidos;
    for (const QString& chave :
         {u"TIPOBANCO"_s, u"SERVIDOR"_s, u"SERVIDORBASE"_s, u"SERVIDORBASEDADOS"_s, u"BASEDADOS"_s,
          u"TEMP"_s, u"VENDASONLINE"_s, u"VENDASONLINESRV"_s})
        lidos << LerConfig(p, chave);
    EXPECT_EQ(T(lidos.join(u'|')), "SQLITE|localhost|localhost|remota.db|loja.db|3|SIM|SIM");
    EXPECT_NO_THROW(VerificaEmpresa(p));
    EXPECT_TRUE(PastaExiste(p + u"/11222333000181/Contabilidade/012027"_s));
    EXPECT_TRUE(Linhas(p + u"/loja.db"_s) > 0 && Linhas(p + u"/remota.db"_s, u"produtos"_s) == 0);
    CriaPastaPrograma(pasta.Caminho(u"vazia"_s), false, Hoje);
    EXPECT_EQ(Linhas(p + u"/vazia/loja.db"_s), 0);
    pasta.EscreveConfig({u"BASEDADOS=loja"_s});
    QFile::remove(pasta.Caminho(u"Empresa.Bin"_s));
    EXPECT_EQ(ErroDe([&] { CriaPastaPrograma(p, true, Hoje); }).numero(), ErroArquivoJaExiste);
    EXPECT_EQ(LerConfig(p, u"BASEDADOS"_s), u"loja"_s);
    EXPECT_FALSE(ArquivoExiste(pasta.Caminho(u"Empresa.Bin"_s)));
}

// On a disk with room for part of a file nothing is published, not even a temporary file.
TEST(Pastas, DiscoCheioNaoPublicaNada) {
    PastaPrograma pasta;
    DiscoPequeno disco(pasta.Caminho(u"disco"_s), 8);
    if (!disco.Montado()) GTEST_SKIP() << "mounting a tmpfs is not permitted here";
    const QStringList linhas(30, QString(200, u'I'));
    pasta.EscreveArquivo(u"origem.xml"_s, linhas.join(u"\r\n"_s).toLatin1());
    const std::function<void(const QString&)> publicadores[] = {
        [&](const QString& c) { GravaLinhas(c, linhas); },
        [&](const QString& c) {
            GravadorLinhas arquivo(c);
            for (const QString& linha : linhas)
                arquivo.Escreve(linha);
            arquivo.Fecha();
        },
        [&](const QString& c) { CopiaArquivo(pasta.Caminho(u"origem.xml"_s), c); }};
    const QString caminho = pasta.Caminho(u"disco/0001-nfe.txt"_s);
    for (const auto& publica : publicadores) {
        disco.Enche(4096);
        const ErroExecucao erro = ErroDe([&] { publica(caminho); });
        EXPECT_TRUE(erro.numero() == ErroDiscoCheio && erro.descricao().contains(caminho))
            << erro.descricao().toStdString();
        EXPECT_EQ(disco.Arquivos(), u"enche"_s);
    }
}

} // namespace
} // namespace nfce::teste
