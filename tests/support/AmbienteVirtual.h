#pragma once

#include "platform/Ambiente.h"

#include <QHash>
#include <QStringList>
#include <algorithm>
#include <cmath>
#include <functional>
#include <map>

namespace nfce {

// A virtual clock: a wait jumps time forward, running the hooks (the UniNFe stand-in, a timer
// tick, a click) and the events due inside it, so minutes of waits take milliseconds.
class AmbienteVirtual : public Ambiente {
public:
    explicit AmbienteVirtual(QDateTime inicio = QDateTime(QDate(2026, 11, 15), QTime(10, 20, 30)))
        : inicio_(std::move(inicio)) {}

    QDateTime Agora() const override { return inicio_.addMSecs(decorrido_); }
    qint64 Monotonico() const override { return decorrido_; }
    void Aguarda(double segundos) override {
        const qint64 fim = decorrido_ + std::max<qint64>(0, std::llround(segundos * 1000.0));
        aguardados_ += fim - decorrido_;
        Bombeia();
        while (decorrido_ < fim) {
            decorrido_ =
                std::clamp(agenda_.empty() ? fim : agenda_.begin()->first, decorrido_, fim);
            Bombeia();
        }
    }
    void DoEvents() override { Bombeia(); }
    void Posta(std::function<void()> evento) override { Agenda(decorrido_, std::move(evento)); }
    void MsgBox(const QString& texto, const QString& titulo, Icone icone) override {
        mensagens.append({texto, titulo, icone});
        Registra(titulo + QStringLiteral(": ") + texto);
    }
    bool Pergunta(const QString& texto, const QString& titulo) override {
        perguntas.append(texto);
        Registra(titulo + QStringLiteral(": ") + texto);
        return !respostas.isEmpty() && respostas.takeFirst();
    }
    bool IniciaPrograma(const QString& programa, const QStringList& argumentos) override {
        programasIniciados.append(QStringList{programa} + argumentos);
        return true;
    }
    QString BuscaUrl(const QString& url, int) override { return paginas.value(url); }
    void Registra(const QString& linha) override { registro.append(linha); }

    // Runs at every pump and every step of a wait, never re-entered while it runs.
    int AoBombear(std::function<void()> gancho) {
        ganchos_[++proximoId_] = {std::move(gancho), false};
        return proximoId_;
    }
    void RemoveGancho(int id) { ganchos_.erase(id); }
    // Runs `evento` once when the monotonic clock reaches `ms`.
    void Agenda(qint64 ms, std::function<void()> evento) { agenda_.emplace(ms, std::move(evento)); }
    // Time that passes outside any wait: nothing runs.
    void Avanca(qint64 ms) { decorrido_ += ms; }
    qint64 msAguardados() const { return aguardados_; }

    struct Mensagem {
        QString texto, titulo;
        Icone icone;
    };
    QList<Mensagem> mensagens;
    QList<bool> respostas; // for Pergunta, first in first out; none left means No
    QStringList perguntas;
    QList<QStringList> programasIniciados; // each: the program, then its arguments
    QHash<QString, QString> paginas;       // url -> body; a missing url answers ""
    QStringList registro;

private:
    void Bombeia() {
        while (!agenda_.empty() && agenda_.begin()->first <= decorrido_) {
            auto evento = std::move(agenda_.begin()->second);
            agenda_.erase(agenda_.begin());
            evento();
        }
        // By id, as a hook may add or remove hooks: those added now wait for the next pump.
        for (int id = 0, ultimo = proximoId_;;) {
            auto it = ganchos_.upper_bound(id);
            if (it == ganchos_.end() || it->first > ultimo) return;
            id = it->first;
            if (std::exchange(it->second.second, true)) continue;
            std::function<void()>(it->second.first)(); // a copy: it may remove itself
            if ((it = ganchos_.find(id)) != ganchos_.end()) it->second.second = false;
        }
    }

    QDateTime inicio_;
    qint64 decorrido_ = 0, aguardados_ = 0;
    int proximoId_ = 0;
    std::map<int, std::pair<std::function<void()>, bool>> ganchos_; // the hook, running
    std::multimap<qint64, std::function<void()>> agenda_;
};

} // namespace nfce
