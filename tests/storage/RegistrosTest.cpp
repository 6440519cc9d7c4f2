#include "apoio/BancoTeste.h"
#include "apoio/Erros.h"
#include "storage/ErroExecucao.h"

namespace nfce::teste {
namespace {

class RegistrosTest : public BancoTeste {
protected:
    void SetUp() override {
        BancoTeste::SetUp();
        if (IsSkipped()) return;
        Executa("INSERT INTO vendas (cupom, nfce, data, hora, valor, Desconto, erro) VALUES "
                "(101, 7, '2026-11-15', '10:20:30', 45.00, 0.1, NULL), "
                "(102, 8, '2026-11-16', '23:59:59', 10.5, 1234.56, 'x'), "
                "(103, 9, NULL, NULL, 0, 0, '')");
        Executa("INSERT INTO clientes (codigo, nome, cgc) VALUES (1, 'ANA', '1'), (2, 'BIA', '2')");
    }
};

TEST_P(RegistrosTest, ContagemConhecidaEPercursoAteOFim) {
    Registros rs;
    conexoes->AbreConsulta(rs, "SELECT cupom FROM vendas ORDER BY cupom");
    EXPECT_TRUE(rs.Aberto());
    EXPECT_EQ(rs.RecordCount(), 3);
    QStringList lidos;
    for (; !rs.Eof(); rs.MoveNext())
        lidos << rs.Texto("cupom");
    EXPECT_EQ(lidos, QStringList({"101", "102", "103"}));
    EXPECT_EQ(ErroDe([&] { rs.Campo("cupom"); }).numero(), ErroSemRegistroAtual);
    EXPECT_EQ(ErroDe([&] { rs.MoveNext(); }).numero(), ErroSemRegistroAtual);
    rs.MoveFirst();
    EXPECT_EQ(rs.Texto("cupom"), "101");

    conexoes->AbreConsulta(rs, "SELECT cupom FROM vendas WHERE cupom = 0");
    EXPECT_TRUE(rs.Eof());
    EXPECT_EQ(rs.RecordCount(), 0);
    EXPECT_EQ(ErroDe([&] { rs.Texto("cupom"); }).numero(), ErroSemRegistroAtual);
    EXPECT_EQ(ErroDe([&] { rs.Texto("outro"); }).numero(), ErroItemNaoEncontrado);
}

TEST_P(RegistrosTest, CamposSemDistinguirMaiusculas) {
    Registros rs;
    conexoes->AbreConsulta(rs, "SELECT cupom, Desconto, MAX(valor) AS vMax FROM vendas "
                               "WHERE cupom = 101 GROUP BY cupom, Desconto");
    for (const char* nome : {"cupom", "CUPOM", "Cupom"})
        EXPECT_EQ(rs.Texto(nome), "101");
    EXPECT_EQ(rs.Texto("desconto"), "0.1");
    EXPECT_EQ(rs.Texto("VMAX"), "45");
    for (const char* nome : {"", "cupom ", "nao_ha", "vendas.cupom"})
        EXPECT_EQ(ErroDe([&] { rs.Campo(nome); }).numero(), ErroItemNaoEncontrado) << nome;
}

TEST_P(RegistrosTest, ValoresNulosNumerosDatasEHoras) {
    Registros rs;
    conexoes->AbreConsulta(rs, "SELECT * FROM vendas ORDER BY cupom");
    EXPECT_TRUE(rs.Campo("erro").isNull());
    EXPECT_EQ(rs.Texto("erro"), "");
    EXPECT_EQ(rs.Texto("valor"), "45");
    EXPECT_EQ(rs.Texto("Desconto"), "0.1");
    EXPECT_EQ(rs.Data("data"), QDate(2026, 11, 15));
    EXPECT_EQ(rs.Texto("data"), "2026-11-15");
    EXPECT_EQ(rs.Hora("hora"), QTime(10, 20, 30));
    EXPECT_EQ(rs.Texto("hora"), "10:20:30");
    rs.MoveNext();
    EXPECT_EQ(rs.Texto("valor"), "10.5");
    EXPECT_EQ(rs.Texto("Desconto"), "1234.56");
    EXPECT_EQ(rs.Hora("hora"), QTime(23, 59, 59));
    rs.MoveNext();
    EXPECT_TRUE(rs.Campo("data").isNull());
    EXPECT_FALSE(rs.Data("data").isValid());
    EXPECT_FALSE(rs.Hora("hora").isValid());
    EXPECT_EQ(rs.Texto("valor"), "0");
    EXPECT_EQ(rs.Texto("erro"), "");
    EXPECT_FALSE(rs.Data("erro").isValid());
}

TEST_P(RegistrosTest, DatasEHorasEmTextoIncluindoLixo) {
    const struct {
        const char* data;
        const char* hora;
        QDate esperadaData;
        QTime esperadaHora;
    } casos[] = {
        {"15/11/2026", "08:05:09", QDate(2026, 11, 15), QTime(8, 5, 9)},
        {"2026-11-15", "08:05", QDate(2026, 11, 15), QTime(8, 5)},
        {"31/02/2026", "25:00:00", QDate(), QTime()},
        {"", "", QDate(), QTime()},
        {"lixo'|", "\x01\x02", QDate(), QTime()},
    };
    for (const auto& caso : casos) {
        Executa("DELETE FROM nfce");
        Executa(QStringLiteral("INSERT INTO nfce (dataentrada, horaentrada) VALUES ('%1', '%2')")
                    .arg(QString::fromUtf8(caso.data).replace("'", "''"),
                         QString::fromUtf8(caso.hora)));
        Registros rs;
        conexoes->AbreConsulta(rs, "SELECT dataentrada, horaentrada FROM nfce");
        EXPECT_EQ(rs.Data("dataentrada"), caso.esperadaData) << caso.data;
        EXPECT_EQ(rs.Hora("horaentrada"), caso.esperadaHora) << caso.hora;
    }
}

TEST_P(RegistrosTest, FechadoNaoServeParaNada) {
    Registros nunca;
    EXPECT_FALSE(nunca.Aberto());
    Registros rs;
    conexoes->AbreConsulta(rs, "SELECT cupom FROM vendas");
    rs.Fecha();
    for (Registros* r : {&nunca, &rs}) {
        EXPECT_EQ(ErroDe([&] { r->Eof(); }).numero(), ErroObjetoFechado);
        EXPECT_EQ(ErroDe([&] { r->RecordCount(); }).numero(), ErroObjetoFechado);
        EXPECT_EQ(ErroDe([&] { r->MoveNext(); }).numero(), ErroObjetoFechado);
        EXPECT_EQ(ErroDe([&] { r->MoveFirst(); }).numero(), ErroObjetoFechado);
        EXPECT_EQ(ErroDe([&] { r->Campo("cupom"); }).numero(), ErroObjetoFechado);
        EXPECT_EQ(ErroDe([&] { r->AddNew(); }).numero(), ErroObjetoFechado);
    }
    rs.Fecha();
}

TEST_P(RegistrosTest, SobreviveAoFechamentoDaConexao) {
    Registros rs;
    conexoes->AbreConsulta(rs, "SELECT cupom FROM vendas ORDER BY cupom");
    conexoes->FechaConexao();
    EXPECT_EQ(rs.RecordCount(), 3);
    rs.MoveNext();
    rs.MoveNext();
    EXPECT_EQ(rs.Texto("cupom"), "103");
}

TEST_P(RegistrosTest, ConsultaQueFalhaDeixaORecordsetFechado) {
    Registros rs;
    conexoes->AbreConsulta(rs, "SELECT cupom FROM vendas");
    EXPECT_EQ(ErroDe([&] { conexoes->AbreConsulta(rs, "SELECT x FROM nao_existe"); }).numero(),
              ErroProvedor);
    EXPECT_FALSE(rs.Aberto());
}

TEST_P(RegistrosTest, TabelaAcrescentaLinhaComChaveGerada) {
    Registros rs;
    conexoes->AbreTabela(rs, "vendas");
    EXPECT_EQ(rs.RecordCount(), 3);
    rs.AddNew();
    rs.Define("cupom", 104);
    rs.Define("nomecliente", "D'ÁVILA");
    rs.Define("data", QDate(2026, 11, 17));
    rs.Define("valor", 12.34);
    rs.Define("erro", QVariant());
    rs.Update();
    EXPECT_EQ(rs.RecordCount(), 4);
    EXPECT_FALSE(rs.Campo("id").isNull());
    EXPECT_EQ(Texto("SELECT nomecliente FROM vendas WHERE id = " + rs.Texto("id")), "D'ÁVILA");
    EXPECT_EQ(Texto("SELECT data FROM vendas WHERE cupom = 104"), "2026-11-17");
    EXPECT_EQ(Texto("SELECT valor FROM vendas WHERE cupom = 104"), "12.34");
    // Defaults of the columns not given.
    EXPECT_EQ(Conta("vendas", "cupom = 104 AND autorizacao = '' AND enviotime = 0 AND "
                              "not exportado AND erro IS NULL"),
              1);
    // A new row with nothing defined takes every default.
    rs.AddNew();
    rs.Update();
    EXPECT_EQ(Conta("vendas"), 5);
}

TEST_P(RegistrosTest, TabelaAlteraALinhaAtualPelaChave) {
    Registros rs;
    conexoes->AbreTabela(rs, "clientes");
    while (rs.Texto("codigo") != "2")
        rs.MoveNext();
    rs.Define("nome", "SÃO JOSÉ D'ÁVILA");
    rs.Define("codigo", 20); // the key itself may change: the row is found by its old value
    rs.Update();
    EXPECT_EQ(Texto("SELECT nome FROM clientes WHERE codigo = 20"), "SÃO JOSÉ D'ÁVILA");
    EXPECT_EQ(Texto("SELECT nome FROM clientes WHERE codigo = 1"), "ANA");
    // Moving on stores a pending edit.
    rs.MoveFirst();
    rs.Define("cgc", "123");
    rs.MoveNext();
    EXPECT_EQ(Texto("SELECT cgc FROM clientes WHERE codigo = 1"), "123");
    // A row that is gone cannot be updated, and the caller hears of it.
    rs.MoveFirst();
    Executa("DELETE FROM clientes WHERE codigo = 1");
    rs.Define("nome", "X");
    EXPECT_EQ(ErroDe([&] { rs.Update(); }).numero(), ErroProvedor);
}

TEST_P(RegistrosTest, SoTabelasComChaveAceitamEdicao) {
    Registros rs;
    conexoes->AbreConsulta(rs, "SELECT * FROM clientes");
    EXPECT_EQ(ErroDe([&] { rs.Define("nome", "X"); }).numero(), 3251);
    EXPECT_EQ(ErroDe([&] { rs.AddNew(); }).numero(), 3251);
    EXPECT_EQ(rs.RecordCount(), 2);
    Executa("CREATE TABLE semchave (a INT)");
    Executa("INSERT INTO semchave (a) VALUES (1)");
    conexoes->AbreTabela(rs, "semchave");
    rs.Define("a", 2);
    EXPECT_EQ(ErroDe([&] { rs.Update(); }).numero(), ErroProvedor);
    EXPECT_EQ(Texto("SELECT a FROM semchave"), "1");
    EXPECT_EQ(ErroDe([&] { conexoes->AbreTabela(rs, "nao_existe"); }).numero(), ErroProvedor);
}

INSTANTIATE_TEST_SUITE_P(Motores, RegistrosTest, ::testing::ValuesIn(Motores()), NomeDoMotor);

} // namespace
} // namespace nfce::teste
