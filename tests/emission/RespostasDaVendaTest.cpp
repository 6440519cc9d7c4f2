#include "emission/RespostasDaVenda.h"
#include "emission/Lote.h"

#include <gtest/gtest.h>

namespace nfce {
namespace {

using namespace Qt::StringLiterals;

const QByteArray Binario = QByteArray::fromHex("00ff0d0a27097c3b80fe0a0a81ee");

// The answers about the sale on their bytes alone; the stored effects are in the readers' tests.
TEST(RespostasDaVenda, ErroLoteERecusa) {
    const std::pair<QByteArray, QString> erros[] = {
        // "-nfe.err": message|lines
        {"Segmento [X]\r\nxMotivo=F\r\nLayout: W02|.|\r\nSegmento [I]: <cProd>\r\n\tLinha: 12\r\n"
         "Segmento [W02]: <vBC>",
         "Falha na Conversao da NFC-e - [I][W0|6"},
        {"Segmento 'x'|y", "'x'|1"},
        {Binario, "|4"},
    };
    for (const auto& [texto, esperado] : erros) {
        const ErroDeConversao lido = ErroDaConversao(texto);
        EXPECT_EQ(lido.mensagem + u'|' + QString::number(lido.linhas), esperado);
    }
    const std::pair<QByteArray, QString> lotes[] = {
        // "-num-lot.txt": first and last lot
        {"54;\r\n61;", "54|61"}, {"000000000000054;", "54|54"},   {"abc;", "0|0"},
        {"   \r\n", "|"},        {"54;\r61;\n\n7\r\n  ", "54|7"}, {Binario, "0|0"},
    };
    for (const auto& [texto, esperados] : lotes)
        EXPECT_EQ(LoteDoTexto(texto, QualLote::Primeiro) + u'|' +
                      LoteDoTexto(texto, QualLote::Ultimo),
                  esperados)
            << texto.toHex().toStdString();
    // "-pro-rec.err": every "Message", 50 characters in capitals.
    EXPECT_EQ(RecusasDoRecibo(Binario), QStringList());
    EXPECT_EQ(RecusasDoRecibo("ErrorCode|1\r\nMessage|a'b\r\nx\rMessage|" + QByteArray(80, 'b')),
              QStringList({u"A'B"_s, QString(50, u'B')}));
}

// Only a line carrying the sale's own valid key in field 2 is the sale's; blank lines and the
// lot-status line (";") are no protocol lines.
TEST(RespostasDaVenda, LinhasDoRetorno) {
    const QString chave = u"31261118123456000104650010000012349123456788"_s;
    const QByteArray da = "1;1234;" + chave.toLatin1() + ";x;1;100;";
    const std::tuple<QByteArray, QString, QList<bool>> casos[] = {
        {";104;Lote processado;\r\n\r\n" + da, chave, {true}},
        {da + "\r" + da.left(20) + "\n" + da, chave, {true, false, true}},
        {Binario, chave, {false, false, false}},
        {QByteArray(da).replace(chave.toLatin1(), "../../x'; --"), chave, {false}},
        {"1;1;0;", "0", {false}},
    };
    for (const auto& [texto, daChave, esperadas] : casos) {
        QList<bool> lidas;
        for (const LinhaDoRetorno& linha : LinhasDoRetorno(texto, daChave))
            lidas.append(linha.daVenda);
        EXPECT_EQ(lidas, esperadas) << texto.left(60).toStdString();
    }
}

} // namespace
} // namespace nfce
