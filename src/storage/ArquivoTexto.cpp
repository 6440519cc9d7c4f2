#include "storage/ArquivoTexto.h"

#include "storage/Publicacao.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStringDecoder>
#include <QStringEncoder>

#include <cerrno>

namespace nfce {

namespace {
// The system's reasons for a full disk (or a full quota, the same to the shop).
bool DiscoCheio(const QString& causa) {
#ifdef Q_OS_WIN
    const int codigos[] = {39, 112}; // ERROR_HANDLE_DISK_FULL, ERROR_DISK_FULL
#else
    const int codigos[] = {ENOSPC, EDQUOT};
#endif
    for (int codigo : codigos)
        if (causa == qt_error_string(codigo)) return true;
    return false;
}
} // namespace

bool GrandeDemais(const QString& caminho, qint64 limite) {
    return QFileInfo(caminho).size() > limite;
}

// At most one byte past the limit is read: the file may have grown since it was measured.
QByteArray ConteudoDoArquivo(const QString& caminho, qint64 limite) {
    QFile arquivo(caminho);
    if (!arquivo.open(QIODevice::ReadOnly) || arquivo.size() > limite) return {};
    QByteArray dados = arquivo.read(limite + 1);
    return dados.size() > limite ? QByteArray() : dados;
}

QString TextoAnsi(QByteArrayView bytes) {
    // One converter a thread: opening one costs more than most texts take to decode.
    thread_local QStringDecoder ansi("windows-1252", QStringConverter::Flag::Stateless);
    return ansi.decode(bytes);
}

QStringList LinhasDoTexto(QByteArrayView bytes) {
    QString texto = TextoAnsi(bytes);
    texto.replace(QLatin1String("\r\n"), QLatin1String("\n")).replace(u'\r', u'\n');
    if (texto.endsWith(u'\n')) texto.chop(1);
    return texto.isEmpty() ? QStringList() : texto.split(u'\n');
}

QString TextoDoArquivo(const QString& caminho, qint64 limite) {
    return QString::fromUtf8(ConteudoDoArquivo(caminho, limite));
}

void GravaLinhas(const QString& caminho, const QStringList& linhas) {
    QStringEncoder ansi("windows-1252");
    QByteArray dados;
    for (const QString& linha : linhas)
        dados += QByteArray(ansi(linha)) + "\r\n";
    Publica(caminho, dados);
}

ErroExecucao ErroDeGravacao(const QString& caminho, const QString& causa) {
    const QFileInfo pasta(QFileInfo(caminho).path());
    const QString arquivo = QDir::toNativeSeparators(caminho);
    const QString nomePasta = QDir::toNativeSeparators(pasta.filePath());
    if (DiscoCheio(causa))
        return ErroExecucao(
            ErroDiscoCheio,
            QStringLiteral("Não foi possível gravar %1: disco cheio (%2)").arg(arquivo, causa));
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

void CopiaArquivo(const QString& origem, const QString& destino) {
    QFile arquivo(origem);
    if (!arquivo.open(QIODevice::ReadOnly)) throw ErroDeGravacao(origem, arquivo.errorString());
    const QByteArray dados = arquivo.readAll();
    if (arquivo.error() != QFileDevice::NoError)
        throw ErroDeGravacao(origem, arquivo.errorString());
    QDir().mkpath(QFileInfo(destino).path());
    Publica(destino, dados);
}

} // namespace nfce
