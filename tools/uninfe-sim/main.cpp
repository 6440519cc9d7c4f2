// uninfe-sim PASTA [--cenarios ARQ] [--cenario "1005=rejeita 778"]... [--mes-AM] [--uma-vez]
// Answers the exchange folders below PASTA as UniNFe would, one pass every 500 ms.
#include "Cenario.h"
#include "Simulador.h"
#include "platform/AmbienteQt.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QTextStream>
#include <QTimer>

using namespace Qt::StringLiterals;
using namespace uninfesim;

namespace {

int Falha(const QString& mensagem) {
    QTextStream(stderr) << "uninfe-sim: " << mensagem << Qt::endl;
    return 2;
}

bool LeArquivoDeCenarios(const QString& caminho, QString& texto) {
    QFile arquivo(caminho);
    if (!arquivo.open(QIODevice::ReadOnly)) return false;
    texto += QString::fromUtf8(arquivo.readAll()) + u'\n';
    return true;
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    QCommandLineParser linha;
    linha.setApplicationDescription(
        u"Responde às pastas de troca do UniNFe de uma pasta de programa."_s);
    linha.addHelpOption();
    linha.addPositionalArgument(u"PASTA"_s, u"a pasta do programa (ou --pasta)"_s);
    linha.addOptions({
        {u"pasta"_s, u"a pasta do programa"_s, u"PASTA"_s},
        {u"cenarios"_s, u"arquivo de cenários, um NUMERO=palavras por linha"_s, u"ARQ"_s},
        {u"cenario"_s, u"uma linha de cenário, p. ex. \"1005=rejeita 778\""_s, u"LINHA"_s},
        {u"mes-AM"_s, u"pastas do mês yyyyMM em vez de MMyyyy"_s},
        {u"uma-vez"_s, u"uma passagem e sai"_s},
    });
    linha.process(app);

    QString pasta = linha.value(u"pasta"_s);
    if (pasta.isEmpty() && !linha.positionalArguments().isEmpty())
        pasta = linha.positionalArguments().first();
    if (pasta.isEmpty()) return Falha(u"informe a pasta do programa"_s);
    if (!QFileInfo(pasta).isDir()) return Falha(u"não é uma pasta: "_s + pasta);

    QString texto;
    if (linha.isSet(u"cenarios"_s) && !LeArquivoDeCenarios(linha.value(u"cenarios"_s), texto))
        return Falha(u"não foi possível ler "_s + linha.value(u"cenarios"_s));
    texto += linha.values(u"cenario"_s).join(u'\n');
    const Cenarios cenarios = LeCenarios(texto);
    if (!cenarios.erros.isEmpty()) return Falha(cenarios.erros.join(u"\n"_s));

    Opcoes opcoes;
    opcoes.mes = linha.isSet(u"mes-AM"_s) ? MesPasta::AM : MesPasta::MA;
    opcoes.esperaArquivoEstavel = !linha.isSet(u"uma-vez"_s);
    Simulador simulador(pasta, opcoes);
    simulador.DefineCenarios(cenarios);
    nfce::AmbienteQt ambiente;

    QTextStream saida(stdout);
    const auto passagem = [&] {
        for (const QString& evento : simulador.Processa(ambiente.Agora()))
            saida << evento << Qt::endl;
    };
    if (linha.isSet(u"uma-vez"_s)) {
        passagem();
        return 0;
    }
    QTimer relogio;
    relogio.setInterval(500);
    QObject::connect(&relogio, &QTimer::timeout, passagem);
    relogio.start();
    return app.exec();
}
