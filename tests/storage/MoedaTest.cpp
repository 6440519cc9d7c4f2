#include "storage/Moeda.h"

#include "storage/ErroExecucao.h"
#include "support/Erros.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace nfce::teste {
namespace {

const Moeda Maior = Moeda::deUnidades(std::numeric_limits<qint64>::max());
const Moeda Menor = Moeda::deUnidades(std::numeric_limits<qint64>::min());

// Half away from zero on the decimal form: 5e-05 is a hair below the half in binary.
TEST(Moeda, RoundsDoublesHalfAwayFromZeroOnTheirDecimalForm) {
    const std::pair<double, qint64> casos[] = {
        {-0.0, 0},           {12.5, 125000},     {2.675, 26750},
        {0.00005, 1},        {-0.00005, -1},     {0.000049999, 0},
        {1.23456789, 12346}, {-1.23455, -12346}, {0.1 + 0.2, 3000},
        {1.99999999, 20000}, {1e-300, 0},        {922337203685477.0, 9223372036854770000}};
    for (const auto& [valor, unidades] : casos)
        EXPECT_EQ(Moeda(valor).unidades(), unidades) << valor;
    const double infinito = std::numeric_limits<double>::infinity();
    for (double valor : {-1e15, 922337203685478.0, infinito, -infinito, std::nan("")})
        EXPECT_EQ(ErroDe([&] { Moeda{valor}; }).numero(), ErroEstouro) << valor;
}

TEST(Moeda, ArithmeticIsExactAndRaisesOverflowLeavingTheRange) {
    Moeda soma;
    for (int i = 0; i < 10; ++i)
        soma += Moeda(0.1);
    EXPECT_EQ(soma, Moeda(1.0));
    EXPECT_EQ(Moeda(1.0) - Moeda(0.99), Moeda(0.01));
    soma -= Moeda(1.5);
    EXPECT_EQ(-soma, Moeda(0.5));
    EXPECT_DOUBLE_EQ(Moeda::deUnidades(123456).paraDouble(), 12.3456);
    EXPECT_LT(Moeda(-0.0001), Moeda());
    EXPECT_GT(Moeda(10.0), Moeda(9.9999));
    EXPECT_LE(Moeda(1.0), Moeda::deUnidades(10000));
    EXPECT_NE(Moeda(1.0), Moeda(1.0001));
    const Moeda um = Moeda::deUnidades(1);
    EXPECT_EQ(ErroDe([&] { Maior + um; }).numero(), ErroEstouro);
    EXPECT_EQ(ErroDe([&] { Menor - um; }).numero(), ErroEstouro);
    EXPECT_EQ(ErroDe([&] { Menor + -um; }).numero(), ErroEstouro);
    EXPECT_EQ(ErroDe([&] { -Menor; }).numero(), ErroEstouro);
    EXPECT_EQ(ErroDe([&] { Moeda() - Menor; }).numero(), ErroEstouro);
    EXPECT_EQ(-um - Menor, Maior);
    EXPECT_EQ(-Maior - um, Menor);
}

} // namespace
} // namespace nfce::teste
