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
    // All rows of the table.
    void AbreTabela(const std::shared_ptr<Conexao>& conexao, const QString& tabela);
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

private:
    void Abre(Resultado resultado);
    void ExigeAberto() const;
    void ExigeRegistroAtual() const;
    int Coluna(const QString& nome) const;
    const QVariantList& LinhaAtual() const;

    Resultado dados_;
    QHash<QString, int> colunas_; // lower-case name -> column
    qsizetype posicao_ = 0;
    bool aberto_ = false;
};

} // namespace nfce
