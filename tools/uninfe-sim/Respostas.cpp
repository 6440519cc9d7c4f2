#include "Respostas.h"

#include "Ansi.h"
#include "XmlNota.h"

namespace uninfesim {

using namespace Qt::StringLiterals;

namespace {

const QString kFimLinha = u"\r\n"_s;
const QString kDeclaracao = u"<?xml version=\"1.0\" encoding=\"utf-8\"?>"_s;
const QString kNamespace = u"xmlns=\"http://www.portalfiscal.inf.br/nfe\""_s;
const QString kVerAplic = u"MG-NFCE_4.00"_s;

QString Elemento(const QString& nome, const QString& valor) {
    return u"<"_s + nome + u">"_s + Escapa(valor) + u"</"_s + nome + u">"_s;
}

QString Opcional(const QString& nome, const QString& valor) {
    return valor.isEmpty() ? QString() : Elemento(nome, valor);
}

QString CabecalhoSefaz(int tpAmb, int cStat, const QString& xMotivo) {
    return Elemento(u"tpAmb"_s, QString::number(tpAmb)) + Elemento(u"verAplic"_s, kVerAplic) +
           Elemento(u"cStat"_s, QString::number(cStat)) + Elemento(u"xMotivo"_s, xMotivo);
}

QString ProtNFe(const Protocolo& p) {
    const QString id = p.nProt.isEmpty() ? QString() : u" Id=\"ID"_s + p.nProt + u"\""_s;
    return u"<protNFe versao=\"4.00\"><infProt"_s + id + u">"_s +
           Elemento(u"tpAmb"_s, QString::number(p.tpAmb)) + Elemento(u"verAplic"_s, kVerAplic) +
           Elemento(u"chNFe"_s, p.chave) + Elemento(u"dhRecbto"_s, p.dhRecbto) +
           Opcional(u"nProt"_s, p.nProt) + Opcional(u"digVal"_s, p.digVal) +
           Elemento(u"cStat"_s, QString::number(p.cStat)) + Elemento(u"xMotivo"_s, p.xMotivo) +
           u"</infProt></protNFe>"_s;
}

// Every value closed by ";"; a ";" inside one would split it, so it becomes a blank.
QString Campo(const QString& valor) {
    return QString(valor).replace(u';', u' ') + u';';
}

QString LinhaDoProtocolo(const Protocolo& p) {
    return Campo(p.chave.mid(6, 14)) + Campo(p.chave.mid(25, 9)) + Campo(p.chave) +
           Campo(p.dhRecbto) + Campo(p.nProt.isEmpty() ? u"0"_s : p.nProt) +
           (p.digVal.isEmpty() ? QString() : Campo(p.digVal)) + Campo(QString::number(p.cStat)) +
           Campo(p.xMotivo);
}

QString SemDeclaracao(const QString& xml) {
    if (!xml.startsWith(u"<?xml"_s)) return xml;
    return xml.mid(xml.indexOf(u"?>"_s) + 2);
}

} // namespace

QByteArray ChaveEmXml(const QString& chave) {
    return (kDeclaracao + u"<retGerarChave><chaveNFe>"_s + chave + u"</chaveNFe></retGerarChave>"_s)
        .toUtf8();
}

QByteArray ChaveEmTexto(const QString& chave) {
    return chave.toLatin1();
}

QByteArray ErroDeChave(const QString& arquivo, const QStringList& erros) {
    return ParaAnsi(u"Arquivo "_s + arquivo + kFimLinha + erros.join(kFimLinha) + kFimLinha);
}

QByteArray ConversaoFeita(const QStringList& chaves) {
    QString texto =
        u"cStat=01"_s + kFimLinha + u"xMotivo=Conversão efetuada com sucesso."_s + kFimLinha;
    for (const QString& chave : chaves)
        texto += u"Nota fiscal: "_s + chave.mid(25, 9) + u" Serie: "_s + chave.mid(22, 3) +
                 u" - ChaveNFe: "_s + chave + kFimLinha;
    return texto.toUtf8();
}

QByteArray ConversaoFalhou(const QString& mensagemErro) {
    return (u"cStat=99"_s + kFimLinha + u"xMotivo=Falha na conversão"_s + kFimLinha +
            u"MensagemErro="_s + mensagemErro)
        .toUtf8();
}

QByteArray ConversaoVazia() {
    return (u"cStat=02"_s + kFimLinha +
            u"xMotivo=Falha na conversão. Sem informações para converter o arquivo texto"_s +
            kFimLinha)
        .toUtf8();
}

QByteArray LoteEmTexto(qint64 lote) {
    return QByteArray::number(lote) + ';';
}

QByteArray LoteEmXml(qint64 lote) {
    return (kDeclaracao + u"<DadosLoteNfe><NumeroLoteGerado>"_s + QString::number(lote) +
            u"</NumeroLoteGerado></DadosLoteNfe>"_s)
        .toUtf8();
}

QByteArray ErroDeServico(const QString& mensagem) {
    const QString umaLinha = QString(mensagem).replace(u"\r\n"_s, u" "_s).replace(u'\n', u' ');
    return ParaAnsi(u"Versão UniNFe|5.1.0.0 - 03/02/2025"_s + kFimLinha +
                    u"ErrorCode|0000000001"_s + kFimLinha + u"Message|"_s + umaLinha + kFimLinha +
                    u"StackTrace|   em NFe.Service.TaskNFeAutorizacao.Execute()"_s + kFimLinha);
}

QByteArray ProtocoloEmTexto(const RespostaLote& r) {
    QString texto = u";"_s + Campo(QString::number(r.cStat)) + Campo(r.xMotivo);
    if (r.protocolo) texto += kFimLinha + LinhaDoProtocolo(*r.protocolo);
    return ParaAnsi(texto);
}

QByteArray ProtocoloEmXml(const RespostaLote& r) {
    return (kDeclaracao + u"<retEnviNFe versao=\"4.00\" "_s + kNamespace + u">"_s +
            CabecalhoSefaz(r.tpAmb, r.cStat, r.xMotivo) +
            Elemento(u"cUF"_s, QString::number(r.cUF)) + Elemento(u"dhRecbto"_s, r.dhRecbto) +
            (r.protocolo ? ProtNFe(*r.protocolo) : QString()) + u"</retEnviNFe>"_s)
        .toUtf8();
}

QByteArray NfeProcessada(const QString& nfeAssinada, const Protocolo& protocolo) {
    return (kDeclaracao + u"<nfeProc versao=\"4.00\" "_s + kNamespace + u">"_s +
            SemDeclaracao(nfeAssinada) + ProtNFe(protocolo) + u"</nfeProc>"_s)
        .toUtf8();
}

QByteArray SituacaoEmXml(const Situacao& s) {
    return (kDeclaracao + u"<retConsSitNFe versao=\"4.00\" "_s + kNamespace + u">"_s +
            CabecalhoSefaz(s.tpAmb, s.cStat, s.xMotivo) +
            Elemento(u"cUF"_s, QString::number(s.cUF)) + Elemento(u"dhRecbto"_s, s.dhConsulta) +
            Elemento(u"chNFe"_s, s.chave) + (s.protocolo ? ProtNFe(*s.protocolo) : QString()) +
            u"</retConsSitNFe>"_s)
        .toUtf8();
}

QByteArray SituacaoEmTexto(const Situacao& s) {
    const Protocolo p = s.protocolo.value_or(Protocolo{});
    return ParaAnsi(Campo(QString::number(s.tpAmb)) + Campo(QString::number(s.cStat)) +
                    Campo(s.xMotivo) + Campo(p.dhRecbto) + Campo(p.nProt));
}

} // namespace uninfesim
