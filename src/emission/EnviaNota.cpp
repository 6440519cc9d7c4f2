#include "emission/DesfechoDaJanela.h"
#include "emission/EmiteNfceImprime.h"
#include "emission/EnviaTodos.h"
#include "emission/Retorno.h"
#include "nfce/GeraNfce.h"
#include "storage/Configuracao.h"
#include "storage/Formatacao.h"

namespace nfce {

using namespace Qt::StringLiterals;

namespace {

// The sale's month from the panel's date; today's when the panel holds none.
QString MesDaVenda(const Servidor& s) {
    const QDate data = QDate::fromString(s.painel.lblData, u"dd/MM/yyyy");
    return (data.isValid() ? data : s.ambiente.Data()).toString(u"MMyyyy");
}

} // namespace

void EnviaNota(Servidor& s) {
    InstalaReemissao(s);
    EstadoVenda& v = s.venda;
    Painel& p = s.painel;
    p.LblMens01.clear();
    p.LblMens02 = u"Aguarde Gerando NFC-e"_s;
    p.LblMens03.clear();
    const qint32 nfce = v.NumNfce;
    GeraNfce(s, QString::number(nfce), VarianteGerador::Janela());
    s.ambiente.Aguarda(2);
    const QString erro = LeErroNfe(s);
    s.ambiente.DoEvents();
    if (!Vazio(erro)) {
        p.LblMens03 = MensagemNaoEmitido(v.NumCupom, erro);
        return;
    }
    v.MesAutorizados = s.ambiente.Data().toString(u"MMyyyy");
    v.MesContabil = MesDaVenda(s);
    LeRespostasDaNota(s);
    if (DesfechoFinal(p.LblMens03, false)) ConcluiVenda(s, p.LblMens01, nfce, p.LblMens03);
}

} // namespace nfce
