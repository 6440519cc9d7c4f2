#include "emission/FilaPendentes.h"
#include "support/Loja.h"

namespace nfce::teste {
namespace {

using namespace Qt::StringLiterals;

using FilaPendentesTest = Loja;

const QString Insere =
    u"INSERT INTO vendas (data, cupom, nfce, tempo, enviotime, autorizacao) VALUES "_s;

TEST_P(FilaPendentesTest, SoAsVendasDeHojeNaoEnviadasEmOrdemDeCupom) {
    // Only the first three are today's, unfinished, numbered, not sent and not authorised.
    Executa(Insere + u"('2026-11-15', 30, 101, '', 0, ''), ('2026-11-15', 10, 102, '0', 0, ''), "
                     "('2026-11-15', 20, 103, '9', 0, ''), ('2026-11-15', 5, 104, '1', 0, ''), "
                     "('2026-11-15', 6, 0, '0', 0, ''), ('2026-11-15', 7, 105, '0', 1, ''), "
                     "('2026-11-15', 8, 106, '0', 0, '1312'), ('2026-11-14', 9, 107, '0', 0, ''), "
                     "('2026-11-16', 11, 108, '0', 0, ''), (NULL, 12, 109, '0', 0, '')"_s);
    // 0.01 s per sale copied and 0.01 s after them; the second copy waits 0.02 s first.
    for (const auto& [consulta, ms] : {std::pair(&ConsultaGrid, 40), {&ConsultaGrid01, 60}}) {
        PoeNaFila({u"99"_s});
        s->painel.TimerVendasAtivo = false;
        const qint64 antes = ambiente.msAguardados();
        consulta(*s);
        EXPECT_EQ(ambiente.msAguardados() - antes, ms);
        EXPECT_EQ(Fila(), (QStringList{u"102"_s, u"103"_s, u"101"_s}));
        EXPECT_EQ(s->painel.LblQuantCup, u"3"_s);
        EXPECT_TRUE(s->painel.TimerVendasAtivo);
        EXPECT_EQ(s->fila.DataInicialSql + s->fila.DataFinalSql, u"'2026-11-15''2026-11-15'"_s);
    }
}

TEST_P(FilaPendentesTest, SemVendaHojeListaEContagemFicamSenaoSaoRefeitas) {
    Executa(Insere + u"('2026-11-14', 1, 45, '0', 0, '')"_s);
    PoeNaFila({u"7"_s, u"8"_s});
    s->painel.LblQuantCup = u"5"_s;
    s->fila.DataConsulta = u"antes"_s;
    for (const auto& [consulta, ms] : {std::pair(&ConsultaGrid, 0), {&ConsultaGrid01, 20}}) {
        s->painel.TimerVendasAtivo = false;
        const qint64 antes = ambiente.msAguardados();
        consulta(*s);
        EXPECT_EQ(ambiente.msAguardados() - antes, ms);
        EXPECT_EQ(Fila(), (QStringList{u"7"_s, u"8"_s}));
        EXPECT_EQ(s->painel.LblQuantCup, u"5"_s);
        EXPECT_EQ(s->fila.DataConsulta, u"antes"_s);
        EXPECT_TRUE(s->painel.TimerVendasAtivo);
    }
    Executa(Insere + u"('2026-11-15', 2, 46, '', 0, '')"_s);
    ConsultaGrid01(*s);
    EXPECT_EQ(Fila(), QStringList{u"46"_s});
    EXPECT_EQ(s->painel.LblQuantCup, u"1"_s);
    EXPECT_EQ(s->fila.DataConsulta, u"2026-11-15"_s);
}

TEST_P(FilaPendentesTest, ConsultaDentroDeUmaEsperaNaoRepeteNumeros) {
    Executa(Insere + u"('2026-11-15', 1, 101, '', 0, ''), ('2026-11-15', 2, 102, '', 0, '')"_s);
    bool aninhada = false;
    ambiente.AoBombear([&] {
        if (aninhada || Fila().size() != 1) return;
        aninhada = true;
        Executa(Insere + u"('2026-11-15', 3, 103, '', 0, '')"_s);
        ConsultaGrid(*s);
    });
    ConsultaGrid(*s);
    ASSERT_TRUE(aninhada);
    EXPECT_EQ(Fila(), (QStringList{u"101"_s, u"102"_s, u"103"_s}));
    EXPECT_EQ(s->painel.LblQuantCup, u"3"_s);
}

TEST_P(FilaPendentesTest, ValoresHostisDoBancoChegamIntactosALista) {
    // Text in an integer column only SQLite keeps; MariaDB gets the numeric cases.
    const std::tuple<QString, QString, bool> casos[] = {
        {u"-5"_s, u"-5"_s, false},
        {u"2147483647"_s, u"2147483647"_s, false},
        {u"'12''3'"_s, u"12'3"_s, true},
        {u"''"_s, u""_s, true},
        {u"'a|b\"c'"_s, u"a|b\"c"_s, true},
        {u"'"_s + QString(100000, u'x') + u"'"_s, QString(100000, u'x'), true},
    };
    QStringList esperada;
    int cupom = 0;
    for (const auto& [nfce, naFila, soSqlite] : casos) {
        if (soSqlite && !EmSqlite()) continue;
        Executa(Insere + u"('2026-11-15', %1, %2, '', 0, '')"_s.arg(++cupom).arg(nfce));
        esperada.append(naFila);
    }
    ConsultaGrid(*s);
    EXPECT_EQ(Fila(), esperada);
    EXPECT_EQ(s->painel.LblQuantCup, QString::number(esperada.size()));
}

INSTANTIATE_TEST_SUITE_P(Motores, FilaPendentesTest, ::testing::ValuesIn(Motores()), NomeDoMotor);

} // namespace
} // namespace nfce::teste
