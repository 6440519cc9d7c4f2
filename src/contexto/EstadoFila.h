#pragma once

#include <QDate>
#include <QString>

namespace nfce {

// What the queue refresh and the resend routines leave set after each call: the period
// they last worked on and the time of the last resend, which the schedule compares with
// the clock so that one minute does not start two resends.
struct EstadoFila {
    QString DataTexto; // today as "dd/mm/yyyy"
    QDate DataInicial;
    QDate DataFinal;
    QString DataInicialSql; // "'yyyy-mm-dd'"
    QString DataFinalSql;
    QString DataConsulta; // date of the first sale of the last refresh that found any
    QString HoraReenvio;  // "HH:MM"
    quint64 Geracao = 0;  // times ncupom was rebuilt; a refresh inside a wait changes it
};

} // namespace nfce
