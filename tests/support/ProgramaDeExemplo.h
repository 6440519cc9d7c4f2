#pragma once

#include "storage/Instalacao.h"
#include "support/AmbienteVirtual.h"
#include "support/PastaPrograma.h"

#include <gtest/gtest.h>

namespace nfce::teste {

// A ready program folder with the sample sales on the embedded database, on a virtual clock at
// 13:00 of 16/11/2026. Config.ini holds the extra lines given, then the shop's usual ones.
class ProgramaDeExemplo : public ::testing::Test {
protected:
    void SetUp() override {
        CriaPastaPrograma(pasta.caminho(), true, ambiente.Data());
        Configura({});
    }
    void Configura(const QStringList& extras) const {
        pasta.EscreveConfig(extras + QStringList{
                                         QStringLiteral("TIPOBANCO=SQLITE"),
                                         QStringLiteral("BASEDADOS=loja.db"),
                                         QStringLiteral("SERVIDORBASEDADOS=remota.db"),
                                         QStringLiteral("SERVIDORBASE=localhost"),
                                         QStringLiteral("TEMP=3"),
                                         QStringLiteral("TMPAMBNFCE=2"),
                                         QStringLiteral("REGIMETRIB=1"),
                                         QStringLiteral("ENVIOXML=NAO"),
                                     });
    }

    PastaPrograma pasta;
    AmbienteVirtual ambiente{QDateTime(QDate(2026, 11, 16), QTime(13, 0))};
};

} // namespace nfce::teste
