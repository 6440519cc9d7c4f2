#include "CenarioNfce.h"

#include "nfce/Valores.h"
#include "storage/Empresa.h"
#include "storage/Esquema.h"

#include <QDir>
#include <QFile>

namespace nfce::teste {

using namespace Qt::StringLiterals;

namespace {

// Text fields in mixed case and with punctuation, as shops type them.
const QStringList RegistroEmpresa = {
    u"CNPJ=18123456000190"_s,
    u"NOME=Mercado Bom Preco Ltda"_s,
    u"SERIE=1"_s,
    u"CODMUNICIPIO=3106200"_s,
    u"IE=062.307.904/0081"_s,
    u"ENDERECO=Rua da Bahia"_s,
    u"NUMERO=1148"_s,
    u"COMPLEMENTO=loja 2"_s,
    u"BAIRRO=Centro"_s,
    u"CIDADE=Belo Horizonte"_s,
    u"UF=mg"_s,
    u"TELEFONE=(31) 3333-4444"_s,
    u"CEP=30.160-011"_s,
};

QString Dados(const QString& nome) {
    return QStringLiteral(NFCE_DADOS_TESTE "/nfce/") + nome;
}

} // namespace

void CenarioNfce::SetUp() {
    BancoTeste::SetUp();
    if (IsSkipped()) return;
    pasta.EscreveEmpresa(RegistroEmpresa);
    ConfiguraNfce();
    QDir().mkpath(Validar());
    QDir().mkpath(pasta.Caminho(u"18123456000190/Envio"_s));
    servidor = std::make_unique<Servidor>(pasta.caminho(), ambiente);
    servidor->empresa = CarregaEmpresa(pasta.caminho());
    servidor->conexoes.PreparaConexaoPrincipal();
    servidor->conexoes.ReabreConexao();
    servidor->painel.lblData = u"15/11/2026"_s;
    servidor->painel.lblHora = u"10:20:30"_s;
    Carrega(u"loja"_s);
}

void CenarioNfce::TearDown() {
    servidor.reset();
    BancoTeste::TearDown();
}

void CenarioNfce::ConfiguraNfce(const QStringList& extras) {
    Configura(QStringList{u"TMPAMBNFCE=2"_s} + extras);
}

void CenarioNfce::Carrega(const QString& nome) {
    ExecutaScript(*servidor->conexoes.ConexaoPrincipal(), Dados(nome + u".sql"_s));
}

void CenarioNfce::Limpa() {
    for (const QString& tabela : {u"vendas"_s, u"itens"_s, u"nfce"_s})
        Executa(u"DELETE FROM "_s + tabela);
}

QStringList CenarioNfce::Valores(const QString& sql) {
    Registros rs;
    servidor->conexoes.AbreConsulta(rs, sql);
    QStringList valores;
    for (; !rs.Eof(); rs.MoveNext())
        valores << Dinheiro(MoedaDe(rs.Campo(rs.Campos().first())));
    return valores;
}

QString CenarioNfce::Validar(const QString& nome) const {
    return pasta.Caminho(u"18123456000190/Validar/"_s + nome);
}

QByteArray CenarioNfce::Gerado(const QString& caminho) {
    QFile arquivo(caminho);
    return arquivo.open(QIODevice::ReadOnly) ? arquivo.readAll() : QByteArray();
}

void CenarioNfce::ComparaComModelo(const QString& caminho, const QString& modelo) {
    const QByteArray gerado = Gerado(caminho), esperado = Gerado(Dados(modelo));
    ASSERT_FALSE(esperado.isEmpty()) << modelo.toStdString();
    const QList<QByteArray> g = gerado.split('\n'), e = esperado.split('\n');
    for (qsizetype i = 0; i < std::max(g.size(), e.size()); ++i)
        EXPECT_EQ(g.value(i).toStdString(), e.value(i).toStdString()) << "line " << i + 1;
    EXPECT_EQ(gerado, esperado);
}

} // namespace nfce::teste
