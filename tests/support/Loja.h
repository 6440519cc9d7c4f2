#pragma once

#include "Simulador.h"
#include "context/Servidor.h"
#include "support/BancoTeste.h"

#include <memory>

namespace nfce::teste {

// A shop on SQLite and on MariaDB, today 15/11/2026: the company record (typed with mixed case
// and punctuation, which the golden NFC-e texts depend on), TMPAMBNFCE=2 and TEMP=1, the rows
// of tests/dados/nfce/loja.sql, the company's Envio, Validar and Retorno folders, a server `s`
// with the record loaded and the main connection open, and the UniNFe stand-in `sim`, which
// answers at every pump of the virtual clock while `uninfeRodando`.
class Loja : public BancoTeste {
protected:
    void SetUp() override;
    void TearDown() override;

    // A fresh `s` on the settings and the record as they are now.
    void NovoServidor();
    // Runs tests/dados/nfce/<nome>.sql.
    void Carrega(const QString& nome);
    // Empties the sales, items and contingency periods.
    void Limpa();

    // A sale of today of one item, 21.15 of product 1 paid in cash.
    void Venda(int nfce, int cupom, const QString& tempo = QStringLiteral("5"),
               const QString& erro = {});
    // Columns ("a,b") of the first row of `origem` ("vendas WHERE ..."), joined by "|".
    QString Colunas(const QString& origem, const QString& colunas);
    QString Coluna(const QString& coluna, int nfce) {
        return Colunas(QStringLiteral("vendas WHERE nfce = %1").arg(nfce), coluna);
    }
    // The work list, replaced by `numeros`, or as written.
    void PoeNaFila(const QStringList& numeros);
    QStringList Fila();

    // Below the company folder ("Retorno/x.txt" or "RETORNO\x.txt"): NaEmpresa as given,
    // Existe (files only) resolving each part as the server does; Le gives "" for no file.
    QString NaEmpresa(const QString& relativo) const {
        return pasta.Caminho(QStringLiteral("18123456000104/") + relativo);
    }
    bool Existe(const QString& relativo) const;
    void Grava(const QString& relativo, const QByteArray& conteudo) const {
        pasta.EscreveArquivo(QStringLiteral("18123456000104/") + relativo, conteudo);
    }
    QByteArray Le(const QString& relativo) const;

    std::unique_ptr<Servidor> s;
    std::unique_ptr<uninfesim::Simulador> sim;
    bool uninfeRodando = false;
};

} // namespace nfce::teste
