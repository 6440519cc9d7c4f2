#include "emission/EnviaTodos.h"

#include "context/Servidor.h"
#include "emission/ArmadilhaEnvio.h"
#include "emission/ArquivosDaVenda.h"
#include "emission/DesfechoDaJanela.h"
#include "emission/EmiteNfceImprime.h"
#include "emission/FilaPendentes.h"
#include "nfce/Valores.h"
#include "storage/ArquivoTexto.h"
#include "storage/ErroExecucao.h"
#include "storage/Formatacao.h"
#include "storage/Pastas.h"
#include "storage/Registros.h"

#include <QSet>
#include <limits>

namespace nfce {

using namespace Qt::StringLiterals;

namespace {

// The row of the sale, copied out at once: a pass started inside a later wait opens its own
// recordsets and may close any that this one still held.
struct VendaDaFila {
    qint64 cupom = 0;
    qint64 nfce = 0;
    QString chave;
    QDate data;
    QString hora;
    bool reenvia = false;
};

// The first number of the work list; "" when it is empty.
QString PrimeiroDaFila(Servidor& s) {
    Registros rs;
    s.conexoes.AbreRecordsetLocal(rs, u"SELECT cupom FROM ncupom"_s);
    const QString numero = rs.Eof() ? QString() : rs.Texto(u"cupom"_s).trimmed();
    rs.Fecha();
    return numero;
}

// The number goes into a statement unquoted: anything but a positive whole number is refused.
qint64 NumeroDaFila(const QString& texto) {
    const auto numero = NumeroEstrito(texto, std::numeric_limits<qint64>::max());
    if (!numero)
        throw ErroExecucao(ErroTipoIncompativel,
                           u"Número inválido na fila ncupom: \"%1\""_s.arg(texto.left(40)));
    return *numero;
}

// Raises ErroSemRegistroAtual when the sale is gone or already finished, and ErroDaVenda when
// it has no date or no time.
VendaDaFila LeVenda(Servidor& s, qint64 numero) {
    Registros rs;
    s.conexoes.AbreConsulta(rs, u"SELECT * FROM vendas WHERE nfce = "_s + QString::number(numero) +
                                    u" AND tempo <> 1 "_s);
    VendaDaFila venda;
    const double tempo = Val(rs.Texto(u"tempo"_s));
    venda.reenvia = rs.Texto(u"erro"_s).left(4) == u"ERRO"_s || tempo == 9 || tempo == 8;
    venda.cupom = InteiroDe(rs.Campo(u"cupom"_s));
    venda.nfce = InteiroDe(rs.Campo(u"nfce"_s));
    venda.chave = rs.Texto(u"chave"_s).trimmed();
    venda.data = rs.Data(u"data"_s);
    venda.hora = rs.Hora(u"hora"_s).toString(u"HH:mm:ss");
    if (!venda.data.isValid() || venda.hora.isEmpty())
        throw ErroDaVenda(ErroTipoIncompativel,
                          u"Venda sem data ou hora válida: corrija-a para enviá-la"_s);
    rs.Fecha();
    return venda;
}

// Hands the XML UniNFe validated before to its Envio folder; the answers are read by the key.
void Reenvia(Servidor& s, const VendaDaFila& venda) {
    s.ambiente.Aguarda(0.01);
    EstadoVenda& v = s.venda;
    v.CnpjEmpresa = s.empresa.Cnpj;
    v.SerieNfce = Zeros(s.empresa.Serie, 3);
    v.DataArquivo = venda.data.toString(u"ddMMyyyy");
    s.painel.LblMens01 = venda.chave;
    const ArquivosDaVenda arquivos(s);
    const QString validado = arquivos.XmlValidado(venda.chave);
    if (!ArquivoExiste(validado)) return;
    try {
        CopiaArquivo(validado, arquivos.NoEnvio(venda.chave + u"-nfe.xml"_s));
    } catch (const ErroExecucao& erro) {
        s.ambiente.Registra(u"Não foi possível reenviar "_s + validado + u": "_s +
                            erro.descricao());
    }
}

// The list goes on after a finished sale, and after one whose own data failed (recorded on
// it); true when the next one follows.
bool Segue(Servidor& s) {
    s.painel.TimerVendasAtivo = true;
    ConsultaGrid(s);
    if (PrimeiroDaFila(s).isEmpty()) return false;
    s.ambiente.Aguarda(0.03);
    ConsultaGrid(s);
    s.ambiente.Aguarda(0.03);
    return true;
}

// The sale of list number `numero`; true when the next one follows.
bool EnviaVenda(Servidor& s, qint64 numero, QSet<qint64>& concluidas) {
    const VendaDaFila venda = LeVenda(s, numero);
    s.painel.lblData = venda.data.toString(u"dd/MM/yyyy");
    s.painel.lblHora = venda.hora;
    s.ambiente.Aguarda(0.01);
    EstadoVenda& v = s.venda;
    v.NumCupom = static_cast<qint32>(venda.cupom);
    v.NumNfce = static_cast<qint32>(venda.nfce);
    if (venda.reenvia)
        Reenvia(s, venda);
    else
        EnviaNota(s);
    s.ambiente.Aguarda(0.05);
    v.TipoEmissao = u"1"_s;
    v.MesAutorizados = s.ambiente.Data().toString(u"MMyyyy");
    v.MesContabil = venda.data.toString(u"MMyyyy");
    LeRespostasDaNota(s);
    const QString desfecho = s.painel.LblMens03;
    if (!DesfechoFinal(desfecho, true)) return false;
    ConcluiVenda(s, s.painel.LblMens01, venda.nfce, desfecho);
    concluidas.insert(numero);
    return Segue(s);
}

// One sale of the list; true when the next one follows.
bool EnviaPrimeira(Servidor& s, QSet<qint64>& concluidas) {
    const QString primeiro = PrimeiroDaFila(s);
    if (primeiro.isEmpty()) return false;
    const qint64 numero = NumeroDaFila(primeiro);
    // A finished sale still first in the list means it was not marked: stop, not loop.
    if (concluidas.contains(numero)) return false;
    try {
        return EnviaVenda(s, numero, concluidas);
    } catch (const ErroExecucao& erro) {
        if (!ErroDeUmaVenda(erro) || erro.numero() == ErroSemRegistroAtual) throw;
        AnotaErroNaVenda(s, QString::number(numero), erro);
    }
    concluidas.insert(numero);
    return Segue(s);
}

bool Silencioso(int numero) {
    return numero == 0 || numero == 20 || numero == ErroSemRegistroAtual ||
           numero == ErroItemNaoEncontrado;
}

} // namespace

void EnviaTodos(Servidor& s) {
    InstalaReemissao(s);
    try {
        // Each finished sale is followed by the next, as a loop rather than nested calls.
        QSet<qint64> concluidas;
        while (EnviaPrimeira(s, concluidas)) {
        }
    } catch (const ErroExecucao& erro) {
        if (!Silencioso(erro.numero()))
            s.ambiente.MsgBox(QString::number(erro.numero()) + u"\n"_s + erro.descricao(),
                              u"Atenção"_s, Icone::Informacao);
    }
}

} // namespace nfce
