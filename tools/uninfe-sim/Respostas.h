#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>
#include <optional>

namespace uninfesim {

// The answer files, byte for byte as UniNFe writes them.

// Access key: XML in one line with the key at character 64, or the bare key; no line end.
QByteArray ChaveEmXml(const QString& chave);
QByteArray ChaveEmTexto(const QString& chave);
// "-ret-gerar-chave.err": the file named, then one line per problem.
QByteArray ErroDeChave(const QString& arquivo, const QStringList& erros);

// Conversion of the text layout (UTF-8, CR LF): "cStat=01" with one "Nota fiscal:" line per
// document, "ChaveNFe" at character 37 and the key at 47.
QByteArray ConversaoFeita(const QStringList& chaves);
QByteArray ConversaoFalhou(const QString& mensagemErro);
QByteArray ConversaoVazia();

// Lot number: "54;" and <NumeroLoteGerado>.
QByteArray LoteEmTexto(qint64 lote);
QByteArray LoteEmXml(qint64 lote);

// UniNFe's error file of a service ("Versão UniNFe|", "ErrorCode|", "Message|",
// "StackTrace|"), Windows-1252.
QByteArray ErroDeServico(const QString& mensagem);

// One document's protocol. nProt and digVal stay empty for a rejection.
struct Protocolo {
    QString chave;
    QString dhRecbto;
    QString nProt;
    QString digVal;
    int cStat = 0;
    QString xMotivo;
    int tpAmb = 2;
};

// SEFAZ's answer to a synchronous lot: its own status, and the document's protocol unless the
// whole lot was rejected.
struct RespostaLote {
    int tpAmb = 2;
    int cUF = 0;
    QString dhRecbto;
    int cStat = 104;
    QString xMotivo;
    std::optional<Protocolo> protocolo;
};

// "-pro-rec.txt", Windows-1252: ";cStat;xMotivo;" then, after CR LF, the protocol line
// "CNPJ;nNF;chNFe;dhRecbto;nProt;digVal;cStat;xMotivo;" (nProt "0" when missing, digVal left
// out with its ";" when missing, a ";" inside a value turned into a blank); no final line end.
QByteArray ProtocoloEmTexto(const RespostaLote& resposta);
QByteArray ProtocoloEmXml(const RespostaLote& resposta);

// The authorised document: <nfeProc> with the signed <NFe> and its <protNFe>.
QByteArray NfeProcessada(const QString& nfeAssinada, const Protocolo& protocolo);

// SEFAZ's answer to a situation query; the text form exists only with a protocol.
struct Situacao {
    int tpAmb = 2;
    int cUF = 0;
    QString dhConsulta;
    QString chave;
    int cStat = 0;
    QString xMotivo;
    std::optional<Protocolo> protocolo;
};
QByteArray SituacaoEmXml(const Situacao& situacao);
QByteArray SituacaoEmTexto(const Situacao& situacao);

} // namespace uninfesim
