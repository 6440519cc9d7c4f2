#include "export/SqlItens.h"

#include "export/Literais.h"
#include "storage/Formatacao.h"
#include "storage/Registros.h"
#include "storage/Sql.h"

namespace nfce {

using namespace Qt::StringLiterals;

QString InsereItem(const Registros& item, const QDate& hoje) {
    const QString cupom = item.Texto(u"cupom"_s);
    return u"INSERT INTO itens (data, cupom, loja, caixa, valor, quant, icms, trib, numvenda, "
           u"item, custo, valortotal, ccf, codprod, nomeprod, "
           u"desconto, acrescimo, vendedor, cliente, nomecliente, dataimp, comissao, arq, tipo, "
           u"fisc, situacao, hora, forpag, serie ) VALUES ( "_s +
           ListaDeValores({
               DataMySQL(item.Data(u"Data"_s)),
               cupom,
               item.Texto(u"loja"_s),
               Caixa(item),
               ValorPonto(item.Campo(u"valor"_s)),
               QuantPonto(item.Campo(u"quant"_s)),
               item.Texto(u"icms"_s),
               item.Texto(u"trib"_s),
               cupom,
               item.Texto(u"Item"_s),
               ValorPonto(item.Campo(u"custo"_s)),
               ValorPonto(item.Campo(u"valortotal"_s)),
               item.Texto(u"ccf"_s),
               TextoDeVal(item, u"codprod"_s),
               item.Texto(u"nomeprod"_s),
               ValorPonto(item.Campo(u"Desconto"_s)),
               ValorPonto(item.Campo(u"Acrescimo"_s)),
               item.Texto(u"vendedor"_s),
               item.Texto(u"cliente"_s),
               item.Texto(u"nomecliente"_s),
               DataMySQL(hoje),
               u"0"_s,
               u"IMP"_s,
               u"V"_s,
               DiferenteDeZero(item, u"nfce"_s) ? u"EE"_s : u"II"_s,
               item.Texto(u"situacao"_s),
               HoraSql(item, u"hora"_s),
               item.Texto(u"forpag"_s),
               item.Texto(u"serie"_s),
           });
}

QString BaixaEstoque(const Registros& item, bool estoqueFisico) {
    const QString coluna = estoqueFisico ? u"estoquefisico"_s : u"estoque"_s;
    return u"UPDATE produtos SET %1 = %1 - %2 WHERE codigo = %3"_s.arg(
        coluna, QuantPonto(item.Campo(u"quant"_s)), NumeroSemAspas(item, u"codprod"_s));
}

QString ConfereItem(const Registros& item) {
    return u"SELECT cupom, caixa, item FROM itens WHERE cupom = "_s +
           NumeroSemAspas(item, u"cupom"_s) + u" AND caixa = '"_s + EscapaTexto(Caixa(item)) +
           u"' AND item = "_s + NumeroSemAspas(item, u"Item"_s);
}

QString ChaveItem(const Registros& item) {
    return u"cupom %1, caixa %2, item %3"_s.arg(TextoDeChave(item, u"cupom"_s),
                                                Zeros(TextoDeChave(item, u"caixa"_s), 3),
                                                TextoDeChave(item, u"Item"_s));
}

} // namespace nfce
