#pragma once

#include <QDate>
#include <QString>

namespace nfce {

struct EstadoFila;
struct Servidor;

// Today's unsent sales (not finished, with an NFC-e number, enviotime 0, not authorised):
// their count goes into LblQuantCup and their NFC-e numbers, by sale number, into the
// local work list ncupom that EnviaTodos works through. When there is none, the count and
// the list keep what they had. Either way TimerVendas ends up enabled. Database errors go
// to the caller.
void ConsultaGrid(Servidor& s);
// The same with the waits of the copy that EnvioTime01 drives: 0.02 s before the query,
// and the wait of each copied number before the event pump instead of after it.
void ConsultaGrid01(Servidor& s);

// Sets the period of the queue routines: both dates and their quoted "yyyy-mm-dd" forms.
void DefinePeriodo(EstadoFila& fila, const QDate& inicio, const QDate& fim);

// The statements, as the system sends them.
QString SqlFilaDoPeriodo(const QString& inicioSql, const QString& fimSql);
QString SqlInsereNaFila(const QString& nfce);

} // namespace nfce
