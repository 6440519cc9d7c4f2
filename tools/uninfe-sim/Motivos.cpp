#include "Motivos.h"

#include <QHash>

namespace uninfesim {

using namespace Qt::StringLiterals;

QString MotivoSefaz(int cStat, const DadosMotivo& dados) {
    static const QHash<int, QString> textos = {
        {100, u"Autorizado o uso da NF-e"_s},
        {104, u"Lote processado"_s},
        {108, u"Servico Paralisado Momentaneamente (curto prazo)"_s},
        {109, u"Servico Paralisado sem Previsao"_s},
        {204, u"Rejeicao: Duplicidade de NF-e [nRec:{nRec}]"_s},
        {206, u"Rejeicao: NF-e ja esta inutilizada na Base de dados da SEFAZ"_s},
        {208, u"Rejeicao: CNPJ do destinatario invalido"_s},
        {217, u"Rejeicao: NF-e nao consta na base de dados da SEFAZ"_s},
        {225, u"Rejeicao: Falha no Schema XML do lote de NFe"_s},
        {236, u"Rejeicao: Chave de Acesso com digito verificador invalido"_s},
        {237, u"Rejeicao: CPF do destinatario invalido"_s},
        {315,
         u"Rejeicao: Data de Emissao anterior ao inicio da autorizacao de Nota Fiscal na UF"_s},
        {383, u"Rejeicao: Item com CSOSN indevido [nItem:{item}]"_s},
        {385, u"Rejeicao: Grupo de tributacao ICMSSN900, informando dados do ICMS-ST "
              u"[nItem:{item}]"_s},
        {386, u"Rejeicao: CFOP nao permitido para o CSOSN informado [nItem:{item}]"_s},
        {395, u"Rejeicao: Endereco do site da UF da Consulta via QR-Code diverge do previsto"_s},
        {539, u"Rejeicao: Duplicidade de NF-e, com diferenca na Chave de Acesso "
              u"[chNFe:{chNFe}][nRec:{nRec}]"_s},
        {590, u"Rejeicao: Informado CST para emissor do Simples Nacional (CRT=1)"_s},
        {656, u"Rejeicao: Consumo Indevido"_s},
        {725, u"Rejeicao: NFC-e com CFOP invalido[nItem:{item}]"_s},
        {778, u"Rejeicao: Informado NCM inexistente [nItem:{item}]"_s},
        {806, u"Rejeicao: Operacao com ICMS-ST sem informacao do CEST"_s},
        {865, u"Rejeicao: Total dos pagamentos menor que o total da nota"_s},
        {866, u"Rejeicao: Ausencia de troco quando o valor dos pagamentos informados for maior "
              u"que o total da nota"_s},
        {869, u"Rejeicao: Valor do troco incorreto"_s},
    };
    QString texto = textos.value(cStat, u"Rejeicao: Erro nao catalogado"_s);
    texto.replace(u"{item}"_s, QString::number(dados.item));
    texto.replace(u"{nRec}"_s, dados.nRec);
    texto.replace(u"{chNFe}"_s, dados.chNFe);
    return texto;
}

} // namespace uninfesim
