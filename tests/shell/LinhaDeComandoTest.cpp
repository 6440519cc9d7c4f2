#include "apoio/PastaPrograma.h"
#include "apoio/Programa.h"
#include "shell/InstanciaUnica.h"
#include "storage/Configuracao.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

namespace nfce::teste {
namespace {

using namespace Qt::StringLiterals;

// One line on stderr, nothing on stdout, non-zero status.
void EsperaFalha(const Execucao& e, int status, const QString& trecho) {
    EXPECT_EQ(e.status, status);
    EXPECT_TRUE(e.saida.isEmpty()) << e.saida.toStdString();
    EXPECT_TRUE(e.erro.contains(trecho)) << e.erro.toStdString();
}

TEST(LinhaDeComando, UsoErradoExplicaASintaxe) {
    const std::vector<QStringList> casos = {{u"voar"_s},
                                            {u"empresa"_s},
                                            {u"iniciar"_s},
                                            {u"iniciar"_s, u"a"_s, u"b"_s},
                                            {u"--voar"_s},
                                            {u"--pasta"_s},
                                            {u"--sem-janela"_s, u"enviar"_s}};
    for (const QStringList& argumentos : casos) {
        SCOPED_TRACE(argumentos.join(u' ').toStdString());
        EsperaFalha(RodaServidor(argumentos), 2, u"uso: servidor-nfce"_s);
    }
}

TEST(LinhaDeComando, EmpresaGravaEMostraORegistro) {
    PastaPrograma pasta;
    const QByteArray dados = "CNPJ=18123456000104\nNOME=LOJA 'A'; \"B\"\n\nSERIE=7\n";
    const Execucao gravar = RodaServidor({u"empresa"_s, pasta.caminho()}, dados);
    ASSERT_EQ(gravar.status, 0) << gravar.erro.toStdString();
    EXPECT_EQ(LerEmpresa(pasta.caminho(), u"NOME"_s), u"LOJA 'A'; \"B\""_s);

    const Execucao mostrar = RodaServidor({u"empresa"_s, pasta.caminho(), u"--mostrar"_s});
    EXPECT_EQ(mostrar.status, 0);
    EXPECT_EQ(mostrar.saida, u"CNPJ=18123456000104\nNOME=LOJA 'A'; \"B\"\nSERIE=7\n"_s);
}

TEST(LinhaDeComando, ErrosDeEmpresaNumaLinha) {
    PastaPrograma pasta;
    EsperaFalha(RodaServidor({u"empresa"_s, pasta.caminho(), u"--mostrar"_s}), 1, u"(erro 53)"_s);
    EsperaFalha(RodaServidor({u"empresa"_s, pasta.caminho()}, "CIDADE=SÃO PAULO\n"), 1,
                u"(erro 5)"_s);
    // A bar or a control character would break every document: refused, nothing written.
    const QByteArray recusados[] = {"CNPJ=1\nENDERECO=RUA|X\n", "NOME=A\tB\n", "NOME=A\rB\nX=1\n",
                                    QByteArray("NOME=A\0B\n", 9), "A\x01=1\n"};
    for (const QByteArray& dados : recusados) {
        EsperaFalha(RodaServidor({u"empresa"_s, pasta.caminho()}, dados), 1, u"(erro 5)"_s);
        EXPECT_FALSE(QFile::exists(pasta.Caminho(u"Empresa.Bin"_s))) << dados.toStdString();
    }
    EsperaFalha(RodaServidor({u"empresa"_s, pasta.Caminho(u"falta/aqui"_s)}, "A=1\n"), 1,
                u"(erro 75)"_s);
    pasta.EscreveArquivo(u"Empresa.Bin"_s, QByteArray("\x01\x02\0", 3));
    EsperaFalha(RodaServidor({u"empresa"_s, pasta.caminho(), u"--mostrar"_s}), 1, u"(erro 5)"_s);
}

TEST(LinhaDeComando, IniciarCriaUmaVezSo) {
    PastaPrograma pasta;
    const QString destino = pasta.Caminho(u"demo"_s);
    const Execucao primeira = RodaServidor({u"iniciar"_s, destino, u"--exemplos"_s});
    ASSERT_EQ(primeira.status, 0) << primeira.erro.toStdString();
    EXPECT_EQ(primeira.saida, destino + u"\n"_s);
    EXPECT_EQ(LerConfig(destino, u"TIPOBANCO"_s), u"SQLITE"_s);
    EsperaFalha(RodaServidor({u"iniciar"_s, destino}), 1, u"(erro 58)"_s);
}

// The server: a second one on the same folder ends at once without a word; a folder without
// settings fails its start-up with one line, also written to the day's log.
TEST(LinhaDeComando, ServidorSegundaInstanciaEPartidaSemArquivos) {
    PastaPrograma pasta;
    const QStringList argumentos = {u"--pasta"_s, pasta.caminho(), u"--sem-janela"_s};
    {
        InstanciaUnica primeira(pasta.caminho());
        ASSERT_EQ(primeira.Obtem(), InstanciaUnica::Resultado::Obtida);
        const Execucao segunda = RodaServidor(argumentos);
        EXPECT_EQ(segunda.status, 0);
        EXPECT_EQ(segunda.saida + segunda.erro, QString());
    }
    EsperaFalha(RodaServidor(argumentos), 1, u"(erro 53)"_s);
    const QStringList logs = QDir(pasta.Caminho(u"LOG"_s)).entryList(QDir::Files);
    ASSERT_EQ(logs.size(), 1);
    EXPECT_TRUE(pasta.LeArquivo(u"LOG/"_s + logs.first()).contains("(erro 53)"));
}

} // namespace
} // namespace nfce::teste
