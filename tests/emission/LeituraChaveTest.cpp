#include "emission/LeituraChave.h"

#include <gtest/gtest.h>

namespace nfce {
namespace {

// The three key answers on the bytes alone: where the key stands, and which keys are refused
// (only NFC-e 1234 of 18123456000104, series 001, model 65, or UniNFe's "0" is taken).
TEST(LeituraChave, OndeEstaEQualSeRecusa) {
    const QByteArray k = "31261118123456000104650010000012349123456788", s = "'; DROP |x|",
                     m = "31261118123456000104550010000012349123456785", t = k.left(43),
                     x = "<?xml version=\"1.0\" encoding=\"utf-8\"?><retGerarChave><chaveNFe>",
                     c = "cStat=01\r\nNota fiscal: 000001234 Serie: 001 - ChaveNFe: ", f = "</";
    const auto X = ChaveDoXml, T = ChaveDoTexto, C = ChaveDaConversao;
    // reader, answer, key read ("!": refused)
    const std::tuple<decltype(X), QByteArray, QByteArray> casos[] = {
        {X, x + k + f, k}, {X, x + "0" + f, "0"}, {X, x + "\n" + k, ""},  {T, "x\r" + k, k},
        {T, s, s + "!"},   {T, "", ""},           {T, t, t + "!"},        {T, t + "7", t + "7!"},
        {T, m, m + "!"},   {C, c + k, k},         {C, c.mid(11) + k, ""}, {C, c + s, s + "!"},
    };
    for (const auto& [leitura, resposta, chave] : casos) {
        const ChaveLida lida = leitura(resposta, "18123456000104", "001", 1234);
        EXPECT_EQ(lida.chave.toLatin1() + (lida.recusada ? "!" : ""), chave);
    }
    for (const auto& [cnpj, serie, nNF] : {std::tuple("11222333000181", "001", 1234),
                                           {"18123456000104", "002", 1234},
                                           {"18123456000104", "001", 1235}})
        EXPECT_TRUE(ChaveDoTexto(k, cnpj, serie, nNF).recusada) << cnpj << serie << nNF;
}

} // namespace
} // namespace nfce
