#include "emission/EnviaPendentes.h"
#include "storage/ErroExecucao.h"
#include "storage/Formatacao.h"
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

const QString Cnpj = u"18123456000104"_s;

// The sender meeting a fault.
class FalhaNoEnvio : public LojaComUniNfe {
protected:
    QHash<QString, DesfechoDaVenda> Passa() {
        QHash<QString, DesfechoDaVenda> desfechos;
        EnviaPendentes(*s, [&](const DesfechoDaVenda& d) { desfechos.insert(d.nfce, d); });
        return desfechos;
    }

    // One "nfce|column|..." line per sale, in NFC-e order, read on the server's own connection
    // reopened: the fixture's connections do not outlive a database server killed under them.
    QStringList Vendas(const QString& colunas) {
        s->conexoes.ReabreConexao();
        Registros rs;
        s->conexoes.AbreConsulta(rs, u"SELECT nfce, %1 FROM vendas ORDER BY nfce"_s.arg(colunas));
        QStringList linhas;
        for (; !rs.Eof(); rs.MoveNext()) {
            QStringList campos;
            for (const QString& campo : rs.Campos())
                campos << rs.Texto(campo);
            linhas << campos.join(u'|');
        }
        return linhas;
    }

    QString Estado(int nfce) {
        return Coluna(u"tempo"_s, nfce) + u'/' + Coluna(u"enviotime"_s, nfce);
    }

    bool Autorizada(const QString& chave) const {
        return !chave.isEmpty() &&
               Existe(u"ENVIADO\\Autorizados\\112026\\"_s + chave + u"-procNFe.xml"_s);
    }

    // The finished sales (tempo 1), and those of them whose key UniNFe never authorised.
    QStringList Finalizadas(bool soSemAutorizacao = false) {
        QStringList achadas;
        for (const QString& linha : Vendas(u"tempo, chave"_s)) {
            const QStringList c = linha.split(u'|');
            if (c[1] == u"1"_s && !(soSemAutorizacao && Autorizada(c[2]))) achadas << c[0];
        }
        return achadas;
    }
};

// A database server of the test's own, which it kills; one for the whole suite.
class BancoMorto : public FalhaNoEnvio {
protected:
    static void TearDownTestSuite() { servidor.reset(); }

    void SetUp() override {
        if (qEnvironmentVariable("NFCE_MARIADB").isEmpty())
            GTEST_SKIP() << "NFCE_MARIADB is not set";
        if (!MariaDbPrivado::Disponivel()) GTEST_SKIP() << "mariadbd is not on PATH";
        if (!servidor) servidor = std::make_unique<MariaDbPrivado>();
        ASSERT_TRUE(servidor->Inicia()) << servidor->erro().toStdString();
        FalhaNoEnvio::SetUp();
    }

    // Up again, when a failed case left it dead, to drop the test's databases.
    void TearDown() override {
        if (servidor && !IsSkipped()) servidor->Inicia();
        FalhaNoEnvio::TearDown();
    }

    QString ServidorMariaDb() const override { return servidor->endereco(); }

    // A pass in which the server is killed at the first moment `chegou` holds while sale
    // `nfce` is being sent; true when it was. A pass still running an hour (of the virtual
    // clock) later would never end: it fails the test instead of hanging it.
    bool PassaMatando(int nfce, const std::function<bool()>& chegou) {
        AvisosEsperados avisos; // the ODBC driver's, about the connection gone
        qint64 morteMs = -1;
        bool tentou = false;
        const int gancho = ambiente.AoBombear([&] {
            if (morteMs >= 0 && ambiente.Monotonico() - morteMs > 3600 * 1000)
                throw std::runtime_error("the pass never ends once the server is dead");
            if (tentou || s->venda.NumNfce != nfce || !chegou()) return;
            tentou = true;
            if (servidor->Mata()) morteMs = ambiente.Monotonico();
        });
        try {
            Passa();
        } catch (...) {
            ambiente.RemoveGancho(gancho);
            throw;
        }
        ambiente.RemoveGancho(gancho);
        return morteMs >= 0;
    }

    static inline std::unique_ptr<MariaDbPrivado> servidor;
};

// The server dies while a sale waits for its key, then while an authorised sale is not yet
// recorded: no crash, the operator is told, nothing finished that UniNFe did not authorise;
// with the server back the sale authorised unrecorded finishes as a duplicate, the rest as
// authorised.
TEST_P(BancoMorto, NenhumaVendaPerdidaNemFinalizadaSemAutorizacao) {
    struct Queda {
        const char* momento;
        int nfce;
        std::function<bool()> chegou;
        QStringList finalizadas; // once the server is back
    };
    const std::vector<Queda> quedas = {
        {"key requested", 2, [&] { return !s->painel.LblMens02.isEmpty(); }, {u"1"_s}},
        {"authorised, not recorded",
         4,
         [&] { return Autorizada(s->painel.LblMens01); },
         {u"1"_s, u"2"_s, u"3"_s}},
    };
    for (int n = 1; n <= 6; ++n)
        Venda(n, n);
    for (const Queda& q : quedas) {
        SCOPED_TRACE(q.momento);
        ambiente.mensagens.clear();
        ASSERT_TRUE(PassaMatando(q.nfce, q.chegou)) << servidor->erro().toStdString();
        EXPECT_FALSE(ambiente.mensagens.isEmpty());
        for (const auto& m : ambiente.mensagens) // the number, then what happened
            EXPECT_GT(m.texto.section(u'\n', 1).trimmed().size(), 0) << m.texto.toStdString();
        ASSERT_TRUE(servidor->Inicia()) << servidor->erro().toStdString();
        EXPECT_EQ(Finalizadas(), q.finalizadas);
        EXPECT_EQ(Finalizadas(true), QStringList());
    }
    const DesfechoDaVenda duplicada = Passa().value(u"4"_s);
    EXPECT_TRUE(duplicada.finalizada) << duplicada.texto.toStdString();
    EXPECT_EQ(Finalizadas(), QString(u"1 2 3 4 5 6"_s).split(u' '));
    EXPECT_EQ(Finalizadas(true), QStringList());
}

INSTANTIATE_TEST_SUITE_P(falhas, BancoMorto, ::testing::Values(Motor::MariaDb), NomeDoMotor);

class PastaBloqueada : public FalhaNoEnvio {};

// A regular file where an exchange folder must be, or a folder where the NFC-e text must go
// (root writes through any permission, so this is how the tests block a write): the operator
// learns which path failed and why, the sale waits, and the pass after the repair sends it.
TEST_P(PastaBloqueada, OperadorSabeOndeEAVendaEsperaOConserto) {
    struct Caso {
        int nfce;
        QString bloqueado; // below the company folder
        bool pasta;        // a folder in the way of a file, else a file in the way of a folder
        QString relato;    // "erro 76 ..." in the log, or "75\n..." on screen
        QString causa;
    };
    const auto txt = [](int nfce) {
        return u"Validar/"_s + Zeros(nfce, 9) + u"_"_s + Cnpj + u"_001_15_11_2026-nfe.txt"_s;
    };
    const std::vector<Caso> casos = {
        {7001, u"Envio"_s, false, u"erro 76 Caminho não encontrado"_s, u"não é uma pasta"_s},
        {7002, u"Validar"_s, false, u"erro 76 Caminho não encontrado"_s, u"não é uma pasta"_s},
        {7003, txt(7003), true, u"75\nErro de acesso ao caminho/arquivo"_s, u"directory"_s},
    };
    for (const Caso& c : casos) {
        SCOPED_TRACE(c.bloqueado.toStdString());
        const QString caminho = pasta.Caminho(Cnpj + u'/' + c.bloqueado);
        Venda(c.nfce, c.nfce);
        QDir(caminho).removeRecursively();
        if (c.pasta)
            QDir().mkpath(caminho);
        else
            pasta.EscreveArquivo(Cnpj + u'/' + c.bloqueado, "not a folder");
        ambiente.registro.clear();
        ambiente.mensagens.clear();

        EXPECT_FALSE(Passa().value(QString::number(c.nfce)).finalizada);
        const bool naTela = c.relato.startsWith(u"75"_s);
        ASSERT_EQ(ambiente.mensagens.size(), naTela ? 1 : 0);
        const QString relato = naTela ? ambiente.mensagens[0].texto : ambiente.registro.join(u'\n');
        EXPECT_TRUE(relato.contains(c.relato) &&
                    relato.contains(QDir::toNativeSeparators(caminho)) && relato.contains(c.causa))
            << relato.toStdString();
        EXPECT_EQ(Estado(c.nfce), u"5/0"_s);

        if (c.pasta)
            QDir(caminho).removeRecursively();
        else
            QFile::remove(caminho);
        QDir().mkpath(pasta.Caminho(Cnpj + u"/Envio"_s));
        QDir().mkpath(pasta.Caminho(Cnpj + u"/Validar"_s));
        EXPECT_TRUE(Passa().value(QString::number(c.nfce)).finalizada);
        EXPECT_EQ(Estado(c.nfce), u"1/1"_s);
    }
}

INSTANTIATE_TEST_SUITE_P(falhas, PastaBloqueada, ::testing::ValuesIn(Motores()), NomeDoMotor);

class UniNfeParado : public FalhaNoEnvio {
protected:
    // Files waiting for UniNFe in its input folders.
    qsizetype Pedidos() const {
        qsizetype n = 0;
        for (const char* entrada : {"/Envio", "/Validar"})
            n += QDir(pasta.Caminho(Cnpj + QLatin1String(entrada))).entryList(QDir::Files).size();
        return n;
    }
};

// UniNFe down for three passes, from the start or from the first key it answered: every sale
// waits with its row as it was (only the key the rules store may arrive), the requests do
// not pile up, and the first pass with UniNFe back finishes every sale.
TEST_P(UniNfeParado, VendasEsperamVariasPassagensESaemQuandoEleVolta) {
    struct Caso {
        const char* para;
        int primeira;
        std::function<bool()> parou;
        int comChave; // sales whose key arrived before UniNFe stopped
    };
    const std::vector<Caso> casos = {
        {"from the start", 10, [] { return true; }, 0},
        {"after one key", 20, [&] { return !s->painel.LblMens01.isEmpty(); }, 1},
    };
    const QString linha = u"cupom, data, hora, valor, tempo, enviotime, autorizacao, erro"_s;
    for (const Caso& c : casos) {
        SCOPED_TRACE(c.para);
        Venda(c.primeira + 1, c.primeira + 1, u"5"_s);
        Venda(c.primeira + 2, c.primeira + 2, u"0"_s, u"ERRO anterior"_s);
        Venda(c.primeira + 3, c.primeira + 3, u"9"_s, u"ERRO 1|2"_s);
        const QStringList antes = Vendas(linha);
        const int gancho = ambiente.AoBombear([&] {
            if (c.parou()) uninfeRodando = false;
        });
        for (int passagem = 0; passagem < 3; ++passagem) {
            for (const DesfechoDaVenda& d : Passa())
                EXPECT_FALSE(d.finalizada) << d.nfce.toStdString();
            EXPECT_EQ(Vendas(linha), antes);
            EXPECT_LE(Pedidos(), 6);
        }
        EXPECT_EQ(Conta(u"vendas"_s, u"nfce > %1 AND chave <> ''"_s.arg(c.primeira)), c.comChave);
        ambiente.RemoveGancho(gancho);
        uninfeRodando = true;
        Passa();
        for (int n = 1; n <= 3; ++n)
            EXPECT_EQ(Estado(c.primeira + n), u"1/1"_s) << n;
    }
    EXPECT_EQ(Finalizadas(true), QStringList());
    EXPECT_TRUE(ambiente.mensagens.isEmpty());
}

INSTANTIATE_TEST_SUITE_P(falhas, UniNfeParado, ::testing::ValuesIn(Motores()), NomeDoMotor);

class FalhaNaVenda : public FalhaNoEnvio {};

// Something fails while the first of two sales is handled. An error of the sale's own data
// takes it out of the queue and the pass goes on; a full disk or a database that refuses
// writes ends the pass with one message, both sales wait, and the next pass sends them.
TEST_P(FalhaNaVenda, SoAVendaOuAPassagemInteira) {
    struct Caso {
        const char* nome;
        std::function<void()> falha;
        QString erro;   // part of the first sale's erro
        QString estado; // of the first sale afterwards
        bool paraAPassagem;
    };
    const QString somenteLeitura =
        EmSqlite() ? u"PRAGMA query_only = ON"_s : u"SET SESSION TRANSACTION READ ONLY"_s;
    const std::vector<Caso> casos = {
        {"sale's own data", [] { throw ErroDaVenda(ErroArgumentoInvalido, u"Venda sem itens"_s); },
         u"Venda sem itens"_s, u"0/1"_s, false},
        {"disk full", [] { throw ErroExecucao(ErroDiscoCheio, u"Disco cheio"_s); },
         u"Disco cheio"_s, u"5/0"_s, true},
        {"database read-only", [&] { s->conexoes.Executa(somenteLeitura); }, QString(), u"5/0"_s,
         true},
    };
    int n = 0;
    for (const Caso& c : casos) {
        SCOPED_TRACE(c.nome);
        n += 10;
        Venda(n + 1, n + 1);
        Venda(n + 2, n + 2);
        ambiente.mensagens.clear();
        ambiente.registro.clear();
        bool falhou = false;
        const int gancho = ambiente.AoBombear([&] {
            if (falhou || s->venda.NumNfce != n + 1 || s->painel.LblMens02.isEmpty()) return;
            falhou = true;
            c.falha();
        });
        Passa();
        ambiente.RemoveGancho(gancho);
        EXPECT_TRUE(Coluna(u"erro"_s, n + 1).contains(c.erro));
        EXPECT_EQ(Estado(n + 1), c.estado);
        EXPECT_EQ(Estado(n + 2), c.paraAPassagem ? u"5/0"_s : u"1/1"_s);
        EXPECT_EQ(ambiente.mensagens.size(), c.paraAPassagem ? 1 : 0);
        EXPECT_EQ(ambiente.registro.filter(u"interrompido: erro"_s).size(),
                  c.paraAPassagem ? 1 : 0);
        Passa();
        EXPECT_EQ(Estado(n + 1), c.paraAPassagem ? u"1/1"_s : u"0/1"_s);
        EXPECT_EQ(Estado(n + 2), u"1/1"_s);
    }
}

INSTANTIATE_TEST_SUITE_P(falhas, FalhaNaVenda, ::testing::ValuesIn(Motores()), NomeDoMotor);

} // namespace
} // namespace nfce::teste
