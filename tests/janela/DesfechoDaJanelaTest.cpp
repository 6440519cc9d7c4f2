#include "emission/DesfechoDaJanela.h"

#include <gtest/gtest.h>

namespace nfce {
namespace {

using namespace Qt::StringLiterals;

struct Caso {
    QString desfecho;
    bool final;       // for EnviaNota
    bool finalDaFila; // for EnviaTodos
};

TEST(DesfechoDaJanela, SoOsTextosExatos) {
    const Caso casos[] = {
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
    for (const Caso& c : casos) {
        EXPECT_EQ(DesfechoFinal(c.desfecho, false), c.final) << c.desfecho.left(40).toStdString();
        EXPECT_EQ(DesfechoFinal(c.desfecho, true), c.finalDaFila)
            << c.desfecho.left(40).toStdString();
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
