#pragma once

#include <QString>

namespace nfce {

// What the window shows. The captions double as working storage: later steps read
// back the access key from LblMens01 and the outcome from LblMens03, exactly as the
// operators' procedures expect. The window only mirrors this; the logic never touches
// a widget.
struct Painel {
    QString Caption = QStringLiteral("Servidor NFC-e");
    QString LblMens01;
    QString LblMens02;
    QString LblMens03;
    QString LblQuantCup;
    QString lblData;
    QString lblHora;
    bool TimerVendasAtivo = false;
    bool CmdExportarAtivo = false;
};

} // namespace nfce
