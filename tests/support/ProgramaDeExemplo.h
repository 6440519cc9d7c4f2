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
        pasta.EscreveConfig(extras + u"TIPOBANCO=SQLITE|BASEDADOS=loja.db|"
                                     "SERVIDORBASEDADOS=remota.db|SERVIDORBASE=localhost|TEMP=3|"
                                     "TMPAMBNFCE=2|REGIMETRIB=1|ENVIOXML=NAO"_s.split(u'|'));
    }

    PastaPrograma pasta;
    AmbienteVirtual ambiente{QDateTime(QDate(2026, 11, 16), QTime(13, 0))};
};

} // namespace nfce::teste
