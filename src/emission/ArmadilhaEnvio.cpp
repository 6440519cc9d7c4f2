#include "emission/ArmadilhaEnvio.h"

#include "context/Servidor.h"
#include "storage/Larguras.h"
#include "storage/Sql.h"

#include <algorithm>
#include <array>

namespace nfce {

using namespace Qt::StringLiterals;

namespace {

bool DoBancoOuDoDisco(int numero) {
    return numero == ErroProvedor || numero == ErroDiscoCheio;
}

} // namespace

bool ErroSilencioso(int numero) {
    static constexpr std::array silenciosos = {0,  13, 20,   28,   55,   70,
                                               76, 91, 3021, 3036, 3265, 3704};
    return std::find(silenciosos.begin(), silenciosos.end(), numero) != silenciosos.end();
}

bool InterrompeOPasso(const ErroExecucao& erro) {
    return ErroSilencioso(erro.numero()) || DoBancoOuDoDisco(erro.numero()) || ErroDeUmaVenda(erro);
}

bool ErroDeUmaVenda(const ErroExecucao& erro) {
    // A value of the row, a lookup that found nothing, a total beyond the money type.
    const int numero = erro.numero();
    return dynamic_cast<const ErroDaVenda*>(&erro) || numero == ErroTipoIncompativel ||
           numero == ErroSemRegistroAtual || numero == ErroEstouro;
}

void TrataErroEnvio(Servidor& s, const ErroExecucao& erro) {
    const QString numero = QString::number(erro.numero());
    if (ErroSilencioso(erro.numero()) || DoBancoOuDoDisco(erro.numero()))
        s.ambiente.Registra(u"Envio de NFC-e interrompido: erro "_s + numero + u' ' +
                            erro.descricao());
    if (ErroSilencioso(erro.numero())) return;
    const QString texto = DoBancoOuDoDisco(erro.numero())
                              ? u"Envio de NFC-e interrompido: "_s + erro.descricao()
                              : erro.descricao();
    s.ambiente.MsgBox(numero + u'\n' + texto, u"Atenção *"_s, Icone::Informacao);
}

void AnotaErroNaVenda(Servidor& s, const QString& nfce, const ErroExecucao& erro) {
    const bool saiDaFila = dynamic_cast<const ErroDaVenda*>(&erro) != nullptr;
    s.ambiente.Registra(u"Envio de NFC-e: venda da NFC-e %1 não enviada: erro %2 %3"_s.arg(
        nfce.left(40), QString::number(erro.numero()), erro.descricao()));
    s.conexoes.Executa(u"UPDATE vendas SET erro = '"_s +
                       EscapaTexto(erro.descricao().left(LarguraTexto)) +
                       (saiDaFila ? u"', tempo = '0', enviotime = 1"_s : u"'"_s) +
                       u" WHERE nfce = '"_s + EscapaTexto(nfce) + u"'"_s);
}

} // namespace nfce
