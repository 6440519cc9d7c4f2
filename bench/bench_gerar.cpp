// Generating the NFC-e text of a large sale (target: under 1 ms per item on SQLite, under 3 ms
// on MariaDB over loopback), with the program's own waits taken by a virtual clock so that only
// the work is measured. MariaDB runs when NFCE_MARIADB names the server (user master).
// Memory: peak RSS after each size; the text is written as it goes.
#include "ConfigBench.h"
#include "context/Servidor.h"
#include "nfce/GeraNfce.h"
#include "storage/Empresa.h"
#include "storage/Esquema.h"
#include "support/AmbienteVirtual.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <cstdio>
#include <sys/resource.h>

using namespace nfce;
using namespace Qt::StringLiterals;

namespace {

long PicoRssKb() {
    rusage uso{};
    getrusage(RUSAGE_SELF, &uso);
    return uso.ru_maxrss;
}

// One sale of `itens` items over products of every tax code, in statements of 500 rows.
void CriaVenda(Conexao& banco, int nfce, int itens) {
    banco.Executa(
        u"INSERT INTO vendas (nfce, cupom, data, hora, valor, Desconto, Acrescimo, "
        "Dinheiro) VALUES (%1, %1, '2026-11-15', '10:20:30', %2, 1.23, 0.45, %3)"_s.arg(nfce)
            .arg(itens * 3.0 - 1.23 + 0.45)
            .arg(itens * 3.0 + 10));
    QStringList linhas;
    for (int i = 1; i <= itens; ++i) {
        linhas << u"(%1, %2, %3, %4, 2, 1.5, 3)"_s.arg(nfce).arg(nfce).arg(i).arg(1 + i % 12);
        if (linhas.size() == 500 || i == itens) {
            banco.Executa(u"INSERT INTO itens (nfce, cupom, Item, codprod, quant, valor, "
                          "valortotal) VALUES "_s +
                          linhas.join(u", "));
            linhas.clear();
        }
    }
}

void Mede(const char* motor, const QString& pasta, Conexao& banco) {
    CriaEsquema(banco, u"loja"_s);
    const int codigos[] = {0, 2, 4, 7, 10, 11, 16, 17, 18, 19, 5, 0};
    QStringList produtos;
    for (int i = 0; i < 12; ++i)
        produtos << u"(%1, 'Produto %1', '1234567', '5102', 'un', %2, 1800, 10)"_s.arg(i + 1).arg(
            codigos[i]);
    banco.Executa(u"INSERT INTO produtos (codigo, nome, ncm, cfop, unidade, CST, icms, "
                  "reducao_base) VALUES "_s +
                  produtos.join(u", "));
    banco.Executa(u"INSERT INTO caixas (nome) VALUES ('Maria')"_s);

    AmbienteVirtual ambiente;
    Servidor servidor(pasta, ambiente);
    servidor.empresa = CarregaEmpresa(pasta);
    servidor.conexoes.PreparaConexaoPrincipal();
    servidor.conexoes.ReabreConexao();
    QDir().mkpath(pasta + u"/11222333000181/Validar"_s);
    servidor.painel.lblData = u"15/11/2026"_s;
    servidor.painel.lblHora = u"10:20:30"_s;
    for (int itens : {100, 1000, 5000}) {
        CriaVenda(banco, itens, itens);
        const qint64 esperas = ambiente.msAguardados();
        QElapsedTimer relogio;
        relogio.start();
        const QString arquivo = GeraNfce(servidor, QString::number(itens));
        const double ms = relogio.nsecsElapsed() / 1e6;
        std::printf("%-8s %5d items: %8.1f ms, %.3f ms/item, file %lld KB, waits %.2f s "
                    "(virtual, not counted), peak RSS %ld KB\n",
                    motor, itens, ms, ms / itens, QFile(arquivo).size() / 1024,
                    (ambiente.msAguardados() - esperas) / 1000.0, PicoRssKb());
    }
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    const QStringList empresa = {u"CNPJ=11222333000181"_s, u"NOME=Bench"_s, u"SERIE=1"_s};
    {
        QTemporaryDir pasta;
        GravaRegistroEmpresa(pasta.path(), empresa);
        EscreveConfig(pasta.path(), {u"TIPOBANCO=SQLITE"_s, u"BASEDADOS=loja.db"_s, u"TEMP=3"_s});
        Conexao banco(TipoBanco::Sqlite, pasta.path() + u"/loja.db"_s,
                      Conexao::Arquivo::CriaSeFaltar);
        banco.Abre();
        Mede("SQLite", pasta.path(), banco);
    }
    const QString host = qEnvironmentVariable("NFCE_MARIADB");
    if (host.isEmpty()) {
        std::printf("MariaDB: NFCE_MARIADB not set, skipped\n");
        return 0;
    }
    const QString base = u"nfce_bench_%1"_s.arg(QCoreApplication::applicationPid());
    const auto conexao = [&](const QString& nome) {
        return StringConexaoMySql(host, nome, u"master"_s, u"brenhova"_s);
    };
    Conexao admin(TipoBanco::MySql, conexao(u"mysql"_s));
    admin.Abre();
    admin.Executa(u"CREATE DATABASE `%1` CHARACTER SET utf8mb4"_s.arg(base));
    {
        QTemporaryDir pasta;
        GravaRegistroEmpresa(pasta.path(), empresa);
        EscreveConfig(pasta.path(), {u"SERVIDOR="_s + host, u"BASEDADOS="_s + base, u"TEMP=3"_s});
        Conexao banco(TipoBanco::MySql, conexao(base));
        banco.Abre();
        Mede("MariaDB", pasta.path(), banco);
    }
    admin.Executa(u"DROP DATABASE `%1`"_s.arg(base));
    return 0;
}
