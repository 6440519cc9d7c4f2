#include "emission/EnviaTodos.h"
#include "emission/DesfechoDaJanela.h"
#include "emission/EmiteNfceImprime.h"
#include "emission/FilaPendentes.h"
#include "emission/Reenvio.h"
#include "storage/ErroExecucao.h"
#include "support/LojaComUniNfe.h"

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

// An empty list or an unknown number ends quietly, one not a number is shown. The list, rebuilt
// after each sale, goes on after a sale without a date or a time (recorded on it) and after a
// finished one, and stops at any other outcome; a click inside a wait starts a second call.
TEST_P(EnviaTodosTest, SegueAFilaAteUmDesfechoNaoFinal) {
    for (int n = 1001; n <= 1005; ++n)
        Venda(n, n - 924);
    for (const QString& numero : {QString(), u"999"_s, u"1001; DELETE FROM vendas"_s})
        Envia(numero.isEmpty() ? QStringList() : QStringList{numero});
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
    ASSERT_EQ(ambiente.mensagens.size(), 1) << ambiente.mensagens.value(1).texto.toStdString();
    EXPECT_EQ(ambiente.mensagens[0].titulo + ambiente.mensagens[0].texto.left(3), u"Atenção13\n"_s);
}

// The printing module offline (9): the validated XML printed when asked, the row whose cupom is
// the number marked 8, the quote marked emitted; online (1), or after a conversion error (shown),
// none of it. NFC-e 1001 is cupom 77 from quote 40; cupom 1001 is NFC-e 2002.
TEST_P(EnviaTodosTest, EmiteNfceImprimeNaContingencia) {
    // emission type, printing, from a quote, conversion error
    const std::tuple<QString, bool, bool, bool> casos[] = {{u"9"_s, true, true, false},
                                                           {u"9"_s, false, true, false},
                                                           {u"9"_s, true, false, false},
                                                           {u"1"_s, true, true, false},
                                                           {u"9"_s, true, true, true}};
    Executa(u"INSERT INTO orcamento (cupom) VALUES (40)"_s);
    s->painel.lblData = u"15/11/2026"_s;
    s->painel.lblHora = u"10:20:30"_s;
    for (const auto& [tipo, imprime, orcamento, falha] : casos) {
        Limpa();
        Executa(u"UPDATE orcamento SET emitido = '', cupomnfce = 0"_s);
        Venda(1001, 77);
        Venda(2002, 1001);
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
        EXPECT_EQ(ambiente.mensagens.size(), int(falha)) << tipo.toStdString() << imprime;
    }
    ASSERT_EQ(ambiente.mensagens.size(), 1);
    EXPECT_EQ(ambiente.mensagens[0].titulo, u"Atenção"_s);
    EXPECT_EQ(ambiente.mensagens[0].texto, s->venda.Mensagem);
    EXPECT_TRUE(s->venda.Mensagem.startsWith(
        u"Cupom NFC-e : 001001\nNão Foi Emitido, Favor tentar reenviar e autorizar.\n"_s));
    for (const QString& numero : {u""_s, u"abc"_s, u"0"_s})
        EXPECT_THROW(EmiteNfceImprime(*s, numero), ErroExecucao) << numero.toStdString();
}

class FilaPendentesTest : public Loja {
protected:
    // Sales numbered on from 101, cupom 200 less the number: "data, tempo, enviotime" each.
    void Vendas(const QStringList& linhas) {
        for (const QString& linha : linhas) {
            const int n = 101 + Conta(u"vendas"_s);
            Executa(u"INSERT INTO vendas (cupom, nfce, autorizacao, data, tempo, enviotime) "
                    "VALUES (%1, %2, '', %3)"_s.arg(QString::number(200 - n), QString::number(n),
                                                    linha));
        }
    }
    QString Envios() {
        QString envios;
        for (int nfce = 101; nfce <= 100 + Conta(u"vendas"_s); ++nfce)
            envios += Coluna(u"enviotime"_s, nfce);
        return envios;
    }
};

// Today's sales not finished, numbered, not sent and not authorised, by cupom; 0.01 s per sale
// copied and 0.01 s after them, the second routine 0.02 s first. With none, the list and the
// count stay as they were.
TEST_P(FilaPendentesTest, SoAsVendasDeHojeNaoEnviadasEmOrdemDeCupom) {
    for (const auto& [consulta, vazia, cheia] :
         {std::tuple(&ConsultaGrid, 0, 40), {&ConsultaGrid01, 20, 60}}) {
        Limpa();
        Vendas({u"'2026-11-14', '0', 0"_s});
        PoeNaFila({u"7"_s});
        s->painel.LblQuantCup = u"5"_s;
        for (const auto& [ms, fila] : {std::pair(vazia, u"7 5"_s), {cheia, u"104 103 102 3"_s}}) {
            s->painel.TimerVendasAtivo = false;
            const qint64 antes = ambiente.msAguardados();
            consulta(*s);
            EXPECT_EQ(ambiente.msAguardados() - antes, ms);
            EXPECT_EQ(Fila().join(u' ') + u' ' + s->painel.LblQuantCup, fila);
            EXPECT_TRUE(s->painel.TimerVendasAtivo);
            if (Conta(u"vendas"_s) > 1) continue;
            Vendas({u"'2026-11-15', '', 0"_s, u"'2026-11-15', '0', 0"_s, u"'2026-11-15', '9', 0"_s,
                    u"'2026-11-15', '1', 0"_s, u"'2026-11-15', '0', 1"_s, u"'2026-11-16', '0', 0"_s,
                    u"NULL, '0', 0"_s, u"'2026-11-15', '0', 0"_s, u"'2026-11-15', '0', 0"_s});
            Executa(u"UPDATE vendas SET autorizacao = '1312' WHERE nfce = 109"_s);
            Executa(u"UPDATE vendas SET nfce = 0 WHERE nfce = 110"_s);
        }
    }
}

// Sent sales back in the queue: by AtEnvioTime of any date (then a minute's wait, the list
// left as it was), by EnvioTime this month's up to today, by EnvioTime01 those from
// 01/06/2021; never a finished one, one without a number or one not sent.
TEST_P(FilaPendentesTest, PeriodoDeCadaReenvio) {
    Vendas({u"'2026-11-15', '0', 1"_s, u"'2026-11-01', '9', 1"_s, u"'2026-10-31', '', 1"_s,
            u"'2021-06-01', '0', 1"_s, u"'2021-05-31', '0', 1"_s, u"'2026-11-16', '0', 1"_s,
            u"NULL, '0', 1"_s, u"'2026-11-15', '1', 1"_s, u"'2026-11-15', '0', 0"_s,
            u"'2026-11-15', '0', 1"_s});
    Executa(u"UPDATE vendas SET autorizacao = '131' WHERE nfce = 101"_s);
    Executa(u"UPDATE vendas SET nfce = 0 WHERE nfce = 110"_s);
    PoeNaFila({u"7"_s});
    AtEnvioTime(*s);
    EXPECT_EQ(Envios() + Fila().join(u' '), u"0000000107"_s);
    EXPECT_EQ(ambiente.msAguardados(), 60000);
    EXPECT_EQ(s->fila.HoraReenvio, u"10:20"_s);
    EXPECT_TRUE(s->painel.TimerVendasAtivo);
    for (const auto& [reenvio, envios] :
         {std::pair(&EnvioTime, u"001111110"_s), {&EnvioTime01, u"000011110"_s}}) {
        Executa(u"UPDATE vendas SET enviotime = 1 WHERE nfce <> 109"_s);
        reenvio(*s, [] {});
        EXPECT_EQ(Envios(), envios);
    }
    EXPECT_EQ(Coluna(u"enviotime"_s, 0), u"1"_s);
}

// One round more than the sales counted, each sending in mode NC1, until the list is empty.
TEST_P(FilaPendentesTest, UmaRodadaAMaisQueAContagem) {
    for (const auto reenvio : {&EnvioTime, &EnvioTime01}) {
        for (int pendentes : {0, 1, 3}) {
            Executa(u"DELETE FROM vendas"_s);
            Vendas(QStringList(pendentes, u"'2026-11-15', '0', 1"_s));
            s->painel.LblQuantCup.clear();
            QStringList modos;
            reenvio(*s, [&] { // as EnviaTodos: the first listed sale ends finished
                modos.append(s->venda.ModoRetorno);
                Executa(u"UPDATE vendas SET tempo = '1', enviotime = 1 WHERE nfce = '%1'"_s.arg(
                    Fila().value(0)));
            });
            EXPECT_EQ(modos, QStringList(pendentes == 0 ? 0 : pendentes + 1, u"NC1"_s));
            EXPECT_EQ(Conta(u"vendas"_s, u"tempo <> '1'"_s), 0);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Motores, FilaPendentesTest, ::testing::ValuesIn(Motores()), NomeDoMotor);
INSTANTIATE_TEST_SUITE_P(Motores, EnviaTodosTest, ::testing::ValuesIn(Motores()), NomeDoMotor);

} // namespace
} // namespace nfce::teste
