#pragma once

#include "storage/Conexao.h"

#include <QDate>
#include <QHash>
#include <QTime>
#include <memory>

namespace nfce {

// A recordset with a client-side cursor: the rows are fetched whole when it opens, so the
// count is known at once and closing the connection afterwards does not disturb it.
// Reading at EOF raises ErroSemRegistroAtual, an unknown field ErroItemNaoEncontrado, any
// use of a closed recordset ErroObjetoFechado. Field names are case-insensitive.
class Registros {
public:
    void AbreConsulta(Conexao& conexao, const QString& sql);
    // All rows of the table, open for AddNew/Define/Update through `conexao`.
    void AbreTabela(std::shared_ptr<Conexao> conexao, const QString& tabela);
    // Pending edits are dropped.
    void Fecha();
    bool Aberto() const { return aberto_; }

    bool Eof() const;
    int RecordCount() const;
    void MoveFirst();
    void MoveNext();
    QStringList Campos() const;

    // Null stays null.
    QVariant Campo(const QString& nome) const;
    // "" for null; numbers in their shortest invariant form (45.0 gives "45"), dates
    // "yyyy-MM-dd", times "HH:mm:ss".
    QString Texto(const QString& nome) const;
    // A date or time value, or its text ("yyyy-MM-dd", "dd/MM/yyyy"; "HH:mm:ss", "HH:mm");
    // null, empty or unreadable gives an invalid QDate/QTime.
    QDate Data(const QString& nome) const;
    QTime Hora(const QString& nome) const;

    // Tables only. AddNew starts a new row (pending edits are stored first); Define sets a
    // field of the new or the current row; Update writes it (INSERT of the defined fields,
    // or UPDATE of the current row by its primary key). Moving stores pending edits too.
    void AddNew();
    void Define(const QString& nome, const QVariant& valor);
    void Update();

private:
    void Abre(Resultado resultado);
    void ExigeAberto() const;
    void ExigeRegistroAtual() const;
    void ExigeTabela() const;
    int Coluna(const QString& nome) const;
    const QVariantList& LinhaAtual() const;
    void Insere();
    void Altera();
    QString Tabela() const;

    Resultado dados_;
    QHash<QString, int> colunas_; // lower-case name -> column
    qsizetype posicao_ = 0;
    bool aberto_ = false;

    std::shared_ptr<Conexao> conexao_; // set for tables only
    QString tabela_;
    QStringList chave_;
    bool novo_ = false;
    QList<int> definidos_;  // columns set since the last Update
    QVariantList original_; // the current row as read, for its key
};

} // namespace nfce
