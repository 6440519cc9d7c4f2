#include "shell/Aplicacao.h"
#include "Simulador.h"
#include "storage/ErroExecucao.h"
#include "storage/Pastas.h"
#include "support/Erros.h"
#include "support/ProgramaDeExemplo.h"

#include <gtest/gtest.h>

namespace nfce::teste {
namespace {

using namespace Qt::StringLiterals;

// The server of a ready program folder with sample sales.
class AplicacaoTest : public ProgramaDeExemplo {
protected:
    void SetUp() override {
        ProgramaDeExemplo::SetUp();
        app = std::make_unique<Aplicacao>(pasta.caminho(), ambiente, [this] { ++fins; });
    }
    void LigaUniNfe() {
        sim = std::make_unique<uninfesim::Simulador>(pasta.caminho());
        ambiente.AoBombear([this] { sim->Processa(ambiente.Agora()); });
    }
    Servidor& s() { return app->servidor(); }
    QString Texto(const QString& sql, bool remota = false) {
        Registros rs;
        if (remota)
            s().conexoes.AbreConsultaRemota(rs, sql);
        else
            s().conexoes.AbreConsulta(rs, sql);
        return rs.Eof() ? QString() : rs.Texto(u"n"_s);
    }

    std::unique_ptr<Aplicacao> app;
    std::unique_ptr<uninfesim::Simulador> sim;
    int fins = 0;
};

TEST_F(AplicacaoTest, PartidaLeEmpresaFazPastasEReenfileira) {
    s().conexoes.PreparaConexaoPrincipal();
    s().conexoes.ReabreConexao();
    s().conexoes.Executa(u"UPDATE vendas SET enviotime = 1, tempo = '0' WHERE cupom = 101"_s);
    app->Form_Load(false);

    EXPECT_EQ(s().empresa.Cnpj, u"11222333000181"_s);
    EXPECT_EQ(s().empresa.Serie, u"001"_s);
    EXPECT_EQ(s().empresa.Cep, u"30130000"_s);
    for (const QString& p : {u"LOG"_s, u"11222333000181/Envio"_s, u"11222333000181/Validar"_s})
        EXPECT_TRUE(PastaExiste(Caminho(pasta.caminho(), p))) << p.toStdString();
    EXPECT_EQ(s().painel.LblQuantCup, QString());
    EXPECT_TRUE(s().painel.TimerVendasAtivo);
    EXPECT_TRUE(ambiente.registro.filter(u"Conexão"_s).isEmpty())
        << ambiente.registro.join(u'\n').toStdString();
    EXPECT_EQ(Texto(u"SELECT enviotime AS n FROM vendas WHERE cupom = 101"_s), u"0"_s);
    // 0.05 s in the start-up routine, 5 s, then AtEnvioTime's minute.
    EXPECT_EQ(ambiente.msAguardados(), 65050);
}

TEST_F(AplicacaoTest, PartidaSemConfiguracaoOuEmpresaFalha) {
    struct Caso {
        QString nome;
        std::function<void()> estraga;
        int erro;
    };
    const Caso casos[] = {
        {u"sem Empresa.Bin"_s, [&] { QFile::remove(pasta.Caminho(u"Empresa.Bin"_s)); },
         ErroArquivoNaoEncontrado},
        {u"sem Config.ini"_s, [&] { QFile::remove(pasta.Caminho(u"Config.ini"_s)); },
         ErroArquivoNaoEncontrado},
        {u"TEMP grande demais"_s, [&] { Configura({u"TEMP=70000"_s}); }, ErroEstouro},
    };
    for (const Caso& c : casos) {
        SCOPED_TRACE(c.nome.toStdString());
        c.estraga();
        EXPECT_EQ(ErroDe([&] { app->Form_Load(false); }).numero(), c.erro);
        CriaPastaPrograma(pasta.Caminho(u"outra"_s), false, ambiente.Data());
        for (const QString& arquivo : {u"Empresa.Bin"_s, u"Config.ini"_s})
            QFile::copy(pasta.Caminho(u"outra/"_s + arquivo), pasta.Caminho(arquivo));
        Configura({});
        QDir(pasta.Caminho(u"outra"_s)).removeRecursively();
    }
}

TEST_F(AplicacaoTest, BotaoTransmitirSoComVendasOnlineSim) {
    const std::pair<QStringList, bool> casos[] = {
        {{u"VENDASONLINE=SIM"_s}, true},
        {{u"VENDASONLINE=  SIM  "_s}, true},
        {{u"VENDASONLINE=sim"_s}, false},
        {{u"VENDASONLINE=SIM|'x'"_s}, false},
        {{}, false},
        {{u"VENDASONLINE="_s + QString(100000, u'S')}, false},
    };
    for (const auto& [linhas, ativo] : casos) {
        Configura(linhas);
        app->Form_Activate();
        EXPECT_EQ(s().painel.CmdExportarAtivo, ativo) << linhas.join(u' ').left(40).toStdString();
    }
}

// Started with "executar agora", the scheduled run (send, re-queue, export) runs during the
// start-up's wait; the scheduled minute that follows finds nothing left to send or export.
TEST_F(AplicacaoTest, ExecutarAgoraEDepoisOHorarioDaAgenda) {
    Configura({u"VENDASONLINESRV=SIM"_s});
    LigaUniNfe();
    app->Form_Load(true);
    EXPECT_EQ(Texto(u"SELECT COUNT(*) AS n FROM vendas WHERE tempo = '1' AND enviotime = 1"_s),
              u"11"_s);
    EXPECT_EQ(ambiente.registro.filter(u"(finalizada)"_s).size(), 11);

    ASSERT_LT(ambiente.Agora().time(), QTime(13, 10));
    ambiente.Avanca(ambiente.Agora().time().msecsTo(QTime(13, 10)));
    app->TimerVendas_Timer();
    EXPECT_EQ(ambiente.registro.filter(u"(finalizada)"_s).size(), 11);
    EXPECT_EQ(Texto(u"SELECT COUNT(*) AS n FROM vendas"_s, true),
              Texto(u"SELECT COUNT(*) AS n FROM vendas"_s));
}

TEST_F(AplicacaoTest, PararFecharESair) {
    app->Form_Load(false);
    app->CmdParar_Click();
    EXPECT_FALSE(s().painel.TimerVendasAtivo);
    app->cmdOK_Click();
    EXPECT_TRUE(s().painel.TimerVendasAtivo);
    app->Form_Unload();
    EXPECT_FALSE(s().painel.TimerVendasAtivo);
    EXPECT_EQ(fins, 1);
    EXPECT_EQ(ambiente.registro.last(), u"Servidor NFC-e encerrado"_s);
}

// An error that escapes a button's routine is shown, and the server goes on.
TEST_F(AplicacaoTest, ErroNumBotaoEMostradoENaoDerruba) {
    Configura({u"VENDASONLINESRV=SIM"_s});
    app->Form_Load(false);
    for (const QString& arquivo : {u"loja.db"_s, u"loja.db-wal"_s, u"loja.db-shm"_s})
        QFile::remove(pasta.Caminho(arquivo));
    app->CmdExportar_Click();
    ASSERT_EQ(ambiente.mensagens.size(), 1);
    EXPECT_TRUE(ambiente.mensagens.first().texto.startsWith(u"Exportação: erro "_s))
        << ambiente.mensagens.first().texto.toStdString();
    EXPECT_EQ(s().painel.Caption, u"Servidor NFC-e"_s);
}

} // namespace
} // namespace nfce::teste
