#include "storage/Configuracao.h"

#include "storage/ErroExecucao.h"
#include "support/Erros.h"
#include "support/PastaPrograma.h"

#include <QDir>
#include <QStringEncoder>
#include <gtest/gtest.h>

#include <functional>

namespace nfce::teste {
namespace {

using namespace Qt::StringLiterals;

std::string T(const QString& texto) {
    return texto.toStdString();
}

// Literal bytes, NULs included.
template <qsizetype N> QByteArray B(const char (&bytes)[N]) {
    return QByteArray(bytes, N - 1);
}

QByteArray Ansi(const QString& texto) {
    QStringEncoder ansi("windows-1252");
    return ansi(texto);
}

QByteArray Bytes(std::initializer_list<int> codigos) {
    QByteArray bytes;
    for (int codigo : codigos)
        bytes.append(static_cast<char>(codigo));
    return bytes;
}

QByteArray TodosOsBytesMenosQuebras() {
    QByteArray bytes;
    for (int codigo = 0; codigo < 256; ++codigo)
        if (codigo != '\r' && codigo != '\n') bytes.append(static_cast<char>(codigo));
    return bytes;
}

TEST(LerConfig, LinhasDoArquivo) {
    const std::vector<std::tuple<const char*, QByteArray, QString, QString>> casos = {
        // The value starts one character after the key, whatever the line's key was.
        {"a chave casa com a linha de uma chave mais longa",
         B("VENDASONLINESRV=NAO\r\nVENDASONLINE=SIM\r\n"), u"VENDASONLINE"_s, u"RV=NAO"_s},
        {"SERVIDOR casa com SERVIDORBASE", B("SERVIDORBASE=remota\r\nSERVIDOR=local\r\n"),
         u"SERVIDOR"_s, u"ASE=remota"_s},
        {"uma linha mais curta não casa com a chave longa",
         B("SERVIDOR=local\r\nSERVIDORBASE=remota\r\n"), u"SERVIDORBASE"_s, u"remota"_s},
        {"linha em minúsculas", B("vendasonline=SIM\r\n"), u"VENDASONLINE"_s, u"SIM"_s},
        {"chave em minúsculas, valor com a sua caixa", B("BASEDADOS=Loja\r\n"), u"basedados"_s,
         u"Loja"_s},
        {"branco antes do separador", B("TEMP = 3\r\n"), u"TEMP"_s, u"= 3"_s},
        {"separador qualquer", B("TEMP:7\r\n"), u"TEMP"_s, u"7"_s},
        {"a primeira linha vence", B("TEMP=1\r\nTEMP=2\r\n"), u"TEMP"_s, u"1"_s},
        {"linha igual à chave", B("TEMP\r\nTEMP=9\r\n"), u"TEMP"_s, u""_s},
        {"linha mais curta que a chave", B("TEM\r\nTEMP=4\r\n"), u"TEMP"_s, u"4"_s},
        {"chave mais longa que as linhas", B("A=1\r\nB\r\n"), u"VENDASONLINESRV"_s, u""_s},
        {"chave ausente", B("OUTRA=1\r\n"), u"TEMP"_s, u""_s},
        {"arquivo vazio", B(""), u"TEMP"_s, u""_s},
        {"só quebras de linha", B("\r\n\r\n\n\r"), u"TEMP"_s, u""_s},
        {"linhas em branco antes", B("\r\n\r\n   \r\nTEMP=5\r\n"), u"TEMP"_s, u"5"_s},
        {"brancos do valor", B("NOME=   Loja   Centro   \r\n"), u"NOME"_s, u"Loja   Centro"_s},
        {"quebras LF", B("A=1\nTEMP=2\n"), u"TEMP"_s, u"2"_s},
        {"quebras CR", B("A=1\rTEMP=2\r"), u"TEMP"_s, u"2"_s},
        {"quebras misturadas, sem a última", B("A=1\r\n\rB=2\nTEMP=3"), u"TEMP"_s, u"3"_s},
        {"o valor termina na quebra", B("TEMP=\r\n3\r\n"), u"TEMP"_s, u""_s},
        {"truncado depois do separador", B("TEMP="), u"TEMP"_s, u""_s},
        {"NUL antes da linha", B("\0\0\0\r\nX\0=1\r\nTEMP=2\r\n"), u"TEMP"_s, u"2"_s},
        {"NUL dentro do valor", B("NOME=A\0B\r\n"), u"NOME"_s, QString(u"A\0B"_s)},
        {"bytes binários antes", TodosOsBytesMenosQuebras() + "\r\nTEMP=8\r\n", u"TEMP"_s, u"8"_s},
        {"aspas e barras", Ansi(u"NOME=\"D'ÁVILA | CIA\"\r\n"_s), u"NOME"_s,
         u"\"D'ÁVILA | CIA\""_s},
        {"acentos em Windows-1252", Ansi(u"CIDADE=SÃO JOSÉ\r\n"_s), u"CIDADE"_s, u"SÃO JOSÉ"_s},
        {"chave acentuada sem caixa", Ansi(u"ação=1\r\n"_s), u"AÇÃO"_s, u"1"_s},
        {"0x80 é o euro", B("MOEDA=\x80\r\n"), u"MOEDA"_s, u"€"_s},
        {"linha de 100 000 caracteres antes", QByteArray(100000, 'A') + "\r\nTEMP=6\r\n", u"TEMP"_s,
         u"6"_s},
        {"valor de 100 000 caracteres", "TEMP=" + QByteArray(100000, 'x'), u"TEMP"_s,
         QString(100000, u'x')},
    };
    PastaPrograma pasta;
    for (const auto& [nome, arquivo, chave, esperado] : casos) {
        SCOPED_TRACE(nome);
        pasta.EscreveArquivo(u"Config.ini"_s, arquivo);
        EXPECT_EQ(T(LerConfig(pasta.caminho(), chave)), T(esperado));
    }
}

TEST(Leitores, LeemOArquivoACadaChamadaComONomeEmQualquerCaixa) {
    PastaPrograma pasta;
    for (const QString& serie : {u"1"_s, u"2"_s}) {
        pasta.EscreveArquivo(u"CONFIG.INI"_s, "SERIE=" + serie.toLatin1());
        pasta.EscreveEmpresa({u"SERIE="_s + serie});
        EXPECT_EQ(
            T(LerConfig(pasta.caminho(), u"SERIE"_s) + LerEmpresa(pasta.caminho(), u"SERIE"_s)),
            T(serie + serie));
    }
}

TEST(Leitores, ArquivoAusenteEhErro53ComONomePastaEhErro75) {
    PastaPrograma pasta;
    const std::vector<std::pair<const char*, std::function<void()>>> leitores = {
        {"Config.ini", [&] { LerConfig(pasta.caminho(), u"TEMP"_s); }},
        {"Empresa.Bin", [&] { LerEmpresa(pasta.caminho(), u"CNPJ"_s); }},
        {"Config.ini", [] { LerConfig(u"/nao/existe"_s, u"TEMP"_s); }},
    };
    for (const auto& [arquivo, leitura] : leitores) {
        SCOPED_TRACE(arquivo);
        const ErroExecucao erro = ErroDe(leitura);
        EXPECT_EQ(erro.numero(), ErroArquivoNaoEncontrado);
        EXPECT_TRUE(erro.descricao().startsWith(u"Arquivo não encontrado: "_s)) << erro.what();
        EXPECT_TRUE(erro.descricao().endsWith(QDir::toNativeSeparators(u"/"_s) + arquivo))
            << erro.what();
    }
    ASSERT_TRUE(QDir(pasta.caminho()).mkdir(u"Config.ini"_s));
    EXPECT_EQ(ErroDe([&] { LerConfig(pasta.caminho(), u"TEMP"_s); }).numero(), ErroAcessoCaminho);
}

// Stored lines scrambled, as the record keeps them; a line that does not unscramble (plain
// text, NUL, 0xFF) before the key is found is error 5 naming the file.
TEST(LerEmpresa, LinhasDoRegistro) {
    const QByteArray a = CifraLinha(u"CNPJX=1"_s) + "\r\n", b = CifraLinha(u"A=1"_s) + "\r\n";
    const QString erro5 = u"(erro 5)"_s;
    const std::vector<std::tuple<const char*, QByteArray, QString, QString>> casos = {
        {"o prefixo casa com a chave mais longa", a, u"CNPJ"_s, u"=1"_s},
        {"minúsculas, linha vazia", a + "\r\n" + CifraLinha(u"nome=LOJA"_s), u"NOME"_s, u"LOJA"_s},
        {"Windows-1252", CifraLinha(u"OBS=€ Š"_s), u"OBS"_s, u"€ Š"_s},
        {"quebras CR e LF", a + "\r" + CifraLinha(u"SERIE=7"_s) + "\n", u"SERIE"_s, u"7"_s},
        {"chave ausente", a, u"UF"_s, u""_s},
        {"arquivo vazio", {}, u"SERIE"_s, u""_s},
        {"para na linha que casa", CifraLinha(u"SERIE=7"_s) + B("\r\nlixo\0\r\n"), u"SERIE"_s,
         u"7"_s},
        {"texto claro", "CNPJ=18123456000104\r\n", u"CNPJ"_s, erro5},
        {"NUL", b + QByteArray("\0\0\0\r\n", 5), u"CNPJ"_s, erro5},
        {"linha de 100 000 bytes", b + QByteArray(100000, '\xFF'), u"CNPJ"_s, erro5},
    };
    PastaPrograma pasta;
    for (const auto& [nome, conteudo, chave, esperado] : casos) {
        SCOPED_TRACE(nome);
        pasta.EscreveArquivo(u"Empresa.Bin"_s, conteudo);
        QString lido;
        const ErroExecucao erro = ErroDe([&] { lido = LerEmpresa(pasta.caminho(), chave); });
        EXPECT_EQ(T(erro.numero() ? u"(erro %1)"_s.arg(erro.numero()) : lido), T(esperado));
        EXPECT_EQ(erro.descricao().contains(u"Empresa.Bin"_s), erro.numero() != 0);
    }
}

// Each character shifted by 79 + its position: "X=1" is stored as 168 142 131.
TEST(Cifra, IdaEVoltaEForaDoAlcanceEhErro5) {
    const std::pair<QString, QByteArray> casos[] = {{u"X=1"_s, Bytes({168, 142, 131})},
                                                    {QString(QChar(0)), Bytes({80})},
                                                    {u"€"_s, Bytes({0x80 + 80})}};
    for (const auto& [claro, guardado] : casos) {
        EXPECT_EQ(CifraLinha(claro).toHex(), guardado.toHex());
        EXPECT_EQ(T(DecifraLinha(guardado)), T(claro));
    }
    // The largest code, 255, at position 54.
    EXPECT_EQ(static_cast<uchar>(CifraLinha(QString(53, u'A') + u'z').back()), 255);
    for (const QString& linha : {u""_s, QString(53, u'A') + u'z', u"OBS=\"A|B\" 'C'"_s})
        EXPECT_EQ(T(DecifraLinha(CifraLinha(linha))), T(linha));
    const std::vector<std::pair<const char*, std::function<void()>>> erros = {
        {"decifra: código abaixo de 80 na posição 1", [] { DecifraLinha(Bytes({79})); }},
        {"decifra: código abaixo de 81 na posição 2",
         [] {
             DecifraLinha(Bytes({255, 80}));
         }},
        {"decifra: NUL", [] { DecifraLinha(B("\0")); }},
        {"cifra: passa de 255 na posição 55", [] { CifraLinha(QString(54, u'A') + u'z'); }},
        {"cifra: letra acentuada", [] { CifraLinha(u"CIDADE=SÃO JOSÉ"_s); }},
        {"cifra: fora do Windows-1252", [] { CifraLinha(u"NOME=日本"_s); }},
        {"cifra: linha de 100 000 caracteres", [] { CifraLinha(QString(100000, u'1')); }},
    };
    for (const auto& [nome, chamada] : erros) {
        SCOPED_TRACE(nome);
        const ErroExecucao erro = ErroDe(chamada);
        EXPECT_EQ(erro.numero(), ErroArgumentoInvalido);
        EXPECT_TRUE(
            erro.descricao().startsWith(u"Chamada de procedimento ou argumento inválido"_s));
    }
}

TEST(Apara, SoEspacosDasPontas) {
    const std::tuple<QString, QString, bool> casos[] = {{u""_s, u""_s, true},
                                                        {u"   "_s, u""_s, true},
                                                        {u"  a b  "_s, u"a b"_s, false},
                                                        {u"\ta\t"_s, u"\ta\t"_s, false},
                                                        {u"\t"_s, u"\t"_s, false}};
    for (const auto& [texto, aparado, vazio] : casos) {
        EXPECT_EQ(T(Apara(texto)), T(aparado));
        EXPECT_EQ(Vazio(texto), vazio) << T(texto);
    }
}

} // namespace
} // namespace nfce::teste
