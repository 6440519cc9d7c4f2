#include "shell/Aplicacao.h"
#include "Simulador.h"
#include "shell/janela/FrmPrincipal.h"
#include "shell/tray/clsPharos.h"
#include "storage/Pastas.h"
#include "support/Avisos.h"
#include "support/ProgramaDeExemplo.h"

#include <QDir>
#include <QGuiApplication>
#include <QLabel>
#include <QPushButton>
#include <gtest/gtest.h>
#include <optional>

namespace nfce::teste {
namespace {

using namespace Qt::StringLiterals;

// The window over a ready program folder with sample sales, its server on a virtual clock.
class AplicacaoTest : public ProgramaDeExemplo {
protected:
    void SetUp() override {
        // The offscreen platform warns about window calls it cannot honour.
        if (QGuiApplication::platformName() == u"offscreen"_s) avisosDaPlataforma.emplace();
        ProgramaDeExemplo::SetUp();
        app = std::make_unique<Aplicacao>(pasta.caminho(), ambiente, [this] { ++fins; });
        janela = std::make_unique<FrmPrincipal>(*app);
    }
    void Clica(const QString& botao) { janela->findChild<QPushButton*>(botao)->click(); }
    Servidor& s() { return app->servidor(); }

    std::optional<AvisosEsperados> avisosDaPlataforma;
    std::unique_ptr<Aplicacao> app;
    std::unique_ptr<FrmPrincipal> janela;
    int fins = 0;
};

// Start-up; the window mirrors the panel (its picture kept with the test results); without a
// notification area it stays on screen, and closing or "Fechar" minimises it.
TEST_F(AplicacaoTest, PartidaJanelaEBotoes) {
    janela->Form_Load(false);
    for (const QString& p : {u"LOG"_s, u"11222333000181/Envio"_s, u"11222333000181/Validar"_s})
        EXPECT_TRUE(PastaExiste(Caminho(pasta.caminho(), p))) << p.toStdString();
    // 0.05 s in the start-up routine, 5 s, then AtEnvioTime's minute.
    EXPECT_EQ(ambiente.msAguardados(), 65050);

    const std::pair<QString, QString Painel::*> campos[] = {
        {u"LblMens01"_s, &Painel::LblMens01}, {u"LblMens02"_s, &Painel::LblMens02},
        {u"LblMens03"_s, &Painel::LblMens03}, {u"LblQuantCup"_s, &Painel::LblQuantCup},
        {u"lblHora"_s, &Painel::lblHora},     {u"lblData"_s, &Painel::lblData}};
    for (const auto& [nome, campo] : campos)
        s().painel.*campo = u"texto de "_s + nome;
    janela->Espelha();
    for (const auto& [nome, campo] : campos)
        EXPECT_EQ(janela->findChild<QLabel*>(nome)->text(), u"texto de "_s + nome);
    EXPECT_FALSE(janela->findChild<QPushButton*>(u"CmdExportar"_s)->isEnabled());
    const QImage imagem = janela->grab().toImage();
    QDir().mkpath(QStringLiteral(NFCE_ARTEFATOS));
    EXPECT_TRUE(imagem.save(QStringLiteral(NFCE_ARTEFATOS "/FrmPrincipal.png")));
    QImage lisa(imagem.size(), imagem.format());
    lisa.fill(imagem.pixel(0, 0));
    EXPECT_NE(imagem, lisa) << "nothing drawn";

    ASSERT_FALSE(clsPharos::Disponivel());
    EXPECT_TRUE(janela->isVisible() && s().painel.TimerVendasAtivo);
    Clica(u"CmdParar"_s);
    EXPECT_FALSE(s().painel.TimerVendasAtivo);
    Clica(u"cmdOK"_s);
    EXPECT_TRUE(s().painel.TimerVendasAtivo && janela->isMinimized());
    janela->mnuPopup_Click(u"Balloon Tip"_s);
    EXPECT_FALSE(janela->isMinimized());
    EXPECT_TRUE(janela->close() == false && janela->isMinimized());
    janela->mnuPopup_Click(u"Exit"_s);
    EXPECT_TRUE(fins == 1 && !s().painel.TimerVendasAtivo);
    EXPECT_EQ(ambiente.registro.last(), u"Servidor NFC-e encerrado"_s);
}

// "Executar agora" runs the schedule's tasks during the start-up; the next scheduled minute
// finds nothing left. An error that escapes a button's routine is shown; the server goes on.
TEST_F(AplicacaoTest, ExecutarAgoraAgendaEErroNumBotao) {
    Configura({u"VENDASONLINE=SIM"_s, u"VENDASONLINESRV=SIM"_s});
    uninfesim::Simulador sim(pasta.caminho());
    ambiente.AoBombear([&] { sim.Processa(ambiente.Agora()); });
    janela->Form_Load(true);
    EXPECT_EQ(ambiente.registro.filter(u"(finalizada)"_s).size(), 11);
    ambiente.Avanca(ambiente.Agora().time().msecsTo(QTime(13, 10)));
    app->TimerVendas_Timer();
    EXPECT_EQ(ambiente.registro.filter(u"(finalizada)"_s).size(), 11);
    EXPECT_EQ(ambiente.registro.filter(u"12 de 12 vendas enviados"_s).size(), 1);
    for (const QString& arquivo : {u"loja.db"_s, u"loja.db-wal"_s, u"loja.db-shm"_s})
        QFile::remove(pasta.Caminho(arquivo));
    Clica(u"CmdExportar"_s);
    EXPECT_TRUE(ambiente.mensagens.size() == 1 &&
                ambiente.mensagens.first().texto.startsWith(u"Exportação: erro "_s));
}

// The window answers a right click (its menu) and a double click (a balloon), nothing else.
TEST(clsPharos, CliquesDoIcone) {
    clsPharos pharos;
    QStringList eventos;
    QObject::connect(&pharos, &clsPharos::RightClick, [&] { eventos << u"direito"_s; });
    QObject::connect(&pharos, &clsPharos::DoubleClick, [&] { eventos << u"duplo"_s; });
    for (const int numero : {512, 513, 514, 515, 516, 517, 518, 1027, 1028, 1029, 65536 + 515})
        pharos.MouseMove(1, numero);
    EXPECT_EQ(eventos, (QStringList{u"duplo"_s, u"direito"_s}));
}

} // namespace
} // namespace nfce::teste
