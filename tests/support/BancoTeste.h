#pragma once

#include "storage/Conexoes.h"
#include "storage/Esquema.h"
#include "support/AmbienteVirtual.h"
#include "support/PastaPrograma.h"

#include <QUuid>
#include <gtest/gtest.h>

namespace nfce::teste {

using namespace Qt::StringLiterals;

enum class Motor { Sqlite, MariaDb };

// For INSTANTIATE_TEST_SUITE_P(Motores, SeuTeste, ::testing::ValuesIn(Motores()), NomeDoMotor).
inline std::vector<Motor> Motores() {
    return {Motor::Sqlite, Motor::MariaDb};
}
inline void PrintTo(Motor motor, std::ostream* saida) {
    *saida << (motor == Motor::Sqlite ? "Sqlite" : "MariaDb");
}
inline std::string NomeDoMotor(const ::testing::TestParamInfo<Motor>& info) {
    return ::testing::PrintToString(info.param);
}

// A test on SQLite and on MariaDB (the server NFCE_MARIADB names, user master; skipped without
// it): a fresh program folder, a fresh "loja" database in Config.ini, `conexoes` open.
class BancoTeste : public ::testing::TestWithParam<Motor> {
protected:
    void SetUp() override {
        if (!EmSqlite() && (host_ = ServidorMariaDb()).isEmpty())
            GTEST_SKIP() << "NFCE_MARIADB is not set";
        baseLoja_ = CriaBanco(u"loja"_s, loja_);
        Configura();
        conexoes = std::make_unique<Conexoes>(pasta.caminho(), ambiente);
        conexoes->PreparaConexaoPrincipal();
        conexoes->ReabreConexao();
    }
    void TearDown() override {
        conexoes.reset();
        loja_.reset();
        remota_.reset();
        for (const QString& base : criados_)
            Abre(u"mysql"_s)->Executa(u"DROP DATABASE IF EXISTS `%1`"_s.arg(base));
    }

    bool EmSqlite() const { return GetParam() == Motor::Sqlite; }
    virtual QString ServidorMariaDb() const { return qEnvironmentVariable("NFCE_MARIADB"); }

    // A fresh "remota" database, in Config.ini and opened by `conexoes`.
    void CriaRemota() {
        baseRemota_ = CriaBanco(u"remota"_s, remota_);
        Configura(extras_);
        conexoes->AbreConexaoRemota();
    }
    // Config.ini: the databases' lines, then `extras` (a reader takes a key's first line).
    void Configura(const QStringList& extras = {}) {
        extras_ = extras;
        pasta.EscreveConfig(LinhasDosBancos() + extras_);
    }
    QStringList LinhasDosBancos() const {
        // SERVIDOR before SERVIDORBASE before SERVIDORBASEDADOS: keys match line prefixes.
        QStringList linhas{EmSqlite() ? u"TIPOBANCO=SQLITE"_s : u"SERVIDOR="_s + host_,
                           u"BASEDADOS="_s + baseLoja_};
        if (baseRemota_.isEmpty()) return linhas;
        if (EmSqlite()) return linhas << u"SERVIDORBASEDADOS="_s + baseRemota_;
        return linhas << u"SERVIDORBASE="_s + host_ << u"SERVIDORBASEDADOS="_s + baseRemota_
                      << u"SERVIDORUSUARIO=master"_s;
    }

    int Executa(const QString& sql) { return loja_->Executa(sql); }
    int ExecutaRemota(const QString& sql) { return remota_->Executa(sql); }
    // The first column of the first row as Registros::Texto gives it ("" when no row).
    QString Texto(const QString& sql) { return PrimeiroTexto(*loja_, sql); }
    QString TextoRemoto(const QString& sql) { return PrimeiroTexto(*remota_, sql); }
    int Conta(const QString& tabela, const QString& condicao = u"1 = 1"_s) {
        return Texto(u"SELECT COUNT(*) FROM %1 WHERE %2"_s.arg(tabela, condicao)).toInt();
    }

    QString BaseInexistente() const {
        return EmSqlite() ? u"nao_existe.db"_s : u"nfce_nao_existe"_s;
    }
    QString host() const { return host_; }

    PastaPrograma pasta;
    AmbienteVirtual ambiente;
    std::unique_ptr<Conexoes> conexoes;

private:
    static QString PrimeiroTexto(Conexao& conexao, const QString& sql) {
        Registros rs;
        rs.AbreConsulta(conexao, sql);
        return rs.Eof() ? QString() : rs.Texto(rs.Campos().first());
    }
    std::unique_ptr<Conexao> Abre(const QString& base) const {
        auto conexao = std::make_unique<Conexao>(
            EmSqlite() ? TipoBanco::Sqlite : TipoBanco::MySql,
            EmSqlite() ? pasta.Caminho(base)
                       : StringConexaoMySql(host_, base, u"master"_s, u"brenhova"_s),
            Conexao::Arquivo::CriaSeFaltar);
        conexao->Abre();
        return conexao;
    }
    QString CriaBanco(const QString& esquema, std::unique_ptr<Conexao>& apoio) {
        QString nome = esquema + u".db"_s;
        if (!EmSqlite()) { // unique across test processes running side by side
            nome =
                u"nfce_%1_%2"_s.arg(esquema, QUuid::createUuid().toString(QUuid::Id128).left(16));
            Abre(u"mysql"_s)->Executa(u"CREATE DATABASE `%1` CHARACTER SET utf8mb4"_s.arg(nome));
            criados_.append(nome);
        }
        apoio = Abre(nome);
        CriaEsquema(*apoio, esquema);
        return nome;
    }

    QString host_, baseLoja_, baseRemota_;
    QStringList extras_, criados_; // criados_: MariaDB databases to drop
    std::unique_ptr<Conexao> loja_, remota_;
};

} // namespace nfce::teste
