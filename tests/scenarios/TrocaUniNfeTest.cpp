// The server's side of the exchange with UniNFe, end to end: the key request, the generator and
// every answer reader against the stand-in, which answers at each pump of the virtual clock.
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

class TrocaUniNfeTest : public LojaComUniNfe {
protected:
    // The automatic sender's steps for a sale of two items (products 1 and 11); what
    // LeErroNfe, LeErroRecibo and ProcessaRetorno return, joined by "|".
    QString Emite(int nfce, QString& chave) {
        Venda(nfce, nfce - 900, u"0"_s);
        Executa(u"UPDATE vendas SET valor = 31.15, Dinheiro = 31.15 WHERE nfce = %1"_s.arg(nfce));
        Executa(u"INSERT INTO itens (nfce, cupom, Item, codprod, quant, valor, valortotal) "
                "VALUES (%1, %2, 2, 11, 1, 10, 10)"_s.arg(nfce)
                    .arg(nfce - 900));
        s->venda.ModoRetorno = u"NC1"_s;
        s->painel.LblMens01.clear();
        PedeChave(*s, nfce, u"2611"_s, 9);
        chave = LeChaveXml(*s, nfce);
        if (chave.isEmpty()) chave = LeChaveTxt(*s, nfce);
        GeraNfceDaVenda(*s, nfce);
        const QString convertida = LeChaveNfe(*s);
        EXPECT_TRUE(convertida.isEmpty() || convertida == chave) << convertida.toStdString();
        // UniNFe validates a text from Validar without sending it: the sender hands it over.
        const QString validado = NaEmpresa(u"Validar/Validado/"_s + convertida + u"-nfe.xml"_s);
        if (ArquivoExiste(validado))
            CopiaArquivo(validado, NaEmpresa(u"Envio/"_s + convertida + u"-nfe.xml"_s));
        QString lido = LeErroNfe(*s) + u'|';
        GravaLote(*s);
        lido += LeErroRecibo(*s) + u'|';
        for (int vez = 0; vez < 2 && lido.endsWith(u'|'); ++vez) {
            s->venda.MesAutorizados = s->venda.MesContabil = u"112026"_s;
            lido += ProcessaRetorno(*s);
        }
        return lido;
    }
};

bool Casa(const QString& padrao, const QString& texto) {
    return QRegularExpression(u"^"_s + padrao + u"$"_s).match(texto).hasMatch();
}

const QString A = u"Autorizado o uso da NF-e"_s;
const QString Conversao = u"Falha na Conversao da NFC-e - [I]"_s;
// Quotes, a backslash, an ODBC escape and a parameter marker reach the database as text.
const QString Hostil = A + u" \\ 'D''Ávila' {fn NOW()} ? %s --"_s;

// The scenario; what the readers return; the row's autorizacao (a pattern) and
// erro|tempo|enviotime|xml (a duplicate's XML comes from the situation query); a file (%1 the key).
struct Caso {
    QString cenario, lido;
    const char* autorizacao;
    QString linha, arquivo = {};
};
const Caso Casos[] = {
    {u"autoriza"_s, u"||100 - "_s + A, "13126\\d{10}", A + u"|1|0|S"_s,
     u"CONTABILIDADE/112026/000001001-procNFe.xml"_s},
    {u"rejeita 778 item 2"_s, u"||Erro: NCM Inexistente Código do Produto: 11"_s, "",
     u"NCM Inexistente Cod. Produto 000011|0|1|"_s},
    {u"duplicidade"_s, u"||"_s + A, "31\\d{13}\\]", A + u"|1|1|"_s,
     u"Enviado/Autorizados/112026/%1-procNFe.xml"_s},
    {u"erro-conversao"_s, Conversao + u"||"_s, "", Conversao + u"|0|1|"_s},
    {u"lote-recusado motivo Erro ao invocar o serviço 'NFeAutorizacao4'"_s,
     u"|ERRO AO INVOCAR O SERVIÇO 'NFEAUTORIZACAO4'|"_s, "",
     u"ERRO AO INVOCAR O SERVIÇO NFEAUTORIZACAO4|0|0|"_s},
    {u"autoriza chave-txt motivo "_s + Hostil, u"||100 - "_s + Hostil, "13126\\d{10}",
     Hostil + u"|1|0|S"_s},
};

TEST_P(TrocaUniNfeTest, CadaDesfechoDaUniNfeNaLinhaDaVenda) {
    int nfce = 1000;
    for (const Caso& caso : Casos) {
        SCOPED_TRACE(caso.cenario.toStdString());
        uninfesim::Cenario cenario;
        QString erro, chave;
        ASSERT_TRUE(uninfesim::LeCenario(caso.cenario, cenario, erro)) << erro.toStdString();
        sim->DefineCenario(++nfce, cenario);
        EXPECT_EQ(Emite(nfce, chave), caso.lido);
        // The key asked for before the text exists is the key of the converted document.
        EXPECT_TRUE(Casa(u"312611181234560001046500100000%1"_s.arg(nfce) + u"9\\d{9}"_s, chave))
            << chave.toStdString();
        const QString linha = Coluna(u"chave,autorizacao,erro,tempo,enviotime,xml"_s, nfce);
        EXPECT_TRUE(Casa(QRegularExpression::escape(chave) + u"\\|"_s +
                             QLatin1String(caso.autorizacao) + u"\\|"_s +
                             QRegularExpression::escape(caso.linha),
                         linha))
            << linha.toStdString();
        ambiente.Aguarda(1);
        const QString arquivo = QString(caso.arquivo).replace(u"%1"_s, chave);
        EXPECT_TRUE(arquivo.isEmpty() || Existe(arquivo)) << arquivo.toStdString();
    }
}

INSTANTIATE_TEST_SUITE_P(Motores, TrocaUniNfeTest, ::testing::ValuesIn(Motores()), NomeDoMotor);

} // namespace
} // namespace nfce::teste
