#include "shell/janela/FrmPrincipal.h"
#include "shell/Aplicacao.h"
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
class FrmPrincipalTest : public ProgramaDeExemplo {
protected:
    void SetUp() override {
        // The offscreen platform warns about window calls it cannot honour.
        if (QGuiApplication::platformName() == u"offscreen"_s) avisosDaPlataforma.emplace();
        ProgramaDeExemplo::SetUp();
        app = std::make_unique<Aplicacao>(pasta.caminho(), ambiente, [this] { ++fins; });
        janela = std::make_unique<FrmPrincipal>(*app);
    }
    template <class T> T* Controle(const QString& nome) {
        T* controle = janela->findChild<T*>(nome);
        EXPECT_NE(controle, nullptr) << nome.toStdString();
        return controle;
    }
    void Clica(const QString& botao) { Controle<QPushButton>(botao)->click(); }
    Painel& painel() { return app->servidor().painel; }

    std::optional<AvisosEsperados> avisosDaPlataforma;
    std::unique_ptr<Aplicacao> app;
    std::unique_ptr<FrmPrincipal> janela;
    int fins = 0;
};

// The window as the operator sees it, kept as a picture next to the test results.
TEST_F(FrmPrincipalTest, MostraSeusControlesComAsLegendas) {
    Configura({u"VENDASONLINE=SIM"_s});
    janela->Form_Load(false);
    painel().LblMens01 = u"31261111222333000181650010000010019101083180"_s;
    painel().LblMens02 = u"Aguardando retorno do UniNFe"_s;
    painel().LblMens03 = u"100 - Autorizado o uso da NF-e"_s;
    painel().LblQuantCup = u"3"_s;
    painel().lblHora = u"13:10"_s;
    painel().lblData = u"16/11/2026"_s;
    janela->showNormal();
    janela->Espelha();

    EXPECT_EQ(janela->windowTitle(), u"Servidor NFC-e"_s);
    const std::pair<QString, QString> legendas[] = {
        {u"Label1"_s, u"Quant.Cupom"_s},      {u"LblQuantCup"_s, u"3"_s},
        {u"lblHora"_s, u"13:10"_s},           {u"lblData"_s, u"16/11/2026"_s},
        {u"LblMens01"_s, painel().LblMens01}, {u"LblMens02"_s, painel().LblMens02},
        {u"LblMens03"_s, painel().LblMens03},
    };
    for (const auto& [nome, texto] : legendas)
        EXPECT_EQ(Controle<QLabel>(nome)->text(), texto) << nome.toStdString();
    int esquerda = -1;
    for (const auto& [nome, texto] : {std::pair{u"CmdExportar"_s, u"Transmitir"_s},
                                      {u"CmdExecutar"_s, u"&Executar"_s},
                                      {u"CmdParar"_s, u"&Parar"_s},
                                      {u"cmdOK"_s, u"&Fechar"_s}}) {
        QPushButton* botao = Controle<QPushButton>(nome);
        EXPECT_EQ(botao->text(), texto);
        EXPECT_TRUE(botao->isVisible() && botao->isEnabled()) << nome.toStdString();
        EXPECT_GT(botao->x(), esquerda) << nome.toStdString();
        esquerda = botao->x();
    }

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
TEST_F(FrmPrincipalTest, BotoesFecharEMenuDaBandeja) {
    janela->Form_Load(false);
    ASSERT_FALSE(clsPharos::Disponivel());
    EXPECT_TRUE(janela->isVisible());
    EXPECT_FALSE(Controle<QPushButton>(u"CmdExportar"_s)->isEnabled());

    Clica(u"CmdParar"_s);
    EXPECT_FALSE(painel().TimerVendasAtivo);
    Clica(u"cmdOK"_s);
    EXPECT_TRUE(painel().TimerVendasAtivo);
    EXPECT_TRUE(janela->isMinimized());
    janela->mnuPopup_Click(u"Balloon Tip"_s);
    EXPECT_FALSE(janela->isMinimized());
    EXPECT_TRUE(janela->close() == false && janela->isMinimized());

    janela->mnuPopup_Click(u"Outro"_s);
    ASSERT_EQ(ambiente.mensagens.size(), 1);
    EXPECT_EQ(ambiente.mensagens.first().texto, u"Outro"_s);
    EXPECT_EQ(fins, 0);
    janela->mnuPopup_Click(u"Exit"_s);
    EXPECT_EQ(fins, 1);
    EXPECT_FALSE(painel().TimerVendasAtivo);
}

// "Transmitir" runs the remote export.
TEST_F(FrmPrincipalTest, TransmitirExportaAsVendas) {
    Configura({u"VENDASONLINE=SIM"_s, u"VENDASONLINESRV=SIM"_s});
    janela->Form_Load(false);
    Clica(u"CmdExportar"_s);
    Registros rs;
    app->servidor().conexoes.AbreConsultaRemota(rs, u"SELECT COUNT(*) AS n FROM vendas"_s);
    EXPECT_EQ(rs.Texto(u"n"_s), u"12"_s);
    EXPECT_EQ(ambiente.registro.filter(u"12 de 12 vendas enviados"_s).size(), 1)
        << ambiente.registro.join(u'\n').toStdString();
}

} // namespace
} // namespace nfce::teste
