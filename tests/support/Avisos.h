#pragma once

#include <QStringList>
#include <gtest/gtest.h>

namespace nfce::teste {

// Qt warnings that no test expected fail the test that caused them.
class AmbienteDeAvisos : public ::testing::Environment {
public:
    void SetUp() override;
};

// Inside a test: warnings that the test provokes on purpose.
class AvisosEsperados {
public:
    AvisosEsperados();
    ~AvisosEsperados();
};

} // namespace nfce::teste
