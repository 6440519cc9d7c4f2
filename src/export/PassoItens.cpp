#include "context/Servidor.h"
#include "export/Exportacao.h"
#include "export/Literais.h"
#include "export/Passos.h"
#include "export/Remessa.h"
#include "export/SqlItens.h"
#include "storage/Ajustes.h"

namespace nfce {

using namespace Qt::StringLiterals;

namespace {

void EnviaItem(Servidor& servidor, const Linha& linha, ResultadoExportacao& resultado) {
    const Registros& item = linha.rs;
    const QDate hoje = servidor.ambiente.Data();
    const bool enviado = EnviaRemoto(
        servidor, [&] { return InsereItem(item, hoje); }, linha.oQue, linha.chave);
    if (enviado) ++resultado.itensEnviados;
    servidor.ambiente.Aguarda(0.01);
    // The stock moves with the row the remote side took: once, however often a row is tried.
    if (!enviado) return;
    EnviaRemoto(
        servidor, [&] { return BaixaEstoque(item, Le(servidor.pasta, ajustes::EstoqueFisico)); },
        u"baixa de estoque do produto "_s + TextoDeChave(item, u"codprod"_s), linha.chave);
}

void ExportaItem(Servidor& servidor, const Registros& item, ResultadoExportacao& resultado) {
    const Linha linha{item, u"itens"_s, u"item"_s, ChaveItem(item),
                      [&] { return ConfereItem(item); }};
    if (ExportaLinha(
            servidor, linha, [&] { EnviaItem(servidor, linha, resultado); }, resultado))
        ++resultado.itensConfirmados;
    servidor.ambiente.DoEvents();
}

} // namespace

void ExportaItens(Servidor& servidor, ResultadoExportacao& resultado) {
    servidor.painel.Caption = u"Transmitindo Itens. Aguarde....."_s;
    Registros itens;
    servidor.conexoes.AbreConsulta(itens, SqlNaoExportados(u"itens"_s));
    resultado.itensLidos = itens.RecordCount();
    if (!itens.Eof()) {
        servidor.ambiente.Aguarda(0.01);
        itens.MoveFirst();
    }
    for (; !itens.Eof(); itens.MoveNext())
        ExportaItem(servidor, itens, resultado);
    servidor.ambiente.Aguarda(0.01);
}

} // namespace nfce
