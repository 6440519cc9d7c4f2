#include "emission/Reenvio.h"
#include "emission/FilaPendentes.h"
#include "storage/ErroExecucao.h"
#include "support/Erros.h"
#include "support/Loja.h"

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

class ReenvioTest : public Loja {
protected:
    // Sales numbered 101, 102, ... (cupom 1, 2, ...), sent (enviotime 1), each
    // "data, tempo, autorizacao".
    void Enviadas(const QStringList& linhas) {
        for (qsizetype i = 0; i < linhas.size(); ++i)
            Executa(u"INSERT INTO vendas (cupom, nfce, enviotime, data, tempo, autorizacao) "
                    "VALUES (%1, %2, 1, %3)"_s.arg(i + 1)
                        .arg(101 + i)
                        .arg(linhas[i]));
    }
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
    // Sent sales ("data, tempo, autorizacao") of any date and state go back to the queue, all
    // but the finished fifth; a sale without a number (6) and one not sent (7) stay as they are.
    Enviadas({u"'2019-01-01', '0', ''"_s, u"NULL, '', ''"_s, u"'2026-11-15', '9', ''"_s,
              u"'2026-11-15', '8', '131'"_s, u"'2026-11-15', '1', ''"_s});
    Executa(u"INSERT INTO vendas (cupom, nfce, enviotime, tempo) VALUES (6, 0, 1, '0'), "
            "(7, 15, 0, '0')"_s);
    PoeNaFila({u"7"_s});
    AtEnvioTime(*s);
    for (const auto& [cupom, envio] : {std::pair(1, u"0"_s),
                                       {2, u"0"_s},
                                       {3, u"0"_s},
                                       {4, u"0"_s},
                                       {5, u"1"_s},
                                       {6, u"1"_s},
                                       {7, u"0"_s}})
        EXPECT_EQ(EnvioDe(cupom), envio) << cupom;
    EXPECT_EQ(s->fila.HoraReenvio, u"10:20"_s);
    EXPECT_EQ(ambiente.msAguardados(), 60000);
    EXPECT_TRUE(s->painel.TimerVendasAtivo);
    EXPECT_EQ(Fila(), QStringList{u"7"_s});
}

TEST_P(ReenvioTest, PeriodoDeCadaReenvio) {
    // The sale's date; back in the queue by EnvioTime (this month) and EnvioTime01 (from
    // 01/06/2021), up to today.
    const std::tuple<QString, QString, QString> casos[] = {
        {u"'2026-11-15'"_s, u"0"_s, u"0"_s}, {u"'2026-11-01'"_s, u"0"_s, u"0"_s},
        {u"'2026-10-31'"_s, u"1"_s, u"0"_s}, {u"'2021-06-01'"_s, u"1"_s, u"0"_s},
        {u"'2021-05-31'"_s, u"1"_s, u"1"_s}, {u"'2026-11-16'"_s, u"1"_s, u"1"_s},
        {u"NULL"_s, u"1"_s, u"1"_s}};
    QStringList linhas;
    for (const auto& caso : casos)
        linhas << std::get<0>(caso) + u", '0', ''"_s;
    Enviadas(linhas);
    for (const bool desde2021 : {false, true}) {
        Executa(u"UPDATE vendas SET enviotime = 1"_s);
        (desde2021 ? EnvioTime01 : EnvioTime)(*s, [] {});
        // The refresh runs last and leaves its own period (today) in the shared dates.
        EXPECT_EQ(s->fila.DataInicialSql, u"'2026-11-15'"_s);
        for (int i = 0; i < int(std::size(casos)); ++i)
            EXPECT_EQ(EnvioDe(i + 1), desde2021 ? std::get<2>(casos[i]) : std::get<1>(casos[i]))
                << desde2021 << i;
    }
}

TEST_P(ReenvioTest, UmaRodadaAMaisQueAContagemAteEsvaziarAFila) {
    for (Reenvio reenvio : {EnvioTime, EnvioTime01}) {
        for (int pendentes : {0, 1, 3}) {
            Executa(u"DELETE FROM vendas"_s);
            Enviadas(QStringList(pendentes, u"'2026-11-15', '0', ''"_s));
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
    const std::tuple<QString, int, int> casos[] = {{u""_s, 0, 0},
                                                   {u"abc"_s, 0, 0},
                                                   {u"'|\""_s, 0, 0},
                                                   {u"-3"_s, 0, 0},
                                                   {u"2.5"_s, 3, 0},
                                                   {u"3.5"_s, 5, 0},
                                                   {u"4x"_s, 5, 0},
                                                   {u"32768"_s, 0, ErroEstouro},
                                                   {u"1e400"_s, 0, ErroEstouro},
                                                   {QString(100000, u'9'), 0, ErroEstouro}};
    for (const auto& [rotulo, rodadas, erro] : casos) {
        s->painel.LblQuantCup = rotulo;
        int vistos = 0;
        EXPECT_EQ(ErroDe([&] { EnvioTime(*s, [&] { ++vistos; }); }).numero(), erro)
            << rotulo.left(20).toStdString();
        EXPECT_EQ(vistos, rodadas) << rotulo.left(20).toStdString();
    }
}

INSTANTIATE_TEST_SUITE_P(Motores, ReenvioTest, ::testing::ValuesIn(Motores()), NomeDoMotor);

} // namespace
} // namespace nfce::teste
