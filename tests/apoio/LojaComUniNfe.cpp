#include "apoio/LojaComUniNfe.h"

#include "storage/Empresa.h"
#include "storage/Esquema.h"
#include "storage/Pastas.h"

#include <QDir>

namespace nfce::teste {

using namespace Qt::StringLiterals;

void LojaComUniNfe::SetUp() {
    BancoTeste::SetUp();
    if (IsSkipped()) return;
    pasta.EscreveEmpresa({u"CNPJ=18123456000190"_s, u"NOME=Mercado Bom Preco Ltda"_s, u"SERIE=1"_s,
                          u"CODMUNICIPIO=3106200"_s, u"IE=0623079040081"_s,
                          u"ENDERECO=Rua da Bahia"_s, u"NUMERO=1148"_s, u"BAIRRO=Centro"_s,
                          u"CIDADE=Belo Horizonte"_s, u"UF=MG"_s, u"CEP=30160011"_s});
    Configura({u"TMPAMBNFCE=2"_s, u"TEMP=1"_s});
    for (const QString& p : {u"Envio"_s, u"Validar"_s, u"Retorno"_s})
        QDir().mkpath(pasta.Caminho(u"18123456000190/"_s + p));
    s = std::make_unique<Servidor>(pasta.caminho(), ambiente);
    s->empresa = CarregaEmpresa(pasta.caminho());
    s->conexoes.PreparaConexaoPrincipal();
    s->conexoes.ReabreConexao();
    ExecutaScript(*s->conexoes.ConexaoPrincipal(),
                  QStringLiteral(NFCE_DADOS_TESTE "/nfce/loja.sql"));
    sim = std::make_unique<uninfesim::Simulador>(pasta.caminho());
    ambiente.AoBombear([this] {
        if (uninfeRodando) sim->Processa(ambiente.Agora());
    });
}

void LojaComUniNfe::TearDown() {
    s.reset();
    BancoTeste::TearDown();
}

void LojaComUniNfe::Venda(int nfce, int cupom, const QString& tempo, const QString& erro) {
    Executa(u"INSERT INTO vendas (nfce, cupom, data, hora, valor, Dinheiro, cliente, "
            "nomecliente, tempo, enviotime, autorizacao, erro) VALUES (%1, %2, '2026-11-15', "
            "'10:20:30', 21.15, 21.15, 1, 'CONSUMIDOR FINAL', '%3', 0, '', '%4')"_s.arg(nfce)
                .arg(cupom)
                .arg(tempo, erro));
    Executa(u"INSERT INTO itens (nfce, cupom, Item, codprod, quant, valor, valortotal) "
            "VALUES (%1, %2, 1, 1, 1, 21.15, 21.15)"_s.arg(nfce)
                .arg(cupom));
}

void LojaComUniNfe::PoeNaFila(const QStringList& numeros) {
    const auto local = s->conexoes.AbreLocal();
    local->Executa(u"DELETE FROM ncupom"_s);
    for (const QString& n : numeros)
        local->Executa(
            u"INSERT INTO ncupom (cupom) VALUES ('%1')"_s.arg(QString(n).replace(u"'"_s, u"''"_s)));
}

QString LojaComUniNfe::Coluna(const QString& coluna, int nfce) {
    return Texto(u"SELECT "_s + coluna + u" FROM vendas WHERE nfce = "_s + QString::number(nfce));
}

bool LojaComUniNfe::Existe(const QString& relativo) const {
    return ArquivoExiste(Caminho(pasta.caminho(), u"18123456000190\\"_s + relativo));
}

} // namespace nfce::teste
