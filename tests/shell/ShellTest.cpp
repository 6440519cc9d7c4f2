#include "Simulador.h"
#include "shell/Agenda.h"
#include "shell/Aplicacao.h"
#include "shell/InstanciaUnica.h"
#include "shell/janela/FrmPrincipal.h"
#include "shell/tray/clsPharos.h"
#include "storage/Conexao.h"
#include "storage/Pastas.h"
#include "support/Avisos.h"
#include "support/Programa.h"
#include "support/ProgramaDeExemplo.h"

#include <QDir>
#include <QDirIterator>
#include <QGuiApplication>
#include <QLabel>
#include <QPushButton>
#include <optional>

namespace nfce::teste {
namespace {

using namespace Qt::StringLiterals;

// The schedule's timer on a virtual clock; its tasks only note that they ran.
struct Agenda {
    explicit Agenda(const QTime& hora)
        : ambiente(QDateTime(QDate(2026, 11, 16), hora)), s(u"/nao/usada"_s, ambiente),
          timer(s, {Nota(u"EnviaPendentes"_s), Nota(u"AtEnvioTime"_s), Nota(u"CmdExportar"_s)}) {
        s.painel.TimerVendasAtivo = true;
    }
    std::function<void()> Nota(const QString& tarefa) {
        return [this, tarefa] { rodadas << tarefa, aoRodar(); };
    }
    AmbienteVirtual ambiente;
    Servidor s;
    TimerVendas timer;
    QStringList rodadas;
    std::function<void()> aoRodar = [] {};
};

const QStringList Todas = {u"EnviaPendentes"_s, u"AtEnvioTime"_s, u"CmdExportar"_s};

// The time is read before the 23-second wait; a match runs the three tasks in order.
TEST(Agenda, UmTiqueRodaSoNosHorariosDaTabela) {
    const int casos[][4] = {{13, 10, 0, 1},  {13, 5, 0, 0}, {19, 50, 0, 0}, {20, 50, 30, 0},
                            {19, 40, 0, 1},  {0, 33, 0, 1}, {7, 0, 50, 1},  {6, 59, 59, 0},
                            {23, 50, 59, 1}, {0, 0, 0, 0}};
    for (const auto& [h, m, seg, roda] : casos) {
        const QTime hora(h, m, seg);
        SCOPED_TRACE(hora.toString().toStdString());
        Agenda a(hora);
        a.timer.Tique();
        EXPECT_EQ(a.rodadas, roda ? Todas : QStringList());
        EXPECT_EQ(a.s.painel.lblHora + u' ' + a.s.painel.lblData,
                  hora.toString(u"HH:mm"_s) + u" 16/11/2026"_s);
        EXPECT_EQ(a.ambiente.msAguardados(), roda ? 23000 : 25000);
    }
}

// A stop during a tick holds only if the tick ran the tasks; ticks meanwhile do nothing.
TEST(Agenda, PararETiquesDuranteUmTique) {
    for (const bool roda : {false, true}) {
        Agenda a(roda ? QTime(8, 0) : QTime(8, 1));
        a.ambiente.Agenda(10000, [&] { a.s.painel.TimerVendasAtivo = false; });
        a.timer.Tique();
        EXPECT_EQ(a.s.painel.TimerVendasAtivo, !roda);
    }
    Agenda a(QTime(13, 10));
    a.ambiente.Agenda(5000, [&] { a.timer.Tique(); });
    a.aoRodar = [&] { a.timer.Tique(); };
    a.timer.Tique();
    a.timer.RodaAgora();
    a.s.painel.TimerVendasAtivo = false;
    a.timer.Tique();
    EXPECT_EQ(a.rodadas, Todas + Todas);
    EXPECT_EQ(a.ambiente.msAguardados(), 23000);
}

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

// Without a notification area the window stays on screen; closing or "Fechar" minimises it.
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

// The next scheduled minute finds nothing left; an error escaping a button is shown.
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

// Success prints `texto`; failure nothing on stdout and (but for usage) one line with `texto`.
void Espera(const Execucao& e, int status, const QString& texto) {
    EXPECT_EQ(e.status, status) << e.erro.toStdString();
    EXPECT_EQ(e.saida, status == 0 ? texto : QString());
    EXPECT_TRUE(status != 1 || (e.erro.contains(texto) && e.erro.count(u'\n') == 1))
        << e.erro.toStdString();
}

TEST(LinhaDeComando, StatusESaidaDeCadaComando) {
    PastaPrograma pasta;
    const QString vazia = pasta.Caminho(u"vazia"_s), demo = pasta.Caminho(u"demo"_s);
    QDir().mkpath(vazia);
    for (const QString& uso : {u"voar"_s, u"empresa"_s, u"iniciar|a|b"_s, u"--sem-janela|enviar"_s})
        Espera(RodaServidor(uso.split(u'|')), 2, {});
    // Arguments split at "|", %1 the empty folder, %2 the one made; the errors leave %1 empty.
    const std::tuple<QString, QByteArray, int, QString> casos[] = {
        {u"empresa|%1|--mostrar"_s, {}, 1, u"(erro 53)"_s},
        {u"empresa|%1"_s, "CIDADE=SÃO PAULO\n", 1, u"(erro 5)"_s},
        {u"empresa|%1"_s, "CNPJ=1\nENDERECO=RUA|X\n", 1, u"(erro 5)"_s},
        {u"empresa|%1"_s, "NOME=A\tB\n", 1, u"(erro 5)"_s},
        {u"empresa|%1/falta"_s, "A=1\n", 1, u"(erro 76)"_s},
        {u"--pasta|%1|--sem-janela"_s, {}, 1, u"(erro 53)"_s},
        {u"iniciar|%2|--exemplos"_s, {}, 0, demo + u"\n"_s},
        {u"iniciar|%2"_s, {}, 1, u"(erro 58)"_s},
        {u"empresa|%2"_s, "NOME=LOJA 'A'; \"B\"\n\nSERIE=7\n", 0, demo + u"/Empresa.Bin\n"_s},
        {u"empresa|%2|--mostrar"_s, {}, 0, u"NOME=LOJA 'A'; \"B\"\nSERIE=7\n"_s}};
    for (const auto& [argumentos, entrada, status, texto] : casos) {
        SCOPED_TRACE(argumentos.toStdString());
        const QString linha = QString(argumentos).replace(u"%1"_s, vazia).replace(u"%2"_s, demo);
        Espera(RodaServidor(linha.split(u'|'), entrada), status, texto);
    }
    EXPECT_TRUE(QDir(vazia).isEmpty()) << "not even the day's log";
    // Only a sale sent or given up goes back to the queue, and the count says so.
    const QString outra = pasta.Caminho(u"outra"_s);
    Espera(RodaServidor({u"iniciar"_s, outra, u"--exemplos"_s}), 0, outra + u"\n"_s);
    Conexao loja(TipoBanco::Sqlite, outra + u"/loja.db"_s);
    loja.Abre();
    loja.Executa(u"UPDATE vendas SET enviotime = 1, tempo = '0' WHERE nfce = 1001"_s);
    Espera(RodaServidor({u"reenfileirar"_s, u"--pasta"_s, outra}), 0,
           u"Vendas de volta à fila de envio: 1\n"_s);
}

// A second server on the folder ends at once without a word; a dead server's lock is no lock.
TEST(LinhaDeComando, UmServidorPorPasta) {
    PastaPrograma pasta;
    CriaPastaPrograma(pasta.caminho(), false, QDate::currentDate());
    pasta.EscreveArquivo(u"servidor-nfce.lock"_s, "12345\nservidor-nfce\n");
    auto primeira = std::make_unique<InstanciaUnica>(pasta.caminho());
    ASSERT_EQ(primeira->Obtem(), InstanciaUnica::Resultado::Obtida);
    Espera(RodaServidor({u"--pasta"_s, pasta.caminho(), u"--sem-janela"_s}), 0, {});
    primeira.reset();
    EXPECT_EQ(InstanciaUnica(pasta.caminho()).Obtem(), InstanciaUnica::Resultado::Obtida);
}

QString Retrato(const QString& pasta) {
    QStringList itens;
    QDirIterator it(pasta, QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden,
                    QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QFileInfo f = it.nextFileInfo();
        itens << f.filePath() + u' ' + f.lastModified().toString(Qt::ISODateWithMs);
    }
    itens.sort();
    return itens.join(u'\n');
}

// Broken set-up files stop every command on the folder before anything is written.
TEST(LinhaDeComando, InstalacaoDefeituosaNaoEscreveNada) {
    PastaPrograma pasta;
    CriaPastaPrograma(pasta.caminho(), true, QDate::currentDate());
    const QByteArray empresa = pasta.LeArquivo(u"Empresa.Bin"_s);
    const std::tuple<QString, QByteArray, QString> casos[] = {
        {u"Config.ini"_s, {}, u"Config.ini: sem BASEDADOS"_s},
        {u"Config.ini"_s, "TIPOBANCO=SQLITE\r\nBASEDADOS=lo'ja\"|.db\r\n",
         u"\"lo'ja\"|.db\" (BASEDADOS em Config.ini)"_s},
        {u"loja.db"_s, {}, u"faltam as tabelas vendas"_s},
        {u"loja.db"_s, QByteArray(4096, '\xa5'), u"\"loja.db\" (BASEDADOS em Config.ini)"_s},
        {u"Empresa.Bin"_s, empresa.left(empresa.size() / 2 + 1), u"Empresa.Bin inválido"_s}};
    const QStringList comandos = {u"--sem-janela"_s, u"gerar 1001"_s, u"enviar"_s, u"exportar"_s,
                                  u"reenfileirar"_s};
    for (const auto& [arquivo, conteudo, trecho] : casos) {
        const QByteArray antes = pasta.LeArquivo(arquivo);
        pasta.EscreveArquivo(arquivo, conteudo);
        const QString retrato = Retrato(pasta.caminho());
        for (const QString& comando : comandos) {
            SCOPED_TRACE((trecho + u" / "_s + comando).toStdString());
            Espera(RodaServidor(comando.split(u' ') << u"--pasta"_s << pasta.caminho()), 1, trecho);
            EXPECT_EQ(Retrato(pasta.caminho()), retrato);
        }
        pasta.EscreveArquivo(arquivo, antes);
    }
}

} // namespace
} // namespace nfce::teste
