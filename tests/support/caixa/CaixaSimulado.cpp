// A till beside the server, for the load tests: it writes `quantas` sales with their items,
// one every 50 ms, each in its own transaction, and after each one changes the till's own
// column (`serie`) of an earlier sale. Every write is told on standard output once committed:
//   venda CUPOM TIPO      TIPO: nfce (with an NFC-e), sem (without), cancelada
//   serie CUPOM VALOR
// The first write fails the run: its error goes to standard error, exit status 1.
//
//   caixa-simulado QSQLITE|QODBC ORIGEM PRIMEIRO_CUPOM QUANTAS ESPERA_MS
// ORIGEM: the database file or the ODBC connection string. ESPERA_MS: how long an SQLite
// write waits for another writer (its busy time-out).

#include <QCoreApplication>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QThread>
#include <cstdio>

namespace {

const char* const Tipos[] = {"nfce", "sem", "cancelada"};

[[noreturn]] void Falha(const QString& onde, const QSqlError& erro) {
    std::fprintf(stderr, "%s: %s\n", qPrintable(onde), qPrintable(erro.text()));
    std::exit(1);
}

void Executa(QSqlDatabase& banco, const QString& sql) {
    QSqlQuery consulta(banco);
    if (!consulta.exec(sql)) Falha(sql, consulta.lastError());
}

// Sale `cupom` of kind `tipo`: 29.00 after a discount of 1.00 over items of 10.00 and 20.00.
// With an NFC-e (number 5000 + cupom) its items start without discount, as the server's
// apportionment will find them; the others keep the till's own 0.25 and 0.10.
void GravaVenda(QSqlDatabase& banco, int cupom, int tipo) {
    const int nfce = tipo == 0 ? 5000 + cupom : 0;
    const QString situacao = tipo == 2 ? QStringLiteral("C") : QStringLiteral("N");
    const QString partes = tipo == 0 ? QStringLiteral("0, 0") : QStringLiteral("0.25, 0.10");
    if (!banco.transaction()) Falha(QStringLiteral("BEGIN"), banco.lastError());
    Executa(banco, QStringLiteral("INSERT INTO vendas (data, hora, cupom, nfce, caixa, valor, "
                                  "Desconto, Dinheiro, cliente, nomecliente, situacao, serie) "
                                  "VALUES ('2026-11-15', '10:20:30', %1, %2, 1, 29, 1, 29, 1, "
                                  "'CONSUMIDOR FINAL', '%3', 'T')")
                       .arg(cupom)
                       .arg(nfce)
                       .arg(situacao));
    for (int item = 1; item <= 2; ++item)
        Executa(banco, QStringLiteral("INSERT INTO itens (data, hora, cupom, nfce, caixa, Item, "
                                      "codprod, quant, valor, valortotal, situacao, desconto, "
                                      "acrescimo) VALUES ('2026-11-15', '10:20:30', %1, %2, 1, "
                                      "%3, 1, 1, %4, %4, '%5', %6)")
                           .arg(cupom)
                           .arg(nfce)
                           .arg(item)
                           .arg(item * 10)
                           .arg(situacao, partes));
    if (!banco.commit()) Falha(QStringLiteral("COMMIT"), banco.lastError());
    std::printf("venda %d %s\n", cupom, Tipos[tipo]);
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments();
    if (args.size() != 6) {
        std::fprintf(stderr, "uso: caixa-simulado QSQLITE|QODBC ORIGEM PRIMEIRO_CUPOM QUANTAS "
                             "ESPERA_MS\n");
        return 2;
    }
    QSqlDatabase banco = QSqlDatabase::addDatabase(args[1]);
    banco.setDatabaseName(args[2]);
    if (args[1] == u"QSQLITE")
        banco.setConnectOptions(QStringLiteral("QSQLITE_BUSY_TIMEOUT=") + args[5]);
    if (!banco.open()) Falha(QStringLiteral("abrir"), banco.lastError());
    const int primeiro = args[3].toInt();
    const int quantas = args[4].toInt();
    for (int i = 0; i < quantas; ++i) {
        GravaVenda(banco, primeiro + i, i % 3);
        const int anterior = primeiro + i / 2;
        const QString serie = QStringLiteral("R%1").arg(i);
        Executa(banco, QStringLiteral("UPDATE vendas SET serie = '%1' WHERE cupom = %2")
                           .arg(serie)
                           .arg(anterior));
        std::printf("serie %d %s\n", anterior, qPrintable(serie));
        std::fflush(stdout);
        QThread::msleep(50);
    }
    return 0;
}
