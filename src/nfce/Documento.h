#pragma once

#include "context/Servidor.h"
#include "nfce/GravadorLinhas.h"
#include "nfce/VarianteGerador.h"
#include "storage/Moeda.h"

#include <QDate>
#include <QTime>

namespace nfce {

// The running totals of the items that the totals record needs.
struct TotaisNfce {
    Moeda vProd;
    Moeda vDesc;
    Moeda vBC;
    Moeda vICMS;
};

// One NFC-e text being written: what every record writer shares.
struct DocumentoNfce {
    Servidor& servidor;
    const VarianteGerador& variante;
    qint64 nNF;
    bool contingencia; // offline contingency (else online)
    QDate dataEmissao; // dhEmi, and dhCont in contingency
    QTime horaEmissao;
    GravadorLinhas& arquivo;
    TotaisNfce totais{};

    QString Numero() const { return QString::number(nNF); }
    void Escreve(const QString& linha) { arquivo.Escreve(linha); }
};

// The amounts of the sale row that the document reads: its total, discount, surcharge and
// payment columns.
QStringList ColunasDaVenda();

// The record writers, in the order of the file.
void EscreveIdentificacao(DocumentoNfce& doc); // NOTAFISCAL, A, B
void EscreveEmitente(DocumentoNfce& doc);      // C, C02, C05
void EscreveDestinatario(DocumentoNfce& doc);  // E with E02 or E03, for an identified customer
void EscreveItens(DocumentoNfce& doc);         // apportionment, then H to S04 per item
void EscreveTotais(DocumentoNfce& doc);        // W, W02
void EscrevePagamentos(DocumentoNfce& doc);    // X, YA, YA09
void EscreveInformacoes(DocumentoNfce& doc);   // Z

} // namespace nfce
