#include "storage/ArquivoTexto.h"

#include "storage/ErroExecucao.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStringDecoder>
#include <QStringEncoder>

namespace nfce {

namespace {
QByteArray Conteudo(const QString& caminho) {
    QFile arquivo(caminho);
    return arquivo.open(QIODevice::ReadOnly) ? arquivo.readAll() : QByteArray();
}
} // namespace

QStringList LinhasDoArquivo(const QString& caminho) {
    QString texto = QStringDecoder("windows-1252").decode(Conteudo(caminho));
    texto.replace(QLatin1String("\r\n"), QLatin1String("\n")).replace(u'\r', u'\n');
    if (texto.endsWith(u'\n')) texto.chop(1);
    return texto.isEmpty() ? QStringList() : texto.split(u'\n');
}

QString TextoDoArquivo(const QString& caminho) {
    return QString::fromUtf8(Conteudo(caminho));
}

void GravaLinhas(const QString& caminho, const QStringList& linhas) {
    QStringEncoder ansi("windows-1252");
    QByteArray dados;
    for (const QString& linha : linhas)
        dados += QByteArray(ansi(linha)) + "\r\n";
    QSaveFile arquivo(caminho);
    if (!arquivo.open(QIODevice::WriteOnly) || arquivo.write(dados) != dados.size() ||
        !arquivo.commit()) {
        const bool semPasta = !QFileInfo(QFileInfo(caminho).path()).isDir();
        throw ErroExecucao(semPasta ? ErroCaminhoNaoEncontrado : ErroAcessoCaminho,
                           (semPasta ? QStringLiteral("Caminho não encontrado: ")
                                     : QStringLiteral("Erro de acesso ao caminho/arquivo: ")) +
                               QDir::toNativeSeparators(caminho));
    }
}

bool CopiaArquivo(const QString& origem, const QString& destino) {
    QDir().mkpath(QFileInfo(destino).path());
    if (QFileInfo(destino).isFile()) QFile::remove(destino);
    return QFile::copy(origem, destino);
}

} // namespace nfce
