#include "nfce/Rateio.h"
#include "nfce/Valores.h"
#include "support/Erros.h"
#include "support/Loja.h"

namespace nfce::teste {
namespace {

using namespace Qt::StringLiterals;

class RateioTest : public Loja {
protected:
    // Sale 1234 of `valor` with a discount of 1.00; its items 1, 2, ... of these totals
    // ("C" before a total: cancelled), each with a discount of 9.99 to begin with.
    void Venda(const QString& valor, const QStringList& totais) {
        Executa(u"INSERT INTO vendas (nfce, valor, Desconto) VALUES (1234, %1, 1)"_s.arg(valor));
        for (qsizetype i = 0; i < totais.size(); ++i)
            Executa(u"INSERT INTO itens (nfce, Item, valortotal, situacao, desconto) "
                    "VALUES (1234, %1, %2, '%3', 9.99)"_s.arg(i + 1)
                        .arg(QString(totais[i]).remove(u'C'),
                             totais[i].startsWith(u'C') ? u"C"_s : u"N"_s));
    }
    // As amounts ("0.00").
    QStringList Descontos(const QString& nfce = u"1234"_s) {
        Registros rs;
        s->conexoes.AbreConsulta(
            rs, u"SELECT desconto FROM itens WHERE nfce = %1 ORDER BY Item"_s.arg(nfce));
        QStringList valores;
        for (; !rs.Eof(); rs.MoveNext())
            valores << Dinheiro(MoedaDe(rs.Campo(u"desconto"_s)));
        return valores;
    }
};

// Ties and surcharges are in the golden documents.
TEST_P(RateioTest, PartesTruncadasERestoNoMaiorTotal) {
    const std::vector<std::tuple<QString, QStringList, QStringList>> casos = {
        {u"29"_s, {u"10"_s, u"20"_s}, {u"0.33"_s, u"0.67"_s}},
        // Items worth more than the sale: the excess comes off the largest items.
        {u"14"_s, {u"10"_s, u"10"_s}, {u"0.34"_s, u"0.34"_s}},
        {u"9"_s, {u"10"_s, u"C10"_s}, {u"1.00"_s, u"9.99"_s}},
    };
    for (const auto& [valor, totais, descontos] : casos) {
        Limpa();
        Venda(valor, totais);
        const qint64 antes = ambiente.msAguardados();
        RateiaDesconto(*s, u"1234"_s);
        EXPECT_EQ(Descontos(), descontos);
        EXPECT_EQ(ambiente.msAguardados() - antes, 10 + 200 + 200);
    }
    // Items of the same numbers in other sales, with an NFC-e or without, keep their values.
    Limpa();
    Venda(u"29"_s, {u"10"_s, u"20"_s});
    for (const char* nfce : {"555", "0"})
        Executa(u"INSERT INTO itens (nfce, Item, valortotal, desconto, acrescimo) VALUES "
                "(%1, 1, 50, 7.77, 1.5), (%1, 2, 20, 7.77, 1.5)"_s.arg(nfce));
    RateiaAcrescimo(*s, u"1234"_s);
    RateiaDesconto(*s, u"1234"_s);
    EXPECT_EQ(Descontos(), QStringList({u"0.33"_s, u"0.67"_s}));
    EXPECT_EQ(Conta(u"itens"_s, u"nfce <> 1234 AND desconto = 7.77 AND acrescimo = 1.5"_s), 4);
}

TEST_P(RateioTest, SemBaseADivisaoFalhaDepoisDeZerarOsItens) {
    // A base of 0 (-1 + the discount of 1) without items divides nothing.
    Venda(u"-1"_s, {});
    EXPECT_EQ(ErroDe([&] { RateiaDesconto(*s, u"1234"_s); }).numero(), 0);
    Executa(u"DELETE FROM vendas"_s);
    Venda(u"-1"_s, {u"10"_s});
    EXPECT_EQ(ErroDe([&] { RateiaDesconto(*s, u"1234"_s); }).numero(), ErroDivisaoPorZero);
    EXPECT_EQ(Descontos(), QStringList{u"0.00"_s});
    // Without the sale the base is 0 too.
    Executa(u"DELETE FROM vendas"_s);
    EXPECT_EQ(ErroDe([&] { RateiaAcrescimo(*s, u"1234"_s); }).numero(), ErroDivisaoPorZero);
}

INSTANTIATE_TEST_SUITE_P(Motores, RateioTest, ::testing::ValuesIn(Motores()), NomeDoMotor);

} // namespace
} // namespace nfce::teste
