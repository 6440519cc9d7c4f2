#include "emission/EnviaPendentes.h"
#include "emission/PedidoChave.h"
#include "emission/Retorno.h"
#include "export/Exportacao.h"
#include "nfce/GeraNfce.h"
#include "storage/ArquivoTexto.h"
#include "storage/Pastas.h"
#include "support/LojaComUniNfe.h"

#include <QProcess>
#include <QRegularExpression>

namespace nfce::teste {
namespace {

using namespace Qt::StringLiterals;

class CenarioTest : public LojaComUniNfe {
protected:
    // The rows of `sql`, each with its columns joined by "/" and ended by " ".
    QString Linhas(const QString& sql, bool remota = false) {
        Registros rs;
        remota ? conexoes->AbreConsultaRemota(rs, sql) : conexoes->AbreConsulta(rs, sql);
        QString linhas;
        for (; !rs.Eof(); rs.MoveNext())
            for (const QString& campo : rs.Campos())
                linhas += rs.Texto(campo) + (campo == rs.Campos().last() ? u' ' : u'/');
        return linhas;
    }
    // The sender's steps for a sale of products 1 and 11: what each answer reader returns.
    QString Emite(int nfce, QString& chave) {
        Venda(nfce, nfce - 900, u"0"_s);
        Executa(u"UPDATE vendas SET valor = 31.15, Dinheiro = 31.15 WHERE nfce = %1"_s.arg(nfce));
        Executa(u"INSERT INTO itens (nfce, cupom, Item, codprod, quant, valor, valortotal) "
                "VALUES (%1, %1 - 900, 2, 11, 1, 10, 10)"_s.arg(nfce));
        s->venda.ModoRetorno = u"NC1"_s;
        s->painel.LblMens01.clear();
        PedeChave(*s, nfce, u"2611"_s, 9);
        if ((chave = LeChaveXml(*s, nfce)).isEmpty()) chave = LeChaveTxt(*s, nfce);
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

TEST_P(CenarioTest, CadaDesfechoDaUniNfeNaLinhaDaVenda) {
    int nfce = 1000;
    for (const Caso& caso : Casos) {
        SCOPED_TRACE(caso.cenario.toStdString());
        sim->DefineCenarios(uninfesim::LeCenarios(u"%1="_s.arg(++nfce) + caso.cenario));
        QString chave;
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

constexpr int Vendas = 60;

// A till writes during a sending pass and an export: nothing lost, each exported row sent once.
TEST_P(CenarioTest, CaixaGravandoDuranteEnvioEExportacao) {
    CriaRemota();
    Configura({u"TMPAMBNFCE=2"_s, u"TEMP=1"_s, u"VENDASONLINESRV=SIM"_s});
    NovoServidor();
    s->conexoes.AbreConexaoRemota();
    QProcess caixa;
    caixa.start(QStringLiteral(NFCE_BINARIO_CAIXA),
                {EmSqlite() ? u"QSQLITE"_s : u"QODBC"_s, s->conexoes.ConexaoPrincipal()->Origem(),
                 u"100"_s, QString::number(Vendas), u"2000"_s});
    QByteArray saida;
    while (saida.count("venda") < Vendas / 6) {
        ASSERT_TRUE(caixa.waitForReadyRead(60000)) << caixa.readAllStandardError().toStdString();
        saida += caixa.readAllStandardOutput();
    }
    EnviaPendentes(*s);
    const ResultadoExportacao exportacao = CmdExportar(*s);
    ASSERT_TRUE(caixa.waitForFinished(120000));
    EXPECT_TRUE(caixa.exitCode() == 0) << caixa.readAllStandardError().toStdString();

    // The till's report: "venda CUPOM TIPO" and "serie CUPOM VALOR" (its own column).
    QHash<int, QByteArray> tipos, series;
    for (const QByteArray& linha : (saida + caixa.readAllStandardOutput()).split('\n')) {
        const QList<QByteArray> p = linha.split(' ');
        if (p.size() == 3) (p[0] == "venda" ? tipos : series).insert(p[1].toInt(), p[2]);
    }
    ASSERT_EQ(tipos.size(), Vendas);
    // tempo/enviotime/serie/discount/surcharge: an NFC-e sale went (discount apportioned) or waits.
    const QString enviada = u"1/1/%1/33/0 1/1/%1/67/0 "_s;
    const QString gravada = u"/0/%1/%2 /0/%1/%2 "_s;
    for (const auto& [cupom, tipo] : tipos.asKeyValueRange()) {
        const QString serie = QString::fromUtf8(series.value(cupom, "T"));
        const QString estado = Linhas(
            u"SELECT v.tempo, v.enviotime, v.serie, CAST(ROUND(i.desconto * 100) AS INTEGER), "
            "CAST(ROUND(i.acrescimo * 100) AS INTEGER) FROM vendas v JOIN itens i USING (cupom) "
            "WHERE cupom = %1 ORDER BY i.Item"_s.arg(cupom));
        const QStringList esperados =
            tipo == "nfce" ? QStringList{enviada.arg(serie), gravada.arg(serie, u"0/0"_s)}
                           : QStringList{gravada.arg(serie, u"25/10"_s)};
        EXPECT_TRUE(cupom == 100 ? estado == esperados[0] : esperados.contains(estado))
            << cupom << ' ' << estado.toStdString();
    }

    const QString malMarcada = u"exportado <> 0 AND (exportado <> 1 OR situacao <> 'N')"_s;
    EXPECT_EQ(Conta(u"itens"_s, malMarcada) + Conta(u"vendas"_s, malMarcada), 0);
    const QString linhas =
        u"SELECT cupom, item FROM itens%1 UNION ALL SELECT cupom, 0 FROM vendas%1 ORDER BY 1, 2"_s;
    EXPECT_EQ(Linhas(linhas.arg(u""_s), true), Linhas(linhas.arg(u" WHERE exportado = 1"_s)));
    EXPECT_GE(exportacao.vendasConfirmadas, 1);
}

INSTANTIATE_TEST_SUITE_P(Motores, CenarioTest, ::testing::ValuesIn(Motores()), NomeDoMotor);

} // namespace
} // namespace nfce::teste
