#include "emission/EnviaTodos.h"
#include "support/LojaComUniNfe.h"

#include <QDir>

namespace nfce::teste {
namespace {

using namespace Qt::StringLiterals;
using uninfesim::Cenario;
using uninfesim::Desfecho;

class EnviaTodosTest : public LojaComUniNfe {};

// The sale's tempo and enviotime afterwards, the accountant's copy under the NFC-e number, and
// how LblMens03 begins.
TEST_P(EnviaTodosTest, DesfechoDeUmaVenda) {
    const std::tuple<Cenario, QString, bool, QString> casos[] = {
        {Cenario::De(Desfecho::Autoriza), u"1/1"_s, true, {}},
        {Cenario::De(Desfecho::Duplicidade), u"1/1"_s, false, {}},
        {Cenario::Rejeicao(778), u"0/1"_s, false, u"Erro: NCM"_s},
        {Cenario::De(Desfecho::ErroConversao), u"5/1"_s, false, {}},
        {Cenario::De(Desfecho::SemResposta), u"5/0"_s, false, {}},
    };
    int nfce = 1000;
    for (const auto& [cenario, estado, contabil, inicioDaLinha] : casos) {
        ++nfce; // a number of its own: UniNFe remembers what it authorised
        SCOPED_TRACE(nfce);
        Venda(nfce, 77);
        PoeNaFila({QString::number(nfce)});
        sim->DefineCenario(nfce, cenario);
        s->venda.TipoEmissao = u"1"_s;
        EnviaTodos(*s);
        EXPECT_EQ(Coluna(u"tempo"_s, nfce) + u'/' + Coluna(u"enviotime"_s, nfce), estado);
        EXPECT_EQ(Existe(u"CONTABILIDADE\\112026\\00000%1-procNFe.xml"_s.arg(nfce)), contabil);
        EXPECT_TRUE(s->painel.LblMens03.startsWith(inicioDaLinha))
            << s->painel.LblMens03.toStdString();
        EXPECT_TRUE(ambiente.mensagens.isEmpty());
    }
}

TEST_P(EnviaTodosTest, SegueAFilaAteUmDesfechoNaoFinal) {
    for (int n = 1001; n <= 1004; ++n)
        Venda(n, n - 924);
    sim->DefineCenario(1003, Cenario::Rejeicao(778));
    PoeNaFila({u"1001"_s, u"1002"_s, u"1003"_s, u"1004"_s});
    s->venda.TipoEmissao = u"1"_s;
    EnviaTodos(*s);
    EXPECT_EQ(Coluna(u"tempo"_s, 1001) + Coluna(u"tempo"_s, 1002) + Coluna(u"tempo"_s, 1003) +
                  Coluna(u"tempo"_s, 1004),
              u"1105"_s);
    EXPECT_TRUE(s->painel.TimerVendasAtivo);
    EXPECT_TRUE(ambiente.mensagens.isEmpty());
}

// A sale of the list without a date or a time is recorded as such and leaves the queue; the
// list goes on with the next number.
TEST_P(EnviaTodosTest, VendaSemDataOuHoraNaoParaALista) {
    for (const QString& coluna : {u"data"_s, u"hora"_s}) {
        SCOPED_TRACE(coluna.toStdString());
        Limpa();
        Venda(1001, 77);
        Venda(1002, 78);
        Executa(u"UPDATE vendas SET %1 = NULL WHERE nfce = 1001"_s.arg(coluna));
        PoeNaFila({u"1001"_s, u"1002"_s});
        s->venda.TipoEmissao = u"1"_s;
        EnviaTodos(*s);
        EXPECT_EQ(Coluna(u"tempo"_s, 1001) + u'/' + Coluna(u"enviotime"_s, 1001), u"0/1"_s);
        EXPECT_TRUE(Coluna(u"erro"_s, 1001).startsWith(u"Venda sem data ou hora"_s));
        EXPECT_EQ(Coluna(u"tempo"_s, 1002), u"1"_s);
        EXPECT_TRUE(ambiente.mensagens.isEmpty());
    }
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
        QDir(pasta.Caminho(u"18123456000104/Validar"_s)).entryList(QDir::Files).size();
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
    EXPECT_EQ(QDir(pasta.Caminho(u"18123456000104/Validar"_s)).entryList(QDir::Files).size(),
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
        QDir(pasta.Caminho(u"18123456000104/Validar/Validado"_s)).entryList(QDir::Files).isEmpty());
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
    EXPECT_EQ(Coluna(u"tempo"_s, 1001) + Coluna(u"tempo"_s, 1002), u"11"_s);
    EXPECT_TRUE(ambiente.mensagens.isEmpty()) << ambiente.mensagens.value(0).texto.toStdString();
}

INSTANTIATE_TEST_SUITE_P(Motores, EnviaTodosTest, ::testing::ValuesIn(Motores()), NomeDoMotor);

} // namespace
} // namespace nfce::teste
