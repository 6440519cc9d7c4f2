#include "emission/Retorno.h"

#include "context/Servidor.h"
#include "emission/ArquivosDaVenda.h"
#include "emission/LeituraChave.h"
#include "emission/Lote.h"
#include "emission/RespostaUniNfe.h"
#include "emission/RespostasDaVenda.h"
#include "emission/SqlVenda.h"
#include "emission/TempoEspera.h"
#include "platform/Sonda.h"
#include "storage/ArquivoTexto.h"
#include "storage/Configuracao.h"
#include "storage/Formatacao.h"
#include "storage/Larguras.h"
#include "storage/Pastas.h"
#include "storage/Sql.h"

namespace nfce {

using namespace Qt::StringLiterals;

namespace {

void RegistraChave(Servidor& s, const QString& chave) {
    EstadoVenda& v = s.venda;
    s.painel.LblMens01 = chave;
    s.conexoes.Executa(u"UPDATE vendas SET chave = '"_s + EscapaTexto(chave) + u"' "_s +
                       OndeCupom(v));
    if (v.VendaOrcamento)
        s.conexoes.Executa(u"UPDATE orcamento SET chave = '"_s + EscapaTexto(chave) +
                           u"' WHERE cupom = "_s + QString::number(v.NumOrcamento));
}

} // namespace

QString LeChaveNfe(Servidor& s) {
    EstadoVenda& v = s.venda;
    const ArquivosDaVenda arquivos(s);
    const QString nome = arquivos.Base() + u"-nfe.txt"_s;
    ChaveLida lida;
    QString resposta;
    const bool achou = Sonda(
        s.ambiente, 3, {{Passo::Bombeia}, {Passo::Olha}, {Passo::AguardaSeNaoAchou, 0.5}}, [&] {
            resposta = arquivos.NoRetorno(nome);
            lida =
                ChaveDaConversao(RespostaLida(s, resposta), v.CnpjEmpresa, v.SerieNfce, v.NumNfce);
            return !Vazio(lida.chave);
        });
    if (!achou) return {};
    if (lida.recusada) RecusaChave(s, OndeCupom(v), resposta, lida.chave);
    RegistraChave(s, lida.chave);
    return lida.chave;
}

QString LeErroNfe(Servidor& s) {
    EstadoVenda& v = s.venda;
    const ArquivosDaVenda arquivos(s);
    const QString resposta = arquivos.NoRetorno(arquivos.Base() + u"-nfe.err"_s);
    s.ambiente.Aguarda(0.2);
    // A file that is gone or still empty when read counts as not there: the sale stays queued.
    const ErroDeConversao erro = ErroDaConversao(RespostaLida(s, resposta));
    for (qsizetype linha = 0; linha < erro.linhas; ++linha)
        s.ambiente.DoEvents();
    if (erro.linhas == 0) return {};
    s.conexoes.Executa(u"UPDATE vendas SET erro = '"_s +
                       EscapaTexto(erro.mensagem.left(LarguraTexto)) + u"'"_s + OndeCupom(v));
    s.conexoes.Executa(u"UPDATE vendas SET enviotime = 1"_s + OndeCupom(v));
    return erro.mensagem;
}

void GravaLote(Servidor& s) {
    const ArquivosDaVenda arquivos(s);
    const QString chave = s.painel.LblMens01;
    QString lote;
    const bool achou =
        Sonda(s.ambiente, 3, {{Passo::Bombeia}, {Passo::Olha}, {Passo::AguardaSeNaoAchou, 1}}, [&] {
            lote = LoteDoTexto(RespostaLida(s, arquivos.NoRetorno(chave + u"-num-lot.txt"_s)),
                               QualLote::Ultimo);
            return !lote.isEmpty();
        });
    if (achou)
        s.conexoes.Executa(u"UPDATE vendas SET lote = '"_s + lote + u"' WHERE chave = '"_s +
                           EscapaTexto(Apara(chave)) + u"'"_s);
}

QString LeErroRecibo(Servidor& s) {
    EstadoVenda& v = s.venda;
    const ArquivosDaVenda arquivos(s);
    const QString chave = s.painel.LblMens01;
    v.NumLote = u"0"_s;
    v.TempoEspera = TempoDeEspera(s);
    // NumLote starts as "0", never blank: one look decides.
    Sonda(s.ambiente, 10, {{Passo::Olha}, {Passo::Aguarda, 1}}, [&] {
        const QString lote = LoteDoTexto(
            RespostaLida(s, arquivos.NoRetorno(chave + u"-num-lot.txt"_s)), QualLote::Primeiro);
        if (!lote.isEmpty()) v.NumLote = lote;
        return !Vazio(v.NumLote);
    });
    QString mensagem;
    const QString recusa = arquivos.NoRetorno(Zeros(v.NumLote, 15) + u"-pro-rec.err"_s);
    for (const QString& recusada : RecusasDoRecibo(RespostaLida(s, recusa))) {
        mensagem = recusada;
        // Quotes removed as the rules say; EscapaTexto also drops the NULs of a damaged file.
        s.conexoes.Executa(u"UPDATE vendas SET erro = '"_s + EscapaTexto(TiraAspas(mensagem)) +
                           u"', tempo = '0'"_s + OndeCupom(v));
        s.conexoes.Executa(u"UPDATE vendas SET enviotime = 0"_s + OndeCupom(v));
        s.ambiente.Aguarda(0.5);
    }
    return mensagem;
}

} // namespace nfce
