#include "platform/AmbienteQt.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QProcess>
#include <QTimer>
#include <cmath>

namespace nfce {

AmbienteQt::AmbienteQt(Registro registro) : registro_(std::move(registro)) {
    relogio_.start();
}

QDateTime AmbienteQt::Agora() const {
    return QDateTime::currentDateTime();
}

qint64 AmbienteQt::Monotonico() const {
    return relogio_.elapsed();
}

void AmbienteQt::Aguarda(double segundos) {
    const qint64 fim = Monotonico() + std::llround(segundos * 1000.0);
    ++esperas_;
    // A nested wait started by an event inside this one may outlast our deadline; the
    // loop then simply ends late, as the operator expects of a busy server.
    for (qint64 resta = fim - Monotonico(); resta > 0; resta = fim - Monotonico()) {
        QEventLoop laco;
        QTimer::singleShot(resta, Qt::PreciseTimer, &laco, &QEventLoop::quit);
        laco.exec();
    }
    --esperas_;
    QCoreApplication::processEvents();
}

void AmbienteQt::DoEvents() {
    QCoreApplication::processEvents();
}

void AmbienteQt::Posta(std::function<void()> evento) {
    QTimer::singleShot(0, QCoreApplication::instance(), std::move(evento));
}

void AmbienteQt::MsgBox(const QString& texto, const QString& titulo, Icone) {
    Registra(titulo + QStringLiteral(": ") + texto);
}

bool AmbienteQt::Pergunta(const QString& texto, const QString& titulo) {
    Registra(titulo + QStringLiteral(": ") + texto + QStringLiteral(" (Não)"));
    return false;
}

bool AmbienteQt::IniciaPrograma(const QString& programa, const QStringList& argumentos) {
    const bool iniciou = QProcess::startDetached(programa, argumentos);
    if (!iniciou)
        Registra(QStringLiteral("Não foi possível iniciar: ") + programa + u' ' +
                 argumentos.join(u' '));
    return iniciou;
}

QString AmbienteQt::BuscaUrl(const QString& url, int limiteMs) {
    QNetworkAccessManager rede;
    QNetworkRequest pedido{QUrl(url)};
    pedido.setTransferTimeout(limiteMs);
    QNetworkReply* resposta = rede.get(pedido);
    QEventLoop laco;
    QObject::connect(resposta, &QNetworkReply::finished, &laco, &QEventLoop::quit);
    laco.exec();
    const QString corpo = resposta->error() == QNetworkReply::NoError
                              ? QString::fromUtf8(resposta->readAll())
                              : QString();
    resposta->deleteLater();
    return corpo;
}

void AmbienteQt::Registra(const QString& linha) {
    registro_.Escreve(Agora(), linha);
}

} // namespace nfce
