#include "emission/ArmadilhaEnvio.h"
#include "emission/DesfechoDaJanela.h"
#include "emission/EmiteNfceImprime.h"
#include "emission/EnviaPendentes.h"
#include "emission/EnviaTodos.h"
#include "emission/FilaPendentes.h"
#include "emission/Reenvio.h"
#include "storage/ErroExecucao.h"
#include "support/Avisos.h"
#include "support/LojaComUniNfe.h"
#include "support/MariaDbPrivado.h"

#include <QDir>
#include <functional>
#include <memory>
#include <stdexcept>

namespace nfce::teste {
namespace {

using namespace Qt::StringLiterals;
using uninfesim::Cenario;
using uninfesim::Desfecho;

TEST(ArmadilhaEnvio, ErrosQueEncerramEmSilencio) {
    for (int n : {0, 13, 20, 28, 55, 70, 76, 91, 3021, 3036, 3265, 3704})
        EXPECT_TRUE(ErroSilencioso(n)) << n;
    for (int n : {5, 6, 11, 53, 75, 3022, -2147467259})
        EXPECT_FALSE(ErroSilencioso(n)) << n;
}

// Final: the exact texts for the window's sending, also "Erro ao invocar" for the list's.
TEST(DesfechoDaJanela, SoOsTextosExatos) {
    const std::tuple<QString, bool, bool> casos[] = {
        {u"100 - Autorizado o uso da NF-e"_s, 1, 1},      {u"Autorizado o uso da NF-e"_s, 1, 1},
        {u"Rejeição Duplicidade de Cupom NFC-e"_s, 1, 1}, {u"Duplicidade de Cupom NFC-e"_s, 1, 1},
        {u"Autorizado o uso da NF-e "_s, 0, 0},           {u" Erro ao invocar"_s, 0, 0},
        {u"ERRO AO INVOCAR O SERVIÇO"_s, 0, 0},           {u"Erro ao invocar o serviço"_s, 0, 1}};
    for (const auto& [d, janela, lista] : casos)
        EXPECT_TRUE(DesfechoFinal(d, false) == janela && DesfechoFinal(d, true) == lista)
            << d.toStdString();
}

class EnvioTest : public LojaComUniNfe {
protected:
    void Pendente(int nfce, const QString& cenario = u"autoriza"_s, int cupom = 0) {
        Venda(nfce, cupom ? cupom : nfce);
        uninfesim::Cenario c;
        QString erro;
        ASSERT_TRUE(uninfesim::LeCenario(cenario, c, erro)) << erro.toStdString();
        sim->DefineCenario(nfce, c);
    }
    QString Estados(int de, int ate) {
        QStringList estados;
        for (int nfce = de; nfce <= ate; ++nfce)
            estados << Coluna(u"tempo,enviotime"_s, nfce);
        return estados.join(u' ');
    }
    // The outcomes by NFC-e, and their order in `ordem`.
    QHash<QString, DesfechoDaVenda> Passa() {
        QHash<QString, DesfechoDaVenda> desfechos;
        EnviaPendentes(*s, [&](const DesfechoDaVenda& d) {
            ordem << d.nfce;
            desfechos.insert(d.nfce, d);
        });
        return desfechos;
    }
    void Envia(const QStringList& numeros, const QString& tipo = u"1"_s) {
        PoeNaFila(numeros);
        s->venda.TipoEmissao = tipo;
        EnviaTodos(*s);
    }
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
    QStringList ordem;
};

// Each answer in one pass over the unsent sales with a number, by cupom.
TEST_P(EnvioTest, CadaDesfechoNumaPassagem) {
    Venda(0, 1);
    Venda(2001, 2, u"1"_s);
    Venda(2002, 3, u"0"_s);
    Executa(u"UPDATE vendas SET enviotime = 1 WHERE nfce = 2002"_s);
    const std::tuple<int, QString, QString, QString> casos[] = {
        {1001, u"autoriza"_s, u"1|1"_s, u"Autorizado"_s},
        {1002, u"rejeita 778"_s, u"0|1"_s, u"NCM"_s},
        {1003, u"duplicidade"_s, u"1|1"_s, u"Autorizado"_s},
        {1004, u"duplicidade-chave"_s, u"1|1"_s, u"Autorizado"_s},
        {1005, u"erro-conversao"_s, u"5|1"_s, {}},
        {1006, u"lote-recusado"_s, u"0|0"_s, {}},
        {1007, u"sem-resposta"_s, u"5|0"_s, {}}};
    for (const auto& [nfce, cenario, estado, texto] : casos)
        Pendente(nfce, cenario, 2000 - nfce);
    // Whatever the window left, this sender neither emits a rejected sale again nor prints.
    std::tie(s->venda.ModoRetorno, s->venda.TipoEmissao, s->venda.ImprimeCupom) =
        std::tuple(u"VENDA"_s, u"9"_s, true);
    InstalaReemissao(*s);
    const auto desfechos = Passa();
    EXPECT_EQ(ordem.join(u' '), u"1007 1006 1005 1004 1003 1002 1001"_s);
    for (const auto& [nfce, cenario, estado, texto] : casos) {
        const DesfechoDaVenda d = desfechos.value(QString::number(nfce));
        EXPECT_EQ(d.finalizada, estado == u"1|1"_s) << d.texto.toStdString();
        EXPECT_TRUE(d.texto.contains(texto)) << d.texto.toStdString();
        EXPECT_EQ(Estados(nfce, nfce), estado) << cenario.toStdString();
    }
    EXPECT_TRUE(ambiente.mensagens.isEmpty() && ambiente.programasIniciados.isEmpty());
    EXPECT_FALSE(s->envio.Pendentes.Aberto());
    EXPECT_TRUE(Existe(u"CONTABILIDADE/112026/000001001-procNFe.xml"_s));
    EXPECT_TRUE( // 539: authorised under this sending's key, left for the situation query
        Existe(u"Enviado/EmProcessamento/"_s + Coluna(u"chave"_s, 1004) + u"-nfe.xml"_s));
}

// The first of two sales meets a bad row, a bad answer or a fault: the sale's own stays with it;
// a file in a folder's way ends the pass silently (76); a full disk ends it.
TEST_P(EnvioTest, UmaVendaRuimOuUmaFalha) {
    // row change, path blocked or scenario; fault; reported; messages; in its erro; both states
    using Caso = std::tuple<QString, std::function<void()>, QString, int, QString, QString>;
    const auto daVenda = [] { throw ErroDaVenda(ErroArgumentoInvalido, u"Venda sem itens"_s); };
    const auto disco = [] { throw ErroExecucao(ErroDiscoCheio, u"Disco cheio"_s); };
    const QString txt = u"Validar/000000#_18123456000104_001_15_11_2026-nfe.txt"_s;
    const Caso casos[] = {
        {u"vendas SET hora = NULL"_s, {}, {}, 0, u"Venda sem hora"_s, u"0|1 1|1"_s},
        {u"chave-falsa {outra}"_s, {}, {}, 0, u"chave inválida"_s, u"5|0 1|1"_s},
        {u"protocolo-chave {outra}"_s, {}, {}, 0, {}, u"5|0 1|1"_s},
        {u"Envio"_s, {}, u"erro 76 Caminho não encontrado"_s, 0, {}, u"5|0 5|0"_s},
        {txt, {}, u"75\nErro de acesso ao caminho/arquivo"_s, 1, {}, u"5|0 1|1"_s},
        {u"Envio/0000000#-gerar-chave.xml"_s, {}, u"75\n"_s, 1, {}, u"1|1 1|1"_s},
        {{}, daVenda, {}, 0, u"Venda sem itens"_s, u"0|1 1|1"_s},
        {{}, disco, u"interrompido: erro 61"_s, 1, u"Disco cheio"_s, u"5|0 5|0"_s}};
    int n = 100;
    for (const auto& [c, falha, relatado, mensagens, erro, estados] : casos) {
        n += 10; // "#": the first sale's NFC-e; {outra}: an earlier sale's key
        const QString caso = QString(c)
                                 .replace(u"#"_s, QString::number(n + 1))
                                 .replace(u"{outra}"_s, Coluna(u"chave"_s, 112));
        SCOPED_TRACE(caso.toStdString());
        const bool sql = caso.contains(u" SET "_s);
        const bool bloqueio = caso.startsWith(u"Envio"_s) || caso.startsWith(u"Validar"_s);
        NovoServidor();
        Pendente(n + 1, sql || bloqueio || caso.isEmpty() ? u"autoriza"_s : caso);
        Pendente(n + 2);
        if (sql) Executa(u"UPDATE %1 WHERE nfce = %2"_s.arg(caso).arg(n + 1));
        if (bloqueio && caso.contains(u'.'))
            QDir().mkpath(NaEmpresa(caso));
        else if (bloqueio && QDir(NaEmpresa(caso)).removeRecursively())
            Grava(caso, "not a folder");
        ambiente.mensagens.clear();
        ambiente.registro.clear();
        bool falhou = false;
        const int gancho = ambiente.AoBombear([&] {
            if (falhou || !falha || s->venda.NumNfce != n + 1 || s->painel.LblMens02.isEmpty())
                return;
            falhou = true;
            falha();
        });
        Passa();
        ambiente.RemoveGancho(gancho);
        const QString relato = ambiente.registro.join(u'\n') + ambiente.mensagens.value(0).texto;
        EXPECT_TRUE(relato.contains(relatado) &&
                    (!bloqueio || relato.contains(QDir::toNativeSeparators(NaEmpresa(caso)))))
            << relato.toStdString();
        EXPECT_EQ(ambiente.mensagens.size(), mensagens);
        EXPECT_EQ(ambiente.mensagens.value(0).titulo, mensagens ? u"Atenção *"_s : QString());
        EXPECT_TRUE(Coluna(u"erro"_s, n + 1).contains(erro));
        EXPECT_EQ(Estados(n + 1, n + 2), estados);
        if (bloqueio && QFile::remove(NaEmpresa(caso))) QDir().mkpath(NaEmpresa(caso));
        Executa(u"UPDATE vendas SET enviotime = 1"_s); // out of the next case's pass
    }
}

// A database server of the suite's own, which it kills.
class BancoMorto : public EnvioTest {
protected:
    static void TearDownTestSuite() { servidor.reset(); }
    void SetUp() override {
        if (qEnvironmentVariable("NFCE_MARIADB").isEmpty() || !MariaDbPrivado::Disponivel())
            GTEST_SKIP() << "needs NFCE_MARIADB and mariadbd";
        if (!servidor) servidor = std::make_unique<MariaDbPrivado>();
        ASSERT_TRUE(servidor->Inicia()) << servidor->erro().toStdString();
        EnvioTest::SetUp();
    }
    void TearDown() override { // up again, to drop the databases
        if (servidor && !IsSkipped()) servidor->Inicia();
        EnvioTest::TearDown();
    }
    QString ServidorMariaDb() const override { return servidor->endereco(); }
    bool Autorizada(const QString& chave) const {
        return !chave.isEmpty() &&
               Existe(u"ENVIADO/Autorizados/112026/"_s + chave + u"-procNFe.xml"_s);
    }
    // The finished sales, "?" after one UniNFe did not authorise; on a reopened connection.
    QString Finalizadas() {
        s->conexoes.ReabreConexao();
        Registros rs;
        s->conexoes.AbreConsulta(rs, u"SELECT * FROM vendas WHERE tempo = '1' ORDER BY nfce"_s);
        QString achadas;
        for (; !rs.Eof(); rs.MoveNext())
            achadas += rs.Texto(u"nfce"_s) + (Autorizada(rs.Texto(u"chave"_s)) ? u" "_s : u"? "_s);
        return achadas.trimmed();
    }
    static inline std::unique_ptr<MariaDbPrivado> servidor;
};

// Killed while an authorised sale is not yet recorded: the operator is told, nothing unauthorised
// is finished, and with the server back every sale finishes, the unrecorded one as a duplicate.
TEST_P(BancoMorto, NenhumaVendaPerdidaNemFinalizadaSemAutorizacao) {
    for (int n = 1; n <= 4; ++n)
        Venda(n, n);
    AvisosEsperados avisos; // the ODBC driver's, about the connection gone
    qint64 morte = -1;
    const int gancho = ambiente.AoBombear([&] {
        if (morte >= 0 && ambiente.Monotonico() - morte > 3600 * 1000)
            throw std::runtime_error("the pass never ends once the server is dead");
        if (morte < 0 && s->venda.NumNfce == 2 && Autorizada(s->painel.LblMens01) &&
            servidor->Mata())
            morte = ambiente.Monotonico();
    });
    Passa();
    ambiente.RemoveGancho(gancho);
    ASSERT_GE(morte, 0) << servidor->erro().toStdString();
    EXPECT_FALSE(ambiente.mensagens.isEmpty());
    ASSERT_TRUE(servidor->Inicia()) << servidor->erro().toStdString();
    EXPECT_EQ(Finalizadas(), u"1"_s);
    EXPECT_TRUE(Passa().value(u"2"_s).finalizada);
    EXPECT_EQ(Finalizadas(), u"1 2 3 4"_s);
}

// An empty list or an unknown number ends quietly, one not a number is shown. The list, rebuilt
// after each sale, goes on after a finished one or one without date or time, stops at any other.
// A call that failed leaves the sale for the resend; any other final outcome finishes it.
TEST_P(EnvioTest, SoErroAoInvocarNaoFinaliza) {
    Venda(301, 301);
    Venda(302, 302);
    ConcluiVenda(*s, {}, 301, u"Erro ao invocar o serviço"_s);
    ConcluiVenda(*s, {}, 302, u"Autorizado o uso da NF-e"_s);
    EXPECT_EQ(Estados(301, 302), u"5|1 1|1"_s);
}

TEST_P(EnvioTest, SegueAFilaAteUmDesfechoNaoFinal) {
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
    EXPECT_EQ(Estados(1001, 1005), u"0|1 1|1 0|1 0|1 5|0"_s);
    EXPECT_TRUE(Coluna(u"erro"_s, 1001).startsWith(u"Venda sem data ou hora"_s));
    EXPECT_TRUE(s->painel.TimerVendasAtivo);
    EXPECT_EQ(ambiente.mensagens.size(), 1) << ambiente.mensagens.value(1).texto.toStdString();
}

// Offline (9): the XML printed when asked, the row whose cupom is the number marked 8, the quote
// emitted; online, or after a conversion error, none. Cupom 1001 is NFC-e 2002.
TEST_P(EnvioTest, EmiteNfceImprimeNaContingencia) {
    // emission type, printing, from a quote, conversion error
    const std::tuple<QString, bool, bool, bool> casos[] = {{u"9"_s, 1, 1, 0},
                                                           {u"9"_s, 0, 1, 0},
                                                           {u"9"_s, 1, 0, 0},
                                                           {u"1"_s, 1, 1, 0},
                                                           {u"9"_s, 1, 1, 1}};
    Executa(u"INSERT INTO orcamento (cupom) VALUES (40)"_s);
    std::tie(s->painel.lblData, s->painel.lblHora) = std::tuple(u"15/11/2026"_s, u"10:20:30"_s);
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
    for (const QString& numero : {u""_s, u"abc"_s, u"0"_s})
        EXPECT_THROW(EmiteNfceImprime(*s, numero), ErroExecucao) << numero.toStdString();
}

// Today's unfinished, numbered, unsent, unauthorised sales by cupom; 0.01 s a sale and after,
// the second routine 0.02 s first. With none, list and count stay.
TEST_P(EnvioTest, SoAsVendasDeHojeNaoEnviadasEmOrdemDeCupom) {
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

// Sent sales back in the queue: AtEnvioTime any date (then a minute's wait), EnvioTime this
// month's to today, EnvioTime01 from 01/06/2021; never finished, unnumbered or unsent ones.
TEST_P(EnvioTest, PeriodoDeCadaReenvio) {
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
TEST_P(EnvioTest, UmaRodadaAMaisQueAContagem) {
    for (const auto reenvio : {&EnvioTime, &EnvioTime01}) {
        for (int pendentes : {0, 1, 3}) {
            Executa(u"DELETE FROM vendas"_s);
            Vendas(QStringList(pendentes, u"'2026-11-15', '0', 1"_s));
            s->painel.LblQuantCup.clear();
            QStringList modos;
            reenvio(*s, [&] { // as EnviaTodos: the first listed sale finishes
                modos.append(s->venda.ModoRetorno);
                Executa(u"UPDATE vendas SET tempo = '1', enviotime = 1 WHERE nfce = '%1'"_s.arg(
                    Fila().value(0)));
            });
            EXPECT_EQ(modos, QStringList(pendentes == 0 ? 0 : pendentes + 1, u"NC1"_s));
            EXPECT_EQ(Conta(u"vendas"_s, u"tempo <> '1'"_s), 0);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Motores, EnvioTest, ::testing::ValuesIn(Motores()), NomeDoMotor);
INSTANTIATE_TEST_SUITE_P(falhas, BancoMorto, ::testing::Values(Motor::MariaDb), NomeDoMotor);

} // namespace
} // namespace nfce::teste
