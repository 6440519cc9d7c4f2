#include "nfce/Documento.h"
#include "nfce/Valores.h"

namespace nfce {

using namespace Qt::StringLiterals;

void EscreveTotais(DocumentoNfce& doc) {
    Registros venda;
    doc.servidor.conexoes.AbreConsulta(venda,
                                       u"SELECT * FROM vendas WHERE nfce = "_s + doc.Numero());
    if (venda.Eof()) return;
    const TotaisNfce& t = doc.totais;
    const Moeda vFrete = doc.variante.freteDaVenda ? MoedaDe(venda.Campo(u"Acrescimo"_s)) : Moeda();
    const Moeda vNF = t.vProd - t.vDesc + vFrete;
    doc.Escreve(u"W|"_s);
    // Sixteen value fields, as UniNFe takes them for this document.
    doc.Escreve(u"W02|"_s + Dinheiro(t.vBC) + u'|' + Dinheiro(t.vICMS) + u"|0.00|0.00|0.00|"_s +
                Dinheiro(t.vProd) + u'|' + Dinheiro(vFrete) + u"|0.00|"_s + Dinheiro(t.vDesc) +
                u"|0.00|0.00|0.00|0.00|0.00|"_s + Dinheiro(vNF) + u"||"_s);
}

} // namespace nfce
