#include "support/BancoTeste.h"

#include "storage/Esquema.h"

#include <QUuid>

namespace nfce::teste {

namespace {

QString PrimeiroTexto(Conexao& conexao, const QString& sql) {
    Registros rs;
    rs.AbreConsulta(conexao, sql);
    return rs.Eof() ? QString() : rs.Texto(rs.Campos().first());
}

} // namespace

std::vector<Motor> Motores() {
    return {Motor::Sqlite, Motor::MariaDb};
}

std::string NomeDoMotor(const ::testing::TestParamInfo<Motor>& info) {
    return ::testing::PrintToString(info.param);
}

void PrintTo(Motor motor, std::ostream* saida) {
    *saida << (motor == Motor::Sqlite ? "Sqlite" : "MariaDb");
}

QString BancoTeste::ServidorMariaDb() const {
    return qEnvironmentVariable("NFCE_MARIADB");
}

void BancoTeste::SetUp() {
    if (!EmSqlite()) {
        host_ = ServidorMariaDb();
        if (host_.isEmpty()) GTEST_SKIP() << "NFCE_MARIADB is not set";
    }
    baseLoja_ = CriaBanco(QStringLiteral("loja"), loja_);
    Configura();
    conexoes = std::make_unique<Conexoes>(pasta.caminho(), ambiente);
    conexoes->PreparaConexaoPrincipal();
    conexoes->ReabreConexao();
}

void BancoTeste::TearDown() {
    conexoes.reset();
    loja_.reset();
    remota_.reset();
    if (criados_.isEmpty()) return;
    auto admin = Administracao();
    for (const QString& base : criados_)
        admin->Executa(QStringLiteral("DROP DATABASE IF EXISTS `%1`").arg(base));
}

std::unique_ptr<Conexao> BancoTeste::Administracao() {
    auto admin = std::make_unique<Conexao>(
        TipoBanco::MySql, StringConexaoMySql(host_, QStringLiteral("mysql"),
                                             QStringLiteral("master"), QStringLiteral("brenhova")));
    admin->Abre();
    return admin;
}

QString BancoTeste::CriaBanco(const QString& esquema, std::shared_ptr<Conexao>& apoio) {
    if (EmSqlite()) {
        const QString arquivo = esquema + QStringLiteral(".db");
        apoio = std::make_shared<Conexao>(TipoBanco::Sqlite, pasta.Caminho(arquivo),
                                          Conexao::Arquivo::CriaSeFaltar);
        apoio->Abre();
        CriaEsquema(*apoio, esquema);
        return arquivo;
    }
    // Unique across test processes running side by side.
    const QString base = QStringLiteral("nfce_%1_%2")
                             .arg(esquema, QUuid::createUuid().toString(QUuid::Id128).left(16));
    Administracao()->Executa(
        QStringLiteral("CREATE DATABASE `%1` CHARACTER SET utf8mb4").arg(base));
    criados_.append(base);
    apoio = std::make_shared<Conexao>(
        TipoBanco::MySql,
        StringConexaoMySql(host_, base, QStringLiteral("master"), QStringLiteral("brenhova")));
    apoio->Abre();
    CriaEsquema(*apoio, esquema);
    return base;
}

void BancoTeste::CriaRemota() {
    baseRemota_ = CriaBanco(QStringLiteral("remota"), remota_);
    Configura(extras_);
    conexoes->AbreConexaoRemota();
}

QStringList BancoTeste::LinhasDosBancos() const {
    // SERVIDOR before SERVIDORBASE before SERVIDORBASEDADOS: keys match line prefixes.
    QStringList linhas;
    if (EmSqlite()) {
        linhas << QStringLiteral("TIPOBANCO=SQLITE") << QStringLiteral("BASEDADOS=") + baseLoja_;
        if (!baseRemota_.isEmpty()) linhas << QStringLiteral("SERVIDORBASEDADOS=") + baseRemota_;
        return linhas;
    }
    linhas << QStringLiteral("SERVIDOR=") + host_ << QStringLiteral("BASEDADOS=") + baseLoja_;
    if (!baseRemota_.isEmpty())
        linhas << QStringLiteral("SERVIDORBASE=") + host_
               << QStringLiteral("SERVIDORBASEDADOS=") + baseRemota_
               << QStringLiteral("SERVIDORUSUARIO=master");
    return linhas;
}

void BancoTeste::Configura(const QStringList& extras) {
    extras_ = extras;
    pasta.EscreveConfig(LinhasDosBancos() + extras_);
}

int BancoTeste::Executa(const QString& sql) {
    return loja_->Executa(sql);
}

int BancoTeste::ExecutaRemota(const QString& sql) {
    return remota_->Executa(sql);
}

QString BancoTeste::Texto(const QString& sql) {
    return PrimeiroTexto(*loja_, sql);
}

QString BancoTeste::TextoRemoto(const QString& sql) {
    return PrimeiroTexto(*remota_, sql);
}

int BancoTeste::Conta(const QString& tabela, const QString& condicao) {
    return Texto(QStringLiteral("SELECT COUNT(*) FROM %1 WHERE %2").arg(tabela, condicao)).toInt();
}

QString BancoTeste::BaseInexistente() const {
    return EmSqlite() ? QStringLiteral("nao_existe.db") : QStringLiteral("nfce_nao_existe");
}

} // namespace nfce::teste
