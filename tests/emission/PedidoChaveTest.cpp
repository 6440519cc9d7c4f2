#include "CenarioRetorno.h"

#include "apoio/Erros.h"
#include "nfce/PedidoChave.h"

#include <QDir>

namespace nfce::teste {
namespace {

using namespace Qt::StringLiterals;

using PedidoChaveTest = CenarioRetorno;

TEST_P(PedidoChaveTest, PedidoSemCnfEmDezLinhas) {
    PedeChave(*s, 1234, u"2611"_s, 9);
    EXPECT_EQ(Le(u"Envio/0000001234-gerar-chave.xml"_s),
              "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n<gerarChave>\r\n <UF>31</UF>\r\n"
              " <tpEmis>9</tpEmis>\r\n <nNF>1234</nNF>\r\n <serie>001</serie>\r\n"
              " <AAMM>2611</AAMM>\r\n <CNPJ>18123456000104</CNPJ>\r\n <mod>65</mod>\r\n"
              "</gerarChave>\r\n");
    EXPECT_EQ(ambiente.msAguardados(), 1000);
    QDir(NaEmpresa(u"Envio"_s)).removeRecursively();
    EXPECT_EQ(ErroDe([&] { PedeChave(*s, 1234, u"2611"_s, 9); }).numero(),
              ErroCaminhoNaoEncontrado);
}

// Ten looks, 0.5 s (XML: the key at characters 64-107, the last line wins) or 1 s (text: the
// last line) apart; the key is stored on the NFC-e number, as much as the column takes.
TEST_P(PedidoChaveTest, RespostaNasDuasFormas) {
    const QByteArray k = Chave.toLatin1();
    const QByteArray xml = "<?xml version=\"1.0\" encoding=\"utf-8\"?><retGerarChave><chaveNFe>" +
                           k + "</chaveNFe></retGerarChave>";
    QByteArray binario(300, '\0');
    for (int i = 0; i < binario.size(); ++i)
        binario[i] = static_cast<char>((i * 37) % 256);
    const std::tuple<bool, QByteArray, qint64, QByteArray, qint64> casos[] = {
        // XML form, answer (appearing after ms; "-" none), key, virtual time
        {true, xml, 0, k, 500 + 10},
        {true, xml, 3200, k, 4000 + 10},
        {true, "-", 0, {}, 5000},
        {true, QByteArray(xml).replace("><", ">\r\n<"), 0, {}, 5000},
        {true, "", 0, {}, 5000},
        {true, QByteArray(100000, '7'), 0, QByteArray(44, '7'), 510},
        {true, binario, 0, "*", -1}, // anything, as long as the sale holds it
        {false, k, 0, k, 1000 + 10},
        {false, "lixo\r\n" + k + "\r\n", 0, k, 1000 + 10},
        {false, "-", 0, {}, 10000},
        {false, "'; DROP TABLE vendas; |x|", 0, "'; DROP TABLE vendas; |x|", 1010},
        {false, QByteArray(100000, '7'), 0, QByteArray(100000, '7'), 1010},
    };
    for (const auto& [emXml, resposta, apareceEm, chave, ms] : casos) {
        Reinicia();
        const QString nome =
            u"Retorno/0000001234-ret-gerar-chave."_s + (emXml ? u"xml"_s : u"txt"_s);
        if (resposta != "-")
            ambiente.Agenda(ambiente.Monotonico() + apareceEm, [&] { Grava(nome, resposta); });
        const qint64 antes = ambiente.msAguardados();
        const QString lida = emXml ? LeChaveXml(*s, 1234) : LeChaveTxt(*s, 1234);
        if (ms >= 0) {
            EXPECT_EQ(lida.toLatin1(), chave) << resposta.left(60).toStdString();
            EXPECT_EQ(ambiente.msAguardados() - antes, ms) << resposta.left(60).toStdString();
        }
        const QString guardada = QString(lida).left(44).remove(QChar(0));
        EXPECT_EQ(DaVenda(u"chave"_s) + DaVenda(u"chave"_s, 900), guardada + guardada);
        EXPECT_EQ(DaVenda(u"chave"_s, 1234), u""_s);
    }
}

INSTANTIATE_TEST_SUITE_P(Motores, PedidoChaveTest, ::testing::ValuesIn(Motores()), NomeDoMotor);

} // namespace
} // namespace nfce::teste
