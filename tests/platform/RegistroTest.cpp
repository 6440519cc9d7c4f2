#include "platform/Registro.h"
#include "support/PastaPrograma.h"

#include <QDir>
#include <gtest/gtest.h>

namespace nfce::teste {
namespace {

using namespace Qt::StringLiterals;

const QDateTime Noite(QDate(2026, 11, 16), QTime(23, 59, 59));

// Every destination gets the same stamped line; a message never spans lines.
TEST(Registro, UmaLinhaCarimbadaParaCadaDestino) {
    QStringList a, b;
    const Registro registro({[&](const QDateTime&, const QString& l) { a.append(l); },
                             [&](const QDateTime&, const QString& l) { b.append(l); }});
    const std::pair<QString, QString> casos[] = {
        {u"cupom 101: Autorizado"_s, u"2026-11-16 23:59:59 cupom 101: Autorizado"_s},
        {u"Atenção *: 76\r\nCaminho|não 'encontrado'\n"_s,
         u"2026-11-16 23:59:59 Atenção *: 76 Caminho|não 'encontrado' "_s},
        {QString(), u"2026-11-16 23:59:59 "_s},
    };
    for (const auto& [linha, esperada] : casos)
        registro.Escreve(Noite, linha);
    for (const QStringList* linhas : {&a, &b}) {
        ASSERT_EQ(linhas->size(), 3);
        for (int i = 0; i < 3; ++i)
            EXPECT_EQ(linhas->at(i), casos[i].second);
    }
}

// One file a day, made with its folder when missing; a folder that cannot be written loses the
// line without stopping anything.
TEST(Registro, ArquivoDoDiaViraAMeiaNoite) {
    PastaPrograma pasta;
    const Registro registro({ArquivoDoDia(pasta.Caminho(u"LOG"_s))});
    const QString longa(100000, u'ç');
    registro.Escreve(Noite, u"antes"_s);
    registro.Escreve(Noite.addSecs(1), longa);
    registro.Escreve(Noite.addSecs(2), QString::fromLatin1("\0|\x01'", 4));
    EXPECT_EQ(pasta.LeArquivo(u"LOG/servidor-nfce-2026-11-16.log"_s),
              "2026-11-16 23:59:59 antes\n");
    const QByteArray depois = pasta.LeArquivo(u"LOG/servidor-nfce-2026-11-17.log"_s);
    EXPECT_EQ(depois, ("2026-11-17 00:00:00 "_ba + longa.toUtf8() + "\n2026-11-17 00:00:01 " +
                       QByteArray("\0|\x01'", 4) + "\n"));

    pasta.EscreveArquivo(u"arquivo"_s, "x");
    Registro(std::vector<Registro::Destino>{ArquivoDoDia(pasta.Caminho(u"arquivo/LOG"_s))})
        .Escreve(Noite, u"perdida"_s);
    EXPECT_EQ(pasta.LeArquivo(u"arquivo"_s), "x");
}

} // namespace
} // namespace nfce::teste
