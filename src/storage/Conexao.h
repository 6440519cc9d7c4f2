#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <QVariant>

class QSqlDatabase;
class QSqlError;

namespace nfce {

enum class TipoBanco { MySql, Sqlite };

// The rows of one statement, fetched whole.
struct Resultado {
    QStringList campos;
    QList<QVariantList> linhas;
};

// One database connection: MySQL through ODBC with a connection string, or an SQLite file.
// Every failure of the database raises ErroExecucao(ErroProvedor) with the database's own
// text; using a closed connection raises ErroObjetoFechado.
class Conexao {
public:
    // Whether opening an SQLite file may create it, or only read it (MySQL ignores it).
    enum class Arquivo { Existente, CriaSeFaltar, SoLeitura };

    // `origem`: the ODBC connection string, or the path of the SQLite file.
    Conexao(TipoBanco tipo, QString origem, Arquivo arquivo = Arquivo::Existente);
    ~Conexao();
    Conexao(const Conexao&) = delete;
    Conexao& operator=(const Conexao&) = delete;

    TipoBanco Tipo() const { return tipo_; }
    const QString& Origem() const { return origem_; }

    // Nothing to do when already open.
    void Abre();
    void Fecha() noexcept;
    // 0 closed, 1 open.
    int Estado() const;

    // Runs one statement; the number of rows it changed (-1 when the database does not say).
    int Executa(const QString& sql);
    Resultado Consulta(const QString& sql);

    // A table or column name quoted for this database.
    QString Identificador(const QString& nome) const;

private:
    QSqlDatabase Banco() const;
    QString ParaOBanco(const QString& sql) const;
    void ExigeAberta() const;
    void AbreSqlite(QSqlDatabase& banco);
    void AbreMySql(QSqlDatabase& banco);

    TipoBanco tipo_;
    QString origem_;
    Arquivo arquivo_;
    QString nome_;
};

} // namespace nfce
