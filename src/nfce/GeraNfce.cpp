#include "nfce/GeraNfce.h"

#include "nfce/Documento.h"
#include "nfce/Emissao.h"
#include "nfce/Valores.h"
#include "nfce/VerificaVenda.h"
#include "storage/Ajustes.h"
#include "storage/ErroExecucao.h"
#include "storage/Formatacao.h"

namespace nfce {

using namespace Qt::StringLiterals;

namespace {

// Setting TEMP; without a number of seconds the generator gives UniNFe 3.
constexpr int EsperaPadraoDoGerador = 3;

void EscreveDocumento(DocumentoNfce& doc) {
    EscreveIdentificacao(doc);
    EscreveEmitente(doc);
    EscreveDestinatario(doc);
    EscreveItens(doc);
    EscreveTotais(doc);
    EscrevePagamentos(doc);
    EscreveInformacoes(doc);
}

} // namespace

QString GeraNfce(Servidor& servidor, const QString& nfce, const VarianteGerador& variante) {
    servidor.ambiente.Aguarda(1);
    const qint64 nNF = InteiroDe(nfce);
    // 0 is the tills' "no NFC-e": such a number would pick some other sale's row.
    if (nNF < 1)
        throw ErroExecucao(ErroArgumentoInvalido,
                           u"Número de NFC-e inválido: \"%1\""_s.arg(nfce.left(40)));
    const InstanteNfce instante = InstanteDaNfce(servidor, variante);
    const bool contingencia = EmContingencia(servidor, variante);
    VerificaVenda(servidor, nNF);
    GravadorLinhas arquivo(CaminhoNfce(servidor, contingencia, nNF, instante.dataArquivo));
    DocumentoNfce doc{servidor, variante, nNF, contingencia, instante.data, instante.hora, arquivo};
    EscreveDocumento(doc);
    arquivo.Fecha();

    EstadoVenda& venda = servidor.venda;
    venda.DataArquivo = instante.dataArquivo.toString(u"ddMMyyyy");
    venda.SerieNfce = Zeros(servidor.empresa.Serie, 3);
    venda.CnpjEmpresa = servidor.empresa.Cnpj;
    servidor.ambiente.Aguarda(Le(servidor.pasta, ajustes::Temp, EsperaPadraoDoGerador));
    return arquivo.Caminho();
}

QString GeraNfceDaVenda(Servidor& servidor, qint64 nfce) {
    Registros venda;
    servidor.conexoes.AbreConsulta(venda,
                                   u"SELECT data, cupom, nfce, hora FROM vendas WHERE nfce = "_s +
                                       QString::number(nfce));
    if (venda.Eof())
        throw ErroExecucao(ErroSemRegistroAtual, u"Nenhuma venda com a NFC-e %1."_s.arg(nfce));
    const QDate data = venda.Data(u"data"_s);
    if (!data.isValid())
        throw ErroExecucao(ErroTipoIncompativel,
                           u"A venda da NFC-e %1 não tem data (\"%2\")."_s.arg(nfce).arg(
                               venda.Texto(u"data"_s).left(40)));
    servidor.venda.NumNfce = static_cast<qint32>(nfce);
    servidor.venda.NumCupom = static_cast<qint32>(InteiroDe(venda.Campo(u"cupom"_s)));
    servidor.painel.lblData = data.toString(u"dd/MM/yyyy");
    servidor.painel.lblHora = venda.Hora(u"hora"_s).toString(u"HH:mm:ss");
    return GeraNfce(servidor, QString::number(nfce));
}

} // namespace nfce
