#pragma once

#include <QDateTime>
#include <QString>
#include <cstdio>
#include <functional>
#include <vector>

namespace nfce {

// One log, several destinations: each line is stamped once and handed to every destination,
// always as a single line (breaks inside a message become spaces).
class Registro {
public:
    using Destino = std::function<void(const QDateTime& quando, const QString& linhaCarimbada)>;

    explicit Registro(std::vector<Destino> destinos = {}) : destinos_(std::move(destinos)) {}

    void Escreve(const QDateTime& quando, const QString& linha) const;

private:
    std::vector<Destino> destinos_;
};

// Standard error or standard output.
Registro::Destino NoFluxo(std::FILE* fluxo);
// One file a day in `pasta`, "servidor-nfce-yyyy-MM-dd.log" (UTF-8), the folder made when missing.
// A line that cannot be written is lost; the server goes on.
Registro::Destino ArquivoDoDia(const QString& pasta);

} // namespace nfce
