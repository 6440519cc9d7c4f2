#include "CenarioRetorno.h"

#include "emission/PedidoChave.h"
#include "emission/RespostaUniNfe.h"
#include "emission/Retorno.h"
#include "support/Erros.h"

namespace nfce::teste {
namespace {

using LeituraRetornoTest = CenarioRetorno;

const QString Base = u"Retorno/000001234_18123456000104_001_15_11_2026"_s;

TEST_P(LeituraRetornoTest, PedidoDeChaveSemCnf) {
    EXPECT_EQ(Espera([&] { PedeChave(*s, 1234, u"2611"_s, 9); }), 1000);
    EXPECT_EQ(Le(u"Envio/0000001234-gerar-chave.xml"_s),
              "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n<gerarChave>\r\n <UF>31</UF>\r\n"
              " <tpEmis>9</tpEmis>\r\n <nNF>1234</nNF>\r\n <serie>001</serie>\r\n"
              " <AAMM>2611</AAMM>\r\n <CNPJ>18123456000104</CNPJ>\r\n <mod>65</mod>\r\n"
              "</gerarChave>\r\n");
}

// The key answers: ten looks 0.5 s (XML) or 1 s (text) apart, the key stored on the NFC-e
// number; the conversion answer three looks 0.5 s apart, the key in LblMens01, the sale (by
// cupom) and its quote. A refused key raises, goes to erro and the log.
TEST_P(LeituraRetornoTest, Chave) {
    using Leitura = QString (*)(Servidor&);
    const Leitura xml = [](Servidor&s) { return LeChaveXml(s, 1234); },
                  txt = [](Servidor&s) { return LeChaveTxt(s, 1234); }, nfe = LeChaveNfe;
    const QByteArray k = Chave.toLatin1(), sql = "'; DROP TABLE vendas; |x|",
                     pedida =
                         "<?xml version=\"1.0\" encoding=\"utf-8\"?><retGerarChave><chaveNFe>" + k +
                         "</chaveNFe>",
                     convertida = "cStat=01\r\nNota fiscal: 000001234 Serie: 001 - ChaveNFe: " + k;
    const QString p = u"Retorno/0000001234-ret-gerar-chave."_s, c = Base + u"-nfe.txt"_s;
    const std::tuple<Leitura, QString, QByteArray, qint64, QString> casos[] = {
        // reader, answer file, answer (appearing after ms; "-" none), then ("K" the key, "I"
        // the refusal): key read|error|sale's key|sale's erro|sale 900's key|quote's key|
        // LblMens01|ms waited|log lines
        {xml, p + "xml", pedida, 3200, "K||K||K|||4010|0"},
        {txt, p + "txt", "-", 0, "|||||||10000|0"},
        {txt, p + "txt", sql, 0, "|I||I||||1000|1"},
        {nfe, c, convertida, 800, "K||K|||K|K|1000|0"},
        {nfe, c, "-", 0, "|||||||1500|0"},
        {nfe, c, convertida.left(56) + sql, 0, "|I||I||||0|1"},
    };
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

// Stored with enviotime 1 after 0.2 s, cut to the column (three UTF-8 bytes a euro sign: it
// takes 21 845 characters); an empty file is no answer yet.
TEST_P(LeituraRetornoTest, ErroDeConversao) {
    const QByteArray longo =
        "xMotivo=F\r\n" + QByteArray("Segmento \x80\x80\x80\r\n").repeated(8000);
    const QString falha = u"Falha na Conversao da NFC-e - "_s;
    const std::tuple<QByteArray, QString, QString> casos[] = {
        {"xMotivo=Falha\r\nSegmento [I]: tag <cProd>", falha + u"[I]"_s, u"1"_s},
        {"", u""_s, u"0"_s},
        {longo, falha + QString(24000, QChar(0x20ac)), u"1"_s},
    };
    for (const auto& [resposta, mensagem, enviotime] : casos) {
        Reinicia();
        Grava(Base + u"-nfe.err"_s, resposta);
        EXPECT_EQ(Espera([&] { EXPECT_EQ(LeErroNfe(*s), mensagem); }), 200);
        EXPECT_EQ(DaVenda(u"erro,enviotime"_s), mensagem.left(21845) + u'|' + enviotime);
    }
}

// The last lot of "-num-lot.txt" goes to the sale with the key. For a refusal of the lot the
// first names "-pro-rec.err"; its "Message", in capitals, trimmed and without quotes, puts the
// sale back in the queue as rejected. TEMP (whole seconds; 0 or none: 2) is read for the wait.
TEST_P(LeituraRetornoTest, LoteERecusa) {
    Executa(u"UPDATE vendas SET chave = '%1' WHERE cupom = 501"_s.arg(Chave));
    Grava(u"Retorno/"_s + Chave + u"-num-lot.txt"_s, "54;\r\n61;");
    GravaLote(*s);
    EXPECT_EQ(DaVenda(u"lote"_s) + DaVenda(u"lote"_s, 1234) + DaVenda(u"lote"_s, 900), u"61"_s);
    const QByteArray recusa = "Versão UniNFe|5.0\r\nErrorCode|0000000001\r\nMessage|"
                              "Rejeicao: CNPJ do emitente d'agua invalido - lote 54 recusado\r\n";
    const QString mensagem = u"REJEICAO: CNPJ DO EMITENTE D'AGUA INVALIDO - LOTE "_s;
    const QString guardada = u"REJEICAO: CNPJ DO EMITENTE DAGUA INVALIDO - LOTE|0|0"_s;
    const std::tuple<QByteArray, QString, QString, QString, QString, int> casos[] = {
        // lot file, lot of the refusal file, message, erro|tempo|enviotime, setting, TEMP read
        {"54;\r\n61;", "054", mensagem, guardada, "TEMP=7", 7},
        {"-", "000", mensagem, guardada, "TEMP=0", 2},
        {"54;", "061", {}, "|5|1", "TMPAMBNFCE=1", 2}};
    for (const auto& [lotes, lote, devolvida, venda, temp, segundos] : casos) {
        Reinicia({temp});
        Executa(u"UPDATE vendas SET enviotime = 1"_s);
        if (lotes != "-") Grava(u"Retorno/"_s + Chave + u"-num-lot.txt"_s, lotes);
        Grava(u"Retorno/000000000000"_s + lote + u"-pro-rec.err"_s, recusa);
        EXPECT_EQ(Espera([&] { EXPECT_EQ(LeErroRecibo(*s), devolvida); }),
                  devolvida.isEmpty() ? 1000 : 1500);
        EXPECT_EQ(DaVenda(u"erro,tempo,enviotime"_s) + DaVenda(u"tempo"_s, 1234), venda + u'5');
        EXPECT_EQ(s->venda.TempoEspera, segundos);
    }
}

INSTANTIATE_TEST_SUITE_P(Motores, LeituraRetornoTest, ::testing::ValuesIn(Motores()), NomeDoMotor);

} // namespace
} // namespace nfce::teste
