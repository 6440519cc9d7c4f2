#include "emission/Autorizacao.h"

#include "context/Servidor.h"
#include "emission/ArquivosDaVenda.h"
#include "emission/ConsultaSituacao.h"
#include "emission/LinhaProtocolo.h"
#include "emission/RespostaUniNfe.h"
#include "storage/Ajustes.h"
#include "storage/ArquivoTexto.h"
#include "storage/Configuracao.h"
#include "storage/Formatacao.h"
#include "storage/Pastas.h"
#include "storage/Registros.h"
#include "storage/Sql.h"

#include <QFile>
#include <QRegularExpression>
#include <QXmlStreamReader>

namespace nfce {

using namespace Qt::StringLiterals;

namespace {

QString Numero(qint32 n) {
    return QString::number(n);
}

void MarcaXml(Servidor& s) {
    s.conexoes.Executa(u"UPDATE vendas SET xml = 'S' WHERE nfce = "_s + Numero(s.venda.NumNfce));
}

void MarcaAutorizada(Servidor& s, const LinhaProtocolo& linha) {
    const EstadoVenda& v = s.venda;
    if (v.VendaOrcamento)
        s.conexoes.Executa(u"UPDATE orcamento SET autorizacao =  '"_s +
                           EscapaTexto(linha.Protocolo()) + u"', tempo = '"_s +
                           EscapaTexto(v.TipoEmissao) + u"', emitido = 'S', cupomnfce = '"_s +
                           Numero(v.NumCupom) + u"' WHERE cupom = "_s + Numero(v.NumOrcamento));
    s.conexoes.Executa(u"UPDATE vendas SET autorizacao = '"_s + EscapaTexto(linha.Protocolo()) +
                       u"', chave = '"_s + EscapaTexto(linha.Chave()) + u"', erro = '"_s +
                       EscapaTexto(linha.Motivo()) + u"', tempo = '1' WHERE cupom = "_s +
                       Numero(v.NumCupom));
}

void GuardaTextoDoXml(Servidor& s, const QString& xml) {
    if (RespostaPresente(s, xml, LimiteXml))
        s.conexoes.Executa(u"UPDATE vendas SET xml_info = '"_s + EscapaTexto(TextoDoArquivo(xml)) +
                           u"' WHERE nfce = "_s + Numero(s.venda.NumNfce));
    s.painel.LblQuantCup = TextoNumero(Val(s.painel.LblQuantCup) - 1);
}

} // namespace

QString ProtocoloDoXml(Servidor& s, const QString& chave) {
    const QString xml = ArquivosDaVenda(s).XmlAutorizado(chave);
    if (!RespostaPresente(s, xml, LimiteXml)) return {};
    QXmlStreamReader leitor(TextoDoArquivo(xml));
    QStringList caminho;
    while (!leitor.atEnd()) {
        const QXmlStreamReader::TokenType token = leitor.readNext();
        if (token == QXmlStreamReader::EndElement && !caminho.isEmpty()) caminho.removeLast();
        if (token != QXmlStreamReader::StartElement) continue;
        caminho.append(leitor.name().toString());
        if (caminho.size() >= 3 &&
            caminho.sliced(caminho.size() - 3).join(u'/') == u"protNFe/infProt/nProt"_s) {
            const QString nProt = leitor.readElementText().trimmed();
            static const QRegularExpression digitos(u"^\\d{1,60}$"_s);
            return digitos.match(nProt).hasMatch() ? nProt : QString();
        }
    }
    return {};
}

void ImprimeDanfe(Servidor& s, const QString& chave) {
    const EstadoVenda& v = s.venda;
    IniciaDanfe(s, s.pasta + u"\\"_s + v.CnpjEmpresa + u"\\ENVIADO\\Autorizados\\"_s +
                       v.MesAutorizados + u"\\"_s + chave + u"-procNFe.xml"_s);
}

void IniciaDanfe(Servidor& s, const QString& xml) {
    s.ambiente.IniciaPrograma(u"c:\\unimake\\uninfe\\uniDANFE.exe"_s, {u"a="_s + xml, u"t=nfce"_s});
}

bool CopiaContabil(Servidor& s, const QString& chave) {
    const ArquivosDaVenda arquivos(s);
    const QString xml = arquivos.XmlAutorizado(chave);
    if (!ArquivoExiste(xml)) return false;
    CopiaRegistrando(s, xml, arquivos.CopiaContabil(s.venda.MesContabil, s.venda.NumNfce));
    return true;
}

void CopiaParaContador(Servidor& s, const QString& chave) {
    if (!Le(s.pasta, ajustes::EnvioXml)) return;
    Registros empresa;
    s.conexoes.AbreTabela(empresa, u"empresa"_s);
    const QString raiz = empresa.Eof() ? QString() : empresa.Texto(u"pathenvio"_s);
    empresa.Fecha();
    // The accountant's folder is never created here: no folder, no copy.
    if (Vazio(raiz)) return;
    const EstadoVenda& v = s.venda;
    const QString pasta = Caminho(raiz, v.CnpjEmpresa + u"\\Contabilidade\\"_s + v.SerieNfce +
                                            u"\\"_s + s.ambiente.Data().toString(u"MMyyyy"_s));
    const QString xml = ArquivosDaVenda(s).XmlAutorizado(chave);
    if (PastaExiste(pasta) && ArquivoExiste(xml))
        CopiaRegistrando(s, xml, pasta + u"/"_s + Zeros(v.NumNfce, 9) + u"-procNFe.xml"_s);
}

void RegistraAutorizacao(Servidor& s, const LinhaProtocolo& linha, const QString& chave,
                         bool jaImpresso) {
    const QString xml = ArquivosDaVenda(s).XmlAutorizado(chave);
    MarcaAutorizada(s, linha);
    if (CopiaContabil(s, chave)) MarcaXml(s);
    if (!jaImpresso) {
        if (ArquivoExiste(xml)) MarcaXml(s);
        if (s.venda.ModoRetorno == u"CP"_s && s.venda.ImprimeCupom) ImprimeDanfe(s, chave);
    }
    CopiaParaContador(s, chave);
}

void ArquivaXmlAutorizado(Servidor& s, const QString& chave) {
    const ArquivosDaVenda arquivos(s);
    GuardaTextoDoXml(s, arquivos.XmlAutorizado(chave));
    if (!ArquivoExiste(arquivos.XmlAutorizado(chave))) {
        const QString validado = arquivos.XmlValidado(chave);
        const QString falha = arquivos.XmlComFalha(chave);
        if (ArquivoExiste(validado))
            CopiaRegistrando(s, validado, arquivos.XmlEmProcessamento(chave));
        else if (ArquivoExiste(falha))
            CopiaRegistrando(s, falha, arquivos.XmlEmProcessamento(chave));
        s.ambiente.Aguarda(1);
        ConsultaSituacao(s, chave);
    }
    // ConsultaSituacao has moved MesAutorizados to the day folder: look there now.
    if (!ArquivoExiste(arquivos.XmlAutorizado(chave))) return;
    MarcaXml(s);
    CopiaContabil(s, chave);
    const QString validado = arquivos.XmlValidado(chave);
    if (ArquivoExiste(validado)) QFile::remove(validado);
}

} // namespace nfce
