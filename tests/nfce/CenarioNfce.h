#pragma once

#include "apoio/BancoTeste.h"
#include "contexto/Servidor.h"

#include <memory>

namespace nfce::teste {

// A shop ready for generating NFC-e texts on SQLite and on MariaDB: the company record, the
// shop's rows of tests/dados/nfce/loja.sql, the exchange folders, and a Servidor on the
// database with the panel showing 15/11/2026 10:20:30.
class CenarioNfce : public BancoTeste {
protected:
    void SetUp() override;
    void TearDown() override;

    // Settings beyond the databases' lines, after TMPAMBNFCE=2.
    void ConfiguraNfce(const QStringList& extras = {});
    // Runs tests/dados/nfce/<nome>.sql.
    void Carrega(const QString& nome);
    // Empties the sales, items and contingency periods.
    void Limpa();
    // One column of every row, as amounts ("0.00").
    QStringList Valores(const QString& sql);
    QString Validar(const QString& nome = {}) const;
    // The file's bytes ("" when there is none).
    static QByteArray Gerado(const QString& caminho);
    // Line by line, so a difference shows where it is, then byte for byte.
    static void ComparaComModelo(const QString& caminho, const QString& modelo);

    std::unique_ptr<Servidor> servidor;
};

} // namespace nfce::teste
