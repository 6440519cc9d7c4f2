#include "context/Servidor.h"
#include "export/Exportacao.h"
#include "export/Passos.h"
#include "storage/Ajustes.h"

namespace nfce {

using namespace Qt::StringLiterals;

namespace {

// The window's caption shows the pass under way; it comes back however the export ends.
class TituloDaExportacao {
public:
    explicit TituloDaExportacao(Painel& painel) : painel_(painel) {}
    ~TituloDaExportacao() { painel_.Caption = u"Servidor NFC-e"_s; }
    TituloDaExportacao(const TituloDaExportacao&) = delete;
    TituloDaExportacao& operator=(const TituloDaExportacao&) = delete;

private:
    Painel& painel_;
};

} // namespace

ResultadoExportacao CmdExportar(Servidor& servidor) {
    ResultadoExportacao resultado;
    if (!Le(servidor.pasta, ajustes::VendasOnlineSrv)) return resultado;
    resultado.ligada = true;
    servidor.conexoes.ReabreConexao();
    // A failure was shown by the reopen itself.
    servidor.conexoes.ReabreRemota();
    if (!servidor.conexoes.RemotaConectada()) return resultado;
    resultado.conectada = true;
    const TituloDaExportacao titulo(servidor.painel);
    ExportaItens(servidor, resultado);
    ExportaVendas(servidor, resultado);
    return resultado;
}

QString SqlNaoExportados(const QString& tabela) {
    return u"SELECT * FROM "_s + tabela +
           u" WHERE (not exportado OR exportado = 2) AND situacao = 'N' ORDER BY data, cupom"_s;
}

} // namespace nfce
