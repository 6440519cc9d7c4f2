#include "plataforma/AmbienteVirtual.h"

#include <gtest/gtest.h>

namespace nfce {
namespace {

TEST(AmbienteVirtual, WaitAdvancesTheClockExactlyAndRunsHooks) {
    AmbienteVirtual amb(QDateTime(QDate(2026, 11, 15), QTime(23, 59, 59)));
    int chamadas = 0;
    amb.AoBombear([&] { ++chamadas; });
    amb.Aguarda(1.5);
    EXPECT_EQ(amb.Monotonico(), 1500);
    EXPECT_EQ(amb.Agora(), QDateTime(QDate(2026, 11, 16), QTime(0, 0, 0, 500)));
    EXPECT_GE(chamadas, 2); // at the start and at the end of the wait
    amb.DoEvents();
    EXPECT_EQ(amb.Monotonico(), 1500); // pumping takes no time
    EXPECT_EQ(amb.msAguardados(), 1500);
}

TEST(AmbienteVirtual, ScheduledEventsRunAtTheirMomentInsideAWait) {
    AmbienteVirtual amb;
    QList<qint64> momentos;
    amb.Agenda(700, [&] { momentos.append(amb.Monotonico()); });
    amb.Agenda(300, [&] { momentos.append(amb.Monotonico()); });
    amb.Agenda(5000, [&] { momentos.append(amb.Monotonico()); });
    amb.Aguarda(1);
    EXPECT_EQ(momentos, (QList<qint64>{300, 700}));
    amb.Aguarda(10);
    EXPECT_EQ(momentos, (QList<qint64>{300, 700, 5000}));
    EXPECT_EQ(amb.Monotonico(), 11000);
}

TEST(AmbienteVirtual, AHookIsNotReenteredByAWaitInsideIt) {
    AmbienteVirtual amb;
    int profundidade = 0;
    int maxima = 0;
    int outro = 0;
    amb.AoBombear([&] {
        ++profundidade;
        maxima = std::max(maxima, profundidade);
        if (amb.Monotonico() < 2000) amb.Aguarda(0.5); // a nested wait, as a tick would make
        --profundidade;
    });
    amb.AoBombear([&] { ++outro; });
    amb.Aguarda(1);
    EXPECT_EQ(maxima, 1);
    EXPECT_GT(outro, 2); // the other hook still runs inside the nested wait
}

TEST(AmbienteVirtual, HooksMayRemoveThemselves) {
    AmbienteVirtual amb;
    int vezes = 0;
    int id = 0;
    id = amb.AoBombear([&] {
        ++vezes;
        amb.RemoveGancho(id);
    });
    amb.Aguarda(1);
    amb.DoEvents();
    EXPECT_EQ(vezes, 1);
}

TEST(AmbienteVirtual, DialogsAreRecordedAndQuestionsAnswerNoByDefault) {
    AmbienteVirtual amb;
    amb.MsgBox(QStringLiteral("texto"), QStringLiteral("Atenção"), Icone::Critico);
    amb.respostas = {true};
    EXPECT_TRUE(amb.Pergunta(QStringLiteral("Deseja?"), QStringLiteral("Atenção")));
    EXPECT_FALSE(amb.Pergunta(QStringLiteral("Deseja?"), QStringLiteral("Atenção")));
    ASSERT_EQ(amb.mensagens.size(), 1);
    EXPECT_EQ(amb.mensagens[0].icone, Icone::Critico);
    EXPECT_EQ(amb.perguntas.size(), 2);
    EXPECT_EQ(amb.registro.size(), 3);
}

TEST(AmbienteVirtual, NegativeOrZeroWaitsDoNotMoveTheClock) {
    AmbienteVirtual amb;
    amb.Aguarda(0);
    amb.Aguarda(-3);
    EXPECT_EQ(amb.Monotonico(), 0);
}

} // namespace
} // namespace nfce
