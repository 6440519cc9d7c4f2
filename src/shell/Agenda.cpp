#include "shell/Agenda.h"

#include "context/Servidor.h"

namespace nfce {

using namespace Qt::StringLiterals;

const QStringList& HorariosDeEnvio() {
    static const QStringList horarios = {
        u"07:00"_s, u"07:30"_s, u"08:00"_s, u"08:30"_s, u"09:00"_s, u"09:30"_s, u"10:00"_s,
        u"10:30"_s, u"11:00"_s, u"11:30"_s, u"12:00"_s, u"12:30"_s, u"13:00"_s, u"13:10"_s,
        u"13:20"_s, u"13:30"_s, u"13:40"_s, u"13:50"_s, u"14:00"_s, u"14:30"_s, u"15:00"_s,
        u"15:30"_s, u"16:00"_s, u"16:30"_s, u"17:00"_s, u"17:30"_s, u"18:00"_s, u"18:30"_s,
        u"19:00"_s, u"19:10"_s, u"19:20"_s, u"19:30"_s, u"19:40"_s, u"20:00"_s, u"20:10"_s,
        u"20:20"_s, u"20:30"_s, u"20:40"_s, u"21:00"_s, u"21:30"_s, u"22:00"_s, u"22:30"_s,
        u"23:00"_s, u"23:30"_s, u"23:50"_s, u"00:10"_s, u"00:33"_s,
    };
    return horarios;
}

template <class Passo> void TimerVendas::Exclusivo(Passo&& passo) {
    if (emCurso_) return;
    emCurso_ = true;
    struct Fim {
        bool& emCurso;
        ~Fim() { emCurso = false; }
    } fim{emCurso_};
    passo();
}

void TimerVendas::Tique() {
    if (s_.painel.TimerVendasAtivo) Exclusivo([this] { Executa(); });
}

void TimerVendas::RodaAgora() {
    Exclusivo([this] { RodaTarefas(); });
}

void TimerVendas::RodaTarefas() {
    tarefas_.EnviaPendentes();
    tarefas_.AtEnvioTime();
    tarefas_.CmdExportar();
}

void TimerVendas::Executa() {
    const QDateTime agora = s_.ambiente.Agora();
    const QString horaLida = agora.toString(u"HH:mm"_s);
    s_.painel.lblHora = horaLida;
    s_.painel.lblData = agora.toString(u"dd/MM/yyyy"_s);
    s_.ambiente.Aguarda(23);
    if (HorariosDeEnvio().contains(horaLida)) return RodaTarefas();
    s_.ambiente.Aguarda(1);
    s_.painel.TimerVendasAtivo = true;
    s_.ambiente.Aguarda(1);
}

} // namespace nfce
