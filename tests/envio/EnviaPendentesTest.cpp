#include "emission/EnviaPendentes.h"
#include "Simulador.h"
#include "apoio/DiscoPequeno.h"
#include "apoio/LojaComUniNfe.h"
#include "apoio/Programa.h"
#include "contexto/Servidor.h"
#include "emission/ArmadilhaEnvio.h"
#include "emission/EmiteNfceImprime.h"
#include "storage/Empresa.h"
#include "storage/Esquema.h"

#include <QDir>

namespace nfce::teste {
namespace {

using namespace Qt::StringLiterals;

const QString Cnpj = u"18123456000104"_s;

class EnviaPendentesTest : public LojaComUniNfe {
protected:
    // A sale of one item; `data` "NULL" for none.
    void Venda(int nfce, int cupom, const QString& cenario = {}, const QString& tempo = {},
               int enviotime = 0, const QString& data = u"'2026-11-15'"_s) {
        Executa(u"INSERT INTO vendas (nfce, cupom, data, hora, valor, Dinheiro, cliente, "
                "nomecliente, tempo, enviotime) VALUES (%1, %2, %3, '10:20:30', 21.15, 21.15, 1, "
                "'CONSUMIDOR FINAL', '%4', %5)"_s.arg(nfce)
                    .arg(cupom)
                    .arg(data, tempo)
                    .arg(enviotime));
        Executa(u"INSERT INTO itens (nfce, cupom, Item, codprod, quant, valor, valortotal) "
                "VALUES (%1, %2, 1, 1, 1, 21.15, 21.15)"_s.arg(nfce)
                    .arg(cupom));
        if (!cenario.isEmpty()) {
            uninfesim::Cenario c;
            QString erro;
            ASSERT_TRUE(uninfesim::LeCenario(cenario, c, erro)) << erro.toStdString();
            sim->DefineCenario(nfce, c);
        }
    }

    QString Estado(int nfce) {
        return Texto(u"SELECT tempo FROM vendas WHERE nfce = %1"_s.arg(nfce)) + u'/' +
               Texto(u"SELECT enviotime FROM vendas WHERE nfce = %1"_s.arg(nfce));
    }

    // One pass; the outcome line of each sale that reached the outcome test, by NFC-e.
    QHash<QString, DesfechoDaVenda> Passa() {
        QHash<QString, DesfechoDaVenda> desfechos;
        EnviaPendentes(*s, [&](const DesfechoDaVenda& d) { desfechos.insert(d.nfce, d); });
        return desfechos;
    }
};

TEST(EnviaPendentesSql, SelecaoComoOSistemaEnvia) {
    EXPECT_EQ(
        SqlPendentes(),
        u"SELECT data, cupom, valor, chave, autorizacao, erro, tempo, situacao, nfce, hora "
        "FROM vendas WHERE tempo <> '1' AND nfce <> 0 AND enviotime = 0 ORDER BY cupom asc"_s);
}

TEST(EnviaPendentesSql, ErrosQueEncerramEmSilencio) {
    for (int n : {0, 13, 20, 28, 55, 70, 76, 91, 3021, 3036, 3265, 3704})
        EXPECT_TRUE(ErroSilencioso(n)) << n;
    for (int n : {5, 6, 11, 53, 75, 3022, -2147467259})
        EXPECT_FALSE(ErroSilencioso(n)) << n;
}

// Each answer UniNFe can give, in one pass: what the outcome line says, and the row after it.
TEST_P(EnviaPendentesTest, CadaDesfechoNumaPassagem) {
    struct Caso {
        int nfce;
        QString cenario;
        bool finalizada;
        QString estado; // tempo/enviotime after the pass
        QString trecho; // of the outcome line
    };
    const std::vector<Caso> casos = {
        {1001, u"autoriza"_s, true, u"1/1"_s, u"Autorizado o uso da NF-e"_s},
        {1002, u"rejeita 778"_s, false, u"0/1"_s, u"NCM Inexistente"_s},
        {1003, u"duplicidade"_s, true, u"1/1"_s, u"Autorizado o uso da NF-e"_s},
        {1004, u"duplicidade-chave"_s, true, u"1/1"_s, u"Autorizado o uso da NF-e"_s},
        {1005, u"erro-conversao"_s, false, u"/1"_s, QString()},
        {1006, u"lote-recusado"_s, false, u"0/0"_s, QString()},
        {1007, u"sem-resposta"_s, false, u"/0"_s, QString()},
        {1008, u"autoriza chave-zero"_s, true, u"1/1"_s, u"Autorizado o uso da NF-e"_s},
        {1009, u"rejeita 806"_s, false, u"0/1"_s, u"sem informacao do CEST"_s},
    };
    int cupom = 10;
    for (const Caso& c : casos)
        Venda(c.nfce, cupom--, c.cenario);
    // Whatever the window left in the module state, this sender neither emits a rejected sale
    // again nor prints a contingency receipt.
    s->venda.ModoRetorno = u"VENDA"_s;
    s->venda.TipoEmissao = u"9"_s;
    s->venda.ImprimeCupom = true;
    InstalaReemissao(*s);
    const auto desfechos = Passa();
    for (const Caso& c : casos) {
        SCOPED_TRACE(c.cenario.toStdString());
        const DesfechoDaVenda d = desfechos.value(QString::number(c.nfce));
        EXPECT_EQ(d.nfce, QString::number(c.nfce));
        EXPECT_EQ(d.finalizada, c.finalizada) << d.texto.toStdString();
        EXPECT_TRUE(d.texto.contains(c.trecho)) << d.texto.toStdString();
        EXPECT_EQ(Estado(c.nfce), c.estado);
    }
    EXPECT_TRUE(ambiente.mensagens.isEmpty());
    EXPECT_TRUE(ambiente.programasIniciados.isEmpty());
    EXPECT_TRUE(s->painel.LblMens01.isEmpty() && s->painel.LblMens03.isEmpty());
    EXPECT_FALSE(s->envio.Pendentes.Aberto());
    // Finished sales keep their accounting copy under the sale's month.
    EXPECT_TRUE(
        QFile::exists(pasta.Caminho(Cnpj + u"/CONTABILIDADE/112026/000001001-procNFe.xml"_s)));
    // 539: authorised under this sending's key, the protocol cut from SEFAZ's reason (this
    // wording's comma moves the cut one place). No authorised XML exists for that key: the
    // failed document waits in EmProcessamento for the situation query, nothing is filed.
    const QString chave = Coluna(u"chave"_s, 1004);
    EXPECT_EQ(desfechos.value(u"1004"_s).texto, u"Autorizado o uso da NF-e"_s);
    EXPECT_EQ(Coluna(u"erro"_s, 1004), u"Autorizado o uso da NF-e"_s);
    EXPECT_EQ(Coluna(u"autorizacao"_s, 1004), u":31000000000000"_s);
    EXPECT_EQ(chave.size(), 44);
    EXPECT_TRUE(Existe(u"Enviado\\EmProcessamento\\"_s + chave + u"-nfe.xml"_s));
    EXPECT_FALSE(
        QFile::exists(pasta.Caminho(Cnpj + u"/CONTABILIDADE/112026/000001004-procNFe.xml"_s)));
}

TEST_P(EnviaPendentesTest, SoVendasPendentesComNfceSaoEscolhidas) {
    Venda(0, 1);
    Venda(2001, 2, {}, u"1"_s);
    Venda(2002, 3, {}, u"0"_s, 1);
    Venda(2003, 4, {}, u"9"_s);
    Venda(2004, 5, {}, u"0"_s);
    const auto desfechos = Passa();
    EXPECT_EQ(QStringList(desfechos.keys()).size(), 2);
    EXPECT_TRUE(desfechos.contains(u"2003"_s) && desfechos.contains(u"2004"_s));
    EXPECT_EQ(Estado(2002), u"0/1"_s);
    EXPECT_EQ(s->painel.LblQuantCup, u"2"_s);
}

// What the tills may leave in a row: the pass ends without a word on screen, nothing is marked.
TEST_P(EnviaPendentesTest, LinhasHostisNaoFinalizamNada) {
    if (!EmSqlite()) GTEST_SKIP() << "the typed columns of MariaDB refuse these values";
    const QStringList casos = {
        u"data = 'abc'"_s,
        u"data = '2026-13-45'"_s,
        u"data = '"_s + QString(100000, u'9') + u"'"_s,
        u"hora = 'x|\"y'"_s,
        u"nfce = 99999999999"_s,
        u"nfce = 'a|b'"_s,
        u"cupom = '"_s + QString(100000, u'x') + u"'"_s,
    };
    for (const QString& caso : casos) {
        SCOPED_TRACE(caso.left(40).toStdString());
        Executa(u"DELETE FROM vendas"_s);
        Venda(9101, 1);
        Executa(u"UPDATE vendas SET "_s + caso);
        s->painel.LblQuantCup = u"7"_s;
        EXPECT_TRUE(Passa().isEmpty());
        EXPECT_TRUE(ambiente.mensagens.isEmpty());
        EXPECT_EQ(Conta(u"vendas"_s, u"tempo = '1' OR enviotime = 1"_s), 0);
    }
    Executa(u"DELETE FROM vendas"_s);
    EXPECT_TRUE(Passa().isEmpty());
    EXPECT_EQ(s->painel.LblQuantCup, u"1"_s); // untouched when nothing is pending
}

// The pass stops at the first sale without a date; the later ones wait for the next pass.
TEST_P(EnviaPendentesTest, VendaSemDataEncerraAPassagem) {
    Venda(3001, 1);
    Venda(3002, 2, {}, {}, 0, u"NULL"_s);
    Venda(3003, 3);
    const auto desfechos = Passa();
    EXPECT_EQ(desfechos.size(), 1);
    EXPECT_EQ(Estado(3001), u"1/1"_s);
    EXPECT_EQ(Estado(3003), u"/0"_s);
    EXPECT_EQ(Texto(u"SELECT chave FROM vendas WHERE nfce = 3003"_s), QString());
}

// UniNFe not running: no answer at all, the sale stays as it was and goes on the next pass.
TEST_P(EnviaPendentesTest, SemRespostaFicaParaAProximaPassagem) {
    Venda(4001, 1);
    uninfeRodando = false;
    EXPECT_FALSE(Passa().value(u"4001"_s).finalizada);
    EXPECT_EQ(Estado(4001), u"/0"_s);
    uninfeRodando = true;
    EXPECT_TRUE(Passa().value(u"4001"_s).finalizada);
    EXPECT_EQ(Estado(4001), u"1/1"_s);
}

// A key read as "0" starts a pass inside the pass: it sends the other sale, and the outer pass
// ends when it finds the rows closed.
TEST_P(EnviaPendentesTest, ChaveZeroAbrePassagemAninhada) {
    Venda(5001, 1, u"erro-conversao chave-zero"_s);
    Venda(5002, 2);
    QStringList ordem;
    EnviaPendentes(*s, [&](const DesfechoDaVenda& d) { ordem << d.nfce; });
    EXPECT_EQ(ordem, QStringList{u"5002"_s});
    EXPECT_EQ(Estado(5002), u"1/1"_s);
    EXPECT_EQ(Estado(5001), u"/1"_s);
    EXPECT_EQ(s->envio.Aninhamento, 0);
    EXPECT_FALSE(s->envio.Pendentes.Aberto());
}

// Passes nested too deep end at once instead of running out of stack.
TEST_P(EnviaPendentesTest, AninhamentoTemLimite) {
    Venda(5101, 1);
    s->envio.Aninhamento = 8;
    EXPECT_TRUE(Passa().isEmpty());
    EXPECT_EQ(Estado(5101), u"/0"_s);
    EXPECT_TRUE(ambiente.registro.join(u'\n').contains(u"uma dentro da outra"_s));
}

// A timer tick inside a wait starts a second pass over the same rows: no crash, no sale lost.
TEST_P(EnviaPendentesTest, PassagemDentroDeUmaEsperaESobrevivivel) {
    Venda(6001, 1);
    Venda(6002, 2);
    bool disparou = false;
    ambiente.AoBombear([&] {
        if (disparou || s->painel.LblMens02.isEmpty()) return;
        disparou = true;
        EnviaPendentes(*s);
    });
    Passa();
    EXPECT_TRUE(disparou);
    EXPECT_EQ(Estado(6001), u"1/1"_s);
    EXPECT_EQ(Estado(6002), u"1/1"_s);
}

// The exchange folder is gone: the pass ends without a word on screen, the sale waits.
TEST_P(EnviaPendentesTest, PastaDeEnvioAusenteEncerraEmSilencio) {
    Venda(7001, 1);
    QDir(pasta.Caminho(Cnpj + u"/Envio"_s)).removeRecursively();
    pasta.EscreveArquivo(Cnpj + u"/Envio"_s, "not a folder");
    EXPECT_TRUE(Passa().isEmpty());
    EXPECT_TRUE(ambiente.mensagens.isEmpty());
    EXPECT_EQ(Estado(7001), u"/0"_s);
    EXPECT_TRUE(ambiente.registro.join(u'\n').contains(u"erro 76"_s));
}

// Any other error is shown and the pass goes on: the key request cannot be written, the key
// comes from the conversion answer instead.
TEST_P(EnviaPendentesTest, OutroErroEMostradoEAPassagemSegue) {
    Venda(8001, 1);
    QDir().mkpath(pasta.Caminho(Cnpj + u"/Envio/0000008001-gerar-chave.xml"_s));
    EXPECT_TRUE(Passa().value(u"8001"_s).finalizada);
    ASSERT_EQ(ambiente.mensagens.size(), 1);
    EXPECT_EQ(ambiente.mensagens[0].titulo, u"Atenção *"_s);
    EXPECT_TRUE(ambiente.mensagens[0].texto.startsWith(u"75\n"_s));
    EXPECT_EQ(Estado(8001), u"1/1"_s);
}

// A full disk: nothing reaches UniNFe, the sale waits as it was, its error and the log say why.
TEST_P(EnviaPendentesTest, DiscoCheioDeixaAVendaPendente) {
    Venda(8101, 1);
    DiscoPequeno disco(NaEmpresa({}), 8);
    if (!disco.Montado()) GTEST_SKIP() << "mounting a tmpfs is not permitted here";
    disco.Enche(0);
    for (const QString& p : {u"Envio"_s, u"Validar"_s, u"Retorno"_s})
        QDir().mkpath(NaEmpresa(p));
    Passa();
    EXPECT_EQ(Estado(8101), u"/0"_s);
    EXPECT_EQ(disco.Arquivos(), u"enche"_s);
    EXPECT_TRUE(Coluna(u"erro"_s, 8101).contains(u"disco cheio"_s))
        << Coluna(u"erro"_s, 8101).toStdString();
    EXPECT_TRUE(ambiente.registro.join(u'\n').contains(u"disco cheio"_s))
        << ambiente.registro.join(u'\n').toStdString();
}

TEST_P(EnviaPendentesTest, ComandosDeLinha) {
    Venda(9001, 1, {}, u"0"_s, 1);
    Venda(9002, 2, {}, u"1"_s, 1);
    const Execucao reenfileirar = RodaServidor({u"reenfileirar"_s, u"--pasta"_s, pasta.caminho()});
    EXPECT_EQ(reenfileirar.status, 0) << reenfileirar.erro.toStdString();
    EXPECT_EQ(reenfileirar.saida, u"Vendas de volta à fila de envio: 1\n"_s);
    EXPECT_EQ(Estado(9001), u"0/0"_s);
    EXPECT_EQ(Estado(9002), u"1/1"_s);

    Executa(u"UPDATE vendas SET tempo = '1'"_s);
    const Execucao vazio = RodaServidor({u"enviar"_s, u"--pasta"_s, pasta.caminho()});
    EXPECT_EQ(vazio.status, 0) << vazio.erro.toStdString();
    EXPECT_TRUE(vazio.saida.isEmpty());

    QFile::remove(pasta.Caminho(u"Empresa.Bin"_s));
    const Execucao semEmpresa = RodaServidor({u"enviar"_s, u"--pasta"_s, pasta.caminho()});
    EXPECT_EQ(semEmpresa.status, 1);
    EXPECT_EQ(semEmpresa.erro.count(u'\n'), 1) << semEmpresa.erro.toStdString();
    EXPECT_EQ(RodaServidor({u"enviar"_s, u"x"_s}).status, 2);
    EXPECT_EQ(RodaServidor({u"reenfileirar"_s, u"--pasta"_s}).status, 2);
}

INSTANTIATE_TEST_SUITE_P(Motores, EnviaPendentesTest, ::testing::ValuesIn(Motores()), NomeDoMotor);

} // namespace
} // namespace nfce::teste
