#include "storage/Dialeto.h"
#include "storage/ErroExecucao.h"
#include "storage/Sql.h"
#include "support/BancoTeste.h"
#include "support/Erros.h"

#include <QFileInfo>

namespace nfce::teste {
namespace {

using namespace Qt::StringLiterals;

std::unique_ptr<Conexoes> Monta(const PastaPrograma& pasta, AmbienteVirtual& ambiente,
                                const QStringList& config) {
    pasta.EscreveConfig(config);
    auto conexoes = std::make_unique<Conexoes>(pasta.caminho(), ambiente);
    conexoes->PreparaConexaoPrincipal();
    conexoes->AbreConexaoRemota();
    conexoes->AbreConexaoContingencia();
    return conexoes;
}

// Without its setting a connection is not built (91); bad settings do not stop the builders.
TEST(Conexoes, CadaConexaoSoComASuaConfiguracao) {
    PastaPrograma pasta;
    AmbienteVirtual ambiente;
    const QStringList casos[] = {{"SERVIDOR=10.0.0.1", "BASEDADOS=    ", "CONTINGENCIABASE=central",
                                  "SERVIDORBASE=10.0.0.1", "SERVIDORUSUARIO=joao"},
                                 {"TIPOBANCO=SQLITE", "CONTINGENCIAHOST=10.0.0.1"},
                                 {"TIPOBANCO=ORACLE",
                                  "BASEDADOS=lo'ja|\x01" + QString(100000, u'x'),
                                  "SERVIDORBASEDADOS=r", "CONTINGENCIAHOST=h"}};
    for (const QStringList& config : casos) {
        auto c = Monta(pasta, ambiente, config);
        EXPECT_TRUE(!c->ConexaoPrincipal() && !c->ConexaoRemota() && !c->ConexaoContingencia());
        Registros rs;
        for (const auto& chamada : std::initializer_list<std::function<void()>>{
                 [&] { c->ReabreConexao(); }, [&] { c->Executa("SELECT 1"); },
                 [&] { c->AbreConsulta(rs, "SELECT 1"); }, [&] { c->AbreTabela(rs, "vendas"); },
                 [&] { c->ReabreTerceira(); }, [&] { c->AbreConsultaTerceira(rs, "SELECT 1"); },
                 [&] { c->AbreRecordsetLocal(rs, "ncupom"); }})
            EXPECT_EQ(ErroDe(chamada).numero(), ErroObjetoNaoDefinido);
        c->FechaConexao();
        c->FechaTerceira();
        ambiente.mensagens.clear();
        c->ReabreRemota();
        ASSERT_EQ(ambiente.mensagens.size(), 1);
        EXPECT_TRUE(ambiente.mensagens[0].texto.startsWith(
            u"Erro de Conexão do Banco de Dados do Servidor.\n91 Variável de objeto"_s));
        EXPECT_EQ(ambiente.mensagens[0].icone, Icone::Critico);
    }
    Conexoes semConfig(pasta.Caminho("sem"), ambiente);
    EXPECT_NO_THROW(semConfig.PreparaConexaoPrincipal(); semConfig.AbreConexaoRemota());
    // On SQLite the keys name files in the program folder; a missing one is not created.
    pasta.EscreveArquivo("central.db", {});
    auto c = Monta(pasta, ambiente,
                   {"tipobanco=sqlite", "BASEDADOS=loja.db", "CONTINGENCIABASE=central.db"});
    EXPECT_TRUE(c->AbreConexaoContingencia());
    EXPECT_EQ(c->StringConexaoPrincipal(), pasta.Caminho("loja.db"));
    EXPECT_EQ(ErroDe([&] { c->ReabreConexao(); }).numero(), ErroProvedor);
    EXPECT_FALSE(QFileInfo::exists(pasta.Caminho("loja.db")));
    c->AbreLocal()->Executa("INSERT INTO ncupom (cupom) VALUES ( '12' )");
    c->AbreLocal();
    Registros rs;
    c->AbreRecordsetLocal(rs, " ncupom ");
    EXPECT_EQ(rs.Texto("cupom"), "12");
    Conexoes fora(pasta.Caminho("nao/existe"), ambiente);
    EXPECT_EQ(ErroDe([&] { fora.AbreLocal(); }).numero(), ErroProvedor);
}

// SQLite refuses an UPDATE's ORDER BY without LIMIT, Access's "DELETE *" and "() VALUES ()".
TEST(Conexoes, DialetoReescreveSoOQueOSqliteNaoAceita) {
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
          "UPDATE v SET e = 'D''ÁVILA'' ORDER BY x' WHERE c = 1",
          "UPDATE t SET a = (SELECT max(b) FROM u ORDER BY b) WHERE c = 1",
          "UPDATE t SET a = 1 WHERE b = 2 -- ORDER BY c",
          "UPDATE ordem SET border = 1 WHERE by_x = 2", "SELECT * FROM vendas ORDER BY cupom",
          "INSERT INTO ncupom (cupom) VALUES ( '12' )", "", "UPDATE t SET a = 'sem fim ORDER BY"})
        EXPECT_EQ(AdaptaSqlite(QString::fromUtf8(sql)), QString::fromUtf8(sql));
    EXPECT_EQ(EscapaTexto(u"D'ÁVILA|\"\\"_s + QChar(0)), u"D''ÁVILA|\"\\"_s);
}

class ConexoesTest : public BancoTeste {};

// Rows fetched whole outlive the connection; misuse and the database's own text reach the caller.
TEST_P(ConexoesTest, RegistrosDaConsulta) {
    Executa("INSERT INTO vendas (cupom, valor, Desconto, data, hora, erro) VALUES (101, 45.00, "
            "0.1, '2026-11-15', '10:20:30', NULL), (102, 0, 1234.56, NULL, NULL, 'x')");
    Registros rs, nunca;
    conexoes->AbreConsulta(
        rs, "SELECT erro, valor AS vMax, Desconto, data, hora FROM vendas ORDER BY cupom");
    conexoes->FechaConexao();
    EXPECT_EQ(ErroDe([&] { conexoes->Executa("SELECT 1"); }).numero(), ErroObjetoFechado);
    EXPECT_TRUE(rs.RecordCount() == 2 && rs.Campo("ERRO").isNull());
    QStringList linhas;
    for (; !rs.Eof(); rs.MoveNext()) {
        QStringList campos;
        for (const QString& campo : rs.Campos())
            campos << rs.Texto(campo.toUpper());
        linhas << campos.join(u'|');
    }
    EXPECT_EQ(linhas, QStringList({"|45|0.1|2026-11-15|10:20:30", "x|0|1234.56||"}));
    EXPECT_EQ(ErroDe([&] { rs.Campo("erro"); }).numero(), ErroSemRegistroAtual);
    rs.MoveFirst();
    EXPECT_EQ(ErroDe([&] { rs.Campo("vendas.erro"); }).numero(), ErroItemNaoEncontrado);
    rs.Fecha();
    for (Registros* r : {&nunca, &rs})
        EXPECT_EQ(ErroDe([&] { r->Eof(); }).numero(), ErroObjetoFechado);
    conexoes->ReabreConexao();
    conexoes->AbreTabela(rs, "vendas");
    EXPECT_EQ(rs.RecordCount(), 2);
    EXPECT_EQ(ErroDe([&] { conexoes->AbreTabela(rs, "vendas` WHERE 1=0 --"); }).numero(),
              ErroProvedor);
    EXPECT_FALSE(rs.Aberto());
    EXPECT_TRUE(ErroDe([&] { conexoes->Executa("SELECT * FROM nao_existe"); })
                    .descricao()
                    .contains("nao_existe"));
    const std::tuple<const char*, const char*, QDate, QTime> datas[] = {
        {"15/11/2026", "08:05:09", QDate(2026, 11, 15), QTime(8, 5, 9)},
        {"2026-11-15", "08:05", QDate(2026, 11, 15), QTime(8, 5)},
        {"31/02/2026", "25:00:00", QDate(), QTime()},
        {"lixo''|", "", QDate(), QTime()}};
    for (const auto& [data, hora, esperadaData, esperadaHora] : datas) {
        conexoes->AbreConsulta(rs, u"SELECT '%1' AS d, '%2' AS h"_s.arg(data, hora));
        EXPECT_TRUE(rs.Data("d") == esperadaData && rs.Hora("h") == esperadaHora) << data;
    }
}

// A reopen without a remote connection (91) keeps the flag as an earlier call set it.
TEST_P(ConexoesTest, RemotaSemConexaoGuardaOEstado) {
    CriaRemota();
    conexoes->ReabreRemota();
    EXPECT_TRUE(conexoes->RemotaConectada() && ambiente.mensagens.isEmpty());
    pasta.EscreveConfig(QStringList{"TIPOBANCO=ACCESS"} + LinhasDosBancos());
    conexoes->AbreConexaoRemota();
    conexoes->ReabreRemota();
    EXPECT_TRUE(ambiente.mensagens.size() == 1 && conexoes->RemotaConectada());
}

INSTANTIATE_TEST_SUITE_P(Motores, ConexoesTest, ::testing::ValuesIn(Motores()), NomeDoMotor);

} // namespace
} // namespace nfce::teste
