#include "shell/basDemo.h"

#include "shell/Aplicacao.h"
#include "shell/InstanciaUnica.h"
#include "shell/Verificacao.h"
#include "shell/comandos/Comandos.h"
#include "shell/comandos/Preparo.h"
#include "shell/comandos/Saida.h"
#include "shell/janela/AmbienteJanela.h"
#include "shell/janela/FrmPrincipal.h"
#include "storage/ErroExecucao.h"
#include "storage/Pastas.h"

#include <QApplication>
#include <cstdio>
#include <cstdlib>
#include <memory>

#ifdef Q_OS_WIN
#include <io.h>
#define NFCE_ISATTY(f) _isatty(_fileno(f))
#else
#include <unistd.h>
#define NFCE_ISATTY(f) isatty(fileno(f))
#endif

namespace nfce {

using namespace Qt::StringLiterals;

namespace {

const QString Sintaxe = u"[--pasta DIR] [--sem-janela] [--executar-agora]"_s;

bool ArgumentosValidos(const QStringList& argumentos) {
    static const QStringList conhecidos = {u"--pasta"_s, u"--sem-janela"_s, u"--executar-agora"_s};
    for (qsizetype i = 0; i < argumentos.size(); ++i) {
        if (!conhecidos.contains(argumentos[i])) return false;
        if (argumentos[i] == u"--pasta"_s) ++i;
    }
    return !FaltaValor(argumentos, u"--pasta"_s);
}

bool TemTela() {
#if defined(Q_OS_UNIX) && !defined(Q_OS_MACOS)
    return qEnvironmentVariableIsSet("QT_QPA_PLATFORM") ||
           !qEnvironmentVariableIsEmpty("DISPLAY") ||
           !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
#else
    return true;
#endif
}

Registro RegistroDoServidor(const QString& pasta) {
    std::vector<Registro::Destino> destinos = {ArquivoDoDia(Caminho(pasta, u"LOG"_s))};
    if (NFCE_ISATTY(stdout)) destinos.push_back(NoFluxo(stdout));
    return Registro(std::move(destinos));
}

// "Exit" from inside a wait ends the process at once, as the operator asked; from the idle
// event loop it simply leaves the loop.
std::function<void()> FimDoPrograma(const AmbienteQt& ambiente) {
    return [&ambiente] {
        if (!ambiente.EmEspera()) return QCoreApplication::quit();
        std::fflush(nullptr);
        std::_Exit(0);
    };
}

int Executa(Aplicacao& aplicacao, const std::function<void()>& carrega) {
    try {
        carrega();
    } catch (const ErroExecucao& erro) {
        const QString texto = u"%1 (erro %2)"_s.arg(erro.descricao()).arg(erro.numero());
        aplicacao.servidor().ambiente.MsgBox(texto, u"Servidor NFC-e"_s, Icone::Critico);
        EscreveErro(u"servidor-nfce: "_s + texto + u'\n');
        return 1;
    }
    return QCoreApplication::exec();
}

int ComJanela(const QString& pasta, bool executarAgora) {
    QApplication::setQuitOnLastWindowClosed(false);
    AmbienteJanela ambiente(RegistroDoServidor(pasta));
    Aplicacao aplicacao(pasta, ambiente, FimDoPrograma(ambiente));
    FrmPrincipal janela(aplicacao);
    aplicacao.LigaTimerVendas();
    return Executa(aplicacao, [&] { janela.Form_Load(executarAgora); });
}

int SemJanela(const QString& pasta, bool executarAgora) {
    AmbienteQt ambiente(RegistroDoServidor(pasta));
    Aplicacao aplicacao(pasta, ambiente, FimDoPrograma(ambiente));
    aplicacao.LigaTimerVendas();
    return Executa(aplicacao, [&] { aplicacao.Form_Load(executarAgora); });
}

} // namespace

int Main(int& argc, char** argv, const QStringList& argumentos) {
    if (!ArgumentosValidos(argumentos)) return ErroDeUso(Sintaxe);
    const bool comJanela = !argumentos.contains(u"--sem-janela"_s) && TemTela();
    const std::unique_ptr<QCoreApplication> app =
        comJanela ? std::make_unique<QApplication>(argc, argv)
                  : std::make_unique<QCoreApplication>(argc, argv);
    const QString pasta = PastaDoComando(argumentos);
    // Before the lock, the log and the folders: a broken set-up writes nothing.
    const int verificacao = ExecutaComando([&] {
        VerificaInstalacao(pasta);
        return 0;
    });
    if (verificacao != 0) return verificacao;
    InstanciaUnica instancia(pasta);
    switch (instancia.Obtem()) {
    case InstanciaUnica::Resultado::OutraRodando:
        return 0;
    case InstanciaUnica::Resultado::Falhou:
        EscreveErro(u"servidor-nfce: "_s + instancia.Motivo() + u'\n');
        return 1;
    case InstanciaUnica::Resultado::Obtida:
        break;
    }
    const bool executarAgora = argumentos.contains(u"--executar-agora"_s);
    return comJanela ? ComJanela(pasta, executarAgora) : SemJanela(pasta, executarAgora);
}

} // namespace nfce
