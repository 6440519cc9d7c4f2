#include "export/Exportacao.h"
#include "context/Servidor.h"
#include "storage/Sql.h"
#include "support/BancoTeste.h"
#include "support/Erros.h"
#include "support/PastaPrograma.h"
#include "support/Programa.h"

#include <QRegularExpression>

namespace nfce::teste {
namespace {

using namespace Qt::StringLiterals;

const QString ItemPadrao =
    u"INSERT INTO itens (data, hora, cupom, nfce, Item, loja, caixa, ccf, serie, vendedor, "
    "cliente, nomecliente, forpag, codprod, nomeprod, quant, valor, valortotal, custo, Acrescimo, "
    "Desconto, icms, trib) VALUES ('2026-11-14', '09:08:07', 12, 45, 1, 2, 1, 33, '001', 'ANA', "
    "5, 'JOSE', 3, 7, 'ARROZ', 2, 1234.5, 21, 3.2567, 0.5, 1.25, 'T18', 'T')"_s;
const QString VendaPadrao =
    u"INSERT INTO vendas (data, hora, cupom, nfce, loja, caixa, ccf, serie, operador, vendedor, "
    "cliente, nomecliente, forpag, valor, Desconto, Acrescimo, Dinheiro, CartaoDeb, CartaoCred, "
    "pix, credloja, chave, autorizacao, erro, tempo, xml_info) VALUES ('2026-11-14', '09:08:07', "
    "12, 45, 2, 1, 33, '001', '007', 'ANA', 5, 'JOSE', 3, 1234.56, 0.44, 1, 10, 5.5, 2.25, 1.1, "
    "3, '31263333333333333333333333333333333333333333', '131', 'ok', '1', '<x/>')"_s;

class ExportacaoTest : public BancoTeste {
protected:
    void SetUp() override {
        BancoTeste::SetUp();
        if (IsSkipped()) return;
        pasta.EscreveEmpresa(RegistroDaLoja);
        Configura({u"VENDASONLINESRV=SIM"_s});
        CriaRemota();
        ExecutaRemota(
            u"INSERT INTO produtos (codigo, estoque, estoquefisico) VALUES (7, 100, 50)"_s);
        Executa(u"INSERT INTO forpag VALUES (3, 'PRAZO ''X''', '12', 45)"_s);
    }

    // The standard row, then `mudancas` ("quant = 2, Item = 3") on it.
    void Insere(const QString& padrao, const QString& tabela, const QString& mudancas) {
        Executa(padrao);
        if (mudancas.isEmpty()) return;
        const QString id = Texto(u"SELECT MAX(id) FROM "_s + tabela);
        Executa(u"UPDATE %1 SET %2 WHERE id = %3"_s.arg(tabela, mudancas, id));
    }
    void Item(const QString& mudancas = {}) { Insere(ItemPadrao, u"itens"_s, mudancas); }
    void Venda(const QString& mudancas = {}) { Insere(VendaPadrao, u"vendas"_s, mudancas); }

    ResultadoExportacao Exporta() {
        servidor = std::make_unique<Servidor>(pasta.caminho(), ambiente);
        servidor->venda.CodigoCliente = codigoCliente;
        servidor->venda.CodigoUsuario = 17;
        servidor->conexoes.PreparaConexaoPrincipal();
        servidor->conexoes.AbreConexaoRemota();
        return CmdExportar(*servidor);
    }

    // The rows, each as its columns joined by "|", as the recordset reads them.
    QStringList Linhas(const QString& colunas, const QString& tabela, bool remota = true) {
        Registros rs;
        const QString sql = u"SELECT %1 FROM %2 ORDER BY id"_s.arg(colunas, tabela);
        remota ? conexoes->AbreConsultaRemota(rs, sql) : conexoes->AbreConsulta(rs, sql);
        QStringList linhas;
        for (; !rs.Eof(); rs.MoveNext()) {
            QStringList linha;
            for (const QString& campo : rs.Campos())
                linha.append(rs.Texto(campo));
            linhas.append(linha.join(u'|'));
        }
        return linhas;
    }
    int NoRegistro(const QString& trecho) const { return ambiente.registro.filter(trecho).size(); }
    // The till's sale `cupom`, one item.
    void Cupom(int cupom) {
        Item(u"cupom = %1"_s.arg(cupom));
        Venda(u"cupom = %1"_s.arg(cupom));
    }

    std::unique_ptr<Servidor> servidor;
    qint32 codigoCliente = 0;
};

TEST_P(ExportacaoTest, ItensEVendasComOsValoresExatos) {
    Item(u"quant = 1234.5"_s);
    Item(u"nfce = 0, Item = 2, caixa = 12, quant = 0.5"_s);
    Item(u"situacao = 'C', Item = 3"_s);
    Venda();
    Venda(u"cupom = 13, nfce = 0, serie = '999'"_s);
    Venda(u"cupom = 14, exportado = 1"_s);

    Exporta();
    const QString item = u"2026-11-14|12|2|%1|1234.5|%2|T18|T|12|%3|3.26|21|33|7|ARROZ|1.25|0.5|"
                         "ANA|5|JOSE|2026-11-15|0|IMP|V|%4|N|09:08:07|3|001"_s;
    EXPECT_EQ(Linhas(u"data, cupom, loja, caixa, valor, quant, icms, trib, numvenda, item, "
                     "custo, valortotal, ccf, codprod, nomeprod, desconto, acrescimo, vendedor, "
                     "cliente, nomecliente, dataimp, comissao, arq, tipo, fisc, situacao, hora, "
                     "forpag, serie"_s,
                     u"itens"_s),
              QStringList({item.arg(u"001", u"1.234.500", u"1", u"EE"),
                           item.arg(u"012", u"0.500", u"2", u"II")}));
    const QString venda = u"2026-11-14|2|001|09:08:07|1234.56|0.44|1|%1|%1|3|0|10|0|5.5|2.25|0|0|"
                          "ANA|5|JOSE|2026-11-15|33|IMP|N|00000000000000000000|7|%2|3126"_s +
                          QString(40, u'3') + u"|131|ok|1|65|1.1|0|3|<x/>"_s;
    EXPECT_EQ(Linhas(u"data, loja, caixa, hora, valor, desconto, acrescimo, cupom, numvenda, "
                     "forpag, itens, dinheiro, cheque, cartao, cartaocred, vale, outros, "
                     "vendedor, cliente, nomecliente, dtimp, ccf, arq, situacao, serie, "
                     "operador, fisc, chave, autorizacao, erro, tempo, modelo, pix, alimentacao, "
                     "credloja, xml_info"_s,
                     u"vendas"_s),
              QStringList({venda.arg(u"12", u"E"), venda.arg(u"13", u"I")}));
}

// Only what the remote side has is marked; the rest goes with the next export, and every row
// reaches the remote side once, its stock movement with it.
TEST_P(ExportacaoTest, MarcaSoOQueChegouAoServidorRemoto) {
    Item();
    Item(u"Item = 2, situacao = 'C'"_s);
    Venda();
    Venda(u"cupom = 13, situacao = 'C'"_s);
    const auto nada = [] {};
    const auto nunca = [] { return true; };
    const auto caixaGrava = [&] { // the till's own sale
        Cupom(20);
        return true;
    };
    const auto novaVenda = [&] { Cupom(30); };
    const auto conexaoCai = [&] { // once the remote side has the new item, before its mark
        if (TextoRemoto(u"SELECT COUNT(*) FROM itens WHERE cupom = 30"_s) != u"1") return false;
        servidor->conexoes.ConexaoPrincipal()->Fecha();
        return true;
    };
    const auto remotaFora = [&] { ExecutaRemota(u"ALTER TABLE itens RENAME TO fora"_s); };
    const auto remotaVolta = [&] { ExecutaRemota(u"ALTER TABLE fora RENAME TO itens"_s); };
    // Before; at the export's waits until it says it is done; the error it ends with; then
    // `exportado` of the local items and sales.
    const struct {
        std::function<void()> antes;
        std::function<bool()> durante;
        int erro;
        QString itens, vendas;
    } rodadas[] = {
        {remotaFora, caixaGrava, 0, u"2 0 0"_s, u"1 0 1"_s},
        {remotaVolta, nunca, 0, u"1 0 1"_s, u"1 0 1"_s},
        {novaVenda, conexaoCai, ErroObjetoFechado, u"1 0 1 2"_s, u"1 0 1 0"_s},
        {nada, nunca, 0, u"1 0 1 1"_s, u"1 0 1 1"_s},
    };
    for (const auto& r : rodadas) {
        r.antes();
        bool feito = false;
        const int gancho = ambiente.AoBombear([&] {
            if (!feito) feito = r.durante();
        });
        EXPECT_EQ(ErroDe([&] { Exporta(); }).numero(), r.erro);
        ambiente.RemoveGancho(gancho);
        EXPECT_EQ(Linhas(u"exportado"_s, u"itens"_s, false).join(u' '), r.itens);
        EXPECT_EQ(Linhas(u"exportado"_s, u"vendas"_s, false).join(u' '), r.vendas);
    }
    EXPECT_EQ(Linhas(u"cupom, item"_s, u"itens"_s), QStringList({"12|1", "20|1", "30|1"}));
    EXPECT_EQ(Linhas(u"cupom"_s, u"vendas"_s), QStringList({"12", "20", "30"}));
    EXPECT_EQ(TextoRemoto(u"SELECT estoque FROM produtos"_s), u"94"_s);
}

TEST_P(ExportacaoTest, BaixaOEstoqueNaColunaConfigurada) {
    // ESTOQUEFISICO, then estoque and estoquefisico afterwards.
    for (const auto& [config, estoque, fisico] :
         {std::tuple(u""_s, u"97"_s, u"50"_s), {u"SIM"_s, u"100"_s, u"47"_s}}) {
        Configura({u"VENDASONLINESRV=SIM"_s, u"ESTOQUEFISICO="_s + config});
        ExecutaRemota(u"UPDATE produtos SET estoque = 100, estoquefisico = 50"_s);
        Item(u"quant = 2.5"_s);
        Item(u"Item = 2, quant = 0.5"_s);
        // The grouped quantity makes a statement the database refuses: logged, stock unchanged.
        Item(u"Item = 3, quant = 1500"_s);
        Exporta();
        EXPECT_EQ(TextoRemoto(u"SELECT estoque FROM produtos"_s), estoque);
        EXPECT_EQ(TextoRemoto(u"SELECT estoquefisico FROM produtos"_s), fisico);
    }
    EXPECT_EQ(NoRegistro(u"baixa de estoque do produto 7 (cupom 12, caixa 001, item 3)"_s), 2);
}

TEST_P(ExportacaoTest, ContaAReceberDeVendaAPrazo) {
    const QString conta = u"%1|5|JOSE|2026-11-14|%2|V|12|1|Venda 000012|%3|1234.56|17"_s;
    // The sale's values, the driver's customer code, the receivable sent.
    const std::tuple<QString, qint32, QString> casos[] = {
        {u"Vale = 30"_s, 0, conta.arg(u"12", u"30|2026-12-29|3|PRAZO 'X'", u"NFCE")},
        {u"Outros = 20, forpag = 9, nfce = 0"_s, 0,
         conta.arg(u"1", u"20|2026-12-15|1|30 DIAS", u"II")},
        {u"Vale = 10, Outros = 5"_s, 0, {}}, // one value too many: refused
        {u"Vale = 30"_s, 999999, {}},
        {u"Vale = 30, cliente = 1"_s, 0, {}}, // the walk-in customer
        {u"Dinheiro = 9"_s, 0, {}},
    };
    for (const auto& [venda, cliente, esperada] : casos) {
        ExecutaRemota(u"DELETE FROM contasreceber"_s);
        Venda(venda);
        codigoCliente = cliente;
        const ResultadoExportacao r = Exporta();
        const QStringList contas = Linhas(u"codplano, codcli, nome, datalanc, valor, datavenc, "
                                          "forpgto, nomepgto, tipo, numvenda, parcela, documento, "
                                          "obs, valortotal, usuario"_s,
                                          u"contasreceber"_s);
        EXPECT_EQ(contas.join(u'\n'), esperada) << venda.toStdString();
        EXPECT_EQ(std::pair(r.vendasConfirmadas, r.contasEnviadas),
                  std::pair(1, int(contas.size())));
    }
    EXPECT_EQ(NoRegistro(u"falha ao enviar conta a receber (cupom 12, caixa 001)"_s), 1);
}

TEST_P(ExportacaoTest, SemExportacaoNadaEMarcado) {
    const QStringList semRemota =
        LinhasDosBancos().filter(QRegularExpression(u"^(?!SERVIDORBASE)"_s));
    const QStringList remotaFora = {u"SERVIDORBASE="_s + host(),
                                    u"SERVIDORBASEDADOS="_s + BaseInexistente(),
                                    u"SERVIDORUSUARIO=master"_s, u"VENDASONLINESRV=SIM"_s};
    const QString falhou = u"Erro de Conexão do Banco de Dados do Servidor."_s;
    // Settings; then switched on, the error, the message shown, the command's error line.
    const std::tuple<QStringList, bool, int, QString, QString> casos[] = {
        {LinhasDosBancos() << u"VENDASONLINESRV=sim"_s,
         false,
         0,
         {},
         u"VENDASONLINESRV não é SIM"_s},
        {semRemota + remotaFora, true, 0, falhou, falhou},
        {QStringList{u"TIPOBANCO=SQLITE"_s, u"BASEDADOS=falta.db"_s} + remotaFora,
         false,
         ErroProvedor,
         {},
         u"falta.db"_s},
    };
    Item();
    Venda();
    for (const auto& [config, ligada, erro, mensagem, linha] : casos) {
        pasta.EscreveConfig(config);
        ambiente.mensagens.clear();
        ResultadoExportacao r;
        EXPECT_EQ(ErroDe([&] { r = Exporta(); }).numero(), erro);
        EXPECT_EQ(std::tie(r.ligada, r.conectada), std::make_tuple(ligada, false));
        EXPECT_EQ(ambiente.mensagens.size(), mensagem.isEmpty() ? 0 : 1);
        EXPECT_EQ(ambiente.mensagens.value(0).texto, mensagem);
        const Execucao e = RodaServidor({u"exportar"_s, u"--pasta"_s, pasta.caminho()});
        EXPECT_EQ(e.status, 1);
        EXPECT_TRUE(e.saida.isEmpty() && e.erro.contains(linha)) << e.erro.toStdString();
    }
    EXPECT_EQ(Conta(u"itens"_s, u"exportado = 1"_s) + Conta(u"vendas"_s, u"exportado = 1"_s), 0);
    const Execucao uso = RodaServidor({u"exportar"_s, u"a"_s});
    EXPECT_EQ(uso.status, 2);
    EXPECT_TRUE(uso.erro.contains(u"uso: servidor-nfce exportar [--pasta DIR]"_s));
}

TEST_P(ExportacaoTest, TextosChegamIntactos) {
    const QString longo = QString(u"D'Á|\"x\"\\"_s).repeated(12500);
    const QStringList textos = {u"O''REILLY | \"X\" | \\"_s, u"\x01\x02\x7f\tz"_s, longo.left(99)};
    QStringList longos;
    for (const QString& texto : textos) {
        longos.append(longo + texto);
        const QString mudancas =
            u"cupom = %1, nomecliente = '%2'"_s.arg(100 + longos.size()).arg(EscapaTexto(texto));
        Item(mudancas);
        Venda(mudancas + u", Vale = 1, xml_info = '"_s + EscapaTexto(longos.last()) + u"'"_s);
    }
    Exporta();
    EXPECT_EQ(Linhas(u"nomecliente"_s, u"itens"_s), textos);
    EXPECT_EQ(Linhas(u"nomecliente"_s, u"vendas"_s), textos);
    EXPECT_EQ(Linhas(u"nome"_s, u"contasreceber"_s), textos);
    EXPECT_EQ(Linhas(u"xml_info"_s, u"vendas"_s), longos);
}

TEST_P(ExportacaoTest, ValoresNumericosHostisNaoMudamOsComandos) {
    if (!EmSqlite()) GTEST_SKIP() << "only SQLite keeps text in numeric columns";
    ExecutaRemota(u"INSERT INTO produtos (codigo, estoque) VALUES (8, 100)"_s);
    Executa(u"UPDATE forpag SET parc1 = 99999999"_s);
    Item(u"codprod = '8 OR 1=1'"_s);
    Item(u"Item = '2; DELETE FROM itens'"_s);
    Item(u"Item = 3, quant = '1e30x'"_s);
    Venda(u"Vale = 'abc', cupom = '1|2'"_s);
    Venda(u"Vale = 5"_s);
    const ResultadoExportacao r = Exporta();
    EXPECT_EQ(TextoRemoto(u"SELECT estoque FROM produtos WHERE codigo = 8"_s), u"100"_s);
    EXPECT_EQ(TextoRemoto(u"SELECT estoque FROM produtos WHERE codigo = 7"_s), u"98"_s);
    EXPECT_EQ(Linhas(u"item"_s, u"itens"_s).size(), 2);
    EXPECT_EQ(Linhas(u"vale"_s, u"vendas"_s), QStringList({"5", "0"}));
    EXPECT_TRUE(Linhas(u"id"_s, u"contasreceber"_s).isEmpty());
    EXPECT_EQ(r.naoEncontrados.size(), 3);
}

TEST_P(ExportacaoTest, ComandoMostraOQueFoiEnviadoEOQueFalta) {
    Item();
    Venda(u"Vale = 5"_s);
    Venda(u"cupom = 13, caixa = 2"_s);
    ExecutaRemota(u"CREATE TRIGGER sem13 BEFORE INSERT ON vendas "_s +
                  (EmSqlite() ? u"WHEN NEW.cupom = 13 BEGIN SELECT RAISE(ABORT, 'x'); END"_s
                              : u"FOR EACH ROW IF NEW.cupom = 13 THEN SIGNAL SQLSTATE '45000'; "
                                "END IF"_s));
    const auto [status, saida, erro] = RodaServidor({u"exportar"_s, u"--pasta"_s, pasta.caminho()});
    EXPECT_EQ(status, 1) << erro.toStdString();
    EXPECT_EQ(saida, u"Itens enviados: 1 de 1 (confirmados no servidor remoto: 1)\n"
                     "Vendas enviadas: 1 de 2 (confirmadas no servidor remoto: 1)\n"
                     "Contas a receber enviadas: 1\n"
                     "Não encontrado no servidor remoto: venda cupom 13, caixa 002\n"_s);
    EXPECT_TRUE(
        erro.endsWith(u"servidor-nfce: 1 linha(s) não encontrada(s) no servidor remoto\n"_s));
}

INSTANTIATE_TEST_SUITE_P(Motores, ExportacaoTest, ::testing::ValuesIn(Motores()), NomeDoMotor);

} // namespace
} // namespace nfce::teste
