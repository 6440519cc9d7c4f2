#include "XmlNota.h"

#include "Chave.h"

#include <QCryptographicHash>
#include <QHash>

namespace uninfesim {

using namespace Qt::StringLiterals;

namespace {

const QString kNamespace = u"http://www.portalfiscal.inf.br/nfe"_s;
const QString kDsig = u"http://www.w3.org/2000/09/xmldsig#"_s;
const QString kC14n = u"http://www.w3.org/TR/2001/REC-xml-c14n-20010315"_s;
const QString kConsultaQr =
    u"https://portalsped.fazenda.mg.gov.br/portalnfce/sistema/qrcode.xhtml?p="_s;
const QString kUrlChave = u"https://portalsped.fazenda.mg.gov.br/portalnfce"_s;
const QByteArray kCsc = "SIMULADOR0CSC0DE0HOMOLOGACAO00001";

const QHash<QString, QString> kIcms = {
    {u"N02"_s, u"ICMS00"_s},     {u"N03"_s, u"ICMS10"_s},     {u"N04"_s, u"ICMS20"_s},
    {u"N05"_s, u"ICMS30"_s},     {u"N06"_s, u"ICMS40"_s},     {u"N07"_s, u"ICMS51"_s},
    {u"N08"_s, u"ICMS60"_s},     {u"N09"_s, u"ICMS70"_s},     {u"N10"_s, u"ICMS90"_s},
    {u"N10c"_s, u"ICMSSN101"_s}, {u"N10d"_s, u"ICMSSN102"_s}, {u"N10e"_s, u"ICMSSN201"_s},
    {u"N10f"_s, u"ICMSSN202"_s}, {u"N10g"_s, u"ICMSSN500"_s}, {u"N10h"_s, u"ICMSSN900"_s},
};
const QHash<QString, QString> kPis = {{u"Q02"_s, u"PISAliq"_s},
                                      {u"Q03"_s, u"PISQtde"_s},
                                      {u"Q04"_s, u"PISNT"_s},
                                      {u"Q05"_s, u"PISOutr"_s}};
const QHash<QString, QString> kCofins = {{u"S02"_s, u"COFINSAliq"_s},
                                         {u"S03"_s, u"COFINSQtde"_s},
                                         {u"S04"_s, u"COFINSNT"_s},
                                         {u"S05"_s, u"COFINSOutr"_s}};

QString Elemento(const QString& nome, const QString& valor) {
    if (valor.isEmpty()) return {};
    return u"<"_s + nome + u">"_s + Escapa(valor) + u"</"_s + nome + u">"_s;
}

QString Grupo(const QString& nome, const QString& conteudo) {
    if (conteudo.isEmpty()) return {};
    return u"<"_s + nome + u">"_s + conteudo + u"</"_s + nome + u">"_s;
}

QString Campos(const Registro& r, const QStringList& nomes) {
    QString xml;
    for (const QString& nome : nomes)
        xml += Elemento(nome, r[nome]);
    return xml;
}

QString Campos(const Registro& r) {
    return Campos(r, r.ordem);
}

QString SemZeros(const QString& valor) {
    bool ok = false;
    const qint64 numero = valor.toLongLong(&ok);
    return ok ? QString::number(numero) : valor;
}

QString Ide(const Registro& b, const QString& chave) {
    QString xml;
    for (const QString& campo : b.ordem) {
        QString valor = b[campo];
        if (campo == u"cNF"_s) valor = chave.mid(35, 8);
        if (campo == u"cDV"_s) valor = chave.right(1);
        if (campo == u"serie"_s || campo == u"nNF"_s) valor = SemZeros(valor);
        xml += Elemento(campo, valor);
    }
    return Grupo(u"ide"_s, xml);
}

QString Emit(const NotaTxt& n) {
    const Registro c = n.Primeiro(u"C"_s);
    return Grupo(u"emit"_s, Campos(n.Primeiro(u"C02"_s), {u"CNPJ"_s}) +
                                Campos(n.Primeiro(u"C02a"_s), {u"CPF"_s}) +
                                Campos(c, {u"xNome"_s, u"xFant"_s}) +
                                Grupo(u"enderEmit"_s, Campos(n.Primeiro(u"C05"_s))) +
                                Campos(c, {u"IE"_s, u"IEST"_s, u"IM"_s, u"CNAE"_s, u"CRT"_s}));
}

QString Dest(const NotaTxt& n) {
    const Registro e = n.Primeiro(u"E"_s);
    return Grupo(u"dest"_s,
                 Campos(n.Primeiro(u"E02"_s), {u"CNPJ"_s}) +
                     Campos(n.Primeiro(u"E03"_s), {u"CPF"_s}) +
                     Campos(n.Primeiro(u"E03a"_s), {u"idEstrangeiro"_s}) + Campos(e, {u"xNome"_s}) +
                     Grupo(u"enderDest"_s, Campos(n.Primeiro(u"E05"_s))) +
                     Campos(e, {u"indIEDest"_s, u"IE"_s, u"ISUF"_s, u"IM"_s, u"email"_s}));
}

struct Item {
    Registro h;
    QString prod, vTotTrib, icms, pis, cofins;
};

void Acrescenta(Item& item, const Registro& r) {
    if (r.segmento == u"I"_s) item.prod = Campos(r);
    if (r.segmento == u"M"_s) item.vTotTrib = Campos(r);
    if (kIcms.contains(r.segmento))
        item.icms = Grupo(u"ICMS"_s, Grupo(kIcms.value(r.segmento), Campos(r)));
    if (kPis.contains(r.segmento))
        item.pis = Grupo(u"PIS"_s, Grupo(kPis.value(r.segmento), Campos(r)));
    if (kCofins.contains(r.segmento))
        item.cofins = Grupo(u"COFINS"_s, Grupo(kCofins.value(r.segmento), Campos(r)));
}

QString Dets(const NotaTxt& n) {
    QList<Item> itens;
    for (const Registro& r : n.registros) {
        if (r.segmento == u"H"_s)
            itens.append({r, {}, {}, {}, {}, {}});
        else if (!itens.isEmpty())
            Acrescenta(itens.last(), r);
    }
    QString xml;
    for (const Item& i : itens)
        xml += u"<det nItem=\""_s + Escapa(i.h[u"nItem"_s]).replace(u'"', u"&quot;"_s) + u"\">"_s +
               Grupo(u"prod"_s, i.prod) +
               Grupo(u"imposto"_s, i.vTotTrib + i.icms + i.pis + i.cofins) +
               Campos(i.h, {u"infAdProd"_s}) + u"</det>"_s;
    return xml;
}

QString Pag(const NotaTxt& n) {
    QString xml;
    for (const Registro& r : n.registros)
        if (r.segmento == u"YA"_s)
            xml +=
                Grupo(u"detPag"_s,
                      Campos(r, {u"indPag"_s, u"tPag"_s, u"xPag"_s, u"vPag"_s, u"dPag"_s,
                                 u"CNPJPag"_s, u"UFPag"_s}) +
                          Grupo(u"card"_s, Campos(r, {u"tpIntegra"_s, u"CNPJ"_s, u"tBand"_s,
                                                      u"cAut"_s, u"CNPJReceb"_s, u"idTermPag"_s})));
    return Grupo(u"pag"_s, xml + Campos(n.Primeiro(u"YA09"_s), {u"vTroco"_s}));
}

QString Sha1Hex(const QByteArray& dados) {
    return QString::fromLatin1(QCryptographicHash::hash(dados, QCryptographicHash::Sha1).toHex())
        .toUpper();
}

// Online documents carry key, version, environment and CSC id; offline ones (tpEmis 9) also
// the day of emission, the total and the digest, since nobody can look them up yet.
QString Suplemento(const NotaTxt& n, const QString& chave, const QString& digVal) {
    const Registro b = n.Primeiro(u"B"_s);
    QString p = chave + u"|2|"_s + b[u"tpAmb"_s];
    if (b[u"tpEmis"_s] == u"9"_s)
        p += u"|"_s + b[u"dhEmi"_s].mid(8, 2) + u"|"_s + n.Primeiro(u"W02"_s)[u"vNF"_s] + u"|"_s +
             QString::fromLatin1(digVal.toLatin1().toHex());
    p += u"|1"_s;
    QString qr = kConsultaQr + p + u"|"_s + Sha1Hex(p.toUtf8() + kCsc);
    qr.replace(u"]]>"_s, u"]]]]><![CDATA[>"_s);
    return u"<infNFeSupl><qrCode><![CDATA["_s + qr + u"]]></qrCode><urlChave>"_s + kUrlChave +
           u"</urlChave></infNFeSupl>"_s;
}

QString Assinatura(const QString& chave, const QByteArray& infNFe, const QString& digVal) {
    const QByteArray valor =
        QCryptographicHash::hash(infNFe, QCryptographicHash::Sha512) +
        QCryptographicHash::hash(digVal.toLatin1(), QCryptographicHash::Sha512);
    const QByteArray certificado = QByteArrayLiteral("UniNFe stand-in test certificate");
    return u"<Signature xmlns=\""_s + kDsig +
           u"\"><SignedInfo><CanonicalizationMethod Algorithm=\""_s + kC14n +
           u"\"/><SignatureMethod Algorithm=\""_s + kDsig + u"rsa-sha1\"/><Reference URI=\"#NFe"_s +
           chave + u"\"><Transforms><Transform Algorithm=\""_s + kDsig +
           u"enveloped-signature\"/><Transform Algorithm=\""_s + kC14n +
           u"\"/></Transforms><DigestMethod Algorithm=\""_s + kDsig + u"sha1\"/><DigestValue>"_s +
           digVal + u"</DigestValue></Reference></SignedInfo><SignatureValue>"_s +
           QString::fromLatin1(valor.toBase64()) +
           u"</SignatureValue><KeyInfo><X509Data><X509Certificate>"_s +
           QString::fromLatin1(certificado.toBase64()) +
           u"</X509Certificate></X509Data></KeyInfo></Signature>"_s;
}

CamposChave CamposDaNota(const NotaTxt& nota) {
    const Registro b = nota.Primeiro(u"B"_s);
    CamposChave c;
    c.cUF = b[u"cUF"_s].toInt();
    c.aamm = b[u"dhEmi"_s].mid(2, 2) + b[u"dhEmi"_s].mid(5, 2);
    c.cnpj = nota.Tem(u"C02"_s) ? nota.Primeiro(u"C02"_s)[u"CNPJ"_s]
                                : nota.Primeiro(u"C02a"_s)[u"CPF"_s];
    c.mod = b[u"mod"_s].toInt();
    c.serie = b[u"serie"_s].toInt();
    c.nNF = b[u"nNF"_s].toLongLong();
    c.tpEmis = b[u"tpEmis"_s].toInt();
    c.cNF = b[u"cNF"_s].toLongLong();
    return c;
}

} // namespace

QString Escapa(const QString& texto) {
    QString escapado;
    escapado.reserve(texto.size());
    for (QChar c : texto) {
        switch (c.unicode()) {
        case u'&':
            escapado += u"&amp;"_s;
            break;
        case u'<':
            escapado += u"&lt;"_s;
            break;
        case u'>':
            escapado += u"&gt;"_s;
            break;
        default:
            escapado += c;
        }
    }
    return escapado;
}

QString ChaveDaNota(const NotaTxt& nota) {
    return MontaChave(CamposDaNota(nota));
}

NfeAssinada MontaNfe(const NotaTxt& nota) {
    NfeAssinada nfe;
    nfe.chave = ChaveDaNota(nota);
    const QString infNFe = u"<infNFe Id=\"NFe"_s + nfe.chave + u"\" versao=\"4.00\">"_s +
                           Ide(nota.Primeiro(u"B"_s), nfe.chave) + Emit(nota) + Dest(nota) +
                           Dets(nota) +
                           Grupo(u"total"_s, Grupo(u"ICMSTot"_s, Campos(nota.Primeiro(u"W02"_s)))) +
                           Grupo(u"transp"_s, Campos(nota.Primeiro(u"X"_s))) + Pag(nota) +
                           Grupo(u"infAdic"_s, Campos(nota.Primeiro(u"Z"_s))) + u"</infNFe>"_s;
    const QByteArray bytes = infNFe.toUtf8();
    nfe.digVal =
        QString::fromLatin1(QCryptographicHash::hash(bytes, QCryptographicHash::Sha1).toBase64());
    nfe.xml = u"<?xml version=\"1.0\" encoding=\"utf-8\"?><NFe xmlns=\""_s + kNamespace + u"\">"_s +
              infNFe + Suplemento(nota, nfe.chave, nfe.digVal) +
              Assinatura(nfe.chave, bytes, nfe.digVal) + u"</NFe>"_s;
    return nfe;
}

} // namespace uninfesim
