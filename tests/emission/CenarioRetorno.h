#pragma once

#include "apoio/BancoTeste.h"
#include "contexto/Servidor.h"

#include <QFile>
#include <memory>

namespace nfce::teste {

inline const QString Chave = QStringLiteral("31261118123456000190650010000012349123456784");

// The sale being emitted as the drivers leave it before UniNFe answers: cupom 501, NFC-e 1234,
// from quote 77, items 1 and 3 (products 4321 and 78), key in LblMens01, 5 receipts to send,
// in a company folder spelt as UniNFe makes it ("Retorno", "Enviado\Autorizados\112026", ...).
// Two rows show a statement or lookup keyed wrongly: cupom 1234 with NFC-e 501 (its item 3 is
// product 999), and cupom 900 with the same NFC-e 1234, which what is keyed on it reaches too.
class CenarioRetorno : public BancoTeste {
protected:
    void SetUp() override;
    void TearDown() override {
        s.reset();
        BancoTeste::TearDown();
    }
    // Back to that state (rows, files, settings `config`, a new Servidor): one case of a table.
    void Reinicia(const QStringList& config = {});

    // Files below the company folder, e.g. "Retorno/x.txt"; Le gives "" for a missing one.
    QString NaEmpresa(const QString& relativo) const;
    void Grava(const QString& relativo, const QByteArray& conteudo) const;
    QByteArray Le(const QString& relativo) const;
    bool Existe(const QString& relativo) const { return QFile::exists(NaEmpresa(relativo)); }
    // "54;" as the lot file, and the protocol file of lot 54 with UniNFe's status line first.
    void Responde(const QByteArray& linhas) const;

    // Columns ("a,b") of the first row of `origem` ("vendas WHERE ..."), joined by "|".
    QString Colunas(const QString& origem, const QString& colunas);
    QString Venda(const QString& colunas, int cupom = 501) {
        return Colunas(QStringLiteral("vendas WHERE cupom = %1").arg(cupom), colunas);
    }
    // UPDATE statements that reached the row of `cupom`, counted by a trigger.
    int Atualizacoes(int cupom = 501) {
        return Conta(QStringLiteral("rastro"), QStringLiteral("cupom = %1").arg(cupom));
    }

    std::unique_ptr<Servidor> s;
};

// A line of "-pro-rec.txt": with digVal the code stands in field 6; without it (rejections) in
// field 5, the reason in field 6.
QByteArray Protocolo(const QByteArray& codigo, const QByteArray& motivo, bool digVal = false);

} // namespace nfce::teste
