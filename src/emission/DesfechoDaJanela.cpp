#include "emission/DesfechoDaJanela.h"

#include "contexto/Servidor.h"
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

// A reader that ends the retry loop sets Tentativa to its last value; the loops below stop
// there or at the first text.
template <typename Leitura>
void LeAteTexto(Servidor& s, int ultima, QString& destino, Leitura leitura) {
    EstadoVenda& v = s.venda;
    for (v.Tentativa = 0; v.Tentativa <= ultima; ++v.Tentativa) {
        destino = leitura();
        s.ambiente.DoEvents();
        if (!Vazio(destino)) return;
    }
}

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
    QString chave;
    LeAteTexto(s, 5, chave, [&s] { return LeChaveNfe(s); });
    QString& desfecho = s.painel.LblMens03;
    LeAteTexto(s, 10, desfecho, [&s] { return LeErroRecibo(s); });
    LeAteTexto(s, 10, desfecho, [&s] { return ProcessaRetorno(s); });
    if (Vazio(desfecho)) LeAteTexto(s, 10, desfecho, [&s] { return ProcessaRetorno(s); });
}

void ConcluiVenda(Servidor& s, const QString& chave, qint64 nfce, const QString& desfecho) {
    Painel& p = s.painel;
    p.LblMens01.clear();
    p.LblMens02.clear();
    p.LblMens03.clear();
    const ArquivosDaVenda arquivos(s);
    const QString autorizado = arquivos.XmlAutorizado(chave);
    if (ArquivoExiste(autorizado)) {
        const QString copia = arquivos.DaEmpresa(u"CONTABILIDADE\\"_s + s.venda.MesAutorizados +
                                                 u"\\"_s + Zeros(nfce, 9) + u"-procNFe.xml"_s);
        try {
            CopiaArquivo(autorizado, copia);
        } catch (const ErroExecucao& erro) {
            s.ambiente.Registra(u"Não foi possível copiar "_s + autorizado + u" para "_s + copia +
                                u": "_s + erro.descricao());
        }
    }
    const QString marca =
        ErroAoInvocar(desfecho) ? u"enviotime = 1"_s : u"tempo = 1, enviotime = 1"_s;
    s.conexoes.Executa(u"UPDATE vendas SET "_s + marca + u" WHERE nfce = "_s +
                       QString::number(nfce));
}

} // namespace nfce
