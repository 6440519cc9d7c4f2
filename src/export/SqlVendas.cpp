#include "export/SqlVendas.h"

#include "export/Literais.h"
#include "storage/Formatacao.h"
#include "storage/Registros.h"
#include "storage/Sql.h"

namespace nfce {

using namespace Qt::StringLiterals;

namespace {
QString Valor(const Registros& venda, const QString& campo) {
    return ValorPonto(venda.Campo(campo));
}
} // namespace

QString InsereVenda(const Registros& venda, const QDate& hoje) {
    const QString cupom = venda.Texto(u"cupom"_s);
    return u"INSERT INTO vendas (data, loja, caixa, hora, valor, desconto, acrescimo, cupom, "
           u"numvenda, forpag, itens, dinheiro, cheque, "
           u"cartao, cartaocred, vale, outros, vendedor, cliente, nomecliente, dtimp, ccf, arq, "
           u"situacao, serie, operador, fisc, "
           u"chave, autorizacao, erro, tempo, modelo, pix, alimentacao, credloja, xml_info ) "
           u"VALUES ( "_s +
           ListaDeValores({
               DataMySQL(venda.Data(u"Data"_s)),
               venda.Texto(u"loja"_s),
               Caixa(venda),
               HoraSql(venda, u"hora"_s),
               Valor(venda, u"valor"_s),
               Valor(venda, u"Desconto"_s),
               Valor(venda, u"Acrescimo"_s),
               cupom,
               cupom,
               venda.Texto(u"forpag"_s),
               u"0"_s,
               Valor(venda, u"Dinheiro"_s),
               Valor(venda, u"Cheque"_s),
               Valor(venda, u"CartaoDeb"_s),
               Valor(venda, u"CartaoCred"_s),
               Valor(venda, u"Vale"_s),
               Valor(venda, u"Outros"_s),
               venda.Texto(u"vendedor"_s),
               venda.Texto(u"cliente"_s),
               venda.Texto(u"nomecliente"_s),
               DataMySQL(hoje),
               venda.Texto(u"ccf"_s),
               u"IMP"_s,
               venda.Texto(u"situacao"_s),
               Zeros(0, 20), // twenty zeros whatever the sale's series, as the remote side expects
               TextoDeVal(venda, u"operador"_s),
               DiferenteDeZero(venda, u"nfce"_s) ? u"E"_s : u"I"_s,
               venda.Texto(u"chave"_s),
               venda.Texto(u"autorizacao"_s),
               venda.Texto(u"Erro"_s),
               venda.Texto(u"Tempo"_s),
               u"65"_s,
               Valor(venda, u"pix"_s),
               Valor(venda, u"alimentacao"_s),
               Valor(venda, u"credloja"_s),
               venda.Texto(u"xml_info"_s),
           });
}

QString ConfereVenda(const Registros& venda) {
    return u"SELECT cupom, caixa FROM vendas WHERE cupom = "_s + NumeroSemAspas(venda, u"cupom"_s) +
           u" AND caixa = '"_s + EscapaTexto(Caixa(venda)) + u"' "_s;
}

QString ChaveVenda(const Registros& venda) {
    return u"cupom %1, caixa %2"_s.arg(TextoDeChave(venda, u"cupom"_s),
                                       Zeros(TextoDeChave(venda, u"caixa"_s), 3));
}

} // namespace nfce
