#include "Arquivos.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <algorithm>

namespace uninfesim {

using namespace Qt::StringLiterals;

namespace {

QStringList Filhos(const QString& pai, QDir::Filters tipo) {
    return QDir(pai).entryList(tipo | QDir::NoDotAndDotDot, QDir::Name);
}

} // namespace

QString NomeNoDisco(const QString& pai, const QString& nome) {
    const QStringList nomes = Filhos(pai, QDir::AllEntries);
    if (nomes.contains(nome)) return nome;
    for (const QString& candidato : nomes)
        if (candidato.compare(nome, Qt::CaseInsensitive) == 0) return candidato;
    return {};
}

QString Pasta(const QString& base, const QStringList& partes) {
    QString caminho = base;
    for (const QString& parte : partes) {
        const QString noDisco = NomeNoDisco(caminho, parte);
        caminho += u'/' + (noDisco.isEmpty() ? parte : noDisco);
        if (!QFileInfo(caminho).isDir() && !QDir().mkpath(caminho)) return {};
    }
    return caminho;
}

QStringList Variantes(const QString& base, const QString& nome) {
    QStringList pastas;
    for (const QString& filho : Filhos(base, QDir::Dirs))
        if (filho.compare(nome, Qt::CaseInsensitive) == 0) pastas.append(base + u'/' + filho);
    return pastas;
}

QStringList TerminadosEm(const QStringList& pastas, const QString& sufixo) {
    QStringList arquivos;
    for (const QString& pasta : pastas)
        for (const QString& nome : Filhos(pasta, QDir::Files))
            if (nome.size() > sufixo.size() && nome.endsWith(sufixo, Qt::CaseInsensitive))
                arquivos.append(pasta + u'/' + nome);
    std::sort(arquivos.begin(), arquivos.end(), [](const QString& a, const QString& b) {
        return QFileInfo(a).fileName() < QFileInfo(b).fileName();
    });
    return arquivos;
}

QString SemSufixo(const QString& nome, const QString& sufixo) {
    return nome.left(nome.size() - sufixo.size());
}

bool Le(const QString& caminho, QByteArray& conteudo) {
    QFile arquivo(caminho);
    if (!arquivo.open(QIODevice::ReadOnly)) return false;
    conteudo = arquivo.readAll();
    return arquivo.error() == QFileDevice::NoError;
}

bool Grava(const QString& caminho, const QByteArray& conteudo) {
    QSaveFile arquivo(caminho);
    if (!arquivo.open(QIODevice::WriteOnly)) return false;
    arquivo.write(conteudo);
    return arquivo.commit();
}

bool Move(const QString& origem, const QString& destino) {
    if (QFileInfo::exists(destino)) QFile::remove(destino);
    return QFile::rename(origem, destino);
}

} // namespace uninfesim
