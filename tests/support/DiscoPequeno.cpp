#include "support/DiscoPequeno.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QProcess>
#include <stdexcept>

namespace nfce::teste {

namespace {
bool Roda(const QString& programa, const QStringList& argumentos) {
    QProcess processo;
    processo.start(programa, argumentos);
    return processo.waitForFinished() && processo.exitStatus() == QProcess::NormalExit &&
           processo.exitCode() == 0;
}
} // namespace

DiscoPequeno::DiscoPequeno(QString pasta, int kib)
    : pasta_(std::move(pasta)), tamanho_(kib * 1024) {
    QDir().mkpath(pasta_);
    montado_ = Roda(QStringLiteral("mount"),
                    {QStringLiteral("-t"), QStringLiteral("tmpfs"), QStringLiteral("-o"),
                     QStringLiteral("size=%1k").arg(kib), QStringLiteral("tmpfs"), pasta_});
}

DiscoPequeno::~DiscoPequeno() {
    if (montado_) Roda(QStringLiteral("umount"), {pasta_});
}

void DiscoPequeno::Enche(qint64 livres) const {
    for (const QString& nome : QDir(pasta_).entryList(QDir::AllEntries | QDir::NoDotAndDotDot))
        if (!QDir(pasta_ + u'/' + nome).removeRecursively()) QFile::remove(pasta_ + u'/' + nome);
    QFile enche(pasta_ + QStringLiteral("/enche"));
    const QByteArray dados(tamanho_ - livres, 'x');
    if (!enche.open(QIODevice::WriteOnly) || enche.write(dados) != dados.size() || !enche.flush())
        throw std::runtime_error("cannot fill the small disk");
}

QString DiscoPequeno::Arquivos() const {
    QStringList nomes;
    QDirIterator it(pasta_, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (it.hasNext())
        nomes.append(QDir(pasta_).relativeFilePath(it.next()));
    nomes.sort();
    return nomes.join(u' ');
}

} // namespace nfce::teste
