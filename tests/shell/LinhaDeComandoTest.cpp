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

using Resultado = InstanciaUnica::Resultado;

// Success prints `texto`; failure nothing on stdout and (but for usage) one line with `texto`.
void Espera(const Execucao& e, int status, const QString& texto) {
    EXPECT_EQ(e.status, status) << e.erro.toStdString();
    EXPECT_EQ(e.saida, status == 0 ? texto : QString());
    EXPECT_TRUE(status != 1 || (e.erro.contains(texto) && e.erro.count(u'\n') == 1))
        << e.erro.toStdString();
}

// In order: usage errors, errors that leave the folder "vazia" empty, then a folder made and
// its company record written and shown.
TEST(LinhaDeComando, StatusESaidaDeCadaComando) {
    PastaPrograma pasta;
    const QString vazia = pasta.Caminho(u"vazia"_s), demo = pasta.Caminho(u"demo"_s);
    QDir().mkpath(vazia);
    for (const QString& uso : {u"voar"_s, u"empresa"_s, u"iniciar|a|b"_s, u"--sem-janela|enviar"_s})
        Espera(RodaServidor(uso.split(u'|')), 2, {});
    // Arguments split at "|", %1 the empty folder, %2 the one made.
    const std::tuple<QString, QByteArray, int, QString> casos[] = {
        {u"empresa|%1|--mostrar"_s, {}, 1, u"(erro 53)"_s},
        {u"empresa|%1"_s, "CIDADE=SÃO PAULO\n", 1, u"(erro 5)"_s},
        // A bar or a control character would break every document.
        {u"empresa|%1"_s, "CNPJ=1\nENDERECO=RUA|X\n", 1, u"(erro 5)"_s},
        {u"empresa|%1"_s, "NOME=A\tB\n", 1, u"(erro 5)"_s},
        {u"empresa|%1/falta"_s, "A=1\n", 1, u"(erro 76)"_s},
        {u"--pasta|%1|--sem-janela"_s, {}, 1, u"(erro 53)"_s},
        {u"iniciar|%2|--exemplos"_s, {}, 0, demo + u"\n"_s},
        {u"iniciar|%2"_s, {}, 1, u"(erro 58)"_s},
        {u"empresa|%2"_s, "NOME=LOJA 'A'; \"B\"\n\nSERIE=7\n", 0, demo + u"/Empresa.Bin\n"_s},
        {u"empresa|%2|--mostrar"_s, {}, 0, u"NOME=LOJA 'A'; \"B\"\nSERIE=7\n"_s}};
    for (const auto& [argumentos, entrada, status, texto] : casos) {
        SCOPED_TRACE(argumentos.toStdString());
        const QString linha = QString(argumentos).replace(u"%1"_s, vazia).replace(u"%2"_s, demo);
        Espera(RodaServidor(linha.split(u'|'), entrada), status, texto);
    }
    EXPECT_TRUE(QDir(vazia).isEmpty()) << "not even the day's log";
}

// One server per folder until the first ends; a second ends at once without a word. A lock
// file left by a server that died does not count.
TEST(LinhaDeComando, UmServidorPorPasta) {
    PastaPrograma pasta;
    CriaPastaPrograma(pasta.caminho(), false, QDate::currentDate());
    pasta.EscreveArquivo(u"servidor-nfce.lock"_s, "12345\nservidor-nfce\n");
    auto primeira = std::make_unique<InstanciaUnica>(pasta.caminho());
    ASSERT_EQ(primeira->Obtem(), Resultado::Obtida);
    Espera(RodaServidor({u"--pasta"_s, pasta.caminho(), u"--sem-janela"_s}), 0, {});
    primeira.reset();
    EXPECT_EQ(InstanciaUnica(pasta.caminho()).Obtem(), Resultado::Obtida);
    InstanciaUnica emArquivo(pasta.Caminho(u"Config.ini"_s));
    EXPECT_EQ(emArquivo.Obtem(), Resultado::Falhou);
    EXPECT_TRUE(emArquivo.Motivo().contains(u"servidor-nfce.lock"_s));
}

// Every entry below the folder with its time: what a run must leave as it was.
QString Retrato(const QString& pasta) {
    QStringList itens;
    QDirIterator it(pasta, QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden,
                    QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QFileInfo f = it.nextFileInfo();
        itens << f.filePath() + u' ' + f.lastModified().toString(Qt::ISODateWithMs);
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
        {u"Empresa.Bin"_s, empresa.left(empresa.size() / 2 + 1), u"Empresa.Bin inválido"_s}};
    QList<QStringList> comandos;
    for (const QString& c :
         {u"--sem-janela"_s, u"gerar 1001"_s, u"enviar"_s, u"exportar"_s, u"reenfileirar"_s})
        comandos << c.split(u' ') + QStringList{u"--pasta"_s, pasta.caminho()};
    for (const auto& [arquivo, conteudo, trecho] : casos) {
        const QByteArray antes = pasta.LeArquivo(arquivo);
        pasta.EscreveArquivo(arquivo, conteudo);
        const QString retrato = Retrato(pasta.caminho());
        for (const QStringList& comando : comandos) {
            SCOPED_TRACE((trecho + u" / "_s + comando.first()).toStdString());
            Espera(RodaServidor(comando), 1, trecho);
            EXPECT_EQ(Retrato(pasta.caminho()), retrato);
        }
        pasta.EscreveArquivo(arquivo, antes);
    }
}

} // namespace
} // namespace nfce::teste
