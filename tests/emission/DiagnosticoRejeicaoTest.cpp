#include "CenarioRetorno.h"

#include "emission/Retorno.h"

namespace nfce::teste {
namespace {

using namespace Qt::StringLiterals;

class DiagnosticoRejeicaoTest : public CenarioRetorno {
protected:
    // Protocol lines "code;reason", one a line ("+" first: with digVal, so the code stands in
    // field 6), processed in `modo` with the re-emissions recorded.
    QString Processa(const QByteArray& linhas, const QString& modo = u"VENDA"_s,
                     bool semItens = false) {
        Reinicia();
        if (semItens) Executa(u"DELETE FROM itens WHERE cupom = 501"_s);
        s->venda.ModoRetorno = modo;
        s->EmiteNfceImprime = [this](const QString& nfce) { reemissoes << nfce; };
        reemissoes.clear();
        QByteArrayList protocolo;
        for (const QByteArray& linha : linhas.split('\n')) {
            const QList<QByteArray> partes = linha.mid(linha.startsWith('+')).split(';');
            protocolo << Protocolo(partes[0], partes[1], linha.startsWith('+'));
        }
        Responde(protocolo.join("\r\n"));
        return ProcessaRetorno(*s);
    }
    QStringList reemissoes;
};

struct Caso {
    const char* linha;
    const char* mensagem;
    const char* erro;             // "=": the message
    const char* venda;            // tempo|enviotime|situacao|autorizacao
    int reemissoes, atualizacoes; // UPDATEs of the sale's row
};

// Reasons as SEFAZ words them; item 3 of the sale is product 78.
const Caso Casos[] = {
    {"778;Rejeicao: Informado NCM inexistente [nItem:3]",
     "Erro: NCM Inexistente Código do Produto: 78", "NCM Inexistente Cod. Produto 000078", "0|1|N|",
     1, 3},
    {"315;Rejeicao: Data de Emissao anterior ao inicio da autorizacao de Nota Fiscal na UF",
     "Data de Emissao anterior ao inicio da autorizacao de NFC-e", "=", "0|0|N|", 0, 2},
    {"206;Rejeicao: NF-e ja esta inutilizada na Base de dados da SEFAZ",
     "NF-Ce ja esta inutilizada na Base de dados da SEFAZ", "=", "5|1|S|", 0, 3},
    // Both "204" rows: the row statement twice, enviotime once; the protocol cut from field 6.
    {"204;Rejeicao: Duplicidade de NF-e [nRec:310000069179169]", "Autorizado o uso da NF-e", "=",
     "1|1|N|310000069179169]", 0, 4},
    // Both "539" rows: everything twice. The comma some states write shifts the fixed cut off
    // the number, which is then found after "nRec:".
    {"539;Rejeicao: Duplicidade de NF-e com diferenca na Chave de Acesso [chNFe:3126111812345600019"
     "0650010000012349876543218][nRec:431022029092399]",
     "Autorizado o uso da NF-e", "=", "1|1|N|431022029092399", 0, 5},
    {"539;Rejeicao: Duplicidade de NF-e, com diferenca na Chave de Acesso [chNFe:312611181234560001"
     "90650010000012349876543218][nRec:431022029092399]",
     "Autorizado o uso da NF-e", "=", "1|1|N|431022029092399", 0, 5},
    {"866;Rejeicao: Ausencia de troco quando o valor dos pagamentos informados for maior que o "
     "total da nota",
     "Ausencia de troco", "=", "0|0|N|", 0, 2},
    {"869;Rejeicao: Valor do troco incorreto", "Valor do troco incorreto.", "=", "0|0|N|", 0, 2},
    {"865;Rejeicao: Total dos pagamentos menor que o total da nota",
     "Total de Pagamentos menor que o Total", "=", "0|0|N|", 0, 2},
    {"383;Rejeicao: Item com CSOSN indevido [nItem:3]",
     "Rejeiçao: Item com CSOSN indevido.Código do Produto: 78",
     "Item com CSOSN indevido. Cod. Produto 000078", "0|0|N|", 0, 2},
    {"725;Rejeicao: NFC-e com CFOP invalido [nItem:3]",
     "Erro: CFOP Inexistente Código do Produto: 78", "CFOP Inexistente Cod. Produto 78", "0|1|N|",
     0, 3},
    {"386;Rejeicao: CFOP nao permitido para o CSOSN [nItem:3]",
     "Rejeicao: CFOP nao permitido para o CSOSN Código do Produto: 78",
     "CFOP nao permitido para CST. Cod. Produto 000078", "0|1|N|", 1, 3},
    {"395;Rejeicao: Endereco do site da UF da Consulta via QR-Code diverge do previsto",
     "Endereco do site da UF da Consulta via QR-Code diverge do previsto", "=", "0|0|N|", 0, 2},
    {"208;Rejeicao: CNPJ do destinatario invalido", "CPF ou CNPJ do Destinatario Invalido", "=",
     "0|0|N|", 0, 3},
    {"806;Rejeicao: Operacao com ICMS-ST sem informacao do CEST [nItem:9]",
     "Rejeicao: Operacao com ICMS-ST sem informacao do CEST",
     "Operacao com ICMS-ST sem informacao do CEST", "0|1|N|", 1, 3},
    {"237;Rejeicao: CPF do destinatario invalido", "CPF do Destinatario Invalido", "=", "0|0|N|", 0,
     2},
    {"590;Rejeicao: Informado CST para emissor do Simples Nacional (CRT=1)",
     "Informado CST para emissor do Simples Nacional", "=", "0|0|N|", 0, 2},
    {"385;Rejeicao: Grupo de tributacao ICMSSN900, informando dados do ICMS-ST [nItem:3]",
     "Rejeicao: Grupo de Tributacao ICMSSN900, informando dados do ICMS-STCódigo do Produto: 78",
     "Grupo de Tributacao. Cod. Produto 000078", "0|1|N|", 0, 3},
    {"999;Rejeicao: Motivo que o servidor nao conhece",
     "Rejeicao: Motivo que o servidor nao conhece - ", "", "5|0|N|", 0, 1},
    // The code in field 6: "778" cuts the item from field 7.
    {"+778;Rejeicao: Informado NCM inexistente [nItem:3]",
     "Erro: NCM Inexistente Código do Produto: 78", "NCM Inexistente Cod. Produto 000078", "0|1|N|",
     1, 3},
    {"+204;Rejeicao: Duplicidade de NF-e [nRec:310000069179169]", "Autorizado o uso da NF-e", "=",
     "1|1|N|", 0, 4},
};

TEST_P(DiagnosticoRejeicaoTest, TabelaDeCodigos) {
    for (const Caso& c : Casos) {
        const QString mensagem = QString::fromUtf8(c.mensagem);
        EXPECT_EQ(Processa(c.linha), mensagem) << c.linha;
        const QString erro = qstrcmp(c.erro, "=") ? QString::fromUtf8(c.erro) : mensagem;
        const bool duplicada = c.venda[0] == '1';
        EXPECT_EQ(DaVenda(u"erro,tempo,enviotime,situacao,autorizacao,chave"_s),
                  erro + u'|' + QLatin1String(c.venda) + u'|' + (duplicada ? Chave : QString()))
            << c.linha;
        EXPECT_EQ(Texto(u"SELECT situacao FROM itens WHERE cupom = 501 AND Item = 1"_s),
                  QString(QLatin1Char(c.venda[4])));
        EXPECT_EQ(reemissoes, QStringList(c.reemissoes, u"1234"_s)) << c.linha;
        EXPECT_EQ(Atualizacoes(), c.atualizacoes) << c.linha;
        EXPECT_EQ(Atualizacoes(1234), 0) << c.linha;
        // Duplicates are keyed on the NFC-e number, which sale 900 shares.
        EXPECT_EQ(DaVenda(u"tempo"_s, 900), duplicada ? u"1"_s : u"5"_s) << c.linha;
        // A duplicate in field 5 goes on to the filing: a situation query, one receipt less.
        const bool arquiva = duplicada && c.linha[0] != '+';
        EXPECT_EQ(Existe(u"Envio/"_s + Chave + u"-ped-sit.txt"_s), arquiva) << c.linha;
        EXPECT_EQ(s->painel.LblQuantCup, arquiva ? u"4"_s : u"5"_s) << c.linha;
    }
}

// The item is cut by position: other wordings name item 0, which the lookup does not find.
// The sale then keeps SEFAZ's own reason and the state its code gives.
TEST_P(DiagnosticoRejeicaoTest, ItemNaoEncontrado) {
    for (const char* linha : {"778;Rejeicao: Informado NCM inexistente [nItem:9]",
                              "725;Rejeicao: NFC-e com CFOP invalido[nItem:3]",
                              "386;Rejeicao: CFOP nao permitido para o CSOSN informado [nItem:3]",
                              "+383;Rejeicao: Item com CSOSN indevido [nItem:3]",
                              "806;Rejeicao: Operacao com ICMS-ST sem informacao do CEST"}) {
        const bool semItens = linha[0] == '8';
        const QString motivo = QString::fromLatin1(linha).section(u';', 1);
        EXPECT_EQ(Processa(linha, u"VENDA"_s, semItens), motivo);
        const char* enviotime = linha[0] == '+' ? "0" : "1";
        EXPECT_EQ(DaVenda(u"erro,tempo,enviotime"_s), motivo + u"|0|"_s + QLatin1String(enviotime))
            << linha;
    }
}

// Re-emission only in mode "VENDA" and only while no authorised line came before.
TEST_P(DiagnosticoRejeicaoTest, Reemissao) {
    const QByteArray ncm = "778;Rejeicao: Informado NCM inexistente [nItem:3]";
    const QByteArray autorizada = "+100;Autorizado o uso da NF-e";
    const std::tuple<QString, QByteArray, int> casos[] = {{u"VENDA"_s, autorizada + '\n' + ncm, 0},
                                                          {u"VENDA"_s, ncm + '\n' + autorizada, 1},
                                                          {u"NC1"_s, ncm, 0},
                                                          {u"CP"_s, ncm, 0}};
    for (const auto& [modo, linhas, vezes] : casos) {
        Processa(linhas, modo);
        EXPECT_EQ(reemissoes, QStringList(vezes, u"1234"_s)) << linhas.constData();
    }
}

INSTANTIATE_TEST_SUITE_P(Motores, DiagnosticoRejeicaoTest, ::testing::ValuesIn(Motores()),
                         NomeDoMotor);

} // namespace
} // namespace nfce::teste
