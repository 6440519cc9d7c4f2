#pragma once

#include <QString>
#include <QStringList>
#include <functional>

namespace nfce {

struct Servidor;

// The times of day at which pending sales are sent, "HH:MM". The irregular spacing is the
// shops' own and is kept as it is (19:50 and 20:50 are not there).
const QStringList& HorariosDeEnvio();

// What a scheduled minute runs, in this order.
struct TarefasDoHorario {
    std::function<void()> EnviaPendentes;
    std::function<void()> AtEnvioTime;
    std::function<void()> CmdExportar;
};

// The schedule's timer. Each tick notes the time, waits 23 seconds with events running, and
// runs the tasks when the time noted before the wait is in the table; otherwise it enables
// the timer again between two 1-second waits (undoing a stop clicked during the tick). A tick
// is ignored while the timer is disabled or while an earlier tick is still running.
class TimerVendas {
public:
    TimerVendas(Servidor& s, TarefasDoHorario tarefas) : s_(s), tarefas_(std::move(tarefas)) {}

    void Tique();
    // The tasks at once, as a scheduled minute runs them; ticks wait until they end.
    void RodaAgora();

private:
    void Executa();
    void RodaTarefas();
    template <class Passo> void Exclusivo(Passo&& passo);

    Servidor& s_;
    TarefasDoHorario tarefas_;
    bool emCurso_ = false;
};

} // namespace nfce
