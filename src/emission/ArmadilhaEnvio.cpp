#include "emission/ArmadilhaEnvio.h"

#include "contexto/Servidor.h"

#include <algorithm>
#include <array>

namespace nfce {

using namespace Qt::StringLiterals;

bool ErroSilencioso(int numero) {
    static constexpr std::array silenciosos = {0,  13, 20,   28,   55,   70,
                                               76, 91, 3021, 3036, 3265, 3704};
    return std::find(silenciosos.begin(), silenciosos.end(), numero) != silenciosos.end();
}

bool TrataErroEnvio(Servidor& s, const ErroExecucao& erro) {
    if (ErroSilencioso(erro.numero())) {
        s.ambiente.Registra(
            u"Envio de NFC-e interrompido: erro %1 %2"_s.arg(erro.numero()).arg(erro.descricao()));
        return true;
    }
    s.ambiente.MsgBox(QString::number(erro.numero()) + u'\n' + erro.descricao(), u"Atenção *"_s,
                      Icone::Informacao);
    return false;
}

} // namespace nfce
