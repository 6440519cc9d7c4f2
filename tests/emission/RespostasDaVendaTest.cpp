#include "emission/RespostasDaVenda.h"
#include "emission/Lote.h"

#include <gtest/gtest.h>

namespace nfce {
namespace {

using namespace Qt::StringLiterals;

const QByteArray Binario = QByteArray::fromHex("00ff0d0a27097c3b80fe0a0a81ee");

// The answers about the sale on their bytes alone; the stored effects are in the readers' tests.
TEST(RespostasDaVenda, ErroLoteERecusa) {
    const QByteArray erro = "Segmento [X]\r\nxMotivo=Falha\r\nMensagemErro=Layout: W02|...|\r\n"
                            "Segmento [I]: tag <cProd>\r\n\tLinha: 12\r\nSegmento [W02]: <vBC>";
    const std::pair<QByteArray, QString> erros[] = {
        {erro, u"Falha na Conversao da NFC-e - [I][W0|6"_s},
        {"Segmento 'x'|y", u"'x'|1"_s},
        {"", u"|0"_s},
        {Binario, u"|4"_s},
    };
    for (const auto& [texto, esperado] : erros) {
        const ErroDeConversao lido = ErroDaConversao(texto);
        EXPECT_EQ(lido.mensagem + u'|' + QString::number(lido.linhas), esperado);
    }
    const std::pair<QByteArray, QString> lotes[] = {
        // file, first and last lot
        {"54;\r\n61;", u"54|61"_s}, {"000000000000054;", u"54|54"_s},   {"abc;", u"0|0"_s},
        {"   \r\n", u"|"_s},        {"54;\r61;\n\n7\r\n  ", u"54|7"_s}, {Binario, u"0|0"_s},
    };
    for (const auto& [texto, esperados] : lotes)
        EXPECT_EQ(LoteDoTexto(texto, QualLote::Primeiro) + u'|' +
                      LoteDoTexto(texto, QualLote::Ultimo),
                  esperados)
            << texto.toHex().toStdString();
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
        {QByteArray(100000, 'x'), chave, {false}},
        {Binario, chave, {false, false, false}},
        {QByteArray(da).replace(chave.toLatin1(), "../../x'; --"), chave, {false}},
        {"1;1;0;", u"0"_s, {false}},
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
