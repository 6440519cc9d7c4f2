#include "contexto/Servidor.h"
#include "export/Exportacao.h"
#include "export/Literais.h"
#include "export/Passos.h"
#include "export/Remessa.h"
#include "export/SqlItens.h"

namespace nfce {

using namespace Qt::StringLiterals;

namespace {

void ExportaItem(Servidor& servidor, const Registros& item, ResultadoExportacao& resultado) {
    const QString chave = ChaveItem(item);
    const QDate hoje = servidor.ambiente.Data();
    if (EnviaRemoto(
            servidor, [&] { return InsereItem(item, hoje); }, u"item"_s, chave))
        ++resultado.itensEnviados;
    servidor.ambiente.Aguarda(0.01);
    EnviaRemoto(
        servidor,
        [&] { return BaixaEstoque(item, servidor.LerConfig(u"ESTOQUEFISICO"_s) == u"SIM"); },
        u"baixa de estoque do produto "_s + TextoDeChave(item, u"codprod"_s), chave);
    if (ConfereRemoto(
            servidor, [&] { return ConfereItem(item); }, [&] { return MarcaItem(item); }, u"item"_s,
            chave, resultado))
        ++resultado.itensConfirmados;
    servidor.ambiente.DoEvents();
}

} // namespace

void ExportaItens(Servidor& servidor, ResultadoExportacao& resultado) {
    servidor.painel.Caption = u"Transmitindo Itens. Aguarde....."_s;
    Registros itens;
    servidor.conexoes.AbreConsulta(
        itens,
        u"SELECT * FROM itens WHERE not exportado AND situacao = 'N' ORDER BY data, cupom"_s);
    resultado.itensLidos = itens.RecordCount();
    if (!itens.Eof()) {
        servidor.ambiente.Aguarda(0.01);
        itens.MoveFirst();
    }
    for (; !itens.Eof(); itens.MoveNext())
        ExportaItem(servidor, itens, resultado);
    servidor.ambiente.Aguarda(0.01);
    itens.Fecha();
    servidor.conexoes.Executa(u"UPDATE itens SET exportado = true"_s);
}

} // namespace nfce
