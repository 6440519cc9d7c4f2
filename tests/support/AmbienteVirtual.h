#pragma once

#include "platform/Ambiente.h"

#include <QHash>
#include <QList>
#include <QStringList>
#include <functional>
#include <map>

namespace nfce {

// A virtual clock for tests and benchmarks: a wait jumps time forward, running the
// registered hooks (the UniNFe stand-in, a timer tick, a click) and any events scheduled
// for a moment inside the wait, so a pass with minutes of waits runs in milliseconds.
class AmbienteVirtual : public Ambiente {
public:
    explicit AmbienteVirtual(QDateTime inicio = QDateTime(QDate(2026, 11, 15), QTime(10, 20, 30)));

    QDateTime Agora() const override { return inicio_.addMSecs(decorrido_); }
    qint64 Monotonico() const override { return decorrido_; }
    void Aguarda(double segundos) override;
    void DoEvents() override;
    void Posta(std::function<void()> evento) override { Agenda(decorrido_, std::move(evento)); }
    void MsgBox(const QString& texto, const QString& titulo, Icone icone) override;
    bool Pergunta(const QString& texto, const QString& titulo) override;
    bool IniciaPrograma(const QString& programa, const QStringList& argumentos) override;
    QString BuscaUrl(const QString& url, int limiteMs) override;
    void Registra(const QString& linha) override { registro.append(linha); }

    // A hook runs at every pump and at every step of a wait; it is never re-entered
    // while it runs (a wait inside a hook does not run the same hook again).
    int AoBombear(std::function<void()> gancho);
    void RemoveGancho(int id);
    // Runs once when the clock reaches `emMs` (milliseconds of the monotonic clock).
    void Agenda(qint64 emMs, std::function<void()> evento);
    // Moves the clock without running anything (time that passes outside any wait).
    void Avanca(qint64 ms) { decorrido_ += ms; }

    // Total virtual time spent inside Aguarda, for budget checks.
    qint64 msAguardados() const { return aguardados_; }

    struct Mensagem {
        QString texto;
        QString titulo;
        Icone icone;
    };
    QList<Mensagem> mensagens;
    QList<bool> respostas; // answers for Pergunta, first in first out; none left means No
    QStringList perguntas;
    QList<QStringList> programasIniciados; // each: the program, then its arguments
    QHash<QString, QString> paginas;       // url -> body; a missing url answers ""
    QStringList registro;

private:
    struct Gancho {
        std::function<void()> funcao;
        bool rodando = false;
    };
    void Bombeia();
    void RodaEventosVencidos();

    QDateTime inicio_;
    qint64 decorrido_ = 0;
    qint64 aguardados_ = 0;
    int proximoId_ = 0;
    std::map<int, Gancho> ganchos_;
    std::multimap<qint64, std::function<void()>> agenda_;
};

} // namespace nfce
