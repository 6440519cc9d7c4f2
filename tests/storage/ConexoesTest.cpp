#include "apoio/BancoTeste.h"
#include "apoio/Erros.h"
#include "storage/ErroExecucao.h"
#include "storage/Esquema.h"
#include "storage/Sql.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>

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

TEST_F(ConexoesConfigTest, TipoSqliteTrocaTodasAsConexoesPorArquivosDaPasta) {
    const QString fora = QDir::cleanPath(pasta.Caminho(QStringLiteral("../fora.db")));
    Conexoes& c = Monta({"tipobanco=sqlite", "BASEDADOS=loja.db",
                         "SERVIDORBASEDADOS=dados/remota.db", "CONTINGENCIABASE=" + fora});
    EXPECT_EQ(c.StringConexaoPrincipal(), pasta.Caminho(QStringLiteral("loja.db")));
    EXPECT_EQ(c.ConexaoPrincipal()->Tipo(), TipoBanco::Sqlite);
    EXPECT_EQ(Origem(c.ConexaoRemota()), pasta.Caminho(QStringLiteral("dados/remota.db")));
    EXPECT_EQ(Origem(c.ConexaoContingencia()), fora);
    // None of the files existed, and none was created.
    EXPECT_EQ(ErroDe([&] { c.ReabreConexao(); }).numero(), ErroProvedor);
    EXPECT_FALSE(QFileInfo::exists(pasta.Caminho(QStringLiteral("loja.db"))));
    EXPECT_FALSE(QFileInfo::exists(pasta.Caminho(QStringLiteral("dados/remota.db"))));
}

TEST_F(ConexoesConfigTest, ContingenciaSemHostOuSemArquivoNaoExiste) {
    for (const QStringList& config :
         {QStringList{"BASEDADOS=loja", "CONTINGENCIABASE=central"},
          QStringList{"TIPOBANCO=SQLITE", "BASEDADOS=loja.db", "CONTINGENCIAHOST=10.0.0.1"}}) {
        Conexoes& c = Monta(config);
        EXPECT_FALSE(c.AbreConexaoContingencia());
        EXPECT_EQ(c.ConexaoContingencia(), nullptr);
        EXPECT_EQ(ErroDe([&] { c.ReabreTerceira(); }).numero(), ErroObjetoNaoDefinido);
        Registros rs;
        EXPECT_EQ(ErroDe([&] { c.AbreConsultaTerceira(rs, "SELECT 1"); }).numero(),
                  ErroObjetoNaoDefinido);
        c.FechaTerceira();
    }
}

TEST_F(ConexoesConfigTest, ContingenciaSqliteAbreArquivoExistente) {
    Conexao central(TipoBanco::Sqlite, pasta.Caminho("central.db"), Conexao::Arquivo::CriaSeFaltar);
    central.Abre();
    CriaEsquema(central, "loja");
    central.Executa(
        "INSERT INTO nfce (dataentrada, horaentrada) VALUES ('15/11/2026', '08:00:00')");
    Conexoes& c = Monta({"TIPOBANCO=SQLITE", "BASEDADOS=loja.db", "CONTINGENCIABASE=central.db"});
    ASSERT_TRUE(c.AbreConexaoContingencia());
    c.FechaTerceira();
    c.ReabreTerceira();
    Registros rs;
    c.AbreConsultaTerceira(rs, "SELECT dataentrada, horaentrada FROM nfce");
    EXPECT_EQ(rs.Data("dataentrada"), QDate(2026, 11, 15));
    EXPECT_EQ(rs.Hora("HORAENTRADA"), QTime(8, 0));
}

TEST_F(ConexoesConfigTest, SemBaseDadosNaoHaConexaoPrincipal) {
    for (const char* linha : {"BASEDADOS=", "BASEDADOS=    ", "OUTRA=1"}) {
        Conexoes& c = Monta({"SERVIDOR=10.0.0.1", linha});
        EXPECT_EQ(c.ConexaoPrincipal(), nullptr);
        EXPECT_EQ(c.StringConexaoPrincipal(), QString());
        EXPECT_EQ(ErroDe([&] { c.ReabreConexao(); }).numero(), ErroObjetoNaoDefinido);
        EXPECT_EQ(ErroDe([&] { c.Executa("SELECT 1"); }).numero(), ErroObjetoNaoDefinido);
        Registros rs;
        EXPECT_EQ(ErroDe([&] { c.AbreConsulta(rs, "SELECT 1"); }).numero(), ErroObjetoNaoDefinido);
        EXPECT_EQ(ErroDe([&] { c.AbreTabela(rs, "vendas"); }).numero(), ErroObjetoNaoDefinido);
        c.FechaConexao();
    }
}

TEST_F(ConexoesConfigTest, SemServidorBaseDadosNaoHaRemotaQualquerQueSejaVendasOnline) {
    for (const char* vendasOnline : {"VENDASONLINE=SIM", "VENDASONLINE=NAO"}) {
        Conexoes& c = Monta(
            {vendasOnline, "SERVIDORBASE=10.0.0.1", "SERVIDORBASEDADOS=", "SERVIDORUSUARIO=joao"});
        EXPECT_EQ(c.ConexaoRemota(), nullptr);
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
    rs.AddNew();
    rs.Define("cupom", "14");
    rs.Update();
    EXPECT_EQ(local->Consulta("SELECT cupom FROM ncupom").linhas.value(0).value(0).toString(),
              "14");
}

TEST_F(ConexoesConfigTest, LocalSemTabelaNemArquivoOkMasPastaInexistenteFalha) {
    Conexoes c(pasta.Caminho("nao/existe"), ambiente);
    EXPECT_EQ(ErroDe([&] { c.AbreLocal(); }).numero(), ErroProvedor);
    Registros rs;
    EXPECT_EQ(ErroDe([&] { c.AbreRecordsetLocal(rs, "ncupom"); }).numero(), ErroObjetoNaoDefinido);
}

TEST(ConexaoMariaDbTest, SenhaErradaChegaAoChamadorComOTextoDoBanco) {
    const QString host = qEnvironmentVariable("NFCE_MARIADB");
    if (host.isEmpty()) GTEST_SKIP() << "NFCE_MARIADB is not set";
    Conexao conexao(TipoBanco::MySql, StringConexaoMySql(host, "mysql", "master", "errada"));
    try {
        conexao.Abre();
        FAIL() << "opened with a wrong password";
    } catch (const ErroExecucao& erro) {
        EXPECT_EQ(erro.numero(), ErroProvedor);
        EXPECT_TRUE(erro.descricao().contains("Access denied for user 'master'")) << erro.what();
    }
    EXPECT_EQ(conexao.Estado(), 0);
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
    try {
        c.ReabreConexao();
        FAIL() << "opened a database that is not there";
    } catch (const ErroExecucao& erro) {
        EXPECT_EQ(erro.numero(), ErroProvedor);
        EXPECT_TRUE(
            erro.descricao().contains(EmSqlite() ? "file is not a database" : "Unknown database"))
            << erro.what();
    }
    EXPECT_EQ(ErroDe([&] { conexoes->Executa("SELECT * FROM nao_existe"); }).numero(),
              ErroProvedor);
}

TEST_P(ConexoesTest, RemotaInacessivelMostraAPrimeiraMensagem) {
    pasta.EscreveConfig(LinhasDosBancos() +
                        (EmSqlite()
                             ? QStringList{"SERVIDORBASEDADOS=" + BaseInexistente()}
                             : QStringList{"SERVIDORBASE=" + host(), "SERVIDORBASEDADOS=mysql",
                                           "SERVIDORUSUARIO=ninguem"}));
    conexoes->AbreConexaoRemota();
    ASSERT_NE(conexoes->ConexaoRemota(), nullptr);
    EXPECT_TRUE(ambiente.mensagens.isEmpty()); // the builder keeps its failure to itself
    conexoes->ReabreRemota();
    ASSERT_EQ(ambiente.mensagens.size(), 1);
    EXPECT_EQ(ambiente.mensagens[0].texto, TextoErro);
    EXPECT_EQ(ambiente.mensagens[0].titulo, Titulo);
    EXPECT_EQ(ambiente.mensagens[0].icone, Icone::Critico);
    EXPECT_FALSE(conexoes->RemotaConectada());
    if (EmSqlite()) {
        EXPECT_FALSE(QFileInfo::exists(pasta.Caminho(BaseInexistente())));
    }
}

TEST_P(ConexoesTest, FalhaQueNaoEDoProvedorMantemRemotaConectada) {
    CriaRemota();
    conexoes->ReabreRemota();
    EXPECT_TRUE(conexoes->RemotaConectada());
    EXPECT_TRUE(ambiente.mensagens.isEmpty());
    conexoes->ExecutaRemota("INSERT INTO produtos (codigo, estoque) VALUES (7, 10)");
    Registros rs;
    conexoes->AbreConsultaRemota(rs, "SELECT estoque FROM produtos WHERE codigo = 7");
    EXPECT_EQ(rs.Texto("estoque"), "10");

    // A rebuild with an unknown engine leaves no connection: the reopen fails with 91.
    pasta.EscreveConfig(QStringList{"TIPOBANCO=ACCESS"} + LinhasDosBancos());
    conexoes->AbreConexaoRemota();
    conexoes->ReabreRemota();
    ASSERT_EQ(ambiente.mensagens.size(), 1);
    EXPECT_TRUE(ambiente.mensagens[0].texto.startsWith(TextoErro + "\n91 Variável de objeto"));
    EXPECT_EQ(ambiente.mensagens[0].titulo, Titulo);
    EXPECT_EQ(ambiente.mensagens[0].icone, Icone::Critico);
    EXPECT_TRUE(conexoes->RemotaConectada());
}

TEST_P(ConexoesTest, EsquemaCriaTodasAsTabelasEColunas) {
    const struct {
        const char* tabela;
        const char* colunas;
    } loja[] = {
        {"vendas", "data, hora, cupom, valor, chave, autorizacao, erro, tempo, situacao, nfce, "
                   "enviotime, lote, xml, xml_info, sync, exportado, cliente, nomecliente, cgc, "
                   "Desconto, Acrescimo, Dinheiro, Cheque, CartaoDeb, CartaoCred, Outros, Vale, "
                   "pix, alimentacao, credloja, loja, caixa, forpag, vendedor, ccf, serie, "
                   "operador"},
        {"itens", "Item, codprod, nomeprod, quant, valor, valortotal, custo, Acrescimo, "
                  "Desconto, nfce, cupom, situacao, sync, exportado, data, hora, loja, caixa, "
                  "icms, trib, ccf, vendedor, cliente, nomecliente, forpag, serie"},
        {"produtos", "codigo, nome, ncm, cest, cfop, unidade, CST, icms, reducao_base, estoque, "
                     "estoquefisico"},
        {"clientes", "codigo, nome, cgc"},
        {"empresa", "mens1, mens2, pathenvio"},
        {"caixas", "nome"},
        {"forpag", "codigo, nome, plano, parc1"},
        {"orcamento", "cupom, autorizacao, tempo, emitido, cupomnfce, chave"},
        {"nfce", "dataentrada, datasaida, horaentrada, horasaida"},
    };
    for (const auto& t : loja)
        EXPECT_NO_THROW(Executa(QStringLiteral("SELECT %1 FROM %2 WHERE 1 = 0")
                                    .arg(QString::fromUtf8(t.colunas), t.tabela)))
            << t.tabela;
    CriaRemota();
    EXPECT_NO_THROW(ExecutaRemota(
        "INSERT INTO itens (data, cupom, loja, caixa, valor, quant, icms, trib, numvenda, item, "
        "custo, valortotal, ccf, codprod, nomeprod, desconto, acrescimo, vendedor, cliente, "
        "nomecliente, dataimp, comissao, arq, tipo, fisc, situacao, hora, forpag, serie ) VALUES "
        "( '2026-11-15', '5', '1', '001', '10.00', '1.234.500', 'T', 'T18', '5', '1', '0.00', "
        "'10.00', '9', '12', 'CAFÉ', '0.00', '0.00', 'ANA', '25', 'D''ÁVILA', '2026-11-16', '0', "
        "'IMP', 'V', 'EE', 'N', '10:20:30', '1', '1' )"));
    EXPECT_EQ(TextoRemoto("SELECT quant FROM itens"), "1.234.500");
    EXPECT_NO_THROW(ExecutaRemota(
        "INSERT INTO vendas (data, loja, caixa, hora, valor, desconto, acrescimo, cupom, numvenda, "
        "forpag, itens, dinheiro, cheque, cartao, cartaocred, vale, outros, vendedor, cliente, "
        "nomecliente, dtimp, ccf, arq, situacao, serie, operador, fisc, chave, autorizacao, erro, "
        "tempo, modelo, pix, alimentacao, credloja, xml_info ) VALUES ( '2026-11-15', '1', '001', "
        "'10:20:30', '10.00', '0.00', '0.00', '5', '5', '1', '0', '10.00', '0.00', '0.00', "
        "'0.00', '0.00', '0.00', 'ANA', '25', 'X', '2026-11-16', '9', 'IMP', 'N', "
        "'00000000000000000000', '3', 'E', '', '', '', '1', '65', '0.00', '0.00', '0.00', '' )"));
    EXPECT_NO_THROW(ExecutaRemota(
        "INSERT INTO contasreceber (codplano, codcli, nome, datalanc, valor, datavenc, forpgto, "
        "nomepgto, tipo, numvenda, parcela, documento, obs, valortotal, usuario ) VALUES ( '1', "
        "'25', 'X', '2026-11-15', '10.00', '2026-12-15', '1', '30 DIAS', 'V', '5', '1', "
        "'Venda 000005', 'NFCE', '10.00', '0' )"));
    EXPECT_NO_THROW(ExecutaRemota("UPDATE produtos SET estoquefisico = estoquefisico - 1.500, "
                                  "estoque = estoque - 1.500 WHERE codigo = 12"));
    // Creating again over existing tables changes nothing.
    ExecutaRemota("INSERT INTO produtos (codigo) VALUES (1)");
    Conexao mesma(EmSqlite() ? TipoBanco::Sqlite : TipoBanco::MySql,
                  conexoes->ConexaoRemota()->Origem());
    mesma.Abre();
    EXPECT_NO_THROW(CriaEsquema(mesma, "remota"));
    EXPECT_EQ(TextoRemoto("SELECT COUNT(*) FROM produtos"), "1");
}

TEST_P(ConexoesTest, TextoComAspaEAcentoIdaEVoltaIntacto) {
    const QString longo = QString(100000, u'a') + "'|\"";
    const QString casos[] = {"D'ÁVILA", "SÃO JOSÉ",       "''", "\\'", "C:\\Temp\\",
                             "a|b|c",   "\x01\x02\t\r\n", longo};
    int cupom = 0;
    for (const QString& valor : casos) {
        ++cupom;
        conexoes->Executa(QStringLiteral("INSERT INTO vendas (cupom, xml_info) VALUES (%1, '%2')")
                              .arg(QString::number(cupom), EscapaTexto(valor)));
        Registros rs;
        conexoes->AbreConsulta(rs, QStringLiteral("SELECT cupom, xml_info FROM vendas WHERE "
                                                  "xml_info = '%1'")
                                       .arg(EscapaTexto(valor)));
        ASSERT_EQ(rs.RecordCount(), 1) << cupom;
        EXPECT_EQ(rs.Texto("cupom").toInt(), cupom);
        EXPECT_EQ(rs.Texto("xml_info"), valor) << cupom;
        conexoes->Executa(QStringLiteral("UPDATE vendas SET xml_info = '%1' WHERE cupom = %2")
                              .arg(EscapaTexto(valor + "SÃO JOSÉ'"), QString::number(cupom)));
        EXPECT_EQ(Texto(QStringLiteral("SELECT xml_info FROM vendas WHERE cupom = %1").arg(cupom)),
                  valor + "SÃO JOSÉ'");
    }
}

TEST_P(ConexoesTest, DialetoSoNoSqlite) {
    Executa("INSERT INTO vendas (cupom, nfce, tempo, enviotime) VALUES (1, 10, '0', 1), "
            "(2, 11, '1', 1), (3, 0, '0', 1), (4, 12, '9', 1)");
    // The re-queuing statement runs on both; MariaDB gets it with its ORDER BY.
    EXPECT_NO_THROW(conexoes->Executa("UPDATE vendas SET enviotime = 0 WHERE tempo <> '1' AND "
                                      "nfce <> 0 AND enviotime = 1 ORDER BY cupom asc"));
    EXPECT_EQ(Texto("SELECT SUM(cupom) FROM vendas WHERE enviotime = 0"), "5");
    // An ORDER BY that SQLite never sees cannot fail there.
    const int erroOrdem =
        ErroDe([&] {
            conexoes->Executa("UPDATE vendas SET sync = true ORDER BY coluna_que_nao_ha");
        }).numero();
    EXPECT_EQ(erroOrdem, EmSqlite() ? 0 : ErroProvedor);
    // The Access-style delete is SQLite's only; MySQL gets the text as it stands.
    const int erroDelete = ErroDe([&] { conexoes->Executa("DELETE * FROM caixas"); }).numero();
    EXPECT_EQ(erroDelete, EmSqlite() ? 0 : ErroProvedor);
}

INSTANTIATE_TEST_SUITE_P(Motores, ConexoesTest, ::testing::ValuesIn(Motores()), NomeDoMotor);

} // namespace
} // namespace nfce::teste
