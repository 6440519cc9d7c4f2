#include "nfce/CampoLimpo.h"

#include <gtest/gtest.h>

namespace nfce::teste {
namespace {

using namespace Qt::StringLiterals;

TEST(CampoLimpo, NadaQueQuebreORegistroETextoComumIntacto) {
    const std::tuple<QString, qsizetype, QString> casos[] = {
        {u"  Açúcar D'Ávila; CAFÉ \"10\" µß Nº 5 €  "_s, 60,
         u"  Açúcar D'Ávila; CAFÉ \"10\" µß Nº 5 €  "_s},
        {u"RUA|X"_s, 60, u"RUA X"_s},
        {u"ARROZ\r\nI|999|X"_s, 120, u"ARROZ  I 999 X"_s},
        {u"A\tB\x01"_s + QChar(0x7F) + QChar(0x85) + QChar(0) + u"C"_s, 60, u"A B    C"_s},
        {u"ő\u0141\U0001F600\uFB01\U0001D400\u200B\uFF5C"_s + QChar(0xD800), 60, u"ofiA "_s},
        {u"a\u0303o"_s, 60, u"ão"_s},
        {QString(100000, u'x'), 120, QString(120, u'x')},
        {u"ab\U0001F600c|d"_s, 4, u"abc "_s},
        {QString(), 60, QString()},
    };
    for (const auto& [texto, maximo, esperado] : casos)
        EXPECT_EQ(CampoLimpo(texto, maximo), esperado) << texto.left(40).toStdString();
}

} // namespace
} // namespace nfce::teste
