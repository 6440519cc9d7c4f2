#include "storage/Formatacao.h"

#include "apoio/Erros.h"
#include "storage/ErroExecucao.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
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

struct CasoTexto {
    QStringView entrada;
    const char* esperado;
};

TEST(FormatacaoVal, ReadsTheLeadingNumberAsClassicBasicDoes) {
    const struct {
        QStringView texto;
        double esperado;
    } casos[] = {
        {u"", 0},
        {u"abc", 0},
        {u"  1615 198th Street N.E.", 1615198},
        {u"1.5", 1.5},
        {u"1,5", 1},
        {u"-12.5", -12.5},
        {u"+7", 7},
        {u"- 7", -7},
        {u"--7", 0},
        {u".5", 0.5},
        {u"-.5", -0.5},
        {u"5.", 5},
        {u"1.2.3", 1.2},
        {u"1e3", 1000},
        {u"1E-2", 0.01},
        {u"2d2", 200},
        {u"1e", 1},
        {u"1e+x", 1},
        {u"1 e 2", 100},
        {u"\t1\n2", 12},
        {u"1\r2", 1},
        {u"12|34", 12},
        {u"'5'", 0},
        {u"\"5\"", 0},
        {u"&H1F", 31},
        {u"&h1f", 31},
        {u"&O17", 15},
        {u"&HFFFF", -1},
        {u"&H10000", 65536},
        {u"&HFFFFFFFF", -1},
        {u"&H", 0},
        {u"&17", 0},
        {u"1e400", Infinito},
        {u"-1e400", -Infinito},
        {u"1e-400", 0},
        {u"0.000000000000000000001e21", 1},
    };
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.texto.toString().toStdString());
        EXPECT_DOUBLE_EQ(Val(caso.texto.toString()), caso.esperado);
    }
}

TEST(FormatacaoVal, SurvivesHostileText) {
    EXPECT_FALSE(std::signbit(Val(u"-0"_s)));
    EXPECT_EQ(Val(u"12"_s + Binario + u"3"_s), 12);
    EXPECT_EQ(Val(Binario), 0);
    EXPECT_EQ(Val(MuitosNoves), Infinito);
    EXPECT_EQ(Val(u"0."_s + QString(99998, u'0') + u"1"_s), 0);
    EXPECT_EQ(Val(QString(100000, u' ') + u"5"_s), 5);
    EXPECT_EQ(Val(u"&H"_s + QString(100000, u'F')), Infinito);
    EXPECT_EQ(Val(u"1e"_s + MuitosNoves), Infinito);
}

TEST(FormatacaoNumero, FollowsPatternsWithBrazilianSeparators) {
    const struct {
        double valor;
        const char* padrao;
        const char* esperado;
    } casos[] = {
        {0, "0.00", "0,00"},
        {2.675, "0.00", "2,68"}, // binary rounding would give 2,67
        {1.005, "0.00", "1,01"},
        {0.125, "0.00", "0,13"},
        {-0.125, "0.00", "-0,13"},
        {-0.004, "0.00", "0,00"},
        {-0.005, "0.00", "-0,01"},
        {99.995, "0.00", "100,00"},
        {999, "#,##0.00", "999,00"},
        {999.995, "#,##0.00", "1.000,00"},
        {1000, "#,##0.00", "1.000,00"},
        {1000000, "#,##0.00", "1.000.000,00"},
        {-1234567.891, "#,##0.00", "-1.234.567,89"},
        {1234.5, "#,###0.000", "1.234,500"},
        {0.5, "#,###0.000", "0,500"},
        {0.5, "0", "1"},
        {2.5, "0", "3"},
        {-2.5, "0", "-3"},
        {0.4, "0", "0"},
        {-0.4, "0", "0"},
        {5, "00", "05"},
        {0.5, "#.00", ",50"},
        {0, "#", ""},
        {1.5, "0.0#", "1,5"},
        {1.25, "0.0#", "1,25"},
        {1, "0.##", "1,"},
        {123456789012345678.0, "#,##0", "123.456.789.012.345.680"},
        {1e21, "0", "1000000000000000000000"},
        {0.1 + 0.2, "0.00000000000000000", "0,30000000000000004"},
        {1e-300, "0.00", "0,00"},
        {5e-324, "0.00", "0,00"},
        {Infinito, "0.00", "inf"},
        {-Infinito, "#,##0.00", "-inf"},
        {std::nan(""), "0.00", "nan"},
    };
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.valor);
        EXPECT_EQ(T(FormataNumero(caso.valor, QString::fromLatin1(caso.padrao))), caso.esperado);
    }
}

TEST(FormatacaoNumero, WritesEveryDigitOfHugeValues) {
    EXPECT_EQ(FormataNumero(1e300, u"0.00"_s), u"1"_s + QString(300, u'0') + u",00"_s);
    const QString maximo = FormataNumero(std::numeric_limits<double>::max(), u"#,##0.00"_s);
    EXPECT_TRUE(maximo.startsWith(u"179.769.313.486.231.570.000."_s));
    EXPECT_EQ(maximo.size(), 309 + 102 + 3);
}

TEST(FormatacaoNumero, FormatsMoneyFromItsExactCount) {
    const Moeda maior = Moeda::deUnidades(std::numeric_limits<qint64>::max());
    const Moeda menor = Moeda::deUnidades(std::numeric_limits<qint64>::min());
    EXPECT_EQ(T(FormataNumero(maior, u"#,##0.0000"_s)), "922.337.203.685.477,5807");
    EXPECT_EQ(T(FormataNumero(menor, u"#,##0.0000"_s)), "-922.337.203.685.477,5808");
    EXPECT_EQ(T(FormataNumero(maior, u"0.00"_s)), "922337203685477,58");
    EXPECT_EQ(T(FormataNumero(Moeda::deUnidades(-50), u"0.00"_s)), "-0,01");
    EXPECT_EQ(T(FormataNumero(Moeda::deUnidades(-49), u"0.00"_s)), "0,00");
    EXPECT_EQ(T(FormataNumero(Moeda(), u"#,##0.00"_s)), "0,00");
}

TEST(FormatacaoNumero, RejectsPatternsItDoesNotKnow) {
    for (const char* padrao : {"", ".", ",", "0.0.0", "R$ 0.00", "0%", "0.00;(0.00)"}) {
        SCOPED_TRACE(padrao);
        EXPECT_EQ(ErroDe([&] { FormataNumero(1.0, QString::fromLatin1(padrao)); }).numero(),
                  ErroArgumentoInvalido);
    }
}

TEST(FormatacaoNumero, WritesPlainTextForStatementsAndFiles) {
    EXPECT_EQ(T(TextoDecimal(2.675, 2)), "2.68");
    EXPECT_EQ(T(TextoDecimal(-0.004, 2)), "0.00");
    EXPECT_EQ(T(TextoDecimal(-1234.5, 3)), "-1234.500");
    EXPECT_EQ(T(TextoDecimal(0.5, 0)), "1");
    EXPECT_EQ(T(TextoDecimal(7, -1)), "7");
    const struct {
        double valor;
        const char* esperado;
    } casos[] = {
        {45, "45"},
        {12.5, "12.5"},
        {-3, "-3"},
        {-0.0, "0"},
        {0.1 + 0.2, "0.30000000000000004"},
        {18123456000190.0, "18123456000190"},
        {1e20, "100000000000000000000"},
        {1e21, "1e+21"},
        {1.5e300, "1.5e+300"},
        {0.000001, "0.000001"},
        {1.25e-7, "1.25e-7"},
        {Infinito, "inf"},
    };
    for (const auto& caso : casos)
        EXPECT_EQ(T(TextoNumero(caso.valor)), caso.esperado);
}

TEST(FormatacaoData, WritesTheSqlDate) {
    EXPECT_EQ(T(DataMySQL(QDate(2026, 3, 5))), "2026-03-05");
    EXPECT_EQ(T(DataMySQL(QDate(1, 1, 1))), "0001-01-01");
    EXPECT_EQ(T(DataMySQL(QDate(9999, 12, 31))), "9999-12-31");
    EXPECT_EQ(T(DataMySQL(QDate())), "");
}

TEST(FormatacaoValor, RoundsMoneyThroughTheFormattedText) {
    const struct {
        double valor;
        qint64 unidades;
    } casos[] = {
        {1234.5, 12345000}, {2.675, 26800},    {-1.005, -10100},
        {-0.004, 0},        {0.1 + 0.2, 3000}, {999999999.995, 10000000000000},
    };
    for (const auto& caso : casos)
        EXPECT_EQ(ValorMoeda(caso.valor).unidades(), caso.unidades) << caso.valor;
    for (double valor : {1e15, 1e300, Infinito, std::nan("")})
        EXPECT_EQ(ErroDe([&] { ValorMoeda(valor); }).numero(), ErroEstouro) << valor;
}

TEST(FormatacaoValor, FormatsForDisplay) {
    EXPECT_EQ(T(FormataValor(1234.5)), "1.234,50");
    EXPECT_EQ(T(FormataValor(-1234.5)), "-1.234,50");
    EXPECT_EQ(T(FormataValor(999.999)), "1.000,00");
    EXPECT_EQ(T(FormataValor(0.5)), "0,50");
    EXPECT_EQ(T(FormataValor(0)), "0,00");
}

TEST(FormatacaoValor, WritesAmountsWithAPoint) {
    const struct {
        QVariant valor;
        const char* esperado;
    } casos[] = {
        {QVariant(), "0.00"}, {QString(), "0.00"},    {u"   "_s, "0.00"},
        {u"12,5"_s, "12.50"}, {u"12.50"_s, "12.50"},  {u"1.234,56"_s, "1234.56"},
        {u"1.500"_s, "1.50"}, {u"-0,005"_s, "-0.01"}, {QByteArray("3,75"), "3.75"},
        {u"abc"_s, "0.00"},   {u"D'AVILA"_s, "0.00"}, {u"12|5"_s, "12.00"},
        {Binario, "0.00"},    {12.5, "12.50"},        {1234.5, "1234.50"},
        {-0.004, "0.00"},     {2.675, "2.68"},        {7, "7.00"},
    };
    for (const auto& caso : casos)
        EXPECT_EQ(T(ValorPonto(caso.valor)), caso.esperado) << T(caso.valor.toString());
    EXPECT_EQ(T(ValorPonto(Moeda::deUnidades(123456))), "12.35");
    EXPECT_EQ(T(ValorPonto(Moeda::deUnidades(-5000))), "-0.50");
    EXPECT_EQ(ErroDe([] { ValorPonto(MuitosNoves); }).numero(), ErroEstouro);
}

TEST(FormatacaoValor, WritesQuantitiesKeepingTheGroupingPoint) {
    const struct {
        double valor;
        const char* esperado;
    } casos[] = {
        {2, "2.000"},          {0.5, "0.500"},      {999, "999.000"},
        {1234.5, "1.234.500"}, {1500, "1.500.000"}, {999.9996, "1.000.000"},
        {-1.5, "-1.500"},      {0.0005, "0.001"},   {1000000, "1.000.000.000"},
    };
    for (const auto& caso : casos)
        EXPECT_EQ(T(QuantPonto(caso.valor)), caso.esperado) << caso.valor;
    EXPECT_EQ(T(QuantPonto(QVariant(u"1,5"_s))), "1.500");
    EXPECT_EQ(T(QuantPonto(QVariant(u"1.234,5"_s))), "1.234.500");
    EXPECT_EQ(T(QuantPonto(QVariant())), "0.000");
    EXPECT_EQ(T(QuantPonto(QVariant(3))), "3.000");
}

TEST(FormatacaoArredonda, RoundsHalvesUpOnTheBinaryValue) {
    const struct {
        double valor;
        int casas;
        double esperado;
    } casos[] = {
        {0.125, 2, 0.13},    {-0.125, 2, -0.12}, {2.5, 0, 3},      {-2.5, 0, -2},
        {2.675, 2, 2.68},    {0, 2, 0},          {1234, -2, 1200}, {1e300, 2, 1e300},
        {123.456, 1, 123.5}, {1.005, 2, 1.0}, // 100.49999999999999 once scaled
    };
    for (const auto& caso : casos)
        EXPECT_DOUBLE_EQ(Arredonda(caso.valor, caso.casas), caso.esperado) << caso.valor;
}

TEST(FormatacaoTrunca, CutsAfterRoundingToOneMoreDecimal) {
    const struct {
        double valor;
        int casas;
        double esperado;
    } casos[] = {
        {0.339, 2, 0.33},  {1.9999999, 2, 2.0}, {0.3333, 2, 0.33}, {-0.339, 2, -0.34},
        {0.9949, 2, 0.99}, {0.95, 0, 1},        {0.85, 0, 0},      {3.3333333, 2, 3.33},
        {0, 2, 0},         {0.9999, 2, 1.0}, // 99.99 rounds to 100.0 before the cut
    };
    for (const auto& caso : casos)
        EXPECT_DOUBLE_EQ(Trunca(caso.valor, caso.casas), caso.esperado) << caso.valor;
}

TEST(FormatacaoLeValor, TakesTheLastSeparatorAsDecimalPoint) {
    const struct {
        QStringView texto;
        qint64 unidades;
    } casos[] = {
        {u"1.234,56", 12345600},
        {u"12,5", 125000},
        {u"", 0},
        {u"1.500", 15000},
        {u"1.234.567,89", 12345678900},
        {u"12.50", 125000},
        {u"1,234.56", 12345600},
        {u"1,2,3", 123000},
        {u"-1.234,56", -12345600},
        {u"  12,50  ", 125000},
        {u"   12,50", 120000}, // commas searched for within the trimmed length only
        {u"1..234,56", 12346}, // the scan passes over the character after a removed point
        {u"1.2345678", 12346},
        {u"0,00005", 1},
        {u"0,00004", 0},
        {u"R$ 12,50", 0},
        {u"12|34", 120000},
        {u"12'5", 120000},
        {u"abc", 0},
    };
    for (const auto& caso : casos)
        EXPECT_EQ(LeValor(caso.texto.toString()).unidades(), caso.unidades)
            << caso.texto.toString().toStdString();
}

TEST(FormatacaoLeValor, SurvivesHostileText) {
    EXPECT_EQ(LeValor(Binario).unidades(), 0);
    EXPECT_EQ(LeValor(u"12,5"_s + Binario + u"9"_s).unidades(), 125000);
    EXPECT_EQ(LeValor(u"1"_s + QString(100000, u'.')).unidades(), 10000);
    EXPECT_EQ(LeValor(QString(100000, u',') + u"5"_s).unidades(), 0);
    EXPECT_EQ(ErroDe([] { LeValor(MuitosNoves + u",5"_s); }).numero(), ErroEstouro);
    EXPECT_EQ(ErroDe([] { LeValor(u"1.000.000.000.000.000,00"_s); }).numero(), ErroEstouro);
}

TEST(FormatacaoTexto, RemovesQuotesForSqlValues) {
    const struct {
        QVariant valor;
        const char* esperado;
    } casos[] = {
        {QVariant(), ""},
        {QString(), ""},
        {u""_s, ""},
        {u"  D'AVILA  "_s, "DAVILA"},
        {u"' x '"_s, "x"},
        {u"''''"_s, ""},
        {u"a|b \"c\""_s, "a|b \"c\""},
        {u"\tX\t"_s, "\tX\t"},
        {u"C:\\"_s, "C:\\"},
        {12.5, "12.5"},
    };
    for (const auto& caso : casos)
        EXPECT_EQ(T(TiraAspas(caso.valor)), caso.esperado) << T(caso.valor.toString());
    EXPECT_EQ(TiraAspas(QString(100000, u'\'')), QString());
    EXPECT_EQ(TiraAspas(Binario), Binario);
}

TEST(FormatacaoTexto, KeepsOnlyLettersAndDigitsOfDocuments) {
    const struct {
        QVariant valor;
        const char* esperado;
    } casos[] = {
        {u"18.123.456/0001-90"_s, "18123456000190"},
        {u"(31) 3333-4444"_s, "3133334444"},
        {u"062.ISENTO"_s, "062ISENTO"},
        {u"  30.140-071  "_s, "30140071"},
        {u"a_b,c;d"_s, "abc;d"},
        {u"12|34'5\""_s, "12|34'5\""},
        {u"\t1\t"_s, "\t1\t"},
        {QVariant(), ""},
        {u""_s, ""},
        {31.5, "315"},
    };
    for (const auto& caso : casos)
        EXPECT_EQ(T(LimpaTexto(caso.valor)), caso.esperado) << T(caso.valor.toString());
    EXPECT_EQ(LimpaTexto(QString(100000, u'.')), QString());
    EXPECT_EQ(LimpaTexto(Binario), Binario);
}

TEST(FormatacaoTexto, PadsCodesWithZeros) {
    const struct {
        QVariant valor;
        int tamanho;
        const char* esperado;
    } casos[] = {
        {45, 6, "000045"},
        {u"12345"_s, 3, "12345"},
        {u" 45 "_s, 6, "000045"},
        {45.0, 6, "000045"},
        {12.5, 6, "0012.5"},
        {18123456000190.0, 14, "18123456000190"},
        {QVariant(), 3, "000"},
        {u""_s, 3, "000"},
        {-5, 3, "0-5"},
        {u"abc"_s, 5, "00abc"},
        {7, 0, "7"},
        {7, -1, "7"},
    };
    for (const auto& caso : casos)
        EXPECT_EQ(T(Zeros(caso.valor, caso.tamanho)), caso.esperado) << T(caso.valor.toString());
    EXPECT_EQ(Zeros(MuitosNoves, 6), MuitosNoves);
}

} // namespace
} // namespace nfce::teste
