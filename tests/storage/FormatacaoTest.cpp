#include "storage/Formatacao.h"

#include "storage/ErroExecucao.h"
#include "support/Erros.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace nfce::teste {
namespace {

using namespace Qt::StringLiterals;

constexpr double Inf = std::numeric_limits<double>::infinity();
const QString Binario = QString::fromLatin1("\x00\x01\x7f\xff\r", 5);
const QString MuitosNoves = QString(100000, u'9');
const Moeda Um = Moeda::deUnidades(1);
const Moeda Menor = Moeda::deUnidades(std::numeric_limits<qint64>::min());
const Moeda Maior = Moeda::deUnidades(std::numeric_limits<qint64>::max());

std::string T(const QString& texto) {
    return texto.toStdString();
}

std::string J(const QStringList& textos) {
    return textos.join(u'|').toStdString();
}

TEST(Formatacao, ValLeONumeroDoInicio) {
    using Casos = std::vector<std::pair<QString, double>>;
    const Casos curtos = {{u"\t-1\n2"_s, -12}, {u"1\r2"_s, 1},   {u"1,5"_s, 1},
                          {u"1.2.3"_s, 1.2},   {u"--7"_s, 0},    {u"-.5"_s, -0.5},
                          {u"2d2"_s, 200},     {u"1e+x"_s, 1},   {u"&h1f"_s, 31},
                          {u"&HFFFF"_s, -1},   {u"1e-400"_s, 0}, {Binario, 0}};
    const Casos longos = {{MuitosNoves, Inf},
                          {u"1e"_s + MuitosNoves, Inf},
                          {u"0."_s + QString(99998, u'0') + u"1e400"_s, 0}};
    for (const Casos& casos : {curtos, longos})
        for (const auto& [texto, esperado] : casos)
            EXPECT_DOUBLE_EQ(Val(texto), esperado) << T(texto.left(40));
    EXPECT_FALSE(std::signbit(Val(u"-0"_s)));
}

// Half away from zero on the shortest decimal form: binary rounding would give 2,67.
TEST(Formatacao, FormataNumeroComSeparadoresBrasileiros) {
    const std::tuple<double, const char*, const char*> casos[] = {
        {2.675, "0.00", "2,68"}, {-0.125, "0.00", "-0,13"}, {-0.004, "0.00", "0,00"},
        {5, "00", "05"},         {0.5, "#.00", ",50"},      {0, "#", ""},
        {1.5, "0.0#", "1,5"},    {1, "0.##", "1,"},         {5e-324, "0.00", "0,00"},
        {-Inf, "0", "-inf"},     {std::nan(""), "0", "nan"}};
    for (const auto& [valor, padrao, esperado] : casos)
        EXPECT_EQ(T(FormataNumero(valor, QString::fromLatin1(padrao))), esperado) << valor;
    EXPECT_EQ(J({FormataNumero(999.995, u"#,##0.00"_s), FormataNumero(-1234567.891, u"#,##0"_s),
                 FormataNumero(1234.5, u"#,###0.000"_s), FormataNumero(Menor, u"#,##0.0000"_s),
                 FormataNumero(Moeda::deUnidades(-50), u"0.00"_s),
                 FormataNumero(Moeda::deUnidades(-49), u"0.00"_s)}),
              "1.000,00|-1.234.568|1.234,500|-922.337.203.685.477,5808|-0,01|0,00");
}

TEST(Formatacao, TextoParaComandosEArquivos) {
    EXPECT_EQ(J({TextoDecimal(-0.004, 2), TextoDecimal(-1234.5, 3), TextoDecimal(7, -1),
                 TextoNumero(-0.0), TextoNumero(1e21), TextoNumero(0.000001), TextoNumero(1.25e-7),
                 TextoNumero(0.1 + 0.2), DataMySQL(QDate(1, 1, 1)), DataMySQL(QDate())}),
              "0.00|-1234.500|7|0|1e+21|0.000001|1.25e-7|0.30000000000000004|0001-01-01|");
    EXPECT_EQ(J({TiraAspas(u"' D'AVILA '"_s), TiraAspas(QVariant()),
                 LimpaTexto(u" 18.123.456/0001-04 (31)_, "_s), Zeros(u" 45 "_s, 6),
                 Zeros(QVariant(), 3), Zeros(u"1234567"_s, 6), Zeros(18123456000104.0, 14)}),
              "DAVILA||1812345600010431|000045|000|1234567|18123456000104");
}

TEST(Formatacao, ValoresEQuantidades) {
    EXPECT_EQ(ValorMoeda(2.675).unidades() + ValorMoeda(-1.005).unidades(), 26800 - 10100);
    EXPECT_EQ(J({FormataValor(-1234.5), ValorPonto(u"12,5"_s), ValorPonto(u"1.500"_s),
                 ValorPonto(u"1.234,56"_s), ValorPonto(1234.5), ValorPonto(QVariant()),
                 ValorPonto(QByteArray("3,75")), ValorPonto(Moeda::deUnidades(-5000)),
                 QuantPonto(1234.5), QuantPonto(QVariant(u"1.234,5"_s)), QuantPonto(QVariant())}),
              "-1.234,50|12.50|1.50|1234.56|1234.50|0.00|3.75|-0.50|1.234.500|1.234.500|0.000");
    EXPECT_EQ(ErroDe([] { ValorPonto(MuitosNoves); }).numero(), ErroEstouro);
}

// Trunca rounds to one more decimal (ties to even) before the downward cut.
TEST(Formatacao, ArredondaETrunca) {
    const std::tuple<double (*)(double, int), double, int, double> casos[] = {
        {Arredonda, -0.125, 2, -0.12}, {Arredonda, 1.005, 2, 1.0}, {Arredonda, 1234, -2, 1200},
        {Trunca, 1.9999999, 2, 2.0},   {Trunca, -0.339, 2, -0.34}, {Trunca, 0.95, 0, 1},
        {Trunca, 0.85, 0, 0}};
    for (const auto& [funcao, valor, casas, esperado] : casos)
        EXPECT_DOUBLE_EQ(funcao(valor, casas), esperado) << valor;
}

// Commas count only within the trimmed length; the scan skips past a removed point.
TEST(Formatacao, LeValorPeloUltimoSeparador) {
    const std::pair<QString, qint64> casos[] = {
        {u"1.500"_s, 15000},    {u"1,234.56"_s, 12345600}, {u"-1.234.567,89"_s, -12345678900},
        {u"0,00005"_s, 1},      {u"   12,50"_s, 120000},   {u"  12,50  "_s, 125000},
        {u"1..234,56"_s, 12346}};
    for (const auto& [texto, unidades] : casos)
        EXPECT_EQ(LeValor(texto).unidades(), unidades) << T(texto);
    EXPECT_EQ(LeValor(u"1"_s + QString(100000, u'.')).unidades(), 10000);
    EXPECT_EQ(ErroDe([] { LeValor(u"1.000.000.000.000.000,00"_s); }).numero(), ErroEstouro);
}

// Doubles round half away from zero on their decimal form (5e-05 is below the half in binary).
TEST(Formatacao, MoedaExataComEstouro) {
    const std::pair<double, qint64> casos[] = {
        {2.675, 26750}, {-0.00005, -1}, {0.000049999, 0}, {922337203685477.0, 9223372036854770000}};
    for (const auto& [valor, unidades] : casos)
        EXPECT_EQ(Moeda(valor).unidades(), unidades) << valor;
    Moeda soma;
    for (int i = 0; i < 10; ++i)
        soma += Moeda(0.1);
    EXPECT_EQ(soma - Moeda(1.5), -Moeda(0.5));
    for (const auto& conta : std::initializer_list<std::function<void()>>{
             [] { Moeda{922337203685478.0}; }, [] { Moeda{std::nan("")}; }, [] { Maior + Um; },
             [] { Moeda() - Menor; }})
        EXPECT_EQ(ErroDe(conta).numero(), ErroEstouro);
}

} // namespace
} // namespace nfce::teste
