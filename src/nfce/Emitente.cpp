#include "nfce/Documento.h"
#include "nfce/Valores.h"
#include "storage/Formatacao.h"

namespace nfce {

using namespace Qt::StringLiterals;

void EscreveEmitente(DocumentoNfce& doc) {
    const Empresa& e = doc.servidor.empresa;
    qint64 crt = InteiroDe(doc.servidor.LerConfig(u"REGIMETRIB"_s));
    if (crt == 0) crt = 1;
    doc.Escreve(u"C|"_s + e.Nome + u"||"_s + LimpaTexto(e.Ie) + u"||||"_s + QString::number(crt) +
                u'|');
    doc.Escreve(u"C02|"_s + LimpaTexto(e.Cnpj) + u'|');
    doc.Escreve(u"C05|"_s + Maiusculas(e.Endereco) + u'|' + Maiusculas(e.Numero) + u'|' +
                Maiusculas(e.Complemento) + u'|' + Maiusculas(e.Bairro) + u'|' + e.CodMunicipio +
                u'|' + Maiusculas(e.Cidade) + u'|' + Maiusculas(e.Uf) + u'|' + LimpaTexto(e.Cep) +
                u"|1058|BRASIL|"_s + LimpaTexto(e.Telefone) + u'|');
}

} // namespace nfce
