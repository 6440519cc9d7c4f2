#include "storage/ErroExecucao.h"
#include "support/BancoTeste.h"
#include "support/Erros.h"

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
    // The rows outlive the connection.
    conexoes->FechaConexao();
    rs.MoveFirst();
    EXPECT_EQ(rs.Texto("cupom"), "101");
    EXPECT_EQ(rs.RecordCount(), 3);

    conexoes->ReabreConexao();
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

// Nulls read as "", numbers in their shortest form, dates and times as SQL writes them; the
// typed readers give invalid values for nulls and for text that is no date or time.
TEST_P(RegistrosTest, ValoresNulosNumerosDatasEHoras) {
    Registros rs;
    conexoes->AbreConsulta(rs,
                           "SELECT erro, valor, Desconto, data, hora FROM vendas ORDER BY cupom");
    EXPECT_TRUE(rs.Campo("erro").isNull());
    for (const char* linha :
         {"|45|0.1|2026-11-15|10:20:30", "x|10.5|1234.56|2026-11-16|23:59:59", "|0|0||"}) {
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
        {"", "", QDate(), QTime()},
        {"lixo''|", "\x01\x02", QDate(), QTime()}};
    for (const auto& [data, hora, esperadaData, esperadaHora] : casos) {
        Executa("DELETE FROM nfce");
        Executa(QStringLiteral("INSERT INTO nfce (dataentrada, horaentrada) VALUES ('%1', '%2')")
                    .arg(data, hora));
        conexoes->AbreConsulta(rs, "SELECT dataentrada, horaentrada FROM nfce");
        EXPECT_EQ(rs.Data("dataentrada"), esperadaData) << data;
        EXPECT_EQ(rs.Hora("horaentrada"), esperadaHora) << hora;
    }
}

// Never opened, closed, or left closed by a query that failed.
TEST_P(RegistrosTest, FechadoNaoServeParaNada) {
    Registros nunca, rs, falhou;
    conexoes->AbreConsulta(rs, "SELECT cupom FROM vendas");
    rs.Fecha();
    conexoes->AbreConsulta(falhou, "SELECT cupom FROM vendas");
    EXPECT_EQ(ErroDe([&] { conexoes->AbreConsulta(falhou, "SELECT x FROM nao_existe"); }).numero(),
              ErroProvedor);
    for (Registros* r : {&nunca, &rs, &falhou}) {
        EXPECT_FALSE(r->Aberto());
        EXPECT_EQ(ErroDe([&] { r->Eof(); }).numero(), ErroObjetoFechado);
        EXPECT_EQ(ErroDe([&] { r->RecordCount(); }).numero(), ErroObjetoFechado);
        EXPECT_EQ(ErroDe([&] { r->MoveNext(); }).numero(), ErroObjetoFechado);
        EXPECT_EQ(ErroDe([&] { r->MoveFirst(); }).numero(), ErroObjetoFechado);
        EXPECT_EQ(ErroDe([&] { r->Campo("cupom"); }).numero(), ErroObjetoFechado);
    }
    rs.Fecha();
}

// A table opened by name gives all its rows, whatever the quotes of its name need.
TEST_P(RegistrosTest, TabelaPeloNome) {
    Registros rs;
    conexoes->AbreTabela(rs, "vendas");
    EXPECT_EQ(rs.RecordCount(), 3);
    EXPECT_TRUE(rs.Campos().contains("nomecliente", Qt::CaseInsensitive));
    EXPECT_EQ(ErroDe([&] { conexoes->AbreTabela(rs, "nao_existe"); }).numero(), ErroProvedor);
    EXPECT_EQ(ErroDe([&] { conexoes->AbreTabela(rs, "vendas` WHERE 1=0 --"); }).numero(),
              ErroProvedor);
    EXPECT_FALSE(rs.Aberto());
}

INSTANTIATE_TEST_SUITE_P(Motores, RegistrosTest, ::testing::ValuesIn(Motores()), NomeDoMotor);

} // namespace
} // namespace nfce::teste
