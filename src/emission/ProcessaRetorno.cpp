#include "emission/Retorno.h"

#include "context/Servidor.h"
#include "emission/ArquivosDaVenda.h"
#include "emission/Autorizacao.h"
#include "emission/DiagnosticoRejeicao.h"
#include "emission/LinhaProtocolo.h"
#include "emission/Lote.h"
#include "emission/RespostaUniNfe.h"
#include "emission/RespostasDaVenda.h"
#include "emission/SqlVenda.h"
#include "emission/TempoEspera.h"
#include "nfce/ChaveAcesso.h"
#include "platform/Sonda.h"
#include "storage/ArquivoTexto.h"
#include "storage/Configuracao.h"
#include "storage/Formatacao.h"
#include "storage/Pastas.h"

namespace nfce {

using namespace Qt::StringLiterals;

namespace {

// "CP" prints an authorised sale again; "NC" asks first. True when the receipt counts as
// printed, so the authorisation does not print it a second time.
bool ReimprimeSeAutorizada(Servidor& s, const QString& chave) {
    const EstadoVenda& v = s.venda;
    const bool reimprime = v.ModoRetorno == u"CP"_s ||
                           (v.ModoRetorno == u"NC"_s &&
                            s.ambiente.Pergunta(u"Deseja Reimprimir o Cupom?"_s, u"Atenção"_s));
    if (!reimprime || !ArquivoExiste(ArquivosDaVenda(s).XmlAutorizado(chave))) return false;
    if (v.ImprimeCupom) ImprimeDanfe(s, chave);
    return true;
}

// The last lot number of "<key>-num-lot.txt"; the earlier one stays when there is none.
void LeLote(Servidor& s, const QString& chave) {
    s.ambiente.Aguarda(0.3);
    const QString lote = LoteDoTexto(
        RespostaLida(s, ArquivosDaVenda(s).NoRetorno(chave + u"-num-lot.txt"_s)), QualLote::Ultimo);
    if (!lote.isEmpty()) s.venda.NumLote = lote;
}

// One protocol line; the message it leaves for the caller.
void ProcessaLinha(Servidor& s, const LinhaProtocolo& linha, const QString& chave, bool jaImpresso,
                   bool& autorizada, QString& mensagem) {
    mensagem = linha.Mensagem();
    if (linha.TemCodigo(u"100"_s)) {
        autorizada = true;
        RegistraAutorizacao(s, linha, chave, jaImpresso);
    }
    DiagnosticaRejeicao(s, linha, autorizada, mensagem);
    // Whatever the code, the remote copy of the sale is sent again.
    s.conexoes.Executa(u"UPDATE vendas SET sync = false"_s + OndeCupom(s.venda));
    s.conexoes.Executa(u"UPDATE itens SET sync = false"_s + OndeCupom(s.venda));
    const QString codigo = linha.Campo(5);
    if (codigo == u"100"_s || codigo == u"204"_s || codigo == u"539"_s)
        ArquivaXmlAutorizado(s, chave);
}

// Another sale's line, or a forged key, changes nothing of this sale but its erro. Without a
// key of its own (none read, or UniNFe's "0") the sale has no line to look for and no erro.
void RecusaLinha(Servidor& s, const LinhaProtocolo& linha, const QString& chave,
                 const QString& arquivo, QString& mensagem) {
    if (!ChaveValida(chave)) return;
    AnotaChaveRecusada(s, OndeCupom(s.venda), arquivo, linha.Campo(2));
    if (mensagem.isEmpty()) mensagem = ChaveInvalida;
}

} // namespace

QString ProcessaRetorno(Servidor& s) {
    EstadoVenda& v = s.venda;
    const QString chave = s.painel.LblMens01;
    v.TempoEspera = TempoDeEspera(s);
    const bool jaImpresso = ReimprimeSeAutorizada(s, chave);
    LeLote(s, chave);
    QString mensagem;
    const auto passos = {Passo{Passo::Bombeia}, Passo{Passo::Aguarda, 0.1}, Passo{Passo::Olha},
                         Passo{Passo::AguardaSeNaoAchou, 0.5}};
    Sonda(s.ambiente, 33, passos, [&] {
        const QString arquivo =
            ArquivosDaVenda(s).NoRetorno(Zeros(v.NumLote, 15) + u"-pro-rec.txt"_s);
        if (!RespostaPresente(s, arquivo)) return false;
        bool autorizada = false;
        for (const LinhaDoRetorno& lida : LinhasDoRetorno(ConteudoDoArquivo(arquivo), chave)) {
            const LinhaProtocolo linha(lida.texto);
            if (lida.daVenda)
                ProcessaLinha(s, linha, chave, jaImpresso, autorizada, mensagem);
            else
                RecusaLinha(s, linha, chave, arquivo, mensagem);
        }
        return true;
    });
    return mensagem;
}

} // namespace nfce
