#include "shell/comandos/Comandos.h"

#include "context/Servidor.h"
#include "emission/EnviaPendentes.h"
#include "platform/AmbienteQt.h"
#include "shell/comandos/Preparo.h"
#include "shell/comandos/Saida.h"
#include "storage/Formatacao.h"

#include <QSet>

namespace nfce {

using namespace Qt::StringLiterals;

namespace {

struct VendaPendente {
    qint32 cupom;
    QString nfce;
};

QList<VendaPendente> Pendentes(Servidor& servidor) {
    Registros rs;
    servidor.conexoes.AbreConsulta(rs, SqlPendentes());
    QList<VendaPendente> vendas;
    for (; !rs.Eof(); rs.MoveNext())
        vendas.append({static_cast<qint32>(InteiroDe(rs.Campo(u"cupom"_s))), rs.Texto(u"nfce"_s)});
    return vendas;
}

} // namespace

// servidor-nfce enviar [--pasta DIR]: one pass of the automatic sender; one line per sale
// with its outcome, then one for each pending sale the pass did not reach. Status 0 whenever
// the pass ran; 1 only when it could not start (company record, database).
int ComandoEnviar(const QStringList& argumentos) {
    if (!SoPasta(argumentos)) return ErroDeUso(u"enviar [--pasta DIR]"_s);
    AmbienteQt ambiente;
    Servidor servidor(PastaVerificada(argumentos), ambiente);
    PreparaServidor(servidor);
    const QList<VendaPendente> antes = Pendentes(servidor);
    QSet<QString> vistas;
    EnviaPendentes(servidor, [&](const DesfechoDaVenda& d) {
        vistas.insert(d.nfce);
        EscreveSaida(DescreveDesfecho(d) + u'\n');
    });
    for (const VendaPendente& venda : antes)
        if (!vistas.contains(venda.nfce))
            EscreveSaida(DescreveDesfecho(
                             {venda.cupom, venda.nfce, u"não processada nesta passagem"_s, false}) +
                         u'\n');
    return 0;
}

} // namespace nfce
