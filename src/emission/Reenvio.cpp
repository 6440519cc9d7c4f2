#include "emission/Reenvio.h"

#include "context/Servidor.h"
#include "emission/FilaPendentes.h"
#include "storage/Formatacao.h"

namespace nfce {

using namespace Qt::StringLiterals;

namespace {

struct Periodo {
    bool reabreAntes;
    QDate (*inicio)(const QDate& hoje);
    double esperaAposReenfileirar;
    void (*consulta)(Servidor& s);
};

QDate PrimeiroDoMes(const QDate& hoje) {
    return QDate(hoje.year(), hoje.month(), 1);
}

// Sales before this date are left alone, whatever their state.
QDate InicioFixo(const QDate&) {
    return QDate(2021, 6, 1);
}

constexpr Periodo DoMes{.reabreAntes = false,
                        .inicio = PrimeiroDoMes,
                        .esperaAposReenfileirar = 0,
                        .consulta = ConsultaGrid};
constexpr Periodo DesdeJunho2021{.reabreAntes = true,
                                 .inicio = InicioFixo,
                                 .esperaAposReenfileirar = 0.01,
                                 .consulta = ConsultaGrid01};

void Reenvia(Servidor& s, const Periodo& p, const std::function<void()>& enviaTodos) {
    if (p.reabreAntes) s.conexoes.ReabreConexao();
    EstadoFila& fila = s.fila;
    const QDate hoje = s.ambiente.Data();
    DefinePeriodo(fila, p.inicio(hoje), hoje);
    s.conexoes.ReabreConexao();
    s.conexoes.Executa(SqlReenfileiraPeriodo(fila.DataInicialSql, fila.DataFinalSql));
    if (p.esperaAposReenfileirar > 0) s.ambiente.Aguarda(p.esperaAposReenfileirar);
    ConsultaGrid(s);
    const int rodadas = Inteiro16(s.painel.LblQuantCup, u"a contagem de cupons"_s);
    for (int rodada = 0; rodada <= rodadas; ++rodada) {
        s.venda.ModoRetorno.clear();
        s.venda.ModoRetorno = u"NC1"_s;
        p.consulta(s);
        if (Val(s.painel.LblQuantCup) > 0) enviaTodos();
    }
}

} // namespace

void Reenfileira(Servidor& s) {
    s.conexoes.ReabreConexao();
    s.conexoes.Executa(SqlReenfileira());
}

void AtEnvioTime(Servidor& s) {
    Reenfileira(s);
    s.fila.HoraReenvio = s.ambiente.Hora().toString(u"HH:mm");
    s.ambiente.Aguarda(60);
    s.painel.TimerVendasAtivo = true;
}

void EnvioTime(Servidor& s, const std::function<void()>& enviaTodos) {
    Reenvia(s, DoMes, enviaTodos);
}

void EnvioTime01(Servidor& s, const std::function<void()>& enviaTodos) {
    Reenvia(s, DesdeJunho2021, enviaTodos);
}

// The ORDER BY stays as in the selection it came from; SQLite gets it dropped by the
// dialect step.
QString SqlReenfileira() {
    return u"UPDATE vendas SET enviotime = 0 "_s + u"WHERE tempo <> '"_s + u"1"_s +
           u"' AND nfce <> 0 AND enviotime = 1 ORDER BY cupom asc"_s;
}

QString SqlReenfileiraPeriodo(const QString& inicioSql, const QString& fimSql) {
    return u"UPDATE vendas SET enviotime = 0 "_s + u"WHERE data >= "_s + inicioSql +
           u" AND data <= "_s + fimSql + u" AND tempo <> '"_s + u"1"_s +
           u"' AND nfce <> 0 AND enviotime = 1 ORDER BY cupom asc"_s;
}

} // namespace nfce
