#include "shell/tray/clsPharos.h"

#include <gtest/gtest.h>

namespace nfce::teste {
namespace {

using namespace Qt::StringLiterals;

// Each known notification number raises its one event, the others none; the icon's tip is a
// fixed field of 128 characters while the property keeps the whole text.
TEST(clsPharos, NotificacoesEDica) {
    clsPharos pharos;
    QList<int> eventos;
    const std::pair<int, void (clsPharos::*)()> sinais[] = {
        {514, &clsPharos::LeftClick},       {517, &clsPharos::RightClick},
        {515, &clsPharos::DoubleClick},     {1027, &clsPharos::BalloonHide},
        {1028, &clsPharos::BalloonTimeOut}, {1029, &clsPharos::BalloonClicked},
    };
    for (const auto& [numero, sinal] : sinais)
        QObject::connect(&pharos, sinal, [&eventos, numero] { eventos.append(numero); });
    for (const auto& [numero, sinal] : sinais)
        pharos.MouseMove(1, numero);
    for (const int outra : {512, 513, 516, 1026, 0, 65536 + 514})
        pharos.MouseMove(1, outra);
    EXPECT_EQ(eventos, (QList<int>{514, 517, 515, 1027, 1028, 1029}));

    for (const int tamanho : {128, 129}) {
        const QString texto = QString(tamanho, u'é');
        pharos.SetTooltipText(texto);
        EXPECT_EQ(pharos.TooltipText(), texto);
        EXPECT_EQ(pharos.icone().toolTip(), texto.left(128)) << tamanho;
    }
}

} // namespace
} // namespace nfce::teste
