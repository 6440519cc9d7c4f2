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
    return nfce::ErroDeUso(QStringLiteral("iniciar DIR [--exemplos]\n"
                                          "     servidor-nfce empresa DIR [--mostrar] < dados.txt\n"
                                          "     servidor-nfce gerar NFCE [--pasta DIR]\n"
                                          "     servidor-nfce exportar [--pasta DIR]\n"
                                          "     servidor-nfce enviar [--pasta DIR]\n"
                                          "     servidor-nfce reenfileirar [--pasta DIR]"));
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    QStringList argumentos = app.arguments().mid(1);
    if (argumentos.isEmpty()) return Uso();
    const auto comando = comandos.find(argumentos.takeFirst());
    if (comando == comandos.end()) return Uso();
    return nfce::ExecutaComando([&] { return comando->second(argumentos); });
}
