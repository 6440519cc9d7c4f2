#pragma once

#include <QStringList>

namespace nfce {

// The command-line jobs; each takes the arguments after its own name and returns the
// exit status. Errors are thrown and reported by ExecutaComando.
int ComandoEmpresa(const QStringList& argumentos);
int ComandoIniciar(const QStringList& argumentos);
int ComandoGerar(const QStringList& argumentos);
int ComandoExportar(const QStringList& argumentos);
int ComandoEnviar(const QStringList& argumentos);
int ComandoReenfileirar(const QStringList& argumentos);

// The arguments that are not options ("--x"), and the value of an option "--x VALUE".
QStringList ArgumentosPosicionais(const QStringList& argumentos);
QString ValorOpcao(const QStringList& argumentos, const QString& opcao);
// The option is there without the value it needs.
bool FaltaValor(const QStringList& argumentos, const QString& opcao);
// Nothing but an optional "--pasta DIR".
bool SoPasta(const QStringList& argumentos);

} // namespace nfce
