#pragma once

#include <QString>
#include <functional>

namespace nfce {

void EscreveSaida(const QString& texto);
void EscreveErro(const QString& texto);

// "uso: servidor-nfce <sintaxe>" on stderr; returns the exit status of a usage error.
int ErroDeUso(const QString& sintaxe);

// Runs a command; a run-time error becomes one clear line on stderr and exit status 1.
int ExecutaComando(const std::function<int()>& comando);

} // namespace nfce
