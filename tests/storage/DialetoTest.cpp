#include "storage/Dialeto.h"
#include "storage/Sql.h"

#include <gtest/gtest.h>

namespace nfce {
namespace {

struct Caso {
    const char* entrada;
    const char* esperado;
};

void PrintTo(const Caso& caso, std::ostream* saida) {
    *saida << caso.entrada;
}

class AdaptaSqliteTest : public ::testing::TestWithParam<Caso> {};

TEST_P(AdaptaSqliteTest, ReescreveSoOQueOSqliteNaoAceita) {
    EXPECT_EQ(AdaptaSqlite(QString::fromUtf8(GetParam().entrada)),
              QString::fromUtf8(GetParam().esperado));
}

INSTANTIATE_TEST_SUITE_P(
    Casos, AdaptaSqliteTest,
    ::testing::Values(
        // The re-queuing statement of the system.
        Caso{"UPDATE vendas SET enviotime = 0 WHERE tempo <> '1' AND nfce <> 0 AND enviotime = 1 "
             "ORDER BY cupom asc",
             "UPDATE vendas SET enviotime = 0 WHERE tempo <> '1' AND nfce <> 0 AND enviotime = 1"},
        Caso{"update vendas set x = 1\n  order   by cupom desc, data;", "update vendas set x = 1;"},
        Caso{"UPDATE t SET a = 1 ORDER BY b LIMIT 5", "UPDATE t SET a = 1 ORDER BY b LIMIT 5"},
        Caso{"UPDATE vendas SET erro = 'ORDER BY cupom' WHERE cupom = 1",
             "UPDATE vendas SET erro = 'ORDER BY cupom' WHERE cupom = 1"},
        Caso{"UPDATE vendas SET erro = 'D''ÁVILA'' ORDER BY x' WHERE cupom = 1",
             "UPDATE vendas SET erro = 'D''ÁVILA'' ORDER BY x' WHERE cupom = 1"},
        Caso{"UPDATE t SET a = (SELECT max(b) FROM u ORDER BY b) WHERE c = 1",
             "UPDATE t SET a = (SELECT max(b) FROM u ORDER BY b) WHERE c = 1"},
        Caso{"UPDATE t SET a = 1 WHERE b = 2 -- ORDER BY c",
             "UPDATE t SET a = 1 WHERE b = 2 -- ORDER BY c"},
        Caso{"UPDATE ordem SET border = 1 WHERE by_x = 2",
             "UPDATE ordem SET border = 1 WHERE by_x = 2"},
        Caso{"SELECT * FROM vendas ORDER BY cupom", "SELECT * FROM vendas ORDER BY cupom"},
        Caso{"DELETE * FROM ncupom", "DELETE FROM ncupom"},
        Caso{"  delete   *from ncupom", "  delete from ncupom"},
        Caso{"DELETE FROM ncupom", "DELETE FROM ncupom"},
        Caso{"DELETE FROM t WHERE x = '* FROM'", "DELETE FROM t WHERE x = '* FROM'"},
        Caso{"SELECT * FROM ncupom", "SELECT * FROM ncupom"},
        Caso{"INSERT INTO \"ncupom\" () VALUES ()", "INSERT INTO \"ncupom\" DEFAULT VALUES"},
        Caso{"INSERT INTO ncupom (cupom) VALUES ( '12' )",
             "INSERT INTO ncupom (cupom) VALUES ( '12' )"},
        Caso{"", ""}, Caso{"UPDATE", "UPDATE"},
        Caso{"UPDATE t SET a = 'sem fim ORDER BY", "UPDATE t SET a = 'sem fim ORDER BY"}));

TEST(EscapaTextoTest, DobraAspasSimplesETiraNul) {
    const struct {
        QString entrada;
        QString esperado;
    } casos[] = {
        {QStringLiteral("D'ÁVILA"), QStringLiteral("D''ÁVILA")},
        {QStringLiteral("''"), QStringLiteral("''''")},
        {QStringLiteral("SÃO JOSÉ"), QStringLiteral("SÃO JOSÉ")},
        {QStringLiteral("C:\\pasta\\"), QStringLiteral("C:\\pasta\\")},
        {QStringLiteral("a|b\"c"), QStringLiteral("a|b\"c")},
        {QString(), QString()},
        {QString::fromUtf16(u"a\0b'", 4), QStringLiteral("ab''")},
    };
    for (const auto& caso : casos)
        EXPECT_EQ(EscapaTexto(caso.entrada), caso.esperado);
}

} // namespace
} // namespace nfce
