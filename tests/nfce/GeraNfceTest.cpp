#include "nfce/GeraNfce.h"
#include "nfce/CampoLimpo.h"
#include "nfce/Icms.h"
#include "nfce/Rateio.h"
#include "nfce/Valores.h"
#include "storage/Conexao.h"
#include "support/Erros.h"
#include "support/Loja.h"
#include "support/PastaPrograma.h"
#include "support/Programa.h"

#include <QDir>
#include <QFile>
#include <functional>

namespace nfce::teste {
namespace {

using namespace Qt::StringLiterals;

TEST(CampoLimpo, NadaQueQuebreORegistroETextoComumIntacto) {
    const QString comum = u"  Açúcar D'Ávila; CAFÉ \"10\" µß Nº 5 €  "_s;
    const std::tuple<QString, qsizetype, QString> casos[] = {
        {comum, 60, comum},
        {u"ARROZ\r\nI|999|X"_s, 120, u"ARROZ  I 999 X"_s},
        {u"A\tB\x01"_s + QChar(0x7F) + QChar(0x85) + QChar(0) + u"C"_s, 60, u"A B    C"_s},
        {u"ő\u0141\U0001F600\uFB01\U0001D400\u200B\uFF5C"_s + QChar(0xD800), 60, u"ofiA "_s},
        {u"a\u0303o"_s, 60, u"ão"_s},
        {QString(100000, u'x'), 120, QString(120, u'x')},
        {u"ab\U0001F600c|d"_s, 4, u"abc "_s},
        {QString(), 60, QString()},
    };
    for (const auto& [texto, maximo, esperado] : casos)
        EXPECT_EQ(CampoLimpo(texto, maximo), esperado) << texto.left(40).toStdString();
}

TEST(Icms, BaseEImpostoCalculados) {
    const std::tuple<ItemIcms, QString, double, double> casos[] = {
        {{1.99, 3, 0, 0.50, 0, 1800, 0}, u"N02|0|00|3|5.47|18.00|0.98|||"_s, 5.47, 0.98},
        {{1.99, 3, 0, 0, 2, 1800, 33.33}, u"N04|0|20|3|33.33|3.98|18.00|0.72||||||"_s, 3.98, 0.72},
        // Halves go up: 0.125 is 0.13, and 7 % of 0.13 (0.0091) is 0.01.
        {{0.125, 1, 0, 0, 0, 700, 0}, u"N02|0|00|3|0.13|7.00|0.01|||"_s, 0.13, 0.01},
        {{10, 1, 0.6, 0, 0, 1200, 0}, u"N02|0|00|3|10.60|12.00|1.27|||"_s, 10.6, 1.27},
        {{10, 1, 0, 0, 5, 1800, 0}, QString(), 0, 0},
        {{10, 1, 0, 0, std::nullopt, 1800, 0}, QString(), 0, 0},
    };
    for (const auto& [item, linha, vBC, vICMS] : casos) {
        const LinhaIcms r = CalculaIcms(item, true);
        EXPECT_EQ(r.linha, linha);
        EXPECT_DOUBLE_EQ(r.vBC, vBC);
        EXPECT_DOUBLE_EQ(r.vICMS, vICMS);
    }
    EXPECT_EQ(CalculaIcms({10, 1, 0, 0, 16, 0, 0}, false).linha, QString());
}

QByteArray Gerado(const QString& caminho) {
    QFile arquivo(caminho);
    return arquivo.open(QIODevice::ReadOnly) ? arquivo.readAll() : QByteArray();
}

// The sample sale 1001 of a ready folder; this one run keeps the program's real waits (5 s).
TEST(ComandoGerar, EscreveOArquivoEMostraOCaminhoOuUmaLinhaDeErro) {
    PastaPrograma pasta;
    const QString demo = pasta.Caminho(u"demo"_s);
    ASSERT_EQ(RodaServidor({u"iniciar"_s, demo, u"--exemplos"_s}).status, 0);
    const auto [status, saida, erro] = RodaServidor({u"gerar"_s, u"1001"_s, u"--pasta"_s, demo});
    ASSERT_EQ(status, 0) << erro.toStdString();
    EXPECT_TRUE(saida.startsWith(demo + u"/11222333000181/Validar/000001001_11222333000181_"_s));
    EXPECT_TRUE(
        Gerado(saida.trimmed()).startsWith("NOTAFISCAL|1\r\nA|4.00|NFe\r\nB|31||VENDA|65|"));

    const std::tuple<QStringList, int, QString> falhas[] = {
        {{u"1"_s, u"--pasta"_s}, 2, u"uso: servidor-nfce gerar NFCE [--pasta DIR]\n"_s},
        {{u"12'|x"_s}, 1, u"Número de NFC-e inválido: \"12'|x\" (erro 5)\n"_s},
        {{u"999"_s, u"--pasta"_s, demo}, 1, u"Nenhuma venda com a NFC-e 999. (erro 3021)\n"_s},
        {{u"1002"_s, u"--pasta"_s, demo}, 1, u"Item 2: quantidade inválida \"-1\" (erro 5)\n"_s},
    };
    Conexao loja(TipoBanco::Sqlite, demo + u"/loja.db"_s);
    loja.Abre();
    loja.Executa(u"UPDATE itens SET quant = -1 WHERE nfce = 1002 AND Item = 2"_s);
    for (const auto& [argumentos, esperado, trecho] : falhas) {
        const auto [status, saida, erro] = RodaServidor(QStringList{u"gerar"_s} + argumentos);
        EXPECT_EQ(status, esperado);
        EXPECT_TRUE(saida.isEmpty() && erro.endsWith(trecho) && erro.count(u'\n') == 1)
            << erro.toStdString();
    }
}

// The path the generator gave, then the file byte for byte.
void ComparaComModelo(const QString& gerado, const QString& caminho, const QString& modelo) {
    EXPECT_EQ(gerado, caminho);
    const QByteArray esperado = Gerado(QStringLiteral(NFCE_DADOS_TESTE "/nfce/") + modelo);
    ASSERT_FALSE(esperado.isEmpty()) << modelo.toStdString();
    EXPECT_EQ(Gerado(caminho).toStdString(), esperado.toStdString());
}

const QString Arquivo = u"000001234_18123456000104_001_15_11_2026-nfe.txt"_s;

class GeraNfceTest : public Loja {
protected:
    void SetUp() override {
        Loja::SetUp();
        if (!IsSkipped()) PoeNoPainel(u"15/11/2026"_s, u"10:20:30"_s);
    }
    void PoeNoPainel(const QString& data, const QString& hora) {
        s->painel.lblData = data;
        s->painel.lblHora = hora;
    }
    QString Validar(const QString& nome = {}) const { return NaEmpresa(u"Validar/"_s + nome); }
    QStringList NaValidar() const { return QDir(Validar()).entryList(QDir::Files | QDir::Hidden); }
    // "sale;statement;...": a sale of tests/dados, then the statements.
    void Prepara(const QString& receita) {
        const QStringList partes = receita.split(u';', Qt::SkipEmptyParts);
        Limpa();
        Carrega(partes.first());
        for (const QString& comando : partes.mid(1))
            Executa(comando);
    }
    // Sale 1234 of `valor` with a discount of 1.00; its items of these totals ("C" before a
    // total: cancelled), each with a discount of 9.99 to begin with.
    void Venda(const QString& valor, const QStringList& totais) {
        Executa(u"INSERT INTO vendas (nfce, valor, Desconto) VALUES (1234, %1, 1)"_s.arg(valor));
        for (qsizetype i = 0; i < totais.size(); ++i)
            Executa(u"INSERT INTO itens (nfce, Item, valortotal, situacao, desconto) "
                    "VALUES (1234, %1, %2, '%3', 9.99)"_s.arg(i + 1)
                        .arg(QString(totais[i]).remove(u'C'),
                             totais[i].startsWith(u'C') ? u"C" : u"N"));
    }
    QStringList Descontos() {
        Registros rs;
        s->conexoes.AbreConsulta(rs,
                                 u"SELECT desconto FROM itens WHERE nfce = 1234 ORDER BY Item"_s);
        QStringList valores;
        for (; !rs.Eof(); rs.MoveNext())
            valores << Dinheiro(MoedaDe(rs.Campo(u"desconto"_s)));
        return valores;
    }
};

TEST_P(GeraNfceTest, DocumentosIguaisAosModelos) {
    // Then changes that leave the document as it is: no recipient for the walk-in customer, a
    // zeroed document, code 0 and a blank document.
    const QString troco = u"dinheiro_troco;UPDATE vendas SET "_s;
    for (const QString& caso :
         {u"tributos"_s, u"rateio_empate"_s, u"cartao_pix"_s, u"dinheiro_troco"_s,
          troco + u"cgc = '123.456.789-09'"_s, troco + u"cliente = 25, cgc = '00000000000000'"_s,
          troco + u"cliente = 0, cgc = '18123456000104'"_s,
          troco + u"cliente = 30, cgc = '   '"_s}) {
        SCOPED_TRACE(caso.toStdString());
        Prepara(caso);
        ComparaComModelo(GeraNfceDaVenda(*s, 1234), Validar(Arquivo),
                         caso.section(u';', 0, 0) + u".txt"_s);
    }
}

TEST_P(GeraNfceTest, AsTresVariantesDoGerador) {
    Carrega(u"variantes"_s);
    PoeNoPainel(u"14/11/2026"_s, u"23:59:58"_s); // a sale of the 14th, generated on the 15th
    s->venda.Vendedor = u"João"_s;
    s->venda.NumCupom = 77;
    const QString caminho =
        pasta.Caminho(u"18123456000104/%1/000001234_18123456000104_001_%2-nfe.txt"_s);
    ComparaComModelo(GeraNfce(*s, u"1234"_s), caminho.arg(u"Validar", u"14_11_2026"),
                     u"variante_atual.txt"_s);
    ComparaComModelo(GeraNfce(*s, u"1234"_s, VarianteGerador::Modulo()),
                     caminho.arg(u"Validar", u"15_11_2026"), u"variante_modulo.txt"_s);
    s->venda.TipoEmissao = u"1"_s;
    ComparaComModelo(GeraNfce(*s, u"1234"_s, VarianteGerador::Janela()),
                     caminho.arg(u"Envio", u"13_11_2026"), u"variante_janela.txt"_s);

    // Without a contingency period the window's generator takes the panel; it finds the
    // customer by the sale number, not by the NFC-e number.
    Executa(u"DELETE FROM nfce"_s);
    Executa(u"INSERT INTO vendas (nfce, cupom, cliente, nomecliente, cgc) "
            "VALUES (555, 88, 30, 'Mercadinho', '1')"_s);
    s->venda.TipoEmissao = u"9"_s;
    s->venda.NumCupom = 88;
    const QByteArray texto = Gerado(GeraNfce(*s, u"1234"_s, VarianteGerador::Janela()));
    EXPECT_TRUE(texto.contains("|4|9||2|1|1|1|0|0.00|2026-11-14T23:59:58-03:00|SEM CONEXAO"));
    EXPECT_TRUE(texto.contains("\r\nE|MERCADINHO|9||||\r\nE02|18123456000104|\r\n"));
}

TEST_P(GeraNfceTest, EsperaTempComOArquivoJaNoLugar) {
    Carrega(u"dinheiro_troco"_s);
    // 1 s before, 2 x (0.01 + 0.2 + 0.2) s in the apportionment, then TEMP.
    for (const auto& [linha, espera] :
         {std::pair(QString(), 3000), {u"TEMP=10"_s, 10000}, {u"TEMP=2.9"_s, 2000}}) {
        Configura({u"TMPAMBNFCE=2"_s, linha});
        QFile::remove(Validar(Arquivo));
        qint64 visto = -1;
        const int gancho = ambiente.AoBombear([&] {
            if (visto < 0 && QFile::exists(Validar(Arquivo))) visto = ambiente.Monotonico();
        });
        const qint64 inicio = ambiente.Monotonico();
        GeraNfce(*s, u"1234"_s);
        ambiente.RemoveGancho(gancho);
        EXPECT_EQ(ambiente.Monotonico() - inicio, 1820 + espera);
        EXPECT_EQ(ambiente.Monotonico() - visto, espera);
    }
}

TEST_P(GeraNfceTest, FalhaNaoDeixaArquivoNaPasta) {
    const std::pair<std::function<void()>, int> casos[] = {
        {[&] { Limpa(); }, ErroSemRegistroAtual},
        {[&] { s->painel.lblData = u"31/02/2026"_s; }, ErroTipoIncompativel},
        {[&] { QDir(Validar()).removeRecursively(); }, ErroCaminhoNaoEncontrado},
        {[&] { Executa(u"ALTER TABLE vendas DROP COLUMN pix"_s); }, ErroItemNaoEncontrado},
    };
    for (const auto& [prepara, erro] : casos) {
        Prepara(u"dinheiro_troco"_s);
        prepara();
        EXPECT_EQ(ErroDe([&] { GeraNfce(*s, u"1234"_s); }).numero(), erro);
        EXPECT_EQ(NaValidar(), QStringList());
        QDir().mkpath(Validar());
        PoeNoPainel(u"15/11/2026"_s, u"10:20:30"_s);
    }
}

TEST_P(GeraNfceTest, VendaQueNenhumDocumentoLevaNaoEscreveNada) {
    // Text columns hold whatever a till typed; the sale's discount would be spread first.
    for (const auto& [tabela, coluna] : {std::pair{u"itens"_s, u"quant"_s},
                                         {u"itens"_s, u"valor"_s},
                                         {u"vendas"_s, u"Dinheiro"_s}}) {
        Executa(u"ALTER TABLE %1 DROP COLUMN %2"_s.arg(tabela, coluna));
        Executa(u"ALTER TABLE %1 ADD COLUMN %2 LONGTEXT"_s.arg(tabela, coluna));
    }
    const QString semItens = u"Venda da NFC-e 1234 não tem itens"_s;
    const QString dinheiro = u"Venda da NFC-e 1234: Dinheiro fora do limite \"-1e300\""_s;
    const std::tuple<QString, QString, QString> casos[] = {
        {u"sem_itens"_s, {}, semItens},
        {u"dinheiro_troco"_s, u"UPDATE itens SET situacao = 'C'"_s, semItens},
        {u"dinheiro_troco"_s, u"UPDATE itens SET quant = 'abc'"_s,
         u"Item 1: quantidade inválida \"abc\""_s},
        {u"dinheiro_troco"_s, u"UPDATE itens SET codprod = 999"_s,
         u"Item 1: produto \"999\" não existe"_s},
        {u"dinheiro_troco"_s, u"UPDATE itens SET valor = '900000000000000'"_s,
         u"Item 1: valor total fora do limite \"1800000000000000\""_s},
        {u"dinheiro_troco"_s,
         u"UPDATE vendas SET Dinheiro = '-400000000000000';"
         "UPDATE itens SET valor = '400000000000000'"_s,
         u"Venda da NFC-e 1234: soma dos valores fora do limite"_s},
        {u"dinheiro_troco"_s, u"UPDATE vendas SET Dinheiro = '-1e300'"_s, dinheiro},
    };
    for (const auto& [caso, mudanca, mensagem] : casos) {
        SCOPED_TRACE(mudanca.toStdString());
        Prepara(caso + u";UPDATE vendas SET Desconto = 1;"_s + mudanca);
        EXPECT_EQ(ErroDe([&] { GeraNfceDaVenda(*s, 1234); }).descricao(), mensagem);
        EXPECT_EQ(NaValidar(), QStringList());
        EXPECT_EQ(Conta(u"itens"_s, u"Desconto <> 0"_s), 0);
    }
    // The same check stands before each variant of the generator.
    for (const VarianteGerador& variante : {VarianteGerador::Modulo(), VarianteGerador::Janela()})
        EXPECT_EQ(ErroDe([&] { GeraNfce(*s, u"1234"_s, variante); }).descricao(), dinheiro);
}

TEST_P(GeraNfceTest, EntradasHostisDaoOQueAsRegrasDizem) {
    // On the cash sale of 42.30: settings, statements, then a text expected in the file. The
    // first case empties product columns that later cases then read as nulls.
    const QString texto = u"ALTER TABLE %1 DROP COLUMN %2;ALTER TABLE %1 ADD COLUMN %2 LONGTEXT;"_s;
    const QByteArray bc = "|0.00|2026-11-15T10:20:30-03:00|SEM CONEXAO COM A INTERNET OU SEFAZ|"
                          "\r\nC|Mercado Bom Preco Ltda||0623079040081||||";
    const std::tuple<QStringList, QString, QByteArray> casos[] = {
        {{},
         texto.arg(u"produtos", u"ncm") + texto.arg(u"produtos", u"CST") +
             texto.arg(u"produtos", u"unidade") + texto.arg(u"vendas", u"cliente") +
             texto.arg(u"vendas", u"Dinheiro") + u"UPDATE vendas SET cgc = '1', Dinheiro = 50"_s,
         "|3133334444|\r\nH|1||\r\nI|000001|SEM GTIN|ARROZ TIPO 1 5KG|00000000|||||||5102||2.000|"
         "21.15|42.30|SEM GTIN||2.000|21.15|0.00||0.00||1||||\r\nM||\r\nN|\r\nQ|\r\n"},
        {{}, u"UPDATE vendas SET Dinheiro = '50,00'"_s, "DINHEIRO|50.00|||||\r\nYA09|7.70|\r\n"},
        {{}, u"UPDATE vendas SET Dinheiro = NULL"_s, "X|9|\r\nYA|1|99|OUTROS|42.30|||||\r\nZ|"},
        // A half cent of the item's total goes up.
        {{}, u"UPDATE itens SET valor = 0.125, quant = 1"_s, "|0.13|SEM GTIN||1.000|"},
        {{},
         u"UPDATE vendas SET Dinheiro = '-5'"_s,
         "X|9|\r\nYA|1|99|OUTROS|5.00|||||\r\nYA|1|99|OUTROS|42.30|||||\r\nZ|"},
        {{},
         texto.arg(u"produtos", u"nome") +
             u"UPDATE produtos SET nome = ' a|b ''c'' \"d\" \u20ac\u0141\U0001F600\u00b5\u00df\x01%1'"_s
                 .arg(QString(100000, u'x')),
         "|SEM GTIN|A B 'C' \"D\" \x80\xb5\xdf " + QByteArray(104, 'X') + "|00000000|"},
        {{u"TMPAMBNFCE=abc"_s, u"REGIMETRIB=3|x"_s}, {}, "|4|9||0|1|1|1|0" + bc + "3|"},
        {{u"TMPAMBNFCE=2.9"_s, u"REGIMETRIB="_s}, {}, "|4|9||2|1|1|1|0" + bc + "1|"},
    };
    for (const auto& [configuracao, comandos, esperado] : casos) {
        SCOPED_TRACE(comandos.left(80).toStdString());
        Configura(configuracao);
        Prepara(u"dinheiro_troco;"_s + comandos);
        const QByteArray gerado = Gerado(GeraNfceDaVenda(*s, 1234));
        EXPECT_TRUE(gerado.contains(esperado)) << gerado.left(3000).data();
    }
    // The company record's texts are cleaned the same way.
    s->empresa.Endereco = u"rua|x\r\nC|1"_s;
    EXPECT_TRUE(Gerado(GeraNfce(*s, u"1234"_s)).contains("\r\nC05|RUA X  C 1|1148|"));
    Configura({u"TMPAMBNFCE="_s + QString(100000, u'7')});
    EXPECT_EQ(ErroDe([&] { GeraNfce(*s, u"1234"_s); }).numero(), ErroEstouro);
}

// Ties and surcharges are in the golden documents.
TEST_P(GeraNfceTest, RateioEmPartesTruncadasComORestoNoMaiorTotal) {
    const std::tuple<QString, QStringList, QStringList> casos[] = {
        // Items worth more than the sale: the excess comes off the largest items.
        {u"14"_s, {u"10"_s, u"10"_s}, {u"0.34"_s, u"0.34"_s}},
        {u"9"_s, {u"10"_s, u"C10"_s}, {u"1.00"_s, u"9.99"_s}},
        {u"29"_s, {u"10"_s, u"20"_s}, {u"0.33"_s, u"0.67"_s}},
    };
    for (const auto& [valor, totais, descontos] : casos) {
        Limpa();
        Venda(valor, totais);
        RateiaDesconto(*s, u"1234"_s);
        EXPECT_EQ(Descontos(), descontos);
    }
    // Items of the same numbers in other sales, with an NFC-e or without, keep their values.
    for (const char* nfce : {"555", "0"})
        Executa(u"INSERT INTO itens (nfce, Item, valortotal, desconto, acrescimo) VALUES "
                "(%1, 1, 50, 7.77, 1.5), (%1, 2, 20, 7.77, 1.5)"_s.arg(nfce));
    RateiaAcrescimo(*s, u"1234"_s);
    RateiaDesconto(*s, u"1234"_s);
    EXPECT_EQ(Descontos(), QStringList({u"0.33"_s, u"0.67"_s}));
    EXPECT_EQ(Conta(u"itens"_s, u"nfce <> 1234 AND desconto = 7.77 AND acrescimo = 1.5"_s), 4);
}

INSTANTIATE_TEST_SUITE_P(Motores, GeraNfceTest, ::testing::ValuesIn(Motores()), NomeDoMotor);

} // namespace
} // namespace nfce::teste
