#include "shell/comandos/Comandos.h"

#include "context/Servidor.h"
#include "emission/Reenvio.h"
#include "platform/AmbienteQt.h"
#include "shell/comandos/Preparo.h"
#include "shell/comandos/Saida.h"
#include "storage/Formatacao.h"

namespace nfce {

using namespace Qt::StringLiterals;

namespace {

// The sales the resend puts back: sent or given up, never finished, with an NFC-e number.
int Devolviveis(Servidor& servidor) {
    Registros rs;
    servidor.conexoes.AbreConsulta(
        rs,
        u"SELECT COUNT(*) AS n FROM vendas WHERE enviotime = 1 AND tempo <> '1' AND nfce <> 0"_s);
    return static_cast<int>(InteiroDe(rs.Campo(u"n"_s)));
}

} // namespace

// servidor-nfce reenfileirar [--pasta DIR]: the resend update of every date, as the schedule
// runs it but without its one-minute pause; prints how many sales went back to the queue.
int ComandoReenfileirar(const QStringList& argumentos) {
    if (!SoPasta(argumentos)) return ErroDeUso(u"reenfileirar [--pasta DIR]"_s);
    AmbienteQt ambiente;
    Servidor servidor(PastaVerificada(argumentos), ambiente);
    servidor.conexoes.PreparaConexaoPrincipal();
    servidor.conexoes.ReabreConexao();
    const int devolvidas = Devolviveis(servidor);
    Reenfileira(servidor);
    EscreveSaida(u"Vendas de volta à fila de envio: %1\n"_s.arg(devolvidas));
    return 0;
}

} // namespace nfce
