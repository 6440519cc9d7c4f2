#pragma once

#include "Simulador.h"
#include "context/Servidor.h"
#include "storage/Empresa.h"
#include "storage/Pastas.h"
#include "storage/Sql.h"
#include "support/BancoTeste.h"

namespace nfce::teste {

// A shop on both engines, 15/11/2026: its record, settings, rows and folders, a server `s`, and
// the UniNFe stand-in `sim`, answering at each pump while `uninfeRodando`.
class Loja : public BancoTeste {
protected:
    void SetUp() override {
        BancoTeste::SetUp();
        if (IsSkipped()) return;
        pasta.EscreveEmpresa(RegistroDaLoja);
        Configura({u"TMPAMBNFCE=2"_s, u"TEMP=1"_s});
        for (const QString& p : {u"Envio"_s, u"Validar"_s, u"Retorno"_s})
            QDir().mkpath(NaEmpresa(p));
        NovoServidor();
        Carrega(u"loja"_s);
        sim = std::make_unique<uninfesim::Simulador>(pasta.caminho());
        ambiente.AoBombear([this] {
            if (uninfeRodando) sim->Processa(ambiente.Agora());
        });
    }
    void TearDown() override {
        s.reset();
        BancoTeste::TearDown();
    }

    // A fresh `s` on the settings and the record as they are now.
    void NovoServidor() {
        s = std::make_unique<Servidor>(pasta.caminho(), ambiente);
        s->empresa = CarregaEmpresa(pasta.caminho());
        s->conexoes.PreparaConexaoPrincipal();
        s->conexoes.ReabreConexao();
    }
    void Carrega(const QString& nome) {
        ExecutaScript(*s->conexoes.ConexaoPrincipal(),
                      u"" NFCE_DADOS_TESTE "/nfce/%1.sql"_s.arg(nome));
    }
    void Limpa() {
        for (const QString& tabela : {u"vendas"_s, u"itens"_s, u"nfce"_s})
            Executa(u"DELETE FROM "_s + tabela);
    }

    void Venda(int nfce, int cupom, const QString& tempo = u"5"_s, const QString& erro = {}) {
        const QString n = QString::number(nfce), c = QString::number(cupom);
        Executa(u"INSERT INTO vendas (nfce, cupom, data, hora, valor, Dinheiro, cliente, "
                "nomecliente, tempo, enviotime, autorizacao, erro) VALUES (%1, %2, '2026-11-15', "
                "'10:20:30', 21.15, 21.15, 1, 'CONSUMIDOR FINAL', '%3', 0, '', '%4')"_s.arg(
                    n, c, tempo, erro));
        Executa(u"INSERT INTO itens (nfce, cupom, Item, codprod, quant, valor, valortotal) VALUES "
                "(%1, %2, 1, 1, 1, 21.15, 21.15)"_s.arg(n, c));
    }
    // Columns ("a,b") of the first row of `origem` ("vendas WHERE ..."), joined by "|".
    QString Colunas(const QString& origem, const QString& colunas) {
        QStringList valores;
        for (const QString& coluna : colunas.split(u','))
            valores << Texto(u"SELECT "_s + coluna + u" FROM "_s + origem);
        return valores.join(u'|');
    }
    QString Coluna(const QString& coluna, int nfce) {
        return Colunas(u"vendas WHERE nfce = %1"_s.arg(nfce), coluna);
    }
    // The work list, replaced by `numeros`, or as written.
    void PoeNaFila(const QStringList& numeros) {
        const auto local = s->conexoes.AbreLocal();
        local->Executa(u"DELETE FROM ncupom"_s);
        for (const QString& n : numeros)
            local->Executa(u"INSERT INTO ncupom (cupom) VALUES ('%1')"_s.arg(EscapaTexto(n)));
    }
    QStringList Fila() {
        QStringList numeros;
        for (const auto& linha :
             s->conexoes.AbreLocal()->Consulta(u"SELECT cupom FROM ncupom ORDER BY rowid"_s).linhas)
            numeros.append(linha.value(0).toString());
        return numeros;
    }

    // Below the company folder ("Retorno/x.txt" or "RETORNO\x.txt"): NaEmpresa as given,
    // Existe (files only) resolving each part as the server does; Le gives "" for no file.
    QString NaEmpresa(const QString& relativo) const {
        return pasta.Caminho(u"18123456000104/"_s + relativo);
    }
    bool Existe(const QString& relativo) const {
        return ArquivoExiste(Caminho(pasta.caminho(), u"18123456000104\\"_s + relativo));
    }
    void Grava(const QString& relativo, const QByteArray& conteudo) const {
        pasta.EscreveArquivo(u"18123456000104/"_s + relativo, conteudo);
    }
    QByteArray Le(const QString& relativo) const {
        QFile arquivo(NaEmpresa(relativo));
        return arquivo.open(QIODevice::ReadOnly) ? arquivo.readAll() : QByteArray();
    }

    std::unique_ptr<Servidor> s;
    std::unique_ptr<uninfesim::Simulador> sim;
    bool uninfeRodando = false;
};

class LojaComUniNfe : public Loja {
protected:
    LojaComUniNfe() { uninfeRodando = true; }
};

} // namespace nfce::teste
