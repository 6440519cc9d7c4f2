// Real time per row of the remote export: 10 000 items and 2 000 sales, on SQLite files and,
// when NFCE_MARIADB names a server, on MariaDB over the network (target: under 2 ms a row).
// The waits the export makes run on the virtual clock, so only the work itself is timed.
#include "ConfigBench.h"
#include "context/Servidor.h"
#include "export/Exportacao.h"
#include "storage/Esquema.h"
#include "support/AmbienteVirtual.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QUuid>
#include <cstdio>

namespace {

using namespace Qt::StringLiterals;
using nfce::Conexao;
using nfce::TipoBanco;

constexpr int Vendas = 2000;
constexpr int ItensPorVenda = 5;
constexpr int Lote = 500; // rows per INSERT while filling

// Rows of one table in INSERTs of `Lote` rows each.
void Preenche(Conexao& banco, const QString& cabeca, int quantas,
              const std::function<QString(int)>& linha) {
    QStringList valores;
    for (int i = 0; i < quantas; ++i) {
        valores.append(linha(i));
        if (valores.size() < Lote && i + 1 < quantas) continue;
        banco.Executa(cabeca + valores.join(u", "_s));
        valores.clear();
    }
}

void PreencheLoja(Conexao& loja) {
    loja.Executa(u"INSERT INTO forpag VALUES (3, 'PRAZO', '12', 30)"_s);
    Preenche(loja,
             u"INSERT INTO vendas (data, hora, cupom, nfce, caixa, cliente, nomecliente, forpag, "
             "valor, Dinheiro, Vale) VALUES "_s,
             Vendas, [](int i) {
                 const bool prazo = i % 10 == 0; // one sale in ten on credit
                 return u"('2026-11-14', '10:00:00', %1, %1, 1, 5, 'CLIENTE D''ÁVILA', 3, 50, "
                        "%2, %3)"_s.arg(QString::number(i + 1), prazo ? u"0"_s : u"50"_s,
                                        prazo ? u"50"_s : u"0"_s);
             });
    Preenche(loja,
             u"INSERT INTO itens (data, hora, cupom, nfce, Item, caixa, codprod, nomeprod, quant, "
             "valor, valortotal) VALUES "_s,
             Vendas * ItensPorVenda, [](int i) {
                 return u"('2026-11-14', '10:00:00', %1, %1, %2, 1, %3, 'PRODUTO', 2, 5, 10)"_s.arg(
                     QString::number(i / ItensPorVenda + 1), QString::number(i % ItensPorVenda + 1),
                     QString::number(i % 100 + 1));
             });
}

void PreencheRemota(Conexao& remota) {
    Preenche(remota, u"INSERT INTO produtos (codigo, estoque) VALUES "_s, 100,
             [](int i) { return u"(%1, 100000)"_s.arg(i + 1); });
}

void Mede(const char* motor, const QString& pasta, const QStringList& config) {
    EscreveConfig(pasta, config + QStringList{u"VENDASONLINESRV=SIM"_s});
    nfce::AmbienteVirtual ambiente;
    nfce::Servidor servidor(pasta, ambiente);
    servidor.conexoes.PreparaConexaoPrincipal();
    servidor.conexoes.AbreConexaoRemota();
    QElapsedTimer relogio;
    qint64 fimDosItens = -1;
    ambiente.AoBombear([&] {
        if (fimDosItens < 0 && servidor.painel.Caption.startsWith(u"Transmitindo Vendas"))
            fimDosItens = relogio.nsecsElapsed();
    });
    relogio.start();
    const nfce::ResultadoExportacao r = nfce::CmdExportar(servidor);
    const qint64 total = relogio.nsecsElapsed();
    if (fimDosItens < 0) fimDosItens = total;
    std::printf("%-8s %d items (%d confirmed) + %d sales (%d confirmed, %d receivables): %.2f s\n"
                "         items %.3f ms/row, sales %.3f ms/row, overall %.3f ms/row; "
                "%.1f s of waits excluded (virtual clock)\n",
                motor, r.itensLidos, r.itensConfirmados, r.vendasLidas, r.vendasConfirmadas,
                r.contasEnviadas, total / 1e9, fimDosItens / 1e6 / std::max(1, r.itensLidos),
                (total - fimDosItens) / 1e6 / std::max(1, r.vendasLidas),
                total / 1e6 / std::max(1, r.itensLidos + r.vendasLidas),
                ambiente.msAguardados() / 1000.0);
}

void NoSqlite(const QString& pasta) {
    for (const QString& nome : {u"loja"_s, u"remota"_s}) {
        Conexao banco(TipoBanco::Sqlite, pasta + u"/"_s + nome + u".db"_s,
                      Conexao::Arquivo::CriaSeFaltar);
        banco.Abre();
        nfce::CriaEsquema(banco, nome);
        banco.Executa(u"BEGIN"_s);
        nome == u"loja" ? PreencheLoja(banco) : PreencheRemota(banco);
        banco.Executa(u"COMMIT"_s);
    }
    Mede("SQLite", pasta,
         {u"TIPOBANCO=SQLITE"_s, u"BASEDADOS=loja.db"_s, u"SERVIDORBASEDADOS=remota.db"_s});
}

void NoMariaDb(const QString& pasta, const QString& host) {
    const auto conecta = [&](const QString& base) {
        auto banco = std::make_unique<Conexao>(
            TipoBanco::MySql, nfce::StringConexaoMySql(host, base, u"master"_s, u"brenhova"_s));
        banco->Abre();
        return banco;
    };
    const QString sufixo = QUuid::createUuid().toString(QUuid::Id128).left(12);
    const QString loja = u"nfce_bench_loja_"_s + sufixo, remota = u"nfce_bench_remota_"_s + sufixo;
    auto admin = conecta(u"mysql"_s);
    for (const QString& base : {loja, remota}) {
        admin->Executa(u"CREATE DATABASE `%1` CHARACTER SET utf8mb4"_s.arg(base));
        auto banco = conecta(base);
        nfce::CriaEsquema(*banco, base == loja ? u"loja"_s : u"remota"_s);
        base == loja ? PreencheLoja(*banco) : PreencheRemota(*banco);
    }
    Mede("MariaDB", pasta,
         {u"SERVIDOR="_s + host, u"BASEDADOS="_s + loja, u"SERVIDORBASE="_s + host,
          u"SERVIDORBASEDADOS="_s + remota, u"SERVIDORUSUARIO=master"_s});
    for (const QString& base : {loja, remota})
        admin->Executa(u"DROP DATABASE `%1`"_s.arg(base));
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    QTemporaryDir sqlite, mariadb;
    NoSqlite(sqlite.path());
    const QString host = qEnvironmentVariable("NFCE_MARIADB");
    if (host.isEmpty())
        std::printf("MariaDB  skipped: set NFCE_MARIADB to the server's host\n");
    else
        NoMariaDb(mariadb.path(), host);
    return 0;
}
