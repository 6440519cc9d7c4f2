#include "emission/FilaPendentes.h"
#include "emission/Reenvio.h"
#include "storage/ErroExecucao.h"
#include "support/Erros.h"
#include "support/Loja.h"

namespace nfce::teste {
namespace {

using namespace Qt::StringLiterals;

class FilaPendentesTest : public Loja {
protected:
    // Sales numbered on from 101, cupom 200 less the number: "data, tempo, enviotime" each.
    void Vendas(const QStringList& linhas) {
        const int n = 101 + Conta(u"vendas"_s);
        for (int i = 0; i < linhas.size(); ++i)
            Executa(u"INSERT INTO vendas (cupom, nfce, autorizacao, data, tempo, enviotime) "
                    "VALUES (%1, %2, '', %3)"_s.arg(200 - n - i)
                        .arg(n + i)
                        .arg(linhas[i]));
    }
    QString Envios() {
        QString envios;
        for (int nfce = 101; nfce <= 100 + Conta(u"vendas"_s); ++nfce)
            envios += Coluna(u"enviotime"_s, nfce);
        return envios;
    }
};

// Today's sales not finished, numbered, not sent and not authorised, by cupom; 0.01 s per sale
// copied and 0.01 s after them, the second routine 0.02 s first. With none, the list and the
// count stay as they were.
TEST_P(FilaPendentesTest, SoAsVendasDeHojeNaoEnviadasEmOrdemDeCupom) {
    for (const auto& [consulta, vazia, cheia] :
         {std::tuple(&ConsultaGrid, 0, 40), {&ConsultaGrid01, 20, 60}}) {
        Limpa();
        Vendas({u"'2026-11-14', '0', 0"_s});
        PoeNaFila({u"7"_s});
        s->painel.LblQuantCup = u"5"_s;
        for (const auto& [ms, fila] : {std::pair(vazia, u"7 5"_s), {cheia, u"104 103 102 3"_s}}) {
            s->painel.TimerVendasAtivo = false;
            const qint64 antes = ambiente.msAguardados();
            consulta(*s);
            EXPECT_EQ(ambiente.msAguardados() - antes, ms);
            EXPECT_EQ(Fila().join(u' ') + u' ' + s->painel.LblQuantCup, fila);
            EXPECT_TRUE(s->painel.TimerVendasAtivo);
            if (Conta(u"vendas"_s) > 1) continue;
            Vendas({u"'2026-11-15', '', 0"_s, u"'2026-11-15', '0', 0"_s, u"'2026-11-15', '9', 0"_s,
                    u"'2026-11-15', '1', 0"_s, u"'2026-11-15', '0', 1"_s, u"'2026-11-16', '0', 0"_s,
                    u"NULL, '0', 0"_s, u"'2026-11-15', '0', 0"_s, u"'2026-11-15', '0', 0"_s});
            Executa(u"UPDATE vendas SET autorizacao = '1312' WHERE nfce = 109"_s);
            Executa(u"UPDATE vendas SET nfce = 0 WHERE nfce = 110"_s);
        }
    }
}

// Sent sales back in the queue: by AtEnvioTime of any date (then a minute's wait, the list
// left as it was), by EnvioTime this month's up to today, by EnvioTime01 those from
// 01/06/2021; never a finished one, one without a number or one not sent.
TEST_P(FilaPendentesTest, PeriodoDeCadaReenvio) {
    Vendas({u"'2026-11-15', '0', 1"_s, u"'2026-11-01', '9', 1"_s, u"'2026-10-31', '', 1"_s,
            u"'2021-06-01', '0', 1"_s, u"'2021-05-31', '0', 1"_s, u"'2026-11-16', '0', 1"_s,
            u"NULL, '0', 1"_s, u"'2026-11-15', '1', 1"_s, u"'2026-11-15', '0', 0"_s,
            u"'2026-11-15', '0', 1"_s});
    Executa(u"UPDATE vendas SET autorizacao = '131' WHERE nfce = 101"_s);
    Executa(u"UPDATE vendas SET nfce = 0 WHERE nfce = 110"_s);
    PoeNaFila({u"7"_s});
    AtEnvioTime(*s);
    EXPECT_EQ(Envios() + Fila().join(u' '), u"0000000107"_s);
    EXPECT_EQ(ambiente.msAguardados(), 60000);
    EXPECT_EQ(s->fila.HoraReenvio, u"10:20"_s);
    EXPECT_TRUE(s->painel.TimerVendasAtivo);
    for (const auto& [reenvio, envios] :
         {std::pair(&EnvioTime, u"001111110"_s), {&EnvioTime01, u"000011110"_s}}) {
        Executa(u"UPDATE vendas SET enviotime = 1 WHERE nfce <> 109"_s);
        reenvio(*s, [] {});
        EXPECT_EQ(Envios(), envios);
    }
    EXPECT_EQ(Coluna(u"enviotime"_s, 0), u"1"_s);
    EXPECT_EQ(s->fila.DataInicialSql, u"'2026-11-15'"_s); // the refresh's, last
}

// One round more than the sales counted, each sending in mode NC1, until the list is empty;
// with no sale today, as many as the caption held.
TEST_P(FilaPendentesTest, UmaRodadaAMaisQueAContagem) {
    for (const auto reenvio : {&EnvioTime, &EnvioTime01}) {
        for (int pendentes : {0, 1, 3}) {
            Executa(u"DELETE FROM vendas"_s);
            Vendas(QStringList(pendentes, u"'2026-11-15', '0', 1"_s));
            s->painel.LblQuantCup.clear();
            QStringList modos;
            reenvio(*s, [&] { // as EnviaTodos: the first listed sale ends finished
                modos.append(s->venda.ModoRetorno);
                Executa(u"UPDATE vendas SET tempo = '1', enviotime = 1 WHERE nfce = '%1'"_s.arg(
                    Fila().value(0)));
            });
            EXPECT_EQ(modos, QStringList(pendentes == 0 ? 0 : pendentes + 1, u"NC1"_s));
            EXPECT_EQ(Conta(u"vendas"_s, u"tempo <> '1'"_s), 0);
        }
    }
    for (const auto& [rotulo, rodadas, erro] : {std::tuple(u"abc"_s, 0, 0),
                                                {u"2.5"_s, 3, 0},
                                                {u"4x"_s, 5, 0},
                                                {u"32768"_s, 0, ErroEstouro}}) {
        s->painel.LblQuantCup = rotulo;
        int vistos = 0;
        EXPECT_EQ(ErroDe([&] { EnvioTime(*s, [&] { ++vistos; }); }).numero(), erro);
        EXPECT_EQ(vistos, rodadas) << rotulo.toStdString();
    }
}

INSTANTIATE_TEST_SUITE_P(Motores, FilaPendentesTest, ::testing::ValuesIn(Motores()), NomeDoMotor);

} // namespace
} // namespace nfce::teste
