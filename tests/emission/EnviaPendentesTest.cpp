#include "emission/EnviaPendentes.h"
#include "Simulador.h"
#include "context/Servidor.h"
#include "emission/ArmadilhaEnvio.h"
#include "emission/EmiteNfceImprime.h"
#include "storage/ErroExecucao.h"
#include "support/Avisos.h"
#include "support/LojaComUniNfe.h"
#include "support/MariaDbPrivado.h"

#include <QCoreApplication>
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
    void Pendente(int nfce, const QString& cenario = {}) {
        Venda(nfce, nfce);
        if (cenario.isEmpty()) return;
        uninfesim::Cenario c;
        QString erro;
        ASSERT_TRUE(uninfesim::LeCenario(cenario, c, erro)) << erro.toStdString();
        sim->DefineCenario(nfce, c);
    }
    QString Estado(int nfce) {
        return Coluna(u"tempo"_s, nfce) + u'/' + Coluna(u"enviotime"_s, nfce);
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

TEST_P(EnviaPendentesTest, SoPendentesComNfceEmOrdemDeCupom) {
    s->painel.LblQuantCup = u"7"_s;
    EXPECT_TRUE(Passa().isEmpty());
    EXPECT_EQ(s->painel.LblQuantCup, u"7"_s); // untouched when nothing is pending
    Venda(0, 1);
    Venda(2001, 2, u"1"_s);
    Venda(2002, 3);
    Executa(u"UPDATE vendas SET enviotime = 1 WHERE nfce = 2002"_s);
    Venda(2003, 5, u"9"_s);
    Venda(2004, 4, u"0"_s);
    Passa();
    EXPECT_EQ(ordem, (QStringList{u"2004"_s, u"2003"_s}));
    EXPECT_EQ(s->painel.LblQuantCup, u"2"_s);
}

// Each answer UniNFe can give, in one pass: the outcome line, and the row after it.
TEST_P(EnviaPendentesTest, CadaDesfechoNumaPassagem) {
    const std::tuple<int, QString, QString, QString> casos[] = {
        // NFC-e, scenario, tempo/enviotime after the pass, outcome line
        {1001, u"autoriza"_s, u"1/1"_s, u"Autorizado o uso da NF-e"_s},
        {1002, u"rejeita 778"_s, u"0/1"_s, u"NCM Inexistente"_s},
        {1003, u"duplicidade"_s, u"1/1"_s, u"Autorizado o uso da NF-e"_s},
        {1004, u"duplicidade-chave"_s, u"1/1"_s, u"Autorizado o uso da NF-e"_s},
        {1005, u"erro-conversao"_s, u"5/1"_s, QString()},
        {1006, u"lote-recusado"_s, u"0/0"_s, QString()},
        {1007, u"sem-resposta"_s, u"5/0"_s, QString()},
        {1008, u"autoriza chave-zero"_s, u"1/1"_s, u"Autorizado o uso da NF-e"_s},
    };
    for (const auto& [nfce, cenario, estado, texto] : casos)
        Pendente(nfce, cenario);
    // Whatever the window left in the module state, this sender neither emits a rejected sale
    // again nor prints a contingency receipt.
    s->venda.ModoRetorno = u"VENDA"_s;
    s->venda.TipoEmissao = u"9"_s;
    s->venda.ImprimeCupom = true;
    InstalaReemissao(*s);
    const auto desfechos = Passa();
    for (const auto& [nfce, cenario, estado, texto] : casos) {
        SCOPED_TRACE(cenario.toStdString());
        const DesfechoDaVenda d = desfechos.value(QString::number(nfce));
        EXPECT_EQ(d.finalizada, estado == u"1/1"_s) << d.texto.toStdString();
        EXPECT_TRUE(d.texto.contains(texto)) << d.texto.toStdString();
        EXPECT_EQ(Estado(nfce), estado);
    }
    EXPECT_TRUE(ambiente.mensagens.isEmpty());
    EXPECT_TRUE(ambiente.programasIniciados.isEmpty());
    EXPECT_FALSE(s->envio.Pendentes.Aberto());
    EXPECT_TRUE(Existe(u"CONTABILIDADE/112026/000001001-procNFe.xml"_s));
    EXPECT_FALSE(Existe(u"CONTABILIDADE/112026/000001004-procNFe.xml"_s)); // no XML for 539
}

// A bad row or answer, then a good sale: the good one is authorised in the same pass, the bad
// one ends with its error on it, nothing on screen, nothing outside the program folder touched.
TEST_P(EnviaPendentesTest, UmaVendaRuimNaoSeguraAsOutras) {
    const QString invalida = u"chave inválida recebida do UniNFe"_s;
    const std::tuple<QString, QString, QString, bool> casos[] = {
        // statement (%1: the NFC-e) or scenario, part of erro, tempo/enviotime, SQLite only
        {u"UPDATE vendas SET hora = NULL WHERE nfce = %1"_s, u"Venda sem hora"_s, u"0/1"_s, false},
        {u"UPDATE vendas SET data = NULL WHERE nfce = %1"_s, u"Venda sem data"_s, u"0/1"_s, false},
        {u"UPDATE itens SET quant = 999999999999.999, valor = 99999999999.9999 WHERE nfce = %1"_s,
         u"fora do limite"_s, u"0/1"_s, false},
        {u"UPDATE vendas SET data = 'abc' WHERE nfce = %1"_s, u"A data da venda não é válida"_s,
         u"0/1"_s, true},
        {u"UPDATE vendas SET cupom = 'a|\"' WHERE nfce = %1"_s, u"Valor inválido em vendas.cupom"_s,
         u"5/0"_s, true},
        // rejected before, its answers left in Retorno; UniNFe mute while it is sent again
        {u"antigas"_s, {}, u"5/0"_s, false},
        // {fora}: a folder outside; {outra}: an earlier sale's key
        {u"chave-falsa ./../../../../{fora}/x"_s, invalida, u"5/0"_s, false},
        {u"chave-falsa {outra}"_s, invalida, u"5/0"_s, false},
        {u"protocolo-chave {outra}"_s, {}, u"5/0"_s, false},
    };
    const QString nomeFora = u"fora-%1-%2"_s.arg(QCoreApplication::applicationPid())
                                 .arg(int(EmSqlite())); // the engines run side by side
    const QString fora = u"18123456000104/Retorno/./../../../../"_s + nomeFora;
    const char* vitimas[] = {"/x-num-lot.txt", "/x-num-lot.xml", "/x-nfe.xml"};
    for (const char* v : vitimas)
        pasta.EscreveArquivo(fora + QLatin1String(v), "victim");
    int n = 100;
    for (const auto& [caso, erro, estado, soSqlite] : casos) {
        if (soSqlite && !EmSqlite()) continue;
        SCOPED_TRACE(caso.toStdString());
        n += 100;
        const bool antigas = caso == u"antigas"_s;
        NovoServidor();
        if (caso.startsWith(u"UPDATE"_s)) {
            Pendente(n + 1);
            Executa(caso.arg(n + 1));
        } else {
            Pendente(n + 1, antigas ? u"rejeita 778"_s
                                    : QString(caso)
                                          .replace(u"{outra}"_s, Coluna(u"chave"_s, 202))
                                          .replace(u"{fora}"_s, nomeFora));
        }
        if (antigas) {
            Passa();
            Executa(u"UPDATE vendas SET tempo = '5', enviotime = 0 WHERE nfce = %1"_s.arg(n + 1));
            sim->DefineCenario(n + 1, uninfesim::Cenario());
            NovoServidor();
        }
        Pendente(n + 2);
        const int gancho = ambiente.AoBombear([&] { // the key comes, the document is not taken
            if (antigas) uninfeRodando = s->venda.NumNfce != n + 1 || s->painel.LblMens01.isEmpty();
        });
        const auto desfechos = Passa();
        ambiente.RemoveGancho(gancho);
        uninfeRodando = true;
        EXPECT_TRUE(desfechos.value(QString::number(n + 2)).finalizada);
        EXPECT_EQ(Estado(n + 1), estado);
        EXPECT_TRUE(Coluna(u"erro"_s, n + 1).contains(erro))
            << Coluna(u"erro"_s, n + 1).toStdString();
        EXPECT_TRUE(ambiente.mensagens.isEmpty());
        for (const char* v : vitimas)
            EXPECT_EQ(pasta.LeArquivo(fora + QLatin1String(v)), "victim") << v;
        Executa(u"UPDATE vendas SET enviotime = 1"_s);
    }
    QDir(pasta.Caminho(fora)).removeRecursively();
}

// A key read as "0" starts a pass inside the pass: it sends the other sale, and the outer pass
// ends when it finds the rows closed. Nested too deep, a pass ends at once.
TEST_P(EnviaPendentesTest, PassagemAninhada) {
    Pendente(5001, u"erro-conversao chave-zero"_s);
    Pendente(5002);
    Passa();
    EXPECT_EQ(ordem, QStringList{u"5002"_s});
    EXPECT_EQ(Estado(5002) + Estado(5001), u"1/15/1"_s);
    EXPECT_EQ(s->envio.Aninhamento, 0);
    Pendente(5101);
    s->envio.Aninhamento = 8;
    EXPECT_TRUE(Passa().isEmpty());
    EXPECT_EQ(Estado(5101), u"5/0"_s);
}

// Something fails while the first of two sales is handled. A file where an exchange folder
// must be is silent (76, in the log); a folder where a file must go (root writes through any
// permission) is shown (75) and the pass goes on; both name the path. An error of the sale's
// own data takes it out of the queue; a full disk or a database refusing writes ends the pass
// with one message. After the repair, the next pass sends what waits.
TEST_P(EnviaPendentesTest, ArmadilhaDaVendaOuDaPassagem) {
    struct Caso {
        QString bloqueado; // below the company folder: a folder when named as a file
        std::function<void()> falha;
        QStringList relato; // in the messages and the log
        int mensagens;
        QString erro;            // part of the first sale's erro
        QString estados, depois; // of both sales, after the pass and after the next
    };
    const auto daVenda = [] { throw ErroDaVenda(ErroArgumentoInvalido, u"Venda sem itens"_s); };
    const auto disco = [] { throw ErroExecucao(ErroDiscoCheio, u"Disco cheio"_s); };
    const auto leitura = [&] {
        s->conexoes.Executa(EmSqlite() ? u"PRAGMA query_only = ON"_s
                                       : u"SET SESSION TRANSACTION READ ONLY"_s);
    };
    const QStringList perdida = {u"erro 76 Caminho não encontrado"_s, u"não é uma pasta"_s};
    const QStringList acesso = {u"75\nErro de acesso ao caminho/arquivo"_s, u"directory"_s};
    const QString txt = u"Validar/000000031_18123456000104_001_15_11_2026-nfe.txt"_s;
    const QString pedido = u"Envio/0000000041-gerar-chave.xml"_s;
    const QString parou = u"interrompido: erro"_s;
    const std::vector<Caso> casos = {
        {u"Envio"_s, {}, perdida, 0, {}, u"5/05/0"_s, u"1/11/1"_s},
        {u"Validar"_s, {}, perdida, 0, {}, u"5/05/0"_s, u"1/11/1"_s},
        {txt, {}, acesso, 1, {}, u"5/01/1"_s, u"1/11/1"_s},
        {pedido, {}, {u"75\n"_s}, 1, {}, u"1/11/1"_s, u"1/11/1"_s},
        {{}, daVenda, {}, 0, u"Venda sem itens"_s, u"0/11/1"_s, u"0/11/1"_s},
        {{}, disco, {parou + u" 61"_s}, 1, u"Disco cheio"_s, u"5/05/0"_s, u"1/11/1"_s},
        {{}, leitura, {parou}, 1, {}, u"5/05/0"_s, u"1/11/1"_s},
    };
    int n = 0;
    for (const Caso& c : casos) {
        n += 10;
        SCOPED_TRACE(n);
        Pendente(n + 1);
        Pendente(n + 2);
        const QString caminho = c.bloqueado.isEmpty() ? QString() : NaEmpresa(c.bloqueado);
        ambiente.mensagens.clear();
        ambiente.registro.clear();
        if (!caminho.isEmpty()) QDir(caminho).removeRecursively();
        if (c.bloqueado.contains(u'.'))
            QDir().mkpath(caminho);
        else if (!caminho.isEmpty())
            Grava(c.bloqueado, "not a folder");
        bool falhou = false;
        const int gancho = ambiente.AoBombear([&] {
            if (falhou || !c.falha || s->venda.NumNfce != n + 1 || s->painel.LblMens02.isEmpty())
                return;
            falhou = true;
            c.falha();
        });
        Passa();
        ambiente.RemoveGancho(gancho);
        QString relato = ambiente.registro.join(u'\n');
        for (const auto& m : ambiente.mensagens) {
            relato += u'\n' + m.texto;
            EXPECT_EQ(m.titulo, u"Atenção *"_s);
        }
        for (const QString& parte : c.relato + QStringList(QDir::toNativeSeparators(caminho)))
            EXPECT_TRUE(relato.contains(parte)) << relato.toStdString();
        EXPECT_EQ(ambiente.mensagens.size(), c.mensagens);
        EXPECT_TRUE(Coluna(u"erro"_s, n + 1).contains(c.erro));
        EXPECT_EQ(Estado(n + 1) + Estado(n + 2), c.estados);
        if (!caminho.isEmpty()) {
            QDir(caminho).removeRecursively();
            QFile::remove(caminho);
            QDir().mkpath(NaEmpresa(u"Envio"_s));
            QDir().mkpath(NaEmpresa(u"Validar"_s));
        }
        Passa();
        EXPECT_EQ(Estado(n + 1) + Estado(n + 2), c.depois);
    }
}

// UniNFe stopping after the first key it answered, for three passes: every row stays as it
// was (but that key), the requests do not pile up, and the first pass with UniNFe back
// finishes every sale.
TEST_P(EnviaPendentesTest, UniNfeParadoVariasPassagens) {
    Venda(1, 1, u"5"_s);
    Venda(2, 2, u"0"_s, u"ERRO anterior"_s);
    Venda(3, 3, u"9"_s, u"ERRO 1|2"_s);
    const auto linhas = [&] {
        QString t;
        for (int nfce = 1; nfce <= 3; ++nfce)
            t += Colunas(u"vendas WHERE nfce = %1"_s.arg(nfce),
                         u"cupom,data,hora,valor,tempo,enviotime,autorizacao,erro"_s) +
                 u'\n';
        return t;
    };
    const QString antes = linhas();
    const int gancho = ambiente.AoBombear([&] {
        if (!s->painel.LblMens01.isEmpty()) uninfeRodando = false;
    });
    for (int passagem = 0; passagem < 3; ++passagem) {
        for (const DesfechoDaVenda& d : Passa())
            EXPECT_FALSE(d.finalizada) << d.nfce.toStdString();
        EXPECT_EQ(linhas(), antes);
        EXPECT_LE(QDir(NaEmpresa(u"Envio"_s)).entryList(QDir::Files).size() +
                      QDir(NaEmpresa(u"Validar"_s)).entryList(QDir::Files).size(),
                  6);
    }
    EXPECT_EQ(Coluna(u"chave"_s, 1).size() + Conta(u"vendas"_s, u"chave <> ''"_s), 45);
    ambiente.RemoveGancho(gancho);
    uninfeRodando = true;
    Passa();
    EXPECT_EQ(Conta(u"vendas"_s, u"tempo = '1'"_s), 3);
    EXPECT_TRUE(ambiente.mensagens.isEmpty());
}

// A database server of the test's own, which it kills; one for the whole suite.
class BancoMorto : public EnviaPendentesTest {
protected:
    static void TearDownTestSuite() { servidor.reset(); }
    void SetUp() override {
        if (qEnvironmentVariable("NFCE_MARIADB").isEmpty())
            GTEST_SKIP() << "NFCE_MARIADB is not set";
        if (!MariaDbPrivado::Disponivel()) GTEST_SKIP() << "mariadbd is not on PATH";
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
    // The finished sales, "?" after one without UniNFe's authorisation; on the server's connection
    // reopened, as the fixture's do not outlive a database server killed under them.
    QString Finalizadas() {
        s->conexoes.ReabreConexao();
        Registros rs;
        s->conexoes.AbreConsulta(rs, u"SELECT * FROM vendas WHERE tempo = '1'"_s);
        QStringList achadas;
        for (; !rs.Eof(); rs.MoveNext()) {
            const bool ok =
                Autorizada(rs.Texto(u"chave"_s)) && !rs.Texto(u"autorizacao"_s).isEmpty();
            achadas << rs.Texto(u"nfce"_s) + (ok ? u""_s : u"?"_s);
        }
        achadas.sort();
        return achadas.join(u' ');
    }
    static inline std::unique_ptr<MariaDbPrivado> servidor;
};

// The server killed while a sale waits for its key, then while an authorised sale is not yet
// recorded: the operator is told, nothing is finished that UniNFe did not authorise, and with
// the server back every sale finishes, the unrecorded one as a duplicate with its protocol.
TEST_P(BancoMorto, NenhumaVendaPerdidaNemFinalizadaSemAutorizacao) {
    const std::tuple<int, std::function<bool()>, QString> quedas[] = {
        {2, [&] { return !s->painel.LblMens02.isEmpty(); }, u"1"_s},
        {4, [&] { return Autorizada(s->painel.LblMens01); }, u"1 2 3"_s},
    };
    for (int n = 1; n <= 6; ++n)
        Venda(n, n);
    for (const auto& [nfce, chegou, finalizadas] : quedas) {
        SCOPED_TRACE(nfce);
        AvisosEsperados avisos; // the ODBC driver's, about the connection gone
        ambiente.mensagens.clear();
        qint64 morte = -1;
        const int gancho = ambiente.AoBombear([&] {
            if (morte >= 0 && ambiente.Monotonico() - morte > 3600 * 1000)
                throw std::runtime_error("the pass never ends once the server is dead");
            if (morte < 0 && s->venda.NumNfce == nfce && chegou() && servidor->Mata())
                morte = ambiente.Monotonico();
        });
        Passa();
        ambiente.RemoveGancho(gancho);
        ASSERT_GE(morte, 0) << servidor->erro().toStdString();
        EXPECT_FALSE(ambiente.mensagens.isEmpty());
        ASSERT_TRUE(servidor->Inicia()) << servidor->erro().toStdString();
        EXPECT_EQ(Finalizadas(), finalizadas);
    }
    EXPECT_TRUE(Passa().value(u"4"_s).finalizada);
    EXPECT_EQ(Finalizadas(), u"1 2 3 4 5 6"_s);
    EXPECT_TRUE(Existe(u"CONTABILIDADE/112026/000000004-procNFe.xml"_s));
}

INSTANTIATE_TEST_SUITE_P(Motores, EnviaPendentesTest, ::testing::ValuesIn(Motores()), NomeDoMotor);
INSTANTIATE_TEST_SUITE_P(falhas, BancoMorto, ::testing::Values(Motor::MariaDb), NomeDoMotor);

} // namespace
} // namespace nfce::teste
