#include "context/Servidor.h"
#include "emission/EnviaPendentes.h"
#include "export/Exportacao.h"
#include "support/LojaComUniNfe.h"

#include <QProcess>

namespace nfce::teste {
namespace {

using namespace Qt::StringLiterals;

constexpr int Vendas = 60;
constexpr int PrimeiroCupom = 100;

class CargaTest : public LojaComUniNfe {
protected:
    // The rows of `sql` joined by " ", each with its columns joined by "/".
    QString Linhas(const QString& sql, bool remota = false) {
        Registros rs;
        remota ? conexoes->AbreConsultaRemota(rs, sql) : conexoes->AbreConsulta(rs, sql);
        QStringList linhas;
        for (; !rs.Eof(); rs.MoveNext()) {
            QStringList linha;
            for (const QString& campo : rs.Campos())
                linha << rs.Texto(campo);
            linhas << linha.join(u'/');
        }
        return linhas.join(u' ');
    }
};

// A till writes a sale every 50 ms and changes earlier ones while a pass of the sender and an
// export run: nothing it wrote is lost or changed, each sale ends as the rules say, and every
// row marked exported is on the remote side exactly once.
TEST_P(CargaTest, CaixaGravandoDuranteEnvioEExportacao) {
    CriaRemota();
    Configura({u"TMPAMBNFCE=2"_s, u"TEMP=1"_s, u"VENDASONLINESRV=SIM"_s});
    NovoServidor();
    s->conexoes.AbreConexaoRemota();
    QProcess caixa;
    caixa.start(QStringLiteral(NFCE_BINARIO_CAIXA),
                {EmSqlite() ? u"QSQLITE"_s : u"QODBC"_s, s->conexoes.ConexaoPrincipal()->Origem(),
                 QString::number(PrimeiroCupom), QString::number(Vendas), u"2000"_s});
    // The pass begins once the till has written a sixth of its sales.
    QByteArray saida;
    while (saida.count("venda") < Vendas / 6) {
        ASSERT_TRUE(caixa.waitForReadyRead(60000)) << caixa.readAllStandardError().toStdString();
        saida += caixa.readAllStandardOutput();
    }
    EnviaPendentes(*s);
    const ResultadoExportacao exportacao = CmdExportar(*s);
    ASSERT_TRUE(caixa.waitForFinished(120000));
    EXPECT_EQ(caixa.exitCode(), 0);
    EXPECT_EQ(caixa.readAllStandardError().toStdString(), "");

    // The till's report: "venda CUPOM TIPO" and "serie CUPOM VALOR" (its own column).
    QHash<int, QByteArray> tipos, series;
    for (const QByteArray& linha : (saida + caixa.readAllStandardOutput()).split('\n')) {
        const QList<QByteArray> p = linha.split(' ');
        if (p.size() == 3) (p[0] == "venda" ? tipos : series).insert(p[1].toInt(), p[2]);
    }
    ASSERT_EQ(tipos.size(), Vendas);
    // tempo/enviotime/serie and each item's discount/surcharge: an NFC-e sale either went (its
    // discount apportioned) or waits as the till wrote it; the others stay as written.
    const QString enviada = u"1/1/%1/33/0 1/1/%1/67/0"_s;
    const QString gravada = u"/0/%1/%2 /0/%1/%2"_s;
    for (const auto& [cupom, tipo] : tipos.asKeyValueRange()) {
        const QString serie = QString::fromUtf8(series.value(cupom, "T"));
        const QString estado = Linhas(
            u"SELECT v.tempo, v.enviotime, v.serie, CAST(ROUND(i.desconto * 100) AS INTEGER), "
            "CAST(ROUND(i.acrescimo * 100) AS INTEGER) FROM vendas v JOIN itens i USING (cupom) "
            "WHERE cupom = %1 ORDER BY i.Item"_s.arg(cupom));
        const QStringList esperados =
            tipo == "nfce" ? QStringList{enviada.arg(serie), gravada.arg(serie, u"0/0"_s)}
                           : QStringList{gravada.arg(serie, u"25/10"_s)};
        EXPECT_TRUE(cupom == PrimeiroCupom ? estado == esperados[0] : esperados.contains(estado))
            << cupom << ' ' << estado.toStdString();
    }

    const QString malMarcada = u"exportado <> 0 AND (exportado <> 1 OR situacao <> 'N')"_s;
    EXPECT_EQ(Conta(u"itens"_s, malMarcada) + Conta(u"vendas"_s, malMarcada), 0);
    const QString linhas =
        u"SELECT cupom, item FROM itens%1 UNION ALL SELECT cupom, 0 FROM vendas%1 ORDER BY 1, 2"_s;
    EXPECT_EQ(Linhas(linhas.arg(u""_s), true), Linhas(linhas.arg(u" WHERE exportado = 1"_s)));
    EXPECT_GE(exportacao.vendasConfirmadas, 1);
}

INSTANTIATE_TEST_SUITE_P(Motores, CargaTest, ::testing::ValuesIn(Motores()), NomeDoMotor);

} // namespace
} // namespace nfce::teste
