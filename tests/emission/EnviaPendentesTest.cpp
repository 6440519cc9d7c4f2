#include "emission/EnviaPendentes.h"
#include "emission/ArmadilhaEnvio.h"
#include "emission/EmiteNfceImprime.h"
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

class EnviaPendentesTest : public LojaComUniNfe {
protected:
    // A pending sale that UniNFe answers as `cenario` says.
    void Pendente(int nfce, const QString& cenario = u"autoriza"_s, int cupom = 0) {
        Venda(nfce, cupom ? cupom : nfce);
        uninfesim::Cenario c;
        QString erro;
        ASSERT_TRUE(uninfesim::LeCenario(cenario, c, erro)) << erro.toStdString();
        sim->DefineCenario(nfce, c);
    }
    QString Estado(int n) {
        return Colunas(u"vendas WHERE nfce = %1"_s.arg(n), u"tempo,enviotime"_s);
    }
    // One pass: the outcome lines by NFC-e, and their order in `ordem`.
    QHash<QString, DesfechoDaVenda> Passa() {
        QHash<QString, DesfechoDaVenda> desfechos;
        EnviaPendentes(*s, [&](const DesfechoDaVenda& d) {
            ordem << d.nfce;
            desfechos.insert(d.nfce, d);
        });
        return desfechos;
    }
    QStringList ordem;
};

TEST(ArmadilhaEnvio, ErrosQueEncerramEmSilencio) {
    for (int n : {0, 13, 20, 28, 55, 70, 76, 91, 3021, 3036, 3265, 3704})
        EXPECT_TRUE(ErroSilencioso(n)) << n;
    for (int n : {5, 6, 11, 53, 75, 3022, -2147467259})
        EXPECT_FALSE(ErroSilencioso(n)) << n;
}

// Each answer UniNFe can give, in one pass over the pending sales with a number, by cupom: the
// outcome line, and the row after it.
TEST_P(EnviaPendentesTest, CadaDesfechoNumaPassagem) {
    Venda(0, 1);
    Venda(2001, 2, u"1"_s);
    Venda(2002, 3, u"0"_s);
    Executa(u"UPDATE vendas SET enviotime = 1 WHERE nfce = 2002"_s);
    const QString autorizado = u"Autorizado o uso da NF-e"_s;
    const std::tuple<int, QString, QString, QString> casos[] = {
        {1001, u"autoriza"_s, u"1|1"_s, autorizado},
        {1002, u"rejeita 778"_s, u"0|1"_s, u"NCM Inexistente"_s},
        {1003, u"duplicidade"_s, u"1|1"_s, autorizado},
        {1004, u"duplicidade-chave"_s, u"1|1"_s, autorizado},
        {1005, u"erro-conversao"_s, u"5|1"_s, QString()},
        {1006, u"lote-recusado"_s, u"0|0"_s, QString()},
        {1007, u"sem-resposta"_s, u"5|0"_s, QString()},
    };
    for (const auto& [nfce, cenario, estado, texto] : casos)
        Pendente(nfce, cenario, 2000 - nfce);
    // Whatever the window left, this sender neither emits a rejected sale again nor prints.
    s->venda.ModoRetorno = u"VENDA"_s;
    s->venda.TipoEmissao = u"9"_s;
    s->venda.ImprimeCupom = true;
    InstalaReemissao(*s);
    const auto desfechos = Passa();
    EXPECT_EQ(ordem.join(u' '), u"1007 1006 1005 1004 1003 1002 1001"_s);
    for (const auto& [nfce, cenario, estado, texto] : casos) {
        const DesfechoDaVenda d = desfechos.value(QString::number(nfce));
        EXPECT_EQ(d.finalizada, estado == u"1|1"_s) << d.texto.toStdString();
        EXPECT_TRUE(d.texto.contains(texto)) << d.texto.toStdString();
        EXPECT_EQ(Estado(nfce), estado) << cenario.toStdString();
    }
    EXPECT_TRUE(ambiente.mensagens.isEmpty() && ambiente.programasIniciados.isEmpty());
    EXPECT_FALSE(s->envio.Pendentes.Aberto());
    EXPECT_TRUE(Existe(u"CONTABILIDADE/112026/000001001-procNFe.xml"_s));
    // 539: authorised under this sending's key, its document left for the situation query
    EXPECT_TRUE(Existe(u"Enviado/EmProcessamento/"_s + Coluna(u"chave"_s, 1004) + u"-nfe.xml"_s));
}

// Stopped after UniNFe filed the authorised XML, before the row was written: sent again, the
// sale is a duplicate and takes SEFAZ's protocol and the accountant's copy from that XML.
TEST_P(EnviaPendentesTest, DuplicidadeDepoisDeUmaQueda) {
    Pendente(3101);
    Passa();
    const QString protocolo = Coluna(u"autorizacao"_s, 3101);
    Executa(u"UPDATE vendas SET tempo = '', enviotime = 0, autorizacao = '', xml = ''"_s);
    QFile::remove(NaEmpresa(u"CONTABILIDADE/112026/000003101-procNFe.xml"_s));
    EXPECT_TRUE(Passa().value(u"3101"_s).finalizada);
    EXPECT_EQ(Coluna(u"autorizacao"_s, 3101), protocolo);
    EXPECT_TRUE(Existe(u"CONTABILIDADE/112026/000003101-procNFe.xml"_s));
}

// The first of two sales meets a bad row, a bad answer or a fault: what is the sale's own stays
// with it; a file in a folder's way ends the pass silently (76), a folder in a file's way (root
// writes through any permission) is shown (75); a full disk or a read-only database end it.
TEST_P(EnviaPendentesTest, UmaVendaRuimOuUmaFalha) {
    struct Caso {
        QString caso; // a change to the first sale's row, a path blocked, or its answer's scenario
        std::function<void()> falha; // once the first sale is being handled
        QString relato;              // in the log or the message
        int mensagens;
        QString erro; // part of the first sale's erro
        QString estados;
    };
    const auto daVenda = [] { throw ErroDaVenda(ErroArgumentoInvalido, u"Venda sem itens"_s); };
    const auto disco = [] { throw ErroExecucao(ErroDiscoCheio, u"Disco cheio"_s); };
    const auto leitura = [&] {
        s->conexoes.Executa(EmSqlite() ? u"PRAGMA query_only = ON"_s
                                       : u"SET SESSION TRANSACTION READ ONLY"_s);
    };
    const QString dinheiro = u"itens SET quant = 999999999999.999, valor = 99999999999.9999"_s;
    const QString txt = u"Validar/000000#_18123456000104_001_15_11_2026-nfe.txt"_s;
    const QString parou = u"interrompido: erro"_s;
    std::vector<Caso> casos = {
        {u"vendas SET hora = NULL"_s, {}, {}, 0, u"Venda sem hora"_s, u"0|1 1|1"_s},
        {dinheiro, {}, {}, 0, u"fora do limite"_s, u"0|1 1|1"_s},
        {u"chave-falsa {outra}"_s, {}, {}, 0, u"chave inválida"_s, u"5|0 1|1"_s},
        {u"protocolo-chave {outra}"_s, {}, {}, 0, {}, u"5|0 1|1"_s},
        {u"Envio"_s, {}, u"erro 76 Caminho não encontrado"_s, 0, {}, u"5|0 5|0"_s},
        {txt, {}, u"75\nErro de acesso ao caminho/arquivo"_s, 1, {}, u"5|0 1|1"_s},
        {u"Envio/0000000#-gerar-chave.xml"_s, {}, u"75\n"_s, 1, {}, u"1|1 1|1"_s},
        {{}, daVenda, {}, 0, u"Venda sem itens"_s, u"0|1 1|1"_s},
        {{}, disco, parou + u" 61"_s, 1, u"Disco cheio"_s, u"5|0 5|0"_s},
        {{}, leitura, parou, 1, {}, u"5|0 5|0"_s},
    };
    if (EmSqlite()) // what only its untyped columns let the tills leave
        casos.push_back(
            {u"vendas SET cupom = 'a|\"'"_s, {}, {}, 0, u"vendas.cupom"_s, u"5|0 1|1"_s});
    int n = 100;
    for (const Caso& c : casos) { // "#": the first sale's NFC-e; {outra}: an earlier sale's key
        n += 10;
        const QString caso = QString(c.caso)
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
            if (falhou || !c.falha || s->venda.NumNfce != n + 1 || s->painel.LblMens02.isEmpty())
                return;
            falhou = true;
            c.falha();
        });
        Passa();
        ambiente.RemoveGancho(gancho);
        const QString relato = ambiente.registro.join(u'\n') + ambiente.mensagens.value(0).texto;
        EXPECT_TRUE(relato.contains(c.relato) &&
                    (!bloqueio || relato.contains(QDir::toNativeSeparators(NaEmpresa(caso)))))
            << relato.toStdString();
        EXPECT_EQ(ambiente.mensagens.size(), c.mensagens);
        EXPECT_EQ(ambiente.mensagens.value(0).titulo, c.mensagens ? u"Atenção *"_s : QString());
        EXPECT_TRUE(Coluna(u"erro"_s, n + 1).contains(c.erro));
        EXPECT_EQ(Estado(n + 1) + u' ' + Estado(n + 2), c.estados);
        if (bloqueio && QFile::remove(NaEmpresa(caso))) QDir().mkpath(NaEmpresa(caso));
        Executa(u"UPDATE vendas SET enviotime = 1"_s); // out of the next case's pass
    }
}

// A database server of the test's own, which it kills; one for the whole suite.
class BancoMorto : public EnviaPendentesTest {
protected:
    static void TearDownTestSuite() { servidor.reset(); }
    void SetUp() override {
        if (qEnvironmentVariable("NFCE_MARIADB").isEmpty() || !MariaDbPrivado::Disponivel())
            GTEST_SKIP() << "needs NFCE_MARIADB and mariadbd";
        if (!servidor) servidor = std::make_unique<MariaDbPrivado>();
        ASSERT_TRUE(servidor->Inicia()) << servidor->erro().toStdString();
        EnviaPendentesTest::SetUp();
    }
    void TearDown() override { // up again, when a failed case left it dead, to drop the databases
        if (servidor && !IsSkipped()) servidor->Inicia();
        EnviaPendentesTest::TearDown();
    }
    QString ServidorMariaDb() const override { return servidor->endereco(); }

    bool Autorizada(const QString& chave) const {
        return !chave.isEmpty() &&
               Existe(u"ENVIADO/Autorizados/112026/"_s + chave + u"-procNFe.xml"_s);
    }
    // The finished sales, "?" after one without UniNFe's authorisation; on the server's
    // connection reopened, as the fixture's do not outlive a database server killed under them.
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

// The server killed while an authorised sale is not yet recorded: the operator is told, nothing
// is finished that UniNFe did not authorise, and with the server back every sale finishes, the
// unrecorded one as a duplicate.
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

INSTANTIATE_TEST_SUITE_P(Motores, EnviaPendentesTest, ::testing::ValuesIn(Motores()), NomeDoMotor);
INSTANTIATE_TEST_SUITE_P(falhas, BancoMorto, ::testing::Values(Motor::MariaDb), NomeDoMotor);

} // namespace
} // namespace nfce::teste
