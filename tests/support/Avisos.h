#pragma once

#include <QtGlobal>
#include <gtest/gtest.h>

namespace nfce::teste {

// A Qt warning that no test expected fails the test that caused it.
inline int avisosEsperados = 0;
class AmbienteDeAvisos : public ::testing::Environment {
public:
    void SetUp() override {
        qInstallMessageHandler([](QtMsgType tipo, const QMessageLogContext&, const QString& texto) {
            if (tipo != QtDebugMsg && tipo != QtInfoMsg && avisosEsperados == 0)
                ADD_FAILURE() << "unexpected Qt warning: " << texto.toStdString();
        });
    }
};

// Inside a test: the warnings it provokes on purpose.
struct AvisosEsperados {
    AvisosEsperados() { ++avisosEsperados; }
    ~AvisosEsperados() { --avisosEsperados; }
};

} // namespace nfce::teste
