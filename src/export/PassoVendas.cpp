#include "contexto/Servidor.h"
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

void ExportaVenda(Servidor& servidor, const Registros& venda, ResultadoExportacao& resultado) {
    const QString chave = ChaveVenda(venda);
    const QDate hoje = servidor.ambiente.Data();
    if (EnviaRemoto(
            servidor, [&] { return InsereVenda(venda, hoje); }, u"venda"_s, chave))
        ++resultado.vendasEnviadas;
    servidor.ambiente.Aguarda(0.02);
    EnviaContaReceber(servidor, venda, chave, resultado);
    if (ConfereRemoto(
            servidor, [&] { return ConfereVenda(venda); }, [&] { return MarcaVenda(venda); },
            u"venda"_s, chave, resultado))
        ++resultado.vendasConfirmadas;
}

} // namespace

void ExportaVendas(Servidor& servidor, ResultadoExportacao& resultado) {
    servidor.painel.Caption = u"Transmitindo Vendas. Aguarde....."_s;
    Registros vendas;
    servidor.conexoes.AbreConsulta(
        vendas,
        u"SELECT * FROM vendas WHERE not exportado AND situacao = 'N' ORDER BY data, cupom"_s);
    resultado.vendasLidas = vendas.RecordCount();
    for (; !vendas.Eof(); vendas.MoveNext())
        ExportaVenda(servidor, vendas, resultado);
    vendas.Fecha();
    servidor.conexoes.Executa(u"UPDATE vendas SET exportado = true"_s);
}

} // namespace nfce
