#include "storage/Pastas.h"

#include "support/Erros.h"
#include "support/PastaPrograma.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <gtest/gtest.h>

namespace nfce::teste {
namespace {

using namespace Qt::StringLiterals;

const QDate kHoje(2026, 11, 30);

std::string T(const QStringList& nomes) {
    return nomes.join(u'\n').toStdString();
}

// Everything below `raiz`, as sorted relative paths.
QStringList Arvore(const QString& raiz) {
    QStringList nomes;
    QDirIterator it(raiz, QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot,
                    QDirIterator::Subdirectories);
    while (it.hasNext())
        nomes << QDir(raiz).relativeFilePath(it.next());
    nomes.sort();
    return nomes;
}

QStringList Ordenada(QStringList nomes) {
    nomes.sort();
    return nomes;
}

const QStringList kComuns = {u"LOG"_s, u"LOG/BK"_s, u"PDV"_s, u"XML"_s, u"Contabil"_s};

// The company's rows below `c` ("" for the program folder itself) for the month `mes`.
QStringList DaEmpresa(const QString& c, const QString& mes = u"112026"_s) {
    const QString p = c.isEmpty() ? QString() : c + u'/';
    QStringList nomes = {p + u"Envio"_s,   p + u"Contabilidade"_s,
                         p + u"RETORNO"_s, p + u"Contabilidade/"_s + mes,
                         p + u"Eventos"_s, p + u"Eventos/"_s + mes};
    if (!c.isEmpty()) nomes.prepend(c);
    return nomes;
}

void CriaPasta(const PastaPrograma& pasta, const QString& relativo) {
    ASSERT_TRUE(QDir().mkpath(pasta.Caminho(relativo)));
}

// Run twice over what was made first: folders ("/" at the end) and files, a file standing
// where a folder should be. The whole tree afterwards.
TEST(Alterar, CriaAsPastasQueFaltamUmaAUma) {
    const QString c = u"C"_s, barra = u"18.123.456/0001-04"_s, contra = u"18.123.456\\0001-04"_s;
    const QStringList feita = {u"18.123.456/"_s}, semLog = {u"PDV"_s, u"XML"_s, u"Contabil"_s};
    const std::tuple<QStringList, QString, QDate, QStringList> casos[] = {
        {{u"LOG/hoje.log"_s}, u"18123456000104"_s, kHoje, kComuns + DaEmpresa(u"18123456000104"_s)},
        {{}, c, QDate(2026, 12, 1), kComuns + DaEmpresa(c, u"122026"_s)},
        {{}, c, QDate(2027, 1, 5), kComuns + DaEmpresa(c, u"012027"_s)},
        {{u"C/Retorno/"_s, u"C/eventos/"_s},
         u"c"_s,
         kHoje,
         kComuns + QStringList{c, u"C/Envio"_s, u"C/Contabilidade"_s, u"C/Contabilidade/112026"_s,
                               u"C/eventos/112026"_s}},
        {{u"LOG"_s}, c, kHoje, semLog + DaEmpresa(c)},
        {{c}, c, kHoje, kComuns},
        {{u"C/Contabilidade"_s},
         c,
         kHoje,
         kComuns +
             QStringList{c, u"C/Envio"_s, u"C/RETORNO"_s, u"C/Eventos"_s, u"C/Eventos/112026"_s}},
        {{}, barra, kHoje, kComuns},
        {{}, contra, kHoje, kComuns},
        {feita, barra, kHoje, kComuns + DaEmpresa(barra)},
        {feita, contra, kHoje, kComuns + DaEmpresa(barra)},
        {{}, {}, kHoje, kComuns + DaEmpresa({})},
    };
    for (const auto& [feitos, cnpj, data, esperada] : casos) {
        SCOPED_TRACE(T(feitos) + ' ' + cnpj.toStdString());
        PastaPrograma pasta;
        QStringList antes;
        for (const QString& f : feitos) {
            if (f.endsWith(u'/'))
                CriaPasta(pasta, f);
            else
                pasta.EscreveArquivo(f, "x");
            antes << f.chopped(f.endsWith(u'/'));
        }
        Alterar(pasta.caminho(), cnpj, data);
        Alterar(pasta.caminho(), cnpj, data);
        EXPECT_EQ(T(Arvore(pasta.caminho())), T(Ordenada(esperada + antes)));
        for (const QString& f : feitos)
            if (!f.endsWith(u'/')) {
                EXPECT_EQ(pasta.LeArquivo(f), "x");
            }
    }
}

TEST(Alterar, PastaDoProgramaQueNaoSeUsaNaoCriaNada) {
    PastaPrograma pasta;
    pasta.EscreveArquivo(u"servidor"_s, "x");
    Alterar(pasta.Caminho(u"servidor"_s), u"C"_s, kHoje);
    EXPECT_EQ(T(Arvore(pasta.caminho())), "servidor");
    QFile permissoes(pasta.caminho());
    const auto originais = permissoes.permissions();
    ASSERT_TRUE(permissoes.setPermissions(QFile::ReadOwner | QFile::ExeOwner | QFile::ReadGroup |
                                          QFile::ExeGroup | QFile::ReadOther | QFile::ExeOther));
    const bool escreve = QDir(pasta.caminho()).mkdir(u"teste"_s);
    if (!escreve) Alterar(pasta.caminho(), u"C"_s, kHoje);
    const QStringList arvore = Arvore(pasta.caminho());
    permissoes.setPermissions(originais);
    if (escreve) GTEST_SKIP() << "permissions do not apply to this user (root)";
    EXPECT_EQ(T(arvore), "servidor");
}

// Each existing part takes the spelling on disk, an exact match first; a path that exists is a
// file or a folder, whatever its spelling or separators.
TEST(Caminho, UsaONomeDoDisco) {
    PastaPrograma pasta;
    for (const QString& p :
         {u"C/Validar/Validado"_s, u"C/ENVIADO"_s, u"C/Duas/RETORNO"_s, u"C/Duas/Retorno"_s})
        CriaPasta(pasta, p);
    pasta.EscreveArquivo(u"C/Retorno/a-num-lot.txt"_s, "1");
    const std::pair<QString, QString> casos[] = {
        {u"C\\RETORNO\\a-num-lot.txt"_s, u"C/Retorno/a-num-lot.txt"_s},
        {u"c/validar/validado/"_s, u"C/Validar/Validado"_s},
        {u"C\\\\Enviado\\Autorizados"_s, u"C/ENVIADO/Autorizados"_s},
        {u"C\\Novo\\RETORNO"_s, u"C/Novo/RETORNO"_s},
        {u"C\\Duas\\RETORNO"_s, u"C/Duas/RETORNO"_s},
        {u"C\\Duas\\Retorno"_s, u"C/Duas/Retorno"_s}};
    for (const auto& [relativo, esperado] : casos)
        EXPECT_EQ(Caminho(pasta.caminho(), relativo).toStdString(),
                  pasta.Caminho(esperado).toStdString());
    EXPECT_EQ(Caminho(pasta.caminho(), {}), pasta.caminho());
    const QString p = pasta.caminho(), nativo = QString(p).replace(u'/', u'\\');
    const std::tuple<QString, bool, bool> existem[] = {
        {p + u"/C/RETORNO/A-NUM-LOT.TXT"_s, true, false},
        {nativo + u"\\c\\retorno\\a-num-lot.txt"_s, true, false},
        {p + u"/C/RETORNO/"_s, false, true},
        {p + u"/C/Retorno/b-num-lot.txt"_s, false, false},
        {u""_s, false, false}};
    for (const auto& [caminho, arquivo, dir] : existem) {
        EXPECT_EQ(ArquivoExiste(caminho), arquivo) << caminho.toStdString();
        EXPECT_EQ(PastaExiste(caminho), dir) << caminho.toStdString();
    }
}

// Parts may come from answer files: none climbs out of the root, whatever the separators.
TEST(Caminho, NuncaSaiDaRaiz) {
    PastaPrograma pasta;
    CriaPasta(pasta, u"C/Retorno"_s);
    const std::pair<QString, bool> casos[] = {
        {u"C\\Retorno\\./../../../../outra/x-num-lot.txt"_s, false},
        {u"C\\RETORNO\\..\\..\\x"_s, false},
        {u"C/Retorno/../x"_s, false},
        {u".."_s, false},
        {u"C\\Retorno\\..x..-num-lot.txt"_s, true},
        {u"C\\Retorno\\.\\x"_s, true},
        {u"C\\Retorno\\'; DROP TABLE vendas; --"_s, true},
    };
    for (const auto& [relativo, dentro] : casos)
        EXPECT_EQ(ErroDe([&] { Caminho(pasta.caminho(), relativo); }).numero(),
                  dentro ? 0 : ErroAcessoCaminho)
            << relativo.toStdString();
    EXPECT_EQ(ErroDe([&] { Caminho({}, u"../x"_s); }).numero(), ErroAcessoCaminho);
    EXPECT_EQ(Caminho({}, u"a\\b"_s), u"a/b"_s);
}

} // namespace
} // namespace nfce::teste
