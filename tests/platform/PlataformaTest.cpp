#include "platform/Registro.h"
#include "support/PastaPrograma.h"

#include <gtest/gtest.h>

namespace nfce::teste {
namespace {

using namespace Qt::StringLiterals;

// A folder that cannot be made loses the line quietly.
TEST(Registro, LinhaCarimbadaNoArquivoDoDia) {
    PastaPrograma pasta;
    pasta.EscreveArquivo(u"arquivo"_s, "x");
    const Registro registro(
        {ArquivoDoDia(pasta.Caminho(u"LOG"_s)), ArquivoDoDia(pasta.Caminho(u"arquivo/LOG"_s))});
    const QDateTime noite(QDate(2026, 11, 16), QTime(23, 59, 59));
    const QByteArray binario("\0|\x01'", 4);
    registro.Escreve(noite, u"Atenção:\r\n76\n|\r"_s);
    registro.Escreve(noite.addSecs(1), QString::fromLatin1(binario));
    registro.Escreve(noite.addSecs(2), u"fim"_s);
    EXPECT_EQ(pasta.LeArquivo(u"LOG/servidor-nfce-2026-11-16.log"_s),
              u"2026-11-16 23:59:59 Atenção: 76 | \n"_s.toUtf8());
    EXPECT_EQ(pasta.LeArquivo(u"LOG/servidor-nfce-2026-11-17.log"_s),
              "2026-11-17 00:00:00 "_ba + binario + "\n2026-11-17 00:00:01 fim\n");
    EXPECT_EQ(pasta.LeArquivo(u"arquivo"_s), "x");
}

} // namespace
} // namespace nfce::teste
