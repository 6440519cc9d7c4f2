#include "shell/janela/FrmPrincipal.h"

#include "shell/Aplicacao.h"

#include <QCloseEvent>
#include <QCursor>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>

namespace nfce {

using namespace Qt::StringLiterals;

namespace {

// A drawn icon: no image files to ship or lose.
QIcon IconeDoServidor() {
    QPixmap imagem(32, 32);
    imagem.fill(QColor(0x1b, 0x5e, 0x20));
    QPainter pintor(&imagem);
    pintor.setPen(Qt::white);
    QFont fonte = pintor.font();
    fonte.setBold(true);
    fonte.setPixelSize(11);
    pintor.setFont(fonte);
    pintor.drawText(imagem.rect(), Qt::AlignCenter, u"NFC-e"_s);
    return QIcon(imagem);
}

} // namespace

FrmPrincipal::FrmPrincipal(Aplicacao& aplicacao) : aplicacao_(aplicacao) {
    setObjectName(u"FrmPrincipal"_s);
    setWindowTitle(u"Servidor NFC-e"_s);
    setWindowIcon(IconeDoServidor());
    MontaControles();
    MontaMenu();
    espelho_.setInterval(250);
    connect(&espelho_, &QTimer::timeout, this, &FrmPrincipal::Espelha);
    connect(&Pharos_, &clsPharos::DoubleClick, this, [this] {
        Pharos_.ShowBalloonTip(u"Double click tray icon"_s, 1, u"Balloon Tip"_s, 30000);
    });
    connect(&Pharos_, &clsPharos::RightClick, this, [this] { mnuPharos_.popup(QCursor::pos()); });
    Espelha();
}

QLabel* FrmPrincipal::Rotulo(const QString& nome, const QString& texto) {
    auto* rotulo = new QLabel(texto, this);
    rotulo->setObjectName(nome);
    return rotulo;
}

QPushButton* FrmPrincipal::Botao(const QString& nome, const QString& texto) {
    auto* botao = new QPushButton(texto, this);
    botao->setObjectName(nome);
    return botao;
}

void FrmPrincipal::MontaControles() {
    lblHora_ = Rotulo(u"lblHora"_s);
    lblData_ = Rotulo(u"lblData"_s);
    LblQuantCup_ = Rotulo(u"LblQuantCup"_s);
    LblMens01_ = Rotulo(u"LblMens01"_s);
    LblMens02_ = Rotulo(u"LblMens02"_s);
    LblMens03_ = Rotulo(u"LblMens03"_s);
    for (QLabel* linha : {LblMens01_, LblMens02_, LblMens03_})
        linha->setMinimumWidth(380);
    LblMens03_->setWordWrap(true);
    lblData_->setMinimumWidth(fontMetrics().horizontalAdvance(u"00/00/0000 "_s));
    lblHora_->setMinimumWidth(fontMetrics().horizontalAdvance(u"00:00 "_s));

    auto* topo = new QGridLayout;
    topo->addWidget(Rotulo(u"Label1"_s, u"Quant.Cupom"_s), 0, 0);
    topo->addWidget(LblQuantCup_, 0, 1);
    topo->addWidget(lblData_, 0, 2, Qt::AlignRight);
    topo->addWidget(lblHora_, 0, 3, Qt::AlignRight);
    topo->setColumnStretch(1, 1);

    CmdExportar_ = Botao(u"CmdExportar"_s, u"Transmitir"_s);
    QPushButton* executar = Botao(u"CmdExecutar"_s, u"&Executar"_s);
    QPushButton* parar = Botao(u"CmdParar"_s, u"&Parar"_s);
    QPushButton* fechar = Botao(u"cmdOK"_s, u"&Fechar"_s);
    connect(CmdExportar_, &QPushButton::clicked, this, [this] { aplicacao_.CmdExportar_Click(); });
    connect(executar, &QPushButton::clicked, this, [this] { aplicacao_.CmdExecutar_Click(); });
    connect(parar, &QPushButton::clicked, this, [this] { aplicacao_.CmdParar_Click(); });
    connect(fechar, &QPushButton::clicked, this, &FrmPrincipal::cmdOK_Click);
    auto* botoes = new QHBoxLayout;
    for (QPushButton* botao : {CmdExportar_, executar, parar, fechar})
        botoes->addWidget(botao);

    auto* coluna = new QVBoxLayout(this);
    coluna->addLayout(topo);
    coluna->addWidget(LblMens01_);
    coluna->addWidget(LblMens02_);
    coluna->addWidget(LblMens03_);
    coluna->addStretch();
    coluna->addLayout(botoes);
}

void FrmPrincipal::MontaMenu() {
    mnuPharos_.setObjectName(u"mnuPharos"_s);
    mnuPharos_.setTitle(u"Pharos"_s);
    for (const QString& caption : {u"Balloon Tip"_s, u"Exit"_s})
        mnuPharos_.addAction(caption, this, [this, caption] { mnuPopup_Click(caption); });
}

void FrmPrincipal::Form_Load(bool executarAgora) {
    Pharos_.Init(this, u"Servidor NFC-e"_s);
    if (!clsPharos::Disponivel()) showNormal();
    aplicacao_.Form_Load(executarAgora);
}

void FrmPrincipal::Espelha() {
    const Painel& p = aplicacao_.servidor().painel;
    setWindowTitle(p.Caption);
    lblHora_->setText(p.lblHora);
    lblData_->setText(p.lblData);
    LblQuantCup_->setText(p.LblQuantCup);
    LblMens01_->setText(p.LblMens01);
    LblMens02_->setText(p.LblMens02);
    LblMens03_->setText(p.LblMens03);
    CmdExportar_->setEnabled(p.CmdExportarAtivo);
}

void FrmPrincipal::mnuPopup_Click(const QString& caption) {
    if (caption == u"Balloon Tip"_s) {
        showNormal();
        raise();
        activateWindow();
    } else if (caption == u"Exit"_s) {
        Form_Unload();
    } else {
        aplicacao_.servidor().ambiente.MsgBox(caption, u"Servidor NFC-e"_s, Icone::Nenhum);
    }
}

void FrmPrincipal::Form_Unload() {
    espelho_.stop();
    Pharos_.Remove();
    aplicacao_.Form_Unload();
}

// Without a notification area the window would be gone for good: it is minimised instead.
void FrmPrincipal::Recolhe() {
    if (clsPharos::Disponivel())
        hide();
    else
        showMinimized();
}

void FrmPrincipal::cmdOK_Click() {
    Recolhe();
    aplicacao_.cmdOK_Click();
}

void FrmPrincipal::closeEvent(QCloseEvent* evento) {
    evento->ignore();
    Recolhe();
}

void FrmPrincipal::changeEvent(QEvent* evento) {
    if (evento->type() == QEvent::ActivationChange && isActiveWindow()) {
        aplicacao_.Form_Activate();
        Espelha();
    }
    QWidget::changeEvent(evento);
}

void FrmPrincipal::showEvent(QShowEvent* evento) {
    aplicacao_.Form_Activate();
    Espelha();
    espelho_.start();
    QWidget::showEvent(evento);
}

void FrmPrincipal::hideEvent(QHideEvent* evento) {
    espelho_.stop();
    QWidget::hideEvent(evento);
}

} // namespace nfce
