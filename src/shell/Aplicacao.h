#pragma once

#include "context/Servidor.h"
#include "shell/Agenda.h"

#include <QObject>
#include <functional>

class QTimer;

namespace nfce {

// The server's own events, free of widgets: start-up, the buttons, the schedule's timer and
// the end. The window (or nothing, when headless) forwards its events here and mirrors the
// Painel. An error that escapes a routine of an event is shown and logged, and the server goes
// on; only the start-up lets it through.
class Aplicacao : public QObject {
    Q_OBJECT
public:
    // `fimDoPrograma` ends the process after the unload.
    Aplicacao(const QString& pasta, Ambiente& ambiente, std::function<void()> fimDoPrograma);

    Servidor& servidor() { return s_; }

    // The start-up routine, the captions cleared, the schedule on, 5 seconds, then the given-up
    // sales back in the queue (about 65 seconds with events running). With `executarAgora` a
    // scheduled run (sender, re-queue, export) is queued as soon as the connections are ready.
    void Form_Load(bool executarAgora);
    // The export button is enabled only when VENDASONLINE is exactly "SIM".
    void Form_Activate();
    // Schedule off, main connection closed, the program ends.
    void Form_Unload();

    void CmdExecutar_Click();
    void CmdParar_Click() { s_.painel.TimerVendasAtivo = false; }
    // The window hides itself; the schedule is on again.
    void cmdOK_Click() { s_.painel.TimerVendasAtivo = true; }
    void CmdExportar_Click();
    void TimerVendas_Timer() { timerVendas_.Tique(); }

    // Production only: ticks TimerVendas every 500 ms on Qt's event loop.
    void LigaTimerVendas();

private:
    void AtEnvioTimeProtegido();
    void Protegido(const QString& rotina, const std::function<void()>& passo);

    Servidor s_;
    TimerVendas timerVendas_;
    std::function<void()> fimDoPrograma_;
    QTimer* relogio_ = nullptr;
};

} // namespace nfce
