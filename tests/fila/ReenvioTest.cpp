#include "emission/Reenvio.h"
#include "apoio/Erros.h"
#include "emission/FilaPendentes.h"
#include "fila/BaseFila.h"
#include "storage/ErroExecucao.h"

namespace nfce::teste {
namespace {

using namespace Qt::StringLiterals;

using Reenvio = void (*)(Servidor&, const std::function<void()>&);

TEST(SqlDaFila, TextosDoSistema) {
    const struct {
        QString sql, esperado;
    } casos[] = {
        {SqlFilaDoPeriodo(u"'2026-11-15'"_s, u"'2026-11-15'"_s),
         u"SELECT data, cupom, valor, chave, autorizacao, erro, tempo, situacao, nfce FROM vendas "
         "WHERE data >= '2026-11-15' AND data <= '2026-11-15' AND tempo <> '1' AND nfce <> 0 "
         "AND enviotime = 0 AND autorizacao = '' ORDER BY cupom asc"_s},
        {SqlInsereNaFila(u"45"_s), u"INSERT INTO ncupom (cupom) VALUES ( '45' )"_s},
        {SqlInsereNaFila(u"D'A"_s), u"INSERT INTO ncupom (cupom) VALUES ( 'D''A' )"_s},
        {SqlReenfileira(),
         u"UPDATE vendas SET enviotime = 0 WHERE tempo <> '1' AND nfce <> 0 AND enviotime = 1 "
         "ORDER BY cupom asc"_s},
        {SqlReenfileiraPeriodo(u"'2021-06-01'"_s, u"'2026-11-15'"_s),
         u"UPDATE vendas SET enviotime = 0 WHERE data >= '2021-06-01' AND data <= '2026-11-15' "
         "AND tempo <> '1' AND nfce <> 0 AND enviotime = 1 ORDER BY cupom asc"_s},
    };
    for (const auto& caso : casos)
        EXPECT_EQ(caso.sql, caso.esperado);
}

class ReenvioTest : public BaseFila {
protected:
    QString EnvioDe(int cupom) {
        return Texto(u"SELECT enviotime FROM vendas WHERE cupom = "_s + QString::number(cupom));
    }
    // EnviaTodos as far as the queue sees it: the first listed sale ends finished.
    std::function<void()> EnviaPrimeira() {
        return [this] {
            ++envios;
            modos.append(s->venda.ModoRetorno);
            const QStringList fila = Fila();
            if (!fila.isEmpty())
                Executa(u"UPDATE vendas SET tempo = '1', enviotime = 1 WHERE nfce = "_s +
                        fila.first());
        };
    }
    int envios = 0;
    QStringList modos;
};

TEST_P(ReenvioTest, AtEnvioTimeDevolveAFilaQualquerDataNuncaAsTerminadas) {
    const struct {
        Venda venda;
        QString envioDepois;
    } casos[] = {
        {{u"'2019-01-01'"_s, 1, u"10"_s, u"0"_s, 1, u""_s}, u"0"_s},
        {{u"NULL"_s, 2, u"11"_s, u""_s, 1, u""_s}, u"0"_s},
        {{u"'2026-11-15'"_s, 3, u"12"_s, u"9"_s, 1, u""_s}, u"0"_s},
        {{u"'2026-11-15'"_s, 4, u"13"_s, u"8"_s, 1, u"131"_s}, u"0"_s},
        {{u"'2026-11-15'"_s, 5, u"14"_s, u"1"_s, 1, u""_s}, u"1"_s},
        {{u"'2026-11-15'"_s, 6, u"0"_s, u"0"_s, 1, u""_s}, u"1"_s},
        {{u"'2026-11-15'"_s, 7, u"15"_s, u"0"_s, 0, u""_s}, u"0"_s},
    };
    for (const auto& caso : casos)
        Insere(caso.venda);
    PoeNaFila({u"7"_s});

    AtEnvioTime(*s);

    for (const auto& caso : casos)
        EXPECT_EQ(EnvioDe(caso.venda.cupom), caso.envioDepois) << caso.venda.cupom;
    EXPECT_EQ(s->fila.HoraReenvio, u"10:20"_s);
    EXPECT_EQ(ambiente.msAguardados(), 60000);
    EXPECT_TRUE(s->painel.TimerVendasAtivo);
    EXPECT_EQ(Fila(), QStringList{u"7"_s});
}

TEST_P(ReenvioTest, PeriodoDeCadaReenvio) {
    const struct {
        QString data;
        QString doMes, desde2021;
    } casos[] = {
        {u"'2026-11-15'"_s, u"0"_s, u"0"_s}, {u"'2026-11-01'"_s, u"0"_s, u"0"_s},
        {u"'2026-10-31'"_s, u"1"_s, u"0"_s}, {u"'2021-06-01'"_s, u"1"_s, u"0"_s},
        {u"'2021-05-31'"_s, u"1"_s, u"1"_s}, {u"'2026-11-16'"_s, u"1"_s, u"1"_s},
        {u"NULL"_s, u"1"_s, u"1"_s},
    };
    int cupom = 0;
    for (const auto& caso : casos)
        Insere({caso.data, ++cupom, QString::number(100 + cupom), u"0"_s, 1, u""_s});
    const struct {
        Reenvio reenvio;
        const char* nome;
        QString (*esperado)(const decltype(casos[0])&);
    } reenvios[] = {
        {EnvioTime, "EnvioTime", [](const auto& c) { return c.doMes; }},
        {EnvioTime01, "EnvioTime01", [](const auto& c) { return c.desde2021; }},
    };
    for (const auto& r : reenvios) {
        Executa(u"UPDATE vendas SET enviotime = 1"_s);
        r.reenvio(*s, [] {});
        // The refresh runs last and leaves its own period (today) in the shared dates.
        EXPECT_EQ(s->fila.DataInicialSql, u"'2026-11-15'"_s);
        for (int i = 0; i < cupom; ++i)
            EXPECT_EQ(EnvioDe(i + 1), r.esperado(casos[i])) << r.nome << i;
    }
}

TEST_P(ReenvioTest, UmaRodadaAMaisQueAContagemAteEsvaziarAFila) {
    for (Reenvio reenvio : {EnvioTime, EnvioTime01}) {
        for (int pendentes : {0, 1, 3}) {
            Executa(u"DELETE FROM vendas"_s);
            for (int i = 1; i <= pendentes; ++i)
                Insere({u"'2026-11-15'"_s, i, QString::number(200 + i), u"0"_s, 1, u""_s});
            s->painel.LblQuantCup.clear();
            envios = 0;
            modos.clear();

            reenvio(*s, EnviaPrimeira());

            // The last round finds none left, keeps the previous count and sends once more.
            EXPECT_EQ(envios, pendentes == 0 ? 0 : pendentes + 1) << pendentes;
            EXPECT_EQ(Conta(u"vendas"_s, u"tempo <> '1'"_s), 0);
            EXPECT_EQ(modos, QStringList(envios, u"NC1"_s));
        }
    }
}

TEST_P(ReenvioTest, ContagemQueSobrouNoRotulo) {
    // No sale today: the count read before the rounds is whatever the caption held.
    const struct {
        QString rotulo;
        int envios;
        int erro;
    } casos[] = {
        {u""_s, 0, 0},
        {u"abc"_s, 0, 0},
        {u"'|\""_s, 0, 0},
        {u"-3"_s, 0, 0},
        {u"2.5"_s, 3, 0},
        {u"3.5"_s, 5, 0},
        {u"4x"_s, 5, 0},
        {u"32768"_s, 0, ErroEstouro},
        {u"1e400"_s, 0, ErroEstouro},
        {QString(100000, u'9'), 0, ErroEstouro},
    };
    for (const auto& caso : casos) {
        s->painel.LblQuantCup = caso.rotulo;
        int envios = 0;
        const int erro = ErroDe([&] { EnvioTime(*s, [&] { ++envios; }); }).numero();
        EXPECT_EQ(erro, caso.erro) << caso.rotulo.left(20).toStdString();
        EXPECT_EQ(envios, caso.envios) << caso.rotulo.left(20).toStdString();
    }
}

INSTANTIATE_TEST_SUITE_P(Motores, ReenvioTest, ::testing::ValuesIn(Motores()), NomeDoMotor);

} // namespace
} // namespace nfce::teste
