#pragma once

#include "plataforma/Ambiente.h"

#include <QElapsedTimer>

namespace nfce {

// Production services on Qt's event loop. A wait sleeps in the loop until its deadline
// (no busy loop); dialogs go to the log here, the window's subclass shows them on screen.
class AmbienteQt : public Ambiente {
public:
    AmbienteQt();

    QDateTime Agora() const override;
    qint64 Monotonico() const override;
    void Aguarda(double segundos) override;
    void DoEvents() override;
    void MsgBox(const QString& texto, const QString& titulo, Icone icone) override;
    bool Pergunta(const QString& texto, const QString& titulo) override;
    bool IniciaPrograma(const QString& linhaDeComando) override;
    QString BuscaUrl(const QString& url, int limiteMs) override;
    void Registra(const QString& linha) override;

private:
    QElapsedTimer relogio_;
};

} // namespace nfce
