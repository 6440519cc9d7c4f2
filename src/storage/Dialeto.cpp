#include "storage/Dialeto.h"

#include <QList>
#include <QRegularExpression>

namespace nfce {

namespace {

struct Palavra {
    qsizetype inicio;
    QString texto; // upper-cased
};

// Position just past the quoted text that starts at `inicio` ('...', "..." or `...`,
// the quote doubled inside it).
qsizetype FimDoCitado(const QString& sql, qsizetype inicio) {
    const QChar aspa = sql[inicio];
    qsizetype i = inicio + 1;
    while (i < sql.size()) {
        if (sql[i] != aspa) {
            ++i;
        } else if (i + 1 < sql.size() && sql[i + 1] == aspa) {
            i += 2;
        } else {
            return i + 1;
        }
    }
    return sql.size();
}

qsizetype FimDoComentario(const QString& sql, qsizetype inicio) {
    if (sql[inicio] == u'-') {
        const qsizetype fim = sql.indexOf(u'\n', inicio);
        return fim < 0 ? sql.size() : fim;
    }
    const qsizetype fim = sql.indexOf(QStringLiteral("*/"), inicio + 2);
    return fim < 0 ? sql.size() : fim + 2;
}

bool ComecaComentario(const QString& sql, qsizetype i) {
    if (i + 1 >= sql.size()) return false;
    return (sql[i] == u'-' && sql[i + 1] == u'-') || (sql[i] == u'/' && sql[i + 1] == u'*');
}

bool LetraDePalavra(QChar c) {
    return c.isLetterOrNumber() || c == u'_';
}

// The words of the statement outside quotes, comments and parentheses, in order.
QList<Palavra> PalavrasDeTopo(const QString& sql) {
    QList<Palavra> palavras;
    int profundidade = 0;
    qsizetype i = 0;
    while (i < sql.size()) {
        const QChar c = sql[i];
        if (c == u'\'' || c == u'"' || c == u'`') {
            i = FimDoCitado(sql, i);
        } else if (ComecaComentario(sql, i)) {
            i = FimDoComentario(sql, i);
        } else if (LetraDePalavra(c)) {
            qsizetype fim = i;
            while (fim < sql.size() && LetraDePalavra(sql[fim]))
                ++fim;
            if (profundidade == 0) palavras.append({i, sql.mid(i, fim - i).toUpper()});
            i = fim;
        } else {
            profundidade += (c == u'(') - (c == u')');
            ++i;
        }
    }
    return palavras;
}

// SQLite refuses ORDER BY in an UPDATE without LIMIT; without LIMIT the order changes
// nothing, since every matching row is updated.
QString SemOrdemNoUpdate(const QString& sql) {
    const QList<Palavra> palavras = PalavrasDeTopo(sql);
    if (palavras.isEmpty() || palavras.first().texto != u"UPDATE") return sql;
    for (qsizetype k = 1; k + 1 < palavras.size(); ++k) {
        if (palavras[k].texto != u"ORDER" || palavras[k + 1].texto != u"BY") continue;
        for (qsizetype j = k + 2; j < palavras.size(); ++j)
            if (palavras[j].texto == u"LIMIT") return sql;
        QString adaptado = sql.left(palavras[k].inicio);
        while (!adaptado.isEmpty() && adaptado.back().isSpace())
            adaptado.chop(1);
        if (sql.trimmed().endsWith(u';')) adaptado += u';';
        return adaptado;
    }
    return sql;
}

QString SemAsteriscoNoDelete(const QString& sql) {
    static const QRegularExpression deleteAsterisco(
        QStringLiteral(R"(^(\s*DELETE)\s*\*\s*(?=FROM\b))"),
        QRegularExpression::CaseInsensitiveOption);
    QString adaptado = sql;
    return adaptado.replace(deleteAsterisco, QStringLiteral("\\1 "));
}

QString InsertSemColunas(const QString& sql) {
    static const QRegularExpression insertVazio(
        QStringLiteral(R"(^(\s*INSERT\s+INTO\s+\S+)\s*\(\s*\)\s*VALUES\s*\(\s*\)\s*(;?)\s*$)"),
        QRegularExpression::CaseInsensitiveOption);
    QString adaptado = sql;
    return adaptado.replace(insertVazio, QStringLiteral("\\1 DEFAULT VALUES\\2"));
}

} // namespace

QString AdaptaSqlite(const QString& sql) {
    return InsertSemColunas(SemAsteriscoNoDelete(SemOrdemNoUpdate(sql)));
}

} // namespace nfce
