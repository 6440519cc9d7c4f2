#include "emission/Retorno.h"
#include "emission/ConsultaSituacao.h"
#include "emission/LeituraChave.h"
#include "emission/PedidoChave.h"
#include "emission/RespostaUniNfe.h"
#include "emission/RespostasDaVenda.h"
#include "support/Erros.h"
#include "support/Loja.h"

#include <QDir>

namespace nfce::teste {
namespace {

using namespace Qt::StringLiterals;

const QString Chave = u"31261118123456000104650010000012349123456788"_s;
const QByteArray K = Chave.toLatin1();
const QString Base = u"Retorno/000001234_18123456000104_001_15_11_2026"_s;

// Keys refused: another CNPJ, series, number or model, one digit short.
TEST(LeituraChave, SoAChaveDestaVenda) {
    const QByteArray m = "31261118123456000104550010000012349123456785";
    for (const auto& [chave, cnpj, serie, nNF] : {std::tuple(K, "11222333000181", "001", 1234),
                                                  {K, "18123456000104", "002", 1234},
                                                  {K, "18123456000104", "001", 1235},
                                                  {m, "18123456000104", "001", 1234},
                                                  {K.left(43), "18123456000104", "001", 1234}})
        EXPECT_TRUE(ChaveDoTexto(chave, cnpj, serie, nNF).recusada) << chave.data() << serie << nNF;
    EXPECT_FALSE(ChaveDoTexto("x\r" + K, "18123456000104", "001", 1234).recusada);
}

// Only a line with the sale's own valid key in field 2 is the sale's; not the lot-status line.
TEST(RespostasDaVenda, LinhasDoRetorno) {
    const QByteArray da = "1;1234;" + K + ";x;1;100;";
    const std::tuple<QByteArray, QString, QList<bool>> casos[] = {
        {";104;Lote processado;\r\n\r\n" + da, K, {true}},
        {da + "\r" + da.left(20) + "\n" + da, K, {true, false, true}},
        {QByteArray(da).replace(K, "../../x'; --"), K, {false}},
        {"1;1;0;", "0", {false}}};
    for (const auto& [texto, chave, esperadas] : casos) {
        QList<bool> lidas;
        for (const LinhaDoRetorno& linha : LinhasDoRetorno(texto, chave))
            lidas.append(linha.daVenda);
        EXPECT_EQ(lidas, esperadas) << texto.left(60).toStdString();
    }
}

// A "-pro-rec.txt" line: with digVal the code stands in field 6, else in 5 and the reason in 6.
QByteArray Protocolo(const QByteArray& codigo, const QByteArray& motivo, bool digVal = false) {
    return "18123456000104;000001234;" + K + ";2026-11-15T10:21:05-03:00;" +
           (codigo == "100" ? "131260000012345;" : "0;") +
           (digVal ? "zTbcpgGcvzfkV/AhKeieXtFntUk=;" : "") + codigo + ';' + motivo + ';';
}
const QByteArray Autorizacao = Protocolo("100", "Autorizado o uso da NF-e", true);
const QByteArray Ncm = Protocolo("778", "Rejeicao: Informado NCM inexistente [nItem:3]");

// Sale cupom 501, NFC-e 1234, quote 77, items 1 and 3 (products 4321, 78) before UniNFe answers.
// Decoys: cupom 1234 is NFC-e 501 (item 3 product 999), cupom 900 is NFC-e 1234 too.
class RetornoTest : public Loja {
protected:
    void Reinicia(const QStringList& config = {}) {
        for (const QString& tabela : {u"vendas"_s, u"itens"_s, u"orcamento"_s, u"empresa"_s})
            Executa(u"DELETE FROM "_s + tabela);
        Executa(u"INSERT INTO vendas (cupom, nfce, tempo, sync) VALUES (501, 1234, '5', 1), "
                "(1234, 501, '5', 1), (900, 1234, '5', 1)"_s);
        Executa(u"INSERT INTO itens (cupom, Item, codprod, sync) VALUES (501, 1, 4321, 1), "
                "(501, 3, 78, 1), (1234, 3, 999, 1)"_s);
        Executa(u"INSERT INTO orcamento (cupom) VALUES (77)"_s);
        QDir(NaEmpresa({})).removeRecursively();
        for (const QString& p :
             {u"Envio"_s, u"Retorno"_s, u"Erro"_s, u"Validar/Validado"_s,
              u"Enviado/EmProcessamento"_s, u"Enviado/Autorizados/112026"_s, u"Contabilidade"_s})
            QDir().mkpath(NaEmpresa(p));
        Configura(config);
        ambiente.programasIniciados.clear();
        ambiente.perguntas.clear();
        ambiente.registro.clear();
        NovoServidor();
        EstadoVenda& v = s->venda;
        std::tie(v.NumCupom, v.NumNfce, v.NumOrcamento, v.VendaOrcamento) =
            std::tuple(501, 1234, 77, true);
        std::tie(v.CnpjEmpresa, v.SerieNfce, v.DataArquivo, v.ModoRetorno) =
            std::tuple(u"18123456000104"_s, u"001"_s, u"15112026"_s, u"NC1"_s);
        v.MesAutorizados = v.MesContabil = u"112026"_s;
        std::tie(s->painel.LblMens01, s->painel.LblQuantCup) = std::tuple(Chave, u"5"_s);
        s->EmiteNfceImprime = [this](const QString& nfce) { reemissoes << nfce; };
        reemissoes.clear();
    }
    void GravaEm(qint64 ms, const QString& relativo, const QByteArray& conteudo) {
        if (conteudo != "-")
            ambiente.Agenda(ambiente.Monotonico() + ms, [=, this] { Grava(relativo, conteudo); });
    }
    void GravaLotes(const QByteArray& lotes) const {
        if (lotes != "-") Grava(u"Retorno/"_s + Chave + u"-num-lot.txt"_s, lotes);
    }
    QString Processa(const QByteArray& linhas, const QByteArray& autorizado = {},
                     const QString& modo = u"VENDA"_s) {
        Reinicia();
        s->venda.ModoRetorno = modo;
        if (!autorizado.isEmpty())
            Grava(u"Enviado/Autorizados/112026/"_s + Chave + u"-procNFe.xml"_s, autorizado);
        GravaLotes("54;");
        Grava(u"Retorno/000000000000054-pro-rec.txt"_s, ";104;Lote processado;\r\n" + linhas);
        return ProcessaRetorno(*s);
    }
    QString DaVenda(const QString& colunas, int cupom = 501) {
        return Colunas(u"vendas WHERE cupom = %1"_s.arg(cupom), colunas);
    }
    qint64 Espera(const std::function<void()>& leitura) {
        const qint64 antes = ambiente.msAguardados();
        leitura();
        return ambiente.msAguardados() - antes;
    }
    QStringList reemissoes;
};

TEST_P(RetornoTest, PedidoDeChaveSemCnf) {
    EXPECT_EQ(Espera([&] { PedeChave(*s, 1234, u"2611"_s, 9); }), 1000);
    EXPECT_EQ(Le(u"Envio/0000001234-gerar-chave.xml"_s),
              "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n<gerarChave>\r\n <UF>31</UF>\r\n"
              " <tpEmis>9</tpEmis>\r\n <nNF>1234</nNF>\r\n <serie>001</serie>\r\n"
              " <AAMM>2611</AAMM>\r\n <CNPJ>18123456000104</CNPJ>\r\n <mod>65</mod>\r\n"
              "</gerarChave>\r\n");
}

// Key answers: 10 looks 0.5 s (XML) or 1 s (text) apart; the conversion's 3 looks 0.5 s apart.
TEST_P(RetornoTest, Chave) {
    using Leitura = QString (*)(Servidor&);
    const Leitura xml = [](Servidor&s) { return LeChaveXml(s, 1234); },
                  txt = [](Servidor&s) { return LeChaveTxt(s, 1234); }, nfe = LeChaveNfe;
    const QByteArray sql = "'; DROP TABLE vendas; |x|",
                     pedida =
                         "<?xml version=\"1.0\" encoding=\"utf-8\"?><retGerarChave><chaveNFe>" + K +
                         "</chaveNFe>",
                     convertida = "cStat=01\r\nNota fiscal: 000001234 Serie: 001 - ChaveNFe: " + K;
    const QString p = u"Retorno/0000001234-ret-gerar-chave."_s, c = Base + u"-nfe.txt"_s;
    // then (K key, I refusal): read|error|key|erro|900's key|quote's|LblMens01|ms|log lines
    const std::tuple<Leitura, QString, QByteArray, qint64, QString> casos[] = {
        {xml, p + "xml", pedida, 3200, "K||K||K|||4010|0"},
        {txt, p + "txt", "-", 0, "|||||||10000|0"},
        {txt, p + "txt", sql, 0, "|I||I||||1000|1"},
        {nfe, c, convertida, 800, "K||K|||K|K|1000|0"},
        {nfe, c, "-", 0, "|||||||1500|0"},
        {nfe, c, convertida.left(56) + sql, 0, "|I||I||||0|1"}};
    for (const auto& [leitura, arquivo, resposta, apareceEm, esperado] : casos) {
        SCOPED_TRACE(arquivo.toStdString() + resposta.left(60).toStdString());
        Reinicia();
        s->painel.LblMens01.clear();
        GravaEm(apareceEm, arquivo, resposta);
        QString lida, erro;
        const qint64 ms = Espera([&] { erro = ErroDe([&] { lida = leitura(*s); }).descricao(); });
        EXPECT_EQ(QStringList({lida, erro, DaVenda(u"chave,erro"_s), DaVenda(u"chave"_s, 900),
                               Colunas(u"orcamento"_s, u"chave"_s), s->painel.LblMens01,
                               QString::number(ms), QString::number(ambiente.registro.size())})
                      .join(u'|'),
                  QString(esperado).replace(u"K"_s, Chave).replace(u"I"_s, ChaveInvalida));
    }
}

// Stored with enviotime 1 after 0.2 s, cut to the column (a euro sign is three UTF-8 bytes).
TEST_P(RetornoTest, ErroDeConversao) {
    const QByteArray longo =
        "xMotivo=F\r\n" + QByteArray("Segmento \x80\x80\x80\r\n").repeated(8000);
    const QString falha = u"Falha na Conversao da NFC-e - "_s;
    const std::tuple<QByteArray, QString, QString> casos[] = {
        {"Segmento [X]\r\nxMotivo=F\r\nLayout: W02|.|\r\nSegmento [I]: <cProd>\r\n\tLinha: 12\r\n"
         "Segmento [W02]: <vBC>",
         falha + u"[I][W0"_s, u"1"_s},
        {"", u""_s, u"0"_s},
        {longo, falha + QString(24000, QChar(0x20ac)), u"1"_s}};
    for (const auto& [resposta, mensagem, enviotime] : casos) {
        Reinicia();
        Grava(Base + u"-nfe.err"_s, resposta);
        EXPECT_EQ(Espera([&] { EXPECT_EQ(LeErroNfe(*s), mensagem); }), 200);
        EXPECT_EQ(DaVenda(u"erro,enviotime"_s), mensagem.left(21845) + u'|' + enviotime);
    }
}

// The last lot goes to the sale; a refusal of the first puts it back as rejected. TEMP 0, none: 2
TEST_P(RetornoTest, LoteERecusa) {
    Reinicia();
    Executa(u"UPDATE vendas SET chave = '%1' WHERE cupom = 501"_s.arg(Chave));
    GravaLotes("54;\r\n61;");
    GravaLote(*s);
    EXPECT_EQ(DaVenda(u"lote"_s) + DaVenda(u"lote"_s, 1234) + DaVenda(u"lote"_s, 900), u"61"_s);
    const QByteArray recusa = "Versão UniNFe|5.0\r\nErrorCode|0000000001\r\nMessage|"
                              "Rejeicao: CNPJ do emitente d'agua invalido - lote 54 recusado\r\n";
    const QString mensagem = u"REJEICAO: CNPJ DO EMITENTE D'AGUA INVALIDO - LOTE "_s;
    const QString guardada = u"REJEICAO: CNPJ DO EMITENTE DAGUA INVALIDO - LOTE|0|0"_s;
    const std::tuple<QByteArray, QString, QString, QString, QString, int> casos[] = {
        {"54;\r\n61;", "054", mensagem, guardada, "TEMP=7", 7},
        {"-", "000", mensagem, guardada, "TEMP=0", 2},
        {"54;", "061", {}, "|5|1", "TMPAMBNFCE=1", 2}};
    for (const auto& [lotes, lote, devolvida, venda, temp, segundos] : casos) {
        Reinicia({temp});
        Executa(u"UPDATE vendas SET enviotime = 1"_s);
        GravaLotes(lotes);
        Grava(u"Retorno/000000000000"_s + lote + u"-pro-rec.err"_s, recusa);
        EXPECT_EQ(Espera([&] { EXPECT_EQ(LeErroRecibo(*s), devolvida); }),
                  devolvida.isEmpty() ? 1000 : 1500);
        EXPECT_EQ(DaVenda(u"erro,tempo,enviotime"_s) + DaVenda(u"tempo"_s, 1234), venda + u'5');
        EXPECT_EQ(s->venda.TempoEspera, segundos);
    }
}

// Only a code in field 5 files the authorised XML or, without it, asks for the situation. "CP"
// prints, "NC" asks and prints a sale whose XML is there; other modes neither ask nor print.
TEST_P(RetornoTest, Autorizacao) {
    const QString contador = pasta.Caminho(u"contador/18123456000104/Contabilidade/001/112026"_s);
    const QString xml = u"Enviado/Autorizados/112026/"_s + Chave + u"-procNFe.xml"_s;
    const QStringList danfe =
        u"c:\\unimake\\uninfe\\uniDANFE.exe|a=%1\\18123456000104\\ENVIADO\\"
        "Autorizados\\112026\\%2-procNFe.xml|t=nfce"_s.arg(pasta.caminho(), Chave)
            .split(u'|');
    // digVal, authorised XML, signed XML in Erro, mode, print, Yes, prints
    const std::tuple<bool, bool, bool, QString, bool, bool, int> casos[] = {
        {1, 1, 0, "CP", 1, 0, 1}, {0, 1, 0, "NC", 1, 1, 1}, {0, 0, 0, "CP", 1, 0, 1},
        {0, 0, 1, "NC", 1, 1, 0}, {1, 1, 0, "CP", 0, 0, 0}, {1, 1, 0, "NC", 1, 0, 0},
        {1, 1, 0, "NC1", 1, 1, 0}};
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
        s->venda.ModoRetorno = modo;
        s->venda.ImprimeCupom = imprime;
        ambiente.respostas = QList<bool>(sim, true);
        GravaLotes("54;");
        Grava(u"Retorno/000000000000054-pro-rec.txt"_s,
              digVal ? Autorizacao : Protocolo("100", "Autorizado o uso da NF-e"));
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
                  consulta ? "tpAmb|2\r\nxServ|CONSULTAR\r\ntpEmis|1\r\nchNFe|" + K +
                                 "\r\nversao|4.00\r\n"
                           : "");
        EXPECT_EQ(Existe(u"Retorno/"_s + Chave + u"-num-lot.txt"_s), !consulta);
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

// The lot (the last; without a file the earlier one) names the protocol file, looked for 33 times
// 0.6 s apart after 0.3 s; a damaged file is never read.
TEST_P(RetornoTest, LoteEEspera) {
    const QByteArray a = ";104;Lote processado;\r\n" + Autorizacao, grande(1 << 20, ' ');
    const QString ok = u"100 - Autorizado o uso da NF-e"_s;
    const std::tuple<QByteArray, QString, QByteArray, QString, qint64> casos[] = {
        {"-", "061", a, ok, 400},
        {"54;\r\n\r\n61;", "061", a, ok, 400},
        {"54;", "054", "-", {}, 20100},
        {"54;", "054", a.left(22), {}, 400},
        {"54;", "054", a + grande, {}, 20100}};
    for (const auto& [lotes, lote, protocolo, mensagem, ms] : casos) {
        Reinicia();
        s->venda.NumLote = u"61"_s;
        GravaLotes(lotes);
        GravaEm(0, u"Retorno/000000000000"_s + lote + u"-pro-rec.txt"_s, protocolo);
        EXPECT_EQ(Espera([&] { EXPECT_EQ(ProcessaRetorno(*s), mensagem); }), ms) << lotes.data();
    }
}

// Online exactly when the portal's page (PORTALNFE) comes back.
TEST_P(RetornoTest, TestaInternet) {
    for (const auto& [config, online] : {std::pair(u"PORTALNFE=http://portal.exemplo"_s, true),
                                         {u"PORTALNFE=http://x"_s, false}}) {
        Reinicia({config});
        ambiente.paginas[u"http://portal.exemplo"_s] = u"<html>portal</html>"_s;
        EXPECT_EQ(Espera([&] { EXPECT_EQ(TestaInternet(*s), online); }), 50);
    }
}

// One row a rule; a duplicate's protocol comes from the filed XML when there is one.
TEST_P(RetornoTest, UmaLinhaPorRegra) {
    const QByteArray dup = Protocolo("204", "Rejeicao: Duplicidade de NF-e [nRec:310000069179169]");
    const QByteArray xml = "<nfeProc><protNFe><infProt><nProt>131260000099999</nProt></infProt>";
    const QString motivo = "Autorizado o uso da NF-e d'agua \\", longo(100000, u'7');
    // erro|tempo|enviotime|situacao|autorizacao|sync|item's situacao|900's tempo|receipts|
    // situation asked|re-emitted
    const std::tuple<QByteArray, QByteArray, QString, QString> casos[] = {
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
        {"1;1234;" + K + ";x;" + longo.toLatin1() + ";dv;100;" + longo.toLatin1() + ";", "",
         "100 - " + longo, QString(21845, u'7') + "|1|0|N|" + QString(60, u'7') + "|0|N|5|5|0|"},
        {QByteArray(Ncm).replace("0012349", "0012359"), "", ChaveInvalida,
         ChaveInvalida + "|5|0|N||1|N|5|5|0|"}};
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
    // Re-emission only in mode "VENDA" and only while no authorised line came before.
    Processa(Autorizacao + "\r\n" + Ncm);
    const QStringList depoisDeAutorizada = reemissoes;
    Processa(Ncm, {}, u"NC1"_s);
    EXPECT_TRUE(depoisDeAutorizada.isEmpty() && reemissoes.isEmpty());
}

INSTANTIATE_TEST_SUITE_P(Motores, RetornoTest, ::testing::ValuesIn(Motores()), NomeDoMotor);

} // namespace
} // namespace nfce::teste
