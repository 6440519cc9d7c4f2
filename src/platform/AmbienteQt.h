#pragma once

#include "platform/Ambiente.h"
#include "platform/Registro.h"

#include <QElapsedTimer>

namespace nfce {

// Production services on Qt's event loop. A wait sleeps in the loop until its deadline
// (no busy loop); dialogs go to the log here, the window's subclass shows them on screen.
// The log goes to standard error unless other destinations are given.
class AmbienteQt : public Ambiente {
public:
    explicit AmbienteQt(Registro registro = Registro({NoFluxo(stderr)}));

    QDateTime Agora() const override;
    qint64 Monotonico() const override;
    void Aguarda(double segundos) override;
    void DoEvents() override;
    void Posta(std::function<void()> evento) override;
    void MsgBox(const QString& texto, const QString& titulo, Icone icone) override;
    bool Pergunta(const QString& texto, const QString& titulo) override;
    bool IniciaPrograma(const QString& programa, const QStringList& argumentos) override;
    QString BuscaUrl(const QString& url, int limiteMs) override;
    void Registra(const QString& linha) override;

    // Inside a wait: the event being handled runs in a nested loop.
    bool EmEspera() const { return esperas_ > 0; }

private:
    QElapsedTimer relogio_;
    Registro registro_;
    int esperas_ = 0;
};

} // namespace nfce
