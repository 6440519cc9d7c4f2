#include "emission/EnviaTodos.h"
#include "emission/DesfechoDaJanela.h"
#include "emission/EmiteNfceImprime.h"
#include "storage/ErroExecucao.h"
#include "support/LojaComUniNfe.h"

#include <QDir>

namespace nfce::teste {
namespace {

using namespace Qt::StringLiterals;
using uninfesim::Cenario;
using uninfesim::Desfecho;

// Final for the window's sending only the exact texts; the list's takes "Erro ao invocar" too.
TEST(DesfechoDaJanela, SoOsTextosExatos) {
    for (const QString& d :
         {u"100 - Autorizado o uso da NF-e"_s, u"Autorizado o uso da NF-e"_s,
          u"Rejeição Duplicidade de Cupom NFC-e"_s, u"Duplicidade de Cupom NFC-e"_s})
        EXPECT_TRUE(DesfechoFinal(d, false) && DesfechoFinal(d, true)) << d.toStdString();
    for (const QString& d :
         {u"Autorizado o uso da NF-e "_s, u" Erro ao invocar"_s, u"ERRO AO INVOCAR O SERVIÇO"_s})
        EXPECT_FALSE(DesfechoFinal(d, false) || DesfechoFinal(d, true)) << d.toStdString();
    const QString invocar = u"Erro ao invocar o serviço"_s;
    EXPECT_TRUE(!DesfechoFinal(invocar, false) && DesfechoFinal(invocar, true));
}

class EnviaTodosTest : public LojaComUniNfe {
protected:
    // The list `numeros` sent, online unless the window left offline.
    void Envia(const QStringList& numeros, const QString& tipo = u"1"_s) {
        PoeNaFila(numeros);
        s->venda.TipoEmissao = tipo;
        EnviaTodos(*s);
    }
    QString Estados(int de, int ate) {
        QString estados;
        for (int nfce = de; nfce <= ate; ++nfce)
            estados += Coluna(u"tempo"_s, nfce) + u'/' + Coluna(u"enviotime"_s, nfce) + u' ';
        return estados.trimmed();
    }
};

// Each outcome of one sale: its row, the accountant's copy, how LblMens03 begins.
TEST_P(EnviaTodosTest, DesfechoDeUmaVenda) {
    const std::tuple<Cenario, QString, bool, QString> casos[] = {
        {Cenario::De(Desfecho::Autoriza), u"1/1"_s, true, {}},
        {Cenario::De(Desfecho::Duplicidade), u"1/1"_s, false, {}},
        {Cenario::Rejeicao(778), u"0/1"_s, false, u"Erro: NCM"_s},
        {Cenario::De(Desfecho::ErroConversao), u"5/1"_s, false, {}},
        {Cenario::De(Desfecho::SemResposta), u"5/0"_s, false, {}}};
    int nfce = 1000;
    for (const auto& [cenario, estado, contabil, inicioDaLinha] : casos) {
        SCOPED_TRACE(++nfce); // a number of its own: UniNFe remembers what it authorised
        Venda(nfce, 77);
        sim->DefineCenario(nfce, cenario);
        Envia({QString::number(nfce)});
        EXPECT_EQ(Estados(nfce, nfce), estado);
        EXPECT_EQ(Existe(u"CONTABILIDADE\\112026\\00000%1-procNFe.xml"_s.arg(nfce)), contabil);
        EXPECT_TRUE(s->painel.LblMens03.startsWith(inicioDaLinha));
        EXPECT_TRUE(ambiente.mensagens.isEmpty());
    }
}

// The list, rebuilt from the rows after each sale, goes on after a sale without a date or a
// time (recorded on it) and after a finished one, and stops at the first other outcome. A
// click inside a wait starts a second call over the same list and state.
TEST_P(EnviaTodosTest, SegueAFilaAteUmDesfechoNaoFinal) {
    for (int n = 1001; n <= 1005; ++n)
        Venda(n, n - 924);
    Executa(u"UPDATE vendas SET data = NULL WHERE nfce = 1001"_s);
    Executa(u"UPDATE vendas SET hora = NULL WHERE nfce = 1003"_s);
    sim->DefineCenario(1004, Cenario::Rejeicao(778));
    bool clicou = false;
    ambiente.Agenda(ambiente.Monotonico() + 1500, [&] {
        clicou = true;
        EnviaTodos(*s);
    });
    Envia({u"1001"_s, u"1002"_s});
    EXPECT_TRUE(clicou);
    EXPECT_EQ(Estados(1001, 1005), u"0/1 1/1 0/1 0/1 5/0"_s);
    EXPECT_TRUE(Coluna(u"erro"_s, 1001).startsWith(u"Venda sem data ou hora"_s));
    EXPECT_TRUE(s->painel.TimerVendasAtivo);
    EXPECT_TRUE(ambiente.mensagens.isEmpty()) << ambiente.mensagens.value(0).texto.toStdString();
}

// Offline first, UniNFe only validates the document; marked as contingency or as failed, the
// next call hands that validated XML to Envio instead of generating it again.
TEST_P(EnviaTodosTest, ReenviaOXmlValidado) {
    Venda(1001, 77);
    Envia({u"1001"_s}, u"9"_s);
    ASSERT_TRUE(Existe(u"Validar\\Validado\\"_s + Coluna(u"chave"_s, 1001) + u"-nfe.xml"_s));
    const QStringList gerados = QDir(NaEmpresa(u"Validar"_s)).entryList(QDir::Files);
    for (const QString& marca :
         {u"tempo = '9'"_s, u"tempo = '8'"_s, u"erro = 'ERRO AO INVOCAR'"_s}) {
        Executa(u"UPDATE vendas SET tempo = '5', erro = '', enviotime = 0, "_s + marca);
        Envia({u"1001"_s});
        EXPECT_EQ(Coluna(u"tempo"_s, 1001), u"1"_s) << marca.toStdString();
        EXPECT_EQ(QDir(NaEmpresa(u"Validar"_s)).entryList(QDir::Files), gerados);
    }
    EXPECT_TRUE(ambiente.mensagens.isEmpty());
}

// An empty list or an unknown number ends quietly; a number that is not one is shown, unused.
TEST_P(EnviaTodosTest, FilaVaziaDesconhecidaOuInvalida) {
    Venda(1001, 77, u"1"_s);
    for (const QString& numero : {QString(), u"1001"_s, u"999"_s, u"1001; DELETE FROM vendas"_s})
        Envia(numero.isEmpty() ? QStringList() : QStringList{numero});
    ASSERT_EQ(ambiente.mensagens.size(), 1);
    EXPECT_EQ(ambiente.mensagens[0].titulo, u"Atenção"_s);
    EXPECT_TRUE(ambiente.mensagens[0].texto.startsWith(u"13\n"_s));
    EXPECT_EQ(Conta(u"vendas"_s), 1);
}

// The printing module. Offline contingency (9): the validated XML printed when asked, the row
// whose cupom is the number marked 8, the quote marked emitted with it; online (1), or after a
// conversion error (shown), none of it. NFC-e 1001 is cupom 77 from quote 40; cupom 1001 is
// NFC-e 2002.
TEST_P(EnviaTodosTest, EmiteNfceImprimeNaContingencia) {
    // emission type, printing, from a quote, conversion error
    const std::tuple<QString, bool, bool, bool> casos[] = {{u"9"_s, true, true, false},
                                                           {u"9"_s, false, true, false},
                                                           {u"9"_s, true, false, false},
                                                           {u"1"_s, true, true, false},
                                                           {u"9"_s, true, true, true}};
    for (const auto& [tipo, imprime, orcamento, falha] : casos) {
        Limpa();
        Executa(u"DELETE FROM orcamento"_s);
        Executa(u"INSERT INTO orcamento (cupom) VALUES (40)"_s);
        Venda(1001, 77);
        Venda(2002, 1001);
        s->painel.lblData = u"15/11/2026"_s;
        s->painel.lblHora = u"10:20:30"_s;
        EstadoVenda& v = s->venda;
        std::tie(v.NumCupom, v.NumNfce, v.NumOrcamento) = std::tuple(77, 1001, 40);
        std::tie(v.TipoEmissao, v.ImprimeCupom, v.VendaOrcamento) =
            std::tie(tipo, imprime, orcamento);
        ambiente.programasIniciados.clear();
        if (falha) sim->DefineCenario(1001, Cenario::De(Desfecho::ErroConversao));
        EmiteNfceImprime(*s, u"1001"_s);
        const bool marca = tipo == u"9"_s && !falha;
        const QString xml = u"\\18123456000104\\Validar\\Validado\\"_s + s->painel.LblMens01;
        const QStringList danfe = {u"c:\\unimake\\uninfe\\uniDANFE.exe"_s,
                                   u"a="_s + pasta.caminho() + xml + u"-nfe.xml"_s, u"t=nfce"_s};
        EXPECT_EQ(ambiente.programasIniciados, QList<QStringList>(marca && imprime, danfe));
        EXPECT_EQ(Texto(u"SELECT tempo FROM vendas WHERE cupom = 1001"_s) +
                      Coluna(u"tempo"_s, 1001),
                  marca ? u"85"_s : u"55"_s);
        EXPECT_EQ(Colunas(u"orcamento WHERE cupom = 40"_s, u"emitido,cupomnfce"_s),
                  marca && orcamento ? u"S|1001"_s : u"|0"_s);
        EXPECT_EQ(ambiente.mensagens.size(), int(falha))
            << tipo.toStdString() << imprime << orcamento;
    }
    ASSERT_EQ(ambiente.mensagens.size(), 1);
    EXPECT_EQ(ambiente.mensagens[0].titulo, u"Atenção"_s);
    EXPECT_TRUE(ambiente.mensagens[0].texto.startsWith(
        u"Cupom NFC-e : 001001\nNão Foi Emitido, Favor tentar reenviar e autorizar.\n"_s));
    EXPECT_EQ(s->venda.Mensagem, ambiente.mensagens[0].texto);
    for (const QString& numero : {u""_s, u"abc"_s, u"0"_s})
        EXPECT_THROW(EmiteNfceImprime(*s, numero), ErroExecucao) << numero.toStdString();
}

INSTANTIATE_TEST_SUITE_P(Motores, EnviaTodosTest, ::testing::ValuesIn(Motores()), NomeDoMotor);

} // namespace
} // namespace nfce::teste
