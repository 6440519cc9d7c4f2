#include "context/Servidor.h"
#include "export/ContaReceber.h"
#include "export/Exportacao.h"
#include "export/Passos.h"
#include "export/Remessa.h"
#include "export/SqlVendas.h"

namespace nfce {

using namespace Qt::StringLiterals;

namespace {

void EnviaContaReceber(Servidor& servidor, const Registros& venda, const QString& chave,
                       ResultadoExportacao& resultado) {
    bool aPrazo = false;
    const auto envia = [&] {
        aPrazo = PagaAPrazo(venda) && ClienteComConta(venda, servidor.venda.CodigoCliente);
        if (!aPrazo) return;
        servidor.conexoes.ExecutaRemota(InsereContaReceber(
            venda, servidor.conexoes, servidor.ambiente.Data(), servidor.venda.CodigoUsuario));
        ++resultado.contasEnviadas;
    };
    Tenta(servidor, u"conta a receber"_s, chave, envia);
    if (aPrazo) servidor.ambiente.Aguarda(0.03);
}

void EnviaVenda(Servidor& servidor, const Linha& linha, ResultadoExportacao& resultado) {
    const QDate hoje = servidor.ambiente.Data();
    const bool enviada = EnviaRemoto(
        servidor, [&] { return InsereVenda(linha.rs, hoje); }, linha.oQue, linha.chave);
    if (enviada) ++resultado.vendasEnviadas;
    servidor.ambiente.Aguarda(0.02);
    // The receivable goes with the sale the remote side took: once, however often it is tried.
    if (enviada) EnviaContaReceber(servidor, linha.rs, linha.chave, resultado);
}

void ExportaVenda(Servidor& servidor, const Registros& venda, ResultadoExportacao& resultado) {
    const Linha linha{venda, u"vendas"_s, u"venda"_s, ChaveVenda(venda),
                      [&] { return ConfereVenda(venda); }};
    if (ExportaLinha(
            servidor, linha, [&] { EnviaVenda(servidor, linha, resultado); }, resultado))
        ++resultado.vendasConfirmadas;
}

} // namespace

void ExportaVendas(Servidor& servidor, ResultadoExportacao& resultado) {
    servidor.painel.Caption = u"Transmitindo Vendas. Aguarde....."_s;
    Registros vendas;
    servidor.conexoes.AbreConsulta(vendas, SqlNaoExportados(u"vendas"_s));
    resultado.vendasLidas = vendas.RecordCount();
    for (; !vendas.Eof(); vendas.MoveNext())
        ExportaVenda(servidor, vendas, resultado);
}

} // namespace nfce
