#include "context/Servidor.h"
#include "emission/EnviaPendentes.h"
#include "export/Exportacao.h"
#include "nfce/Valores.h"
#include "support/LojaComUniNfe.h"

#include <QProcess>

namespace nfce::teste {
namespace {

using namespace Qt::StringLiterals;

constexpr int Vendas = 60;
constexpr int PrimeiroCupom = 100;

// What the till says it committed: each sale's kind, and the last value of its own column.
struct Relato {
    QHash<int, QString> tipos;
    QHash<int, QString> series;
};

Relato LeRelato(const QByteArray& saida) {
    Relato relato;
    for (const QByteArray& linha : saida.split('\n')) {
        const QList<QByteArray> partes = linha.split(' ');
        if (partes.size() != 3) continue;
        (partes[0] == "venda" ? relato.tipos : relato.series)
            .insert(partes[1].toInt(), QString::fromUtf8(partes[2]));
    }
    return relato;
}

class CargaTest : public LojaComUniNfe {
protected:
    void SetUp() override {
        LojaComUniNfe::SetUp();
        if (IsSkipped()) return;
        CriaRemota();
        Configura({u"TMPAMBNFCE=2"_s, u"TEMP=1"_s, u"VENDASONLINESRV=SIM"_s});
        NovoServidor();
        s->conexoes.AbreConexaoRemota();
    }

    // The rows of `sql`, each as its columns joined by "|" (money as "0.00" where asked).
    QStringList Linhas(const QString& sql, bool remota = false) {
        Registros rs;
        remota ? conexoes->AbreConsultaRemota(rs, sql) : conexoes->AbreConsulta(rs, sql);
        QStringList linhas;
        for (; !rs.Eof(); rs.MoveNext()) {
            QStringList linha;
            for (const QString& campo : rs.Campos())
                linha << (campo.startsWith(u"d_"_s) ? Dinheiro(MoedaDe(rs.Campo(campo)))
                                                    : rs.Texto(campo));
            linhas << linha.join(u'|');
        }
        return linhas;
    }

    // "tempo/enviotime" of the sale, then each item's discount/surcharge.
    QString Estado(int cupom) {
        const QString venda =
            Linhas(u"SELECT tempo, enviotime FROM vendas WHERE cupom = %1"_s.arg(cupom))
                .join(u' ')
                .replace(u'|', u'/');
        const QStringList itens = Linhas(u"SELECT desconto AS d_d, acrescimo AS d_a FROM itens "
                                         "WHERE cupom = %1 ORDER BY Item"_s.arg(cupom));
        return venda + u' ' + itens.join(u' ').replace(u'|', u'/');
    }
};

// A till writes a sale every 50 ms and changes earlier ones while a pass of the sender and an
// export run: nothing it wrote is lost or changed, each sale ends as the rules say, and every
// row marked exported is on the remote side exactly once.
TEST_P(CargaTest, CaixaGravandoDuranteEnvioEExportacao) {
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
    const Relato relato = LeRelato(saida + caixa.readAllStandardOutput());
    ASSERT_EQ(relato.tipos.size(), Vendas);

    // An NFC-e sale either went (its discount apportioned) or waits as the till wrote it.
    const QString comoOCaixaGravou = u"/0 0.25/0.10 0.25/0.10"_s;
    const QHash<QString, QStringList> estados = {
        {u"nfce"_s, {u"1/1 0.33/0.00 0.67/0.00"_s, u"/0 0.00/0.00 0.00/0.00"_s}},
        {u"sem"_s, {comoOCaixaGravou}},
        {u"cancelada"_s, {comoOCaixaGravou}},
    };
    for (const auto& [cupom, tipo] : relato.tipos.asKeyValueRange()) {
        const QString estado = Estado(cupom);
        EXPECT_TRUE(estados[tipo].contains(estado)) << cupom << ' ' << estado.toStdString();
        EXPECT_EQ(Texto(u"SELECT serie FROM vendas WHERE cupom = %1"_s.arg(cupom)),
                  relato.series.value(cupom, u"T"_s))
            << cupom;
    }
    EXPECT_EQ(Estado(PrimeiroCupom).toStdString(), estados[u"nfce"_s].first().toStdString());
    EXPECT_EQ(Conta(u"itens"_s), 2 * Vendas);

    EXPECT_EQ(Conta(u"itens"_s, u"exportado <> 0 AND (exportado <> 1 OR situacao <> 'N')"_s) +
                  Conta(u"vendas"_s, u"exportado <> 0 AND (exportado <> 1 OR situacao <> 'N')"_s),
              0);
    EXPECT_EQ(Linhas(u"SELECT cupom, item FROM itens ORDER BY cupom, item"_s, true),
              Linhas(u"SELECT cupom, Item FROM itens WHERE exportado = 1 ORDER BY cupom, Item"_s));
    EXPECT_EQ(Linhas(u"SELECT cupom FROM vendas ORDER BY cupom"_s, true),
              Linhas(u"SELECT cupom FROM vendas WHERE exportado = 1 ORDER BY cupom"_s));
    EXPECT_GE(exportacao.vendasConfirmadas, 1);
}

INSTANTIATE_TEST_SUITE_P(Motores, CargaTest, ::testing::ValuesIn(Motores()), NomeDoMotor);

} // namespace
} // namespace nfce::teste
