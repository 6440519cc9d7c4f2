#include "nfce/VerificaVenda.h"

#include "nfce/CampoLimpo.h"
#include "nfce/Documento.h"
#include "nfce/Valores.h"
#include "storage/ErroExecucao.h"
#include "storage/Formatacao.h"

namespace nfce {

using namespace Qt::StringLiterals;

namespace {

// A value as the message names it, on one line.
QString Mostra(const QVariant& valor) {
    return u'"' + CampoLimpo(valor.toString(), 40) + u'"';
}

// The product row of the item's code; none for a code beyond any product's.
bool LeProduto(Conexoes& conexoes, const QVariant& codigo, Registros& produto) {
    qint64 numero = 0;
    try {
        numero = InteiroDe(codigo);
    } catch (const ErroExecucao& erro) {
        if (erro.numero() != ErroEstouro) throw;
        return false;
    }
    conexoes.AbreConsulta(produto,
                          u"SELECT * FROM produtos WHERE codigo = "_s + QString::number(numero));
    return !produto.Eof();
}

// The amount of column `coluna`; one beyond the money range is an error of the sale.
Moeda Valor(const Registros& rs, const QString& coluna, const QString& quem) {
    const QVariant valor = rs.Campo(coluna);
    try {
        return MoedaDe(valor);
    } catch (const ErroExecucao& erro) {
        if (erro.numero() != ErroEstouro) throw;
        throw ErroDaVenda(ErroEstouro,
                          u"%1: %2 fora do limite %3"_s.arg(quem, coluna, Mostra(valor)));
    }
}

// The item's gross amount, as the item record computes it.
Moeda VerificaItem(Conexoes& conexoes, const Registros& item) {
    const QString quem = u"Item "_s + CampoLimpo(item.Texto(u"Item"_s), 20);
    const Moeda quant = Valor(item, u"quant"_s, quem);
    if (quant <= Moeda())
        throw ErroDaVenda(ErroArgumentoInvalido,
                          quem + u": quantidade inválida "_s + Mostra(item.Campo(u"quant"_s)));
    const Moeda valor = Valor(item, u"valor"_s, quem);
    Valor(item, u"Acrescimo"_s, quem);
    Valor(item, u"Desconto"_s, quem);
    Registros produto;
    if (!LeProduto(conexoes, item.Campo(u"codprod"_s), produto))
        throw ErroDaVenda(ErroArgumentoInvalido, quem + u": produto "_s +
                                                     Mostra(item.Campo(u"codprod"_s)) +
                                                     u" não existe"_s);
    Valor(produto, u"icms"_s, quem);
    Valor(produto, u"reducao_base"_s, quem);
    const double bruto = Arredonda(valor.paraDouble() * quant.paraDouble(), 2);
    try {
        return Moeda(bruto);
    } catch (const ErroExecucao&) {
        throw ErroDaVenda(ErroEstouro,
                          quem + u": valor total fora do limite \""_s + TextoNumero(bruto) + u'"');
    }
}

} // namespace

void VerificaVenda(Servidor& servidor, qint64 nNF) {
    Conexoes& conexoes = servidor.conexoes;
    const QString numero = QString::number(nNF);
    const QString quem = u"Venda da NFC-e "_s + numero;
    Registros venda;
    conexoes.AbreConsulta(venda, u"SELECT nfce FROM vendas WHERE nfce = "_s + numero);
    if (venda.Eof())
        throw ErroExecucao(ErroSemRegistroAtual, u"Nenhuma venda com a NFC-e %1."_s.arg(numero));
    conexoes.AbreConsulta(venda, u"SELECT * FROM vendas WHERE nfce = "_s + numero);
    // Every sum and difference of the document stays within the sum of the magnitudes.
    Moeda magnitudes;
    const auto soma = [&](Moeda valor) {
        try {
            magnitudes += valor < Moeda() ? -valor : valor;
        } catch (const ErroExecucao&) {
            throw ErroDaVenda(ErroEstouro, quem + u": soma dos valores fora do limite"_s);
        }
    };
    for (const QString& coluna : ColunasDaVenda())
        soma(Valor(venda, coluna, quem));

    Registros itens;
    conexoes.AbreConsulta(itens, u"SELECT * FROM itens WHERE nfce = "_s + numero +
                                     u" AND situacao = 'N'"_s);
    bool algum = false;
    for (; !itens.Eof(); itens.MoveNext()) {
        if (itens.Texto(u"situacao"_s) != u"N") continue;
        algum = true;
        soma(VerificaItem(conexoes, itens));
    }
    if (!algum) throw ErroDaVenda(ErroArgumentoInvalido, quem + u" não tem itens"_s);
}

} // namespace nfce
