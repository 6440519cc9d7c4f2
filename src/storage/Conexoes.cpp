#include "storage/Conexoes.h"

#include "platform/Ambiente.h"
#include "storage/Ajustes.h"
#include "storage/ErroExecucao.h"
#include "storage/Esquema.h"

#include <QDir>
#include <algorithm>

namespace nfce {

namespace {

QString TextoErroConexao() {
    return QStringLiteral("Erro de Conexão do Banco de Dados do Servidor.");
}

QString TituloErroConexao() {
    return QStringLiteral("Atenção. Erro durante a conexão ....");
}

Conexao& Exige(const std::shared_ptr<Conexao>& conexao, const QString& qual) {
    if (!conexao)
        throw ErroExecucao(ErroObjetoNaoDefinido,
                           QStringLiteral("Variável de objeto ou variável do bloco With não "
                                          "definida (conexão %1 não preparada).")
                               .arg(qual));
    return *conexao;
}

void Reabre(Conexao& conexao) {
    conexao.Fecha();
    conexao.Abre();
}

void Fecha(const std::shared_ptr<Conexao>& conexao) {
    if (conexao) conexao->Fecha();
}

} // namespace

QString StringConexaoMySql(const QString& host, const QString& base, const QString& usuario,
                           const QString& senha) {
    return QStringLiteral("Driver={MySQL ODBC 5.1 DRIVER}; Server=") + host +
           QStringLiteral(";Port=3306;Database=") + base + QStringLiteral(";UID=") + usuario +
           QStringLiteral(";PWD=") + senha + QStringLiteral(";ConnectionTimeout=60;Option=18475");
}

Conexoes::Conexoes(QString pastaPrograma, Ambiente& ambiente)
    : pasta_(std::move(pastaPrograma)), ambiente_(ambiente) {}

TipoBanco Conexoes::TipoConfigurado() const {
    const QString tipo = Le(pasta_, ajustes::TipoBanco).toUpper();
    if (tipo == u"MYSQL") return TipoBanco::MySql;
    if (tipo == u"SQLITE") return TipoBanco::Sqlite;
    throw ErroExecucao(ErroArgumentoInvalido,
                       QStringLiteral("%1 inválido: \"%2\" (use MYSQL ou SQLITE).")
                           .arg(Chave(ajustes::TipoBanco), tipo));
}

std::shared_ptr<Conexao> Conexoes::Cria(const QString& host, const QString& base,
                                        const QString& usuario, const QString& senha,
                                        Conexao::Arquivo arquivo) const {
    if (TipoConfigurado() == TipoBanco::Sqlite)
        return std::make_shared<Conexao>(
            TipoBanco::Sqlite, QDir::cleanPath(QDir(pasta_).absoluteFilePath(base)), arquivo);
    return std::make_shared<Conexao>(TipoBanco::MySql,
                                     StringConexaoMySql(host, base, usuario, senha));
}

void Conexoes::Registra(const QString& conexao, const QString& descricao) const {
    ambiente_.Registra(QStringLiteral("Conexão %1: %2").arg(conexao, descricao));
}

void Conexoes::PreparaConexaoPrincipal() {
    try {
        if (!Definido(pasta_, ajustes::BaseDados)) return;
        principal_.reset();
        stringPrincipal_.clear();
        principal_ = CriaPrincipal();
        stringPrincipal_ = principal_->Origem();
    } catch (const ErroExecucao& erro) {
        Registra(QStringLiteral("principal"), erro.descricao());
    }
}

std::shared_ptr<Conexao> Conexoes::CriaPrincipal(Conexao::Arquivo arquivo) const {
    const QString base = Le(pasta_, ajustes::BaseDados);
    if (base.isEmpty())
        throw ErroExecucao(ErroArgumentoInvalido,
                           QStringLiteral("sem %1, nenhum banco de dados configurado")
                               .arg(Chave(ajustes::BaseDados)));
    return Cria(Le(pasta_, ajustes::ServidorPrincipal), base, QStringLiteral("master"),
                QStringLiteral("brenhova"), arquivo);
}

void Conexoes::AbreConexaoRemota() {
    // VENDASONLINE only enables the export button: the connection is prepared whatever
    // it says.
    try {
        const QString servidor = Le(pasta_, ajustes::ServidorBase);
        const QString base = Le(pasta_, ajustes::ServidorBaseDados);
        const QString usuario = Le(pasta_, ajustes::ServidorUsuario);
        if (base.isEmpty()) return;
        remota_.reset();
        remota_ = Cria(servidor, base, usuario, QStringLiteral("brenhova"));
        remota_->Abre();
    } catch (const ErroExecucao& erro) {
        Registra(QStringLiteral("remota"), erro.descricao());
    }
}

bool Conexoes::AbreConexaoContingencia() {
    try {
        contingencia_.reset();
        const bool sqlite = TipoConfigurado() == TipoBanco::Sqlite;
        // Without its host (its file, on SQLite) the central service is not configured.
        if (!Definido(pasta_, sqlite ? ajustes::ContingenciaBase : ajustes::ContingenciaHost))
            return false;
        contingencia_ =
            Cria(Le(pasta_, ajustes::ContingenciaHost), Le(pasta_, ajustes::ContingenciaBase),
                 Le(pasta_, ajustes::ContingenciaUsuario), Le(pasta_, ajustes::ContingenciaSenha));
        contingencia_->Abre();
        return true;
    } catch (const ErroExecucao& erro) {
        Registra(QStringLiteral("de contingência"), erro.descricao());
        return false;
    }
}

std::shared_ptr<Conexao> Conexoes::AbreLocal() {
    caminhoLocal_ = QDir(pasta_).filePath(QStringLiteral("Local.db"));
    auto local =
        std::make_shared<Conexao>(TipoBanco::Sqlite, caminhoLocal_, Conexao::Arquivo::CriaSeFaltar);
    local->Abre();
    CriaEsquema(*local, QStringLiteral("local"));
    local_ = std::move(local);
    return local_;
}

void Conexoes::AbreRecordsetLocal(Registros& rs, const QString& origem) {
    rs.Fecha();
    Conexao& local = Exige(local_, QStringLiteral("local"));
    const QString aparada = origem.trimmed();
    const bool tabela =
        std::none_of(aparada.begin(), aparada.end(), [](QChar c) { return c.isSpace(); });
    if (tabela)
        rs.AbreTabela(local_, aparada);
    else
        rs.AbreConsulta(local, origem);
}

void Conexoes::ReabreConexao() {
    Reabre(Exige(principal_, QStringLiteral("principal")));
}

void Conexoes::FechaConexao() {
    Fecha(principal_);
}

void Conexoes::ReabreTerceira() {
    Reabre(Exige(contingencia_, QStringLiteral("de contingência")));
}

void Conexoes::FechaTerceira() {
    Fecha(contingencia_);
}

void Conexoes::ReabreRemota() {
    try {
        Reabre(Exige(remota_, QStringLiteral("remota")));
        remotaConectada_ = true;
    } catch (const ErroExecucao& erro) {
        Registra(QStringLiteral("remota"), erro.descricao());
        if (erro.numero() == ErroProvedor) {
            ambiente_.MsgBox(TextoErroConexao(), TituloErroConexao(), Icone::Critico);
            remotaConectada_ = false;
            return;
        }
        // Any other failure leaves the flag as an earlier call set it.
        ambiente_.MsgBox(TextoErroConexao() + u'\n' + QString::number(erro.numero()) + u' ' +
                             erro.descricao(),
                         TituloErroConexao(), Icone::Critico);
    }
}

void Conexoes::AbreConsulta(Registros& rs, const QString& sql) {
    rs.Fecha();
    rs.AbreConsulta(Exige(principal_, QStringLiteral("principal")), sql);
}

void Conexoes::AbreTabela(Registros& rs, const QString& tabela) {
    rs.Fecha();
    Exige(principal_, QStringLiteral("principal"));
    rs.AbreTabela(principal_, tabela);
}

void Conexoes::AbreConsultaRemota(Registros& rs, const QString& sql) {
    rs.Fecha();
    rs.AbreConsulta(Exige(remota_, QStringLiteral("remota")), sql);
}

void Conexoes::AbreConsultaTerceira(Registros& rs, const QString& sql) {
    rs.Fecha();
    rs.AbreConsulta(Exige(contingencia_, QStringLiteral("de contingência")), sql);
}

int Conexoes::Executa(const QString& sql) {
    return Exige(principal_, QStringLiteral("principal")).Executa(sql);
}

int Conexoes::ExecutaRemota(const QString& sql) {
    return Exige(remota_, QStringLiteral("remota")).Executa(sql);
}

} // namespace nfce
