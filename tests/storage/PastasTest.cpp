#include "storage/Pastas.h"

#include "apoio/PastaPrograma.h"

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

TEST(Alterar, CriaAsDozePastas) {
    PastaPrograma pasta;
    Alterar(pasta.caminho(), u"18123456000190"_s, kHoje);
    EXPECT_EQ(T(Arvore(pasta.caminho())), T(Ordenada(kComuns + DaEmpresa(u"18123456000190"_s))));
}

TEST(Alterar, SegundaVezNaoMudaNada) {
    PastaPrograma pasta;
    Alterar(pasta.caminho(), u"18123456000190"_s, kHoje);
    pasta.EscreveArquivo(u"LOG/hoje.log"_s, "linha\r\n");
    const QStringList antes = Arvore(pasta.caminho());
    Alterar(pasta.caminho(), u"18123456000190"_s, kHoje);
    EXPECT_EQ(T(Arvore(pasta.caminho())), T(antes));
    EXPECT_EQ(pasta.LeArquivo(u"LOG/hoje.log"_s), "linha\r\n");
}

TEST(Alterar, PastaDoMesDaDataDada) {
    const std::vector<std::pair<QDate, QString>> casos = {
        {QDate(2026, 11, 30), u"112026"_s},
        {QDate(2026, 12, 1), u"122026"_s},
        {QDate(2027, 1, 5), u"012027"_s},
    };
    for (const auto& [data, mes] : casos) {
        SCOPED_TRACE(mes.toStdString());
        PastaPrograma pasta;
        Alterar(pasta.caminho(), u"C"_s, data);
        EXPECT_EQ(T(Arvore(pasta.caminho())), T(Ordenada(kComuns + DaEmpresa(u"C"_s, mes))));
    }
}

TEST(Alterar, UsaAPastaJaExistenteEmOutraCaixa) {
    PastaPrograma pasta;
    CriaPasta(pasta, u"C/Retorno"_s);
    CriaPasta(pasta, u"C/eventos"_s);
    Alterar(pasta.caminho(), u"c"_s, kHoje);
    const QStringList esperada = {u"C"_s,
                                  u"C/Envio"_s,
                                  u"C/Contabilidade"_s,
                                  u"C/Retorno"_s,
                                  u"C/Contabilidade/112026"_s,
                                  u"C/eventos"_s,
                                  u"C/eventos/112026"_s};
    EXPECT_EQ(T(Arvore(pasta.caminho())), T(Ordenada(kComuns + esperada)));
}

TEST(Alterar, PaiQueNaoSeFazDeixaOsFilhosDeFora) {
    struct Caso {
        const char* nome;
        QString arquivo; // a regular file where a folder should be
        QStringList criadas;
    };
    const std::vector<Caso> casos = {
        {"LOG", u"LOG"_s, QStringList{u"PDV"_s, u"XML"_s, u"Contabil"_s} + DaEmpresa(u"C"_s)},
        {"CNPJ", u"C"_s, kComuns},
        {"Contabilidade", u"C/Contabilidade"_s,
         QStringList{u"C"_s, u"C/Envio"_s, u"C/RETORNO"_s, u"C/Eventos"_s, u"C/Eventos/112026"_s} +
             kComuns},
    };
    for (const Caso& caso : casos) {
        SCOPED_TRACE(caso.nome);
        PastaPrograma pasta;
        pasta.EscreveArquivo(caso.arquivo, "x");
        Alterar(pasta.caminho(), u"C"_s, kHoje);
        EXPECT_EQ(T(Arvore(pasta.caminho())),
                  T(Ordenada(caso.criadas + QStringList{caso.arquivo})));
    }
}

TEST(Alterar, PastaDoProgramaQueEhArquivoNaoCriaNada) {
    PastaPrograma pasta;
    pasta.EscreveArquivo(u"servidor"_s, "x");
    Alterar(pasta.Caminho(u"servidor"_s), u"C"_s, kHoje);
    EXPECT_EQ(T(Arvore(pasta.caminho())), "servidor");
}

TEST(Alterar, PastaDoProgramaSomenteLeituraNaoCriaNada) {
    PastaPrograma pasta;
    QFile permissoes(pasta.caminho());
    const auto originais = permissoes.permissions();
    ASSERT_TRUE(permissoes.setPermissions(QFile::ReadOwner | QFile::ExeOwner | QFile::ReadGroup |
                                          QFile::ExeGroup | QFile::ReadOther | QFile::ExeOther));
    const bool escreve = QDir(pasta.caminho()).mkdir(u"teste"_s);
    if (!escreve) Alterar(pasta.caminho(), u"C"_s, kHoje);
    const QStringList arvore = Arvore(pasta.caminho());
    permissoes.setPermissions(originais);
    if (escreve) GTEST_SKIP() << "permissions do not apply to this user (root)";
    EXPECT_EQ(T(arvore), "");
}

TEST(Alterar, CnpjComBarraFazPastasAninhadas) {
    for (const QString& cnpj : {u"18.123.456/0001-90"_s, u"18.123.456\\0001-90"_s}) {
        SCOPED_TRACE(cnpj.toStdString());
        PastaPrograma pasta;
        Alterar(pasta.caminho(), cnpj, kHoje);
        EXPECT_EQ(T(Arvore(pasta.caminho())), T(Ordenada(kComuns)));

        CriaPasta(pasta, u"18.123.456"_s);
        Alterar(pasta.caminho(), cnpj, kHoje);
        EXPECT_EQ(T(Arvore(pasta.caminho())),
                  T(Ordenada(kComuns + DaEmpresa(u"18.123.456/0001-90"_s) +
                             QStringList{u"18.123.456"_s})));
    }
}

TEST(Alterar, CnpjVazioPoeAsPastasDaEmpresaNaDoPrograma) {
    PastaPrograma pasta;
    Alterar(pasta.caminho(), {}, kHoje);
    EXPECT_EQ(T(Arvore(pasta.caminho())), T(Ordenada(kComuns + DaEmpresa({}))));
}

TEST(Caminho, UsaANomeDoDisco) {
    PastaPrograma pasta;
    CriaPasta(pasta, u"C/Retorno"_s);
    CriaPasta(pasta, u"C/Validar/Validado"_s);
    CriaPasta(pasta, u"C/ENVIADO"_s);
    CriaPasta(pasta, u"C/Duas/RETORNO"_s);
    CriaPasta(pasta, u"C/Duas/Retorno"_s);
    const std::vector<std::pair<QString, QString>> casos = {
        {u"C\\RETORNO\\a-num-lot.txt"_s, u"C/Retorno/a-num-lot.txt"_s},
        {u"C\\VALIDAR\\VALIDADO"_s, u"C/Validar/Validado"_s},
        {u"c/validar/validado/"_s, u"C/Validar/Validado"_s},
        {u"C\\\\Enviado\\Autorizados"_s, u"C/ENVIADO/Autorizados"_s},
        {u"C\\Novo\\RETORNO"_s, u"C/Novo/RETORNO"_s},
        {u"C\\Duas\\RETORNO"_s, u"C/Duas/RETORNO"_s},
        {u"C\\Duas\\Retorno"_s, u"C/Duas/Retorno"_s},
        {u""_s, u""_s},
    };
    for (const auto& [relativo, esperado] : casos) {
        SCOPED_TRACE(relativo.toStdString());
        EXPECT_EQ(Caminho(pasta.caminho(), relativo).toStdString(),
                  (esperado.isEmpty() ? pasta.caminho() : pasta.Caminho(esperado)).toStdString());
    }
}

TEST(Caminho, ArquivoEPastaExistem) {
    PastaPrograma pasta;
    pasta.EscreveArquivo(u"C/Retorno/a-num-lot.txt"_s, "1");
    const QString p = pasta.caminho();
    const QString nativo = QString(p).replace(u'/', u'\\');
    struct Caso {
        QString caminho;
        bool arquivo;
        bool dir;
    };
    const std::vector<Caso> casos = {
        {p + u"/C/Retorno/a-num-lot.txt"_s, true, false},
        {p + u"/C/RETORNO/A-NUM-LOT.TXT"_s, true, false},
        {nativo + u"\\c\\retorno\\a-num-lot.txt"_s, true, false},
        {Caminho(p, u"C\\RETORNO\\a-num-lot.txt"_s), true, false},
        {p + u"/C/RETORNO"_s, false, true},
        {p + u"/C/RETORNO/"_s, false, true},
        {p + u"/C/Retorno/b-num-lot.txt"_s, false, false},
        {p + u"/C/Envio"_s, false, false},
        {u""_s, false, false},
    };
    for (const Caso& caso : casos) {
        SCOPED_TRACE(caso.caminho.toStdString());
        EXPECT_EQ(ArquivoExiste(caso.caminho), caso.arquivo);
        EXPECT_EQ(PastaExiste(caso.caminho), caso.dir);
    }
}

} // namespace
} // namespace nfce::teste
