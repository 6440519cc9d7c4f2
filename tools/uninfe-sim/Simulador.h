#pragma once

#include "Cenario.h"
#include "Respostas.h"

#include <QDateTime>
#include <QHash>
#include <QList>
#include <QPair>
#include <QString>
#include <QStringList>

namespace uninfesim {

// UniNFe's "save as" option for the month folders of authorised documents.
enum class MesPasta {
    MA, // MMyyyy, as the shops running the server set it
    AM, // yyyyMM, UniNFe's default
};

struct Opcoes {
    MesPasta mes = MesPasta::MA;
    // Handle a request only once it has looked the same for two passes, so that a file the
    // server is still writing is never read half-way (the program turns this on).
    bool esperaArquivoEstavel = false;
    int uf = 31;    // for key requests without <UF>
    int tpEmis = 1; // for key requests without <tpEmis>
    qint64 loteInicial = 1;
};

// A stand-in for UniNFe: watches the exchange folders of every company folder below `pasta`
// (a folder holding "Envio" or "Validar", in any case) and answers in UniNFe's file forms.
// Nothing reads the clock: every pass is given its time, so tests drive it on a virtual clock
// (e.g. from a hook of AmbienteVirtual) and the program from a real timer.
class Simulador {
public:
    explicit Simulador(QString pasta, Opcoes opcoes = {});

    // What happens to NFC-e number `nNF`; numbers without one are authorised (or get the
    // default given here).
    void DefineCenario(qint64 nNF, const Cenario& cenario);
    void DefinePadrao(const Cenario& cenario);
    void DefineCenarios(const Cenarios& cenarios);

    // One pass: answers every request found and every SEFAZ answer due at `agora`.
    // Returns one line per thing done, for the log.
    QStringList Processa(const QDateTime& agora);

private:
    struct Envio {
        QString empresa;
        QString chave;
        QString xml;
        QString digVal;
        QString dhEmi;
        int tpAmb = 2;
        qint64 lote = 0;
        qint64 passagem = 0;
        QDateTime recebido;
        Cenario cenario;
    };

    Cenario CenarioDe(qint64 nNF) const;
    bool Pronto(const QString& arquivo);
    void Registra(const QString& empresa, const QString& texto);
    // Writes an answer; a failure (full disk, no permission) goes to the log and the request
    // stays where it is, to be answered at a later pass.
    bool Escreve(const QString& empresa, const QString& caminho, const QByteArray& conteudo);
    QString Pasta(const QString& empresa, const QStringList& partes) const;
    QString Autorizados(const QString& empresa, const QString& dhEmi, const QDateTime& agora) const;
    qint64 ProximoLote(const QString& retorno);
    QString NovoProtocolo(int cUF, const QDateTime& agora);
    QString NovoRecibo(int cUF);

    void AtendeChaves(const QString& empresa);
    void AtendeConversoes(const QString& empresa, const QString& entrada, bool paraEnviar);
    void AtendeEnvios(const QString& empresa, const QDateTime& agora);
    void RespondeVencidos(const QString& empresa, const QDateTime& agora);
    void Responde(const Envio& envio, const QDateTime& agora);
    Protocolo ProtocoloDe(const Envio& envio, const QDateTime& agora);
    void AtendeSituacoes(const QString& empresa, const QDateTime& agora);
    Situacao SituacaoDe(const QString& chave, int tpAmb, const QDateTime& agora) const;
    void ArquivaEmProcessamento(const QString& empresa, const QString& chave,
                                const QDateTime& agora);

    QString pasta_;
    Opcoes opcoes_;
    QHash<qint64, Cenario> cenarios_;
    Cenario padrao_;
    qint64 passagem_ = 0;
    qint64 proximoLote_;
    qint64 proximoProtocolo_ = 1;
    qint64 proximoRecibo_ = 1;
    QList<Envio> pendentes_;
    QHash<QString, Protocolo> autorizadas_;
    QHash<QString, QPair<qint64, qint64>> vistos_; // file -> size, modification time
    QHash<QString, QPair<qint64, qint64>> vistosAgora_;
    QStringList registro_;
};

// The time as SEFAZ writes it, at Brasília's offset: "2026-11-15T10:20:30-03:00".
QString DataHoraSefaz(const QDateTime& momento);

} // namespace uninfesim
