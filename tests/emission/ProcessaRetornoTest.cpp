#include "CenarioRetorno.h"

#include "emission/Retorno.h"

#include <QDir>

namespace nfce::teste {
namespace {

using namespace Qt::StringLiterals;

const QString Autorizado = u"Enviado/Autorizados/112026/"_s + Chave + u"-procNFe.xml"_s;
const QByteArray Xml = "<?xml version=\"1.0\" encoding=\"UTF-8\"?><nfeProc versao=\"4.00\">"
                       "<xNome>Mercado D'Ávila</xNome></nfeProc>";
// UniNFe's authorised line carries digVal: the code stands in field 6.
const QByteArray Autorizacao = Protocolo("100", "Autorizado o uso da NF-e", true);

using ProcessaRetornoTest = CenarioRetorno;

// The XML text, the receipt count and the filing follow only a code in field 5.
TEST_P(ProcessaRetornoTest, Autorizacao) {
    const QString assinado = Chave + u"-nfe.xml"_s;
    const std::tuple<bool, bool, QString, bool, bool, QString> casos[] = {
        // digVal, authorised XML, folder of the signed XML, situation query, signed XML kept,
        // receipts left
        {true, true, u"Validar/Validado/"_s, false, true, u"5"_s},
        {false, true, u"Validar/Validado/"_s, false, false, u"4"_s},
        {false, false, u"Validar/Validado/"_s, true, true, u"4"_s},
        {false, false, u"Erro/"_s, true, true, u"4"_s},
        {true, false, u"Validar/Validado/"_s, false, true, u"5"_s},
    };
    for (const auto& [digVal, comXml, pasta, consulta, fica, quantidade] : casos) {
        Reinicia();
        if (comXml) Grava(Autorizado, Xml);
        Grava(pasta + assinado, "<NFe/>");
        Responde(digVal ? Autorizacao : Protocolo("100", "Autorizado o uso da NF-e"));
        EXPECT_EQ(ProcessaRetorno(*s),
                  digVal ? u"100 - Autorizado o uso da NF-e"_s : u"Autorizado o uso da NF-e - "_s);
        EXPECT_EQ(DaVenda(u"autorizacao,chave,tempo,enviotime,erro,sync"_s),
                  u"131260000012345|"_s + Chave + u"|1|0|"_s +
                      (digVal ? u"Autorizado o uso da NF-e|0"_s : u"|0"_s));
        EXPECT_EQ(Colunas(u"orcamento"_s, u"autorizacao,tempo,emitido,cupomnfce"_s),
                  u"131260000012345|9|S|501"_s);
        EXPECT_EQ(Texto(u"SELECT MAX(sync) FROM itens WHERE cupom = 501"_s), u"0"_s);
        // The authorisation is keyed on cupom, the XML flag and text on the NFC-e number.
        EXPECT_EQ(DaVenda(u"xml"_s) + DaVenda(u"tempo,xml"_s, 900), comXml ? u"S5|S"_s : u"5|"_s);
        EXPECT_EQ(DaVenda(u"xml_info"_s), comXml && !digVal ? QString::fromUtf8(Xml) : QString());
        EXPECT_EQ(Le(u"Contabilidade/112026/000001234-procNFe.xml"_s), comXml ? Xml : QByteArray());
        EXPECT_EQ(Existe(u"Envio/"_s + Chave + u"-ped-sit.txt"_s), consulta);
        EXPECT_EQ(s->venda.MesAutorizados, consulta ? u"15112026"_s : u"112026"_s);
        EXPECT_EQ(Le(u"Enviado/EmProcessamento/"_s + assinado),
                  consulta ? QByteArray("<NFe/>") : QByteArray());
        EXPECT_EQ(Existe(pasta + assinado), fica);
        EXPECT_EQ(s->painel.LblQuantCup, quantidade);
        EXPECT_EQ(Atualizacoes(1234), 0);
    }
}

TEST_P(ProcessaRetornoTest, Reimpressao) {
    const QStringList danfe = {u"c:\\unimake\\uninfe\\uniDANFE.exe"_s,
                               u"a="_s + pasta.caminho() +
                                   u"\\18123456000104\\ENVIADO\\Autorizados\\112026\\"_s + Chave +
                                   u"-procNFe.xml"_s,
                               u"t=nfce"_s};
    const std::tuple<QString, bool, bool, bool, int, int> casos[] = {
        // mode, print, XML in place, answer Yes, questions, prints
        {u"CP"_s, true, true, false, 0, 1},  {u"CP"_s, true, false, false, 0, 1},
        {u"CP"_s, false, true, false, 0, 0}, {u"NC"_s, true, true, true, 1, 1},
        {u"NC"_s, true, true, false, 1, 0},  {u"NC"_s, true, false, true, 1, 0},
        {u"NC1"_s, true, true, true, 0, 0},  {u"VENDA"_s, true, true, true, 0, 0},
    };
    for (const auto& [modo, imprime, comXml, sim, perguntas, impressoes] : casos) {
        Reinicia();
        s->venda.ModoRetorno = modo;
        s->venda.ImprimeCupom = imprime;
        ambiente.respostas = sim ? QList<bool>{true} : QList<bool>{}; // none left means No
        if (comXml) Grava(Autorizado, Xml);
        Responde(Autorizacao);
        ProcessaRetorno(*s);
        EXPECT_EQ(ambiente.perguntas, QStringList(perguntas, u"Deseja Reimprimir o Cupom?"_s));
        EXPECT_EQ(ambiente.programasIniciados, QList<QStringList>(impressoes, danfe))
            << modo.toStdString();
    }
    // The XML that the reprint check saw is gone when the authorisation looks again.
    Reinicia();
    s->venda.ModoRetorno = u"CP"_s;
    Grava(Autorizado, Xml);
    ambiente.Agenda(ambiente.Monotonico() + 100, [&] { QFile::remove(NaEmpresa(Autorizado)); });
    Responde(Autorizacao);
    EXPECT_EQ(ProcessaRetorno(*s), u"100 - Autorizado o uso da NF-e"_s);
    EXPECT_EQ(DaVenda(u"tempo,xml"_s), u"1|"_s);
}

// The lot of "-num-lot.txt" (the last line with a number; the earlier lot without a file)
// names the protocol file, looked for 33 times 0.6 s apart after 0.3 s.
TEST_P(ProcessaRetornoTest, LoteEEspera) {
    const QByteArray a = ";104;Lote processado;\r\n" + Autorizacao;
    const QString ok = u"100 - Autorizado o uso da NF-e"_s;
    const std::tuple<QByteArray, QString, QByteArray, qint64, QString, qint64> casos[] = {
        // lot file, lot of the protocol file, protocol (appearing after ms), message, time
        {"54;", u"054"_s, a, 0, ok, 400},
        {"-", u"061"_s, a, 0, ok, 400},
        {"54;\r\n\r\n61;", u"061"_s, a, 0, ok, 400},
        {"abc;", u"000"_s, a, 0, ok, 400},
        {"54;", u"054"_s, "-", 0, {}, 20100},
        {"54;", u"054"_s, a, 9800, ok, 10000},
        {"54;", u"054"_s, ";104;Lote processado;", 0, {}, 400},
        {"54;", u"054"_s, "", 0, {}, 400},
        // Larger than any real answer: damaged, never read, as if not there.
        {"54;", u"054"_s, a + QByteArray(1 << 20, ' '), 0, {}, 20100},
        {"54;" + QByteArray(1 << 20, ' '), u"061"_s, a, 0, ok, 400},
    };
    for (const auto& [lotes, lote, protocolo, apareceEm, mensagem, ms] : casos) {
        Reinicia();
        s->venda.NumLote = u"61"_s;
        if (lotes != "-") Grava(u"Retorno/"_s + Chave + u"-num-lot.txt"_s, lotes);
        if (protocolo != "-")
            ambiente.Agenda(ambiente.Monotonico() + apareceEm, [&] {
                Grava(u"Retorno/000000000000"_s + lote + u"-pro-rec.txt"_s, protocolo);
            });
        const qint64 antes = ambiente.msAguardados();
        EXPECT_EQ(ProcessaRetorno(*s), mensagem) << lotes.toStdString();
        EXPECT_EQ(ambiente.msAguardados() - antes, ms) << lotes.toStdString();
    }
}

// Damaged lines: missing fields read as "", text reaches the row intact, and every line of the
// sale (blank ones aside) sends it to the remote copy again. A line counts only when it carries
// the sale's key: another key, or none, changes nothing but erro.
TEST_P(ProcessaRetornoTest, LinhasHostis) {
    const QByteArray motivo = "Autorizado o uso da NF-e d'agua \\", longo(100000, '7');
    const QString recusada = u"chave inválida recebida do UniNFe"_s;
    const QByteArray outra = "31261118123456000104650010000012359123456785"; // NFC-e 1235
    const std::tuple<QByteArray, QString, int, QString> casos[] = {
        {"18123456000104;000001234;3126", recusada, 1, recusada},
        {QByteArray(Autorizacao).replace(Chave.toLatin1(), outra), recusada, 1, recusada},
        {"\r\n\r\n" + Protocolo("999", "Rejeicao: d'agua | x"),
         u"Rejeicao: d'agua | x - "_s,
         1,
         {}},
        {Protocolo("100", motivo, true), u"100 - "_s + QString::fromLatin1(motivo), 2,
         QString::fromLatin1(motivo)},
        // Far longer than UniNFe writes: cut to the columns, which a strict MariaDB insists on.
        {"1;1234;" + Chave.toLatin1() + ";x;" + longo + ";dv;100;" + longo + ";",
         u"100 - "_s + QString::fromLatin1(longo), 2, QString(21845, u'7')},
    };
    for (const auto& [linhas, mensagem, atualizacoes, erro] : casos) {
        SCOPED_TRACE(linhas.left(60).toStdString());
        Reinicia();
        Responde(linhas);
        EXPECT_EQ(ProcessaRetorno(*s), mensagem);
        EXPECT_EQ(Atualizacoes(), atualizacoes);
        EXPECT_EQ(DaVenda(u"erro,sync"_s), erro + (erro == recusada ? u"|1"_s : u"|0"_s));
    }
    EXPECT_EQ(DaVenda(u"chave,autorizacao"_s), Chave + u'|' + QString(60, u'7'));
}

// Sent again after a stop between UniNFe's filing and the recording: SEFAZ's protocol comes
// from the authorised XML; without a usable one, from the reason, never a cut that is not it.
TEST_P(ProcessaRetornoTest, DuplicidadeComXmlAutorizado) {
    const QByteArray xml = "<?xml version=\"1.0\"?><nfeProc><NFe/><protNFe><infProt Id=\"x\">"
                           "<nProt>131260000099999</nProt></infProt></protNFe></nfeProc>";
    const QByteArray d204 = "Rejeicao: Duplicidade de NF-e [nRec:310000069179169]";
    const QByteArray d539 = "Rejeicao: Duplicidade de NF-e, com diferenca na Chave de Acesso "
                            "[chNFe:" +
                            Chave.toLatin1() + "][nRec:431022029092399]";
    const std::tuple<QByteArray, QByteArray, QString> casos[] = {
        // line, authorised XML ("-" none), autorizacao
        {Protocolo("204", d204), xml, u"131260000099999"_s},
        {Protocolo("539", d539), xml, u"131260000099999"_s},
        {Protocolo("204", d204), "-", u"310000069179169]"_s},
        {Protocolo("539", d539), "-", u"431022029092399"_s},
        {Protocolo("539", "Rejeicao: Duplicidade de NF-e [x]"), "-", u""_s},
        {Protocolo("204", d204), "<nfeProc><nProt>1</nProt></nfeProc>", u"310000069179169]"_s},
        {Protocolo("204", d204), QByteArray(xml).replace("99999<", "9x<"), u"310000069179169]"_s},
        {Protocolo("204", d204), xml + QByteArray(8 << 20, ' '), u"310000069179169]"_s},
    };
    for (const auto& [linha, autorizado, protocolo] : casos) {
        SCOPED_TRACE(linha.toStdString() + autorizado.left(80).toStdString());
        Reinicia();
        if (autorizado != "-") Grava(Autorizado, autorizado);
        Responde(linha);
        EXPECT_EQ(ProcessaRetorno(*s), u"Autorizado o uso da NF-e"_s);
        EXPECT_EQ(DaVenda(u"autorizacao,tempo,enviotime"_s), protocolo + u"|1|1"_s);
        // The accountant's copy is the XML UniNFe filed, whatever it holds.
        EXPECT_EQ(Le(u"Contabilidade/112026/000001234-procNFe.xml"_s),
                  autorizado == "-" ? QByteArray() : autorizado);
    }
}

// The accountant's folder below empresa.pathenvio is never made here.
TEST_P(ProcessaRetornoTest, CopiaParaOContador) {
    const QString destino = pasta.Caminho(u"contador/18123456000104/Contabilidade/001/112026"_s);
    const std::tuple<QString, bool, bool> casos[] = {
        {u"ENVIOXML=SIM"_s, true, true},
        {u"ENVIOXML=SIM"_s, false, false},
    };
    for (const auto& [config, existe, copia] : casos) {
        Reinicia({config});
        QDir(pasta.Caminho(u"contador"_s)).removeRecursively();
        if (existe) QDir().mkpath(destino);
        Executa(
            u"INSERT INTO empresa (pathenvio) VALUES ('%1')"_s.arg(pasta.Caminho(u"contador"_s)));
        Grava(Autorizado, Xml);
        Responde(Autorizacao);
        ProcessaRetorno(*s);
        EXPECT_EQ(QFile::exists(destino + u"/000001234-procNFe.xml"_s), copia);
        EXPECT_EQ(QDir(destino).exists(), existe);
    }
}

INSTANTIATE_TEST_SUITE_P(Motores, ProcessaRetornoTest, ::testing::ValuesIn(Motores()), NomeDoMotor);

} // namespace
} // namespace nfce::teste
