#include "Simulador.h"
#include "Exemplos.h"
#include "support/AmbienteVirtual.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTimeZone>
#include <gtest/gtest.h>

namespace uninfesim {
namespace {

using namespace Qt::StringLiterals;
using namespace teste;

const QString kLote1 = u"RETORNO/000000000000001"_s;
const QString kEmProcessamento = u"Enviado/EmProcessamento/"_s;

class SimuladorTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(QDir().mkpath(Empresa() + u"/Envio"_s));
        ASSERT_TRUE(QDir().mkpath(Empresa() + u"/RETORNO"_s));
    }

    QString Empresa() const { return dir_.path() + u"/18123456000104"_s; }
    QString Caminho(const QString& relativo) const { return Empresa() + u'/' + relativo; }
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

    void Passa(int vezes = 1, int segundos = 0) {
        for (int i = 0; i < vezes; ++i)
            sim_.Processa(agora_.addSecs(segundos));
    }

    // The server's part: the text into Validar, the validated XML copied into Envio.
    QString EnviaVenda(qint64 nNF) {
        Escreve(u"Validar/venda-nfe.txt"_s, TxtDaVenda(nNF));
        Passa();
        const QString chave =
            QString::fromLatin1(Le(u"RETORNO/venda-nfe.txt"_s).split('\n').value(2).mid(46, 44));
        QFile::copy(Caminho(u"Validar/Validado/"_s + chave + u"-nfe.xml"_s),
                    Caminho(u"Envio/"_s + chave + u"-nfe.xml"_s));
        Passa();
        return chave;
    }

    // The scenario of sale `nNF` in the stand-in's words.
    void Define(qint64 nNF, const QString& palavras) {
        Cenario c;
        QString erro;
        ASSERT_TRUE(LeCenario(palavras, c, erro)) << erro.toStdString();
        sim_.DefineCenario(nNF, c);
    }

    QByteArray LinhaDoProtocolo() const {
        return Le(kLote1 + u"-pro-rec.txt"_s).split('\n').value(1);
    }

    void PedeSituacao(const QString& chave, const QByteArray& tpAmb = "2") {
        Escreve(u"Envio/"_s + chave + u"-ped-sit.txt"_s,
                "tpAmb|" + tpAmb + "\r\nxServ|CONSULTAR\r\ntpEmis|1\r\nchNFe|" + chave.toLatin1() +
                    "\r\nversao|4.00\r\n");
        Passa();
    }

    QTemporaryDir dir_;
    Simulador sim_{dir_.path()};
    const QDateTime agora_{QDate(2026, 11, 15), QTime(10, 21, 0), QTimeZone(-3 * 3600)};
};

const QByteArray kPedidoXml = "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n<gerarChave>\r\n"
                              " <UF>31</UF>\r\n <tpEmis>9</tpEmis>\r\n <nNF>1234</nNF>\r\n"
                              " <serie>001</serie>\r\n <AAMM>2611</AAMM>\r\n"
                              " <CNPJ>18123456000104</CNPJ>\r\n <mod>65</mod>\r\n</gerarChave>\r\n";

// The XML form holds the key at character 64; "(ausente)": no answer, the request stays.
TEST_F(SimuladorTest, FormasDaRespostaDeChave) {
    const QByteArray pedidoTxt = "UF|31\r\ntpEmis|9\r\nnNF|1234\r\nserie|1\r\nAAMM|2611\r\n"
                                 "CNPJ|18123456000104\r\nmod|65\r\n";
    const QByteArray xml = "<?xml version=\"1.0\" encoding=\"utf-8\"?><retGerarChave><chaveNFe>";
    const std::tuple<QString, QString, QByteArray, QString, QByteArray> casos[] = {
        {u"autoriza"_s, u"xml"_s, kPedidoXml, u"xml"_s,
         xml + kChave1234.toLatin1() + "</chaveNFe></retGerarChave>"},
        {u"autoriza"_s, u"txt"_s, pedidoTxt, u"txt"_s, kChave1234.toLatin1()},
        {u"chave-txt"_s, u"xml"_s, kPedidoXml, u"txt"_s, kChave1234.toLatin1()},
        {u"chave-zero"_s, u"xml"_s, kPedidoXml, u"xml"_s, xml + "0</chaveNFe></retGerarChave>"},
        {u"sem-chave"_s, u"xml"_s, kPedidoXml, u"xml"_s, "(ausente)"},
    };
    for (const auto& [cenario, pedido, conteudo, resposta, esperado] : casos) {
        SCOPED_TRACE(cenario.toStdString() + ' ' + pedido.toStdString());
        Define(1234, cenario);
        Escreve(u"Envio/0000001234-gerar-chave."_s + pedido, conteudo);
        Passa(2);
        EXPECT_EQ(Le(u"RETORNO/0000001234-ret-gerar-chave."_s + resposta), esperado);
        EXPECT_EQ(Existe(u"Envio/0000001234-gerar-chave."_s + pedido), esperado == "(ausente)");
        EXPECT_EQ(QDir(Caminho(u"RETORNO"_s)).isEmpty(), esperado == "(ausente)");
        QDir(Caminho(u"RETORNO"_s)).removeRecursively();
        QDir().mkpath(Caminho(u"RETORNO"_s));
        QFile::remove(Caminho(u"Envio/0000001234-gerar-chave."_s + pedido));
    }
}

// Requests and documents in Envio that UniNFe cannot take: the error answer, in the form of
// each kind, and the file moved to Erro.
TEST_F(SimuladorTest, PedidosEDocumentosRuins) {
    QByteArray binario(3000, '\0');
    for (int i = 0; i < binario.size(); ++i)
        binario[i] = char(i * 31);
    const QString chave = u"0000001234-gerar-chave.xml"_s,
                  resposta = u"0000001234-ret-gerar-chave"_s;
    const QString situacao = kChave1234 + u"-ped-sit.txt"_s;
    const std::tuple<QString, QByteArray, QString, QByteArray> casos[] = {
        {chave, QByteArray(kPedidoXml).replace(" <nNF>1234</nNF>\r\n", ""), resposta,
         "Número da nota fiscal deve ser informado"},
        {chave, QByteArray(kPedidoXml).replace("2611", "2613"), resposta,
         "Mês da emissão inválido"},
        {chave, QByteArray(kPedidoXml).replace("2611", "0011"), resposta,
         "Ano da emissão inválido"},
        {chave, QByteArray(kPedidoXml).replace("18123456000104", "18.123.456/0001-04"), resposta,
         "CNPJ inválido: 18.123.456/0001-04"},
        {chave, QByteArray(kPedidoXml).replace("1234", QByteArray(100000, '7')), resposta,
         "Conteúdo inválido em nNF"},
        {chave, kPedidoXml.left(80), resposta, "Arquivo "},
        {chave, binario, resposta, "Arquivo "},
        {chave, "", resposta, "Arquivo "},
        {situacao, "tpAmb|0\r\nxServ|CONSULTAR\r\nchNFe|" + kChave1234.toLatin1() + "\r\n",
         kChave1234 + u"-sit"_s, "Message|O elemento 'http://www.portalfiscal.inf.br/nfe:tpAmb'"},
        {u"x-ped-sit.txt"_s, QByteArray(100000, '|'), u"x-sit"_s, "tpAmb"},
        {u"y-ped-sit.xml"_s, "<consSitNFe><tpAmb>2</tpAmb><chNFe>1'|\"</chNFe>", u"y-sit"_s,
         "Vers"},
        {u"binario-nfe.xml"_s, QByteArray(5000, '\xff'), u"binario-nfe"_s, "\r\nMessage|"},
        {u"sem-chave-nfe.xml"_s, "<NFe><infNFe Id=\"NFe123\"/></NFe>", u"sem-chave-nfe"_s,
         "Id: NFe123"},
        {u"enorme-nfe.txt"_s, "NOTAFISCAL|1\r\n" + QByteArray(100000, 'A'), u"enorme-nfe"_s,
         "cStat=99"},
    };
    for (const auto& [pedido, conteudo, nome, trecho] : casos) {
        SCOPED_TRACE(pedido.toStdString());
        Escreve(u"Envio/"_s + pedido, conteudo);
        Passa();
        EXPECT_TRUE(QString::fromLatin1(Le(u"RETORNO/"_s + nome + u".err"_s))
                        .contains(QString::fromUtf8(trecho)));
        EXPECT_FALSE(Existe(u"RETORNO/"_s + nome + pedido.right(4)));
        EXPECT_TRUE(Existe(u"Erro/"_s + pedido));
        EXPECT_TRUE(QDir(Caminho(u"Envio"_s)).isEmpty());
    }
}

TEST_F(SimuladorTest, ConversaoDoTextoEmValidarEEmEnvio) {
    Escreve(u"Validar/000001234_18123456000104_001_15_11_2026-nfe.txt"_s, TxtDaVenda(1234));
    Passa();
    const QByteArray resposta = Le(u"RETORNO/000001234_18123456000104_001_15_11_2026-nfe.txt"_s);
    EXPECT_EQ(resposta, "cStat=01\r\nxMotivo=Convers\xc3\xa3o efetuada com sucesso.\r\n"
                        "Nota fiscal: 000001234 Serie: 001 - ChaveNFe: " +
                            kChave1234.toLatin1() + "\r\n");
    const QByteArray linha = resposta.split('\n').value(2);
    EXPECT_EQ(linha.mid(36, 8), "ChaveNFe");
    EXPECT_EQ(linha.mid(46, 44), kChave1234.toLatin1());
    EXPECT_TRUE(Existe(u"Validar/Validado/"_s + kChave1234 + u"-nfe.xml"_s));
    EXPECT_TRUE(Existe(u"RETORNO/000001234_18123456000104_001_15_11_2026-nfe-orig.txt"_s));
    EXPECT_FALSE(Existe(u"Validar/000001234_18123456000104_001_15_11_2026-nfe.txt"_s));
    EXPECT_TRUE(QDir(Caminho(u"Envio"_s)).isEmpty()) << "from Validar nothing is sent";
    // From Envio it is converted and sent.
    Escreve(u"Envio/venda-nfe.txt"_s, TxtDaVenda(1234));
    Passa();
    EXPECT_TRUE(Existe(u"RETORNO/venda-nfe.txt"_s));
    EXPECT_EQ(Le(u"RETORNO/"_s + kChave1234 + u"-num-lot.txt"_s), "1;");
    EXPECT_TRUE(Existe(kLote1 + u"-pro-rec.txt"_s));
}

TEST_F(SimuladorTest, ErrosDeConversao) {
    sim_.DefineCenario(1005, Cenario::De(Desfecho::ErroConversao));
    Escreve(u"Validar/a-nfe.txt"_s, TxtDaVenda(1005));
    Escreve(u"Validar/b-nfe.txt"_s, "");
    Passa();
    const QByteArray linhaI = TxtDaVenda(1005).split('\n').value(9).chopped(1);
    EXPECT_EQ(Le(u"RETORNO/a-nfe.err"_s),
              "cStat=99\r\nxMotivo=Falha na convers\xc3\xa3o\r\nMensagemErro=Layout: "
              "I|cProd|cEAN|xProd|NCM|NVE|CEST|indEscala|CNPJFab|cBenef|EXTIPI|CFOP|uCom|qCom|"
              "vUnCom|vProd|cEANTrib|uTrib|qTrib|vUnTrib|vFrete|vSeg|vDesc|vOutro|indTot|xPed|"
              "nItemPed|nFCI|\r\nSegmento [I]: tag <NCM> deve ser informada.\r\n"
              "\tLinha: 10: Conteudo do segmento: " +
                  QString::fromLatin1(linhaI).toUtf8() + "\r\n");
    EXPECT_EQ(Le(u"RETORNO/b-nfe.err"_s),
              "cStat=02\r\nxMotivo=Falha na convers\xc3\xa3o. Sem informa\xc3\xa7\xc3\xb5"
              "es para converter o arquivo texto\r\n");
    EXPECT_TRUE(Existe(u"Erro/a-nfe.txt"_s));
    EXPECT_TRUE(Existe(u"Erro/b-nfe.txt"_s));
    EXPECT_TRUE(QDir(Caminho(u"Validar/Validado"_s)).isEmpty());
}

TEST_F(SimuladorTest, AutorizacaoComProtocoloEXmlArquivado) {
    const QString chave = EnviaVenda(1234);
    EXPECT_EQ(Le(u"RETORNO/"_s + chave + u"-num-lot.xml"_s),
              "<?xml version=\"1.0\" encoding=\"utf-8\"?><DadosLoteNfe><NumeroLoteGerado>1"
              "</NumeroLoteGerado></DadosLoteNfe>");
    const QByteArray assinado = Le(u"Validar/Validado/"_s + chave + u"-nfe.xml"_s);
    const QByteArray digVal = assinado.mid(assinado.indexOf("<DigestValue>") + 13, 28);
    EXPECT_EQ(Le(kLote1 + u"-pro-rec.txt"_s), ";104;Lote processado;\r\n18123456000104;000001234;" +
                                                  chave.toLatin1() +
                                                  ";2026-11-15T10:21:00-03:00;131260000000001;" +
                                                  digVal + ";100;Autorizado o uso da NF-e;");
    const QByteArray proc = Le(u"Enviado/Autorizados/112026/"_s + chave + u"-procNFe.xml"_s);
    EXPECT_TRUE(
        proc.startsWith("<?xml version=\"1.0\" encoding=\"utf-8\"?><nfeProc versao=\"4.00\""));
    EXPECT_TRUE(proc.contains(assinado.mid(assinado.indexOf("<NFe"))));
    EXPECT_TRUE(proc.contains("<nProt>131260000000001</nProt><digVal>" + digVal +
                              "</digVal><cStat>100</cStat>"));
    EXPECT_TRUE(proc.contains("D'AVILA \"CENTRO\"")) << "quotes stay raw in element text";
    EXPECT_FALSE(Existe(kEmProcessamento + chave + u"-nfe.xml"_s));
    EXPECT_TRUE(Le(kLote1 + u"-pro-rec.xml"_s).contains("<cStat>104</cStat>"));
}

TEST_F(SimuladorTest, PastaDoMesSegueAOpcao) {
    Opcoes opcoes;
    opcoes.mes = MesPasta::AM;
    sim_ = Simulador(dir_.path(), opcoes);
    const QString chave = EnviaVenda(1234);
    EXPECT_TRUE(Existe(u"Enviado/Autorizados/202611/"_s + chave + u"-procNFe.xml"_s));
}

// The reason of the stand-in's own, with ";" taken out and in Windows-1252.
TEST_F(SimuladorTest, RejeicoesNaFormaDaSefaz) {
    const std::pair<QString, QByteArray> casos[] = {
        {u"rejeita 778 item 3"_s, "778;Rejeicao: Informado NCM inexistente [nItem:3];"},
        {u"rejeita 725 item 12"_s, "725;Rejeicao: NFC-e com CFOP invalido[nItem:12];"},
        {u"rejeita 865"_s, "865;Rejeicao: Total dos pagamentos menor que o total da nota;"},
        {u"duplicidade"_s, "204;Rejeicao: Duplicidade de NF-e [nRec:310000000000001];"},
        {u"duplicidade-chave"_s,
         "539;Rejeicao: Duplicidade de NF-e, com diferenca na Chave de Acesso "
         "[chNFe:31261118123456000104650010000010051351941097][nRec:310000000000001];"},
        {u"rejeita 778 motivo Rejeição: NCM; inexistente 'x'"_s,
         "778;Rejei\xe7\xe3o: NCM  inexistente 'x';"},
    };
    for (const auto& [cenario, codigoEMotivo] : casos) {
        SetUp();
        sim_ = Simulador(dir_.path());
        Define(1005, cenario);
        const QString chave = EnviaVenda(1005);
        EXPECT_EQ(LinhaDoProtocolo(), "18123456000104;000001005;" + chave.toLatin1() +
                                          ";2026-11-15T10:21:00-03:00;0;" + codigoEMotivo);
        EXPECT_TRUE(Existe(u"Erro/"_s + chave + u"-nfe.xml"_s));
        EXPECT_FALSE(QDir(Caminho(u"Enviado/Autorizados"_s)).exists(u"112026"_s));
        QDir(Empresa()).removeRecursively();
    }
}

TEST_F(SimuladorTest, FalhasDoLote) {
    Cenario recusado = Cenario::De(Desfecho::LoteRecusado);
    recusado.motivo = u"Erro ao invocar o serviço d'Autorização"_s;
    sim_.DefineCenario(1005, recusado);
    const QString chave = EnviaVenda(1005);
    EXPECT_EQ(Le(kLote1 + u"-pro-rec.err"_s),
              "Vers\xe3o UniNFe|5.1.0.0 - 03/02/2025\r\nErrorCode|0000000001\r\n"
              "Message|Erro ao invocar o servi\xe7o d'Autoriza\xe7\xe3o\r\n"
              "StackTrace|   em NFe.Service.TaskNFeAutorizacao.Execute()\r\n");
    EXPECT_FALSE(Existe(kLote1 + u"-pro-rec.txt"_s));
    EXPECT_TRUE(Existe(u"Erro/"_s + chave + u"-nfe.xml"_s));

    sim_.DefineCenario(1234, Cenario::De(Desfecho::RejeitaLote));
    EnviaVenda(1234);
    EXPECT_EQ(Le(u"RETORNO/000000000000002-pro-rec.txt"_s),
              ";225;Rejeicao: Falha no Schema XML do lote de NFe;");
}

TEST_F(SimuladorTest, RespostaAtrasadaPorPassagens) {
    Define(1234, u"autoriza atraso 3"_s);
    EnviaVenda(1234);
    Passa(2);
    EXPECT_FALSE(Existe(kLote1 + u"-pro-rec.txt"_s));
    Passa();
    EXPECT_TRUE(Existe(kLote1 + u"-pro-rec.txt"_s));
}

// An authorised sale's situation, in text and in XML; one that SEFAZ never answered keeps its
// XML in EmProcessamento and is not found.
TEST_F(SimuladorTest, SituacaoDeAutorizadaESemResposta) {
    const QString autorizada = EnviaVenda(1234);
    PedeSituacao(autorizada, "1");
    EXPECT_EQ(Le(u"RETORNO/"_s + autorizada + u"-sit.txt"_s),
              "1;100;Autorizado o uso da NF-e;2026-11-15T10:21:00-03:00;131260000000001;");
    EXPECT_TRUE(
        Le(u"RETORNO/"_s + autorizada + u"-sit.xml"_s).contains("<protNFe versao=\"4.00\">"));
    EXPECT_FALSE(Existe(u"Envio/"_s + autorizada + u"-ped-sit.txt"_s));

    sim_.DefineCenario(1005, Cenario::De(Desfecho::SemResposta));
    const QString chave = EnviaVenda(1005);
    Passa(10, 3600);
    EXPECT_EQ(Le(u"RETORNO/"_s + chave + u"-num-lot.txt"_s), "2;");
    EXPECT_FALSE(Existe(u"RETORNO/000000000000002-pro-rec.txt"_s));
    EXPECT_TRUE(Existe(kEmProcessamento + chave + u"-nfe.xml"_s));
    PedeSituacao(chave);
    EXPECT_TRUE(Le(u"RETORNO/"_s + chave + u"-sit.xml"_s)
                    .contains("<cStat>217</cStat><xMotivo>Rejeicao: NF-e nao consta na base de "
                              "dados da SEFAZ</xMotivo>"));
    EXPECT_FALSE(Existe(u"RETORNO/"_s + chave + u"-sit.txt"_s));
}

TEST_F(SimuladorTest, AutorizadaSemProcNfeEReenviadaViraDuplicidade) {
    Cenario c;
    c.semProcNFe = true;
    sim_.DefineCenario(1234, c);
    const QString chave = EnviaVenda(1234);
    EXPECT_FALSE(Existe(u"Enviado/Autorizados/112026/"_s + chave + u"-procNFe.xml"_s));
    EXPECT_TRUE(Existe(kEmProcessamento + chave + u"-nfe.xml"_s));
    PedeSituacao(chave);
    EXPECT_TRUE(Existe(u"Enviado/Autorizados/112026/"_s + chave + u"-procNFe.xml"_s));

    QFile::copy(Caminho(u"Validar/Validado/"_s + chave + u"-nfe.xml"_s),
                Caminho(u"Envio/"_s + chave + u"-nfe.xml"_s));
    Passa();
    EXPECT_TRUE(
        Le(u"RETORNO/000000000000002-pro-rec.txt"_s).contains(";0;204;Rejeicao: Duplicidade"));
}

TEST_F(SimuladorTest, PastasEmQualquerCaixa) {
    const QString outra = u"../99999999000191/"_s;
    for (const QString& p : {u"retorno"_s, u"VALIDAR/VALIDADO"_s, u"../LOG"_s})
        QDir().mkpath(Caminho(outra + p));
    Escreve(outra + u"ENVIO/0000001234-gerar-chave.xml"_s, kPedidoXml);
    Escreve(outra + u"VALIDAR/v-nfe.txt"_s, TxtDaVenda(1234));
    Passa();
    EXPECT_TRUE(Existe(outra + u"retorno/0000001234-ret-gerar-chave.xml"_s));
    EXPECT_TRUE(Existe(outra + u"retorno/v-nfe.txt"_s));
    EXPECT_TRUE(Existe(outra + u"VALIDAR/VALIDADO/"_s + kChave1234 + u"-nfe.xml"_s));
    EXPECT_EQ(QDir(Caminho(outra)).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name),
              (QStringList{u"ENVIO"_s, u"Enviado"_s, u"Erro"_s, u"VALIDAR"_s, u"retorno"_s}));
    EXPECT_TRUE(QDir(dir_.path() + u"/LOG"_s).isEmpty());
}

TEST_F(SimuladorTest, RespostaQueNaoPodeSerGravadaDeixaOPedido) {
    QDir().mkpath(Caminho(u"RETORNO/0000001234-ret-gerar-chave.xml"_s));
    Escreve(u"Envio/0000001234-gerar-chave.xml"_s, kPedidoXml);
    const QStringList registro = sim_.Processa(agora_);
    EXPECT_TRUE(Existe(u"Envio/0000001234-gerar-chave.xml"_s));
    ASSERT_EQ(registro.size(), 1);
    EXPECT_TRUE(registro.first().contains(u"não foi possível gravar"_s));
}

TEST_F(SimuladorTest, ArquivoEmEscritaEsperaFicarEstavel) {
    Opcoes opcoes;
    opcoes.esperaArquivoEstavel = true;
    sim_ = Simulador(dir_.path(), opcoes);
    Escreve(u"Envio/0000001234-gerar-chave.xml"_s, kPedidoXml.left(60));
    Passa();
    Escreve(u"Envio/0000001234-gerar-chave.xml"_s, kPedidoXml);
    Passa();
    EXPECT_FALSE(Existe(u"RETORNO/0000001234-ret-gerar-chave.xml"_s));
    Passa();
    EXPECT_TRUE(Existe(u"RETORNO/0000001234-ret-gerar-chave.xml"_s));
}

// The way the server's tests drive it: every pump and wait of the virtual clock is a pass.
TEST_F(SimuladorTest, RespondeDentroDasEsperasDoRelogioVirtual) {
    nfce::AmbienteVirtual ambiente;
    ambiente.AoBombear([&] { sim_.Processa(ambiente.Agora()); });
    Cenario tarde;
    tarde.atrasoSegundos = 10;
    sim_.DefineCenario(1234, tarde);
    Escreve(u"Envio/venda-nfe.txt"_s, TxtDaVenda(1234));
    ambiente.Aguarda(0.5);
    EXPECT_TRUE(Existe(u"RETORNO/"_s + kChave1234 + u"-num-lot.txt"_s));
    ambiente.Aguarda(9);
    EXPECT_FALSE(Existe(kLote1 + u"-pro-rec.txt"_s));
    ambiente.Aguarda(1);
    EXPECT_TRUE(Existe(kLote1 + u"-pro-rec.txt"_s));
}

TEST_F(SimuladorTest, LoteNaoReusaRespostaDeixadaNaPasta) {
    Escreve(kLote1 + u"-pro-rec.txt"_s, "antigo");
    const QString chave = EnviaVenda(1234);
    EXPECT_EQ(Le(u"RETORNO/"_s + chave + u"-num-lot.txt"_s), "2;");
    EXPECT_EQ(Le(kLote1 + u"-pro-rec.txt"_s), "antigo");
}

} // namespace
} // namespace uninfesim
