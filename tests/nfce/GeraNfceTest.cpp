#include "nfce/GeraNfce.h"
#include "support/Erros.h"
#include "support/Loja.h"

#include <QDir>
#include <QFile>
#include <functional>

namespace nfce::teste {
namespace {

using namespace Qt::StringLiterals;

// The shop's panel shows 15/11/2026 10:20:30.
class GeraNfceTest : public Loja {
protected:
    void SetUp() override {
        Loja::SetUp();
        if (IsSkipped()) return;
        s->painel.lblData = u"15/11/2026"_s;
        s->painel.lblHora = u"10:20:30"_s;
    }
    QString Validar(const QString& nome = {}) const { return NaEmpresa(u"Validar/"_s + nome); }
};

// The file's bytes ("" when there is none).
QByteArray Gerado(const QString& caminho) {
    QFile arquivo(caminho);
    return arquivo.open(QIODevice::ReadOnly) ? arquivo.readAll() : QByteArray();
}

// Byte for byte; GoogleTest shows the lines that differ.
void ComparaComModelo(const QString& caminho, const QString& modelo) {
    const QByteArray esperado = Gerado(QStringLiteral(NFCE_DADOS_TESTE "/nfce/") + modelo);
    ASSERT_FALSE(esperado.isEmpty()) << modelo.toStdString();
    EXPECT_EQ(Gerado(caminho).toStdString(), esperado.toStdString());
}

const QString Arquivo = u"000001234_18123456000104_001_15_11_2026-nfe.txt"_s;

TEST_P(GeraNfceTest, DocumentosIguaisAosModelos) {
    // Each sale of tests/dados, then changes that must leave the document as it is: the
    // walk-in customer, a zeroed document, code 0 and a blank document name no recipient.
    const std::vector<std::pair<QString, QStringList>> casos = {
        {u"tributos"_s, {{}}},
        {u"rateio_empate"_s, {{}}},
        {u"cartao_pix"_s, {{}}},
        {u"dinheiro_troco"_s,
         {{},
          u"UPDATE vendas SET cgc = '123.456.789-09'"_s,
          u"UPDATE vendas SET cliente = 25, cgc = '00000000000000'"_s,
          u"UPDATE vendas SET cliente = 0, cgc = '18123456000104'"_s,
          u"UPDATE vendas SET cliente = 30, cgc = '   '"_s}},
    };
    for (const auto& [caso, mudancas] : casos) {
        for (const QString& mudanca : mudancas) {
            SCOPED_TRACE((caso + u' ' + mudanca).toStdString());
            Limpa();
            Carrega(caso);
            if (!mudanca.isEmpty()) Executa(mudanca);
            EXPECT_EQ(GeraNfceDaVenda(*s, 1234), Validar(Arquivo));
            ComparaComModelo(Validar(Arquivo), caso + u".txt"_s);
        }
    }
}

TEST_P(GeraNfceTest, AsTresVariantesDoGerador) {
    Carrega(u"variantes"_s);
    // The sale of the 14th, generated on the 15th.
    s->painel.lblData = u"14/11/2026"_s;
    s->painel.lblHora = u"23:59:58"_s;
    s->venda.Vendedor = u"João"_s;
    s->venda.NumCupom = 77;
    const QString caminho =
        pasta.Caminho(u"18123456000104/%1/000001234_18123456000104_001_%2-nfe.txt"_s);
    EXPECT_EQ(GeraNfce(*s, u"1234"_s), caminho.arg(u"Validar", u"14_11_2026"));
    ComparaComModelo(caminho.arg(u"Validar", u"14_11_2026"), u"variante_atual.txt"_s);
    EXPECT_EQ(GeraNfce(*s, u"1234"_s, VarianteGerador::Modulo()),
              caminho.arg(u"Validar", u"15_11_2026"));
    ComparaComModelo(caminho.arg(u"Validar", u"15_11_2026"), u"variante_modulo.txt"_s);
    s->venda.TipoEmissao = u"1"_s;
    EXPECT_EQ(GeraNfce(*s, u"1234"_s, VarianteGerador::Janela()),
              caminho.arg(u"Envio", u"13_11_2026"));
    ComparaComModelo(caminho.arg(u"Envio", u"13_11_2026"), u"variante_janela.txt"_s);

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
    const std::vector<std::pair<QString, qint64>> casos = {
        {{}, 3000}, {u"TEMP=10"_s, 10000}, {u"TEMP=2.9"_s, 2000}};
    for (const auto& [linha, espera] : casos) {
        SCOPED_TRACE(linha.toStdString());
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
    Painel& painel = s->painel;
    const std::vector<std::tuple<const char*, std::function<void()>, int>> casos = {
        {"no sale", [&] { Limpa(); }, ErroSemRegistroAtual},
        {"bad date", [&] { painel.lblData = u"31/02/2026"_s; }, ErroTipoIncompativel},
        {"no folder", [&] { QDir(Validar()).removeRecursively(); }, ErroCaminhoNaoEncontrado},
        {"missing column", [&] { Executa(u"ALTER TABLE vendas DROP COLUMN pix"_s); },
         ErroItemNaoEncontrado},
    };
    for (const auto& [nome, prepara, erro] : casos) {
        SCOPED_TRACE(nome);
        Limpa();
        Carrega(u"dinheiro_troco"_s);
        prepara();
        EXPECT_EQ(ErroDe([&] { GeraNfce(*s, u"1234"_s); }).numero(), erro);
        EXPECT_EQ(QDir(Validar()).entryList(QDir::Files | QDir::Hidden), QStringList());
        QDir().mkpath(Validar());
        s->empresa.Cnpj = u"18123456000104"_s;
        painel.lblData = u"15/11/2026"_s;
        painel.lblHora = u"10:20:30"_s;
    }
    EXPECT_EQ(ErroDe([&] { GeraNfce(*s, u"abc"_s); }).numero(), ErroArgumentoInvalido);
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
        {u"dinheiro_troco"_s, u"UPDATE vendas SET Dinheiro = '-1e300'"_s,
         u"Venda da NFC-e 1234: Dinheiro fora do limite \"-1e300\""_s},
    };
    for (const auto& [caso, mudanca, mensagem] : casos) {
        SCOPED_TRACE(mudanca.toStdString());
        Limpa();
        Carrega(caso);
        Executa(u"UPDATE vendas SET Desconto = 1"_s);
        for (const QString& comando : mudanca.split(u';', Qt::SkipEmptyParts))
            Executa(comando);
        EXPECT_EQ(ErroDe([&] { GeraNfceDaVenda(*s, 1234); }).descricao(), mensagem);
        EXPECT_EQ(QDir(Validar()).entryList(QDir::Files | QDir::Hidden), QStringList());
        EXPECT_EQ(Conta(u"itens"_s, u"Desconto <> 0"_s), 0);
    }
    // The same check stands before each variant of the generator.
    for (const VarianteGerador& variante : {VarianteGerador::Modulo(), VarianteGerador::Janela()})
        EXPECT_EQ(ErroDe([&] { GeraNfce(*s, u"1234"_s, variante); }).descricao(),
                  u"Venda da NFC-e 1234: Dinheiro fora do limite \"-1e300\""_s);
}

TEST_P(GeraNfceTest, EntradasHostisDaoOQueAsRegrasDizem) {
    // On the cash sale of 42.30: settings, statements, then a text expected in the file. The
    // first case empties product columns that later cases then read as nulls.
    const QString texto = u"ALTER TABLE %1 DROP COLUMN %2;ALTER TABLE %1 ADD COLUMN %2 LONGTEXT"_s;
    const QString bc = u"|0.00|2026-11-15T10:20:30-03:00|SEM CONEXAO COM A INTERNET OU SEFAZ|\r\n"
                       "C|Mercado Bom Preco Ltda||0623079040081||||"_s;
    const std::vector<std::tuple<QStringList, QString, QByteArray>> casos = {
        {{},
         texto.arg(u"produtos", u"ncm") + u';' + texto.arg(u"produtos", u"CST") + u';' +
             texto.arg(u"produtos", u"unidade") + u';' + texto.arg(u"vendas", u"cliente") + u';' +
             texto.arg(u"vendas", u"Dinheiro") + u";UPDATE vendas SET cgc = '1', Dinheiro = 50"_s,
         "|3133334444|\r\nH|1||\r\nI|000001|SEM GTIN|ARROZ TIPO 1 5KG|00000000|||||||5102||2.000|"
         "21.15|42.30|SEM GTIN||2.000|21.15|0.00||0.00||1||||\r\nM||\r\nN|\r\nQ|\r\n"},
        {{}, u"UPDATE vendas SET Dinheiro = '50,00'"_s, "DINHEIRO|50.00|||||\r\nYA09|7.70|\r\n"},
        {{}, u"UPDATE vendas SET Dinheiro = NULL"_s, "X|9|\r\nYA|1|99|OUTROS|42.30|||||\r\nZ|"},
        {{},
         u"UPDATE vendas SET Dinheiro = '-5'"_s,
         "X|9|\r\nYA|1|99|OUTROS|5.00|||||\r\nYA|1|99|OUTROS|42.30|||||\r\nZ|"},
        {{},
         texto.arg(u"produtos", u"nome") +
             u";UPDATE produtos SET nome = ' a|b ''c'' \"d\" \u20ac\u0141\U0001F600\u00b5\u00df\x01%1'"_s
                 .arg(QString(100000, u'x')),
         "|SEM GTIN|A B 'C' \"D\" \x80\xb5\xdf " + QByteArray(104, 'X') + "|00000000|"},
        {{u"TMPAMBNFCE=abc"_s, u"REGIMETRIB=3|x"_s}, {}, "|4|9||0|1|1|1|0" + bc.toLatin1() + "3|"},
        {{u"TMPAMBNFCE=2.9"_s, u"REGIMETRIB="_s}, {}, "|4|9||2|1|1|1|0" + bc.toLatin1() + "1|"},
    };
    for (const auto& [configuracao, comandos, esperado] : casos) {
        SCOPED_TRACE(comandos.left(80).toStdString());
        Limpa();
        Carrega(u"dinheiro_troco"_s);
        Configura(configuracao);
        for (const QString& comando : comandos.split(u';', Qt::SkipEmptyParts))
            Executa(comando);
        const QByteArray gerado = Gerado(GeraNfceDaVenda(*s, 1234));
        EXPECT_TRUE(gerado.contains(esperado)) << gerado.left(3000).data();
    }
    // The company record's texts are cleaned the same way.
    s->empresa.Endereco = u"rua|x\r\nC|1"_s;
    EXPECT_TRUE(Gerado(GeraNfce(*s, u"1234"_s)).contains("\r\nC05|RUA X  C 1|1148|"));
    Configura({u"TMPAMBNFCE="_s + QString(100000, u'7')});
    EXPECT_EQ(ErroDe([&] { GeraNfce(*s, u"1234"_s); }).numero(), ErroEstouro);
}

INSTANTIATE_TEST_SUITE_P(Motores, GeraNfceTest, ::testing::ValuesIn(Motores()), NomeDoMotor);

} // namespace
} // namespace nfce::teste
