#include "emission/Retorno.h"

#include "context/Servidor.h"
#include "emission/ArquivosDaVenda.h"
#include "emission/Lote.h"
#include "emission/RespostasDaVenda.h"
#include "emission/SqlVenda.h"
#include "emission/TempoEspera.h"
#include "nfce/LeituraChave.h"
#include "nfce/RespostaUniNfe.h"
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
    for (int restantes = 3; restantes > 0 && Vazio(lida.chave); --restantes) {
        s.ambiente.DoEvents();
        resposta = arquivos.NoRetorno(nome);
        if (RespostaPresente(s, resposta))
            lida = ChaveDaConversao(ConteudoDoArquivo(resposta), v.CnpjEmpresa, v.SerieNfce,
                                    v.NumNfce);
        if (Vazio(lida.chave)) s.ambiente.Aguarda(0.5);
    }
    if (Vazio(lida.chave)) return lida.chave;
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
    for (int tentativa = 0; tentativa < 3; ++tentativa) {
        s.ambiente.DoEvents();
        const QString lote = LoteDoTexto(
            RespostaLida(s, arquivos.NoRetorno(chave + u"-num-lot.txt"_s)), QualLote::Ultimo);
        if (!lote.isEmpty()) {
            s.conexoes.Executa(u"UPDATE vendas SET lote = '"_s + lote + u"' WHERE chave = '"_s +
                               EscapaTexto(Apara(chave)) + u"'"_s);
            return;
        }
        s.ambiente.Aguarda(1);
    }
}

QString LeErroRecibo(Servidor& s) {
    EstadoVenda& v = s.venda;
    const ArquivosDaVenda arquivos(s);
    const QString chave = s.painel.LblMens01;
    v.NumLote = u"0"_s;
    v.TempoEspera = TempoDeEspera(s);
    // NumLote starts as "0", never blank: one look decides.
    for (int restantes = 10; restantes > 0; --restantes) {
        const QString lote = LoteDoTexto(
            RespostaLida(s, arquivos.NoRetorno(chave + u"-num-lot.txt"_s)), QualLote::Primeiro);
        if (!lote.isEmpty()) v.NumLote = lote;
        s.ambiente.Aguarda(1);
        if (!Vazio(v.NumLote)) break;
    }
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
