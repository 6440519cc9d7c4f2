// Situation queries: "<key>-ped-sit.txt" (lines "name|value") or "-ped-sit.xml" in Envio.
#include "Ansi.h"
#include "Arquivos.h"
#include "Chave.h"
#include "LeituraXml.h"
#include "Motivos.h"
#include "Simulador.h"

#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

namespace uninfesim {

using namespace Qt::StringLiterals;

namespace {

struct PedidoSituacao {
    int tpAmb = 0;
    QString chave;
    QString erro;
};

// The schema validator's complaint, as a Portuguese Windows words it.
QString Invalido(const QString& elemento, const QString& valor, const QString& tipo,
                 const QString& restricao) {
    const QString ns = u"http://www.portalfiscal.inf.br/nfe:"_s;
    return u"O elemento '"_s + ns + elemento + u"' é inválido - O valor '"_s + valor +
           u"' é inválido de acordo com seu tipo de dados '"_s + ns + tipo +
           u"' - Falha da restrição "_s + restricao + u"."_s;
}

PedidoSituacao LePedido(const QByteArray& bytes, bool xml) {
    PedidoSituacao pedido;
    QHash<QString, QString> valores;
    if (xml) {
        const FolhasXml folhas = LeFolhas(bytes);
        pedido.erro = folhas.erro;
        for (auto it = folhas.valores.cbegin(); it != folhas.valores.cend(); ++it)
            valores.insert(it.key().toLower(), it.value().trimmed());
    } else {
        for (const QString& linha : DeAnsi(bytes).split(u'\n')) {
            const qsizetype barra = linha.indexOf(u'|');
            if (barra > 0)
                valores.insert(linha.left(barra).trimmed().toLower(),
                               linha.mid(barra + 1).trimmed());
        }
    }
    const QString tpAmb = valores.value(u"tpamb"_s);
    pedido.chave = valores.value(u"chnfe"_s);
    static const QRegularExpression chave(u"^\\d{44}$"_s);
    if (!pedido.erro.isEmpty()) return pedido;
    if (tpAmb != u"1"_s && tpAmb != u"2"_s)
        pedido.erro = Invalido(u"tpAmb"_s, tpAmb, u"TAmb"_s, u"Enumeration"_s);
    else if (!chave.match(pedido.chave).hasMatch())
        pedido.erro = Invalido(u"chNFe"_s, pedido.chave, u"TChNFe"_s, u"Pattern"_s);
    pedido.tpAmb = tpAmb.toInt();
    return pedido;
}

} // namespace

void Simulador::AtendeSituacoes(const QString& empresa, const QDateTime& agora) {
    const QStringList envio = Variantes(empresa, u"Envio"_s);
    for (const bool xml : {false, true}) {
        const QString sufixo = xml ? u"-ped-sit.xml"_s : u"-ped-sit.txt"_s;
        for (const QString& arquivo : TerminadosEm(envio, sufixo)) {
            QByteArray bytes;
            if (!Pronto(arquivo) || !Le(arquivo, bytes)) continue;
            const QString nome = QFileInfo(arquivo).fileName();
            const QString base = Pasta(empresa, {u"Retorno"_s}) + u'/' + SemSufixo(nome, sufixo);
            const PedidoSituacao pedido = LePedido(bytes, xml);
            if (!pedido.erro.isEmpty()) {
                if (!Escreve(empresa, base + u"-sit.err"_s, ErroDeServico(pedido.erro))) continue;
                Move(arquivo, Pasta(empresa, {u"Erro"_s}) + u'/' + nome);
                Registra(empresa, nome + u": erro, "_s + pedido.erro);
                continue;
            }
            const Situacao situacao = SituacaoDe(pedido.chave, pedido.tpAmb, agora);
            if (!Escreve(empresa, base + u"-sit.xml"_s, SituacaoEmXml(situacao))) continue;
            if (situacao.protocolo) {
                Escreve(empresa, base + u"-sit.txt"_s, SituacaoEmTexto(situacao));
                ArquivaEmProcessamento(empresa, pedido.chave, agora);
            }
            QFile::remove(arquivo);
            Registra(empresa, nome + u": situação "_s + QString::number(situacao.cStat));
        }
    }
}

Situacao Simulador::SituacaoDe(const QString& chave, int tpAmb, const QDateTime& agora) const {
    Situacao s{tpAmb, chave.left(2).toInt(), DataHoraSefaz(agora), chave,
               217,   MotivoSefaz(217),      std::nullopt};
    if (!ChaveValida(chave)) {
        s.cStat = 236;
        s.xMotivo = MotivoSefaz(236);
    } else if (autorizadas_.contains(chave)) {
        s.cStat = 100;
        s.xMotivo = MotivoSefaz(100);
        s.protocolo = autorizadas_.value(chave);
    }
    return s;
}

// An authorised document still lying signed in EmProcessamento is filed as UniNFe does after
// a query: "-procNFe.xml" in Autorizados, the signed copy taken away.
void Simulador::ArquivaEmProcessamento(const QString& empresa, const QString& chave,
                                       const QDateTime& agora) {
    const QString nome = chave + u"-nfe.xml"_s;
    for (const QString& enviado : Variantes(empresa, u"Enviado"_s))
        for (const QString& pasta : Variantes(enviado, u"EmProcessamento"_s)) {
            const QString noDisco = NomeNoDisco(pasta, nome);
            QByteArray bytes;
            if (noDisco.isEmpty() || !Le(pasta + u'/' + noDisco, bytes)) continue;
            const QString dhEmi = LeFolhas(bytes)[u"dhEmi"_s];
            if (!Escreve(empresa,
                         Autorizados(empresa, dhEmi, agora) + u'/' + chave + u"-procNFe.xml"_s,
                         NfeProcessada(QString::fromUtf8(bytes), autorizadas_.value(chave))))
                continue;
            QFile::remove(pasta + u'/' + noDisco);
            Registra(empresa, chave + u": arquivada em Autorizados"_s);
        }
}

} // namespace uninfesim
