#include "support/BancoTeste.h"
#include "support/PastaPrograma.h"
#include "support/Programa.h"

namespace nfce::teste {
namespace {

using namespace Qt::StringLiterals;

Execucao Roda(const QStringList& argumentos) {
    return RodaServidor(QStringList{u"exportar"_s} + argumentos);
}

class ComandoExportarTest : public BancoTeste {
protected:
    void SetUp() override {
        BancoTeste::SetUp();
        pasta.EscreveEmpresa(RegistroDaLoja);
    }
    Execucao Exporta(const QStringList& config) {
        pasta.EscreveConfig(LinhasDosBancos() + config);
        return Roda({u"--pasta"_s, pasta.caminho()});
    }
};

TEST_P(ComandoExportarTest, MostraOQueFoiEnviadoEOQueFalta) {
    CriaRemota();
    Executa(u"INSERT INTO itens (data, hora, cupom, Item, caixa, quant) VALUES ('2026-11-14', "
            "'10:00:00', 12, 1, 1, 1)"_s);
    Executa(u"INSERT INTO vendas (data, hora, cupom, caixa, nomecliente, Vale, cliente) VALUES "
            "('2026-11-14', '10:00:00', 12, 1, 'D''ÁVILA', 5, 2)"_s);
    Executa(u"INSERT INTO vendas (data, hora, cupom, caixa) VALUES ('2026-11-14', '10:00:00', "
            "13, 2)"_s);
    ExecutaRemota(u"CREATE TRIGGER "_s + (EmSqlite() ? u"sem13 BEFORE INSERT ON vendas WHEN "
                                                       "NEW.cupom = 13 BEGIN SELECT RAISE(ABORT, "
                                                       "'recusada'); END"_s
                                                     : u"sem13 BEFORE INSERT ON vendas FOR EACH "
                                                       "ROW IF NEW.cupom = 13 THEN SIGNAL "
                                                       "SQLSTATE '45000'; END IF"_s));
    const Execucao e = Exporta({u"VENDASONLINESRV=SIM"_s});
    EXPECT_EQ(e.status, 1) << e.erro.toStdString();
    EXPECT_EQ(e.saida, u"Itens enviados: 1 de 1 (confirmados no servidor remoto: 1)\n"
                       "Vendas enviadas: 1 de 2 (confirmadas no servidor remoto: 1)\n"
                       "Contas a receber enviadas: 1\n"
                       "Não encontrado no servidor remoto: venda cupom 13, caixa 002\n"_s);
    EXPECT_TRUE(
        e.erro.endsWith(u"servidor-nfce: 1 linha(s) não encontrada(s) no servidor remoto\n"_s));
    EXPECT_EQ(TextoRemoto(u"SELECT nome FROM contasreceber"_s), u"D'ÁVILA"_s);
}

TEST_P(ComandoExportarTest, FalhasNumaLinhaClara) {
    const QString fora = u"SERVIDORBASEDADOS="_s + BaseInexistente();
    const struct {
        QStringList argumentos, config;
        int status;
        QString trecho;
    } casos[] = {
        {{u"--pasta"_s, pasta.caminho()}, {}, 1, u"VENDASONLINESRV não é SIM"_s},
        {{u"--pasta"_s, pasta.caminho()},
         {fora, u"VENDASONLINESRV=SIM"_s},
         1,
         u"Erro de Conexão do Banco de Dados do Servidor."_s},
        {{u"a"_s}, {}, 2, u"uso: servidor-nfce exportar [--pasta DIR]"_s},
    };
    for (const auto& caso : casos) {
        pasta.EscreveConfig(LinhasDosBancos() + caso.config);
        const Execucao e = Roda(caso.argumentos);
        EXPECT_EQ(e.status, caso.status);
        EXPECT_TRUE(e.saida.isEmpty());
        EXPECT_TRUE(e.erro.contains(caso.trecho)) << e.erro.toStdString();
    }
    EXPECT_EQ(Conta(u"itens"_s, u"exportado = 1"_s), 0);
}

INSTANTIATE_TEST_SUITE_P(Motores, ComandoExportarTest, ::testing::ValuesIn(Motores()), NomeDoMotor);

} // namespace
} // namespace nfce::teste
