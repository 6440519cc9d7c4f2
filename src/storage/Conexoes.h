#pragma once

#include "storage/Conexao.h"
#include "storage/Registros.h"

#include <memory>

namespace nfce {

class Ambiente;

// The legacy ODBC connection string; the port and the option word never change.
QString StringConexaoMySql(const QString& host, const QString& base, const QString& usuario,
                           const QString& senha);

// The databases of the system and the routines through which the rest of it opens them.
//
// Settings (storage/Ajustes.h):
//   main         SERVIDOR, BASEDADOS (empty: no main connection), user master
//   remote       SERVIDORBASE, SERVIDORBASEDADOS (empty: none), SERVIDORUSUARIO
//   contingency  CONTINGENCIAHOST (empty: none), CONTINGENCIABASE, CONTINGENCIAUSUARIO,
//                CONTINGENCIASENHA
//   TIPOBANCO    MYSQL: MySQL through ODBC; SQLITE: every connection is an SQLite
//                file named by BASEDADOS, SERVIDORBASEDADOS and CONTINGENCIABASE (the
//                contingency one only when CONTINGENCIABASE is set), relative to the
//                program folder; any other value: no connection is built.
// The local work list is always the SQLite file "Local.db" in the program folder.
class Conexoes {
public:
    Conexoes(QString pastaPrograma, Ambiente& ambiente);

    // Builders: they trap and log their own errors; a failed build leaves the connection
    // closed (or not built), and the next reopen reports the failure.
    void PreparaConexaoPrincipal(); // builds, does not open
    // The main connection as Config.ini gives it, built and not opened; no BASEDADOS or a bad
    // TIPOBANCO raises ErroArgumentoInvalido.
    std::shared_ptr<Conexao>
    CriaPrincipal(Conexao::Arquivo arquivo = Conexao::Arquivo::Existente) const;
    void AbreConexaoRemota();       // builds and opens
    bool AbreConexaoContingencia(); // builds and opens; true when usable

    // Opens "Local.db", creating it and the table ncupom when missing. Errors go to the
    // caller.
    std::shared_ptr<Conexao> AbreLocal();
    // `origem` a table name (opened for editing) or a statement, on the local database.
    void AbreRecordsetLocal(Registros& rs, const QString& origem);

    // Reopen: close when open, then open; a failure (ErroProvedor, or ErroObjetoNaoDefinido
    // when the connection was never built) goes to the caller. Close never fails.
    void ReabreConexao();
    void FechaConexao();
    void ReabreTerceira();
    void FechaTerceira();
    // Reports a failure in a message box instead; RemotaConectada() says how it went.
    void ReabreRemota();

    // Each closes `rs` first, then fills it from the connection named by the routine.
    void AbreConsulta(Registros& rs, const QString& sql);
    void AbreTabela(Registros& rs, const QString& tabela);
    void AbreConsultaRemota(Registros& rs, const QString& sql);
    void AbreConsultaTerceira(Registros& rs, const QString& sql);

    // Statements run directly on a connection (ErroObjetoNaoDefinido when not built).
    int Executa(const QString& sql);
    int ExecutaRemota(const QString& sql);

    // Null while not built.
    Conexao* ConexaoPrincipal() const { return principal_.get(); }
    Conexao* ConexaoRemota() const { return remota_.get(); }
    Conexao* ConexaoContingencia() const { return contingencia_.get(); }
    Conexao* ConexaoLocal() const { return local_.get(); }

    const QString& StringConexaoPrincipal() const { return stringPrincipal_; }
    const QString& CaminhoLocal() const { return caminhoLocal_; }
    bool RemotaConectada() const { return remotaConectada_; }

private:
    std::shared_ptr<Conexao> Cria(const QString& host, const QString& base, const QString& usuario,
                                  const QString& senha,
                                  Conexao::Arquivo arquivo = Conexao::Arquivo::Existente) const;
    TipoBanco TipoConfigurado() const;
    void Registra(const QString& conexao, const QString& descricao) const;

    QString pasta_;
    Ambiente& ambiente_;
    std::shared_ptr<Conexao> principal_;
    std::shared_ptr<Conexao> remota_;
    std::shared_ptr<Conexao> contingencia_;
    std::shared_ptr<Conexao> local_;
    QString stringPrincipal_;
    QString caminhoLocal_;
    bool remotaConectada_ = false;
};

} // namespace nfce
