#pragma once

#include <QString>

namespace nfce {

struct Servidor;
class LinhaProtocolo;

// Everything an authorised sale gets, keyed on `chave` (the key in LblMens01).

// Status 100: the sale (and its quote) marked authorised, the XML filed, the receipt printed
// unless `jaImpresso`.
void RegistraAutorizacao(Servidor& s, const LinhaProtocolo& linha, const QString& chave,
                         bool jaImpresso);
// For 100, 204 and 539 in field 5 only: the XML text into vendas.xml_info, one receipt less
// to send; when the authorised XML is missing, hand the signed one to UniNFe and ask for the
// situation; file it once it is there.
void ArquivaXmlAutorizado(Servidor& s, const QString& chave);
// The accounting copy of the authorised XML; false when there is no authorised XML.
bool CopiaContabil(Servidor& s, const QString& chave);
// ENVIOXML=SIM: a copy into the accountant's folder below empresa.pathenvio, when it exists.
void CopiaParaContador(Servidor& s, const QString& chave);
// SEFAZ's protocol number (protNFe/infProt/nProt, digits) in the authorised XML of `chave`;
// "" when UniNFe has filed none or it holds none.
QString ProtocoloDoXml(Servidor& s, const QString& chave);
// Starts uniDANFE on the authorised XML without waiting for it.
void ImprimeDanfe(Servidor& s, const QString& chave);
// Starts uniDANFE on the NFC-e XML `xml`; its place is fixed, not a setting.
void IniciaDanfe(Servidor& s, const QString& xml);

} // namespace nfce
