#pragma once

#include <QString>

namespace nfce {

// One server per program folder: an exclusive lock on a file in the folder, held by the
// operating system for the life of the process. A process that dies (a crash, a power cut)
// releases it with everything else it held, so no stale lock ever blocks a start.
class InstanciaUnica {
public:
    enum class Resultado { Obtida, OutraRodando, Falhou };

    explicit InstanciaUnica(const QString& pastaPrograma);
    ~InstanciaUnica();
    InstanciaUnica(const InstanciaUnica&) = delete;
    InstanciaUnica& operator=(const InstanciaUnica&) = delete;

    Resultado Obtem();
    // Why the lock could not be made, when Obtem failed.
    QString Motivo() const;

private:
    QString caminho_;
    qintptr alca_ = -1;
};

} // namespace nfce
