#include "Cenario.h"

#include <gtest/gtest.h>

namespace uninfesim {
namespace {

using namespace Qt::StringLiterals;

using D = Desfecho;
using R = RespostaChave;

TEST(Cenario, PalavrasLidas) {
    struct Caso {
        QString palavras;
        D desfecho;
        int codigo, item, passagens, segundos;
        R chave;
        std::optional<QString> motivo;
    };
    const Caso casos[] = {
        {u"autoriza"_s, D::Autoriza, 0, 1, 0, 0, R::Pedida, {}},
        {u"REJEITA 383\titem 12 atraso 2"_s, D::Rejeita, 383, 12, 2, 0, R::Pedida, {}},
        {u"duplicidade atraso 30s"_s, D::Duplicidade, 0, 1, 0, 30, R::Pedida, {}},
        {u"duplicidade-chave chave-txt"_s, D::DuplicidadeChave, 0, 1, 0, 0, R::Texto, {}},
        {u"erro-conversao sem-chave"_s, D::ErroConversao, 0, 1, 0, 0, R::Nenhuma, {}},
        {u"rejeita-lote"_s, D::RejeitaLote, 225, 1, 0, 0, R::Pedida, {}},
        {u"rejeita-lote 656 chave-zero"_s, D::RejeitaLote, 656, 1, 0, 0, R::Zero, {}},
        {u"sem-resposta"_s, D::SemResposta, 0, 1, 0, 0, R::Pedida, {}},
        {u"lote-recusado motivo Erro ao invocar o serviço 'x' | y; z"_s, D::LoteRecusado, 0, 1, 0,
         0, R::Pedida, u"Erro ao invocar o serviço 'x' | y; z"_s},
        {u"rejeita 999 motivo"_s, D::Rejeita, 999, 1, 0, 0, R::Pedida, u""_s}};
    for (const Caso& caso : casos) {
        SCOPED_TRACE(caso.palavras.toStdString());
        Cenario c;
        QString erro;
        ASSERT_TRUE(LeCenario(caso.palavras, c, erro)) << erro.toStdString();
        EXPECT_EQ(std::tie(c.desfecho, c.codigo, c.item, c.atrasoPassagens, c.atrasoSegundos,
                           c.chave, c.motivo),
                  std::tie(caso.desfecho, caso.codigo, caso.item, caso.passagens, caso.segundos,
                           caso.chave, caso.motivo));
    }
    for (const QString& palavras : {u"rejeita"_s, u"rejeita 77"_s, u"autoriza rejeita 778"_s,
                                    u"atraso -1"_s, u"autorizar"_s, u"\x01\x02|\""_s}) {
        Cenario c;
        QString erro;
        EXPECT_FALSE(LeCenario(palavras, c, erro) || erro.isEmpty()) << palavras.toStdString();
    }
}

TEST(Cenario, ArquivoComLinhasBoasRuinsEComentarios) {
    const Cenarios lidos =
        LeCenarios(u"# demo\r\n\r\n1005=rejeita 778 item 3\r\n"
                   "padrao=autoriza atraso 2\nabc=autoriza\n1006\n=autoriza\n"_s);
    ASSERT_EQ(lidos.porNumero.size(), 1);
    EXPECT_EQ(lidos.porNumero.value(1005).codigo, 778);
    ASSERT_TRUE(lidos.padrao.has_value());
    EXPECT_EQ(lidos.padrao->atrasoPassagens, 2);
    EXPECT_EQ(lidos.erros.size(), 3);
    EXPECT_TRUE(lidos.erros.first().startsWith(u"linha 5: "_s));
}

} // namespace
} // namespace uninfesim
