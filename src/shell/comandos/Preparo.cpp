#include "shell/comandos/Preparo.h"

#include "context/Servidor.h"
#include "emission/EmiteNfceImprime.h"
#include "shell/Inicio.h"
#include "shell/Verificacao.h"
#include "shell/comandos/Comandos.h"

#include <QCoreApplication>
#include <QDir>

namespace nfce {

using namespace Qt::StringLiterals;

void PreparaServidor(Servidor& servidor) {
    CarregaEmpresaEPastas(servidor);
    servidor.conexoes.PreparaConexaoPrincipal();
    servidor.conexoes.ReabreConexao();
    InstalaReemissao(servidor);
}

QString PastaDoComando(const QStringList& argumentos) {
    const QString pasta = ValorOpcao(argumentos, u"--pasta"_s);
    return QDir(pasta.isEmpty() ? QCoreApplication::applicationDirPath() : pasta).absolutePath();
}

QString PastaVerificada(const QStringList& argumentos) {
    const QString pasta = PastaDoComando(argumentos);
    VerificaInstalacao(pasta);
    return pasta;
}

} // namespace nfce
