#include "storage/Conexao.h"

#include "storage/Dialeto.h"
#include "storage/ErroExecucao.h"

#include <QFileInfo>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>

namespace nfce {

namespace {

QString NomeDoDriver(TipoBanco tipo) {
    return tipo == TipoBanco::MySql ? QStringLiteral("QODBC") : QStringLiteral("QSQLITE");
}

[[noreturn]] void FalhaDoBanco(const QSqlError& erro) {
    QString texto = erro.databaseText().trimmed();
    if (texto.isEmpty()) texto = erro.driverText().trimmed();
    // The ODBC layer gives no text for a statement on a connection the server has dropped.
    if (texto.isEmpty())
        texto = QStringLiteral("O banco de dados não executou o comando e não informou o motivo "
                               "(conexão com o servidor perdida?).");
    throw ErroExecucao(ErroProvedor, texto);
}

// Only "'" then needs escaping in a text value; a backslash is an ordinary character, as
// on the engines the statements were written for. The server's own modes stay in force.
const char* const ModoDaSessao = "SET SESSION sql_mode = "
                                 "CONCAT_WS(',', NULLIF(@@SESSION.sql_mode, ''), "
                                 "'NO_BACKSLASH_ESCAPES')";

// How long a statement on an SQLite file waits while another program writes to it.
constexpr int EsperaSqliteMs = 5000;

// The error of a statement run outside the recordset machinery (invalid when it worked).
QSqlError ErroDe(const QSqlDatabase& banco, const QString& sql) {
    QSqlQuery consulta(banco);
    return consulta.exec(sql) ? QSqlError() : consulta.lastError();
}

} // namespace

Conexao::Conexao(TipoBanco tipo, QString origem, Arquivo arquivo)
    : tipo_(tipo), origem_(std::move(origem)), arquivo_(arquivo),
      nome_(QStringLiteral("nfce-conexao-%1").arg(reinterpret_cast<quintptr>(this), 0, 16)) {
    if (QSqlDatabase::isDriverAvailable(NomeDoDriver(tipo_)))
        QSqlDatabase::addDatabase(NomeDoDriver(tipo_), nome_);
}

Conexao::~Conexao() {
    if (!QSqlDatabase::contains(nome_)) return;
    Fecha();
    QSqlDatabase::removeDatabase(nome_);
}

QSqlDatabase Conexao::Banco() const {
    return QSqlDatabase::database(nome_, false);
}

void Conexao::Abre() {
    QSqlDatabase banco = Banco();
    if (!banco.isValid())
        throw ErroExecucao(
            ErroProvedor,
            QStringLiteral("O driver %1 do Qt não está instalado.").arg(NomeDoDriver(tipo_)));
    if (banco.isOpen()) return;
    banco.setNumericalPrecisionPolicy(QSql::LowPrecisionDouble);
    if (tipo_ == TipoBanco::Sqlite)
        AbreSqlite(banco);
    else
        AbreMySql(banco);
}

void Conexao::AbreMySql(QSqlDatabase& banco) {
    banco.setDatabaseName(origem_);
    // The driver ignores the string's ConnectionTimeout=60; without a limit an unreachable
    // server would hold the program for the system's TCP time-out.
    banco.setConnectOptions(QStringLiteral("SQL_ATTR_LOGIN_TIMEOUT=60"));
    if (!banco.open()) FalhaDoBanco(banco.lastError());
    const QSqlError erro = ErroDe(banco, QString::fromLatin1(ModoDaSessao));
    if (!erro.isValid()) return;
    banco.close();
    FalhaDoBanco(erro);
}

void Conexao::AbreSqlite(QSqlDatabase& banco) {
    // SQLite would silently create an empty database in place of a missing file.
    if (arquivo_ != Arquivo::CriaSeFaltar && !QFileInfo(origem_).isFile())
        throw ErroExecucao(
            ErroProvedor,
            QStringLiteral("Arquivo de banco de dados não encontrado: %1").arg(origem_));
    banco.setDatabaseName(origem_);
    // A write that meets a till's transaction waits for it instead of failing at once.
    QString opcoes = QStringLiteral("QSQLITE_BUSY_TIMEOUT=%1").arg(EsperaSqliteMs);
    if (arquivo_ == Arquivo::SoLeitura) opcoes += QStringLiteral(";QSQLITE_OPEN_READONLY");
    banco.setConnectOptions(opcoes);
    if (!banco.open()) FalhaDoBanco(banco.lastError());
    // The file is only read at the first statement: a file that is no database fails here.
    const QSqlError erro = ErroDe(banco, QStringLiteral("SELECT count(*) FROM sqlite_master"));
    if (erro.isValid()) {
        banco.close();
        FalhaDoBanco(erro);
    }
    if (arquivo_ == Arquivo::SoLeitura) return;
    // Every statement is its own transaction; with a write-ahead log a commit costs no disk
    // flush, so the item-by-item updates and the export stay fast. A folder where the log
    // cannot be made keeps the default journal, which is only slower.
    ErroDe(banco, QStringLiteral("PRAGMA journal_mode = WAL"));
    ErroDe(banco, QStringLiteral("PRAGMA synchronous = NORMAL"));
}

void Conexao::Fecha() noexcept {
    QSqlDatabase banco = Banco();
    if (banco.isOpen()) banco.close();
}

int Conexao::Estado() const {
    return Banco().isOpen() ? 1 : 0;
}

void Conexao::ExigeAberta() const {
    if (!Banco().isOpen())
        throw ErroExecucao(ErroObjetoFechado,
                           QStringLiteral("A operação não é permitida quando o objeto está "
                                          "fechado."));
}

QString Conexao::ParaOBanco(const QString& sql) const {
    return tipo_ == TipoBanco::Sqlite ? AdaptaSqlite(sql) : sql;
}

int Conexao::Executa(const QString& sql) {
    ExigeAberta();
    QSqlQuery consulta(Banco());
    if (!consulta.exec(ParaOBanco(sql))) FalhaDoBanco(consulta.lastError());
    return consulta.numRowsAffected();
}

Resultado Conexao::Consulta(const QString& sql) {
    ExigeAberta();
    QSqlQuery consulta(Banco());
    consulta.setForwardOnly(true);
    if (!consulta.exec(ParaOBanco(sql))) FalhaDoBanco(consulta.lastError());
    Resultado resultado;
    const QSqlRecord registro = consulta.record();
    for (int i = 0; i < registro.count(); ++i)
        resultado.campos.append(registro.fieldName(i));
    while (consulta.next()) {
        QVariantList linha;
        linha.reserve(registro.count());
        for (int i = 0; i < registro.count(); ++i)
            linha.append(consulta.value(i));
        resultado.linhas.append(std::move(linha));
    }
    if (consulta.lastError().isValid()) FalhaDoBanco(consulta.lastError());
    return resultado;
}

QString Conexao::Identificador(const QString& nome) const {
    const QChar aspa = tipo_ == TipoBanco::MySql ? QChar(u'`') : QChar(u'"');
    QString dentro = nome;
    dentro.replace(aspa, QString(2, aspa));
    return aspa + dentro + aspa;
}

} // namespace nfce
