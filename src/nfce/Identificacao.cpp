#include "nfce/CampoLimpo.h"
#include "nfce/Documento.h"
#include "nfce/Valores.h"
#include "storage/Ajustes.h"
#include "storage/Formatacao.h"

namespace nfce {

using namespace Qt::StringLiterals;

namespace {

// The offset is always -03:00, whatever daylight saving time says.
QString DataHora(const QDate& data, const QTime& hora) {
    return data.toString(u"yyyy-MM-dd") + u'T' + hora.toString(u"HH:mm:ss") + u"-03:00"_s;
}

} // namespace

void EscreveIdentificacao(DocumentoNfce& doc) {
    doc.Escreve(u"NOTAFISCAL|1"_s);
    doc.Escreve(doc.variante.registroA);

    const bool contingencia = doc.contingencia;
    const QString dhEmi = DataHora(doc.dataEmissao, doc.horaEmissao);
    const QString tpAmb = QString::number(InteiroDe(Le(doc.servidor.pasta, ajustes::TmpAmbNfce)));
    // cNF and cDV stay empty: UniNFe fills them. verProc comes from a version text that is
    // never set, written as a blank amount: "0.00".
    const Empresa& e = doc.servidor.empresa;
    doc.Escreve(u"B|31||VENDA|65|"_s + CampoLimpo(Zeros(e.Serie, 3), 3) + u'|' + Zeros(doc.nNF, 9) +
                u'|' + dhEmi + u"||1|1|"_s + CampoLimpo(e.CodMunicipio, 7) + u"|4|"_s +
                (contingencia ? u'9' : u'1') + u"||"_s + tpAmb + u"|1|1|1|0|0.00|"_s +
                (contingencia ? dhEmi : QString()) + u'|' +
                (contingencia ? u"SEM CONEXAO COM A INTERNET OU SEFAZ"_s : QString()) + u'|');
}

} // namespace nfce
