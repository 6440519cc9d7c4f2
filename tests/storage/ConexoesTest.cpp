#include "storage/ErroExecucao.h"
#include "storage/Esquema.h"
#include "support/BancoTeste.h"
#include "support/Erros.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <functional>

namespace nfce::teste {
namespace {

const QString Titulo = QStringLiteral("Atenção. Erro durante a conexão ....");
const QString TextoErro = QStringLiteral("Erro de Conexão do Banco de Dados do Servidor.");

// Settings only: nothing here needs a database to answer.
class ConexoesConfigTest : public ::testing::Test {
protected:
    Conexoes& Monta(const QStringList& config) {
        pasta.EscreveConfig(config);
        conexoes = std::make_unique<Conexoes>(pasta.caminho(), ambiente);
        conexoes->PreparaConexaoPrincipal();
        conexoes->AbreConexaoRemota();
        conexoes->AbreConexaoContingencia();
        return *conexoes;
    }
    QString Origem(const Conexao* conexao) { return conexao ? conexao->Origem() : QString(); }

    PastaPrograma pasta;
    AmbienteVirtual ambiente;
    std::unique_ptr<Conexoes> conexoes;
};

TEST_F(ConexoesConfigTest, StringsDeConexaoSaoAsDoSistema) {
    // 127.0.0.2 refuses at once, so the remote and contingency opens fail quickly.
    const struct {
        QStringList config;
        QString principal, remota, contingencia;
    } casos[] = {
        {{"SERVIDOR=192.168.0.10", "BASEDADOS=loja", "SERVIDORBASE=127.0.0.2",
          "SERVIDORBASEDADOS=exporta", "SERVIDORUSUARIO=joao", "CONTINGENCIAHOST=127.0.0.2"},
         "Driver={MySQL ODBC 5.1 DRIVER}; Server=192.168.0.10;Port=3306;Database=loja;UID=master;"
         "PWD=brenhova;ConnectionTimeout=60;Option=18475",
         "Driver={MySQL ODBC 5.1 DRIVER}; Server=127.0.0.2;Port=3306;Database=exporta;UID=joao;"
         "PWD=brenhova;ConnectionTimeout=60;Option=18475",
         "Driver={MySQL ODBC 5.1 DRIVER}; Server=127.0.0.2;Port=3306;Database=remote_db;"
         "UID=remote_user;PWD=Rk4817pQ;ConnectionTimeout=60;Option=18475"},
        {{"TIPOBANCO=MYSQL", "SERVIDOR=", "BASEDADOS=x", "CONTINGENCIAHOST=127.0.0.2",
          "CONTINGENCIABASE=central", "CONTINGENCIAUSUARIO=u", "CONTINGENCIASENHA=s"},
         "Driver={MySQL ODBC 5.1 DRIVER}; Server=;Port=3306;Database=x;UID=master;"
         "PWD=brenhova;ConnectionTimeout=60;Option=18475",
         "",
         "Driver={MySQL ODBC 5.1 DRIVER}; Server=127.0.0.2;Port=3306;Database=central;UID=u;"
         "PWD=s;ConnectionTimeout=60;Option=18475"},
    };
    for (const auto& caso : casos) {
        Conexoes& c = Monta(caso.config);
        EXPECT_EQ(c.StringConexaoPrincipal(), caso.principal);
        EXPECT_EQ(Origem(c.ConexaoPrincipal()), caso.principal);
        EXPECT_EQ(Origem(c.ConexaoRemota()), caso.remota);
        EXPECT_EQ(Origem(c.ConexaoContingencia()), caso.contingencia);
        // Built is not open: the main connection waits for the first reopen.
        EXPECT_EQ(c.ConexaoPrincipal()->Estado(), 0);
    }
}

// Files named by the same keys; only the contingency's exists, outside the program folder.
TEST_F(ConexoesConfigTest, TipoSqliteTrocaTodasAsConexoesPorArquivosDaPasta) {
    const QString fora = QDir::cleanPath(pasta.Caminho("../fora.db"));
    Conexao central(TipoBanco::Sqlite, fora, Conexao::Arquivo::CriaSeFaltar);
    central.Abre();
    CriaEsquema(central, "loja");
    central.Executa(
        "INSERT INTO nfce (dataentrada, horaentrada) VALUES ('15/11/2026', '08:00:00')");
    Conexoes& c = Monta({"tipobanco=sqlite", "BASEDADOS=loja.db",
                         "SERVIDORBASEDADOS=dados/remota.db", "CONTINGENCIABASE=" + fora});
    EXPECT_EQ(c.StringConexaoPrincipal(), pasta.Caminho("loja.db"));
    EXPECT_EQ(c.ConexaoPrincipal()->Tipo(), TipoBanco::Sqlite);
    EXPECT_EQ(Origem(c.ConexaoRemota()), pasta.Caminho("dados/remota.db"));
    EXPECT_EQ(Origem(c.ConexaoContingencia()), fora);
    c.FechaTerceira();
    c.ReabreTerceira();
    Registros rs;
    c.AbreConsultaTerceira(rs, "SELECT dataentrada, horaentrada FROM nfce");
    EXPECT_EQ(rs.Data("dataentrada"), QDate(2026, 11, 15));
    EXPECT_EQ(rs.Hora("HORAENTRADA"), QTime(8, 0));
    // The others were not there, and none was created.
    EXPECT_EQ(ErroDe([&] { c.ReabreConexao(); }).numero(), ErroProvedor);
    EXPECT_FALSE(QFileInfo::exists(pasta.Caminho("loja.db")));
    EXPECT_FALSE(QFileInfo::exists(pasta.Caminho("dados/remota.db")));
    QFile::remove(fora);
}

// Without its setting a connection is not built: the calls on it fail with 91, the remote
// one's reopen through its message box.
TEST_F(ConexoesConfigTest, SemConfiguracaoNaoHaConexao) {
    const QStringList casos[] = {{"SERVIDOR=10.0.0.1", "BASEDADOS=    ", "CONTINGENCIABASE=central",
                                  "VENDASONLINE=SIM", "SERVIDORBASE=10.0.0.1",
                                  "SERVIDORBASEDADOS=", "SERVIDORUSUARIO=joao"},
                                 {"OUTRA=1", "VENDASONLINE=NAO"},
                                 {"TIPOBANCO=SQLITE", "BASEDADOS=", "CONTINGENCIAHOST=10.0.0.1"}};
    for (const QStringList& config : casos) {
        Conexoes& c = Monta(config);
        EXPECT_EQ(c.ConexaoPrincipal(), nullptr);
        EXPECT_EQ(c.ConexaoRemota(), nullptr);
        EXPECT_FALSE(c.AbreConexaoContingencia());
        EXPECT_EQ(c.ConexaoContingencia(), nullptr);
        EXPECT_EQ(c.StringConexaoPrincipal(), QString());
        Registros rs;
        for (const auto& chamada : std::initializer_list<std::function<void()>>{
                 [&] { c.ReabreConexao(); }, [&] { c.Executa("SELECT 1"); },
                 [&] { c.AbreConsulta(rs, "SELECT 1"); }, [&] { c.AbreTabela(rs, "vendas"); },
                 [&] { c.ReabreTerceira(); }, [&] { c.AbreConsultaTerceira(rs, "SELECT 1"); }})
            EXPECT_EQ(ErroDe(chamada).numero(), ErroObjetoNaoDefinido);
        c.FechaConexao();
        c.FechaTerceira();
        ambiente.mensagens.clear();
        c.ReabreRemota();
        ASSERT_EQ(ambiente.mensagens.size(), 1);
        EXPECT_TRUE(ambiente.mensagens[0].texto.startsWith(TextoErro + "\n91 "));
        EXPECT_FALSE(c.RemotaConectada());
    }
}

TEST_F(ConexoesConfigTest, ConfiguracaoRuimNaoDerrubaOsConstrutores) {
    const QString longo(100000, u'x');
    const QStringList casos[] = {
        {}, // Config.ini missing
        {"TIPOBANCO=ORACLE", "BASEDADOS=loja", "SERVIDORBASEDADOS=r", "CONTINGENCIAHOST=h"},
        {"TIPOBANCO=SQLITE", "BASEDADOS=" + longo, "SERVIDORBASEDADOS=a'b|c\"d"},
        {"TIPOBANCO=SQLITE", "BASEDADOS=\x01\x02\x7f", "SERVIDORBASEDADOS=" + longo},
    };
    for (const QStringList& config : casos) {
        if (!config.isEmpty()) pasta.EscreveConfig(config);
        const QString pastaPrograma =
            config.isEmpty() ? pasta.Caminho("sem-config") : pasta.caminho();
        conexoes = std::make_unique<Conexoes>(pastaPrograma, ambiente);
        EXPECT_NO_THROW(conexoes->PreparaConexaoPrincipal());
        EXPECT_NO_THROW(conexoes->AbreConexaoRemota());
        EXPECT_FALSE(conexoes->AbreConexaoContingencia());
        EXPECT_NE(ErroDe([&] { conexoes->ReabreConexao(); }).numero(), 0);
        EXPECT_EQ(conexoes->ConexaoRemota() ? conexoes->ConexaoRemota()->Estado() : 0, 0);
    }
    EXPECT_TRUE(ambiente.registro.filter("TIPOBANCO").size() >= 1);
}

TEST_F(ConexoesConfigTest, AbreLocalCriaLocalDbComNcupom) {
    Conexoes c(pasta.caminho(), ambiente);
    auto local = c.AbreLocal();
    EXPECT_EQ(c.CaminhoLocal(), pasta.Caminho("Local.db"));
    EXPECT_TRUE(QFileInfo(pasta.Caminho("Local.db")).isFile());
    local->Executa("INSERT INTO ncupom (cupom) VALUES ( '12' )");
    local->Executa("INSERT INTO ncupom (cupom) VALUES ( '13' )");
    // Reopening keeps the rows; the Access-style delete empties the list.
    local = c.AbreLocal();
    Registros rs;
    c.AbreRecordsetLocal(rs, "SELECT cupom FROM ncupom");
    EXPECT_EQ(rs.RecordCount(), 2);
    EXPECT_EQ(rs.Texto("cupom"), "12");
    local->Executa("DELETE * FROM ncupom");
    c.AbreRecordsetLocal(rs, "ncupom");
    EXPECT_TRUE(rs.Eof());
    // A program folder that is not there.
    Conexoes fora(pasta.Caminho("nao/existe"), ambiente);
    EXPECT_EQ(ErroDe([&] { fora.AbreLocal(); }).numero(), ErroProvedor);
    EXPECT_EQ(ErroDe([&] { fora.AbreRecordsetLocal(rs, "ncupom"); }).numero(),
              ErroObjetoNaoDefinido);
}

// ----- against the real databases -----

class ConexoesTest : public BancoTeste {};

TEST_P(ConexoesTest, ReabreEFechaAConexaoPrincipal) {
    Conexao& principal = *conexoes->ConexaoPrincipal();
    EXPECT_EQ(principal.Estado(), 1);
    conexoes->ReabreConexao();
    EXPECT_EQ(principal.Estado(), 1);
    conexoes->FechaConexao();
    conexoes->FechaConexao();
    EXPECT_EQ(principal.Estado(), 0);
    EXPECT_EQ(ErroDe([&] { conexoes->Executa("SELECT 1"); }).numero(), ErroObjetoFechado);
    Registros rs;
    EXPECT_EQ(ErroDe([&] { conexoes->AbreConsulta(rs, "SELECT 1"); }).numero(), ErroObjetoFechado);
    conexoes->ReabreConexao();
    EXPECT_EQ(conexoes->Executa("UPDATE vendas SET sync = false"), 0);
}

TEST_P(ConexoesTest, ErroDoBancoChegaAoChamadorComSeuTexto) {
    if (EmSqlite()) pasta.EscreveArquivo("lixo.db", QByteArray(4096, '\x5a'));
    pasta.EscreveConfig(LinhasDosBancos().replaceInStrings(
        QRegularExpression("^BASEDADOS=.*"),
        EmSqlite() ? "BASEDADOS=lixo.db" : "BASEDADOS=" + BaseInexistente()));
    Conexoes c(pasta.caminho(), ambiente);
    c.PreparaConexaoPrincipal();
    std::vector<std::pair<ErroExecucao, const char*>> erros = {
        {ErroDe([&] { c.ReabreConexao(); }),
         EmSqlite() ? "file is not a database" : "Unknown database"},
        {ErroDe([&] { conexoes->Executa("SELECT * FROM nao_existe"); }), "nao_existe"}};
    Conexao errada(TipoBanco::MySql, StringConexaoMySql(host(), "mysql", "master", "errada"));
    if (!EmSqlite()) erros.emplace_back(ErroDe([&] { errada.Abre(); }), "Access denied for user");
    for (const auto& [erro, texto] : erros) {
        EXPECT_EQ(erro.numero(), ErroProvedor);
        EXPECT_TRUE(erro.descricao().contains(QString::fromUtf8(texto))) << erro.what();
    }
    EXPECT_EQ(errada.Estado(), 0);
}

// The remote connection's failures reach the shop in one message box: the database out of
// reach (the builder keeps its failure to itself), or a rebuild with an unknown engine that
// leaves no connection (91), which is not the provider's and keeps the flag as it was.
TEST_P(ConexoesTest, RemotaQueFalhaMostraUmaMensagem) {
    const auto mensagem = [&](const QString& inicio) {
        ASSERT_EQ(ambiente.mensagens.size(), 1);
        EXPECT_TRUE(ambiente.mensagens[0].texto.startsWith(inicio));
        EXPECT_EQ(ambiente.mensagens[0].titulo, Titulo);
        EXPECT_EQ(ambiente.mensagens[0].icone, Icone::Critico);
        ambiente.mensagens.clear();
    };
    Configura(EmSqlite() ? QStringList{"SERVIDORBASEDADOS=" + BaseInexistente()}
                         : QStringList{"SERVIDORBASE=" + host(), "SERVIDORBASEDADOS=mysql",
                                       "SERVIDORUSUARIO=ninguem"});
    conexoes->AbreConexaoRemota();
    ASSERT_NE(conexoes->ConexaoRemota(), nullptr);
    EXPECT_TRUE(ambiente.mensagens.isEmpty());
    conexoes->ReabreRemota();
    mensagem(TextoErro);
    EXPECT_FALSE(conexoes->RemotaConectada());
    EXPECT_FALSE(QFileInfo::exists(pasta.Caminho(BaseInexistente())));

    CriaRemota();
    conexoes->ReabreRemota();
    EXPECT_TRUE(conexoes->RemotaConectada());
    EXPECT_TRUE(ambiente.mensagens.isEmpty());
    conexoes->ExecutaRemota("INSERT INTO produtos (codigo, estoque) VALUES (7, 10)");
    Registros rs;
    conexoes->AbreConsultaRemota(rs, "SELECT estoque FROM produtos WHERE codigo = 7");
    EXPECT_EQ(rs.Texto("estoque"), "10");
    pasta.EscreveConfig(QStringList{"TIPOBANCO=ACCESS"} + LinhasDosBancos());
    conexoes->AbreConexaoRemota();
    conexoes->ReabreRemota();
    mensagem(TextoErro + "\n91 Variável de objeto");
    EXPECT_TRUE(conexoes->RemotaConectada());
}

// Only SQLite gets the dialect step: MariaDB runs the text as it stands, so an ORDER BY on a
// column that is not there fails and the Access-style delete is refused.
TEST_P(ConexoesTest, DialetoSoNoSqlite) {
    for (const char* sql :
         {"UPDATE vendas SET sync = true ORDER BY coluna_que_nao_ha", "DELETE * FROM caixas"})
        EXPECT_EQ(ErroDe([&] { conexoes->Executa(sql); }).numero(), EmSqlite() ? 0 : ErroProvedor)
            << sql;
}

INSTANTIATE_TEST_SUITE_P(Motores, ConexoesTest, ::testing::ValuesIn(Motores()), NomeDoMotor);

} // namespace
} // namespace nfce::teste
