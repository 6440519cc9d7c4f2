#include "shell/comandos/Comandos.h"

#include "context/Servidor.h"
#include "export/Exportacao.h"
#include "platform/AmbienteQt.h"
#include "shell/comandos/Preparo.h"
#include "shell/comandos/Saida.h"

namespace nfce {

using namespace Qt::StringLiterals;

namespace {

int Falha(const QString& texto) {
    EscreveErro(u"servidor-nfce: "_s + texto + u'\n');
    return 1;
}

void MostraResultado(const ResultadoExportacao& r) {
    EscreveSaida(u"Itens enviados: %1 de %2 (confirmados no servidor remoto: %3)\n"_s.arg(
        QString::number(r.itensEnviados), QString::number(r.itensLidos),
        QString::number(r.itensConfirmados)));
    EscreveSaida(u"Vendas enviadas: %1 de %2 (confirmadas no servidor remoto: %3)\n"_s.arg(
        QString::number(r.vendasEnviadas), QString::number(r.vendasLidas),
        QString::number(r.vendasConfirmadas)));
    EscreveSaida(u"Contas a receber enviadas: %1\n"_s.arg(r.contasEnviadas));
    for (const QString& linha : r.naoEncontrados)
        EscreveSaida(u"Não encontrado no servidor remoto: "_s + linha + u'\n');
}

} // namespace

// servidor-nfce exportar [--pasta DIR]: one remote export, as the window's "Transmitir" runs
// it; prints what was sent and what the remote side did not confirm. Status 1 when the export
// is switched off, the remote database is down, or a row was not confirmed.
int ComandoExportar(const QStringList& argumentos) {
    if (!SoPasta(argumentos)) return ErroDeUso(u"exportar [--pasta DIR]"_s);
    AmbienteQt ambiente;
    Servidor servidor(PastaVerificada(argumentos), ambiente);
    servidor.conexoes.PreparaConexaoPrincipal();
    servidor.conexoes.AbreConexaoRemota();
    const ResultadoExportacao resultado = CmdExportar(servidor);
    if (!resultado.ligada)
        return Falha(u"exportação desligada: VENDASONLINESRV não é SIM em Config.ini"_s);
    if (!resultado.conectada)
        return Falha(u"sem conexão com o banco de dados remoto; nada foi exportado"_s);
    MostraResultado(resultado);
    if (resultado.naoEncontrados.isEmpty()) return 0;
    return Falha(
        u"%1 linha(s) não encontrada(s) no servidor remoto"_s.arg(resultado.naoEncontrados.size()));
}

} // namespace nfce
