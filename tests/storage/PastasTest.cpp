#include "storage/Pastas.h"

#include "nfce/GravadorLinhas.h"
#include "storage/ArquivoTexto.h"
#include "storage/Conexoes.h"
#include "storage/Configuracao.h"
#include "storage/Empresa.h"
#include "storage/Instalacao.h"
#include "support/DiscoPequeno.h"
#include "support/Erros.h"
#include "support/PastaPrograma.h"

#include <QDir>
#include <QDirIterator>
#include <gtest/gtest.h>

namespace nfce::teste {
namespace {

using namespace Qt::StringLiterals;

const QDate Hoje(2027, 1, 5);

std::string Lista(QStringList nomes) {
    nomes.sort();
    return nomes.join(u'\n').toStdString();
}

// Everything below `raiz`, as relative paths.
std::string Arvore(const QString& raiz) {
    QStringList nomes;
    QDirIterator it(raiz, QDir::AllEntries | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
    while (it.hasNext())
        nomes << QDir(raiz).relativeFilePath(it.next());
    return Lista(nomes);
}

const QStringList Comuns = {u"LOG"_s, u"LOG/BK"_s, u"PDV"_s, u"XML"_s, u"Contabil"_s};

// The company's folders below `c` ("" for the program folder itself).
QStringList DaEmpresa(const QString& c) {
    const QString p = c.isEmpty() ? QString() : c + u'/';
    QStringList nomes = {p + u"Envio"_s,   p + u"Contabilidade"_s, p + u"Contabilidade/012027"_s,
                         p + u"RETORNO"_s, p + u"Eventos"_s,       p + u"Eventos/012027"_s};
    if (!c.isEmpty()) nomes << c;
    return nomes;
}

// Run twice over folders ("/" at the end) and files made first; each folder is made alone.
TEST(Pastas, AlterarCriaAsPastasQueFaltam) {
    const QString barra = u"18.123.456/0001-04"_s;
    const std::tuple<QStringList, QString, QStringList> casos[] = {
        {{u"LOG"_s, u"C/Retorno/"_s, u"C/eventos/"_s},
         u"c"_s,
         {u"PDV"_s, u"XML"_s, u"Contabil"_s, u"C"_s, u"C/Envio"_s, u"C/Contabilidade"_s,
          u"C/Contabilidade/012027"_s, u"C/eventos/012027"_s}},
        {{}, barra, Comuns},
        {{u"18.123.456/"_s}, u"18.123.456\\0001-04"_s, Comuns + DaEmpresa(barra)},
        {{}, {}, Comuns + DaEmpresa({})}};
    for (const auto& [feitos, cnpj, esperada] : casos) {
        PastaPrograma pasta;
        QStringList antes;
        for (const QString& f : feitos) {
            if (f.endsWith(u'/'))
                QDir().mkpath(pasta.Caminho(f));
            else
                pasta.EscreveArquivo(f, "x");
            antes << f.chopped(f.endsWith(u'/'));
        }
        Alterar(pasta.caminho(), cnpj, Hoje);
        Alterar(pasta.caminho(), cnpj, Hoje);
        EXPECT_EQ(Arvore(pasta.caminho()), Lista(esperada + antes)) << cnpj.toStdString();
    }
}

// Parts come from answer files too: none may climb out of the root.
TEST(Pastas, CaminhoUsaONomeDoDiscoENuncaSaiDaRaiz) {
    PastaPrograma pasta;
    for (const QString& p :
         {u"C/Validar/Validado"_s, u"C/ENVIADO"_s, u"C/Duas/RETORNO"_s, u"C/Duas/Retorno"_s})
        ASSERT_TRUE(QDir().mkpath(pasta.Caminho(p)));
    pasta.EscreveArquivo(u"C/Retorno/a-num-lot.txt"_s, "1");
    const std::pair<QString, QString> casos[] = {
        {u"C\\RETORNO\\a-num-lot.txt"_s, u"/C/Retorno/a-num-lot.txt"_s},
        {u"c/validar/validado/"_s, u"/C/Validar/Validado"_s},
        {u"C\\\\Enviado\\Autorizados"_s, u"/C/ENVIADO/Autorizados"_s},
        {u"C\\Duas\\Retorno"_s, u"/C/Duas/Retorno"_s},
        {u"C\\Duas\\retorno"_s, u"/C/Duas/RETORNO"_s},
        {u"C\\Retorno\\..x..-num-lot.txt"_s, u"/C/Retorno/..x..-num-lot.txt"_s},
        {u"C\\Retorno\\.\\x"_s, u"/C/Retorno/./x"_s},
        {u""_s, u""_s}};
    for (const auto& [relativo, esperado] : casos)
        EXPECT_EQ(Caminho(pasta.caminho(), relativo).toStdString(),
                  (pasta.caminho() + esperado).toStdString());
    for (const QString& fora :
         {u"C\\Retorno\\./../../../../outra/x"_s, u"C/Retorno/../x"_s, u".."_s})
        EXPECT_EQ(ErroDe([&] { Caminho(pasta.caminho(), fora); }).numero(), ErroAcessoCaminho);
    EXPECT_EQ(ErroDe([&] { Caminho({}, u"../x"_s); }).numero(), ErroAcessoCaminho);
    EXPECT_EQ(Caminho({}, u"a\\b"_s), u"a/b"_s);
    const QString nativo = QString(pasta.caminho()).replace(u'/', u'\\') + u"\\c\\retorno"_s;
    EXPECT_TRUE(ArquivoExiste(nativo + u"\\A-NUM-LOT.TXT"_s) &&
                !PastaExiste(nativo + u"\\A-NUM-LOT.TXT"_s));
    EXPECT_TRUE(PastaExiste(nativo) && !ArquivoExiste(nativo) && !PastaExiste({}));
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
    const std::pair<QString, QString> chaves[] = {
        {u"TIPOBANCO"_s, u"SQLITE"_s},       {u"SERVIDOR"_s, u"localhost"_s},
        {u"SERVIDORBASE"_s, u"localhost"_s}, {u"SERVIDORBASEDADOS"_s, u"remota.db"_s},
        {u"BASEDADOS"_s, u"loja.db"_s},      {u"TEMP"_s, u"3"_s},
        {u"VENDASONLINE"_s, u"SIM"_s},       {u"VENDASONLINESRV"_s, u"SIM"_s}};
    for (const auto& [chave, valor] : chaves)
        EXPECT_EQ(LerConfig(p, chave), valor) << chave.toStdString();
    const Empresa e = CarregaEmpresa(p);
    EXPECT_EQ(e.Cnpj + e.Serie + e.Uf + e.CodMunicipio.left(2), u"11222333000181001MG31"_s);
    EXPECT_TRUE(PastaExiste(p + u"/11222333000181/Contabilidade/012027"_s));
    EXPECT_GT(Linhas(p + u"/loja.db"_s), 0);
    EXPECT_EQ(Linhas(p + u"/remota.db"_s, u"produtos"_s), 0);
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
        EXPECT_TRUE(erro.numero() == ErroDiscoCheio &&
                    erro.descricao().contains(u"disco cheio"_s) &&
                    erro.descricao().contains(caminho))
            << erro.descricao().toStdString();
        EXPECT_EQ(disco.Arquivos(), u"enche"_s);
    }
}

} // namespace
} // namespace nfce::teste
