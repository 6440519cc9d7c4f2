#include "emission/DesfechoDaJanela.h"

#include "context/Servidor.h"
#include "emission/ArquivosDaVenda.h"
#include "emission/Retorno.h"
#include "storage/ArquivoTexto.h"
#include "storage/Configuracao.h"
#include "storage/Formatacao.h"
#include "storage/Pastas.h"

namespace nfce {

using namespace Qt::StringLiterals;

namespace {

const QString Finais[] = {
    u"100 - Autorizado o uso da NF-e"_s,
    u"Rejeição Duplicidade de Cupom NFC-e"_s,
    u"Autorizado o uso da NF-e"_s,
    u"Duplicidade de Cupom NFC-e"_s,
};

} // namespace

bool ErroAoInvocar(const QString& desfecho) {
    return desfecho.left(15) == u"Erro ao invocar"_s;
}

bool DesfechoFinal(const QString& desfecho, bool aceitaErroAoInvocar) {
    for (const QString& final : Finais)
        if (desfecho == final) return true;
    return aceitaErroAoInvocar && ErroAoInvocar(desfecho);
}

QString MensagemNaoEmitido(qint64 numero, const QString& erro) {
    return u"Cupom NFC-e : "_s + Zeros(numero, 6) + u"\n"_s +
           u"Não Foi Emitido, Favor tentar reenviar e autorizar."_s + u"\n"_s + erro;
}

void LeRespostasDaNota(Servidor& s) {
    const auto le = [&s](QString (*leitura)(Servidor&)) {
        const QString texto = leitura(s);
        s.ambiente.DoEvents();
        return texto;
    };
    QString& desfecho = s.painel.LblMens03;
    le(LeChaveNfe);
    desfecho = le(LeErroRecibo);
    desfecho = le(ProcessaRetorno);
    // No outcome yet: the protocol file gets one more wait.
    if (Vazio(desfecho)) desfecho = le(ProcessaRetorno);
}

void ConcluiVenda(Servidor& s, const QString& chave, qint64 nfce, const QString& desfecho) {
    Painel& p = s.painel;
    p.LblMens01.clear();
    p.LblMens02.clear();
    p.LblMens03.clear();
    const ArquivosDaVenda arquivos(s);
    const QString autorizado = arquivos.XmlAutorizado(chave);
    if (ArquivoExiste(autorizado)) {
        CopiaRegistrando(s, autorizado, arquivos.CopiaContabil(s.venda.MesAutorizados, nfce));
    }
    const QString marca =
        ErroAoInvocar(desfecho) ? u"enviotime = 1"_s : u"tempo = 1, enviotime = 1"_s;
    s.conexoes.Executa(u"UPDATE vendas SET "_s + marca + u" WHERE nfce = "_s +
                       QString::number(nfce));
}

} // namespace nfce
