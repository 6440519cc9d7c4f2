#include "nfce/GravadorLinhas.h"
#include "storage/ArquivoTexto.h"
#include "support/DiscoPequeno.h"
#include "support/Erros.h"
#include "support/PastaPrograma.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace nfce::teste {
namespace {

using namespace Qt::StringLiterals;

// Every way a file reaches UniNFe or the accountant, on a disk with no room at all and with
// room for part of the file (4 096 of about 6 000 bytes): nothing is published, no temporary
// file is left, and the error names the file and says the disk is full.
TEST(Publicacao, DiscoCheioNaoPublicaNada) {
    PastaPrograma pasta;
    DiscoPequeno disco(pasta.Caminho(u"disco"_s), 8);
    if (!disco.Montado()) GTEST_SKIP() << "mounting a tmpfs is not permitted here";
    const QStringList linhas(30, QString(200, u'I'));
    pasta.EscreveArquivo(u"origem.xml"_s, linhas.join(u"\r\n"_s).toLatin1());
    const std::vector<std::pair<QString, std::function<void(const QString&)>>> publicadores = {
        {u"GravaLinhas"_s, [&](const QString& c) { GravaLinhas(c, linhas); }},
        {u"GravadorLinhas"_s,
         [&](const QString& c) {
             GravadorLinhas arquivo(c);
             for (const QString& linha : linhas)
                 arquivo.Escreve(linha);
             arquivo.Fecha();
         }},
        {u"CopiaArquivo"_s,
         [&](const QString& c) { CopiaArquivo(pasta.Caminho(u"origem.xml"_s), c); }},
    };
    for (const qint64 livres : {0, 4096})
        for (const auto& [nome, publica] : publicadores) {
            SCOPED_TRACE(nome.toStdString() + " " + std::to_string(livres));
            disco.Enche(livres);
            const QString caminho = pasta.Caminho(u"disco/0001-nfe.txt"_s);
            const ErroExecucao erro = ErroDe([&] { publica(caminho); });
            EXPECT_EQ(erro.numero(), ErroDiscoCheio);
            EXPECT_TRUE(erro.descricao().contains(u"disco cheio"_s) &&
                        erro.descricao().contains(caminho))
                << erro.descricao().toStdString();
            EXPECT_EQ(disco.Arquivos(), u"enche"_s);
        }
}

} // namespace
} // namespace nfce::teste
