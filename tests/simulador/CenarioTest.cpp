#include "Cenario.h"

#include <gtest/gtest.h>

namespace uninfesim {
namespace {

using namespace Qt::StringLiterals;

struct Caso {
    QString palavras;
    Desfecho desfecho;
    int codigo;
    int item;
    int passagens;
    int segundos;
    RespostaChave chave;
    std::optional<QString> motivo;
};

class PalavrasDoCenario : public ::testing::TestWithParam<Caso> {};

TEST_P(PalavrasDoCenario, SaoLidas) {
    const Caso& caso = GetParam();
    Cenario c;
    QString erro;
    ASSERT_TRUE(LeCenario(caso.palavras, c, erro)) << erro.toStdString();
    EXPECT_EQ(c.desfecho, caso.desfecho);
    EXPECT_EQ(c.codigo, caso.codigo);
    EXPECT_EQ(c.item, caso.item);
    EXPECT_EQ(c.atrasoPassagens, caso.passagens);
    EXPECT_EQ(c.atrasoSegundos, caso.segundos);
    EXPECT_EQ(c.chave, caso.chave);
    EXPECT_EQ(c.motivo, caso.motivo);
}

using D = Desfecho;
using R = RespostaChave;
INSTANTIATE_TEST_SUITE_P(
    Tabela, PalavrasDoCenario,
    ::testing::Values(
        Caso{u"autoriza"_s, D::Autoriza, 0, 1, 0, 0, R::Pedida, {}},
        Caso{u"rejeita 778 item 3"_s, D::Rejeita, 778, 3, 0, 0, R::Pedida, {}},
        Caso{u"REJEITA 383\titem 12 atraso 2"_s, D::Rejeita, 383, 12, 2, 0, R::Pedida, {}},
        Caso{u"duplicidade atraso 30s"_s, D::Duplicidade, 0, 1, 0, 30, R::Pedida, {}},
        Caso{u"duplicidade-chave chave-txt"_s, D::DuplicidadeChave, 0, 1, 0, 0, R::Texto, {}},
        Caso{u"erro-conversao sem-chave"_s, D::ErroConversao, 0, 1, 0, 0, R::Nenhuma, {}},
        Caso{u"rejeita-lote"_s, D::RejeitaLote, 225, 1, 0, 0, R::Pedida, {}},
        Caso{u"rejeita-lote 656 chave-zero"_s, D::RejeitaLote, 656, 1, 0, 0, R::Zero, {}},
        Caso{u"sem-resposta"_s, D::SemResposta, 0, 1, 0, 0, R::Pedida, {}},
        Caso{u"lote-recusado motivo Erro ao invocar o serviço 'x' | y; z"_s, D::LoteRecusado, 0, 1,
             0, 0, R::Pedida, u"Erro ao invocar o serviço 'x' | y; z"_s},
        Caso{u"rejeita 999 motivo"_s, D::Rejeita, 999, 1, 0, 0, R::Pedida, u""_s}));

TEST(Cenario, PalavrasRecusadas) {
    for (const QString& palavras :
         {u"rejeita"_s, u"rejeita 77"_s, u"rejeita abc"_s, u"autoriza rejeita 778"_s, u"item"_s,
          u"atraso x"_s, u"atraso -1"_s, u"autorizar"_s, u"\x01\x02|\""_s}) {
        Cenario c;
        QString erro;
        EXPECT_FALSE(LeCenario(palavras, c, erro)) << palavras.toStdString();
        EXPECT_FALSE(erro.isEmpty());
    }
}

TEST(Cenario, ArquivoComLinhasBoasRuinsEComentarios) {
    const Cenarios lidos = LeCenarios(u"# demo\r\n\r\n1005=rejeita 778 item 3\r\n"
                                      "padrao=autoriza atraso 2\n"
                                      "abc=autoriza\n1006\n1007=voa\n=autoriza\n"_s +
                                      QString(100000, u'9') + u"=autoriza\n"_s);
    ASSERT_EQ(lidos.porNumero.size(), 1);
    EXPECT_EQ(lidos.porNumero.value(1005).codigo, 778);
    ASSERT_TRUE(lidos.padrao.has_value());
    EXPECT_EQ(lidos.padrao->atrasoPassagens, 2);
    EXPECT_EQ(lidos.erros.size(), 5);
    EXPECT_TRUE(lidos.erros.first().startsWith(u"linha 5: "_s));
}

TEST(Cenario, ArquivoVazioOuBinario) {
    EXPECT_TRUE(LeCenarios(QString()).erros.isEmpty());
    QString binario;
    for (int i = 0; i < 512; ++i)
        binario.append(QChar(i % 256));
    const Cenarios lidos = LeCenarios(binario);
    EXPECT_TRUE(lidos.porNumero.isEmpty());
    EXPECT_FALSE(lidos.erros.isEmpty());
}

} // namespace
} // namespace uninfesim
