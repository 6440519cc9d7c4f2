#pragma once

#include <QObject>
#include <QString>
#include <QSystemTrayIcon>

class QWidget;

namespace nfce {

// The window's icon in the notification area. It turns the icon's notifications into the
// events below; nothing else in the program touches the tray.
class clsPharos : public QObject {
    Q_OBJECT
public:
    // Notification numbers as the window receives them from the tray.
    enum Notificacao {
        BotaoEsquerdoSolto = 514,
        BotaoEsquerdoDuplo = 515,
        BotaoDireitoSolto = 517,
        BalaoEscondido = 1027,
        BalaoExpirou = 1028,
        BalaoClicado = 1029,
    };
    // Fixed field sizes of the icon record: longer texts are cut.
    static constexpr int TamanhoDica = 128;
    static constexpr int TamanhoBalao = 256;
    static constexpr int TamanhoTituloBalao = 64;

    explicit clsPharos(QObject* pai = nullptr);
    ~clsPharos() override;

    // Whether this desktop has a notification area at all.
    static bool Disponivel();

    // Adds the icon with the form's icon and the tip.
    void Init(QWidget* form, const QString& tooltip);
    void SetIcon(QWidget* form);
    QString TooltipText() const { return dica_; }
    void SetTooltipText(const QString& texto);
    // `flags`: 0 none, 1 information, 2 warning, 3 error; `timeout` in milliseconds.
    void ShowBalloonTip(const QString& texto, int flags, const QString& titulo, int timeout);
    // The dispatcher: one event per known notification number, nothing for the others.
    void MouseMove(int button, int message);
    // Removes the icon from the tray.
    void Remove() { icone_.hide(); }

    const QSystemTrayIcon& icone() const { return icone_; }

Q_SIGNALS:
    void LeftClick();
    void RightClick();
    void DoubleClick();
    void BalloonHide();
    void BalloonTimeOut();
    void BalloonClicked();

private:
    QSystemTrayIcon icone_;
    QString dica_;
};

} // namespace nfce
