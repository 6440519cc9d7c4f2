#pragma once

#include "storage/Conexoes.h"
#include "support/AmbienteVirtual.h"
#include "support/PastaPrograma.h"

#include <gtest/gtest.h>
#include <memory>
#include <vector>

namespace nfce::teste {

enum class Motor { Sqlite, MariaDb };

// For INSTANTIATE_TEST_SUITE_P(Motores, SeuTeste, ::testing::ValuesIn(Motores()), NomeDoMotor).
std::vector<Motor> Motores();
std::string NomeDoMotor(const ::testing::TestParamInfo<Motor>& info);
void PrintTo(Motor motor, std::ostream* saida);

// A database test that runs on SQLite and on MariaDB. The MariaDB runs need the server named
// by the environment variable NFCE_MARIADB (a host, e.g. 127.0.0.1, user master) and are
// skipped without it. Each test gets a fresh program folder, a fresh shop database ("loja"
// schema) written into Config.ini, and `conexoes` with the main connection open.
class BancoTeste : public ::testing::TestWithParam<Motor> {
protected:
    void SetUp() override;
    void TearDown() override;

    bool EmSqlite() const { return GetParam() == Motor::Sqlite; }
    // The MariaDB server the runs use: NFCE_MARIADB; a test with a server of its own says its.
    virtual QString ServidorMariaDb() const;

    // A fresh remote database ("remota" schema), written into Config.ini and opened through
    // `conexoes` (AbreConexaoRemota).
    void CriaRemota();
    // Rewrites Config.ini: the lines of the databases made so far, then `extras`. A reader
    // takes the first line that begins with its key, so extras only add keys.
    void Configura(const QStringList& extras = {});
    QStringList LinhasDosBancos() const;

    // Straight to the databases, on connections of the fixture's own.
    int Executa(const QString& sql);
    int ExecutaRemota(const QString& sql);
    // The first column of the first row as Registros::Texto gives it ("" when no row).
    QString Texto(const QString& sql);
    QString TextoRemoto(const QString& sql);
    int Conta(const QString& tabela, const QString& condicao = QStringLiteral("1 = 1"));

    // A connection string / file for a database that does not exist.
    QString BaseInexistente() const;
    QString host() const { return host_; }

    PastaPrograma pasta;
    AmbienteVirtual ambiente;
    std::unique_ptr<Conexoes> conexoes;

private:
    QString CriaBanco(const QString& esquema, std::shared_ptr<Conexao>& apoio);
    std::unique_ptr<Conexao> Administracao();

    QString host_;
    QString baseLoja_;
    QString baseRemota_;
    QStringList extras_;
    QStringList criados_; // MariaDB databases to drop
    std::shared_ptr<Conexao> loja_;
    std::shared_ptr<Conexao> remota_;
};

} // namespace nfce::teste
