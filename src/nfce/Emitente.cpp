#include "nfce/CampoLimpo.h"
#include "nfce/Documento.h"
#include "nfce/Valores.h"
#include "storage/Ajustes.h"
#include "storage/Formatacao.h"

namespace nfce {

using namespace Qt::StringLiterals;

void EscreveEmitente(DocumentoNfce& doc) {
    const Empresa& e = doc.servidor.empresa;
    const qint64 crt = Le(doc.servidor.pasta, ajustes::RegimeTrib);
    doc.Escreve(u"C|"_s + CampoLimpo(e.Nome, 60) + u"||"_s + CampoLimpo(LimpaTexto(e.Ie), 14) +
                u"||||"_s + QString::number(crt) + u'|');
    doc.Escreve(u"C02|"_s + CampoLimpo(LimpaTexto(e.Cnpj), 14) + u'|');
    doc.Escreve(u"C05|"_s + CampoLimpo(Maiusculas(e.Endereco), 60) + u'|' +
                CampoLimpo(Maiusculas(e.Numero), 60) + u'|' +
                CampoLimpo(Maiusculas(e.Complemento), 60) + u'|' +
                CampoLimpo(Maiusculas(e.Bairro), 60) + u'|' + CampoLimpo(e.CodMunicipio, 7) + u'|' +
                CampoLimpo(Maiusculas(e.Cidade), 60) + u'|' + CampoLimpo(Maiusculas(e.Uf), 2) +
                u'|' + CampoLimpo(LimpaTexto(e.Cep), 8) + u"|1058|BRASIL|"_s +
                CampoLimpo(LimpaTexto(e.Telefone), 14) + u'|');
}

} // namespace nfce
