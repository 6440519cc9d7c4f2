#include "nfce/Documento.h"
#include "nfce/Valores.h"

#include <array>

namespace nfce {

using namespace Qt::StringLiterals;

namespace {

// One payment column of the sale and its line: indPag, tPag and description before the
// amount; acquirer CNPJ, tBand, cAut and tpIntegra after it.
struct Forma {
    QStringView coluna;
    bool soPositivo; // written when greater than 0; otherwise when not 0
    QStringView inicio;
    QStringView cauda;
    QStringView inicioJanela;
    QStringView caudaJanela;
};

constexpr std::array<Forma, 9> Formas{{
    {.coluna = u"Dinheiro",
     .soPositivo = true,
     .inicio = u"YA|0|01|DINHEIRO|",
     .cauda = u"|||||",
     .inicioJanela = u"YA|0|01|DINHEIRO|",
     .caudaJanela = u"|||||"},
    {.coluna = u"Cheque",
     .soPositivo = true,
     .inicio = u"YA|1|02|CHEQUE|",
     .cauda = u"|||||",
     .inicioJanela = u"YA|1|03|CHEQUE|",
     .caudaJanela = u"|||||"},
    {.coluna = u"CartaoCred",
     .soPositivo = true,
     .inicio = u"YA|1|03|CARTAO DE CREDITO|",
     .cauda = u"||99||2|",
     .inicioJanela = u"YA|1|03|CARTAO DE CREDITO|",
     .caudaJanela = u"||99||2|"},
    {.coluna = u"CartaoDeb",
     .soPositivo = false,
     .inicio = u"YA|1|04|CARTAO DE DEBITO|",
     .cauda = u"||99||2|",
     .inicioJanela = u"YA|1|04|CARTAO DE DEBITO|",
     .caudaJanela = u"||||2|"},
    {.coluna = u"Vale",
     .soPositivo = true,
     .inicio = u"YA|1|99|VALE|",
     .cauda = u"|||||",
     .inicioJanela = u"YA|1|99|VALE|",
     .caudaJanela = u"|||||"},
    {.coluna = u"Outros",
     .soPositivo = true,
     .inicio = u"YA|1|99|OUTROS|",
     .cauda = u"|||||",
     .inicioJanela = u"YA|1|99|OUTROS|",
     .caudaJanela = u"|||||"},
    {.coluna = u"pix",
     .soPositivo = false,
     .inicio = u"YA|1|17|PIX|",
     .cauda = u"||99||2|",
     .inicioJanela = u"YA|1|99|PIX|",
     .caudaJanela = u"|||||"},
    {.coluna = u"alimentacao",
     .soPositivo = false,
     .inicio = u"YA|1|10|ALIMENTACAO|",
     .cauda = u"||99||2|",
     .inicioJanela = u"YA|1|99|ALIMENTACAO|",
     .caudaJanela = u"|||||"},
    {.coluna = u"credloja",
     .soPositivo = false,
     .inicio = u"YA|1|05|CREDITO LOJA|",
     .cauda = u"||99|||",
     .inicioJanela = u"YA|1|99|CREDITO LOJA|",
     .caudaJanela = u"|||||"},
}};

QString Outros(Moeda valor) {
    return u"YA|1|99|OUTROS|"_s + Dinheiro(valor) + u"|||||"_s;
}

} // namespace

QStringList ColunasDaVenda() {
    QStringList colunas = {u"valor"_s, u"Desconto"_s, u"Acrescimo"_s};
    for (const Forma& f : Formas)
        colunas.append(f.coluna.toString());
    return colunas;
}

void EscrevePagamentos(DocumentoNfce& doc) {
    Registros venda;
    doc.servidor.conexoes.AbreConsulta(venda,
                                       u"SELECT * FROM vendas WHERE nfce = "_s + doc.Numero());
    // Without the sale row the reading fails here (no current record) and no file is left.
    std::array<Moeda, Formas.size()> valores;
    Moeda soma;
    for (std::size_t i = 0; i < Formas.size(); ++i)
        soma += valores[i] = MoedaDe(venda.Campo(Formas[i].coluna.toString()));
    const Moeda acrescimo = MoedaDe(venda.Campo(u"Acrescimo"_s));

    doc.Escreve(u"X|9|"_s);
    const bool janela = doc.variante.codigosJanela;
    for (std::size_t i = 0; i < Formas.size(); ++i) {
        const Forma& f = Formas[i];
        if (f.soPositivo ? valores[i] <= Moeda() : valores[i] == Moeda()) continue;
        QString linha = (janela ? f.inicioJanela : f.inicio).toString();
        linha += Dinheiro(valores[i]);
        linha += janela ? f.caudaJanela : f.cauda;
        doc.Escreve(linha);
    }
    // Payments that add up to less than nothing are made up to zero.
    Moeda total = soma;
    if (Moeda() - soma > Moeda()) {
        doc.Escreve(Outros(Moeda() - soma));
        total = Moeda();
    }
    // A shortfall is sent as one more payment of the whole net amount.
    const Moeda liquido = doc.totais.vProd - doc.totais.vDesc;
    if (total < liquido) doc.Escreve(Outros(liquido));
    if (!doc.variante.troco) return;
    const Moeda troco = total - (doc.totais.vProd + acrescimo - doc.totais.vDesc);
    if (troco > Moeda()) doc.Escreve(u"YA09|"_s + Dinheiro(troco) + u'|');
}

} // namespace nfce
