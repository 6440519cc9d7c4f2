#include "storage/Esquema.h"

#include "storage/ErroExecucao.h"

#include <QFile>
#include <QRegularExpression>

// The resources of a static library have to be registered by hand, outside any namespace.
static void RegistraRecursosDoEsquema() {
    Q_INIT_RESOURCE(schema);
}

namespace nfce {

namespace {

QString LeRecurso(const QString& recurso) {
    static const bool registrado = (RegistraRecursosDoEsquema(), true);
    Q_UNUSED(registrado);
    QFile arquivo(recurso);
    if (!arquivo.open(QIODevice::ReadOnly))
        throw ErroExecucao(ErroArquivoNaoEncontrado,
                           QStringLiteral("Script não encontrado: %1").arg(recurso));
    return QString::fromUtf8(arquivo.readAll());
}

void ExecutaTodos(Conexao& conexao, const QStringList& comandos) {
    for (const QString& comando : comandos)
        conexao.Executa(comando);
}

// The error that made the script stop is the one worth reporting.
void DesfazSemFalhar(Conexao& conexao) {
    try {
        conexao.Executa(QStringLiteral("ROLLBACK"));
    } catch (const ErroExecucao&) {
    }
}

QString Script(const Conexao& conexao, const QString& nome) {
    const QString dialeto =
        conexao.Tipo() == TipoBanco::Sqlite ? QStringLiteral("sqlite") : QStringLiteral("mysql");
    return QStringLiteral(":/schema/%1.%2.sql").arg(nome, dialeto);
}

} // namespace

QStringList DivideComandos(const QString& script) {
    QStringList comandos;
    QString atual;
    const QStringList linhas = script.split(u'\n');
    for (const QString& linha : linhas) {
        const QString aparada = linha.trimmed();
        if (aparada.startsWith(QStringLiteral("--"))) continue;
        atual += linha + u'\n';
        if (!aparada.endsWith(u';')) continue;
        atual = atual.trimmed();
        atual.chop(1);
        if (!atual.trimmed().isEmpty()) comandos.append(atual.trimmed());
        atual.clear();
    }
    if (!atual.trimmed().isEmpty()) comandos.append(atual.trimmed());
    return comandos;
}

void ExecutaScript(Conexao& conexao, const QString& recurso) {
    const QStringList comandos = DivideComandos(LeRecurso(recurso));
    if (conexao.Tipo() == TipoBanco::MySql) {
        // MySQL commits every DDL statement by itself.
        ExecutaTodos(conexao, comandos);
        return;
    }
    conexao.Executa(QStringLiteral("BEGIN"));
    try {
        ExecutaTodos(conexao, comandos);
    } catch (const ErroExecucao&) {
        DesfazSemFalhar(conexao);
        throw;
    }
    conexao.Executa(QStringLiteral("COMMIT"));
}

void CriaEsquema(Conexao& conexao, const QString& nome) {
    ExecutaScript(conexao, Script(conexao, nome));
}

QStringList TabelasFaltando(Conexao& conexao, const QString& nome) {
    static const QRegularExpression criacao(QStringLiteral("^CREATE TABLE IF NOT EXISTS (\\w+)"),
                                            QRegularExpression::MultilineOption);
    QStringList faltando;
    for (const auto& tabela : criacao.globalMatch(LeRecurso(Script(conexao, nome)))) {
        try {
            conexao.Consulta(QStringLiteral("SELECT * FROM %1 WHERE 1 = 0")
                                 .arg(conexao.Identificador(tabela.captured(1))));
        } catch (const ErroExecucao&) {
            faltando.append(tabela.captured(1));
        }
    }
    return faltando;
}

} // namespace nfce
