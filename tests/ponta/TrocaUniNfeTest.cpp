// The server's side of the exchange with UniNFe, end to end: the key request, the generator and
// every answer reader against the stand-in, which writes UniNFe's own file forms. Each pump of
// the virtual clock runs one pass of the stand-in, as the real UniNFe watches its folders.
#include "Simulador.h"
#include "apoio/BancoTeste.h"
#include "contexto/Servidor.h"
#include "emission/Retorno.h"
#include "nfce/GeraNfce.h"
#include "nfce/PedidoChave.h"
#include "storage/ArquivoTexto.h"
#include "storage/Empresa.h"
#include "storage/Esquema.h"
#include "storage/Pastas.h"

#include <QDir>
#include <QRegularExpression>
#include <functional>

namespace nfce::teste {
namespace {

using namespace Qt::StringLiterals;

const QString Cnpj = u"18123456000190"_s;

const QStringList RegistroEmpresa = {
    u"CNPJ=18123456000190"_s,
    u"NOME=Mercado Bom Preco Ltda"_s,
    u"SERIE=1"_s,
    u"CODMUNICIPIO=3106200"_s,
    u"IE=062.307.904/0081"_s,
    u"ENDERECO=Rua da Bahia"_s,
    u"NUMERO=1148"_s,
    u"BAIRRO=Centro"_s,
    u"CIDADE=Belo Horizonte"_s,
    u"UF=MG"_s,
    u"TELEFONE=(31) 3333-4444"_s,
    u"CEP=30.160-011"_s,
};

// What the readers returned for one sale.
struct Resultado {
    QString chavePedida;     // LeChaveXml, or LeChaveTxt when none came
    QString chaveConvertida; // LeChaveNfe
    QString conversao;       // LeErroNfe
    QString recusa;          // LeErroRecibo
    QString retorno;         // ProcessaRetorno
};

class TrocaUniNfeTest : public BancoTeste {
protected:
    void SetUp() override {
        BancoTeste::SetUp();
        if (IsSkipped()) return;
        pasta.EscreveEmpresa(RegistroEmpresa);
        Configura({u"TMPAMBNFCE=2"_s, u"TEMP=1"_s});
        QDir().mkpath(DaEmpresa(u"Envio"_s));
        QDir().mkpath(DaEmpresa(u"Validar"_s));
        servidor = std::make_unique<Servidor>(pasta.caminho(), ambiente);
        servidor->empresa = CarregaEmpresa(pasta.caminho());
        servidor->conexoes.PreparaConexaoPrincipal();
        servidor->conexoes.ReabreConexao();
        ExecutaScript(*servidor->conexoes.ConexaoPrincipal(),
                      QStringLiteral(NFCE_DADOS_TESTE "/nfce/loja.sql"));
        gancho = ambiente.AoBombear([this] { uninfe.Processa(ambiente.Agora()); });
    }

    void TearDown() override {
        servidor.reset();
        BancoTeste::TearDown();
    }

    QString DaEmpresa(const QString& relativo) const {
        return pasta.Caminho(Cnpj + u'/' + relativo);
    }

    // A sale of two items: rice (product 1) and sugar (product 11), paid in cash.
    void CriaVenda(qint32 nfce) {
        const QString n = QString::number(nfce), cupom = QString::number(nfce - 900);
        Executa(u"INSERT INTO vendas (nfce, cupom, data, hora, valor, Dinheiro, cliente, "
                "nomecliente, tempo) VALUES ("_s +
                n + u", "_s + cupom +
                u", '2026-11-15', '10:20:30', 31.15, 31.15, 1, 'CONSUMIDOR FINAL', '0')"_s);
        Executa(u"INSERT INTO itens (nfce, cupom, Item, codprod, quant, valor, valortotal) "
                "VALUES ("_s +
                n + u", "_s + cupom + u", 1, 1, 1, 21.15, 21.15), ("_s + n + u", "_s + cupom +
                u", 2, 11, 1, 10, 10)"_s);
    }

    // The automatic sender's steps for one sale, with its answer readers.
    Resultado Emite(qint32 nfce) {
        Servidor& s = *servidor;
        Resultado r;
        s.venda.ModoRetorno = u"NC1"_s;
        s.painel.LblMens01.clear();
        PedeChave(s, nfce, u"2611"_s, 9);
        r.chavePedida = LeChaveXml(s, nfce);
        if (r.chavePedida.isEmpty()) r.chavePedida = LeChaveTxt(s, nfce);
        GeraNfceDaVenda(s, nfce);
        r.chaveConvertida = LeChaveNfe(s);
        // UniNFe validates a text from Validar without sending it: the sender hands it over.
        const QString validado =
            DaEmpresa(u"Validar/Validado/"_s + r.chaveConvertida + u"-nfe.xml"_s);
        if (ArquivoExiste(validado))
            CopiaArquivo(validado, DaEmpresa(u"Envio/"_s + r.chaveConvertida + u"-nfe.xml"_s));
        r.conversao = LeErroNfe(s);
        GravaLote(s);
        r.recusa = LeErroRecibo(s);
        for (int vez = 0; vez < 2 && r.retorno.isEmpty(); ++vez) {
            s.venda.MesAutorizados = s.venda.MesContabil = u"112026"_s;
            r.retorno = ProcessaRetorno(s);
        }
        return r;
    }

    QString Coluna(qint32 nfce, const QString& coluna) {
        return Texto(u"SELECT "_s + coluna + u" FROM vendas WHERE nfce = "_s +
                     QString::number(nfce));
    }

    std::unique_ptr<Servidor> servidor;
    uninfesim::Simulador uninfe{pasta.caminho()};
    int gancho = 0;
};

// What the readers return, then the sale row as they leave it.
struct Desfecho {
    QString conversao; // LeErroNfe
    QString recusa;    // LeErroRecibo
    QString retorno;   // ProcessaRetorno
};
struct Linha {
    const char* autorizacao; // pattern
    QString erro;
    const char* tempo;
    const char* enviotime;
    const char* xml;
};
struct Caso {
    const char* nome;
    qint32 nfce;
    QString cenario; // in the stand-in's scenario words
    Desfecho desfecho;
    Linha linha;
    QString arquivo; // below the company folder afterwards; %1 is the key
};

const QString Autorizado = u"Autorizado o uso da NF-e"_s;
const QString Conversao = u"Falha na Conversao da NFC-e - [I]"_s;
const QString MotivoHostil = Autorizado + u" \\ 'D''Ávila' {fn NOW()} ? %s --"_s;

const Caso Casos[] = {
    {"autorizada",
     1001,
     u"autoriza"_s,
     {{}, {}, u"100 - "_s + Autorizado},
     {"^13126\\d{10}$", Autorizado, "1", "0", "S"},
     u"CONTABILIDADE/112026/000001001-procNFe.xml"_s},
    {"NCM do item 2 rejeitado",
     1002,
     u"rejeita 778 item 2"_s,
     {{}, {}, u"Erro: NCM Inexistente Código do Produto: 11"_s},
     {"^$", u"NCM Inexistente Cod. Produto 000011"_s, "0", "1", ""},
     {}},
    // The duplicate's XML comes from the situation query that the reader asks for.
    {"duplicidade",
     1003,
     u"duplicidade"_s,
     {{}, {}, Autorizado},
     {"^31\\d{13}\\]$", Autorizado, "1", "1", ""},
     u"Enviado/Autorizados/112026/%1-procNFe.xml"_s},
    {"erro de conversão",
     1004,
     u"erro-conversao"_s,
     {Conversao, {}, {}},
     {"^$", Conversao, "0", "1", ""},
     {}},
    {"lote recusado",
     1005,
     u"lote-recusado motivo Erro ao invocar o serviço 'NFeAutorizacao4'"_s,
     {{}, u"ERRO AO INVOCAR O SERVIÇO 'NFEAUTORIZACAO4'"_s, {}},
     {"^$", u"ERRO AO INVOCAR O SERVIÇO NFEAUTORIZACAO4"_s, "0", "0", ""},
     {}},
    {"chave só em texto",
     1007,
     u"autoriza chave-txt"_s,
     {{}, {}, u"100 - "_s + Autorizado},
     {"^13126\\d{10}$", Autorizado, "1", "0", "S"},
     {}},
    // Quotes, a backslash, an ODBC escape and a parameter marker reach the database as text.
    {"motivo com aspas e escapes",
     1006,
     u"autoriza motivo "_s + MotivoHostil,
     {{}, {}, u"100 - "_s + MotivoHostil},
     {"^13126\\d{10}$", MotivoHostil, "1", "0", "S"},
     {}},
};

TEST_P(TrocaUniNfeTest, CadaDesfechoDaUniNfeNaLinhaDaVenda) {
    for (const Caso& caso : Casos) {
        SCOPED_TRACE(caso.nome);
        uninfesim::Cenario cenario;
        QString erro;
        ASSERT_TRUE(uninfesim::LeCenario(caso.cenario, cenario, erro)) << erro.toStdString();
        uninfe.DefineCenario(caso.nfce, cenario);
        CriaVenda(caso.nfce);

        const Resultado r = Emite(caso.nfce);
        const QString chave = r.chavePedida;
        // The key asked for before the text exists is the key of the converted document.
        EXPECT_TRUE(QRegularExpression(u"^312611"_s + Cnpj + u"65001"_s +
                                       QString::number(caso.nfce).rightJustified(9, u'0') +
                                       u"9\\d{9}$"_s)
                        .match(chave)
                        .hasMatch())
            << chave.toStdString();
        EXPECT_EQ(r.chaveConvertida, caso.desfecho.conversao.isEmpty() ? chave : QString());
        EXPECT_EQ(r.conversao, caso.desfecho.conversao);
        EXPECT_EQ(r.recusa, caso.desfecho.recusa);
        EXPECT_EQ(r.retorno, caso.desfecho.retorno);

        EXPECT_EQ(Coluna(caso.nfce, u"chave"_s), chave);
        const QString autorizacao = Coluna(caso.nfce, u"autorizacao"_s);
        EXPECT_TRUE(
            QRegularExpression(QLatin1String(caso.linha.autorizacao)).match(autorizacao).hasMatch())
            << autorizacao.toStdString();
        EXPECT_EQ(Coluna(caso.nfce, u"erro"_s), caso.linha.erro);
        EXPECT_EQ(Coluna(caso.nfce, u"tempo"_s), QLatin1String(caso.linha.tempo));
        EXPECT_EQ(Coluna(caso.nfce, u"enviotime"_s), QLatin1String(caso.linha.enviotime));
        EXPECT_EQ(Coluna(caso.nfce, u"xml"_s), QLatin1String(caso.linha.xml));
        ambiente.Aguarda(1);
        const QString arquivo = QString(caso.arquivo).replace(u"%1"_s, chave);
        EXPECT_TRUE(arquivo.isEmpty() ||
                    ArquivoExiste(Caminho(pasta.caminho(), Cnpj + u'/' + arquivo)))
            << arquivo.toStdString();
    }
}

// Answers far longer than UniNFe ever writes: the values are cut to their columns, so the
// MariaDB of a shop (strict, as installed) takes the statements that SQLite would take anyway.
TEST_P(TrocaUniNfeTest, RespostasLongasCabemNasColunas) {
    const QByteArray longo = QByteArray(100000, '7');
    const QString sete44 = QString(44, u'7');
    const struct {
        const char* nome;
        QString arquivo;
        QByteArray conteudo;
        std::function<void(Servidor&)> leitor;
        QStringList colunas;
        QStringList esperados;
    } casos[] = {
        {"chave em texto",
         u"0000001001-ret-gerar-chave.txt"_s,
         longo,
         [](Servidor& s) { LeChaveTxt(s, 1001); },
         {u"chave"_s},
         {sete44}},
        {"protocolo",
         u"000000000000054-pro-rec.txt"_s,
         "1;1001;" + longo + ";2026-11-15T10:21:00-03:00;" + longo + ";dv;100;" + longo + ";",
         [](Servidor& s) { ProcessaRetorno(s); },
         {u"chave"_s, u"autorizacao"_s, u"erro"_s},
         {sete44, QString(60, u'7'), QString(21845, u'7')}},
        // Three bytes in UTF-8 for every euro sign.
        {"erro de conversão",
         u"000001001_18123456000190_001_15_11_2026-nfe.err"_s,
         "xMotivo=Falha\r\n" + QByteArray("Segmento \x80\x80\x80\r\n").repeated(8000),
         [](Servidor& s) { LeErroNfe(s); },
         {u"erro"_s},
         {(u"Falha na Conversao da NFC-e - "_s + QString(24000, QChar(0x20ac))).left(21845)}},
    };
    ambiente.RemoveGancho(gancho); // nothing here is for the stand-in
    CriaVenda(1001);
    Servidor& s = *servidor;
    s.venda.NumCupom = 101;
    s.venda.NumNfce = 1001;
    s.venda.CnpjEmpresa = Cnpj;
    s.venda.SerieNfce = u"001"_s;
    s.venda.DataArquivo = u"15112026"_s;
    s.venda.MesAutorizados = u"112026"_s;
    s.painel.LblMens01 = u"k"_s;
    pasta.EscreveArquivo(Cnpj + u"/Retorno/k-num-lot.txt"_s, "54;");
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.nome);
        pasta.EscreveArquivo(Cnpj + u"/Retorno/"_s + caso.arquivo, caso.conteudo);
        EXPECT_NO_THROW(caso.leitor(s));
        for (qsizetype i = 0; i < caso.colunas.size(); ++i)
            EXPECT_EQ(Coluna(1001, caso.colunas[i]), caso.esperados[i])
                << caso.colunas[i].toStdString();
    }
}

INSTANTIATE_TEST_SUITE_P(Motores, TrocaUniNfeTest, ::testing::ValuesIn(Motores()), NomeDoMotor);

} // namespace
} // namespace nfce::teste
