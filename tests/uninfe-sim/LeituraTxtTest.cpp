#include "LeituraTxt.h"
#include "Exemplos.h"
#include "XmlNota.h"

#include <gtest/gtest.h>

namespace uninfesim {
namespace {

using namespace Qt::StringLiterals;
using teste::TxtDaVenda;
using Resultado = LeituraTxt::Resultado;

QByteArray Troca(QByteArray txt, const QByteArray& de, const QByteArray& para) {
    return txt.replace(de, para);
}

// Every ICMS line the server writes is accepted and lands in its XML group.
TEST(LeituraTxt, GruposDeIcmsDoServidor) {
    const struct {
        QByteArray linha;
        QString grupo;
    } casos[] = {
        {"N02|0|00|3|20.00|18.00|3.60|||", u"<ICMS00><orig>0</orig><CST>00</CST>"_s},
        {"N04|0|20|3|10.00|10.00|18.00|1.80||||||", u"<ICMS20>"_s},
        {"N06|0|40||3|", u"<ICMS40><orig>0</orig><CST>40</CST><motDesICMS>3</motDesICMS>"_s},
        {"N08|0|60|||||||", u"<ICMS60>"_s},
        {"N10c|0|101|0.00||", u"<ICMSSN101>"_s},
        {"N10d|0|300|", u"<ICMSSN102><orig>0</orig><CSOSN>300</CSOSN>"_s},
        {"N10g|0|500|||||||", u"<ICMSSN500>"_s},
        {"N10h|0|900|3|0.00||0.00|0.00|5|||0.00|18.00|0.00||||||", u"<ICMSSN900>"_s},
    };
    for (const auto& caso : casos) {
        const LeituraTxt lida = LeTxt(TxtDaVenda(1234, caso.linha));
        ASSERT_EQ(lida.resultado, Resultado::Lida) << lida.mensagemErro.toStdString();
        EXPECT_TRUE(MontaNfe(lida.notas.first()).xml.contains(caso.grupo)) << caso.linha.data();
    }
    const LeituraTxt semIcms = LeTxt(TxtDaVenda(1234, {}));
    ASSERT_EQ(semIcms.resultado, Resultado::Lida);
    EXPECT_FALSE(MontaNfe(semIcms.notas.first()).xml.contains(u"<ICMS>"_s));
}

TEST(LeituraTxt, EntradaHostil) {
    QByteArray binario;
    for (int i = 0; i < 4096; ++i)
        binario.append(char(i * 7));
    const QByteArray venda = TxtDaVenda(1234);
    const struct {
        const char* nome;
        QByteArray txt;
        Resultado resultado;
        QString trecho;
    } casos[] = {
        {"vazio", "", Resultado::SemInformacao, {}},
        {"so brancos", "\r\n \t\r\n", Resultado::SemInformacao, {}},
        {"so cabecalho", "NOTAFISCAL|1\r\n", Resultado::SemInformacao, {}},
        {"sem cabecalho", venda.mid(14), Resultado::Falha, u"NOTAFISCAL"_s},
        {"binario", binario, Resultado::Falha, u"NOTAFISCAL"_s},
        {"truncado", venda.left(venda.size() / 2), Resultado::Falha,
         u"Segmento [W02]: segmento não informado."_s},
        {"sem C02", Troca(venda, "C02|18123456000104|\r\n", ""), Resultado::Falha,
         u"Segmento [C02]: segmento não informado."_s},
        {"B com 22 barras", Troca(venda, "|0.00|2026", "|2026"), Resultado::Falha,
         u"Segmento [B]: quantidade de campos (22) não confere com o layout."_s},
        {"W02 com 18 barras", Troca(venda, "|20.00||\r\n", "|20.00|||\r\n"), Resultado::Falha,
         u"Segmento [W02]: quantidade de campos (18)"_s},
        {"YA com 8 barras", Troca(venda, "50.00|||||", "50.00||||"), Resultado::Falha,
         u"Segmento [YA]: quantidade de campos (8)"_s},
        {"dhEmi em UTC", Troca(venda, "10:20:30-03:00||1", "10:20:30+00:00||1"), Resultado::Falha,
         u"tag <dhEmi> com fuso horário inválido"_s},
        {"segmento desconhecido", venda + "XYZ|1|\r\n", Resultado::Falha,
         u"Segmento [XYZ]: segmento desconhecido."_s},
        {"linha sem barra", venda + "lixo\r\n", Resultado::Falha,
         u"Segmento [lixo]: segmento desconhecido."_s},
        {"antes do A", "NOTAFISCAL|1\r\nX|9|\r\n" + venda.mid(14), Resultado::Falha,
         u"segmento antes do segmento A."_s},
        {"numero com letras", Troca(venda, "|000001234|", "|0000O1234|"), Resultado::Falha,
         u"tag <nNF> inválida: 0000O1234"_s},
        {"linha enorme", Troca(venda, ";OP.:MARIA", QByteArray(100000, 'x')), Resultado::Lida, {}},
        {"aspas e barras", Troca(venda, "|JOSE|", "|JO'SE \"|\"|"), Resultado::Lida, {}},
    };
    for (const auto& caso : casos) {
        const LeituraTxt lida = LeTxt(caso.txt);
        EXPECT_EQ(lida.resultado, caso.resultado) << caso.nome;
        EXPECT_TRUE(lida.mensagemErro.contains(caso.trecho))
            << caso.nome << ": " << lida.mensagemErro.toStdString();
    }
}

TEST(LeituraTxt, CampoObrigatorioVazioNaFormaDoUniNFe) {
    const QByteArray semNcm = TxtDaVenda(1234).replace("|09012100|", "||");
    const LeituraTxt lida = LeTxt(semNcm);
    ASSERT_EQ(lida.resultado, Resultado::Falha);
    EXPECT_EQ(lida.mensagemErro,
              u"Layout: I|cProd|cEAN|xProd|NCM|NVE|CEST|indEscala|CNPJFab|cBenef|EXTIPI|CFOP|"
              "uCom|qCom|vUnCom|vProd|cEANTrib|uTrib|qTrib|vUnTrib|vFrete|vSeg|vDesc|vOutro|"
              "indTot|xPed|nItemPed|nFCI|\r\n"
              "Segmento [I]: tag <NCM> deve ser informada.\r\n"
              "\tLinha: 10: Conteudo do segmento: I|000045|SEM GTIN|CAFÉ 500G|||0302100|||||5102|"
              "UN|2.000|10.00|20.00|SEM GTIN|UN|2.000|10.00|0.00||0.00||1||||\r\n"_s);
}

TEST(LeituraTxt, DuasNotasNoMesmoArquivo) {
    const QByteArray duas = TxtDaVenda(1234) + TxtDaVenda(1235).mid(14);
    const LeituraTxt lida = LeTxt(duas);
    ASSERT_EQ(lida.resultado, Resultado::Lida);
    ASSERT_EQ(lida.notas.size(), 2);
    EXPECT_EQ(lida.notas.at(1).Primeiro(u"B"_s)[u"nNF"_s], u"000001235"_s);
}

} // namespace
} // namespace uninfesim
