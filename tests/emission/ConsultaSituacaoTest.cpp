#include "emission/ConsultaSituacao.h"
#include "context/Servidor.h"
#include "support/AmbienteVirtual.h"
#include "support/Erros.h"
#include "support/PastaPrograma.h"

#include <QDir>
#include <gtest/gtest.h>

namespace nfce::teste {
namespace {

using namespace Qt::StringLiterals;

const QString Chave = u"31261118123456000104650010000012349123456788"_s;

// Records the address and the time limit of every page asked for.
class AmbienteDaRede : public AmbienteVirtual {
public:
    QString BuscaUrl(const QString& url, int limiteMs) override {
        buscas << url + u" "_s + QString::number(limiteMs);
        return pagina;
    }
    QStringList buscas;
    QString pagina;
};

class ConsultaSituacaoTest : public ::testing::Test {
protected:
    void SetUp() override {
        pasta.EscreveConfig({});
        servidor.venda.CnpjEmpresa = u"18123456000104"_s;
        servidor.venda.MesAutorizados = u"112026"_s;
    }
    QString Pasta(const QString& nome) const { return pasta.Caminho(u"18123456000104/"_s + nome); }

    PastaPrograma pasta;
    AmbienteDaRede ambiente;
    Servidor servidor{pasta.caminho(), ambiente};
};

// Stale answers go first, "-num-lot.txt" and "-pro-rec.txt" of other sales included.
TEST_F(ConsultaSituacaoTest, PedidoDepoisDeLimparAsPastas) {
    const std::pair<QString, QByteArray> casos[] = {
        {u"TMPAMBNFCE=2"_s, "2"}, {u"TEMP=1"_s, "0"}, {u"TMPAMBNFCE=homologacao"_s, "0"}};
    for (const auto& [config, tpAmb] : casos) {
        pasta.EscreveConfig({config});
        for (const QString& nome :
             {u"Retorno/"_s + Chave + u"-num-lot.txt"_s, u"Retorno/000000000000054-pro-rec.txt"_s,
              u"Envio/0000001235-gerar-chave.xml"_s})
            pasta.EscreveArquivo(u"18123456000104/"_s + nome, "54;");
        // Twice for one key: the same request, written again.
        ConsultaSituacao(servidor, Chave);
        ConsultaSituacao(servidor, Chave);
        EXPECT_EQ(QDir(Pasta(u"Retorno"_s)).entryList(QDir::Files), QStringList());
        EXPECT_EQ(QDir(Pasta(u"Envio"_s)).entryList(QDir::Files),
                  QStringList(Chave + u"-ped-sit.txt"_s));
        EXPECT_EQ(pasta.LeArquivo(u"18123456000104/Envio/"_s + Chave + u"-ped-sit.txt"_s),
                  "tpAmb|" + tpAmb + "\r\nxServ|CONSULTAR\r\ntpEmis|1\r\nchNFe|" +
                      Chave.toLatin1() + "\r\nversao|4.00\r\n");
        EXPECT_EQ(servidor.venda.MesAutorizados, u"15112026"_s);
    }
    // No return folder is no error; no send folder is one, for the caller.
    QDir(Pasta(u"Retorno"_s)).removeRecursively();
    EXPECT_EQ(ErroDe([&] { ConsultaSituacao(servidor, Chave); }).numero(), 0);
    QDir(Pasta(u"Envio"_s)).removeRecursively();
    EXPECT_EQ(ErroDe([&] { ConsultaSituacao(servidor, Chave); }).numero(),
              ErroCaminhoNaoEncontrado);
}

// Online exactly when the portal's page (PORTALNFE, a default without it) comes back within 10 s.
TEST_F(ConsultaSituacaoTest, TestaInternet) {
    const QString portal = u"http://portal.exemplo/nfe"_s;
    const std::tuple<QString, QString, bool> casos[] = {
        {u"PORTALNFE="_s + portal, u"<html>portal</html>"_s, true},
        {u"PORTALNFE="_s + portal, u""_s, false},
        {u"TEMP=1"_s, u"<html>portal</html>"_s, true},
    };
    for (const auto& [config, pagina, online] : casos) {
        pasta.EscreveConfig({config});
        ambiente.buscas.clear();
        ambiente.pagina = pagina;
        const qint64 antes = ambiente.msAguardados();
        EXPECT_EQ(TestaInternet(servidor), online);
        EXPECT_EQ(ambiente.msAguardados() - antes, 50);
        ASSERT_EQ(ambiente.buscas.size(), 1);
        EXPECT_TRUE(ambiente.buscas[0].startsWith(config.startsWith(u'P') ? portal : u"http"_s));
        EXPECT_TRUE(ambiente.buscas[0].endsWith(u" 10000"_s));
    }
}

} // namespace
} // namespace nfce::teste
