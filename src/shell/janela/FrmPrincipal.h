#pragma once

#include "shell/tray/clsPharos.h"

#include <QMenu>
#include <QTimer>
#include <QWidget>

class QLabel;
class QPushButton;

namespace nfce {

class Aplicacao;

// The server's one window. It shows the Painel (refreshed while visible) and forwards its
// buttons, its activation and the tray's events to the Aplicacao. Closing it only hides it;
// where the desktop has no notification area it stays on screen (minimised at most), so the
// program never vanishes.
class FrmPrincipal : public QWidget {
    Q_OBJECT
public:
    explicit FrmPrincipal(Aplicacao& aplicacao);

    // Tray icon, window hidden (shown without a tray), then the server's start-up.
    void Form_Load(bool executarAgora);
    // Copies the Painel into the controls.
    void Espelha();
    // The tray menu's items by caption: "Balloon Tip" shows the window, "Exit" ends the program.
    void mnuPopup_Click(const QString& caption);
    void Form_Unload();

    clsPharos& Pharos() { return Pharos_; }

protected:
    void closeEvent(QCloseEvent* evento) override;
    void changeEvent(QEvent* evento) override;
    void showEvent(QShowEvent* evento) override;
    void hideEvent(QHideEvent* evento) override;

private:
    QLabel* Rotulo(const QString& nome, const QString& texto = {});
    QPushButton* Botao(const QString& nome, const QString& texto);
    void MontaControles();
    void MontaMenu();
    void Recolhe();
    void cmdOK_Click();

    Aplicacao& aplicacao_;
    clsPharos Pharos_;
    QMenu mnuPharos_;
    QTimer espelho_;
    QLabel* lblHora_ = nullptr;
    QLabel* lblData_ = nullptr;
    QLabel* LblQuantCup_ = nullptr;
    QLabel* LblMens01_ = nullptr;
    QLabel* LblMens02_ = nullptr;
    QLabel* LblMens03_ = nullptr;
    QPushButton* CmdExportar_ = nullptr;
};

} // namespace nfce
