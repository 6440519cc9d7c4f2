#include "storage/Instalacao.h"

#include "storage/Conexoes.h"
#include "storage/Configuracao.h"
#include "storage/Empresa.h"
#include "storage/Pastas.h"
#include "support/AmbienteVirtual.h"
#include "support/Erros.h"
#include "support/PastaPrograma.h"

#include <gtest/gtest.h>

namespace nfce::teste {
namespace {

using namespace Qt::StringLiterals;

const QDate Hoje(2026, 11, 23);

// Counts the sales of a ready folder's database.
int Vendas(const QString& pasta, AmbienteVirtual& ambiente) {
    Conexoes conexoes(pasta, ambiente);
    conexoes.PreparaConexaoPrincipal();
    conexoes.ReabreConexao();
    Registros vendas;
    conexoes.AbreConsulta(vendas, u"SELECT COUNT(*) AS n FROM vendas"_s);
    return vendas.Campo(u"n"_s).toInt();
}

TEST(CriaPastaPrograma, PastaProntaParaOServidorComOuSemExemplos) {
    PastaPrograma pasta;
    CriaPastaPrograma(pasta.caminho(), true, Hoje);
    const QString p = pasta.caminho();
    // Every key reads back its own line, so no key shadows another.
    const std::pair<QString, QString> chaves[] = {
        {u"TIPOBANCO"_s, u"SQLITE"_s},       {u"SERVIDOR"_s, u"localhost"_s},
        {u"SERVIDORBASE"_s, u"localhost"_s}, {u"SERVIDORBASEDADOS"_s, u"remota.db"_s},
        {u"BASEDADOS"_s, u"loja.db"_s},      {u"TEMP"_s, u"3"_s},
        {u"VENDASONLINE"_s, u"SIM"_s},       {u"VENDASONLINESRV"_s, u"SIM"_s}};
    for (const auto& [chave, valor] : chaves)
        EXPECT_EQ(LerConfig(p, chave), valor) << chave.toStdString();
    const Empresa empresa = CarregaEmpresa(p);
    EXPECT_EQ(empresa.Cnpj + empresa.Serie, u"11222333000181001"_s);
    // The documents carry the state code 31: the sample shop is in Minas Gerais.
    EXPECT_EQ(empresa.Uf + u' ' + empresa.CodMunicipio.left(2), u"MG 31"_s);
    EXPECT_TRUE(PastaExiste(p + u"/11222333000181/Contabilidade/112026"_s));

    AmbienteVirtual ambiente;
    EXPECT_GT(Vendas(p, ambiente), 0);
    Conexoes conexoes(p, ambiente);
    conexoes.AbreConexaoRemota();
    conexoes.ReabreRemota();
    EXPECT_TRUE(conexoes.RemotaConectada());
    EXPECT_TRUE(ambiente.mensagens.isEmpty());
    EXPECT_NO_THROW(conexoes.AbreLocal());

    CriaPastaPrograma(pasta.Caminho(u"vazia"_s), false, Hoje);
    EXPECT_EQ(Vendas(pasta.Caminho(u"vazia"_s), ambiente), 0);
}

TEST(CriaPastaPrograma, NuncaSobrescreveUmaPastaEmUso) {
    PastaPrograma pasta;
    pasta.EscreveConfig({u"BASEDADOS=loja"_s});
    EXPECT_EQ(ErroDe([&] { CriaPastaPrograma(pasta.caminho(), true, Hoje); }).numero(),
              ErroArquivoJaExiste);
    EXPECT_EQ(LerConfig(pasta.caminho(), u"BASEDADOS"_s), u"loja"_s);
    EXPECT_FALSE(ArquivoExiste(pasta.Caminho(u"Empresa.Bin"_s)));
}

} // namespace
} // namespace nfce::teste
