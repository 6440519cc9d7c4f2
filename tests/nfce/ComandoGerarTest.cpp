#include "storage/Conexao.h"
#include "support/PastaPrograma.h"
#include "support/Programa.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

namespace nfce::teste {
namespace {

using namespace Qt::StringLiterals;

// The sample sale 1001 of a ready folder: 2 x 21.15 paid 50.00 in cash. This one run keeps
// the program's real waits (about 5 seconds).
TEST(ComandoGerar, EscreveOArquivoEMostraOCaminhoOuUmaLinhaDeErro) {
    PastaPrograma pasta;
    const QString demo = pasta.Caminho(u"demo"_s);
    ASSERT_EQ(RodaServidor({u"iniciar"_s, demo, u"--exemplos"_s}).status, 0);
    const auto [status, saida, erro] = RodaServidor({u"gerar"_s, u"1001"_s, u"--pasta"_s, demo});
    ASSERT_EQ(status, 0) << erro.toStdString();
    EXPECT_TRUE(saida.startsWith(demo + u"/11222333000181/Validar/000001001_11222333000181_"_s));
    QFile arquivo(saida.trimmed());
    ASSERT_TRUE(arquivo.open(QIODevice::ReadOnly));
    const QByteArray texto = arquivo.readAll();
    EXPECT_TRUE(texto.startsWith("NOTAFISCAL|1\r\nA|4.00|NFe\r\nB|31||VENDA|65|001|000001001|"));
    EXPECT_TRUE(texto.endsWith("\r\nYA|0|01|DINHEIRO|50.00|||||\r\nYA09|7.70|\r\nZ||TRIBUTOS (R$ "
                               "7,61) FONTE: IBPT(18,00%)     ;OP.:MARIA|OBRIGADO PELA "
                               "PREFERENCIA     ;VOLTE SEMPRE     |\r\n"));

    const std::vector<std::tuple<QStringList, int, QString>> falhas = {
        {{u"gerar"_s, u"1"_s, u"--pasta"_s}, 2, u"uso: servidor-nfce gerar NFCE [--pasta DIR]\n"_s},
        {{u"gerar"_s, u"12'|x"_s}, 1, u"Número de NFC-e inválido: \"12'|x\" (erro 5)\n"_s},
        {{u"gerar"_s, u"999"_s, u"--pasta"_s, demo},
         1,
         u"Nenhuma venda com a NFC-e 999. (erro 3021)\n"_s},
        {{u"gerar"_s, u"1002"_s, u"--pasta"_s, demo},
         1,
         u"Item 2: quantidade inválida \"-1\" (erro 5)\n"_s},
        {{u"gerar"_s, u"1001"_s, u"--pasta"_s, pasta.Caminho(u"sem-banco"_s)},
         1,
         u"sem-banco/loja.db (erro -2147467259)\n"_s},
    };
    // A folder with the settings and the company record but without the database.
    QDir().mkpath(pasta.Caminho(u"sem-banco"_s));
    for (const QString& nome : {u"Config.ini"_s, u"Empresa.Bin"_s})
        QFile::copy(demo + u'/' + nome, pasta.Caminho(u"sem-banco/"_s + nome));
    Conexao loja(TipoBanco::Sqlite, demo + u"/loja.db"_s);
    loja.Abre();
    loja.Executa(u"UPDATE itens SET quant = -1 WHERE nfce = 1002 AND Item = 2"_s);
    for (const auto& [argumentos, esperado, trecho] : falhas) {
        const auto [status, saida, erro] = RodaServidor(argumentos);
        EXPECT_EQ(status, esperado);
        EXPECT_TRUE(saida.isEmpty() && erro.endsWith(trecho) && erro.count(u'\n') == 1)
            << erro.toStdString();
    }
}

} // namespace
} // namespace nfce::teste
