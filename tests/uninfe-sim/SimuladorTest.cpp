#include "Simulador.h"
#include "support/PastaPrograma.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTimeZone>
#include <gtest/gtest.h>

namespace uninfesim {
namespace {

using namespace Qt::StringLiterals;

// The fields read (enums by number, the reason in brackets), or "erro" when refused with a reason.
QString Lido(const QString& palavras) {
    Cenario c;
    QString erro;
    if (!LeCenario(palavras, c, erro)) return erro.isEmpty() ? u"sem motivo"_s : u"erro"_s;
    return QString::asprintf("%d %d %d %d %d %d ", int(c.desfecho), c.codigo, c.item,
                             c.atrasoPassagens, c.atrasoSegundos, int(c.chave)) +
           (c.motivo ? u'[' + *c.motivo + u']' : u"-"_s);
}

TEST(Cenario, PalavrasLidas) {
    const std::pair<QString, QString> casos[] = {
        {u"autoriza"_s, u"0 0 1 0 0 0 -"_s},
        {u"REJEITA 383\titem 12 atraso 2"_s, u"1 383 12 2 0 0 -"_s},
        {u"duplicidade atraso 30s"_s, u"2 0 1 0 30 0 -"_s},
        {u"duplicidade-chave chave-txt"_s, u"3 0 1 0 0 1 -"_s},
        {u"erro-conversao sem-chave"_s, u"4 0 1 0 0 3 -"_s},
        {u"rejeita-lote"_s, u"6 225 1 0 0 0 -"_s},
        {u"rejeita-lote 656 chave-zero"_s, u"6 656 1 0 0 2 -"_s},
        {u"sem-resposta"_s, u"7 0 1 0 0 0 -"_s},
        {u"lote-recusado motivo serviço 'x' | y; z"_s, u"5 0 1 0 0 0 [serviço 'x' | y; z]"_s},
        {u"rejeita 999 motivo"_s, u"1 999 1 0 0 0 []"_s}};
    for (const QString& palavras : {u"rejeita"_s, u"rejeita 77"_s, u"autoriza rejeita 778"_s,
                                    u"atraso -1"_s, u"autorizar"_s, u"\x01\x02|\""_s})
        EXPECT_EQ(Lido(palavras), u"erro"_s) << palavras.toStdString();
    for (const auto& [palavras, lido] : casos)
        EXPECT_EQ(Lido(palavras), lido) << palavras.toStdString();
    const Cenarios lidos =
        LeCenarios(u"# demo\r\n\r\n1005=rejeita 778 item 3\r\n"
                   "padrao=autoriza atraso 2\nabc=autoriza\n1006\n=autoriza\n"_s);
    EXPECT_TRUE(lidos.porNumero.size() == 1 && lidos.porNumero.value(1005).codigo == 778);
    EXPECT_EQ(lidos.padrao.value_or(Cenario()).atrasoPassagens, 2);
    EXPECT_TRUE(lidos.erros.size() == 3 && lidos.erros.first().startsWith(u"linha 5: "_s));
}

// Worked out by hand from the rules (cNF derived from nNF, modulo-11 check digit).
const QByteArray kChave = "31261118123456000104650010000012349110961071";
const QString kLoja = u"18123456000104/"_s;

class SimuladorTest : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(QDir().mkpath(Caminho(u"RETORNO"_s))); }
    QString Caminho(const QString& relativo) const { return pasta_.Caminho(kLoja + relativo); }
    bool Existe(const QString& relativo) const { return QFileInfo::exists(Caminho(relativo)); }
    void Escreve(const QString& r, const QByteArray& c) { pasta_.EscreveArquivo(kLoja + r, c); }
    QByteArray Le(const QString& relativo) const { return pasta_.LeArquivo(kLoja + relativo); }
    void EscreveVenda(const QString& nome, const QByteArray& nNF) {
        QFile golden(QStringLiteral(NFCE_DADOS_TESTE "/nfce/dinheiro_troco.txt"));
        ASSERT_TRUE(golden.open(QIODevice::ReadOnly));
        Escreve(u"Validar/"_s + nome, golden.readAll().replace("|000001234|", "|" + nNF + "|"));
    }
    void Passa() { sim_.Processa(agora_); }

    // The server's part: the text into Validar, the validated XML copied into Envio.
    void EnviaVenda(const QString& palavras) {
        sim_.DefineCenarios(LeCenarios(u"1234="_s + palavras));
        EscreveVenda(u"venda-nfe.txt"_s, "000001234");
        Passa();
        Envia();
    }
    void Envia() {
        QFile::copy(Caminho(u"Validar/Validado/"_s + kChave + u"-nfe.xml"_s),
                    Caminho(u"Envio/"_s + kChave + u"-nfe.xml"_s));
        Passa();
    }

    nfce::teste::PastaPrograma pasta_;
    Simulador sim_{pasta_.caminho()};
    const QDateTime agora_{QDate(2026, 11, 15), QTime(10, 21, 0), QTimeZone(-3 * 3600)};
};

TEST_F(SimuladorTest, RespostaDeChave) {
    Escreve(u"Envio/0000001234-gerar-chave.xml"_s,
            "<gerarChave><UF>31</UF><tpEmis>9</tpEmis><nNF>1234</nNF><serie>001</serie><AAMM>2611"
            "</AAMM><CNPJ>18123456000104</CNPJ><mod>65</mod></gerarChave>");
    Passa();
    EXPECT_EQ(Le(u"RETORNO/0000001234-ret-gerar-chave.xml"_s),
              "<?xml version=\"1.0\" encoding=\"utf-8\"?><retGerarChave><chaveNFe>" + kChave +
                  "</chaveNFe></retGerarChave>");
    // A month that does not exist gets UniNFe's error file, not a key.
    Escreve(u"Envio/0000001235-gerar-chave.xml"_s,
            "<gerarChave><UF>31</UF><tpEmis>9</tpEmis><nNF>1235</nNF><serie>001</serie><AAMM>2613"
            "</AAMM><CNPJ>18123456000104</CNPJ><mod>65</mod></gerarChave>");
    Passa();
    EXPECT_TRUE(Le(u"RETORNO/0000001235-ret-gerar-chave.err"_s).contains("da emiss"));
}

// From Validar the text is converted and validated, not sent; a failed one goes to Erro.
TEST_F(SimuladorTest, Conversao) {
    EscreveVenda(u"venda-nfe.txt"_s, "000001234");
    sim_.DefineCenario(1005, Cenario::De(Desfecho::ErroConversao));
    EscreveVenda(u"ruim-nfe.txt"_s, "000001005");
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

TEST_F(SimuladorTest, LoteAutorizacaoESituacao) {
    EnviaVenda(u"autoriza"_s);
    EXPECT_EQ(Le(u"RETORNO/"_s + kChave + u"-num-lot.txt"_s), "1;");
    const QByteArray assinado = Le(u"Validar/Validado/"_s + kChave + u"-nfe.xml"_s);
    const QByteArray digVal = assinado.mid(assinado.indexOf("<DigestValue>") + 13, 28);
    EXPECT_EQ(Le(u"RETORNO/000000000000001-pro-rec.txt"_s),
              ";104;Lote processado;\r\n18123456000104;000001234;" + kChave +
                  ";2026-11-15T10:21:00-03:00;131260000000001;" + digVal +
                  ";100;Autorizado o uso da NF-e;");
    EXPECT_TRUE(Le(u"Enviado/Autorizados/112026/"_s + kChave + u"-procNFe.xml"_s)
                    .contains("<nProt>131260000000001</nProt><digVal>" + digVal +
                              "</digVal><cStat>100</cStat>"));
    Escreve(u"Envio/"_s + kChave + u"-ped-sit.txt"_s,
            "tpAmb|1\r\nxServ|CONSULTAR\r\ntpEmis|1\r\nchNFe|" + kChave + "\r\nversao|4.00\r\n");
    Passa();
    EXPECT_EQ(Le(u"RETORNO/"_s + kChave + u"-sit.txt"_s),
              "1;100;Autorizado o uso da NF-e;2026-11-15T10:21:00-03:00;131260000000001;");
    // Sent again, an authorised sale is a duplicate.
    Envia();
    EXPECT_TRUE(Le(u"RETORNO/000000000000002-pro-rec.txt"_s)
                    .contains(";0;204;Rejeicao: Duplicidade de NF-e [nRec:31"));
}

TEST_F(SimuladorTest, Rejeicao) {
    EnviaVenda(u"rejeita 778 item 3"_s);
    EXPECT_EQ(
        Le(u"RETORNO/000000000000001-pro-rec.txt"_s).split('\n').value(1),
        "18123456000104;000001234;" + kChave +
            ";2026-11-15T10:21:00-03:00;0;778;Rejeicao: Informado NCM inexistente [nItem:3];");
    EXPECT_TRUE(Existe(u"Erro/"_s + kChave + u"-nfe.xml"_s));
}

} // namespace
} // namespace uninfesim
