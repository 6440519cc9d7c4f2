#include "nfce/Rateio.h"

#include "nfce/Valores.h"
#include "storage/ErroExecucao.h"
#include "storage/Formatacao.h"

namespace nfce {

using namespace Qt::StringLiterals;

namespace {

// What the sale spreads and over what: the item totals before discount and surcharge.
struct Montante {
    Moeda valor;
    double base = 0;
};

Montante LeVenda(Conexoes& conexoes, const QString& numero, const QString& campo) {
    Registros venda;
    conexoes.AbreConsulta(venda, u"SELECT * FROM vendas WHERE nfce = "_s + numero +
                                     u" AND situacao = 'N'"_s);
    if (venda.Eof()) return {};
    const Moeda desconto = MoedaDe(venda.Campo(u"Desconto"_s));
    const Moeda acrescimo = MoedaDe(venda.Campo(u"Acrescimo"_s));
    return {MoedaDe(venda.Campo(campo)),
            (MoedaDe(venda.Campo(u"valor"_s)) + desconto - acrescimo).paraDouble()};
}

QString ConsultaItens(const QString& numero) {
    return u"SELECT * FROM itens WHERE nfce = "_s + numero + u" AND situacao = 'N'"_s;
}

bool Aberto(const Registros& item) {
    return item.Texto(u"situacao"_s) != u"S";
}

void ReparteEntreItens(Servidor& s, const QString& numero, const QString& coluna,
                       const Montante& m) {
    Registros itens;
    s.conexoes.AbreConsulta(itens, ConsultaItens(numero));
    for (; !itens.Eof(); itens.MoveNext()) {
        if (!Aberto(itens)) continue;
        if (m.base == 0)
            throw ErroExecucao(ErroDivisaoPorZero,
                               u"Divisão por zero: a venda da NFC-e %1 não tem valor sobre o qual "
                               "ratear o %2"_s.arg(numero, coluna));
        const double parte = Trunca(
            MoedaDe(itens.Campo(u"valortotal"_s)).paraDouble() * m.valor.paraDouble() / m.base, 2);
        s.conexoes.Executa(
            u"UPDATE itens SET "_s + coluna + u" = '"_s + Dinheiro(parte) + u"' WHERE item = "_s +
            QString::number(InteiroDe(itens.Campo(u"Item"_s))) + u" AND nfce = "_s + numero);
        s.ambiente.DoEvents();
    }
    s.ambiente.Aguarda(0.2);
}

Moeda SomaDosItens(Servidor& s, const QString& numero, const QString& coluna) {
    Registros itens;
    s.conexoes.AbreConsulta(itens, ConsultaItens(numero));
    Moeda soma;
    for (; !itens.Eof(); itens.MoveNext())
        if (Aberto(itens)) soma += MoedaDe(itens.Campo(coluna));
    s.ambiente.Aguarda(0.2);
    return soma;
}

// The cents that truncation left over go to every item whose total is the largest.
void AcertaResto(Servidor& s, const QString& numero, const QString& coluna, Moeda diferenca) {
    Registros maximo;
    s.conexoes.AbreConsulta(maximo, u"SELECT MAX(valortotal) as vMax FROM itens WHERE nfce = "_s +
                                        numero + u" AND situacao = 'N'"_s);
    const Moeda vMax = maximo.Eof() ? Moeda() : MoedaDe(maximo.Campo(u"vMax"_s));
    const bool soma = diferenca > Moeda();
    s.conexoes.Executa(u"UPDATE itens SET "_s + coluna + u" = "_s + coluna +
                       (soma ? u" + '"_s : u" - '"_s) + Dinheiro(soma ? diferenca : -diferenca) +
                       u"' WHERE nfce = '"_s + numero + u"' AND "_s + u"valortotal = "_s +
                       Dinheiro(vMax));
}

void Rateia(Servidor& s, const QString& nfce, const QString& coluna, const QString& campoVenda) {
    const QString numero = QString::number(InteiroDe(nfce));
    const Montante m = LeVenda(s.conexoes, numero, campoVenda);
    s.conexoes.Executa(u"UPDATE itens SET "_s + coluna + u" = 0 WHERE nfce = "_s + numero +
                       u" AND situacao = 'N'"_s);
    s.ambiente.Aguarda(0.01);
    ReparteEntreItens(s, numero, coluna, m);
    const Moeda soma = SomaDosItens(s, numero, coluna);
    if (soma != m.valor) AcertaResto(s, numero, coluna, m.valor - soma);
}

} // namespace

void RateiaAcrescimo(Servidor& servidor, const QString& nfce) {
    Rateia(servidor, nfce, u"acrescimo"_s, u"Acrescimo"_s);
}

void RateiaDesconto(Servidor& servidor, const QString& nfce) {
    Rateia(servidor, nfce, u"desconto"_s, u"Desconto"_s);
}

} // namespace nfce
