#include "shell/InstanciaUnica.h"
#include "storage/Instalacao.h"
#include "support/PastaPrograma.h"
#include "support/Programa.h"

#include <QDir>
#include <QDirIterator>
#include <gtest/gtest.h>

namespace nfce::teste {
namespace {

using namespace Qt::StringLiterals;

// A success prints `texto` exactly; a failure prints nothing on stdout and, but for a usage
// error, one line on stderr holding `texto`.
void Espera(const Execucao& e, int status, const QString& texto) {
    EXPECT_EQ(e.status, status) << e.erro.toStdString();
    EXPECT_EQ(e.saida, status == 0 ? texto : QString());
    EXPECT_TRUE(status != 1 || (e.erro.contains(texto) && e.erro.count(u'\n') == 1))
        << e.erro.toStdString();
}

// In order: usage errors, then errors that leave the folder "vazia" empty, then a folder made
// and its company record written and shown.
TEST(LinhaDeComando, StatusESaidaDeCadaComando) {
    PastaPrograma pasta;
    const QString vazia = pasta.Caminho(u"vazia"_s), demo = pasta.Caminho(u"demo"_s);
    QDir().mkpath(vazia);
    const QByteArray registro = "CNPJ=18123456000104\nNOME=LOJA 'A'; \"B\"\n\nSERIE=7\n";
    const std::tuple<QStringList, QByteArray, int, QString> casos[] = {
        {{u"voar"_s}, {}, 2, {}},
        {{u"empresa"_s}, {}, 2, {}},
        {{u"iniciar"_s, u"a"_s, u"b"_s}, {}, 2, {}},
        {{u"--sem-janela"_s, u"enviar"_s}, {}, 2, {}},
        {{u"empresa"_s, vazia, u"--mostrar"_s}, {}, 1, u"(erro 53)"_s},
        {{u"empresa"_s, vazia}, "CIDADE=SÃO PAULO\n", 1, u"(erro 5)"_s},
        // A bar or a control character would break every document.
        {{u"empresa"_s, vazia}, "CNPJ=1\nENDERECO=RUA|X\n", 1, u"(erro 5)"_s},
        {{u"empresa"_s, vazia}, "NOME=A\tB\n", 1, u"(erro 5)"_s},
        {{u"empresa"_s, vazia + u"/falta"_s}, "A=1\n", 1, u"(erro 75)"_s},
        {{u"--pasta"_s, vazia, u"--sem-janela"_s}, {}, 1, u"(erro 53)"_s},
        {{u"iniciar"_s, demo, u"--exemplos"_s}, {}, 0, demo + u"\n"_s},
        {{u"iniciar"_s, demo}, {}, 1, u"(erro 58)"_s},
        {{u"empresa"_s, demo}, registro, 0, demo + u"/Empresa.Bin\n"_s},
        {{u"empresa"_s, demo, u"--mostrar"_s},
         {},
         0,
         u"CNPJ=18123456000104\nNOME=LOJA 'A'; \"B\"\nSERIE=7\n"_s},
    };
    for (const auto& [argumentos, entrada, status, texto] : casos) {
        SCOPED_TRACE(argumentos.join(u' ').toStdString());
        Espera(RodaServidor(argumentos, entrada), status, texto);
    }
    EXPECT_TRUE(QDir(vazia).isEmpty()) << "not even the day's log";
}

// A second server on the same folder ends at once without a word.
TEST(LinhaDeComando, SegundaInstanciaSaiCalada) {
    PastaPrograma pasta;
    CriaPastaPrograma(pasta.caminho(), false, QDate::currentDate());
    InstanciaUnica primeira(pasta.caminho());
    ASSERT_EQ(primeira.Obtem(), InstanciaUnica::Resultado::Obtida);
    Espera(RodaServidor({u"--pasta"_s, pasta.caminho(), u"--sem-janela"_s}), 0, {});
}

// Every file below the folder with its size and time: what a run must leave as it was.
QString Retrato(const QString& pasta) {
    QStringList itens;
    for (QDirIterator it(pasta, QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden,
                         QDirIterator::Subdirectories);
         it.hasNext();) {
        const QFileInfo f = it.nextFileInfo();
        itens << f.filePath() + u' ' + QString::number(f.size()) + u' ' +
                     QString::number(f.lastModified().toMSecsSinceEpoch());
    }
    itens.sort();
    return itens.join(u'\n');
}

// Broken set-up files stop the server and every command that works on the folder before
// anything is written: one line naming the file and the fault, status 1.
TEST(LinhaDeComando, InstalacaoDefeituosaNaoEscreveNada) {
    PastaPrograma pasta;
    CriaPastaPrograma(pasta.caminho(), true, QDate::currentDate());
    const QByteArray empresa = pasta.LeArquivo(u"Empresa.Bin"_s);
    const std::tuple<QString, QByteArray, QString> casos[] = {
        {u"Config.ini"_s, {}, u"Config.ini: sem BASEDADOS"_s},
        {u"Config.ini"_s, "TIPOBANCO=SQLITE\r\nBASEDADOS=lo'ja\"|.db\r\n",
         u"\"lo'ja\"|.db\" (BASEDADOS em Config.ini)"_s},
        {u"loja.db"_s, {}, u"faltam as tabelas vendas"_s},
        {u"loja.db"_s, QByteArray(4096, '\xa5'), u"\"loja.db\" (BASEDADOS em Config.ini)"_s},
        {u"Empresa.Bin"_s, empresa.left(empresa.size() / 2 + 1), u"Empresa.Bin inválido"_s},
    };
    const QString p = pasta.caminho();
    const QStringList comandos[] = {{u"--sem-janela"_s, u"--pasta"_s, p},
                                    {u"gerar"_s, u"1001"_s, u"--pasta"_s, p},
                                    {u"enviar"_s, u"--pasta"_s, p},
                                    {u"exportar"_s, u"--pasta"_s, p},
                                    {u"reenfileirar"_s, u"--pasta"_s, p}};
    for (const auto& [arquivo, conteudo, trecho] : casos) {
        const QByteArray antes = pasta.LeArquivo(arquivo);
        pasta.EscreveArquivo(arquivo, conteudo);
        const QString retrato = Retrato(p);
        for (const QStringList& comando : comandos) {
            SCOPED_TRACE((trecho + u" / "_s + comando.first()).toStdString());
            Espera(RodaServidor(comando), 1, trecho);
            EXPECT_EQ(Retrato(p), retrato);
        }
        pasta.EscreveArquivo(arquivo, antes);
    }
    // And the folder as it was serves again.
    EXPECT_EQ(RodaServidor(comandos[1]).status, 0);
}

} // namespace
} // namespace nfce::teste
