#include "Chave.h"

#include <gtest/gtest.h>

namespace uninfesim {
namespace {

using namespace Qt::StringLiterals;

// Published keys: the check digit of their 43 digits, and one built back from its fields.
TEST(Chave, DigitoVerificadorDeChavesPublicadas) {
    for (const QString& chave : {u"13181017921427000125650010000000309887251170"_s,
                                 u"43171207364617000135550000000120141000120146"_s,
                                 u"41141106117473000150550010000273004114751943"_s}) {
        EXPECT_EQ(DigitoVerificador(chave.left(43)), chave.back().digitValue());
        EXPECT_TRUE(ChaveValida(chave));
    }
    const CamposChave campos{41, u"1411"_s, u"06117473000150"_s, 55, 1, 27300, 4, 11475194};
    EXPECT_EQ(MontaChave(campos), u"41141106117473000150550010000273004114751943"_s);
    for (const QString& texto : {u""_s, u"3126111812345600010465001000001234911096107"_s,
                                 u"312611181234560001046500100000123491109610780"_s,
                                 u"31261118123456000104650010000012349110961072"_s,
                                 u"3126111812345600010465001000001234911096107A"_s})
        EXPECT_FALSE(ChaveValida(texto)) << texto.toStdString();
}

// Without a numeric code the one derived from the number; another emission type recomputes
// the check digit.
TEST(Chave, CodigoNumericoETipoDeEmissao) {
    for (const auto& [nNF, cNF] : {std::pair(1234, 11096107), {1005, 35194109}, {27300, 3976547}})
        EXPECT_EQ(CodigoNumerico(nNF), cNF) << nNF;
    const CamposChave campos{31, u"2611"_s, u"18123456000104"_s, 65, 1, 1234, 9, 0};
    EXPECT_EQ(MontaChave(campos), u"31261118123456000104650010000012349110961071"_s);
    const QString normal = ComTipoEmissao(u"31261118123456000104650010000012349110961071"_s, 1);
    EXPECT_EQ(normal, u"31261118123456000104650010000012341110961076"_s);
    EXPECT_EQ(NumeroDaChave(normal), 1234);
}

} // namespace
} // namespace uninfesim
