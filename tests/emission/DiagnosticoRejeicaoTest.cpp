#include "CenarioRetorno.h"

#include "emission/Retorno.h"
#include "nfce/RespostaUniNfe.h"

namespace nfce::teste {
namespace {

class DiagnosticoRejeicaoTest : public CenarioRetorno {
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

// One row a rule: where the item number is cut (field 6, or 7 after a code in field 6), the
// product lookup and its miss (SEFAZ's own reason then), the state each kind leaves, where a
// duplicate's protocol comes from (the filed XML's protNFe/infProt/nProt when there is one: sent
// again after a stop before the recording), a code without a rule, and hostile lines: text
// reaches the row intact, cut to the columns a strict MariaDB insists on; another key's line
// changes nothing but erro.
TEST_P(DiagnosticoRejeicaoTest, UmaLinhaPorRegra) {
    const QByteArray dup = Protocolo("204", "Rejeicao: Duplicidade de NF-e [nRec:310000069179169]");
    const QByteArray xml = "<nfeProc><protNFe><infProt><nProt>131260000099999</nProt></infProt>";
    const QString motivo = "Autorizado o uso da NF-e d'agua \\", longo(100000, u'7');
    const std::tuple<QByteArray, QByteArray, QString, QString> casos[] = {
        // lines, filed XML, message, erro|tempo|enviotime|situacao|autorizacao|sync| then the
        // items' situacao, sale 900's tempo, receipts left, situation query asked, re-emitted
        {Ncm, "", "Erro: NCM Inexistente Código do Produto: 78",
         "NCM Inexistente Cod. Produto 000078|0|1|N||0|N|5|5|0|1234"},
        {Protocolo("778", "Rejeicao: Informado NCM inexistente [nItem:3]", true), "",
         "Erro: NCM Inexistente Código do Produto: 78",
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
        {dup, QByteArray(xml).replace("99999<", "9x<"), "Autorizado o uso da NF-e",
         "Autorizado o uso da NF-e|1|1|N|310000069179169]|0|N|1|4|0|"},
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
TEST_P(DiagnosticoRejeicaoTest, Reemissao) {
    Processa(Protocolo("100", "Autorizado o uso da NF-e", true) + "\r\n" + Ncm);
    EXPECT_TRUE(reemissoes.isEmpty());
    Processa(Ncm, {}, u"NC1"_s);
    EXPECT_TRUE(reemissoes.isEmpty());
}

INSTANTIATE_TEST_SUITE_P(Motores, DiagnosticoRejeicaoTest, ::testing::ValuesIn(Motores()),
                         NomeDoMotor);

} // namespace
} // namespace nfce::teste
