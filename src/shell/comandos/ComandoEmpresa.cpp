#include "shell/comandos/Comandos.h"

#include "shell/comandos/Saida.h"
#include "storage/Empresa.h"
#include "storage/ErroExecucao.h"

#include <QTextStream>
#include <algorithm>

namespace nfce {

namespace {

bool Separador(QChar c) {
    return c == u'|' || c.category() == QChar::Other_Control;
}

// A bar or a control character in a value would break every document made from the record.
void RecusaSeparadores(const QString& linha, int numero) {
    if (std::none_of(linha.cbegin(), linha.cend(), Separador)) return;
    QString chave = linha.section(u'=', 0, 0).left(40);
    std::replace_if(chave.begin(), chave.end(), Separador, u'?');
    throw ErroExecucao(ErroArgumentoInvalido,
                       QStringLiteral("Linha %1 (%2): \"|\" e caracteres de controle não são "
                                      "permitidos; nada foi gravado")
                           .arg(numero)
                           .arg(chave));
}

} // namespace

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
    for (QString linha; entrada.readLineInto(&linha);) {
        RecusaSeparadores(linha, linhas.size() + 1);
        linhas.append(linha);
    }
    GravaRegistroEmpresa(pasta, linhas);
    EscreveSaida(pasta + QStringLiteral("/Empresa.Bin\n"));
    return 0;
}

} // namespace nfce
