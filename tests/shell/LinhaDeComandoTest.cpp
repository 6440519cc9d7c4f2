#include "shell/InstanciaUnica.h"
#include "storage/Configuracao.h"
#include "storage/Instalacao.h"
#include "support/PastaPrograma.h"
#include "support/Programa.h"

#include <QDir>
#include <QDirIterator>
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
                u"(erro 76)"_s);
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

// Every file below the folder with its size and time: what a run must leave as it was.
QString Retrato(const QString& pasta) {
    QStringList itens;
    QDirIterator it(pasta, QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden,
                    QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QFileInfo f = it.nextFileInfo();
        itens.append(u"%1 %2 %3"_s.arg(QDir(pasta).relativeFilePath(f.filePath()))
                         .arg(f.size())
                         .arg(f.lastModified().toMSecsSinceEpoch()));
    }
    itens.sort();
    return itens.join(u'\n');
}

// The server: a second one on the same folder ends at once without a word; a folder without
// settings fails its start-up with one line and writes nothing, not even the day's log.
TEST(LinhaDeComando, ServidorSegundaInstanciaEPartidaSemArquivos) {
    PastaPrograma pasta;
    const QString pronta = pasta.Caminho(u"pronta"_s);
    CriaPastaPrograma(pronta, false, QDate::currentDate());
    {
        InstanciaUnica primeira(pronta);
        ASSERT_EQ(primeira.Obtem(), InstanciaUnica::Resultado::Obtida);
        const Execucao segunda = RodaServidor({u"--pasta"_s, pronta, u"--sem-janela"_s});
        EXPECT_EQ(segunda.status, 0);
        EXPECT_EQ(segunda.saida + segunda.erro, QString());
    }
    const QString vazia = pasta.Caminho(u"vazia"_s);
    QDir().mkpath(vazia);
    EsperaFalha(RodaServidor({u"--pasta"_s, vazia, u"--sem-janela"_s}), 1, u"(erro 53)"_s);
    EXPECT_EQ(Retrato(vazia), QString());
}

// Broken set-up files stop the server and every command that works on the folder before
// anything is written: one line naming the file and the fault, status 1.
TEST(LinhaDeComando, InstalacaoDefeituosaNaoEscreveNada) {
    PastaPrograma pasta;
    const QString demo = pasta.Caminho(u"demo"_s);
    CriaPastaPrograma(demo, true, QDate::currentDate());
    const QByteArray config = pasta.LeArquivo(u"demo/Config.ini"_s);
    const QByteArray empresa = pasta.LeArquivo(u"demo/Empresa.Bin"_s);
    const QByteArray sqlite = "TIPOBANCO=SQLITE\r\n";
    const std::vector<std::tuple<QString, QByteArray, QString>> casos = {
        {u"Config.ini"_s, {}, u"Config.ini: sem BASEDADOS"_s},
        {u"Config.ini"_s, QByteArray("\0\x01\xff\xfe\x80", 5).repeated(500),
         u"Config.ini: sem BASEDADOS"_s},
        {u"Config.ini"_s, sqlite + "BASEDADOS=lo", u"\"lo\" (BASEDADOS em Config.ini)"_s},
        {u"Config.ini"_s, sqlite + "BASEDADOS=" + QByteArray(5000, 'x') + "\r\n",
         u"não encontrado"_s},
        {u"Config.ini"_s, sqlite + "BASEDADOS=lo'ja\"|.db\r\n", u"\"lo'ja\"|.db\""_s},
        {u"loja.db"_s, {}, u"faltam as tabelas vendas"_s},
        {u"loja.db"_s, QByteArray(4096, '\xa5'), u"\"loja.db\" (BASEDADOS em Config.ini)"_s},
        {u"Empresa.Bin"_s, {}, u"Empresa.Bin inválido: o arquivo está vazio"_s},
        {u"Empresa.Bin"_s, empresa.left(empresa.size() / 2 + 1), u"Empresa.Bin inválido"_s},
    };
    const std::vector<QStringList> comandos = {
        {u"--sem-janela"_s, u"--pasta"_s, demo}, {u"gerar"_s, u"1001"_s, u"--pasta"_s, demo},
        {u"enviar"_s, u"--pasta"_s, demo},       {u"exportar"_s, u"--pasta"_s, demo},
        {u"reenfileirar"_s, u"--pasta"_s, demo},
    };
    for (const auto& [arquivo, conteudo, trecho] : casos) {
        const QByteArray antes = pasta.LeArquivo(u"demo/"_s + arquivo);
        pasta.EscreveArquivo(u"demo/"_s + arquivo, conteudo);
        const QString retrato = Retrato(demo);
        for (const QStringList& comando : comandos) {
            SCOPED_TRACE((arquivo + u' ' + trecho + u" / "_s + comando.first()).toStdString());
            const Execucao e = RodaServidor(comando);
            EsperaFalha(e, 1, trecho);
            EXPECT_EQ(e.erro.count(u'\n'), 1);
            EXPECT_EQ(Retrato(demo), retrato) << retrato.toStdString();
        }
        pasta.EscreveArquivo(u"demo/"_s + arquivo, antes);
    }
    // And the folder as it was serves again.
    EXPECT_EQ(RodaServidor(comandos[1]).status, 0);
}

} // namespace
} // namespace nfce::teste
