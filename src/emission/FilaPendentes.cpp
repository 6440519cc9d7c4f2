#include "emission/FilaPendentes.h"

#include "context/Servidor.h"
#include "storage/Formatacao.h"
#include "storage/Registros.h"
#include "storage/Sql.h"

namespace nfce {

using namespace Qt::StringLiterals;

namespace {

struct Variante {
    double esperaAntesDaConsulta;
    bool esperaAntesDoBombeio; // per copied number: wait, then pump (otherwise pump, then wait)
};

constexpr Variante Grid{.esperaAntesDaConsulta = 0, .esperaAntesDoBombeio = false};
constexpr Variante Grid01{.esperaAntesDaConsulta = 0.02, .esperaAntesDoBombeio = true};

QString LiteralData(const QDate& data) {
    return u"'"_s + DataMySQL(data) + u"'"_s;
}

void PausaDaCopia(Servidor& s, const Variante& v) {
    if (v.esperaAntesDoBombeio) s.ambiente.Aguarda(0.01);
    s.ambiente.DoEvents();
    if (!v.esperaAntesDoBombeio) s.ambiente.Aguarda(0.01);
}

void CopiaParaFila(Servidor& s, Registros& rs, const Variante& v) {
    EstadoFila& fila = s.fila;
    fila.DataConsulta = rs.Texto(u"data"_s);
    s.painel.LblQuantCup.clear();
    s.painel.LblQuantCup = QString::number(rs.RecordCount());
    s.ambiente.DoEvents();
    // Held here: a refresh inside a wait opens its own and must not close this one.
    const auto local = s.conexoes.AbreLocal();
    local->Executa(u"DELETE * FROM ncupom"_s);
    const quint64 geracao = ++fila.Geracao;
    while (!rs.Eof()) {
        local->Executa(SqlInsereNaFila(rs.Texto(u"nfce"_s)));
        PausaDaCopia(s, v);
        // A refresh that ran inside the wait rebuilt the list from newer rows: adding the
        // rest of these would only repeat numbers.
        if (fila.Geracao != geracao) break;
        rs.MoveNext();
    }
    s.ambiente.Aguarda(0.01);
}

void Consulta(Servidor& s, const Variante& v) {
    s.conexoes.ReabreConexao();
    EstadoFila& fila = s.fila;
    const QDate hoje = s.ambiente.Data();
    DefinePeriodo(fila, hoje, hoje);
    if (v.esperaAntesDaConsulta > 0) s.ambiente.Aguarda(v.esperaAntesDaConsulta);
    // A recordset of its own, for the same reason as the local connection.
    Registros rs;
    s.conexoes.AbreConsulta(rs, SqlFilaDoPeriodo(fila.DataInicialSql, fila.DataFinalSql));
    if (rs.RecordCount() != 0) CopiaParaFila(s, rs, v);
    rs.Fecha();
    s.painel.TimerVendasAtivo = true;
}

} // namespace

void ConsultaGrid(Servidor& s) {
    Consulta(s, Grid);
}

void ConsultaGrid01(Servidor& s) {
    Consulta(s, Grid01);
}

void DefinePeriodo(EstadoFila& fila, const QDate& inicio, const QDate& fim) {
    fila.DataInicialSql = LiteralData(inicio);
    fila.DataFinalSql = LiteralData(fim);
}

QString SqlFilaDoPeriodo(const QString& inicioSql, const QString& fimSql) {
    return u"SELECT data, cupom, valor, chave, autorizacao, erro, tempo, situacao, nfce FROM vendas "_s +
           u"WHERE data >= "_s + inicioSql + u" AND data <= "_s + fimSql + u" AND tempo <> '"_s +
           u"1"_s + u"' AND nfce <> 0 "_s +
           u"AND enviotime = 0 AND autorizacao = '' ORDER BY cupom asc"_s;
}

QString SqlInsereNaFila(const QString& nfce) {
    return u"INSERT INTO ncupom (cupom) VALUES ( '"_s + EscapaTexto(nfce) + u"' )"_s;
}

} // namespace nfce
