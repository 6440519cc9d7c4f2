#pragma once

#include "support/Loja.h"

#include <QDir>

namespace nfce::teste {

using namespace Qt::StringLiterals;

inline const QString Chave = u"31261118123456000104650010000012349123456788"_s;

// The sale as the drivers leave it before UniNFe answers: cupom 501, NFC-e 1234, from quote 77,
// items 1 and 3 (products 4321 and 78), key in LblMens01, 5 receipts to send. Two rows catch a
// statement keyed wrongly: cupom 1234 with NFC-e 501 (its item 3 is product 999), and cupom 900
// with the same NFC-e 1234, which what is keyed on the NFC-e reaches too.
class CenarioRetorno : public Loja {
protected:
    void SetUp() override {
        Loja::SetUp();
        if (!IsSkipped()) Reinicia();
    }
    // Back to that state (rows, files, settings `config`, a new server): one case of a table.
    void Reinicia(const QStringList& config = {}) {
        for (const QString& tabela : {u"vendas"_s, u"itens"_s, u"orcamento"_s, u"empresa"_s})
            Executa(u"DELETE FROM "_s + tabela);
        Executa(u"INSERT INTO vendas (cupom, nfce, tempo, sync) VALUES (501, 1234, '5', 1), "
                "(1234, 501, '5', 1), (900, 1234, '5', 1)"_s);
        Executa(u"INSERT INTO itens (cupom, Item, codprod, sync) VALUES (501, 1, 4321, 1), "
                "(501, 3, 78, 1), (1234, 3, 999, 1)"_s);
        Executa(u"INSERT INTO orcamento (cupom) VALUES (77)"_s);
        QDir(NaEmpresa({})).removeRecursively();
        for (const QString& p :
             {u"Envio"_s, u"Retorno"_s, u"Erro"_s, u"Validar/Validado"_s,
              u"Enviado/EmProcessamento"_s, u"Enviado/Autorizados/112026"_s, u"Contabilidade"_s})
            QDir().mkpath(NaEmpresa(p));
        Configura(config);
        ambiente.programasIniciados.clear();
        ambiente.perguntas.clear();
        ambiente.registro.clear();
        NovoServidor();
        EstadoVenda& v = s->venda;
        v.NumCupom = 501;
        v.NumNfce = 1234;
        v.CnpjEmpresa = u"18123456000104"_s;
        v.SerieNfce = u"001"_s;
        v.DataArquivo = u"15112026"_s;
        v.MesAutorizados = v.MesContabil = u"112026"_s;
        v.ModoRetorno = u"NC1"_s;
        v.VendaOrcamento = true;
        v.NumOrcamento = 77;
        s->painel.LblMens01 = Chave;
        s->painel.LblQuantCup = u"5"_s;
    }
    // Writes `conteudo` when the virtual clock has run `ms` more ("-": no file).
    void GravaEm(qint64 ms, const QString& relativo, const QByteArray& conteudo) {
        if (conteudo != "-")
            ambiente.Agenda(ambiente.Monotonico() + ms, [=, this] { Grava(relativo, conteudo); });
    }
    // "54;" as the lot file, and the protocol file of lot 54 with UniNFe's status line first.
    void Responde(const QByteArray& linhas) const {
        Grava(u"Retorno/"_s + Chave + u"-num-lot.txt"_s, "54;");
        Grava(u"Retorno/000000000000054-pro-rec.txt"_s, ";104;Lote processado;\r\n" + linhas);
    }
    QString DaVenda(const QString& colunas, int cupom = 501) {
        return Colunas(u"vendas WHERE cupom = %1"_s.arg(cupom), colunas);
    }
    // Virtual milliseconds `leitura` waited.
    qint64 Espera(const std::function<void()>& leitura) {
        const qint64 antes = ambiente.msAguardados();
        leitura();
        return ambiente.msAguardados() - antes;
    }
};

// A line of "-pro-rec.txt": with digVal the code stands in field 6; without it (rejections) in
// field 5, the reason in field 6.
inline QByteArray Protocolo(const QByteArray& codigo, const QByteArray& motivo,
                            bool digVal = false) {
    return "18123456000104;000001234;" + Chave.toLatin1() + ";2026-11-15T10:21:05-03:00;" +
           (codigo == "100" ? "131260000012345;" : "0;") +
           (digVal ? "zTbcpgGcvzfkV/AhKeieXtFntUk=;" : "") + codigo + ';' + motivo + ';';
}

} // namespace nfce::teste
