#include "shell/Agenda.h"
#include "context/Servidor.h"
#include "support/AmbienteVirtual.h"

#include <gtest/gtest.h>

namespace nfce::teste {
namespace {

using namespace Qt::StringLiterals;

// The schedule's timer on a virtual clock, with tasks that only note that they ran.
struct Agenda {
    explicit Agenda(const QTime& hora)
        : ambiente(QDateTime(QDate(2026, 11, 16), hora)), s(u"/nao/usada"_s, ambiente),
          timer(s, {[this] { Roda(u"EnviaPendentes"_s); }, [this] { Roda(u"AtEnvioTime"_s); },
                    [this] { Roda(u"CmdExportar"_s); }}) {
        s.painel.TimerVendasAtivo = true;
    }
    void Roda(const QString& tarefa) {
        rodadas.append(tarefa);
        aoRodar();
    }

    AmbienteVirtual ambiente;
    Servidor s;
    TimerVendas timer;
    QStringList rodadas;
    std::function<void()> aoRodar = [] {};
};

const QStringList Todas = {u"EnviaPendentes"_s, u"AtEnvioTime"_s, u"CmdExportar"_s};

// The time is read before the 23-second wait; a match runs the three tasks in order.
TEST(Agenda, UmTiqueRodaSoNosHorariosDaTabela) {
    const std::pair<QTime, bool> casos[] = {{QTime(13, 10, 0), true},  {QTime(13, 5, 0), false},
                                            {QTime(19, 50, 0), false}, {QTime(20, 50, 30), false},
                                            {QTime(19, 40, 0), true},  {QTime(0, 33, 0), true},
                                            {QTime(7, 0, 50), true},   {QTime(6, 59, 59), false},
                                            {QTime(23, 50, 59), true}, {QTime(0, 0, 0), false}};
    for (const auto& [hora, roda] : casos) {
        SCOPED_TRACE(hora.toString().toStdString());
        Agenda a(hora);
        a.timer.Tique();
        EXPECT_EQ(a.rodadas, roda ? Todas : QStringList());
        EXPECT_EQ(a.s.painel.lblHora + u' ' + a.s.painel.lblData,
                  hora.toString(u"HH:mm"_s) + u" 16/11/2026"_s);
        EXPECT_EQ(a.ambiente.msAguardados(), roda ? 23000 : 25000);
    }
}

// A stop clicked during a tick's waits is undone by a tick that found no match, and kept by
// one that ran the tasks. Ticks during a tick's wait or run, during a run started at once, or
// with the timer stopped, do nothing.
TEST(Agenda, PararETiquesDuranteUmTique) {
    for (const bool roda : {false, true}) {
        Agenda a(roda ? QTime(8, 0) : QTime(8, 1));
        a.ambiente.Agenda(10000, [&] { a.s.painel.TimerVendasAtivo = false; });
        a.timer.Tique();
        EXPECT_EQ(a.s.painel.TimerVendasAtivo, !roda);
    }
    Agenda a(QTime(13, 10));
    a.ambiente.Agenda(5000, [&] { a.timer.Tique(); });
    a.aoRodar = [&] { a.timer.Tique(); };
    a.timer.Tique();
    a.timer.RodaAgora();
    a.s.painel.TimerVendasAtivo = false;
    a.timer.Tique();
    EXPECT_EQ(a.rodadas, Todas + Todas);
    EXPECT_EQ(a.ambiente.msAguardados(), 23000);
}

} // namespace
} // namespace nfce::teste
