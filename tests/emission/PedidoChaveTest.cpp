#include "CenarioRetorno.h"

#include "emission/PedidoChave.h"
#include "emission/RespostaUniNfe.h"
#include "nfce/ChaveAcesso.h"
#include "support/Erros.h"

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
// last line) apart; the key is stored on the NFC-e number. Only this sale's key, or UniNFe's
// "0", is taken: anything else is refused on the sale and logged (which keys: LeituraChaveTest),
// and an answer larger than any real one is never read.
TEST_P(PedidoChaveTest, RespostaNasDuasFormas) {
    const QByteArray k = Chave.toLatin1();
    const auto xml = [](const QByteArray& chave) {
        return "<?xml version=\"1.0\" encoding=\"utf-8\"?><retGerarChave><chaveNFe>" + chave +
               "</chaveNFe></retGerarChave>";
    };
    const char* recusa = "chave inválida recebida do UniNFe";
    const char* danificada = "danificada";
    const std::tuple<bool, QByteArray, qint64, QByteArray, qint64, const char*> casos[] = {
        // XML form, answer (appearing after ms; "-" none), key, virtual time, log line
        {true, xml(k), 0, k, 500 + 10, nullptr},
        {true, xml(k), 3200, k, 4000 + 10, nullptr},
        {true, "-", 0, {}, 5000, nullptr},
        {true, "", 0, {}, 5000, nullptr},
        {true, xml("0"), 0, "0", 510, nullptr},
        {true, QByteArray(100000, '7'), 0, {}, 500, recusa},
        {true, xml(k) + QByteArray(2 << 20, ' '), 0, {}, 5000, danificada},
        {false, k, 0, k, 1000 + 10, nullptr},
        {false, "-", 0, {}, 10000, nullptr},
        {false, "0", 0, "0", 1010, nullptr},
        {false, "'; DROP TABLE vendas; |x|", 0, {}, 1000, recusa},
        {false, QByteArray(2 << 20, '7'), 0, {}, 10000, danificada},
    };
    for (const auto& [emXml, resposta, apareceEm, chave, ms, registro] : casos) {
        SCOPED_TRACE(resposta.left(60).toStdString());
        Reinicia();
        ambiente.registro.clear();
        const QString nome =
            u"Retorno/0000001234-ret-gerar-chave."_s + (emXml ? u"xml"_s : u"txt"_s);
        if (resposta != "-")
            ambiente.Agenda(ambiente.Monotonico() + apareceEm, [&] { Grava(nome, resposta); });
        const qint64 antes = ambiente.msAguardados();
        QString lida;
        try {
            lida = emXml ? LeChaveXml(*s, 1234) : LeChaveTxt(*s, 1234);
            EXPECT_NE(registro, recusa);
        } catch (const ErroExecucao& erro) {
            EXPECT_EQ(registro, recusa);
            EXPECT_EQ(erro.descricao(), ChaveInvalida);
        }
        EXPECT_EQ(lida.toLatin1(), chave);
        EXPECT_EQ(ambiente.msAguardados() - antes, ms);
        EXPECT_EQ(DaVenda(u"chave"_s) + DaVenda(u"chave"_s, 900), lida + lida);
        EXPECT_EQ(DaVenda(u"chave"_s, 1234), u""_s);
        EXPECT_EQ(DaVenda(u"erro"_s), registro == recusa ? QString::fromUtf8(recusa) : QString());
        ASSERT_EQ(ambiente.registro.size(), registro ? 1 : 0);
        if (registro) {
            EXPECT_TRUE(ambiente.registro[0].contains(QString::fromUtf8(registro)));
        }
    }
}

// Published keys (check digits 0, 6 and 3); any other last digit is wrong.
TEST(ChaveAcesso, DigitoVerificador) {
    for (const QString& chave : {u"13181017921427000125650010000000309887251170"_s,
                                 u"43171207364617000135550000000120141000120146"_s,
                                 u"41141106117473000150550010000273004114751943"_s}) {
        EXPECT_TRUE(ChaveValida(chave)) << chave.toStdString();
        for (char d = '0'; d <= '9'; ++d)
            EXPECT_EQ(ChaveValida(chave.left(43) + QChar(d)), QChar(d) == chave.back());
    }
}

INSTANTIATE_TEST_SUITE_P(Motores, PedidoChaveTest, ::testing::ValuesIn(Motores()), NomeDoMotor);

} // namespace
} // namespace nfce::teste
