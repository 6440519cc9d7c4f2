#include "CenarioRetorno.h"

#include "emission/Retorno.h"
#include "storage/ErroExecucao.h"

namespace nfce::teste {
namespace {

using namespace Qt::StringLiterals;

using LeituraRetornoTest = CenarioRetorno;

const QString Base = u"Retorno/000001234_18123456000104_001_15_11_2026"_s;

// UniNFe's conversion answer: "ChaveNFe" at character 37, the key from 47; three looks 0.5 s
// apart. The key goes to LblMens01, the sale (by cupom) and its quote, when it is this sale's
// key (or UniNFe's "0"); any other is refused on the sale.
TEST_P(LeituraRetornoTest, ChaveDaConversao) {
    const QByteArray k = Chave.toLatin1();
    const auto conversao = [](const QByteArray& chave) {
        return "cStat=01\r\nxMotivo=Conversão efetuada com sucesso.\r\n"
               "Nota fiscal: 000001234 Serie: 001 - ChaveNFe: " +
               chave + "\r\n";
    };
    const QString recusa = u"chave inválida recebida do UniNFe"_s;
    const std::tuple<QByteArray, qint64, QString, qint64, QString> casos[] = {
        // answer (appearing after ms; "-" none), key, virtual time, erro
        {conversao(k), 0, Chave, 0, {}},
        {conversao(k), 800, Chave, 1000, {}},
        {conversao("0"), 0, u"0"_s, 0, {}},
        {"-", 0, {}, 1500, {}},
        {conversao(k).replace("ChaveNFe: ", "ChaveNFe: '; --"), 0, {}, 0, recusa},
        {conversao(k) + QByteArray(1 << 20, ' '), 0, {}, 1500, {}},
    };
    for (const auto& [resposta, apareceEm, chave, ms, erro] : casos) {
        SCOPED_TRACE(resposta.left(120).toStdString());
        Reinicia();
        s->painel.LblMens01.clear();
        if (resposta != "-")
            ambiente.Agenda(ambiente.Monotonico() + apareceEm,
                            [&] { Grava(Base + u"-nfe.txt"_s, resposta); });
        const qint64 antes = ambiente.msAguardados();
        QString lida;
        try {
            lida = LeChaveNfe(*s);
        } catch (const ErroExecucao& e) {
            EXPECT_EQ(e.descricao(), recusa);
        }
        EXPECT_EQ(lida, chave);
        EXPECT_EQ(ambiente.msAguardados() - antes, ms);
        EXPECT_EQ(s->painel.LblMens01 + DaVenda(u"chave"_s) + Colunas(u"orcamento"_s, u"chave"_s),
                  chave + chave + chave);
        EXPECT_EQ(DaVenda(u"erro"_s), erro);
        EXPECT_EQ(DaVenda(u"chave"_s, 1234) + DaVenda(u"chave"_s, 900), u""_s);
    }
}

// "Segmento" lines add their code, characters 10 to 12; an empty file is no answer yet.
TEST_P(LeituraRetornoTest, ErroDeConversao) {
    const QByteArray erro = "cStat=99\r\nxMotivo=Falha na conversão\r\nMensagemErro=Layout: "
                            "W02|...|\r\nSegmento [I]: tag <cProd> deve ser informada.\r\n"
                            "\tLinha: 12: Conteudo do segmento: I|...\r\n";
    const QString falha = u"Falha na Conversao da NFC-e - "_s;
    const std::tuple<QByteArray, QString, QString> casos[] = {
        {erro, falha + u"[I]"_s, u"1"_s},
        {erro + "Segmento [W02]: tag <vBC>", falha + u"[I][W0"_s, u"1"_s},
        {"Segmento 'x'|y", u"'x'"_s, u"1"_s},
        {"", u""_s, u"0"_s},
        {"-", u""_s, u"0"_s},
    };
    for (const auto& [resposta, mensagem, enviotime] : casos) {
        Reinicia();
        if (resposta != "-") Grava(Base + u"-nfe.err"_s, resposta);
        const qint64 antes = ambiente.msAguardados();
        EXPECT_EQ(LeErroNfe(*s), mensagem);
        EXPECT_EQ(ambiente.msAguardados() - antes, 200);
        EXPECT_EQ(DaVenda(u"erro,enviotime"_s), mensagem + u'|' + enviotime);
    }
    // Three bytes in UTF-8 for every euro sign: the column takes 21 845 characters.
    Grava(Base + u"-nfe.err"_s,
          "xMotivo=F\r\n" + QByteArray("Segmento \x80\x80\x80\r\n").repeated(8000));
    LeErroNfe(*s);
    EXPECT_EQ(DaVenda(u"erro"_s), (falha + QString(24000, QChar(0x20ac))).left(21845));
}

// The last line with a number wins, on the sale with the key; a file without one writes nothing.
TEST_P(LeituraRetornoTest, Lote) {
    const std::pair<QByteArray, QString> casos[] = {
        {"54;", u"54"_s},
        {"54;\r\n61;", u"61"_s},
        {"000000000000054;", u"54"_s},
        {"-", u""_s},
    };
    for (const auto& [lotes, lote] : casos) {
        Reinicia();
        Executa(u"UPDATE vendas SET chave = '%1' WHERE cupom = 501"_s.arg(Chave));
        if (lotes != "-") Grava(u"Retorno/"_s + Chave + u"-num-lot.txt"_s, lotes);
        GravaLote(*s);
        EXPECT_EQ(DaVenda(u"lote"_s) + DaVenda(u"lote"_s, 1234), lote) << lotes.toStdString();
    }
}

// The first lot wins here; the refusal's "Message" in capitals, stored trimmed without quotes,
// puts the sale back in the queue as rejected.
TEST_P(LeituraRetornoTest, LoteRecusado) {
    const QByteArray recusa = "Versão UniNFe|5.0 - 01/01/2024\r\nErrorCode|0000000001\r\nMessage|"
                              "Rejeicao: CNPJ do emitente d'agua invalido - lote 54 recusado\r\n"
                              "StackTrace|   at Unimake.Business\r\n";
    const QString mensagem = u"REJEICAO: CNPJ DO EMITENTE D'AGUA INVALIDO - LOTE "_s;
    const QString guardada = u"REJEICAO: CNPJ DO EMITENTE DAGUA INVALIDO - LOTE"_s;
    const std::tuple<QByteArray, QString, QByteArray, QString, QString> casos[] = {
        // lot file, lot of the refusal file, refusal, message, erro
        {"54;", u"054"_s, recusa, mensagem, guardada},
        {"54;\r\n61;", u"054"_s, recusa, mensagem, guardada},
        {"-", u"000"_s, recusa, mensagem, guardada},
        {"54;", u"054"_s, "Message|  falha  ", u"  FALHA  "_s, u"FALHA"_s},
        {"54;", u"061"_s, recusa, {}, {}},
    };
    for (const auto& [lotes, lote, conteudo, devolvida, erro] : casos) {
        Reinicia();
        Executa(u"UPDATE vendas SET enviotime = 1"_s);
        if (lotes != "-") Grava(u"Retorno/"_s + Chave + u"-num-lot.txt"_s, lotes);
        Grava(u"Retorno/000000000000"_s + lote + u"-pro-rec.err"_s, conteudo);
        const qint64 antes = ambiente.msAguardados();
        EXPECT_EQ(LeErroRecibo(*s), devolvida);
        EXPECT_EQ(ambiente.msAguardados() - antes, devolvida.isEmpty() ? 1000 : 1500);
        EXPECT_EQ(DaVenda(u"erro,tempo,enviotime"_s),
                  erro + (devolvida.isEmpty() ? u"|5|1"_s : u"|0|0"_s));
    }
    // TEMP, whole seconds; 0 or no number means 2.
    for (const auto& [temp, segundos] : {std::pair(u"TEMP=7"_s, 7),
                                         {u"TEMP=0"_s, 2},
                                         {u"TEMP=abc"_s, 2},
                                         {u"TMPAMBNFCE=1"_s, 2}}) {
        Reinicia({temp});
        LeErroRecibo(*s);
        EXPECT_EQ(s->venda.TempoEspera, segundos);
    }
}

INSTANTIATE_TEST_SUITE_P(Motores, LeituraRetornoTest, ::testing::ValuesIn(Motores()), NomeDoMotor);

} // namespace
} // namespace nfce::teste
