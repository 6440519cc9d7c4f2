#include "shell/basDemo.h"
#include "shell/comandos/Comandos.h"
#include "shell/comandos/Saida.h"

#include <QCoreApplication>
#include <functional>
#include <map>

namespace {

const std::map<QString, std::function<int(const QStringList&)>> comandos = {
    {QStringLiteral("empresa"), nfce::ComandoEmpresa},
    {QStringLiteral("iniciar"), nfce::ComandoIniciar},
    {QStringLiteral("gerar"), nfce::ComandoGerar},
    {QStringLiteral("exportar"), nfce::ComandoExportar},
    {QStringLiteral("enviar"), nfce::ComandoEnviar},
    {QStringLiteral("reenfileirar"), nfce::ComandoReenfileirar},
};

int Uso() {
    return nfce::ErroDeUso(QStringLiteral("[--pasta DIR] [--sem-janela] [--executar-agora]\n"
                                          "     servidor-nfce iniciar DIR [--exemplos]\n"
                                          "     servidor-nfce empresa DIR [--mostrar] < dados.txt\n"
                                          "     servidor-nfce gerar NFCE [--pasta DIR]\n"
                                          "     servidor-nfce exportar [--pasta DIR]\n"
                                          "     servidor-nfce enviar [--pasta DIR]\n"
                                          "     servidor-nfce reenfileirar [--pasta DIR]"));
}

} // namespace

// Without a command, or with options only, the program is the tray server.
int main(int argc, char** argv) {
    QStringList argumentos;
    for (int i = 1; i < argc; ++i)
        argumentos.append(QString::fromLocal8Bit(argv[i]));
    if (argumentos.isEmpty() || argumentos.first().startsWith(u'-'))
        return nfce::Main(argc, argv, argumentos);
    QCoreApplication app(argc, argv);
    const auto comando = comandos.find(argumentos.takeFirst());
    if (comando == comandos.end()) return Uso();
    return nfce::ExecutaComando([&] { return comando->second(argumentos); });
}
