#include "shell/Aplicacao.h"

#include "emission/EmiteNfceImprime.h"
#include "emission/EnviaPendentes.h"
#include "emission/Reenvio.h"
#include "export/Exportacao.h"
#include "shell/Inicio.h"
#include "storage/Ajustes.h"
#include "storage/ErroExecucao.h"

#include <QTimer>

namespace nfce {

using namespace Qt::StringLiterals;

Aplicacao::Aplicacao(const QString& pasta, Ambiente& ambiente, std::function<void()> fimDoPrograma)
    : s_(pasta, ambiente),
      timerVendas_(s_, {[this] { CmdExecutar_Click(); }, [this] { AtEnvioTimeProtegido(); },
                        [this] { CmdExportar_Click(); }}),
      fimDoPrograma_(std::move(fimDoPrograma)) {
    InstalaReemissao(s_);
}

void Aplicacao::Form_Load(bool executarAgora) {
    TimerInicio(s_);
    s_.ambiente.Registra(u"Servidor NFC-e iniciado em "_s + s_.pasta);
    s_.painel.LblMens01.clear();
    s_.painel.LblMens02.clear();
    s_.painel.LblMens03.clear();
    s_.painel.LblQuantCup.clear();
    s_.painel.TimerVendasAtivo = true;
    if (executarAgora) s_.ambiente.Posta([this] { timerVendas_.RodaAgora(); });
    s_.ambiente.Aguarda(5);
    AtEnvioTimeProtegido();
}

void Aplicacao::AtEnvioTimeProtegido() {
    Protegido(u"AtEnvioTime"_s, [this] { AtEnvioTime(s_); });
}

void Aplicacao::Form_Activate() {
    s_.painel.CmdExportarAtivo = Le(s_.pasta, ajustes::VendasOnline);
}

void Aplicacao::Form_Unload() {
    s_.painel.TimerVendasAtivo = false;
    s_.conexoes.FechaConexao();
    s_.ambiente.Registra(u"Servidor NFC-e encerrado"_s);
    fimDoPrograma_();
}

void Aplicacao::CmdExecutar_Click() {
    Protegido(u"EnviaPendentes"_s, [this] {
        EnviaPendentes(
            s_, [this](const DesfechoDaVenda& d) { s_.ambiente.Registra(DescreveDesfecho(d)); });
    });
}

void Aplicacao::CmdExportar_Click() {
    Protegido(u"Exportação"_s, [this] {
        const ResultadoExportacao r = CmdExportar(s_);
        if (!r.conectada) return;
        s_.ambiente.Registra(u"Exportação: %1 de %2 itens e %3 de %4 vendas enviados, %5 não "
                             u"encontrados no servidor remoto"_s.arg(r.itensEnviados)
                                 .arg(r.itensLidos)
                                 .arg(r.vendasEnviadas)
                                 .arg(r.vendasLidas)
                                 .arg(r.naoEncontrados.size()));
    });
}

void Aplicacao::LigaTimerVendas() {
    relogio_ = new QTimer(this);
    relogio_->setInterval(500);
    connect(relogio_, &QTimer::timeout, this, &Aplicacao::TimerVendas_Timer);
    relogio_->start();
}

void Aplicacao::Protegido(const QString& rotina, const std::function<void()>& passo) {
    try {
        passo();
    } catch (const ErroExecucao& erro) {
        s_.ambiente.MsgBox(
            u"%1: erro %2\n%3"_s.arg(rotina).arg(erro.numero()).arg(erro.descricao()),
            u"Servidor NFC-e"_s, Icone::Critico);
    }
}

} // namespace nfce
