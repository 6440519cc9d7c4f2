// Sending: "<key>-nfe.xml" in Envio gets a lot number at once and SEFAZ's answer when the
// scenario says it is due.
#include "Arquivos.h"
#include "Chave.h"
#include "LeituraXml.h"
#include "Motivos.h"
#include "Simulador.h"

#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>
#include <algorithm>

namespace uninfesim {

using namespace Qt::StringLiterals;

namespace {

const QString kLoteRecusado = u"O servidor remoto retornou um erro: (503) Servidor indisponível."_s;

QString NomeDoLote(qint64 lote) {
    return QString::number(lote).rightJustified(15, u'0');
}

bool Vencido(const Cenario& c, qint64 passagens, const QDateTime& recebido,
             const QDateTime& agora) {
    return c.desfecho != Desfecho::SemResposta && passagens >= c.atrasoPassagens &&
           agora >= recebido.addSecs(c.atrasoSegundos);
}

} // namespace

void Simulador::AtendeEnvios(const QString& empresa, const QDateTime& agora) {
    const QString sufixo = u"-nfe.xml"_s;
    for (const QString& arquivo : TerminadosEm(Variantes(empresa, u"Envio"_s), sufixo)) {
        QByteArray bytes;
        if (!Pronto(arquivo) || !Le(arquivo, bytes)) continue;
        const QString nome = QFileInfo(arquivo).fileName();
        const QString retorno = Pasta(empresa, {u"Retorno"_s});
        const FolhasXml folhas = LeFolhas(bytes);
        const QString chave = folhas[u"infNFe@Id"_s].mid(3);
        if (!folhas.ok() || !ChaveValida(chave)) {
            const QString problema = folhas.ok() ? u"Chave de acesso inválida no atributo Id: "_s +
                                                       folhas[u"infNFe@Id"_s]
                                                 : folhas.erro;
            if (!Escreve(empresa, retorno + u'/' + SemSufixo(nome, sufixo) + u"-nfe.err"_s,
                         ErroDeServico(problema)))
                continue;
            Move(arquivo, Pasta(empresa, {u"Erro"_s}) + u'/' + nome);
            Registra(empresa, nome + u": recusado, "_s + problema);
            continue;
        }
        const bool emAndamento = std::any_of(pendentes_.cbegin(), pendentes_.cend(),
                                             [&](const Envio& e) { return e.chave == chave; });
        if (emAndamento) continue;
        Envio e;
        e.empresa = empresa;
        e.chave = chave;
        e.xml = QString::fromUtf8(bytes);
        e.digVal = folhas[u"DigestValue"_s];
        e.dhEmi = folhas[u"dhEmi"_s];
        if (e.digVal.isEmpty())
            e.digVal = QString::fromLatin1(
                QCryptographicHash::hash(bytes, QCryptographicHash::Sha1).toBase64());
        e.tpAmb = folhas[u"tpAmb"_s] == u"1"_s ? 1 : 2;
        e.lote = ProximoLote(retorno);
        e.passagem = passagem_;
        e.recebido = agora;
        e.cenario = CenarioDe(NumeroDaChave(chave));
        if (autorizadas_.contains(chave)) e.cenario.desfecho = Desfecho::Duplicidade;
        if (!Move(arquivo,
                  Pasta(empresa, {u"Enviado"_s, u"EmProcessamento"_s}) + u'/' + chave + sufixo))
            continue;
        Escreve(empresa, retorno + u'/' + chave + u"-num-lot.txt"_s, LoteEmTexto(e.lote));
        Escreve(empresa, retorno + u'/' + chave + u"-num-lot.xml"_s, LoteEmXml(e.lote));
        pendentes_.append(e);
        Registra(empresa, nome + u": lote "_s + QString::number(e.lote));
    }
}

void Simulador::RespondeVencidos(const QString& empresa, const QDateTime& agora) {
    for (qsizetype i = 0; i < pendentes_.size();) {
        const Envio& e = pendentes_.at(i);
        if (e.empresa != empresa ||
            !Vencido(e.cenario, passagem_ - e.passagem, e.recebido, agora)) {
            ++i;
            continue;
        }
        Responde(e, agora);
        pendentes_.removeAt(i);
    }
}

void Simulador::Responde(const Envio& e, const QDateTime& agora) {
    const QString lote = Pasta(e.empresa, {u"Retorno"_s}) + u'/' + NomeDoLote(e.lote);
    const QString emProcessamento =
        Pasta(e.empresa, {u"Enviado"_s, u"EmProcessamento"_s}) + u'/' + e.chave + u"-nfe.xml"_s;
    const QString comErro = Pasta(e.empresa, {u"Erro"_s}) + u'/' + e.chave + u"-nfe.xml"_s;
    const Cenario& c = e.cenario;
    if (c.desfecho == Desfecho::LoteRecusado) {
        const QString mensagem = c.motivo.value_or(kLoteRecusado);
        Escreve(e.empresa, lote + u"-pro-rec.err"_s, ErroDeServico(mensagem));
        Move(emProcessamento, comErro);
        Registra(e.empresa, e.chave + u": envio falhou, "_s + mensagem);
        return;
    }
    RespostaLote resposta{e.tpAmb, e.chave.left(2).toInt(), DataHoraSefaz(agora),
                          104,     MotivoSefaz(104),        std::nullopt};
    if (c.desfecho == Desfecho::RejeitaLote) {
        resposta.cStat = c.codigo;
        resposta.xMotivo = c.motivo.value_or(MotivoSefaz(c.codigo));
    } else {
        resposta.protocolo = ProtocoloDe(e, agora);
    }
    Escreve(e.empresa, lote + u"-pro-rec.xml"_s, ProtocoloEmXml(resposta));
    Escreve(e.empresa, lote + u"-pro-rec.txt"_s, ProtocoloEmTexto(resposta));
    const Protocolo p = resposta.protocolo.value_or(Protocolo{});
    Registra(e.empresa, e.chave + u": "_s +
                            QString::number(resposta.protocolo ? p.cStat : resposta.cStat) +
                            u" "_s + (resposta.protocolo ? p.xMotivo : resposta.xMotivo));
    if (p.cStat != 100) {
        Move(emProcessamento, comErro);
        return;
    }
    if (c.semProcNFe) return;
    if (Escreve(e.empresa,
                Autorizados(e.empresa, e.dhEmi, agora) + u'/' + e.chave + u"-procNFe.xml"_s,
                NfeProcessada(e.xml, p)))
        QFile::remove(emProcessamento);
}

Protocolo Simulador::ProtocoloDe(const Envio& e, const QDateTime& agora) {
    const Cenario& c = e.cenario;
    const int cUF = e.chave.left(2).toInt();
    Protocolo p{
        c.chaveNoProtocolo.value_or(e.chave), DataHoraSefaz(agora), {}, {}, 100, {}, e.tpAmb};
    if (c.desfecho == Desfecho::Rejeita) p.cStat = c.codigo;
    if (c.desfecho == Desfecho::Duplicidade) p.cStat = 204;
    if (c.desfecho == Desfecho::DuplicidadeChave) p.cStat = 539;
    DadosMotivo dados{c.item, NovoRecibo(cUF),
                      ComTipoEmissao(e.chave, e.chave.at(34) == u'9' ? 1 : 9)};
    p.xMotivo = c.motivo.value_or(MotivoSefaz(p.cStat, dados));
    if (p.cStat == 100) {
        p.nProt = NovoProtocolo(cUF, agora);
        p.digVal = e.digVal;
        autorizadas_.insert(e.chave, p);
    } else if (p.cStat == 204 && !autorizadas_.contains(e.chave)) {
        // The earlier sending of this very key was authorised: a situation query finds it.
        autorizadas_.insert(e.chave, Protocolo{e.chave, p.dhRecbto, NovoProtocolo(cUF, agora),
                                               e.digVal, 100, MotivoSefaz(100), e.tpAmb});
    }
    return p;
}

} // namespace uninfesim
