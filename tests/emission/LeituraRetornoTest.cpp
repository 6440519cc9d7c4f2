#include "CenarioRetorno.h"

#include "emission/Retorno.h"
#include "nfce/PedidoChave.h"
#include "nfce/RespostaUniNfe.h"
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
    QDir(NaEmpresa(u"Envio"_s)).removeRecursively();
    EXPECT_EQ(ErroDe([&] { PedeChave(*s, 1234, u"2611"_s, 9); }).numero(),
              ErroCaminhoNaoEncontrado);
}

// The key answers: ten looks 0.5 s (XML) or 1 s (text) apart, the key stored on the NFC-e
// number; the conversion answer three looks 0.5 s apart, the key in LblMens01, the sale (by
// cupom) and its quote. A refused key raises, goes to erro and the log; an answer larger than
// any real one is never read.
TEST_P(LeituraRetornoTest, Chave) {
    const QByteArray k = Chave.toLatin1(), recusada = "'; DROP TABLE vendas; |x|";
    const QByteArray xml = "<?xml version=\"1.0\" encoding=\"utf-8\"?><retGerarChave><chaveNFe>" +
                           k + "</chaveNFe>",
                     nfe = "cStat=01\r\nNota fiscal: 000001234 Serie: 001 - ChaveNFe: " + k;
    const QString pedido = u"Retorno/0000001234-ret-gerar-chave."_s,
                  conversao = Base + u"-nfe.txt"_s;
    const std::tuple<QString, QByteArray, qint64, QString, qint64, QString> casos[] = {
        // answer file, answer (appearing after ms; "-" none), key, virtual time, log line
        {pedido + u"xml"_s, xml, 3200, Chave, 4000 + 10, {}},
        {pedido + u"xml"_s, xml + QByteArray(2 << 20, ' '), 0, {}, 5000, u"danificada"_s},
        {pedido + u"txt"_s, "-", 0, {}, 10000, {}},
        {pedido + u"txt"_s, recusada, 0, {}, 1000, ChaveInvalida},
        {conversao, nfe, 0, Chave, 0, {}},
        {conversao, nfe, 800, Chave, 1000, {}},
        {conversao, "-", 0, {}, 1500, {}},
        {conversao, nfe.left(56) + recusada, 0, {}, 0, ChaveInvalida},
    };
    for (const auto& [arquivo, resposta, apareceEm, chave, ms, registro] : casos) {
        SCOPED_TRACE(arquivo.toStdString() + resposta.left(60).toStdString());
        Reinicia();
        s->painel.LblMens01.clear();
        GravaEm(apareceEm, arquivo, resposta);
        QString lida, erro;
        EXPECT_EQ(Espera([&] {
                      erro = ErroDe([&] {
                                 lida = arquivo == conversao         ? LeChaveNfe(*s)
                                        : arquivo.endsWith(u"xml"_s) ? LeChaveXml(*s, 1234)
                                                                     : LeChaveTxt(*s, 1234);
                             }).descricao();
                  }),
                  ms);
        EXPECT_EQ(lida, chave);
        const QString recusa = registro == ChaveInvalida ? registro : QString();
        EXPECT_EQ(erro + u'|' + DaVenda(u"erro"_s), recusa + u'|' + recusa);
        EXPECT_EQ(DaVenda(u"chave"_s) + u'|' + DaVenda(u"chave"_s, 900) + u'|' +
                      DaVenda(u"chave"_s, 1234) + u'|' + Colunas(u"orcamento"_s, u"chave"_s) +
                      u'|' + s->painel.LblMens01,
                  arquivo == conversao ? chave + u"|||"_s + chave + u'|' + chave
                                       : chave + u'|' + chave + u"|||"_s);
        EXPECT_EQ(ambiente.registro.filter(registro).size(), registro.isEmpty() ? 0 : 1);
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
    const std::tuple<QByteArray, QString, QString, QString> casos[] = {
        // lot file, lot of the refusal file, message, erro|tempo|enviotime
        {"54;\r\n61;", u"054"_s, mensagem, guardada},
        {"-", u"000"_s, mensagem, guardada},
        {"54;", u"061"_s, {}, u"|5|1"_s},
    };
    for (const auto& [lotes, lote, devolvida, venda] : casos) {
        Reinicia();
        Executa(u"UPDATE vendas SET enviotime = 1"_s);
        if (lotes != "-") Grava(u"Retorno/"_s + Chave + u"-num-lot.txt"_s, lotes);
        Grava(u"Retorno/000000000000"_s + lote + u"-pro-rec.err"_s, recusa);
        EXPECT_EQ(Espera([&] { EXPECT_EQ(LeErroRecibo(*s), devolvida); }),
                  devolvida.isEmpty() ? 1000 : 1500);
        EXPECT_EQ(DaVenda(u"erro,tempo,enviotime"_s) + DaVenda(u"tempo"_s, 1234), venda + u'5');
        EXPECT_EQ(s->venda.TempoEspera, 2);
    }
    for (const auto& [temp, segundos] : {std::pair(u"TEMP=7"_s, 7), {u"TEMP=0"_s, 2}}) {
        Reinicia({temp});
        LeErroRecibo(*s);
        EXPECT_EQ(s->venda.TempoEspera, segundos);
    }
}

INSTANTIATE_TEST_SUITE_P(Motores, LeituraRetornoTest, ::testing::ValuesIn(Motores()), NomeDoMotor);

} // namespace
} // namespace nfce::teste
