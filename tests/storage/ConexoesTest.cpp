#include "storage/Dialeto.h"
#include "storage/ErroExecucao.h"
#include "storage/Esquema.h"
#include "storage/Sql.h"
#include "support/BancoTeste.h"
#include "support/Erros.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <functional>

namespace nfce::teste {
namespace {

using namespace Qt::StringLiterals;

const QString TextoErro = u"Erro de Conexão do Banco de Dados do Servidor."_s;

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

    PastaPrograma pasta;
    AmbienteVirtual ambiente;
    std::unique_ptr<Conexoes> conexoes;
};

// 127.0.0.2 refuses at once. The main connection is built, not opened.
TEST_F(ConexoesConfigTest, CadaConexaoComAsSuasChaves) {
    Conexoes& c =
        Monta({"SERVIDOR=192.168.0.10", "BASEDADOS=loja", "SERVIDORBASE=127.0.0.2",
               "SERVIDORBASEDADOS=exporta", "SERVIDORUSUARIO=joao", "CONTINGENCIAHOST=127.0.0.2"});
    EXPECT_EQ(c.StringConexaoPrincipal(),
              StringConexaoMySql("192.168.0.10", "loja", "master", "brenhova"));
    EXPECT_EQ(c.ConexaoPrincipal()->Origem(), c.StringConexaoPrincipal());
    EXPECT_EQ(c.ConexaoPrincipal()->Estado(), 0);
    EXPECT_EQ(c.ConexaoRemota()->Origem(),
              StringConexaoMySql("127.0.0.2", "exporta", "joao", "brenhova"));
    EXPECT_EQ(c.ConexaoContingencia()->Origem(),
              StringConexaoMySql("127.0.0.2", "remote_db", "remote_user", "Rk4817pQ"));
    EXPECT_EQ(StringConexaoMySql("h", "b", "u", "s"),
              "Driver={MySQL ODBC 5.1 DRIVER}; Server=h;Port=3306;"
              "Database=b;UID=u;PWD=s;ConnectionTimeout=60;Option=18475");
}

// Files named by the same keys, relative to the program folder; a missing one is not created.
TEST_F(ConexoesConfigTest, TipoSqliteUsaArquivos) {
    const QString fora = QDir::cleanPath(pasta.Caminho("../fora.db"));
    Conexao central(TipoBanco::Sqlite, fora, Conexao::Arquivo::CriaSeFaltar);
    central.Abre();
    CriaEsquema(central, "loja");
    central.Executa("INSERT INTO nfce (dataentrada) VALUES ('15/11/2026')");
    Conexoes& c = Monta({"tipobanco=sqlite", "BASEDADOS=loja.db",
                         "SERVIDORBASEDADOS=dados/remota.db", "CONTINGENCIABASE=" + fora});
    EXPECT_EQ(c.StringConexaoPrincipal(), pasta.Caminho("loja.db"));
    EXPECT_EQ(c.ConexaoRemota()->Origem(), pasta.Caminho("dados/remota.db"));
    Registros rs;
    c.AbreConsultaTerceira(rs, "SELECT dataentrada FROM nfce");
    EXPECT_EQ(rs.Data("DATAENTRADA"), QDate(2026, 11, 15));
    EXPECT_EQ(ErroDe([&] { c.ReabreConexao(); }).numero(), ErroProvedor);
    EXPECT_FALSE(QFileInfo::exists(pasta.Caminho("loja.db")) ||
                 QFileInfo::exists(pasta.Caminho("dados/remota.db")));
    QFile::remove(fora);
}

// Without its setting a connection is not built: calls on it fail with 91, the remote one's
// reopen through its message box. Bad settings do not bring the builders down.
TEST_F(ConexoesConfigTest, SemConfiguracaoNaoHaConexao) {
    const QStringList casos[] = {{"SERVIDOR=10.0.0.1", "BASEDADOS=    ", "CONTINGENCIABASE=central",
                                  "SERVIDORBASE=10.0.0.1", "SERVIDORUSUARIO=joao"},
                                 {"TIPOBANCO=SQLITE", "CONTINGENCIAHOST=10.0.0.1"},
                                 {"TIPOBANCO=ORACLE",
                                  "BASEDADOS=lo'ja|\x01" + QString(100000, u'x'),
                                  "SERVIDORBASEDADOS=r", "CONTINGENCIAHOST=h"}};
    for (const QStringList& config : casos) {
        Conexoes& c = Monta(config);
        EXPECT_FALSE(c.AbreConexaoContingencia());
        EXPECT_TRUE(!c.ConexaoPrincipal() && !c.ConexaoRemota() && !c.ConexaoContingencia());
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
    }
    EXPECT_FALSE(ambiente.registro.filter("TIPOBANCO").isEmpty());
}

TEST_F(ConexoesConfigTest, LocalDbComNcupom) {
    Conexoes c(pasta.caminho(), ambiente);
    Registros rs;
    EXPECT_EQ(ErroDe([&] { c.AbreRecordsetLocal(rs, "ncupom"); }).numero(), ErroObjetoNaoDefinido);
    c.AbreLocal()->Executa("INSERT INTO ncupom (cupom) VALUES ( '12' )");
    auto local = c.AbreLocal(); // reopening keeps the rows
    EXPECT_EQ(c.CaminhoLocal(), pasta.Caminho("Local.db"));
    c.AbreRecordsetLocal(rs, "SELECT cupom FROM ncupom");
    EXPECT_EQ(rs.Texto("cupom"), "12");
    local->Executa("DELETE * FROM ncupom");
    c.AbreRecordsetLocal(rs, " ncupom ");
    EXPECT_TRUE(rs.Eof());
    Conexoes fora(pasta.Caminho("nao/existe"), ambiente);
    EXPECT_EQ(ErroDe([&] { fora.AbreLocal(); }).numero(), ErroProvedor);
}

// SQLite refuses an UPDATE's ORDER BY without LIMIT, Access's "DELETE *" and "() VALUES ()".
TEST(Dialeto, ReescreveSoOQueOSqliteNaoAceita) {
    const std::pair<const char*, const char*> reescritos[] = {
        {"UPDATE vendas SET enviotime = 0 WHERE tempo <> '1' ORDER BY cupom asc",
         "UPDATE vendas SET enviotime = 0 WHERE tempo <> '1'"},
        {"update vendas set x = 1\n  order   by cupom desc, data;", "update vendas set x = 1;"},
        {"  delete   *from ncupom", "  delete from ncupom"},
        {"INSERT INTO \"ncupom\" () VALUES ()", "INSERT INTO \"ncupom\" DEFAULT VALUES"}};
    for (const auto& [entrada, esperado] : reescritos)
        EXPECT_EQ(AdaptaSqlite(QString::fromUtf8(entrada)), QString::fromUtf8(esperado));
    for (const char* sql :
         {"UPDATE t SET a = 1 ORDER BY b LIMIT 5",
          "UPDATE vendas SET erro = 'D''ÁVILA'' ORDER BY x' WHERE cupom = 1",
          "UPDATE t SET a = (SELECT max(b) FROM u ORDER BY b) WHERE c = 1",
          "UPDATE t SET a = 1 WHERE b = 2 -- ORDER BY c",
          "UPDATE ordem SET border = 1 WHERE by_x = 2", "SELECT * FROM vendas ORDER BY cupom",
          "INSERT INTO ncupom (cupom) VALUES ( '12' )", "", "UPDATE t SET a = 'sem fim ORDER BY"})
        EXPECT_EQ(AdaptaSqlite(QString::fromUtf8(sql)), QString::fromUtf8(sql));
    EXPECT_EQ(EscapaTexto(u"D'ÁVILA|\"\\"_s + QChar(0)), u"D''ÁVILA|\"\\"_s);
}

// ----- against the real databases -----

class ConexoesTest : public BancoTeste {
protected:
    void Preenche() {
        Executa("INSERT INTO vendas (cupom, nfce, data, hora, valor, Desconto, erro) VALUES "
                "(101, 7, '2026-11-15', '10:20:30', 45.00, 0.1, NULL), "
                "(102, 8, NULL, NULL, 0, 1234.56, 'x')");
    }
};

TEST_P(ConexoesTest, ReabreEFechaAConexaoPrincipal) {
    conexoes->ReabreConexao();
    conexoes->FechaConexao();
    conexoes->FechaConexao();
    EXPECT_EQ(conexoes->ConexaoPrincipal()->Estado(), 0);
    EXPECT_EQ(ErroDe([&] { conexoes->Executa("SELECT 1"); }).numero(), ErroObjetoFechado);
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
}

// The remote connection's failures reach the shop in one message box: out of reach (the
// builder keeps its failure to itself), or a rebuild with an unknown engine that leaves no
// connection (91), which keeps the flag as it was.
TEST_P(ConexoesTest, RemotaQueFalhaMostraUmaMensagem) {
    const auto mensagem = [&](const QString& inicio) {
        ASSERT_EQ(ambiente.mensagens.size(), 1);
        EXPECT_TRUE(ambiente.mensagens[0].texto.startsWith(inicio));
        EXPECT_EQ(ambiente.mensagens[0].titulo, u"Atenção. Erro durante a conexão ...."_s);
        EXPECT_EQ(ambiente.mensagens[0].icone, Icone::Critico);
        ambiente.mensagens.clear();
    };
    Configura(EmSqlite() ? QStringList{"SERVIDORBASEDADOS=" + BaseInexistente()}
                         : QStringList{"SERVIDORBASE=" + host(), "SERVIDORBASEDADOS=mysql",
                                       "SERVIDORUSUARIO=ninguem"});
    conexoes->AbreConexaoRemota();
    EXPECT_TRUE(ambiente.mensagens.isEmpty());
    conexoes->ReabreRemota();
    mensagem(TextoErro);
    EXPECT_FALSE(conexoes->RemotaConectada());

    CriaRemota();
    conexoes->ReabreRemota();
    EXPECT_TRUE(conexoes->RemotaConectada() && ambiente.mensagens.isEmpty());
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

// Only SQLite gets the dialect step: MariaDB runs the text as it stands.
TEST_P(ConexoesTest, DialetoSoNoSqlite) {
    for (const char* sql :
         {"UPDATE vendas SET sync = true ORDER BY coluna_que_nao_ha", "DELETE * FROM caixas"})
        EXPECT_EQ(ErroDe([&] { conexoes->Executa(sql); }).numero(), EmSqlite() ? 0 : ErroProvedor)
            << sql;
}

// Rows fetched whole: the count is known and they outlive the connection; reading past the
// end, an unknown field or a closed recordset each has its error.
TEST_P(ConexoesTest, RegistrosPercorremOsDados) {
    Preenche();
    Registros rs, nunca;
    conexoes->AbreConsulta(
        rs, "SELECT cupom, MAX(valor) AS vMax FROM vendas GROUP BY cupom ORDER BY cupom");
    conexoes->FechaConexao();
    EXPECT_EQ(rs.RecordCount(), 2);
    QStringList lidos;
    for (; !rs.Eof(); rs.MoveNext())
        lidos << rs.Texto("CUPOM") + u'/' + rs.Texto("vmax");
    EXPECT_EQ(lidos, QStringList({"101/45", "102/0"}));
    EXPECT_EQ(ErroDe([&] { rs.Campo("cupom"); }).numero(), ErroSemRegistroAtual);
    rs.MoveFirst();
    for (const char* nome : {"", "cupom ", "vendas.cupom"})
        EXPECT_EQ(ErroDe([&] { rs.Campo(nome); }).numero(), ErroItemNaoEncontrado) << nome;
    rs.Fecha();
    for (Registros* r : {&nunca, &rs}) {
        EXPECT_EQ(ErroDe([&] { r->Eof(); }).numero(), ErroObjetoFechado);
        EXPECT_EQ(ErroDe([&] { r->Campo("cupom"); }).numero(), ErroObjetoFechado);
    }
    conexoes->ReabreConexao();
    EXPECT_EQ(ErroDe([&] { conexoes->AbreConsulta(rs, "SELECT x FROM nao_existe"); }).numero(),
              ErroProvedor);
    EXPECT_FALSE(rs.Aberto());
    conexoes->AbreTabela(rs, "vendas");
    EXPECT_EQ(rs.RecordCount(), 2);
    EXPECT_EQ(ErroDe([&] { conexoes->AbreTabela(rs, "vendas` WHERE 1=0 --"); }).numero(),
              ErroProvedor);
}

// Nulls read as "", numbers in their shortest form, dates and times as SQL writes them; the
// typed readers give invalid values for nulls and for text that is no date or time.
TEST_P(ConexoesTest, RegistrosNulosNumerosDatasEHoras) {
    Preenche();
    Registros rs;
    conexoes->AbreConsulta(rs,
                           "SELECT erro, valor, Desconto, data, hora FROM vendas ORDER BY cupom");
    EXPECT_TRUE(rs.Campo("erro").isNull());
    for (const char* linha : {"|45|0.1|2026-11-15|10:20:30", "x|0|1234.56||"}) {
        QStringList campos;
        for (const QString& campo : rs.Campos())
            campos << rs.Texto(campo);
        EXPECT_EQ(campos.join(u'|'), linha);
        rs.MoveNext();
    }
    const std::tuple<const char*, const char*, QDate, QTime> casos[] = {
        {"15/11/2026", "08:05:09", QDate(2026, 11, 15), QTime(8, 5, 9)},
        {"2026-11-15", "08:05", QDate(2026, 11, 15), QTime(8, 5)},
        {"31/02/2026", "25:00:00", QDate(), QTime()},
        {"lixo''|", "", QDate(), QTime()}};
    for (const auto& [data, hora, esperadaData, esperadaHora] : casos) {
        Executa("DELETE FROM nfce");
        Executa(
            u"INSERT INTO nfce (dataentrada, horaentrada) VALUES ('%1', '%2')"_s.arg(data, hora));
        conexoes->AbreConsulta(rs, "SELECT dataentrada, horaentrada FROM nfce");
        EXPECT_EQ(rs.Data("dataentrada"), esperadaData) << data;
        EXPECT_EQ(rs.Hora("horaentrada"), esperadaHora) << hora;
    }
}

INSTANTIATE_TEST_SUITE_P(Motores, ConexoesTest, ::testing::ValuesIn(Motores()), NomeDoMotor);

} // namespace
} // namespace nfce::teste
