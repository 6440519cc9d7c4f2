#include "emission/EnviaPendentes.h"

#include "context/Servidor.h"
#include "emission/ArmadilhaEnvio.h"
#include "emission/ArquivosDaVenda.h"
#include "emission/DesfechoDaJanela.h"
#include "emission/PedidoChave.h"
#include "emission/Retorno.h"
#include "nfce/GeraNfce.h"
#include "platform/Sonda.h"
#include "storage/ArquivoTexto.h"
#include "storage/Configuracao.h"
#include "storage/Formatacao.h"
#include "storage/Pastas.h"

#include <QFile>
#include <cmath>
#include <limits>

namespace nfce {

using namespace Qt::StringLiterals;

namespace {

// Passes started inside passes (a key read as "0" every time, a timer ticking inside every
// wait) end here instead of running out of stack.
constexpr int MaximoAninhamento = 8;
// Every current document is a contingency one, so the key is asked for that emission type.
constexpr int TipoEmissaoDaChave = 9;

bool SemChave(const QString& chave) {
    return chave.isEmpty() || Val(chave) == 0;
}

// A whole number column as the sale row holds it; anything else is a type mismatch.
qint32 Longo(const Registros& rs, const QString& campo) {
    bool ok = false;
    const double valor = rs.Texto(campo).trimmed().toDouble(&ok);
    if (!ok || !std::isfinite(valor) || std::abs(valor) > std::numeric_limits<qint32>::max())
        throw ErroExecucao(ErroTipoIncompativel, u"Valor inválido em vendas.%1: \"%2\""_s.arg(
                                                     campo, rs.Texto(campo).left(40)));
    return static_cast<qint32>(std::llround(valor));
}

void Apaga(const QString& caminho) {
    if (ArquivoExiste(caminho) && !QFile::remove(caminho))
        throw ErroExecucao(ErroAcessoCaminho, u"Não foi possível apagar %1"_s.arg(caminho));
}

class Passagem {
public:
    Passagem(Servidor& servidor, const AoTerminarVenda& aoTerminar)
        : s(servidor), rs(servidor.envio.Pendentes), ao(aoTerminar), arquivos(servidor) {}

    void Executa() {
        try {
            if (!Abre()) return;
            while (!rs.Eof())
                if (!VendaSobArmadilha()) return;
            rs.Fecha();
            s.ambiente.Aguarda(0.01);
            s.ambiente.DoEvents();
        } catch (const ErroExecucao& erro) {
            TrataErroEnvio(s, erro);
        }
    }

private:
    QString& Chave() { return s.painel.LblMens01; }
    QString& Desfecho() { return s.painel.LblMens03; }
    void Aguarda(double segundos) { s.ambiente.Aguarda(segundos); }

    void LimpaMensagens() {
        s.painel.LblMens01.clear();
        s.painel.LblMens02.clear();
        s.painel.LblMens03.clear();
    }

    // The selection; false when there is nothing to send.
    bool Abre() {
        s.venda.ModoRetorno = u"NC1"_s; // a mode no reader knows: this sender never prints
        SobArmadilha(s, [&] { s.conexoes.ReabreConexao(); });
        SobArmadilha(s, [&] { s.conexoes.AbreConsulta(rs, SqlPendentes()); });
        if (rs.RecordCount() == 0) return false;
        s.painel.LblQuantCup = QString::number(rs.RecordCount());
        s.ambiente.DoEvents();
        Aguarda(0.5);
        rs.MoveFirst();
        return rs.RecordCount() != 0;
    }

    // An error of this sale's own is recorded on it and the pass goes on with the next row; a
    // full disk is recorded too, and ends the pass like every other error.
    bool VendaSobArmadilha() {
        try {
            return Venda();
        } catch (const ErroExecucao& erro) {
            const bool daVenda = ErroDeUmaVenda(erro) && rs.Aberto() && !nfce.isEmpty();
            if (daVenda || (erro.numero() == ErroDiscoCheio && !nfce.isEmpty()))
                AnotaErroNaVenda(s, nfce, erro);
            if (!daVenda) throw;
            LimpaMensagens();
        }
        return Proxima();
    }

    // One row; false ends the pass.
    bool Venda() {
        nfce.clear();
        s.ambiente.DoEvents();
        Aguarda(0.5);
        if (rs.RecordCount() == 0) return false;
        LeLinha();
        PedeEAguardaChave();
        LimpaAnteriores();
        Gera();
        LeErros();
        if (!Chave().isEmpty() && Val(Chave()) == 0) {
            LimpaMensagens();
            EnviaPendentes(s, ao);
        }
        AguardaDesfecho();
        Conclui();
        return Proxima();
    }

    // The row into the panel and the sale's state. A sale without a date or a time cannot be
    // emitted until someone corrects it.
    void LeLinha() {
        nfce = rs.Texto(u"nfce"_s);
        const QString texto = rs.Texto(u"data"_s);
        dia = rs.Data(u"data"_s);
        s.painel.lblData = dia.isValid() ? dia.toString(u"dd/MM/yyyy") : texto;
        LimpaMensagens();
        if (!dia.isValid()) throw ErroDaVenda(ErroTipoIncompativel, Invalido(u"data"_s, texto));
        s.painel.LblMens02 = u"Aguarde Gerando NFC-e"_s;
        s.venda.NumNfce = Longo(rs, u"nfce"_s);
        s.venda.NumCupom = cupom = Longo(rs, u"cupom"_s);
        const QTime hora = rs.Hora(u"hora"_s);
        if (!hora.isValid())
            throw ErroDaVenda(ErroTipoIncompativel, Invalido(u"hora"_s, rs.Texto(u"hora"_s)));
        s.painel.lblHora = hora.toString(u"HH:mm:ss");
    }

    static QString Invalido(const QString& campo, const QString& texto) {
        if (Vazio(texto)) return u"Venda sem %1: corrija a %1 da venda para enviá-la"_s.arg(campo);
        return u"A %1 da venda não é válida (\"%2\"): corrija-a para enviá-la"_s.arg(
            campo, texto.left(40));
    }

    void PedeEAguardaChave() {
        const QString aamm = QString::number(dia.toString(u"yyMM").toInt());
        SobArmadilha(s, [&] { PedeChave(s, s.venda.NumNfce, aamm, TipoEmissaoDaChave); });
        s.ambiente.DoEvents();
        Aguarda(0.5);
        LeChave(0.5, 6, [&] { return LeChaveXml(s, s.venda.NumNfce); });
        if (SemChave(Chave())) LeChave(1, 6, [&] { return LeChaveTxt(s, s.venda.NumNfce); });
    }

    // Up to `rodadas` rounds of a key reader, `intervalo` seconds apart, until a key comes.
    template <class Leitor> void LeChave(double intervalo, int rodadas, Leitor&& leitor) {
        Sonda(s.ambiente, rodadas, {{Passo::Aguarda, intervalo}, {Passo::Olha}, {Passo::Bombeia}},
              [&] {
                  SobArmadilha(s, [&] { Chave() = leitor(); });
                  return !Chave().isEmpty();
              });
    }

    // Answers of an earlier attempt with this key would be read as this one's. The document is
    // not written yet, so the company folder is the one known from start-up.
    void LimpaAnteriores() {
        SobArmadilha(s, [&] {
            Apaga(arquivos.DaPastaDaEmpresa(u"Retorno\\"_s + Chave() + u"-num-lot.txt"_s));
        });
        SobArmadilha(s, [&] {
            Apaga(arquivos.DaPastaDaEmpresa(u"Retorno\\"_s + Chave() + u"-num-lot.xml"_s));
        });
        Aguarda(0.5);
        if (ArquivoExiste(Validado())) {
            Aguarda(0.5);
            SobArmadilha(s, [&] { Apaga(Validado()); });
        }
    }

    QString Validado() {
        return arquivos.DaPastaDaEmpresa(u"Validar\\Validado\\"_s + Chave() + u"-nfe.xml"_s);
    }

    void Gera() {
        Aguarda(1);
        SobArmadilha(s, [&] { GeraNfce(s, nfce); });
        // The conversion answer's reader looks three times itself.
        if (SemChave(Chave())) LeChave(0.5, 1, [&] { return LeChaveNfe(s); });
        if (SemChave(Chave())) LeChave(0.5, 6, [&] { return LeChaveXml(s, s.venda.NumNfce); });
        Aguarda(0.5);
        // A document UniNFe validated but did not send goes to its sending folder again.
        if (ArquivoExiste(Validado())) {
            SobArmadilha(s, [&] {
                CopiaArquivo(Validado(),
                             arquivos.DaEmpresa(u"Envio\\"_s + Chave() + u"-nfe.xml"_s));
            });
            Aguarda(0.5);
        }
    }

    // The readers below look for their answers as long as they deserve: one call each.
    void LeErros() {
        SobArmadilha(s, [&] { LeErroNfe(s); });
        s.ambiente.DoEvents();
        SobArmadilha(s, [&] { GravaLote(s); });
        LeDesfecho(LeErroRecibo);
    }

    void LeDesfecho(QString (*leitor)(Servidor&)) {
        SobArmadilha(s, [&] { Desfecho() = leitor(s); });
        s.ambiente.DoEvents();
    }

    void AguardaDesfecho() {
        if (!nfce.isEmpty()) {
            s.venda.MesAutorizados = dia.toString(u"MMyyyy");
            s.venda.MesContabil = dia.toString(u"MMyyyy");
            LeDesfecho(ProcessaRetorno);
        }
        // No outcome yet: the protocol file gets one more wait.
        if (Desfecho().isEmpty()) LeDesfecho(ProcessaRetorno);
    }

    // A pass started inside this one has closed the rows: the outcome line read since is that
    // pass's, and the row is left to the next look at the rows, which ends this pass.
    void Conclui() {
        const QString texto = Desfecho();
        const bool finalizada = DesfechoFinal(texto, false);
        if (finalizada) {
            LimpaMensagens();
            const QString daLinha = rs.Texto(u"nfce"_s);
            CopiaContabil(daLinha);
            SobArmadilha(s, [&] {
                s.conexoes.Executa(u"UPDATE vendas SET tempo = 1, enviotime = 1 WHERE nfce = "_s +
                                   daLinha);
            });
        }
        if (ao && rs.Aberto()) ao({cupom, nfce, texto, finalizada});
        LimpaMensagens();
    }

    // The key has been cleared by now, so only a file named "-procNFe.xml" is copied: the
    // authorised XML itself is filed by the return processing.
    void CopiaContabil(const QString& daLinha) {
        const QString origem = arquivos.XmlAutorizado(Chave());
        if (!ArquivoExiste(origem)) return;
        SobArmadilha(s, [&] {
            CopiaArquivo(origem, arquivos.CopiaContabil(s.venda.MesAutorizados, daLinha));
        });
    }

    bool Proxima() {
        if (!rs.Aberto()) return false;
        rs.MoveNext();
        s.ambiente.DoEvents();
        if (rs.RecordCount() != 0) return true;
        s.painel.TimerVendasAtivo = true;
        return false;
    }

    Servidor& s;
    Registros& rs;
    const AoTerminarVenda& ao;
    ArquivosDaVenda arquivos;
    QString nfce;
    QDate dia;
    qint32 cupom = 0;
};

// Counts the passes running one inside another for as long as this one runs.
class Aninhado {
public:
    explicit Aninhado(EstadoEnvio& envio) : envio_(envio) { ++envio_.Aninhamento; }
    ~Aninhado() { --envio_.Aninhamento; }
    Aninhado(const Aninhado&) = delete;
    Aninhado& operator=(const Aninhado&) = delete;

private:
    EstadoEnvio& envio_;
};

} // namespace

QString DescreveDesfecho(const DesfechoDaVenda& d) {
    QString texto = d.texto.simplified();
    if (texto.isEmpty()) texto = u"sem resposta do UniNFe"_s;
    return u"cupom %1 NFC-e %2: %3 (%4)"_s.arg(QString::number(d.cupom), d.nfce, texto,
                                               d.finalizada ? u"finalizada"_s : u"pendente"_s);
}

QString SqlPendentes() {
    return u"SELECT data, cupom, valor, chave, autorizacao, erro, tempo, situacao, nfce, hora FROM vendas "_s +
           u"WHERE tempo <> '"_s + u"1"_s +
           u"' AND nfce <> 0 AND enviotime = 0 ORDER BY cupom asc"_s;
}

void EnviaPendentes(Servidor& s, const AoTerminarVenda& aoTerminar) {
    if (s.envio.Aninhamento >= MaximoAninhamento) {
        s.ambiente.Registra(u"Envio de NFC-e: passagens demais uma dentro da outra"_s);
        return;
    }
    Aninhado aninhado(s.envio);
    Passagem(s, aoTerminar).Executa();
}

} // namespace nfce
