#include "shell/comandos/Comandos.h"

#include "shell/comandos/Saida.h"
#include "storage/Empresa.h"

#include <QTextStream>

namespace nfce {

// servidor-nfce empresa DIR [--mostrar]: writes DIR/Empresa.Bin from KEY=value lines on
// standard input, or prints the record of DIR in plain text.
int ComandoEmpresa(const QStringList& argumentos) {
    const QStringList posicionais = ArgumentosPosicionais(argumentos);
    if (posicionais.size() != 1)
        return ErroDeUso(QStringLiteral("empresa DIR [--mostrar] < dados.txt"));
    const QString pasta = posicionais.first();
    if (argumentos.contains(QStringLiteral("--mostrar"))) {
        for (const QString& linha : DecifraRegistroEmpresa(pasta))
            EscreveSaida(linha + QLatin1Char('\n'));
        return 0;
    }
    QTextStream entrada(stdin);
    QStringList linhas;
    for (QString linha; entrada.readLineInto(&linha);)
        linhas.append(linha);
    GravaRegistroEmpresa(pasta, linhas);
    EscreveSaida(pasta + QStringLiteral("/Empresa.Bin\n"));
    return 0;
}

} // namespace nfce
