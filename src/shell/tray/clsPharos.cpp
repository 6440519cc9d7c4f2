#include "shell/tray/clsPharos.h"

#include <QWidget>

namespace nfce {

namespace {

int NotificacaoDe(QSystemTrayIcon::ActivationReason motivo) {
    switch (motivo) {
    case QSystemTrayIcon::Trigger:
        return clsPharos::BotaoEsquerdoSolto;
    case QSystemTrayIcon::DoubleClick:
        return clsPharos::BotaoEsquerdoDuplo;
    case QSystemTrayIcon::Context:
        return clsPharos::BotaoDireitoSolto;
    default:
        return 0;
    }
}

QSystemTrayIcon::MessageIcon IconeDoBalao(int flags) {
    switch (flags) {
    case 1:
        return QSystemTrayIcon::Information;
    case 2:
        return QSystemTrayIcon::Warning;
    case 3:
        return QSystemTrayIcon::Critical;
    default:
        return QSystemTrayIcon::NoIcon;
    }
}

} // namespace

clsPharos::clsPharos(QObject* pai) : QObject(pai) {
    connect(
        &icone_, &QSystemTrayIcon::activated, this,
        [this](QSystemTrayIcon::ActivationReason motivo) { MouseMove(0, NotificacaoDe(motivo)); });
    connect(&icone_, &QSystemTrayIcon::messageClicked, this,
            [this] { MouseMove(0, BalaoClicado); });
}

clsPharos::~clsPharos() {
    Remove();
}

bool clsPharos::Disponivel() {
    return QSystemTrayIcon::isSystemTrayAvailable();
}

void clsPharos::Init(QWidget* form, const QString& tooltip) {
    SetIcon(form);
    SetTooltipText(tooltip);
    if (Disponivel()) icone_.show();
}

void clsPharos::SetIcon(QWidget* form) {
    icone_.setIcon(form->windowIcon());
}

void clsPharos::SetTooltipText(const QString& texto) {
    dica_ = texto;
    icone_.setToolTip(texto.left(TamanhoDica));
}

void clsPharos::ShowBalloonTip(const QString& texto, int flags, const QString& titulo,
                               int timeout) {
    icone_.showMessage(titulo.left(TamanhoTituloBalao), texto.left(TamanhoBalao),
                       IconeDoBalao(flags), timeout);
}

void clsPharos::MouseMove(int, int message) {
    switch (message) {
    case BotaoEsquerdoSolto:
        Q_EMIT LeftClick();
        break;
    case BotaoDireitoSolto:
        Q_EMIT RightClick();
        break;
    case BotaoEsquerdoDuplo:
        Q_EMIT DoubleClick();
        break;
    case BalaoEscondido:
        Q_EMIT BalloonHide();
        break;
    case BalaoExpirou:
        Q_EMIT BalloonTimeOut();
        break;
    case BalaoClicado:
        Q_EMIT BalloonClicked();
        break;
    default:
        break;
    }
}

} // namespace nfce
