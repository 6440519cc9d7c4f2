#include "storage/Dialeto.h"
#include "storage/Sql.h"

#include <gtest/gtest.h>

namespace nfce {
namespace {

using namespace Qt::StringLiterals;

TEST(AdaptaSqliteTest, ReescreveSoOQueOSqliteNaoAceita) {
    // The re-queuing statement of the system first.
    const std::pair<const char*, const char*> reescritos[] = {
        {"UPDATE vendas SET enviotime = 0 WHERE tempo <> '1' AND nfce <> 0 AND enviotime = 1 "
         "ORDER BY cupom asc",
         "UPDATE vendas SET enviotime = 0 WHERE tempo <> '1' AND nfce <> 0 AND enviotime = 1"},
        {"update vendas set x = 1\n  order   by cupom desc, data;", "update vendas set x = 1;"},
        {"DELETE * FROM ncupom", "DELETE FROM ncupom"},
        {"  delete   *from ncupom", "  delete from ncupom"},
        {"INSERT INTO \"ncupom\" () VALUES ()", "INSERT INTO \"ncupom\" DEFAULT VALUES"}};
    for (const auto& [entrada, esperado] : reescritos)
        EXPECT_EQ(AdaptaSqlite(QString::fromUtf8(entrada)), QString::fromUtf8(esperado));
    // A LIMIT, the words inside text, a subquery or a comment, names that hold them, and
    // statements cut short stay as they are.
    for (const char* sql :
         {"UPDATE t SET a = 1 ORDER BY b LIMIT 5",
          "UPDATE vendas SET erro = 'ORDER BY cupom' WHERE cupom = 1",
          "UPDATE vendas SET erro = 'D''ÁVILA'' ORDER BY x' WHERE cupom = 1",
          "UPDATE t SET a = (SELECT max(b) FROM u ORDER BY b) WHERE c = 1",
          "UPDATE t SET a = 1 WHERE b = 2 -- ORDER BY c",
          "UPDATE ordem SET border = 1 WHERE by_x = 2", "SELECT * FROM vendas ORDER BY cupom",
          "DELETE FROM ncupom", "DELETE FROM t WHERE x = '* FROM'", "SELECT * FROM ncupom",
          "INSERT INTO ncupom (cupom) VALUES ( '12' )", "", "UPDATE",
          "UPDATE t SET a = 'sem fim ORDER BY"})
        EXPECT_EQ(AdaptaSqlite(QString::fromUtf8(sql)), QString::fromUtf8(sql));
}

TEST(EscapaTextoTest, DobraAspasSimplesETiraNul) {
    const std::pair<QString, QString> casos[] = {{u"D'ÁVILA"_s, u"D''ÁVILA"_s},
                                                 {u"''"_s, u"''''"_s},
                                                 {u"C:\\pasta\\"_s, u"C:\\pasta\\"_s},
                                                 {u"a|b\"c"_s, u"a|b\"c"_s},
                                                 {QString(), QString()},
                                                 {QString::fromUtf16(u"a\0b'", 4), u"ab''"_s}};
    for (const auto& [entrada, esperado] : casos)
        EXPECT_EQ(EscapaTexto(entrada), esperado);
}

} // namespace
} // namespace nfce
