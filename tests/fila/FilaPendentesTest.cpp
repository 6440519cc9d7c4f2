#include "emission/FilaPendentes.h"
#include "fila/BaseFila.h"

namespace nfce::teste {
namespace {

using namespace Qt::StringLiterals;

class FilaPendentesTest : public BaseFila {};

TEST_P(FilaPendentesTest, SoAsVendasDeHojeNaoEnviadasEmOrdemDeCupom) {
    const struct {
        Venda venda;
        bool entra;
    } casos[] = {
        {{u"'2026-11-15'"_s, 30, u"101"_s, u""_s, 0, u""_s}, true},
        {{u"'2026-11-15'"_s, 10, u"102"_s, u"0"_s, 0, u""_s}, true},
        {{u"'2026-11-15'"_s, 20, u"103"_s, u"9"_s, 0, u""_s}, true},
        {{u"'2026-11-15'"_s, 5, u"104"_s, u"1"_s, 0, u""_s}, false},
        {{u"'2026-11-15'"_s, 6, u"0"_s, u"0"_s, 0, u""_s}, false},
        {{u"'2026-11-15'"_s, 7, u"105"_s, u"0"_s, 1, u""_s}, false},
        {{u"'2026-11-15'"_s, 8, u"106"_s, u"0"_s, 0, u"131260000001"_s}, false},
        {{u"'2026-11-14'"_s, 9, u"107"_s, u"0"_s, 0, u""_s}, false},
        {{u"'2026-11-16'"_s, 11, u"108"_s, u"0"_s, 0, u""_s}, false},
        {{u"NULL"_s, 12, u"109"_s, u"0"_s, 0, u""_s}, false},
    };
    for (const auto& caso : casos)
        Insere(caso.venda);
    s->painel.TimerVendasAtivo = false;

    ConsultaGrid(*s);

    EXPECT_EQ(Fila(), (QStringList{u"102"_s, u"103"_s, u"101"_s}));
    EXPECT_EQ(s->painel.LblQuantCup, u"3"_s);
    EXPECT_TRUE(s->painel.TimerVendasAtivo);
    EXPECT_EQ(s->fila.DataConsulta, u"2026-11-15"_s);
    EXPECT_EQ(s->fila.DataTexto, u"15/11/2026"_s);
    EXPECT_EQ(s->fila.DataInicialSql, u"'2026-11-15'"_s);
    EXPECT_EQ(s->fila.DataFinalSql, u"'2026-11-15'"_s);
}

TEST_P(FilaPendentesTest, SemVendaHojeListaEContagemFicamSenaoSaoRefeitas) {
    Insere({u"'2026-11-14'"_s, 1, u"45"_s, u"0"_s, 0, u""_s});
    PoeNaFila({u"7"_s, u"8"_s});
    s->painel.LblQuantCup = u"5"_s;
    s->fila.DataConsulta = u"antes"_s;

    for (auto consulta : {ConsultaGrid, ConsultaGrid01}) {
        s->painel.TimerVendasAtivo = false;
        consulta(*s);
        EXPECT_EQ(Fila(), (QStringList{u"7"_s, u"8"_s}));
        EXPECT_EQ(s->painel.LblQuantCup, u"5"_s);
        EXPECT_EQ(s->fila.DataConsulta, u"antes"_s);
        EXPECT_TRUE(s->painel.TimerVendasAtivo);
    }
    Insere({u"'2026-11-15'"_s, 2, u"46"_s, u""_s, 0, u""_s});
    ConsultaGrid01(*s);
    EXPECT_EQ(Fila(), QStringList{u"46"_s});
    EXPECT_EQ(s->painel.LblQuantCup, u"1"_s);
}

TEST_P(FilaPendentesTest, EsperasDeCadaCopia) {
    const struct {
        void (*consulta)(Servidor&);
        int vendas;
        qint64 ms;
    } casos[] = {
        {ConsultaGrid, 0, 0},
        {ConsultaGrid, 3, 40},
        {ConsultaGrid01, 0, 20},
        {ConsultaGrid01, 3, 60},
    };
    for (const auto& caso : casos) {
        Executa(u"DELETE FROM vendas"_s);
        for (int i = 1; i <= caso.vendas; ++i)
            Insere({u"'2026-11-15'"_s, i, QString::number(100 + i), u""_s, 0, u""_s});
        const qint64 antes = ambiente.msAguardados();
        caso.consulta(*s);
        EXPECT_EQ(ambiente.msAguardados() - antes, caso.ms) << caso.vendas;
    }
}

TEST_P(FilaPendentesTest, ConsultaDentroDeUmaEsperaNaoRepeteNumeros) {
    Insere({u"'2026-11-15'"_s, 1, u"101"_s, u""_s, 0, u""_s});
    Insere({u"'2026-11-15'"_s, 2, u"102"_s, u""_s, 0, u""_s});
    bool aninhada = false;
    ambiente.AoBombear([&] {
        if (aninhada || Fila().size() != 1) return;
        aninhada = true;
        Insere({u"'2026-11-15'"_s, 3, u"103"_s, u""_s, 0, u""_s});
        ConsultaGrid(*s);
    });

    ConsultaGrid(*s);

    ASSERT_TRUE(aninhada);
    EXPECT_EQ(Fila(), (QStringList{u"101"_s, u"102"_s, u"103"_s}));
    EXPECT_EQ(s->painel.LblQuantCup, u"3"_s);
}

TEST_P(FilaPendentesTest, ValoresHostisDoBancoChegamIntactosALista) {
    // Text in an integer column only SQLite keeps; MariaDB gets the numeric cases.
    const struct {
        QString nfce;
        QString naFila;
        bool soSqlite;
    } casos[] = {
        {u"-5"_s, u"-5"_s, false},
        {u"2147483647"_s, u"2147483647"_s, false},
        {u"'12''3'"_s, u"12'3"_s, true},
        {u"''"_s, u""_s, true},
        {u"'a|b\"c'"_s, u"a|b\"c"_s, true},
        {u"'"_s + QString(100000, u'x') + u"'"_s, QString(100000, u'x'), true},
    };
    QStringList esperada;
    int cupom = 0;
    for (const auto& caso : casos) {
        if (caso.soSqlite && !EmSqlite()) continue;
        Insere({u"'2026-11-15'"_s, ++cupom, caso.nfce, u""_s, 0, u""_s});
        esperada.append(caso.naFila);
    }
    ConsultaGrid(*s);
    EXPECT_EQ(Fila(), esperada);
    EXPECT_EQ(s->painel.LblQuantCup, QString::number(esperada.size()));
}

INSTANTIATE_TEST_SUITE_P(Motores, FilaPendentesTest, ::testing::ValuesIn(Motores()), NomeDoMotor);

} // namespace
} // namespace nfce::teste
