#include "CenarioRetorno.h"

#include "emission/ConsultaSituacao.h"
#include "emission/RespostaUniNfe.h"
#include "emission/Retorno.h"

namespace nfce::teste {
namespace {

// UniNFe's authorised line carries digVal: the code stands in field 6.
const QByteArray Autorizacao = Protocolo("100", "Autorizado o uso da NF-e", true);

class ProcessaRetornoTest : public CenarioRetorno {
protected:
    // The protocol `linhas` in `modo`, with `autorizado` as the XML UniNFe filed ("" none).
    QString Processa(const QByteArray& linhas, const QByteArray& autorizado = {},
                     const QString& modo = u"VENDA"_s) {
        Reinicia();
        s->venda.ModoRetorno = modo;
        s->EmiteNfceImprime = [this](const QString& nfce) { reemissoes << nfce; };
        reemissoes.clear();
        if (!autorizado.isEmpty())
            Grava(u"Enviado/Autorizados/112026/"_s + Chave + u"-procNFe.xml"_s, autorizado);
        Responde(linhas);
        return ProcessaRetorno(*s);
    }
    QStringList reemissoes;
};

const QByteArray Ncm = Protocolo("778", "Rejeicao: Informado NCM inexistente [nItem:3]");

// Always the row (on cupom), the quote, the items' sync, the XML flag (on the NFC-e) and the
// copies, the accountant's only into a folder that exists. Only a code in field 5 files the
// authorised XML (its text, one receipt less, the signed XML removed) or, without it, moves the
// signed XML to EmProcessamento and asks for the situation, emptying Retorno and Envio first.
// "CP" prints the sale (once, also when its XML is there to print again), "NC" asks first and
// prints only a sale whose XML is there; the other modes neither ask nor print.
TEST_P(ProcessaRetornoTest, Autorizacao) {
    const QString contador = pasta.Caminho(u"contador/18123456000104/Contabilidade/001/112026"_s);
    const QString xml = u"Enviado/Autorizados/112026/"_s + Chave + u"-procNFe.xml"_s;
    const QString velho = u"Envio/0000001235-gerar-chave.xml"_s;
    const QStringList danfe = {"c:\\unimake\\uninfe\\uniDANFE.exe",
                               "a=" + pasta.caminho() +
                                   "\\18123456000104\\ENVIADO\\Autorizados\\112026\\" + Chave +
                                   "-procNFe.xml",
                               "t=nfce"};
    const std::tuple<bool, bool, bool, QString, bool, bool, int> casos[] = {
        // digVal, authorised XML, signed XML in Erro (not Validado), mode, print, Yes, prints
        {1, 1, 0, "CP", 1, 0, 1},  {0, 1, 0, "NC", 1, 1, 1}, {0, 0, 0, "CP", 1, 0, 1},
        {0, 0, 1, "NC", 1, 1, 0},  {1, 1, 0, "CP", 0, 0, 0}, {1, 1, 0, "NC", 1, 0, 0},
        {1, 1, 0, "NC1", 1, 1, 0},
    };
    for (const auto& [digVal, comXml, naPastaErro, modo, imprime, sim, impressoes] : casos) {
        Reinicia({u"ENVIOXML=SIM"_s, u"TMPAMBNFCE=2"_s});
        Executa(
            u"INSERT INTO empresa (pathenvio) VALUES ('%1')"_s.arg(pasta.Caminho(u"contador"_s)));
        QDir(pasta.Caminho(u"contador"_s)).removeRecursively();
        if (digVal) QDir().mkpath(contador);
        if (comXml) Grava(xml, "<nfeProc><xNome>D'Ávila</xNome></nfeProc>");
        const QString assinado =
            (naPastaErro ? u"Erro/"_s : u"Validar/Validado/"_s) + Chave + u"-nfe.xml"_s;
        Grava(assinado, "<NFe/>");
        Grava(velho, "x");
        s->venda.ModoRetorno = modo;
        s->venda.ImprimeCupom = imprime;
        ambiente.respostas = QList<bool>(sim, true);
        Responde(digVal ? Autorizacao : Protocolo("100", "Autorizado o uso da NF-e"));
        const bool arquiva = !digVal, consulta = arquiva && !comXml;
        EXPECT_EQ(ProcessaRetorno(*s),
                  digVal ? u"100 - Autorizado o uso da NF-e"_s : u"Autorizado o uso da NF-e - "_s);
        EXPECT_EQ(DaVenda(u"autorizacao,chave,tempo,enviotime,erro,sync,xml,xml_info"_s),
                  "131260000012345|" + Chave + "|1|0|" +
                      (digVal ? "Autorizado o uso da NF-e|0|S|"
                              : (comXml ? u"|0|S|"_s + Le(xml) : u"|0||"_s)));
        EXPECT_EQ(Colunas(u"orcamento"_s, u"autorizacao,tempo,emitido,cupomnfce"_s) +
                      Texto(u"SELECT MAX(sync) FROM itens WHERE cupom = 501"_s) +
                      DaVenda(u"autorizacao,tempo"_s, 1234) + DaVenda(u"xml"_s, 900),
                  u"131260000012345|9|S|5010|5"_s + (comXml ? u"S"_s : u""_s));
        EXPECT_EQ(Le(u"Contabilidade/112026/000001234-procNFe.xml"_s), Le(xml));
        EXPECT_EQ(QFile::exists(contador + u"/000001234-procNFe.xml"_s) + QDir(contador).exists(),
                  digVal ? 2 : 0);
        EXPECT_EQ(Le(u"Envio/"_s + Chave + u"-ped-sit.txt"_s),
                  consulta ? "tpAmb|2\r\nxServ|CONSULTAR\r\ntpEmis|1\r\nchNFe|" + Chave.toLatin1() +
                                 "\r\nversao|4.00\r\n"
                           : "");
        EXPECT_EQ(Existe(velho) + Existe(u"Retorno/"_s + Chave + u"-num-lot.txt"_s),
                  consulta ? 0 : 2);
        EXPECT_EQ(Le(u"Enviado/EmProcessamento/"_s + Chave + u"-nfe.xml"_s),
                  consulta ? "<NFe/>" : "");
        EXPECT_EQ(Existe(assinado), !(arquiva && comXml));
        EXPECT_EQ(s->venda.MesAutorizados + u'|' + s->painel.LblQuantCup,
                  (consulta ? u"15112026|"_s : u"112026|"_s) + (arquiva ? u"4"_s : u"5"_s));
        EXPECT_EQ(ambiente.perguntas,
                  QStringList(modo == u"NC"_s, u"Deseja Reimprimir o Cupom?"_s));
        EXPECT_EQ(ambiente.programasIniciados, QList<QStringList>(impressoes, danfe));
    }
}

// The lot of "-num-lot.txt" (the last; the earlier lot without one) names the protocol file,
// looked for 33 times 0.6 s apart after 0.3 s; a damaged file is never read.
TEST_P(ProcessaRetornoTest, LoteEEspera) {
    const QByteArray a = ";104;Lote processado;\r\n" + Autorizacao, grande(1 << 20, ' ');
    const QString ok = u"100 - Autorizado o uso da NF-e"_s;
    const std::tuple<QByteArray, QString, QByteArray, qint64, QString, qint64> casos[] = {
        // lot file, lot of the protocol file, protocol (appearing after ms), message, time
        {"-", "061", a, 0, ok, 400},
        {"54;\r\n\r\n61;", "061", a, 0, ok, 400},
        {"54;", "054", "-", 0, {}, 20100},
        {"54;", "054", a.left(22), 0, {}, 400},
        {"54;", "054", a + grande, 0, {}, 20100},
    };
    for (const auto& [lotes, lote, protocolo, apareceEm, mensagem, ms] : casos) {
        Reinicia();
        s->venda.NumLote = u"61"_s;
        if (lotes != "-") Grava(u"Retorno/"_s + Chave + u"-num-lot.txt"_s, lotes);
        GravaEm(apareceEm, u"Retorno/000000000000"_s + lote + u"-pro-rec.txt"_s, protocolo);
        EXPECT_EQ(Espera([&] { EXPECT_EQ(ProcessaRetorno(*s), mensagem); }), ms) << lotes.data();
    }
}

// Online exactly when the portal's page (PORTALNFE) comes back.
TEST_P(ProcessaRetornoTest, TestaInternet) {
    for (const auto& [config, online] : {std::pair(u"PORTALNFE=http://portal.exemplo"_s, true),
                                         {u"PORTALNFE=http://x"_s, false}}) {
        Reinicia({config});
        ambiente.paginas[u"http://portal.exemplo"_s] = u"<html>portal</html>"_s;
        EXPECT_EQ(Espera([&] { EXPECT_EQ(TestaInternet(*s), online); }), 50);
    }
}

// One row a rule: where the item number is cut, the product lookup and its miss (SEFAZ's own reason
// then), the state each kind leaves, where a duplicate's protocol comes from (the filed XML's
// protNFe/infProt/nProt when there is one: sent again after a stop before the recording), a code
// without a rule, and hostile lines: text reaches the row intact, cut to the columns a strict
// MariaDB insists on; another key's line changes nothing but erro.
TEST_P(ProcessaRetornoTest, UmaLinhaPorRegra) {
    const QByteArray dup = Protocolo("204", "Rejeicao: Duplicidade de NF-e [nRec:310000069179169]");
    const QByteArray xml = "<nfeProc><protNFe><infProt><nProt>131260000099999</nProt></infProt>";
    const QString motivo = "Autorizado o uso da NF-e d'agua \\", longo(100000, u'7');
    const std::tuple<QByteArray, QByteArray, QString, QString> casos[] = {
        // lines, filed XML, message, erro|tempo|enviotime|situacao|autorizacao|sync| then the
        // items' situacao, sale 900's tempo, receipts left, situation query asked, re-emitted
        {Ncm, "", "Erro: NCM Inexistente Código do Produto: 78",
         "NCM Inexistente Cod. Produto 000078|0|1|N||0|N|5|5|0|1234"},
        {Protocolo("778", "Rejeicao: Informado NCM inexistente [nItem:9]"), "",
         "Rejeicao: Informado NCM inexistente [nItem:9]",
         "Rejeicao: Informado NCM inexistente [nItem:9]|0|1|N||0|N|5|5|0|1234"},
        {Protocolo("725", "Rejeicao: NFC-e com CFOP invalido [nItem:3]"), "",
         "Erro: CFOP Inexistente Código do Produto: 78",
         "CFOP Inexistente Cod. Produto 78|0|1|N||0|N|5|5|0|"},
        {Protocolo("806", "Rejeicao: Operacao com ICMS-ST sem informacao do CEST"), "",
         "Rejeicao: Operacao com ICMS-ST sem informacao do CEST",
         "Operacao com ICMS-ST sem informacao do CEST|0|1|N||0|N|5|5|0|1234"},
        {Protocolo("866", "Rejeicao: Ausencia de troco"), "", "Ausencia de troco",
         "Ausencia de troco|0|0|N||0|N|5|5|0|"},
        {Protocolo("206", "Rejeicao: NF-e ja esta inutilizada"), "",
         "NF-Ce ja esta inutilizada na Base de dados da SEFAZ",
         "NF-Ce ja esta inutilizada na Base de dados da SEFAZ|5|1|S||0|S|5|5|0|"},
        {dup, "", "Autorizado o uso da NF-e",
         "Autorizado o uso da NF-e|1|1|N|310000069179169]|0|N|1|4|1|"},
        // The comma some states write moves the number from its fixed place: after "nRec:".
        {Protocolo("539", "Rejeicao: Duplicidade de NF-e, com diferenca na Chave de Acesso [chNFe:"
                          "31261118123456000190650010000012349876543218][nRec:431022029092399]"),
         "", "Autorizado o uso da NF-e",
         "Autorizado o uso da NF-e|1|1|N|431022029092399|0|N|1|4|1|"},
        {dup, xml, "Autorizado o uso da NF-e",
         "Autorizado o uso da NF-e|1|1|N|131260000099999|0|N|1|4|0|"},
        {Protocolo("999", "Rejeicao: d'agua | x"), "", "Rejeicao: d'agua | x - ",
         "|5|0|N||0|N|5|5|0|"},
        {Protocolo("100", motivo.toLatin1(), true), "", "100 - " + motivo,
         motivo + "|1|0|N|131260000012345|0|N|5|5|0|"},
        {"1;1234;" + Chave.toLatin1() + ";x;" + longo.toLatin1() + ";dv;100;" + longo.toLatin1() +
             ";",
         "", "100 - " + longo,
         QString(21845, u'7') + "|1|0|N|" + QString(60, u'7') + "|0|N|5|5|0|"},
        {QByteArray(Ncm).replace("0012349", "0012359"), "", ChaveInvalida,
         ChaveInvalida + "|5|0|N||1|N|5|5|0|"},
    };
    for (const auto& [linhas, autorizado, mensagem, venda] : casos) {
        SCOPED_TRACE(linhas.left(100).toStdString());
        EXPECT_EQ(Processa(linhas, autorizado), mensagem);
        EXPECT_EQ(DaVenda(u"erro,tempo,enviotime,situacao,autorizacao,sync"_s) + u'|' +
                      Texto(u"SELECT situacao FROM itens WHERE cupom = 501 AND Item = 1"_s) + u'|' +
                      DaVenda(u"tempo"_s, 900) + u'|' + s->painel.LblQuantCup + u'|' +
                      QString::number(Existe(u"Envio/"_s + Chave + u"-ped-sit.txt"_s)) + u'|' +
                      reemissoes.join(u','),
                  venda);
        EXPECT_EQ(DaVenda(u"erro,tempo"_s, 1234), u"|5"_s);
    }
}

// Re-emission only in mode "VENDA" and only while no authorised line came before.
TEST_P(ProcessaRetornoTest, Reemissao) {
    Processa(Protocolo("100", "Autorizado o uso da NF-e", true) + "\r\n" + Ncm);
    EXPECT_TRUE(reemissoes.isEmpty());
    Processa(Ncm, {}, u"NC1"_s);
    EXPECT_TRUE(reemissoes.isEmpty());
}

INSTANTIATE_TEST_SUITE_P(Motores, ProcessaRetornoTest, ::testing::ValuesIn(Motores()), NomeDoMotor);

} // namespace
} // namespace nfce::teste
