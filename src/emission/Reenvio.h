#pragma once

#include <QString>
#include <functional>

namespace nfce {

struct Servidor;

// Sales that were sent or given up (enviotime 1) but never finished go back into the queue
// (enviotime 0); only sales with an NFC-e number and tempo other than '1'. None of these
// traps errors: a database failure goes to the caller.

// Every date: reopens the main connection and runs the update.
void Reenfileira(Servidor& s);
// Reenfileira, then notes the time ("HH:MM") in HoraReenvio, pauses one minute, so the
// schedule's current minute is over before it looks again, and enables TimerVendas.
void AtEnvioTime(Servidor& s);

// Since the first day of this month (EnvioTime) or since 1 June 2021 (EnvioTime01): the
// update, then rounds of ConsultaGrid (ConsultaGrid01) and `enviaTodos` while today's
// queue has sales, one round more than the count found first. A count too large for the
// round counter raises ErroEstouro before any round.
void EnvioTime(Servidor& s, const std::function<void()>& enviaTodos);
void EnvioTime01(Servidor& s, const std::function<void()>& enviaTodos);

// The statements, as the system sends them.
QString SqlReenfileira();
QString SqlReenfileiraPeriodo(const QString& inicioSql, const QString& fimSql);

} // namespace nfce
