#include "emission/LeituraChave.h"

#include <gtest/gtest.h>

namespace nfce {
namespace {

using namespace Qt::StringLiterals;

// The three key answers on the bytes alone: where the key stands, and which keys are refused
// (only NFC-e 1234 of 18123456000104, series 001, or UniNFe's "0" is taken).
TEST(LeituraChave, OndeEstaEQualSeRecusa) {
    const QByteArray k = "31261118123456000104650010000012349123456788";
    const auto xml = [](const QByteArray& chave) {
        return "<?xml version=\"1.0\" encoding=\"utf-8\"?><retGerarChave><chaveNFe>" + chave +
               "</chaveNFe></retGerarChave>";
    };
    const auto conversao = [](const QByteArray& chave) {
        return "cStat=01\r\nNota fiscal: 000001234 Serie: 001 - ChaveNFe: " + chave + "\r\n";
    };
    const QByteArray binario = QByteArray::fromHex("00ff0d0a27097c3b80fe0a0a81ee");
    enum Forma { Xml, Texto, Conversao };
    const std::tuple<Forma, QByteArray, QString, bool> casos[] = {
        // form, answer, key read, refused
        {Xml, xml(k), QString::fromLatin1(k), false},
        {Xml, xml("0"), u"0"_s, false},
        {Xml, xml(k).replace("><", ">\r\n<"), {}, false},
        {Xml, QByteArray(100000, '7'), QString(44, u'7'), true},
        {Xml, binario, {}, false},
        {Texto, "lixo\r" + k + "\r\n", QString::fromLatin1(k), false},
        {Texto, "./../../../../outra/x", u"./../../../../outra/x"_s, true},
        {Texto, "'; DROP TABLE vendas; |x|", u"'; DROP TABLE vendas; |x|"_s, true},
        {Texto, k.left(43), QString::fromLatin1(k.left(43)), true},
        {Texto, k.left(43) + "7", QString::fromLatin1(k.left(43) + "7"), true}, // check digit
        {Texto, "31261118123456000104650010000012359123456785", {}, true},      // nNF
        {Texto, "31261111222333000181650010000012349123456780", {}, true},      // CNPJ
        {Texto, "31261118123456000104550010000012349123456785", {}, true},      // model
        {Texto, "", {}, false},
        {Conversao, conversao(k), QString::fromLatin1(k), false},
        {Conversao, "Nota fiscal: 1234 Serie: 1 - ChaveNFe: " + k, {}, false},
        {Conversao, "Nota fiscal: 000001234 Serie: 001 - ChaveNFe", {}, false},
        {Conversao, conversao(k).replace("ChaveNFe: ", "ChaveNFe: '; --"), {}, true},
        {Conversao, binario, {}, false},
    };
    for (const auto& [forma, resposta, chave, recusada] : casos) {
        SCOPED_TRACE(resposta.left(60).toStdString());
        const auto leitura = forma == Xml     ? ChaveDoXml
                             : forma == Texto ? ChaveDoTexto
                                              : ChaveDaConversao;
        const ChaveLida lida = leitura(resposta, u"18123456000104"_s, u"001"_s, 1234);
        if (!chave.isEmpty() || !recusada) {
            EXPECT_EQ(lida.chave, chave);
        }
        EXPECT_EQ(lida.recusada, recusada);
    }
}

} // namespace
} // namespace nfce
