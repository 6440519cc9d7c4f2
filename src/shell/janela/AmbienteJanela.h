#pragma once

#include "platform/AmbienteQt.h"

namespace nfce {

// With a window on screen, message boxes and questions are real dialogs (and still logged).
class AmbienteJanela : public AmbienteQt {
public:
    using AmbienteQt::AmbienteQt;

    void MsgBox(const QString& texto, const QString& titulo, Icone icone) override;
    bool Pergunta(const QString& texto, const QString& titulo) override;
};

} // namespace nfce
