// One pass of the automatic sender over 1 000 pending sales of three items each, with the UniNFe
// stand-in answering at once and every wait on the virtual clock. Prints the real time per sale
// (target: under 20 ms on SQLite, under 60 ms on MariaDB over loopback), the waits the pass
// asked for per sale next to what its rounds add up to when every answer is prompt (they must
// be equal), and the selection of the pending sales among 1 000 000 finished ones (target:
// under 50 ms, served by an index). MariaDB runs when NFCE_MARIADB names the server.
#include "ConfigBench.h"
#include "Simulador.h"
#include "context/Servidor.h"
#include "emission/EnviaPendentes.h"
#include "storage/Empresa.h"
#include "storage/Esquema.h"
#include "storage/Registros.h"
#include "support/AmbienteVirtual.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QUuid>
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <vector>

namespace {

using namespace Qt::StringLiterals;
using nfce::Conexao;
using nfce::TipoBanco;

constexpr int Vendas = 1000;
constexpr int ItensPorVenda = 3;
constexpr int Historico = 1000000;
constexpr int Temp = 3; // the installation's TEMP: the generator's pause for UniNFe
const QString Cnpj = u"18123456000104"_s;

// What one sale waits when every answer is already there, round by round.
constexpr double Rateio = 0.01 + 0.2 + 0.2; // one apportionment: reset, spread, sum
constexpr double Gerador = 1 + 2 * Rateio + Temp;
constexpr double EsperaPorVenda = 0.5                // before the sale
                                  + 1 + 0.5          // key request, then a pause
                                  + 0.5 + 0.5 + 0.01 // one key round: pause, read, update
                                  + 0.5              // after clearing earlier answers
                                  + 1 + Gerador      // before generating, and the generator
                                  + 0.5 + 0.5        // validated document back to Envio
                                  + 0.2              // conversion error
                                  + 1                // refused lot
                                  + 0.3 + 0.1;       // lot number, then the outcome
constexpr double EsperaPorPassagem = 0.5 + 0.01;

void PreparaPasta(const QString& pasta, const QStringList& config) {
    nfce::GravaRegistroEmpresa(pasta,
                               {u"CNPJ="_s + Cnpj, u"NOME=Mercado Bom Preco Ltda"_s, u"SERIE=1"_s,
                                u"CODMUNICIPIO=3106200"_s, u"IE=0623079040081"_s,
                                u"ENDERECO=Rua da Bahia"_s, u"NUMERO=1148"_s, u"BAIRRO=Centro"_s,
                                u"CIDADE=Belo Horizonte"_s, u"UF=MG"_s, u"CEP=30160011"_s});
    EscreveConfig(pasta,
                  config + QStringList{u"TEMP="_s + QString::number(Temp), u"TMPAMBNFCE=2"_s});
    for (const QString& p : {u"Envio"_s, u"Validar"_s, u"Retorno"_s})
        QDir().mkpath(pasta + u'/' + Cnpj + u'/' + p);
}

// Finished sales numbered 1 to Historico, 100 000 to a statement, from a cross join of digits.
void PreencheHistorico(Conexao& banco) {
    QStringList digitos;
    for (int d = 0; d < 10; ++d)
        digitos << u"SELECT %1 AS n"_s.arg(d);
    const QString tabela = u"("_s + digitos.join(u" UNION ALL "_s) + u")"_s;
    for (int inicio = 1; inicio <= Historico; inicio += 100000)
        banco.Executa(u"INSERT INTO vendas (nfce, cupom, data, hora, valor, Dinheiro, tempo, "
                      "enviotime) SELECT %1 + x, %1 + x, '2026-01-02', '09:00:00', 10, 10, '1', 1 "
                      "FROM (SELECT a.n + 10 * b.n + 100 * c.n + 1000 * d.n + 10000 * e.n AS x "
                      "FROM %2 a, %2 b, %2 c, %2 d, %2 e) digitos"_s.arg(inicio)
                          .arg(tabela));
}

void PreenchePendentes(Conexao& banco) {
    banco.Executa(u"INSERT INTO produtos (codigo, nome, ncm, cest, cfop, unidade, CST, icms, "
                  "reducao_base) VALUES (1, 'Arroz tipo 1 5kg', '10063021', '', '5102', 'un', 0, "
                  "1800, 0), (2, 'Refrigerante cola 2L', '22021000', '0300700', '5405', 'un', 7, "
                  "0, 0), (3, 'Pão francês', '19059090', '', '5102', 'kg', 17, 0, 0)"_s);
    banco.Executa(u"INSERT INTO caixas (nome) VALUES ('Maria')"_s);
    QStringList vendas, itens;
    for (int i = 1; i <= Vendas; ++i) {
        const int numero = Historico + i;
        vendas << u"(%1, %1, '2026-11-15', '10:20:30', 21.15, 21.15, 1, 'CONSUMIDOR FINAL', '', "
                  "0)"_s.arg(numero);
        for (int item = 1; item <= ItensPorVenda; ++item)
            itens << u"(%1, %1, %2, %2, 1, 7.05, 7.05)"_s.arg(numero).arg(item);
    }
    banco.Executa(u"INSERT INTO vendas (nfce, cupom, data, hora, valor, Dinheiro, cliente, "
                  "nomecliente, tempo, enviotime) VALUES "_s +
                  vendas.join(u", "_s));
    banco.Executa(u"INSERT INTO itens (nfce, cupom, Item, codprod, quant, valor, valortotal) "
                  "VALUES "_s +
                  itens.join(u", "_s));
}

// How the database means to run the selection, one line per step of its plan.
QString Plano(Conexao& banco) {
    const bool sqlite = banco.Tipo() == TipoBanco::Sqlite;
    const nfce::Resultado r =
        banco.Consulta((sqlite ? u"EXPLAIN QUERY PLAN "_s : u"EXPLAIN "_s) + nfce::SqlPendentes());
    const QStringList campos =
        sqlite ? QStringList{u"detail"_s} : QStringList{u"type"_s, u"key"_s, u"rows"_s, u"Extra"_s};
    QStringList passos;
    for (const QVariantList& linha : r.linhas) {
        QStringList partes;
        for (const QString& campo : campos)
            partes << campo + u'=' + linha.value(r.campos.indexOf(campo)).toString();
        passos << partes.join(u", "_s);
    }
    return passos.join(u" | "_s);
}

// The median of five selections as the sender opens them, rows fetched.
double MsDaSelecao(nfce::Servidor& servidor, int& linhas) {
    std::vector<double> medidas;
    for (int i = 0; i < 5; ++i) {
        nfce::Registros rs;
        QElapsedTimer relogio;
        relogio.start();
        servidor.conexoes.AbreConsulta(rs, nfce::SqlPendentes());
        medidas.push_back(relogio.nsecsElapsed() / 1e6);
        linhas = rs.RecordCount();
    }
    std::sort(medidas.begin(), medidas.end());
    return medidas[medidas.size() / 2];
}

void Mede(const char* motor, const QString& pasta, Conexao& banco) {
    nfce::CriaEsquema(banco, u"loja"_s);
    QElapsedTimer enchimento;
    enchimento.start();
    PreencheHistorico(banco);
    PreenchePendentes(banco);
    const double sEnchimento = enchimento.nsecsElapsed() / 1e9;

    nfce::AmbienteVirtual ambiente;
    nfce::Servidor servidor(pasta, ambiente);
    servidor.empresa = nfce::CarregaEmpresa(pasta);
    servidor.conexoes.PreparaConexaoPrincipal();
    servidor.conexoes.ReabreConexao();
    int selecionadas = 0;
    const double msSelecao = MsDaSelecao(servidor, selecionadas);
    std::printf("%-8s filled %d finished + %d pending sales in %.1f s\n"
                "         selection: %.2f ms for %d rows (target under 50 ms)\n"
                "         plan: %s\n",
                motor, Historico, Vendas, sEnchimento, msSelecao, selecionadas,
                qPrintable(Plano(banco)));

    uninfesim::Simulador simulador(pasta);
    qint64 nsSimulador = 0;
    ambiente.AoBombear([&] {
        QElapsedTimer relogio;
        relogio.start();
        simulador.Processa(ambiente.Agora());
        nsSimulador += relogio.nsecsElapsed();
    });
    // The server's own time at the end of each sale, to show whether a sale costs more as the
    // answer files pile up in the exchange folders.
    std::vector<double> msAoFim;
    QElapsedTimer relogio;
    relogio.start();
    nfce::EnviaPendentes(servidor, [&](const nfce::DesfechoDaVenda&) {
        msAoFim.push_back((relogio.nsecsElapsed() - nsSimulador) / 1e6);
    });
    const double msTotal = relogio.nsecsElapsed() / 1e6;
    const double msSimulador = nsSimulador / 1e6;
    const int feitas = banco
                           .Consulta(u"SELECT COUNT(*) FROM vendas WHERE cupom > %1 AND tempo = "
                                     "'1' AND enviotime = 1"_s.arg(Historico))
                           .linhas.value(0)
                           .value(0)
                           .toInt();
    const double msEspera = double(ambiente.msAguardados()) / Vendas;
    const double msOrcamento = (Vendas * EsperaPorVenda + EsperaPorPassagem) * 1000.0 / Vendas;
    std::printf("         pass: %d of %d sales finished, %.2f s real, %d messages\n"
                "         real per sale: %.2f ms server (target under %s), %.2f ms stand-in\n"
                "         virtual wait per sale: %.2f ms, budget %.2f ms (%.0f ms a sale + "
                "%.0f ms a pass): %s\n",
                feitas, Vendas, msTotal / 1000.0, int(ambiente.mensagens.size()),
                (msTotal - msSimulador) / Vendas,
                banco.Tipo() == TipoBanco::Sqlite ? "20 ms" : "60 ms", msSimulador / Vendas,
                msEspera, msOrcamento, EsperaPorVenda * 1000.0, EsperaPorPassagem * 1000.0,
                std::llround(msEspera * Vendas) == std::llround(msOrcamento * Vendas)
                    ? "equal"
                    : "DIFFERENT");
    if (msAoFim.size() >= 200)
        std::printf("         server per sale: %.2f ms over the first 100 sales, %.2f ms over the "
                    "last 100\n",
                    msAoFim[99] / 100, (msAoFim.back() - msAoFim[msAoFim.size() - 101]) / 100);
}

void NoSqlite() {
    QTemporaryDir pasta;
    PreparaPasta(pasta.path(), {u"TIPOBANCO=SQLITE"_s, u"BASEDADOS=loja.db"_s});
    Conexao banco(TipoBanco::Sqlite, pasta.path() + u"/loja.db"_s, Conexao::Arquivo::CriaSeFaltar);
    banco.Abre();
    Mede("SQLite", pasta.path(), banco);
}

void NoMariaDb(const QString& host) {
    const QString base =
        u"nfce_bench_envio_"_s + QUuid::createUuid().toString(QUuid::Id128).left(12);
    const auto conexao = [&](const QString& nome) {
        return nfce::StringConexaoMySql(host, nome, u"master"_s, u"brenhova"_s);
    };
    Conexao admin(TipoBanco::MySql, conexao(u"mysql"_s));
    admin.Abre();
    admin.Executa(u"CREATE DATABASE `%1` CHARACTER SET utf8mb4"_s.arg(base));
    {
        QTemporaryDir pasta;
        PreparaPasta(pasta.path(), {u"SERVIDOR="_s + host, u"BASEDADOS="_s + base});
        try {
            Conexao banco(TipoBanco::MySql, conexao(base));
            banco.Abre();
            Mede("MariaDB", pasta.path(), banco);
        } catch (const std::exception& erro) {
            std::printf("MariaDB  failed: %s\n", erro.what());
        }
    }
    admin.Executa(u"DROP DATABASE `%1`"_s.arg(base));
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    NoSqlite();
    const QString host = qEnvironmentVariable("NFCE_MARIADB");
    if (host.isEmpty())
        std::printf("MariaDB  skipped: set NFCE_MARIADB to the server's host\n");
    else
        NoMariaDb(host);
    return 0;
}
