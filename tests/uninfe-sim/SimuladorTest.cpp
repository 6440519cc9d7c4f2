#include "Simulador.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTimeZone>
#include <gtest/gtest.h>

namespace uninfesim {
namespace {

using namespace Qt::StringLiterals;

// A sale as the server writes it: Windows-1252, CR LF, offline contingency (tpEmis 9).
QByteArray TxtDaVenda(qint64 nNF) {
    return "NOTAFISCAL|1\r\nA|4.00|NFe\r\nB|31||VENDA|65|001|" +
           QByteArray::number(nNF).rightJustified(9, '0') +
           "|2026-11-15T10:20:30-03:00||1|1|3106200|4|9||1|1|1|1|0|0.00|"
           "2026-11-15T10:20:30-03:00|SEM CONEXAO COM A INTERNET OU SEFAZ|\r\n"
           "C|LOJA D'AVILA \"CENTRO\" LTDA||0012345670012||||1|\r\nC02|18123456000104|\r\n"
           "C05|RUA A|10||CENTRO|3106200|BELO HORIZONTE|MG|30110000|1058|BRASIL|3132220000|\r\n"
           "E|JOSE|9||||\r\nE03|12345678909|\r\nH|1||\r\n"
           "I|000045|SEM GTIN|CAF\xc9 500G|09012100||0302100|||||5102|UN|2.000|10.00|20.00|"
           "SEM GTIN|UN|2.000|10.00|0.00||0.00||1||||\r\n"
           "M||\r\nN|\r\nN10d|0|102|\r\nQ|\r\nQ04|08|\r\nS|\r\nS04|08|\r\nW|\r\n"
           "W02|0.00|0.00|0.00|0.00|0.00|20.00|0.00|0.00|0.00|0.00|0.00|0.00|0.00|0.00|20.00||\r\n"
           "X|9|\r\nYA|0|01|DINHEIRO|50.00|||||\r\nYA09|30.00|\r\n"
           "Z||TRIBUTOS (R$ 2,15) FONTE: IBPT(18,00%)     ;OP.:MARIA|Vend.: JOAO     |\r\n";
}

// Worked out by hand from the rules (cNF derived from nNF, modulo-11 check digit).
const QByteArray kChave = "31261118123456000104650010000012349110961071";
const QString kLote = u"RETORNO/000000000000001-pro-rec.txt"_s;

// One golden answer of each kind the server reads.
class SimuladorTest : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(QDir().mkpath(Caminho(u"RETORNO"_s))); }

    QString Caminho(const QString& relativo) const {
        return dir_.path() + u"/18123456000104/"_s + relativo;
    }
    bool Existe(const QString& relativo) const { return QFileInfo::exists(Caminho(relativo)); }
    void Escreve(const QString& relativo, const QByteArray& conteudo) const {
        QDir().mkpath(QFileInfo(Caminho(relativo)).path());
        QFile arquivo(Caminho(relativo));
        ASSERT_TRUE(arquivo.open(QIODevice::WriteOnly));
        arquivo.write(conteudo);
    }
    QByteArray Le(const QString& relativo) const {
        QFile arquivo(Caminho(relativo));
        return arquivo.open(QIODevice::ReadOnly) ? arquivo.readAll() : QByteArray("(ausente)");
    }
    void Passa() { sim_.Processa(agora_); }

    // The server's part: the text into Validar, the validated XML copied into Envio.
    void EnviaVenda(const QString& palavras) {
        Cenario c;
        QString erro;
        ASSERT_TRUE(LeCenario(palavras, c, erro)) << erro.toStdString();
        sim_.DefineCenario(1234, c);
        Escreve(u"Validar/venda-nfe.txt"_s, TxtDaVenda(1234));
        Passa();
        Envia();
    }
    void Envia() {
        QFile::copy(Caminho(u"Validar/Validado/"_s + kChave + u"-nfe.xml"_s),
                    Caminho(u"Envio/"_s + kChave + u"-nfe.xml"_s));
        Passa();
    }

    QTemporaryDir dir_;
    Simulador sim_{dir_.path()};
    const QDateTime agora_{QDate(2026, 11, 15), QTime(10, 21, 0), QTimeZone(-3 * 3600)};
};

TEST_F(SimuladorTest, RespostaDeChave) {
    Escreve(u"Envio/0000001234-gerar-chave.xml"_s,
            "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n<gerarChave>\r\n <UF>31</UF>\r\n"
            " <tpEmis>9</tpEmis>\r\n <nNF>1234</nNF>\r\n <serie>001</serie>\r\n"
            " <AAMM>2611</AAMM>\r\n <CNPJ>18123456000104</CNPJ>\r\n <mod>65</mod>\r\n"
            "</gerarChave>\r\n");
    Passa();
    EXPECT_EQ(Le(u"RETORNO/0000001234-ret-gerar-chave.xml"_s),
              "<?xml version=\"1.0\" encoding=\"utf-8\"?><retGerarChave><chaveNFe>" + kChave +
                  "</chaveNFe></retGerarChave>");
    EXPECT_FALSE(Existe(u"Envio/0000001234-gerar-chave.xml"_s));
}

// From Validar the text is converted and validated, not sent; a failed one goes to Erro.
TEST_F(SimuladorTest, Conversao) {
    Escreve(u"Validar/venda-nfe.txt"_s, TxtDaVenda(1234));
    sim_.DefineCenario(1005, Cenario::De(Desfecho::ErroConversao));
    Escreve(u"Validar/ruim-nfe.txt"_s, TxtDaVenda(1005));
    Passa();
    EXPECT_EQ(Le(u"RETORNO/venda-nfe.txt"_s),
              "cStat=01\r\nxMotivo=Convers\xc3\xa3o efetuada com sucesso.\r\n"
              "Nota fiscal: 000001234 Serie: 001 - ChaveNFe: " +
                  kChave + "\r\n");
    EXPECT_TRUE(Existe(u"Validar/Validado/"_s + kChave + u"-nfe.xml"_s));
    EXPECT_TRUE(QDir(Caminho(u"Envio"_s)).isEmpty());
    EXPECT_TRUE(Le(u"RETORNO/ruim-nfe.err"_s)
                    .startsWith("cStat=99\r\nxMotivo=Falha na convers\xc3\xa3o\r\n"
                                "MensagemErro=Layout: I|cProd|"));
    EXPECT_TRUE(Existe(u"Erro/ruim-nfe.txt"_s));
}

TEST_F(SimuladorTest, LoteEAutorizacao) {
    EnviaVenda(u"autoriza"_s);
    EXPECT_EQ(Le(u"RETORNO/"_s + kChave + u"-num-lot.txt"_s), "1;");
    const QByteArray assinado = Le(u"Validar/Validado/"_s + kChave + u"-nfe.xml"_s);
    const QByteArray digVal = assinado.mid(assinado.indexOf("<DigestValue>") + 13, 28);
    EXPECT_EQ(Le(kLote), ";104;Lote processado;\r\n18123456000104;000001234;" + kChave +
                             ";2026-11-15T10:21:00-03:00;131260000000001;" + digVal +
                             ";100;Autorizado o uso da NF-e;");
    EXPECT_TRUE(Le(u"Enviado/Autorizados/112026/"_s + kChave + u"-procNFe.xml"_s)
                    .contains("<nProt>131260000000001</nProt><digVal>" + digVal +
                              "</digVal><cStat>100</cStat>"));
    // Sent again, an authorised sale is a duplicate.
    Envia();
    EXPECT_TRUE(Le(u"RETORNO/000000000000002-pro-rec.txt"_s)
                    .contains(";0;204;Rejeicao: Duplicidade de NF-e [nRec:31"));
}

TEST_F(SimuladorTest, Rejeicao) {
    EnviaVenda(u"rejeita 778 item 3"_s);
    EXPECT_EQ(
        Le(kLote).split('\n').value(1),
        "18123456000104;000001234;" + kChave +
            ";2026-11-15T10:21:00-03:00;0;778;Rejeicao: Informado NCM inexistente [nItem:3];");
    EXPECT_TRUE(Existe(u"Erro/"_s + kChave + u"-nfe.xml"_s));
}

TEST_F(SimuladorTest, Situacao) {
    EnviaVenda(u"autoriza"_s);
    Escreve(u"Envio/"_s + kChave + u"-ped-sit.txt"_s,
            "tpAmb|1\r\nxServ|CONSULTAR\r\ntpEmis|1\r\nchNFe|" + kChave + "\r\nversao|4.00\r\n");
    Passa();
    EXPECT_EQ(Le(u"RETORNO/"_s + kChave + u"-sit.txt"_s),
              "1;100;Autorizado o uso da NF-e;2026-11-15T10:21:00-03:00;131260000000001;");
}

} // namespace
} // namespace uninfesim
