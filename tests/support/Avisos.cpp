#include "support/Avisos.h"

#include <QtGlobal>

namespace nfce::teste {

namespace {
int esperados = 0;

void manipulador(QtMsgType tipo, const QMessageLogContext&, const QString& texto) {
    if (tipo == QtDebugMsg || tipo == QtInfoMsg || esperados > 0) return;
    ADD_FAILURE() << "unexpected Qt warning: " << texto.toStdString();
}
} // namespace

void AmbienteDeAvisos::SetUp() {
    qInstallMessageHandler(manipulador);
}

AvisosEsperados::AvisosEsperados() {
    ++esperados;
}
AvisosEsperados::~AvisosEsperados() {
    --esperados;
}

} // namespace nfce::teste
