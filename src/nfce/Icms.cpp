#include "nfce/Icms.h"

#include "nfce/Valores.h"
#include "storage/Formatacao.h"

namespace nfce {

using namespace Qt::StringLiterals;

namespace {

double BaseBruta(const ItemIcms& item) {
    return Arredonda(item.valor * item.quant + item.acrescimo - item.desconto, 2);
}

// The base goes out rounded as an amount; the tax is computed on the base as it stands.
LinhaIcms Tributado(const ItemIcms& item, const QString& inicio, double vBC) {
    const double pICMS = item.icms / 100;
    const double vICMS = Arredonda(pICMS * vBC / 100, 2);
    return {inicio + Dinheiro(vBC) + u'|' + Dinheiro(pICMS) + u'|' + Dinheiro(vICMS) +
                (item.cst == 0 ? u"|||"_s : u"||||||"_s),
            Arredonda(vBC, 2), vICMS};
}

QString Fixa(qint64 cst, bool csosn300) {
    switch (cst) {
    case 4:
        return u"N06|0|40||3|"_s;
    case 7:
        return u"N08|0|60|||||||"_s;
    case 10:
        // Credit rate and credit amount are sent as zeros, not computed.
        return u"N10c|0|101|0.00||"_s;
    case 11:
        return u"N10d|0|102|"_s;
    case 16:
        return csosn300 ? u"N10d|0|300|"_s : QString();
    case 17:
        return u"N10d|0|400|"_s;
    case 18:
        return u"N10g|0|500|||||||"_s;
    case 19:
        // The 18.00 rate is a constant of this line.
        return u"N10h|0|900|3|0.00||0.00|0.00|5|||0.00|18.00|0.00||||||"_s;
    default:
        return {};
    }
}

} // namespace

LinhaIcms CalculaIcms(const ItemIcms& item, bool csosn300) {
    if (!item.cst) return {};
    if (*item.cst == 0) return Tributado(item, u"N02|0|00|3|"_s, BaseBruta(item));
    if (*item.cst == 2) {
        const double bruta = BaseBruta(item);
        const double reducao = bruta * (item.reducao / 100);
        return Tributado(item, u"N04|0|20|3|"_s + Dinheiro(item.reducao) + u'|',
                         Arredonda(bruta, 2) - reducao);
    }
    return {Fixa(*item.cst, csosn300), 0, 0};
}

} // namespace nfce
