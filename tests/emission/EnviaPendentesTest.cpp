#include "emission/EnviaPendentes.h"
#include "Simulador.h"
#include "context/Servidor.h"
#include "emission/ArmadilhaEnvio.h"
#include "emission/EmiteNfceImprime.h"
#include "storage/Empresa.h"
#include "storage/Esquema.h"
#include "support/DiscoPequeno.h"
#include "support/LojaComUniNfe.h"
#include "support/Programa.h"

#include <QCoreApplication>
#include <QDir>
#include <QRegularExpression>

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
    // 539: authorised under this sending's key, the receipt number from SEFAZ's reason (this
    // wording's comma moves it off the fixed cut). No authorised XML exists for that key: the
    // failed document waits in EmProcessamento for the situation query, nothing is filed.
    const QString chave = Coluna(u"chave"_s, 1004);
    EXPECT_EQ(desfechos.value(u"1004"_s).texto, u"Autorizado o uso da NF-e"_s);
    EXPECT_EQ(Coluna(u"erro"_s, 1004), u"Autorizado o uso da NF-e"_s);
    EXPECT_TRUE(
        QRegularExpression(u"^31\\d{13}$"_s).match(Coluna(u"autorizacao"_s, 1004)).hasMatch());
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

// What the tills may leave in a row: nothing on screen, the row is not finished, and the
// pass goes on to the next sale.
TEST_P(EnviaPendentesTest, LinhasHostisNaoSeguramAsOutras) {
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
        Venda(9102, 2);
        EXPECT_TRUE(Passa().value(u"9102"_s).finalizada);
        EXPECT_TRUE(ambiente.mensagens.isEmpty());
        EXPECT_EQ(Conta(u"vendas"_s, u"tempo = '1'"_s), 1);
        EXPECT_EQ(Conta(u"vendas"_s, u"erro <> '' AND tempo <> '1'"_s), 1);
    }
    Executa(u"DELETE FROM vendas"_s);
    s->painel.LblQuantCup = u"7"_s;
    EXPECT_TRUE(Passa().isEmpty());
    EXPECT_EQ(s->painel.LblQuantCup, u"7"_s); // untouched when nothing is pending
}

// One unusual sale or answer first, then two good sales: the good ones are authorised in the
// same pass, the unusual one ends as its row says, and nothing outside the folder is touched.
TEST_P(EnviaPendentesTest, UmaVendaOuRespostaRuimNaoSeguraAsOutras) {
    struct Caso {
        const char* nome;
        // "{outra}": the key of an earlier sale; "{errada}": it, check digit off; "{vitima}": a
        // folder outside the program folder, one per run (the engines run side by side)
        QString cenario;
        QString sql;    // run with the sale's NFC-e as %1
        QString erro;   // part of the sale's erro afterwards
        QString estado; // tempo/enviotime afterwards
        // The answers of an earlier attempt (778) left in Retorno, and UniNFe not answering
        // while the sale is sent again: nothing may be read as this attempt's.
        bool antigas = false;
    };
    const QString invalida = u"chave inválida recebida do UniNFe"_s;
    const std::vector<Caso> casos = {
        {"386",
         u"rejeita 386"_s,
         {},
         u"Rejeicao: CFOP nao permitido para o CSOSN informado [nItem:1]"_s,
         u"0/1"_s},
        {"725", u"rejeita 725"_s, {}, u"Rejeicao: NFC-e com CFOP invalido[nItem:1]"_s, u"0/1"_s},
        {"539", u"duplicidade-chave"_s, {}, u"Autorizado o uso da NF-e"_s, u"1/1"_s},
        {"no time",
         {},
         u"UPDATE vendas SET hora = NULL WHERE nfce = %1"_s,
         u"Venda sem hora"_s,
         u"0/1"_s},
        {"no date",
         {},
         u"UPDATE vendas SET data = NULL WHERE nfce = %1"_s,
         u"Venda sem data"_s,
         u"0/1"_s},
        {"money",
         {},
         u"UPDATE itens SET quant = 999999999999.999, valor = 99999999999.9999 WHERE nfce = %1"_s,
         u"fora do limite"_s,
         u"0/1"_s},
        {"stale answers", u"rejeita 778"_s, {}, u""_s, u"/0"_s, true},
        {"key a path", u"chave-falsa ./../../../../{vitima}/x"_s, {}, invalida, u"/0"_s},
        {"key with quotes", u"chave-falsa 3126'||'x\";--"_s, {}, invalida, u"/0"_s},
        {"key of 43 digits", u"chave-falsa "_s + QString(43, u'3'), {}, invalida, u"/0"_s},
        {"key check digit", u"chave-falsa {errada}"_s, {}, invalida, u"/0"_s},
        {"another sale's key", u"chave-falsa {outra}"_s, {}, invalida, u"/0"_s},
        {"protocol of another sale", u"protocolo-chave {outra}"_s, {}, u""_s, u"/0"_s},
    };
    const QString pastaVitima = u"outra-%1-%2"_s.arg(QCoreApplication::applicationPid())
                                    .arg(EmSqlite() ? u"sqlite"_s : u"mariadb"_s);
    const QString fora =
        QDir::cleanPath(pasta.Caminho(Cnpj + u"/Retorno/./../../../../"_s + pastaVitima));
    const QStringList vitimas = {u"x-num-lot.txt"_s, u"x-num-lot.xml"_s, u"x-nfe.xml"_s};
    const auto vitima = [&](const QString& nome) {
        QFile arquivo(fora + u'/' + nome);
        return arquivo.open(QIODevice::ReadOnly) ? arquivo.readAll() : QByteArray();
    };
    QDir().mkpath(fora);
    for (const QString& v : vitimas) {
        QFile arquivo(fora + u'/' + v);
        ASSERT_TRUE(arquivo.open(QIODevice::WriteOnly) && arquivo.write("victim") == 6);
    }
    int n = 100;
    for (const Caso& c : casos) {
        SCOPED_TRACE(c.nome);
        n += 100;
        const QString outra = Coluna(u"chave"_s, 202);
        const QString errada = outra.left(43) + QString::number((outra.right(1).toInt() + 1) % 10);
        NovoServidor();
        Venda(n + 1, n + 1,
              QString(c.cenario)
                  .replace(u"{outra}"_s, outra)
                  .replace(u"{errada}"_s, errada)
                  .replace(u"{vitima}"_s, pastaVitima));
        if (!c.sql.isEmpty()) Executa(c.sql.arg(n + 1));
        if (c.antigas) { // rejected at the first attempt, its answers left, then queued again
            Passa();
            Executa(u"UPDATE vendas SET tempo = '', enviotime = 0, erro = '' WHERE nfce = %1"_s.arg(
                n + 1));
            sim->DefineCenario(n + 1, uninfesim::Cenario());
            NovoServidor();
        }
        Venda(n + 2, n + 2);
        Venda(n + 3, n + 3);
        const int gancho = ambiente.AoBombear([&] { // the key comes, the document is not taken
            if (c.antigas)
                uninfeRodando = s->venda.NumNfce != n + 1 || s->painel.LblMens01.isEmpty();
        });
        const auto desfechos = Passa();
        ambiente.RemoveGancho(gancho);
        uninfeRodando = true;
        EXPECT_TRUE(desfechos.value(QString::number(n + 2)).finalizada);
        EXPECT_TRUE(desfechos.value(QString::number(n + 3)).finalizada);
        EXPECT_EQ(Estado(n + 1), c.estado);
        EXPECT_TRUE(Coluna(u"erro"_s, n + 1).contains(c.erro))
            << Coluna(u"erro"_s, n + 1).toStdString();
        EXPECT_TRUE(ambiente.mensagens.isEmpty());
        ambiente.mensagens.clear();
        for (const QString& v : vitimas)
            EXPECT_EQ(vitima(v), "victim") << v.toStdString();
        Executa(u"UPDATE vendas SET enviotime = 1"_s);
    }
    QDir(fora).removeRecursively();
}

// Stopped after UniNFe filed the authorised XML, before the row was written: sent again, the
// sale is a duplicate, and takes SEFAZ's protocol and the accountant's copy from that XML.
TEST_P(EnviaPendentesTest, DuplicidadeDepoisDeUmaQueda) {
    Venda(3101, 1);
    ASSERT_TRUE(Passa().value(u"3101"_s).finalizada);
    const QString protocolo = Coluna(u"autorizacao"_s, 3101);
    const QString copia = pasta.Caminho(Cnpj + u"/CONTABILIDADE/112026/000003101-procNFe.xml"_s);
    Executa(u"UPDATE vendas SET tempo = '', enviotime = 0, autorizacao = '', xml = ''"_s);
    QFile::remove(copia);
    const DesfechoDaVenda d = Passa().value(u"3101"_s);
    EXPECT_TRUE(d.finalizada) << d.texto.toStdString();
    EXPECT_EQ(Estado(3101), u"1/1"_s);
    EXPECT_EQ(Coluna(u"autorizacao"_s, 3101), protocolo);
    EXPECT_EQ(protocolo.size(), 15);
    EXPECT_TRUE(QFile::exists(copia));
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
