#include "emission/EmiteNfceImprime.h"
#include "storage/ErroExecucao.h"
#include "support/LojaComUniNfe.h"

namespace nfce::teste {
namespace {

using namespace Qt::StringLiterals;

class EmiteNfceImprimeTest : public LojaComUniNfe {
protected:
    // NFC-e 1001 is cupom 77 from quote 40; the sale whose cupom is 1001 has NFC-e 2002.
    void Prepara() {
        Executa(u"DELETE FROM vendas"_s);
        Executa(u"DELETE FROM itens"_s);
        Executa(u"DELETE FROM orcamento"_s);
        Venda(1001, 77);
        Venda(2002, 1001);
        Executa(u"INSERT INTO orcamento (cupom) VALUES (40)"_s);
        s->painel.lblData = u"15/11/2026"_s;
        s->painel.lblHora = u"10:20:30"_s;
        s->venda.NumCupom = 77;
        s->venda.NumNfce = 1001;
        s->venda.NumOrcamento = 40;
        ambiente.programasIniciados.clear();
        ambiente.mensagens.clear();
    }
};

// Emission type, printing, from a quote; then printed, tempo of the row whose cupom is 1001,
// and the quote marked as emitted.
TEST_P(EmiteNfceImprimeTest, RamoDeContingencia) {
    const std::tuple<QString, bool, bool, bool, QString, QString> casos[] = {
        {u"9"_s, true, true, true, u"8"_s, u"S"_s},
        {u"9"_s, false, true, false, u"8"_s, u"S"_s},
        {u"9"_s, true, false, true, u"8"_s, u""_s},
        {u"1"_s, true, true, false, u"5"_s, u""_s},
    };
    for (const auto& [tipo, imprime, orcamento, impresso, tempoDoCupom1001, emitido] : casos) {
        SCOPED_TRACE(tipo.toStdString() + (imprime ? " imprime" : "") +
                     (orcamento ? " orcamento" : ""));
        Prepara();
        s->venda.TipoEmissao = tipo;
        s->venda.ImprimeCupom = imprime;
        s->venda.VendaOrcamento = orcamento;
        EmiteNfceImprime(*s, u"1001"_s);
        const QString chave = s->painel.LblMens01;
        ASSERT_EQ(chave.size(), 44);
        const QStringList danfe = {u"c:\\unimake\\uninfe\\uniDANFE.exe"_s,
                                   u"a="_s + pasta.caminho() +
                                       u"\\18123456000104\\Validar\\Validado\\"_s + chave +
                                       u"-nfe.xml"_s,
                                   u"t=nfce"_s};
        EXPECT_EQ(ambiente.programasIniciados, QList<QStringList>(impresso, danfe));
        EXPECT_EQ(Texto(u"SELECT tempo FROM vendas WHERE cupom = 1001"_s), tempoDoCupom1001);
        EXPECT_EQ(Coluna(u"tempo"_s, 1001), u"5"_s);
        EXPECT_EQ(Colunas(u"orcamento WHERE cupom = 40"_s, u"emitido,cupomnfce"_s),
                  emitido.isEmpty() ? u"|0"_s : u"S|1001"_s);
        EXPECT_TRUE(ambiente.mensagens.isEmpty());
    }
}

TEST_P(EmiteNfceImprimeTest, ErroDeConversaoAvisaENaoImprime) {
    Prepara();
    sim->DefineCenario(1001, uninfesim::Cenario::De(uninfesim::Desfecho::ErroConversao));
    s->venda.ImprimeCupom = true;
    EmiteNfceImprime(*s, u"1001"_s);
    ASSERT_EQ(ambiente.mensagens.size(), 1);
    EXPECT_EQ(ambiente.mensagens[0].titulo, u"Atenção"_s);
    EXPECT_TRUE(ambiente.mensagens[0].texto.startsWith(
        u"Cupom NFC-e : 001001\nNão Foi Emitido, Favor tentar reenviar e autorizar.\n"_s));
    EXPECT_EQ(s->venda.Mensagem, ambiente.mensagens[0].texto);
    EXPECT_TRUE(ambiente.programasIniciados.isEmpty());
    EXPECT_EQ(Texto(u"SELECT tempo FROM vendas WHERE cupom = 1001"_s), u"5"_s);
}

TEST_P(EmiteNfceImprimeTest, NumeroInvalidoVaiAoChamador) {
    Prepara();
    for (const QString& numero : {u""_s, u"abc"_s, u"0"_s, u"-3"_s})
        EXPECT_THROW(EmiteNfceImprime(*s, numero), ErroExecucao) << numero.toStdString();
    EXPECT_TRUE(ambiente.programasIniciados.isEmpty());
}

INSTANTIATE_TEST_SUITE_P(Motores, EmiteNfceImprimeTest, ::testing::ValuesIn(Motores()),
                         NomeDoMotor);

} // namespace
} // namespace nfce::teste
