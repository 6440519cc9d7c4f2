#include "shell/tray/clsPharos.h"

#include <gtest/gtest.h>

namespace nfce::teste {
namespace {

using namespace Qt::StringLiterals;

TEST(clsPharos, CadaNotificacaoConhecidaViraUmEvento) {
    clsPharos pharos;
    QStringList eventos;
    const std::pair<void (clsPharos::*)(), QString> sinais[] = {
        {&clsPharos::LeftClick, u"LeftClick"_s},
        {&clsPharos::RightClick, u"RightClick"_s},
        {&clsPharos::DoubleClick, u"DoubleClick"_s},
        {&clsPharos::BalloonHide, u"BalloonHide"_s},
        {&clsPharos::BalloonTimeOut, u"BalloonTimeOut"_s},
        {&clsPharos::BalloonClicked, u"BalloonClicked"_s},
    };
    for (const auto& [sinal, nome] : sinais)
        QObject::connect(&pharos, sinal, [&eventos, nome] { eventos.append(nome); });

    const std::pair<int, QString> casos[] = {
        {514, u"LeftClick"_s},
        {517, u"RightClick"_s},
        {515, u"DoubleClick"_s},
        {1027, u"BalloonHide"_s},
        {1028, u"BalloonTimeOut"_s},
        {1029, u"BalloonClicked"_s},
        {512, {}},
        {513, {}},
        {516, {}},
        {518, {}},
        {1026, {}},
        {0, {}},
        {-514, {}},
        {65536 + 514, {}},
    };
    for (const auto& [mensagem, evento] : casos) {
        eventos.clear();
        pharos.MouseMove(1, mensagem);
        EXPECT_EQ(eventos, evento.isEmpty() ? QStringList() : QStringList{evento}) << mensagem;
    }
}

// The icon's tip is a fixed field of 128 characters; the property keeps the whole text.
TEST(clsPharos, DicaCortadaNoCampoDoIcone) {
    clsPharos pharos;
    for (const int tamanho : {0, 127, 128, 129, 100000}) {
        const QString texto = QString(tamanho, u'é') + u"|'\""_s;
        pharos.SetTooltipText(texto);
        EXPECT_EQ(pharos.TooltipText(), texto);
        EXPECT_EQ(pharos.icone().toolTip(), texto.left(128)) << tamanho;
    }
}

} // namespace
} // namespace nfce::teste
