#include "emission/EmiteNfceImprime.h"

#include "context/Servidor.h"
#include "emission/ArquivosDaVenda.h"
#include "emission/Autorizacao.h"
#include "emission/DesfechoDaJanela.h"
#include "emission/Retorno.h"
#include "nfce/GeraNfce.h"
#include "nfce/Valores.h"
#include "storage/Configuracao.h"
#include "storage/Formatacao.h"
#include "storage/Pastas.h"

#include <memory>

namespace nfce {

using namespace Qt::StringLiterals;

namespace {

constexpr int LimiteReemissoes = 3;

QString MesAtual(const Servidor& s) {
    return s.ambiente.Data().toString(u"MMyyyy");
}

// Offline contingency: no authorisation to wait for; print the validated XML and mark it.
void ImprimeContingencia(Servidor& s, const QString& numero) {
    const EstadoVenda& v = s.venda;
    const QString chave = s.painel.LblMens01;
    if (!ArquivoExiste(ArquivosDaVenda(s).XmlValidado(chave))) return;
    if (v.ImprimeCupom)
        IniciaDanfe(s, s.pasta + u"\\"_s + v.CnpjEmpresa + u"\\Validar\\Validado\\"_s + chave +
                           u"-nfe.xml"_s);
    s.conexoes.Executa(u"UPDATE vendas SET tempo = '"_s + u"8"_s + u"' WHERE cupom = "_s + numero);
    if (!v.VendaOrcamento) return;
    s.conexoes.Executa(u"UPDATE orcamento SET tempo = '"_s + v.TipoEmissao + u"', emitido = '"_s +
                       u"S"_s + u"', cupomnfce = '"_s + numero + u"' WHERE cupom = "_s +
                       QString::number(v.NumOrcamento));
}

} // namespace

void EmiteNfceImprime(Servidor& s, const QString& nfce) {
    EstadoVenda& v = s.venda;
    Painel& p = s.painel;
    s.ambiente.Aguarda(0.5);
    GeraNfce(s, nfce, VarianteGerador::Modulo());
    // The number of the messages and statements: the text's numeric value, which the
    // generator has accepted.
    const qint64 valor = InteiroDe(nfce);
    const QString numero = QString::number(valor);
    s.ambiente.Aguarda(3);
    p.LblMens03 = LeErroNfe(s);
    s.ambiente.DoEvents();
    const QString erro = LeErroNfe(s);
    if (!Vazio(erro)) {
        v.Mensagem = MensagemNaoEmitido(valor, erro);
        s.ambiente.MsgBox(v.Mensagem, u"Atenção"_s, Icone::Informacao);
        return;
    }
    p.LblMens01 = LeChaveNfe(s);
    s.ambiente.DoEvents();
    v.MesAutorizados = MesAtual(s);
    p.LblMens03 = LeErroRecibo(s);
    s.ambiente.DoEvents();
    if (Val(v.TipoEmissao) == 9) return ImprimeContingencia(s, numero);
    v.MesAutorizados = MesAtual(s);
    v.MesContabil = MesAtual(s);
    p.LblMens03 = ProcessaRetorno(s);
    s.ambiente.DoEvents();
}

void InstalaReemissao(Servidor& s) {
    if (s.EmiteNfceImprime) return;
    auto profundidade = std::make_shared<int>(0);
    s.EmiteNfceImprime = [&s, profundidade](const QString& nfce) {
        if (*profundidade >= LimiteReemissoes) {
            s.ambiente.Registra(u"NFC-e "_s + nfce.left(20) +
                                u" rejeitada outra vez: reemissão interrompida"_s);
            return;
        }
        ++*profundidade;
        const std::shared_ptr<int> desce(profundidade.get(), [](int* n) { --*n; });
        EmiteNfceImprime(s, nfce);
    };
}

} // namespace nfce
