#pragma once

#include <QString>

namespace nfce {

// What the queue refresh and the resend routines leave set after each call: the period
// they last worked on and the time of the last resend.
struct EstadoFila {
    QString DataInicialSql; // "'yyyy-mm-dd'"
    QString DataFinalSql;
    QString DataConsulta; // date of the first sale of the last refresh that found any
    QString HoraReenvio;  // "HH:MM"
    quint64 Geracao = 0;  // times ncupom was rebuilt; a refresh inside a wait changes it
};

} // namespace nfce
