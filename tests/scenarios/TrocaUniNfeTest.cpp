// The server's side of the exchange with UniNFe, end to end: the key request, the generator and
// every answer reader against the stand-in, which writes UniNFe's own file forms. Each pump of
// the virtual clock runs one pass of the stand-in, as the real UniNFe watches its folders.
#include "emission/PedidoChave.h"
#include "emission/Retorno.h"
#include "nfce/GeraNfce.h"
#include "storage/ArquivoTexto.h"
#include "storage/Pastas.h"
#include "support/LojaComUniNfe.h"

#include <QRegularExpression>

namespace nfce::teste {
namespace {

using namespace Qt::StringLiterals;

const QString Cnpj = u"18123456000104"_s;

// What the readers returned for one sale.
struct Resultado {
    QString chavePedida;     // LeChaveXml, or LeChaveTxt when none came
    QString chaveConvertida; // LeChaveNfe
    QString conversao;       // LeErroNfe
    QString recusa;          // LeErroRecibo
    QString retorno;         // ProcessaRetorno
};

class TrocaUniNfeTest : public LojaComUniNfe {
protected:
    // A sale of two items: rice (product 1) and sugar (product 11), paid in cash.
    void CriaVenda(int nfce) {
        Venda(nfce, nfce - 900, u"0"_s);
        Executa(u"UPDATE vendas SET valor = 31.15, Dinheiro = 31.15 WHERE nfce = %1"_s.arg(nfce));
        Executa(u"INSERT INTO itens (nfce, cupom, Item, codprod, quant, valor, valortotal) "
                "VALUES (%1, %2, 2, 11, 1, 10, 10)"_s.arg(nfce)
                    .arg(nfce - 900));
    }

    // The automatic sender's steps for one sale, with its answer readers.
    Resultado Emite(int nfce) {
        Resultado r;
        s->venda.ModoRetorno = u"NC1"_s;
        s->painel.LblMens01.clear();
        PedeChave(*s, nfce, u"2611"_s, 9);
        r.chavePedida = LeChaveXml(*s, nfce);
        if (r.chavePedida.isEmpty()) r.chavePedida = LeChaveTxt(*s, nfce);
        GeraNfceDaVenda(*s, nfce);
        r.chaveConvertida = LeChaveNfe(*s);
        // UniNFe validates a text from Validar without sending it: the sender hands it over.
        const QString validado =
            NaEmpresa(u"Validar/Validado/"_s + r.chaveConvertida + u"-nfe.xml"_s);
        if (ArquivoExiste(validado))
            CopiaArquivo(validado, NaEmpresa(u"Envio/"_s + r.chaveConvertida + u"-nfe.xml"_s));
        r.conversao = LeErroNfe(*s);
        GravaLote(*s);
        r.recusa = LeErroRecibo(*s);
        for (int vez = 0; vez < 2 && r.retorno.isEmpty(); ++vez) {
            s->venda.MesAutorizados = s->venda.MesContabil = u"112026"_s;
            r.retorno = ProcessaRetorno(*s);
        }
        return r;
    }
};

const QString Autorizado = u"Autorizado o uso da NF-e"_s;
const QString Conversao = u"Falha na Conversao da NFC-e - [I]"_s;
// Quotes, a backslash, an ODBC escape and a parameter marker reach the database as text.
const QString MotivoHostil = Autorizado + u" \\ 'D''Ávila' {fn NOW()} ? %s --"_s;

// The sale, its scenario in the stand-in's words; what LeErroNfe, LeErroRecibo and
// ProcessaRetorno return; then the row (a pattern for autorizacao; erro|tempo|enviotime|xml)
// and a file below the company folder afterwards (%1 the key). The duplicate's XML comes from
// the situation query that the reader asks for.
struct Caso {
    int nfce;
    QString cenario, conversao, recusa, retorno;
    const char* autorizacao;
    QString linha, arquivo;
};
const Caso Casos[] = {
    {1001,
     u"autoriza"_s,
     {},
     {},
     u"100 - "_s + Autorizado,
     "^13126\\d{10}$",
     Autorizado + u"|1|0|S"_s,
     u"CONTABILIDADE/112026/000001001-procNFe.xml"_s},
    {1002,
     u"rejeita 778 item 2"_s,
     {},
     {},
     u"Erro: NCM Inexistente Código do Produto: 11"_s,
     "^$",
     u"NCM Inexistente Cod. Produto 000011|0|1|"_s,
     {}},
    {1003,
     u"duplicidade"_s,
     {},
     {},
     Autorizado,
     "^31\\d{13}\\]$",
     Autorizado + u"|1|1|"_s,
     u"Enviado/Autorizados/112026/%1-procNFe.xml"_s},
    {1004, u"erro-conversao"_s, Conversao, {}, {}, "^$", Conversao + u"|0|1|"_s, {}},
    {1005,
     u"lote-recusado motivo Erro ao invocar o serviço 'NFeAutorizacao4'"_s,
     {},
     u"ERRO AO INVOCAR O SERVIÇO 'NFEAUTORIZACAO4'"_s,
     {},
     "^$",
     u"ERRO AO INVOCAR O SERVIÇO NFEAUTORIZACAO4|0|0|"_s,
     {}},
    {1007,
     u"autoriza chave-txt"_s,
     {},
     {},
     u"100 - "_s + Autorizado,
     "^13126\\d{10}$",
     Autorizado + u"|1|0|S"_s,
     {}},
    {1006,
     u"autoriza motivo "_s + MotivoHostil,
     {},
     {},
     u"100 - "_s + MotivoHostil,
     "^13126\\d{10}$",
     MotivoHostil + u"|1|0|S"_s,
     {}},
};

TEST_P(TrocaUniNfeTest, CadaDesfechoDaUniNfeNaLinhaDaVenda) {
    for (const Caso& caso : Casos) {
        SCOPED_TRACE(caso.cenario.toStdString());
        uninfesim::Cenario cenario;
        QString erro;
        ASSERT_TRUE(uninfesim::LeCenario(caso.cenario, cenario, erro)) << erro.toStdString();
        sim->DefineCenario(caso.nfce, cenario);
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
        EXPECT_EQ(r.chaveConvertida, caso.conversao.isEmpty() ? chave : QString());
        EXPECT_EQ(r.conversao + u'|' + r.recusa + u'|' + r.retorno,
                  caso.conversao + u'|' + caso.recusa + u'|' + caso.retorno);
        EXPECT_EQ(Coluna(u"chave"_s, caso.nfce), chave);
        const QString autorizacao = Coluna(u"autorizacao"_s, caso.nfce);
        EXPECT_TRUE(
            QRegularExpression(QLatin1String(caso.autorizacao)).match(autorizacao).hasMatch())
            << autorizacao.toStdString();
        EXPECT_EQ(
            Colunas(u"vendas WHERE nfce = %1"_s.arg(caso.nfce), u"erro,tempo,enviotime,xml"_s),
            caso.linha);
        ambiente.Aguarda(1);
        const QString arquivo = QString(caso.arquivo).replace(u"%1"_s, chave);
        EXPECT_TRUE(arquivo.isEmpty() || Existe(arquivo)) << arquivo.toStdString();
    }
}

INSTANTIATE_TEST_SUITE_P(Motores, TrocaUniNfeTest, ::testing::ValuesIn(Motores()), NomeDoMotor);

} // namespace
} // namespace nfce::teste
