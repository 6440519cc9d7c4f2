#include "shell/Aplicacao.h"
#include "Simulador.h"
#include "shell/janela/FrmPrincipal.h"
#include "storage/Pastas.h"
#include "support/Avisos.h"
#include "support/ProgramaDeExemplo.h"

#include <QDir>
#include <QGuiApplication>
#include <QLabel>
#include <QPushButton>
#include <QSet>
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
    QPushButton* Botao(const QString& nome) { return janela->findChild<QPushButton*>(nome); }
    Servidor& s() { return app->servidor(); }
    QString Conta(const QString& tabela, bool remota = false) {
        Registros rs;
        const QString sql = u"SELECT COUNT(*) AS n FROM "_s + tabela;
        remota ? s().conexoes.AbreConsultaRemota(rs, sql) : s().conexoes.AbreConsulta(rs, sql);
        return rs.Texto(u"n"_s);
    }

    std::optional<AvisosEsperados> avisosDaPlataforma;
    std::unique_ptr<Aplicacao> app;
    std::unique_ptr<FrmPrincipal> janela;
    int fins = 0;
};

TEST_F(AplicacaoTest, PartidaLeEmpresaFazPastasEReenfileira) {
    s().conexoes.PreparaConexaoPrincipal();
    s().conexoes.ReabreConexao();
    s().conexoes.Executa(u"UPDATE vendas SET enviotime = 1, tempo = '0' WHERE cupom = 101"_s);
    janela->Form_Load(false);
    EXPECT_EQ(s().empresa.Cnpj + u'|' + s().empresa.Serie, u"11222333000181|001"_s);
    for (const QString& p : {u"LOG"_s, u"11222333000181/Envio"_s, u"11222333000181/Validar"_s})
        EXPECT_TRUE(PastaExiste(Caminho(pasta.caminho(), p))) << p.toStdString();
    EXPECT_TRUE(s().painel.TimerVendasAtivo);
    EXPECT_TRUE(ambiente.registro.filter(u"Conexão"_s).isEmpty());
    EXPECT_EQ(Conta(u"vendas WHERE cupom = 101 AND enviotime = 0"_s), u"1"_s);
    // 0.05 s in the start-up routine, 5 s, then AtEnvioTime's minute.
    EXPECT_EQ(ambiente.msAguardados(), 65050);
}

// The window mirrors the panel; its picture is kept next to the test results.
TEST_F(AplicacaoTest, JanelaEspelhaOPainel) {
    janela->Form_Load(false);
    const std::pair<QString, QString Painel::*> campos[] = {
        {u"LblMens01"_s, &Painel::LblMens01}, {u"LblMens02"_s, &Painel::LblMens02},
        {u"LblMens03"_s, &Painel::LblMens03}, {u"LblQuantCup"_s, &Painel::LblQuantCup},
        {u"lblHora"_s, &Painel::lblHora},     {u"lblData"_s, &Painel::lblData},
    };
    for (const auto& [nome, campo] : campos)
        s().painel.*campo = u"texto de "_s + nome;
    s().painel.CmdExportarAtivo = true;
    janela->Espelha();
    for (const auto& [nome, campo] : campos)
        EXPECT_EQ(janela->findChild<QLabel*>(nome)->text(), u"texto de "_s + nome);
    EXPECT_TRUE(Botao(u"CmdExportar"_s)->isEnabled());

    const QImage imagem = janela->grab().toImage();
    QDir().mkpath(QStringLiteral(NFCE_ARTEFATOS));
    EXPECT_TRUE(imagem.save(QStringLiteral(NFCE_ARTEFATOS "/FrmPrincipal.png")));
    QSet<QRgb> cores;
    for (int y = 0; y < imagem.height(); y += 2)
        for (int x = 0; x < imagem.width(); x += 2)
            cores.insert(imagem.pixel(x, y));
    EXPECT_GT(cores.size(), 3);
}

// Without a notification area the window stays on screen: closing or "Fechar" minimises it.
TEST_F(AplicacaoTest, BotoesEMenuDaBandeja) {
    janela->Form_Load(false);
    ASSERT_FALSE(clsPharos::Disponivel());
    EXPECT_TRUE(janela->isVisible());
    Botao(u"CmdParar"_s)->click();
    EXPECT_FALSE(s().painel.TimerVendasAtivo);
    Botao(u"cmdOK"_s)->click();
    EXPECT_TRUE(s().painel.TimerVendasAtivo && janela->isMinimized());
    janela->mnuPopup_Click(u"Balloon Tip"_s);
    EXPECT_FALSE(janela->isMinimized());
    EXPECT_TRUE(janela->close() == false && janela->isMinimized());
    janela->mnuPopup_Click(u"Outro"_s);
    ASSERT_EQ(ambiente.mensagens.size(), 1);
    EXPECT_EQ(ambiente.mensagens.first().texto, u"Outro"_s);
    EXPECT_EQ(fins, 0);
    janela->mnuPopup_Click(u"Exit"_s);
    EXPECT_EQ(fins, 1);
    EXPECT_FALSE(s().painel.TimerVendasAtivo);
    EXPECT_EQ(ambiente.registro.last(), u"Servidor NFC-e encerrado"_s);
}

// "Transmitir" is enabled only by VENDASONLINE exactly "SIM" and runs the remote export; an
// error that escapes it is shown, and the server goes on.
TEST_F(AplicacaoTest, TransmitirExportaEErroNaoDerruba) {
    janela->Form_Load(false);
    for (const QString& valor : {u"sim"_s, u"SIM|'x'"_s, u"  SIM  "_s}) {
        Configura({u"VENDASONLINE="_s + valor, u"VENDASONLINESRV=SIM"_s});
        app->Form_Activate();
        janela->Espelha();
        EXPECT_EQ(Botao(u"CmdExportar"_s)->isEnabled(), valor == u"  SIM  "_s)
            << valor.toStdString();
    }
    Botao(u"CmdExportar"_s)->click();
    EXPECT_EQ(Conta(u"vendas"_s, true), u"12"_s);
    EXPECT_EQ(ambiente.registro.filter(u"12 de 12 vendas enviados"_s).size(), 1);
    for (const QString& arquivo : {u"loja.db"_s, u"loja.db-wal"_s, u"loja.db-shm"_s})
        QFile::remove(pasta.Caminho(arquivo));
    Botao(u"CmdExportar"_s)->click();
    ASSERT_EQ(ambiente.mensagens.size(), 1);
    EXPECT_TRUE(ambiente.mensagens.first().texto.startsWith(u"Exportação: erro "_s));
    EXPECT_EQ(s().painel.Caption, u"Servidor NFC-e"_s);
}

// Started with "executar agora", the scheduled run (send, re-queue, export) runs during the
// start-up's wait; the scheduled minute that follows finds nothing left to send or export.
TEST_F(AplicacaoTest, ExecutarAgoraEDepoisOHorarioDaAgenda) {
    Configura({u"VENDASONLINESRV=SIM"_s});
    uninfesim::Simulador sim(pasta.caminho());
    ambiente.AoBombear([&] { sim.Processa(ambiente.Agora()); });
    janela->Form_Load(true);
    EXPECT_EQ(Conta(u"vendas WHERE tempo = '1' AND enviotime = 1"_s), u"11"_s);
    EXPECT_EQ(ambiente.registro.filter(u"(finalizada)"_s).size(), 11);
    ambiente.Avanca(ambiente.Agora().time().msecsTo(QTime(13, 10)));
    app->TimerVendas_Timer();
    EXPECT_EQ(ambiente.registro.filter(u"(finalizada)"_s).size(), 11);
    EXPECT_EQ(Conta(u"vendas"_s, true), Conta(u"vendas"_s));
}

} // namespace
} // namespace nfce::teste
