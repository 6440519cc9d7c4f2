#include "support/AmbienteVirtual.h"

#include <gtest/gtest.h>

namespace nfce {
namespace {

// A wait moves the clock exactly, running the hooks at its start and end and the events
// scheduled inside it at their moment; pumping, zero and negative waits take no time.
TEST(AmbienteVirtual, WaitsAdvanceTheClockAndRunHooksAndEvents) {
    AmbienteVirtual amb(QDateTime(QDate(2026, 11, 15), QTime(23, 59, 59)));
    int chamadas = 0;
    amb.AoBombear([&] { ++chamadas; });
    QList<qint64> momentos;
    for (qint64 ms : {700, 300, 5000})
        amb.Agenda(ms, [&] { momentos.append(amb.Monotonico()); });
    amb.Aguarda(1.5);
    EXPECT_EQ(amb.Agora(), QDateTime(QDate(2026, 11, 16), QTime(0, 0, 0, 500)));
    EXPECT_GE(chamadas, 2);
    EXPECT_EQ(momentos, (QList<qint64>{300, 700}));
    amb.DoEvents();
    amb.Aguarda(0);
    amb.Aguarda(-3);
    EXPECT_EQ(amb.Monotonico(), 1500);
    amb.Aguarda(10);
    EXPECT_EQ(momentos, (QList<qint64>{300, 700, 5000}));
    EXPECT_EQ(amb.msAguardados(), 11500);
}

// A wait inside a hook (as a timer tick makes) does not enter that hook again, but the
// others still run; a hook may remove itself.
TEST(AmbienteVirtual, HooksAreNotReenteredAndMayRemoveThemselves) {
    AmbienteVirtual amb;
    int profundidade = 0, maxima = 0, outro = 0, unico = 0, id = 0;
    amb.AoBombear([&] {
        maxima = std::max(maxima, ++profundidade);
        if (amb.Monotonico() < 2000) amb.Aguarda(0.5);
        --profundidade;
    });
    amb.AoBombear([&] { ++outro; });
    id = amb.AoBombear([&] {
        ++unico;
        amb.RemoveGancho(id);
    });
    amb.Aguarda(1);
    amb.DoEvents();
    EXPECT_EQ(maxima, 1);
    EXPECT_GT(outro, 2);
    EXPECT_EQ(unico, 1);
}

} // namespace
} // namespace nfce
