#include "emission/DesfechoDaJanela.h"

#include <gtest/gtest.h>

namespace nfce {
namespace {

using namespace Qt::StringLiterals;

// Final for EnviaNota, and for EnviaTodos.
TEST(DesfechoDaJanela, SoOsTextosExatos) {
    const std::tuple<QString, bool, bool> casos[] = {
        {u"100 - Autorizado o uso da NF-e"_s, true, true},
        {u"Rejeição Duplicidade de Cupom NFC-e"_s, true, true},
        {u"Autorizado o uso da NF-e"_s, true, true},
        {u"Duplicidade de Cupom NFC-e"_s, true, true},
        {u"Autorizado o uso da NF-e "_s, false, false},
        {u"autorizado o uso da NF-e"_s, false, false},
        {u"Rejeicao Duplicidade de Cupom NFC-e"_s, false, false},
        {u"Erro ao invocar o serviço"_s, false, true},
        {u"Erro ao invocar"_s, false, true},
        {u"ERRO AO INVOCAR O SERVIÇO"_s, false, false},
        {u" Erro ao invocar"_s, false, false},
        {u""_s, false, false},
        {QString(100000, u'|'), false, false},
    };
    for (const auto& [desfecho, final, finalDaFila] : casos) {
        EXPECT_EQ(DesfechoFinal(desfecho, false), final) << desfecho.left(40).toStdString();
        EXPECT_EQ(DesfechoFinal(desfecho, true), finalDaFila) << desfecho.left(40).toStdString();
    }
}

TEST(DesfechoDaJanela, MensagemDeNaoEmitido) {
    EXPECT_EQ(MensagemNaoEmitido(77, u"Falha na Conversao da NFC-e - B01"_s),
              u"Cupom NFC-e : 000077\nNão Foi Emitido, Favor tentar reenviar e autorizar.\n"
              "Falha na Conversao da NFC-e - B01"_s);
    EXPECT_EQ(MensagemNaoEmitido(1234567, {}).left(21), u"Cupom NFC-e : 1234567"_s);
}

} // namespace
} // namespace nfce
