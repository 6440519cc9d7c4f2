#include "Layout.h"

#include <QHash>

namespace uninfesim {

using namespace Qt::StringLiterals;

namespace {

// "*" marks a field that must be filled. Layout 4.00, the forms an NFC-e may carry.
constexpr const char* kLayouts[] = {
    "A|versao|Id|",
    "B|cUF*|cNF|natOp*|mod*|serie*|nNF*|dhEmi*|dhSaiEnt|tpNF*|idDest*|cMunFG*|tpImp*|tpEmis*|"
    "cDV|tpAmb*|finNFe*|indFinal*|indPres*|procEmi*|verProc*|dhCont|xJust|",
    "B|cUF*|cNF|natOp*|mod*|serie*|nNF*|dhEmi*|dhSaiEnt|tpNF*|idDest*|cMunFG*|tpImp*|tpEmis*|"
    "cDV|tpAmb*|finNFe*|indFinal*|indPres*|indIntermed|procEmi*|verProc*|dhCont|xJust|",
    "BA02|refNFe|",
    "C|xNome*|xFant|IE*|IEST|IM|CNAE|CRT*|",
    "C02|CNPJ*|",
    "C02a|CPF*|",
    "C05|xLgr*|nro*|xCpl|xBairro*|cMun*|xMun*|UF*|CEP|cPais|xPais|fone|",
    "E|xNome|indIEDest*|IE|ISUF|IM|email|",
    "E02|CNPJ*|",
    "E03|CPF*|",
    "E03a|idEstrangeiro|",
    "E05|xLgr|nro|xCpl|xBairro|cMun|xMun|UF|CEP|cPais|xPais|fone|",
    "H|nItem*|infAdProd|",
    "I|cProd*|cEAN*|xProd*|NCM*|NVE|CEST|indEscala|CNPJFab|cBenef|EXTIPI|CFOP*|uCom*|qCom*|"
    "vUnCom*|vProd*|cEANTrib*|uTrib*|qTrib*|vUnTrib*|vFrete|vSeg|vDesc|vOutro|indTot*|xPed|"
    "nItemPed|nFCI|",
    "I|cProd*|cEAN*|cBarra|xProd*|NCM*|NVE|CEST|indEscala|CNPJFab|cBenef|EXTIPI|CFOP*|uCom*|"
    "qCom*|vUnCom*|vProd*|cEANTrib*|cBarraTrib|uTrib*|qTrib*|vUnTrib*|vFrete|vSeg|vDesc|vOutro|"
    "indTot*|xPed|nItemPed|nFCI|",
    "I05a|NVE|",
    "I05c|CEST|",
    "I05c|CEST|indEscala|CNPJFab|",
    "M|vTotTrib|",
    "N02|orig*|CST*|modBC|vBC|pICMS|vICMS|pFCP|vFCP|",
    "N03|orig*|CST*|modBC|vBC|pICMS|vICMS|vBCFCP|pFCP|vFCP|modBCST|pMVAST|pRedBCST|vBCST|"
    "pICMSST|vICMSST|vBCFCPST|pFCPST|vFCPST|",
    "N04|orig*|CST*|modBC|pRedBC|vBC|pICMS|vICMS|vBCFCP|pFCP|vFCP|vICMSDeson|motDesICMS|",
    "N04|orig*|CST*|modBC|pRedBC|vBC|pICMS|vICMS|vBCFCP|pFCP|vFCP|vICMSDeson|motDesICMS|"
    "indDeduzDeson|",
    "N05|orig*|CST*|modBCST|pMVAST|pRedBCST|vBCST|pICMSST|vICMSST|vBCFCPST|pFCPST|vFCPST|"
    "vICMSDeson|motDesICMS|",
    "N06|orig*|CST*|",
    "N06|orig*|CST*|vICMSDeson|motDesICMS|",
    "N06|orig*|CST*|vICMSDeson|motDesICMS|indDeduzDeson|",
    "N07|orig*|CST*|modBC|pRedBC|vBC|pICMS|vICMSOp|pDif|vICMSDif|vICMS|vBCFCP|pFCP|vFCP|",
    "N08|orig*|CST*|vBCSTRet|pST|vICMSSTRet|vBCFCPSTRet|pFCPSTRet|vFCPSTRet|",
    "N08|orig*|CST*|vBCSTRet|pST|vICMSSubstituto|vICMSSTRet|vBCFCPSTRet|pFCPSTRet|vFCPSTRet|",
    "N08|orig*|CST*|vBCSTRet|pST|vICMSSTRet|vBCFCPSTRet|pFCPSTRet|vFCPSTRet|pRedBCEfet|vBCEfet|"
    "pICMSEfet|vICMSEfet|",
    "N08|orig*|CST*|vBCSTRet|pST|vICMSSubstituto|vICMSSTRet|vBCFCPSTRet|pFCPSTRet|vFCPSTRet|"
    "pRedBCEfet|vBCEfet|pICMSEfet|vICMSEfet|",
    "N09|orig*|CST*|modBC|pRedBC|vBC|pICMS|vICMS|vBCFCP|pFCP|vFCP|modBCST|pMVAST|pRedBCST|vBCST|"
    "pICMSST|vICMSST|vBCFCPST|pFCPST|vFCPST|vICMSDeson|motDesICMS|",
    "N10|orig*|CST*|modBC|vBC|pRedBC|pICMS|vICMS|vBCFCP|pFCP|vFCP|modBCST|pMVAST|pRedBCST|vBCST|"
    "pICMSST|vICMSST|vBCFCPST|pFCPST|vFCPST|vICMSDeson|motDesICMS|",
    "N10c|orig*|CSOSN*|pCredSN|vCredICMSSN|",
    "N10d|orig*|CSOSN*|",
    "N10e|orig*|CSOSN*|modBCST|pMVAST|pRedBCST|vBCST|pICMSST|vICMSST|vBCFCPST|pFCPST|vFCPST|"
    "pCredSN|vCredICMSSN|",
    "N10f|orig*|CSOSN*|modBCST|pMVAST|pRedBCST|vBCST|pICMSST|vICMSST|vBCFCPST|pFCPST|vFCPST|",
    "N10g|orig*|CSOSN*|vBCSTRet|vICMSSTRet|",
    "N10g|orig*|CSOSN*|vBCSTRet|pST|vICMSSTRet|vBCFCPSTRet|pFCPSTRet|vFCPSTRet|",
    "N10g|orig*|CSOSN*|vBCSTRet|pST|vICMSSubstituto|vICMSSTRet|vBCFCPSTRet|pFCPSTRet|"
    "vFCPSTRet|",
    "N10g|orig*|CSOSN*|vBCSTRet|pST|vICMSSTRet|vBCFCPSTRet|pFCPSTRet|vFCPSTRet|pRedBCEfet|"
    "vBCEfet|pICMSEfet|vICMSEfet|",
    "N10g|orig*|CSOSN*|vBCSTRet|pST|vICMSSubstituto|vICMSSTRet|vBCFCPSTRet|pFCPSTRet|vFCPSTRet|"
    "pRedBCEfet|vBCEfet|pICMSEfet|vICMSEfet|",
    "N10h|orig*|CSOSN*|modBC|vBC|pRedBC|pICMS|vICMS|modBCST|pMVAST|pRedBCST|vBCST|pICMSST|"
    "vICMSST|vBCFCPST|pFCPST|vFCPST|pCredSN|vCredICMSSN|",
    "Q02|CST*|vBC|pPIS|vPIS|",
    "Q03|CST*|qBCProd|vAliqProd|vPIS|",
    "Q04|CST*|",
    "Q05|CST*|vPIS|",
    "S02|CST*|vBC|pCOFINS|vCOFINS|",
    "S03|CST*|qBCProd|vAliqProd|vCOFINS|",
    "S04|CST*|",
    "S05|CST*|vCOFINS|",
    "W02|vBC*|vICMS*|vICMSDeson|vBCST|vST|vProd*|vFrete|vSeg|vDesc|vII|vIPI|vPIS|vCOFINS|"
    "vOutro|vNF*|vTotTrib|",
    "W02|vBC*|vICMS*|vICMSDeson|vFCPUFDest|vICMSUFDest|vICMSUFRemet|vBCST|vST|vProd*|vFrete|"
    "vSeg|vDesc|vII|vIPI|vPIS|vCOFINS|vOutro|vNF*|vTotTrib|",
    "W02|vBC*|vICMS*|vICMSDeson|vFCP|vFCPUFDest|vICMSUFDest|vICMSUFRemet|vBCST|vST|vFCPST|"
    "vFCPSTRet|vProd*|vFrete|vSeg|vDesc|vII|vIPI|vIPIDevol|vPIS|vCOFINS|vOutro|vNF*|vTotTrib|",
    "X|modFrete*|",
    "YA|indPag|tPag*|xPag|vPag*|CNPJ|tBand|cAut|tpIntegra|",
    "YA|indPag|tPag*|xPag|vPag*|dPag|CNPJPag|UFPag|CNPJ|tBand|cAut|tpIntegra|CNPJReceb|"
    "idTermPag|",
    "YA09|vTroco|",
    "Z|infAdFisco|infCpl|",
    "ZD|CNPJ|xContato|email|fone|idCSRT|hashCSRT|",
};

Layout LeLayout(const QString& definicao) {
    QStringList partes = definicao.split(u'|');
    partes.removeLast(); // the text after the closing "|"
    Layout layout;
    layout.segmento = partes.takeFirst();
    for (QString campo : partes) {
        if (campo.endsWith(u'*')) {
            campo.chop(1);
            layout.obrigatorios.append(campo);
        }
        layout.campos.append(campo);
    }
    layout.texto = QString(definicao).remove(u'*');
    return layout;
}

const QHash<QString, QList<Layout>>& Tabela() {
    static const QHash<QString, QList<Layout>> tabela = [] {
        QHash<QString, QList<Layout>> t;
        for (const char* definicao : kLayouts) {
            Layout layout = LeLayout(QString::fromLatin1(definicao));
            t[layout.segmento.toUpper()].append(layout);
        }
        return t;
    }();
    return tabela;
}

} // namespace

QList<Layout> LayoutsDe(const QString& segmento) {
    return Tabela().value(segmento.toUpper());
}

bool EhMarcador(const QString& segmento) {
    static const QStringList marcadores = {u"BA"_s, u"N"_s, u"Q"_s, u"S"_s, u"W"_s, u"Y"_s};
    return marcadores.contains(segmento, Qt::CaseInsensitive);
}

} // namespace uninfesim
