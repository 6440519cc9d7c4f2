#include "shell/comandos/Preparo.h"

#include "contexto/Servidor.h"
#include "emission/EmiteNfceImprime.h"
#include "shell/comandos/Comandos.h"
#include "storage/Empresa.h"
#include "storage/Pastas.h"

#include <QCoreApplication>
#include <QDir>

namespace nfce {

using namespace Qt::StringLiterals;

void PreparaServidor(Servidor& servidor) {
    servidor.empresa = CarregaEmpresa(servidor.pasta);
    Alterar(servidor.pasta, servidor.empresa.Cnpj, servidor.ambiente.Data());
    QDir().mkpath(Caminho(servidor.pasta, servidor.empresa.Cnpj + u"\\Validar"_s));
    servidor.conexoes.PreparaConexaoPrincipal();
    servidor.conexoes.ReabreConexao();
    InstalaReemissao(servidor);
}

QString PastaDoComando(const QStringList& argumentos) {
    const QString pasta = ValorOpcao(argumentos, u"--pasta"_s);
    return QDir(pasta.isEmpty() ? QCoreApplication::applicationDirPath() : pasta).absolutePath();
}

} // namespace nfce
