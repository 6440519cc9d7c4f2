#include <QCoreApplication>

#include "support/Avisos.h"

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    ::testing::AddGlobalTestEnvironment(new nfce::teste::AmbienteDeAvisos);
    return RUN_ALL_TESTS();
}
