#include "emission/Retorno.h"

#include "contexto/Servidor.h"
#include "emission/ArquivosDaVenda.h"
#include "emission/Lote.h"
#include "emission/SqlVenda.h"
#include "emission/TempoEspera.h"
#include "nfce/ChaveAcesso.h"
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

// The key of UniNFe's conversion answer: the line with "ChaveNFe" at character 37.
QString ChaveDaConversao(const QStringList& linhas) {
    for (const QString& linha : linhas)
        if (linha.mid(36, 8) == u"ChaveNFe"_s) return linha.mid(46, 44);
    return {};
}

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
    v.Tentativa = 0;
    const QString nome = arquivos.Base() + u"-nfe.txt"_s;
    QString chave;
    QString resposta;
    for (int restantes = 3; restantes > 0 && Vazio(chave); --restantes) {
        s.ambiente.DoEvents();
        resposta = arquivos.NoRetorno(nome);
        if (RespostaPresente(s, resposta)) chave = ChaveDaConversao(LinhasDoArquivo(resposta));
        if (Vazio(chave)) s.ambiente.Aguarda(0.5);
    }
    v.Tentativa = 5;
    if (Vazio(chave)) return chave;
    if (!RespostaSemChave(chave) && !ChaveDaNota(chave, v.CnpjEmpresa, v.SerieNfce, v.NumNfce)) {
        RecusaChave(s, OndeCupom(v), resposta, chave);
    }
    RegistraChave(s, chave);
    return chave;
}

QString LeErroNfe(Servidor& s) {
    EstadoVenda& v = s.venda;
    const ArquivosDaVenda arquivos(s);
    v.Tentativa = 0;
    const QString resposta = arquivos.NoRetorno(arquivos.Base() + u"-nfe.err"_s);
    s.ambiente.Aguarda(0.2);
    // A file that is gone or still empty when read counts as not there: the sale stays queued.
    const QStringList linhas =
        RespostaPresente(s, resposta) ? LinhasDoArquivo(resposta) : QStringList();
    QString mensagem;
    for (const QString& linha : linhas) {
        if (linha.startsWith(u"xMotivo"_s)) mensagem = u"Falha na Conversao da NFC-e - "_s;
        if (linha.startsWith(u"Segmento"_s)) mensagem += linha.mid(9, 3);
        s.ambiente.DoEvents();
    }
    v.Tentativa = 2;
    if (linhas.isEmpty()) return {};
    s.conexoes.Executa(u"UPDATE vendas SET erro = '"_s + EscapaTexto(mensagem.left(LarguraTexto)) +
                       u"'"_s + OndeCupom(v));
    s.conexoes.Executa(u"UPDATE vendas SET enviotime = 1"_s + OndeCupom(v));
    return mensagem;
}

void GravaLote(Servidor& s) {
    const ArquivosDaVenda arquivos(s);
    const QString chave = s.painel.LblMens01;
    s.venda.Tentativa = 0;
    for (int tentativa = 0; tentativa < 3; ++tentativa) {
        s.ambiente.DoEvents();
        const QString resposta = arquivos.NoRetorno(chave + u"-num-lot.txt"_s);
        const QStringList lotes =
            RespostaPresente(s, resposta) ? LotesDoArquivo(resposta) : QStringList();
        if (!lotes.isEmpty()) {
            s.conexoes.Executa(u"UPDATE vendas SET lote = '"_s + lotes.last() +
                               u"' WHERE chave = '"_s + EscapaTexto(Apara(chave)) + u"'"_s);
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
    v.Tentativa = 0;
    // NumLote starts as "0", never blank: one look decides.
    for (int restantes = 10; restantes > 0; --restantes) {
        const QString resposta = arquivos.NoRetorno(chave + u"-num-lot.txt"_s);
        const QStringList lotes =
            RespostaPresente(s, resposta) ? LotesDoArquivo(resposta) : QStringList();
        if (!lotes.isEmpty()) v.NumLote = lotes.first();
        s.ambiente.Aguarda(1);
        if (!Vazio(v.NumLote)) break;
    }
    QString mensagem;
    const QString recusa = arquivos.NoRetorno(Zeros(v.NumLote, 15) + u"-pro-rec.err"_s);
    if (RespostaPresente(s, recusa)) {
        for (const QString& linha : LinhasDoArquivo(recusa)) {
            if (!linha.startsWith(u"Message"_s)) continue;
            mensagem = linha.mid(8, 50).toUpper();
            // Quotes removed as the rules say; EscapaTexto also drops the NULs of a damaged file.
            s.conexoes.Executa(u"UPDATE vendas SET erro = '"_s + EscapaTexto(TiraAspas(mensagem)) +
                               u"', tempo = '0'"_s + OndeCupom(v));
            s.conexoes.Executa(u"UPDATE vendas SET enviotime = 0"_s + OndeCupom(v));
            s.ambiente.Aguarda(0.5);
        }
    }
    v.Tentativa = 10;
    return mensagem;
}

} // namespace nfce
