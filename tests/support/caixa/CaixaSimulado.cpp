// A till beside the server for the load test: a sale every 50 ms, each in its own transaction,
// then a change of its own column (serie) of an earlier sale. Each commit is told on standard
// output ("venda CUPOM nfce|sem|cancelada", "serie CUPOM VALOR"); a failure on standard error.
#include <QCoreApplication>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QThread>
#include <cstdio>

namespace {

using namespace Qt::StringLiterals;

void Confere(bool ok, const QString& onde, const QSqlError& erro = {}) {
    if (ok) return;
    std::fprintf(stderr, "%s: %s\n", qPrintable(onde), qPrintable(erro.text()));
    std::exit(1);
}

void Executa(QSqlDatabase& banco, const QString& sql) {
    QSqlQuery consulta(banco);
    Confere(consulta.exec(sql), sql, consulta.lastError());
}

// 29.00 after a discount of 1.00 over items of 10.00 and 20.00; with an NFC-e (5000 + cupom) the
// items start without discount, as the server's apportionment finds them, others keep the till's.
void GravaVenda(QSqlDatabase& banco, int cupom, int tipo) {
    const QString inicio = QString::asprintf("'2026-11-15', '10:20:30', %d, %d, 1", cupom,
                                             tipo == 0 ? 5000 + cupom : 0);
    const QString situacao = tipo == 2 ? u"C"_s : u"N"_s;
    const QString partes = tipo == 0 ? u"0, 0"_s : u"0.25, 0.10"_s;
    Confere(banco.transaction(), u"BEGIN"_s, banco.lastError());
    Executa(banco,
            u"INSERT INTO vendas (data, hora, cupom, nfce, caixa, valor, Desconto, Dinheiro, "
            "cliente, nomecliente, situacao, serie) VALUES (%1, 29, 1, 29, 1, "
            "'CONSUMIDOR FINAL', '%2', 'T')"_s.arg(inicio, situacao));
    Executa(banco,
            u"INSERT INTO itens (data, hora, cupom, nfce, caixa, Item, codprod, quant, valor, "
            "valortotal, situacao, desconto, acrescimo) VALUES (%1, 1, 1, 1, 10, 10, '%2', "
            "%3), (%1, 2, 1, 1, 20, 20, '%2', %3)"_s.arg(inicio, situacao, partes));
    Confere(banco.commit(), u"COMMIT"_s, banco.lastError());
    std::printf("venda %d %s\n", cupom, tipo == 0 ? "nfce" : tipo == 1 ? "sem" : "cancelada");
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments();
    Confere(args.size() == 6, u"uso: caixa-simulado QSQLITE|QODBC ORIGEM (file or ODBC string) "
                              "PRIMEIRO_CUPOM QUANTAS ESPERA_MS (SQLite's busy time-out)"_s);
    QSqlDatabase banco = QSqlDatabase::addDatabase(args[1]);
    banco.setDatabaseName(args[2]);
    if (args[1] == u"QSQLITE") banco.setConnectOptions(u"QSQLITE_BUSY_TIMEOUT="_s + args[5]);
    Confere(banco.open(), u"abrir"_s, banco.lastError());
    for (int i = 0, primeiro = args[3].toInt(); i < args[4].toInt(); ++i) {
        GravaVenda(banco, primeiro + i, i % 3);
        const int anterior = primeiro + i / 2;
        Executa(banco,
                QString::asprintf("UPDATE vendas SET serie = 'R%d' WHERE cupom = %d", i, anterior));
        std::printf("serie %d R%d\n", anterior, i);
        std::fflush(stdout);
        QThread::msleep(50);
    }
}
