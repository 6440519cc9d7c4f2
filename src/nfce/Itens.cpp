#include "nfce/CampoLimpo.h"
#include "nfce/Documento.h"
#include "nfce/Icms.h"
#include "nfce/Rateio.h"
#include "nfce/Valores.h"
#include "storage/Configuracao.h"
#include "storage/Formatacao.h"

namespace nfce {

using namespace Qt::StringLiterals;

namespace {

// A product row, or nulls for every field when the code finds none.
class Produto {
public:
    Produto(Conexoes& conexoes, qint64 codigo) {
        conexoes.AbreConsulta(rs_, u"SELECT * FROM produtos WHERE codigo = "_s +
                                       QString::number(codigo));
    }
    QVariant Campo(const QString& nome) const { return rs_.Eof() ? QVariant() : rs_.Campo(nome); }
    QString Texto(const QString& nome) const { return rs_.Eof() ? QString() : rs_.Texto(nome); }
    std::optional<qint64> Cst() const {
        const QVariant cst = Campo(u"CST"_s);
        if (cst.isNull() || Vazio(cst.toString())) return std::nullopt;
        return InteiroDe(cst);
    }

private:
    Registros rs_;
};

void EscreveItem(DocumentoNfce& doc, const Registros& item) {
    doc.Escreve(u"H|"_s + QString::number(InteiroDe(item.Campo(u"Item"_s))) + u"||"_s);
    const Produto produto(doc.servidor.conexoes, InteiroDe(item.Campo(u"codprod"_s)));

    const double valor = MoedaDe(item.Campo(u"valor"_s)).paraDouble();
    const double quant = MoedaDe(item.Campo(u"quant"_s)).paraDouble();
    const Moeda acrescimo = MoedaDe(item.Campo(u"Acrescimo"_s));
    const Moeda desconto = MoedaDe(item.Campo(u"Desconto"_s));
    const double vProd = Arredonda(valor * quant, 2);
    const QString unidade = CampoLimpo(Maiusculas(produto.Texto(u"unidade"_s)), 6);
    const QString quantidade = QuantPonto(quant);
    const QString unitario = Dinheiro(valor);
    // The item's share of the sale surcharge goes as freight, here and in the totals.
    doc.Escreve(u"I|"_s + CampoLimpo(Zeros(produto.Campo(u"codigo"_s), 6), 60) + u"|SEM GTIN|"_s +
                CampoLimpo(Maiusculas(Apara(produto.Texto(u"nome"_s))), 120) + u'|' +
                CampoLimpo(Zeros(produto.Campo(u"ncm"_s), 8), 8) + u"||"_s +
                CampoLimpo(produto.Texto(u"cest"_s), 7) + u"|||||"_s +
                CampoLimpo(produto.Texto(u"cfop"_s), 4) + u'|' + unidade + u'|' + quantidade +
                u'|' + unitario + u'|' + Dinheiro(vProd) + u"|SEM GTIN|"_s + unidade + u'|' +
                quantidade + u'|' + unitario + u'|' + Dinheiro(acrescimo) + u"||"_s +
                Dinheiro(desconto) + u"||1||||"_s);
    doc.totais.vProd += Moeda(vProd);
    doc.totais.vDesc += desconto;

    doc.Escreve(u"M||"_s);
    doc.Escreve(u"N|"_s);
    const LinhaIcms icms =
        CalculaIcms({valor, quant, acrescimo.paraDouble(), desconto.paraDouble(), produto.Cst(),
                     MoedaDe(produto.Campo(u"icms"_s)).paraDouble(),
                     MoedaDe(produto.Campo(u"reducao_base"_s)).paraDouble()},
                    doc.variante.icmsCsosn300);
    if (!icms.linha.isEmpty()) doc.Escreve(icms.linha);
    doc.totais.vBC += Moeda(icms.vBC);
    doc.totais.vICMS += Moeda(icms.vICMS);
    // PIS and COFINS: code 08 for every item.
    doc.Escreve(u"Q|"_s);
    doc.Escreve(u"Q04|08|"_s);
    doc.Escreve(u"S|"_s);
    doc.Escreve(u"S04|08|"_s);
}

} // namespace

void EscreveItens(DocumentoNfce& doc) {
    doc.totais = {};
    RateiaAcrescimo(doc.servidor, doc.Numero());
    RateiaDesconto(doc.servidor, doc.Numero());
    Registros itens;
    doc.servidor.conexoes.AbreConsulta(itens, u"SELECT * FROM itens WHERE nfce = "_s +
                                                  doc.Numero() + u" AND situacao = 'N'"_s);
    // MySQL compares 'n' and 'N' alike; only the open items proper are invoiced.
    for (; !itens.Eof(); itens.MoveNext())
        if (itens.Texto(u"situacao"_s) == u"N") EscreveItem(doc, itens);
}

} // namespace nfce
