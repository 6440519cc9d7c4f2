#include "storage/ArquivoTexto.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStringDecoder>
#include <QStringEncoder>

namespace nfce {

namespace {
// At most one byte past the limit is read: the file may have grown since it was measured.
QByteArray Conteudo(const QString& caminho, qint64 limite) {
    QFile arquivo(caminho);
    if (!arquivo.open(QIODevice::ReadOnly) || arquivo.size() > limite) return {};
    QByteArray dados = arquivo.read(limite + 1);
    return dados.size() > limite ? QByteArray() : dados;
}
} // namespace

bool GrandeDemais(const QString& caminho, qint64 limite) {
    return QFileInfo(caminho).size() > limite;
}

QStringList LinhasDoArquivo(const QString& caminho, qint64 limite) {
    QString texto = QStringDecoder("windows-1252").decode(Conteudo(caminho, limite));
    texto.replace(QLatin1String("\r\n"), QLatin1String("\n")).replace(u'\r', u'\n');
    if (texto.endsWith(u'\n')) texto.chop(1);
    return texto.isEmpty() ? QStringList() : texto.split(u'\n');
}

QString TextoDoArquivo(const QString& caminho, qint64 limite) {
    return QString::fromUtf8(Conteudo(caminho, limite));
}

void GravaLinhas(const QString& caminho, const QStringList& linhas) {
    QStringEncoder ansi("windows-1252");
    QByteArray dados;
    for (const QString& linha : linhas)
        dados += QByteArray(ansi(linha)) + "\r\n";
    QSaveFile arquivo(caminho);
    if (!arquivo.open(QIODevice::WriteOnly) || arquivo.write(dados) != dados.size() ||
        !arquivo.commit())
        throw ErroDeGravacao(caminho, arquivo.errorString());
}

ErroExecucao ErroDeGravacao(const QString& caminho, const QString& causa) {
    const QFileInfo pasta(QFileInfo(caminho).path());
    const QString arquivo = QDir::toNativeSeparators(caminho);
    const QString nomePasta = QDir::toNativeSeparators(pasta.filePath());
    if (pasta.isDir())
        return ErroExecucao(
            ErroAcessoCaminho,
            QStringLiteral("Erro de acesso ao caminho/arquivo: %1 (%2)").arg(arquivo, causa));
    // A file where the folder should be is the usual cause: say so, not just "not found".
    const QString porque = pasta.exists() ? QStringLiteral("%1 não é uma pasta").arg(nomePasta)
                                          : QStringLiteral("a pasta %1 não existe").arg(nomePasta);
    return ErroExecucao(ErroCaminhoNaoEncontrado,
                        QStringLiteral("Caminho não encontrado: %1 (%2)").arg(arquivo, porque));
}

bool CopiaArquivo(const QString& origem, const QString& destino) {
    QDir().mkpath(QFileInfo(destino).path());
    if (QFileInfo(destino).isFile()) QFile::remove(destino);
    return QFile::copy(origem, destino);
}

} // namespace nfce
