#include "storage/Formatacao.h"

#include "storage/ErroExecucao.h"
#include "support/Erros.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace nfce::teste {
namespace {

using namespace Qt::StringLiterals;

constexpr double Infinito = std::numeric_limits<double>::infinity();

std::string T(const QString& texto) {
    return texto.toStdString();
}

// Hostile texts shared by the readers' tests.
const QString Binario = QString::fromLatin1("\x00\x01\x7f\xff\r", 5);
const QString MuitosNoves = QString(100000, u'9');

TEST(FormatacaoVal, ReadsTheLeadingNumberAsClassicBasicDoes) {
    using Casos = std::vector<std::pair<QString, double>>;
    const Casos curtos = {
        {u""_s, 0},          {u"abc"_s, 0},     {u"1.5"_s, 1.5},         {u"1,5"_s, 1},
        {u"-12.5"_s, -12.5}, {u"+7"_s, 7},      {u"- 7"_s, -7},          {u"--7"_s, 0},
        {u"-.5"_s, -0.5},    {u"1.2.3"_s, 1.2}, {u"1E-2"_s, 0.01},       {u"2d2"_s, 200},
        {u"1e+x"_s, 1},      {u"1 e 2"_s, 100}, {u"\t1\n2"_s, 12},       {u"1\r2"_s, 1},
        {u"12|34"_s, 12},    {u"'5'"_s, 0},     {u"\"5\""_s, 0},         {u"&h1f"_s, 31},
        {u"&O17"_s, 15},     {u"&HFFFF"_s, -1}, {u"&H10000"_s, 65536},   {u"&HFFFFFFFF"_s, -1},
        {u"&H"_s, 0},        {u"&17"_s, 0},     {u"1e400"_s, Infinito},  {u"-1e400"_s, -Infinito},
        {u"1e-400"_s, 0},    {Binario, 0},      {MuitosNoves, Infinito}, {u"-0"_s, 0}};
    const Casos longos = {
        {u"  1615 198th Street N.E."_s, 1615198}, {u"0.000000000000000000001e21"_s, 1},
        {u"12"_s + Binario + u"3"_s, 12},         {u"0."_s + QString(99998, u'0') + u"1"_s, 0},
        {QString(100000, u' ') + u"5"_s, 5},      {u"&H"_s + QString(100000, u'F'), Infinito},
        {u"1e"_s + MuitosNoves, Infinito}};
    for (const Casos& casos : {curtos, longos})
        for (const auto& [texto, esperado] : casos)
            EXPECT_DOUBLE_EQ(Val(texto), esperado) << T(texto.left(40));
    EXPECT_FALSE(std::signbit(Val(u"-0"_s)));
}

TEST(FormatacaoNumero, FollowsPatternsWithBrazilianSeparators) {
    // Binary rounding would give 2,67 for 2.675.
    using Casos = std::vector<std::tuple<double, const char*, const char*>>;
    const Casos curtos = {{2.675, "0.00", "2,68"},
                          {1.005, "0.00", "1,01"},
                          {-0.125, "0.00", "-0,13"},
                          {-0.004, "0.00", "0,00"},
                          {99.995, "0.00", "100,00"},
                          {999, "#,##0.00", "999,00"},
                          {2.5, "0", "3"},
                          {-2.5, "0", "-3"},
                          {-0.4, "0", "0"},
                          {5, "00", "05"},
                          {0.5, "#.00", ",50"},
                          {0, "#", ""},
                          {1.5, "0.0#", "1,5"},
                          {1.25, "0.0#", "1,25"},
                          {1, "0.##", "1,"},
                          {5e-324, "0.00", "0,00"},
                          {Infinito, "0.00", "inf"},
                          {-Infinito, "#,##0.00", "-inf"},
                          {std::nan(""), "0.00", "nan"}};
    const Casos longos = {{999.995, "#,##0.00", "1.000,00"},
                          {1000000, "#,##0.00", "1.000.000,00"},
                          {-1234567.891, "#,##0.00", "-1.234.567,89"},
                          {1234.5, "#,###0.000", "1.234,500"},
                          {123456789012345678.0, "#,##0", "123.456.789.012.345.680"},
                          {1e21, "0", "1000000000000000000000"},
                          {0.1 + 0.2, "0.00000000000000000", "0,30000000000000004"}};
    for (const Casos& casos : {curtos, longos})
        for (const auto& [valor, padrao, esperado] : casos)
            EXPECT_EQ(T(FormataNumero(valor, QString::fromLatin1(padrao))), esperado) << valor;
    EXPECT_EQ(FormataNumero(1e300, u"0.00"_s), u"1"_s + QString(300, u'0') + u",00"_s);
    const QString maximo = FormataNumero(std::numeric_limits<double>::max(), u"#,##0.00"_s);
    EXPECT_TRUE(maximo.startsWith(u"179.769.313.486.231.570.000."_s));
    EXPECT_EQ(maximo.size(), 309 + 102 + 3);
    for (const char* padrao : {"", ".", ",", "0.0.0", "R$ 0.00", "0%", "0.00;(0.00)"})
        EXPECT_EQ(ErroDe([&] { FormataNumero(1.0, QString::fromLatin1(padrao)); }).numero(),
                  ErroArgumentoInvalido)
            << padrao;
}

TEST(FormatacaoNumero, FormatsMoneyFromItsExactCount) {
    const Moeda maior = Moeda::deUnidades(std::numeric_limits<qint64>::max());
    const Moeda menor = Moeda::deUnidades(std::numeric_limits<qint64>::min());
    EXPECT_EQ(T(FormataNumero(maior, u"#,##0.0000"_s)), "922.337.203.685.477,5807");
    EXPECT_EQ(T(FormataNumero(menor, u"#,##0.0000"_s)), "-922.337.203.685.477,5808");
    EXPECT_EQ(T(FormataNumero(maior, u"0.00"_s)), "922337203685477,58");
    EXPECT_EQ(T(FormataNumero(Moeda::deUnidades(-50), u"0.00"_s)), "-0,01");
    EXPECT_EQ(T(FormataNumero(Moeda::deUnidades(-49), u"0.00"_s)), "0,00");
}

TEST(FormatacaoNumero, WritesPlainTextForStatementsAndFiles) {
    EXPECT_EQ(T(TextoDecimal(2.675, 2)), "2.68");
    EXPECT_EQ(T(TextoDecimal(-0.004, 2)), "0.00");
    EXPECT_EQ(T(TextoDecimal(-1234.5, 3)), "-1234.500");
    EXPECT_EQ(T(TextoDecimal(7, -1)), "7");
    const std::pair<double, const char*> casos[] = {{12.5, "12.5"},       {-0.0, "0"},
                                                    {1e21, "1e+21"},      {0.000001, "0.000001"},
                                                    {1.25e-7, "1.25e-7"}, {Infinito, "inf"}};
    for (const auto& [valor, esperado] : casos)
        EXPECT_EQ(T(TextoNumero(valor)), esperado);
    EXPECT_EQ(T(TextoNumero(0.1 + 0.2) + TextoNumero(18123456000104.0) + TextoNumero(1e20)),
              "0.3000000000000000418123456000104100000000000000000000");
    EXPECT_EQ(T(DataMySQL(QDate(1, 1, 1))), "0001-01-01");
    EXPECT_EQ(T(DataMySQL(QDate())), "");
}

TEST(FormatacaoValor, RoundsMoneyThroughTheFormattedText) {
    const std::pair<double, qint64> casos[] = {{1234.5, 12345000}, {2.675, 26800},
                                               {-1.005, -10100},   {-0.004, 0},
                                               {0.1 + 0.2, 3000},  {999999999.995, 10000000000000}};
    for (const auto& [valor, unidades] : casos)
        EXPECT_EQ(ValorMoeda(valor).unidades(), unidades) << valor;
    for (double valor : {1e15, 1e300, Infinito, std::nan("")})
        EXPECT_EQ(ErroDe([&] { ValorMoeda(valor); }).numero(), ErroEstouro) << valor;
    EXPECT_EQ(T(FormataValor(-1234.5)), "-1.234,50");
    EXPECT_EQ(T(FormataValor(999.999)), "1.000,00");
}

TEST(FormatacaoValor, WritesAmountsAndQuantitiesWithAPoint) {
    const std::pair<QVariant, const char*> valores[] = {
        {u"12,5"_s, "12.50"},   {u"12.50"_s, "12.50"},
        {u"1.500"_s, "1.50"},   {u"-0,005"_s, "-0.01"},
        {u"12|5"_s, "12.00"},   {Binario, "0.00"},
        {1234.5, "1234.50"},    {-0.004, "0.00"},
        {2.675, "2.68"},        {7, "7.00"},
        {u"D'AVILA"_s, "0.00"}, {u"1.234,56"_s, "1234.56"}};
    for (const auto& [valor, esperado] : valores)
        EXPECT_EQ(T(ValorPonto(valor)), esperado) << T(valor.toString());
    EXPECT_EQ(T(ValorPonto(u"   "_s) + ValorPonto(QVariant()) + ValorPonto(QByteArray("3,75"))),
              "0.000.003.75");
    EXPECT_EQ(T(ValorPonto(Moeda::deUnidades(123456))), "12.35");
    EXPECT_EQ(T(ValorPonto(Moeda::deUnidades(-5000))), "-0.50");
    EXPECT_EQ(ErroDe([] { ValorPonto(MuitosNoves); }).numero(), ErroEstouro);
    const std::pair<double, const char*> quantidades[] = {
        {2, "2.000"},     {999, "999.000"},  {1234.5, "1.234.500"},     {999.9996, "1.000.000"},
        {-1.5, "-1.500"}, {0.0005, "0.001"}, {1000000, "1.000.000.000"}};
    for (const auto& [valor, esperado] : quantidades)
        EXPECT_EQ(T(QuantPonto(valor)), esperado) << valor;
    EXPECT_EQ(T(QuantPonto(QVariant(u"1.234,5"_s))), "1.234.500");
    EXPECT_EQ(T(QuantPonto(QVariant())) + T(QuantPonto(QVariant(3))), "0.0003.000");
}

TEST(FormatacaoArredonda, RoundsHalvesUpOrCutsOnTheBinaryValue) {
    const std::tuple<double, int, double> arredonda[] = {
        {0.125, 2, 0.13}, {-0.125, 2, -0.12}, {2.5, 0, 3},       {-2.5, 0, -2},
        {2.675, 2, 2.68}, {1234, -2, 1200},   {1e300, 2, 1e300}, {1.005, 2, 1.0}};
    for (const auto& [valor, casas, esperado] : arredonda)
        EXPECT_DOUBLE_EQ(Arredonda(valor, casas), esperado) << valor;
    // Rounded to one more decimal (ties to even) before the cut: 99.99 is 100.0 first.
    const std::tuple<double, int, double> trunca[] = {
        {0.339, 2, 0.33}, {1.9999999, 2, 2.0}, {-0.339, 2, -0.34}, {0.9949, 2, 0.99},
        {0.95, 0, 1},     {0.85, 0, 0},        {0.9999, 2, 1.0}};
    for (const auto& [valor, casas, esperado] : trunca)
        EXPECT_DOUBLE_EQ(Trunca(valor, casas), esperado) << valor;
}

// Commas are searched for within the trimmed length only ("   12,50"); the scan passes over
// the character after a removed point ("1..234,56").
TEST(FormatacaoLeValor, TakesTheLastSeparatorAsDecimalPoint) {
    using Casos = std::vector<std::pair<QString, qint64>>;
    const Casos curtos = {
        {u""_s, 0},        {u"1.500"_s, 15000},     {u"1,2,3"_s, 123000},   {u"0,00005"_s, 1},
        {u"0,00004"_s, 0}, {u"R$ 12,50"_s, 0},      {u"12|34"_s, 120000},   {u"12'5"_s, 120000},
        {Binario, 0},      {u"1..234,56"_s, 12346}, {u"1.2345678"_s, 12346}};
    const Casos longos = {{u"   12,50"_s, 120000},
                          {u"1.234,56"_s, 12345600},
                          {u"1,234.56"_s, 12345600},
                          {u"-1.234,56"_s, -12345600},
                          {u"  12,50  "_s, 125000},
                          {u"1.234.567,89"_s, 12345678900},
                          {u"12,5"_s + Binario + u"9"_s, 125000},
                          {u"1"_s + QString(100000, u'.'), 10000},
                          {QString(100000, u',') + u"5"_s, 0}};
    for (const Casos& casos : {curtos, longos})
        for (const auto& [texto, unidades] : casos)
            EXPECT_EQ(LeValor(texto).unidades(), unidades) << T(texto.left(40));
    EXPECT_EQ(ErroDe([] { LeValor(MuitosNoves + u",5"_s); }).numero(), ErroEstouro);
    EXPECT_EQ(ErroDe([] { LeValor(u"1.000.000.000.000.000,00"_s); }).numero(), ErroEstouro);
}

TEST(FormatacaoTexto, QuotesDocumentsAndCodes) {
    using Funcao = QString (*)(const QVariant&);
    const Funcao tiraAspas = TiraAspas, limpaTexto = LimpaTexto;
    const Funcao zeros6 = [](const QVariant& v) { return Zeros(v, 6); };
    const std::tuple<Funcao, QVariant, QString> casos[] = {
        {tiraAspas, QVariant(), u""_s},
        {tiraAspas, u"  D'AVILA  "_s, u"DAVILA"_s},
        {tiraAspas, u"' x '"_s, u"x"_s},
        {tiraAspas, u"a|b \"c\""_s, u"a|b \"c\""_s},
        {tiraAspas, u"\tX\t"_s, u"\tX\t"_s},
        {tiraAspas, 12.5, u"12.5"_s},
        {tiraAspas, QString(100000, u'\''), u""_s},
        {tiraAspas, Binario, Binario},
        {limpaTexto, u"18.123.456/0001-04"_s, u"18123456000104"_s},
        {limpaTexto, u"(31) 3333-4444"_s, u"3133334444"_s},
        {limpaTexto, u"  30.140-071  "_s, u"30140071"_s},
        {limpaTexto, u"a_b,c;d"_s, u"abc;d"_s},
        {limpaTexto, u"12|34'5\"\t"_s, u"12|34'5\"\t"_s},
        {limpaTexto, 31.5, u"315"_s},
        {limpaTexto, QString(100000, u'.'), u""_s},
        {limpaTexto, Binario, Binario},
        {zeros6, 45, u"000045"_s},
        {zeros6, u" 45 "_s, u"000045"_s},
        {zeros6, 12.5, u"0012.5"_s},
        {zeros6, QVariant(), u"000000"_s},
        {zeros6, -5, u"0000-5"_s},
        {zeros6, u"1234567"_s, u"1234567"_s},
        {zeros6, MuitosNoves, MuitosNoves}};
    for (const auto& [funcao, valor, esperado] : casos)
        EXPECT_EQ(T(funcao(valor)), T(esperado)) << T(valor.toString().left(40));
    EXPECT_EQ(T(Zeros(18123456000104.0, 14)), "18123456000104");
    EXPECT_EQ(T(Zeros(7, -1)), "7");
}

} // namespace
} // namespace nfce::teste
