#include "emission/EnviaTodos.h"
#include "apoio/LojaComUniNfe.h"

#include <QDir>

namespace nfce::teste {
namespace {

using namespace Qt::StringLiterals;
using uninfesim::Cenario;
using uninfesim::Desfecho;

class EnviaTodosTest : public LojaComUniNfe {};

struct Caso {
    const char* nome;
    Cenario cenario;
    QString tempo; // of sale 1001 afterwards
    QString enviotime;
    bool contabil;         // the accountant's copy under the NFC-e number
    QString inicioDaLinha; // LblMens03 afterwards
};

TEST_P(EnviaTodosTest, DesfechoDeUmaVenda) {
    const Caso casos[] = {
        {"autoriza", Cenario::De(Desfecho::Autoriza), u"1"_s, u"1"_s, true, {}},
        {"duplicidade", Cenario::De(Desfecho::Duplicidade), u"1"_s, u"1"_s, false, {}},
        {"rejeita", Cenario::Rejeicao(778), u"0"_s, u"1"_s, false, u"Erro: NCM"_s},
        {"conversao", Cenario::De(Desfecho::ErroConversao), u"5"_s, u"1"_s, false, {}},
        {"sem resposta", Cenario::De(Desfecho::SemResposta), u"5"_s, u"0"_s, false, {}},
    };
    int nfce = 1000;
    for (const Caso& c : casos) {
        SCOPED_TRACE(c.nome);
        // A number of its own: UniNFe remembers what it authorised.
        ++nfce;
        Venda(nfce, 77);
        PoeNaFila({QString::number(nfce)});
        sim->DefineCenario(nfce, c.cenario);
        s->venda.TipoEmissao = u"1"_s;
        EnviaTodos(*s);
        EXPECT_EQ(Coluna(u"tempo"_s, nfce), c.tempo);
        EXPECT_EQ(Coluna(u"enviotime"_s, nfce), c.enviotime);
        EXPECT_EQ(
            Existe(u"CONTABILIDADE\\112026\\00000"_s + QString::number(nfce) + u"-procNFe.xml"_s),
            c.contabil);
        EXPECT_TRUE(s->painel.LblMens03.startsWith(c.inicioDaLinha))
            << s->painel.LblMens03.toStdString();
        EXPECT_TRUE(ambiente.mensagens.isEmpty());
    }
}

TEST_P(EnviaTodosTest, SegueAFilaAteUmDesfechoNaoFinal) {
    Venda(1001, 77);
    Venda(1002, 78);
    Venda(1003, 79);
    Venda(1004, 80);
    sim->DefineCenario(1003, Cenario::Rejeicao(778));
    PoeNaFila({u"1001"_s, u"1002"_s, u"1003"_s, u"1004"_s});
    s->venda.TipoEmissao = u"1"_s;
    EnviaTodos(*s);
    EXPECT_EQ(Coluna(u"tempo"_s, 1001), u"1"_s);
    EXPECT_EQ(Coluna(u"tempo"_s, 1002), u"1"_s);
    EXPECT_EQ(Coluna(u"tempo"_s, 1003), u"0"_s);
    EXPECT_EQ(Coluna(u"tempo"_s, 1004), u"5"_s);
    EXPECT_TRUE(s->painel.TimerVendasAtivo);
    EXPECT_TRUE(ambiente.mensagens.isEmpty());
}

// Offline first: the window's generator leaves the document in Validar, UniNFe only validates
// it. Marked as contingency (tempo 9), the next call hands the validated XML to Envio.
TEST_P(EnviaTodosTest, ReenviaOXmlValidado) {
    Venda(1001, 77);
    PoeNaFila({u"1001"_s});
    EnviaTodos(*s);
    const QString chave = Coluna(u"chave"_s, 1001);
    ASSERT_EQ(chave.size(), 44);
    EXPECT_TRUE(Existe(u"Validar\\Validado\\"_s + chave + u"-nfe.xml"_s));
    EXPECT_EQ(Coluna(u"tempo"_s, 1001), u"5"_s);
    const int gerados =
        QDir(pasta.Caminho(u"18123456000190/Validar"_s)).entryList(QDir::Files).size();
    for (const QString& marca :
         {u"tempo = '9'"_s, u"tempo = '8'"_s, u"erro = 'ERRO AO INVOCAR'"_s}) {
        SCOPED_TRACE(marca.toStdString());
        Executa(u"UPDATE vendas SET tempo = '5', erro = '', enviotime = 0, "_s + marca);
        PoeNaFila({u"1001"_s});
        EnviaTodos(*s);
        EXPECT_EQ(Coluna(u"tempo"_s, 1001), u"1"_s);
        EXPECT_TRUE(ambiente.mensagens.isEmpty());
    }
    // Nothing was generated again.
    EXPECT_EQ(QDir(pasta.Caminho(u"18123456000190/Validar"_s)).entryList(QDir::Files).size(),
              gerados);
}

TEST_P(EnviaTodosTest, FilaVaziaDesconhecidaOuInvalida) {
    Venda(1001, 77, u"1"_s);
    for (const QStringList& fila : {QStringList{}, QStringList{u"1001"_s}, QStringList{u"999"_s}}) {
        PoeNaFila(fila);
        EnviaTodos(*s);
    }
    EXPECT_TRUE(ambiente.mensagens.isEmpty());
    for (const QString& numero : {u"1001; DELETE FROM vendas"_s, u"'"_s, QString(100000, u'9')}) {
        ambiente.mensagens.clear();
        PoeNaFila({numero});
        EnviaTodos(*s);
        ASSERT_EQ(ambiente.mensagens.size(), 1);
        EXPECT_EQ(ambiente.mensagens[0].titulo, u"Atenção"_s);
        EXPECT_TRUE(ambiente.mensagens[0].texto.startsWith(u"13\n"_s));
    }
    EXPECT_EQ(Conta(u"vendas"_s), 1);
}

// The rejection that the diagnosis answers by emitting again through the printing module,
// whose document UniNFe validates in Validar.
TEST_P(EnviaTodosTest, ReemissaoDeVendaTemFim) {
    Venda(1001, 77);
    PoeNaFila({u"1001"_s});
    sim->DefineCenario(1001, Cenario::Rejeicao(778));
    s->venda.TipoEmissao = u"1"_s;
    s->venda.ModoRetorno = u"VENDA"_s;
    EnviaTodos(*s);
    EXPECT_EQ(Coluna(u"tempo"_s, 1001), u"0"_s);
    EXPECT_FALSE(
        QDir(pasta.Caminho(u"18123456000190/Validar/Validado"_s)).entryList(QDir::Files).isEmpty());
    EXPECT_TRUE(ambiente.mensagens.isEmpty());
}

// A click inside a wait starts a second call over the same list and state.
TEST_P(EnviaTodosTest, ChamadaDentroDeUmaEspera) {
    Venda(1001, 77);
    Venda(1002, 78);
    PoeNaFila({u"1001"_s, u"1002"_s});
    s->venda.TipoEmissao = u"1"_s;
    bool clicou = false;
    ambiente.Agenda(ambiente.Monotonico() + 1500, [&] {
        clicou = true;
        EnviaTodos(*s);
    });
    EnviaTodos(*s);
    EXPECT_TRUE(clicou);
    EXPECT_EQ(Coluna(u"tempo"_s, 1001), u"1"_s);
    EXPECT_EQ(Coluna(u"tempo"_s, 1002), u"1"_s);
    EXPECT_TRUE(ambiente.mensagens.isEmpty()) << ambiente.mensagens.value(0).texto.toStdString();
}

INSTANTIATE_TEST_SUITE_P(Motores, EnviaTodosTest, ::testing::ValuesIn(Motores()), NomeDoMotor);

} // namespace
} // namespace nfce::teste
