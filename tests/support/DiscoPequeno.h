#pragma once

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QProcess>
#include <stdexcept>

namespace nfce::teste {

using namespace Qt::StringLiterals;

// A tmpfs of `kib` KiB on `pasta` for the test's life; not Montado() without root: skip then.
class DiscoPequeno {
public:
    DiscoPequeno(QString pasta, int kib) : pasta_(std::move(pasta)), tamanho_(kib * 1024) {
        QDir().mkpath(pasta_);
        montado_ = QProcess::execute(u"mount"_s, {u"-t"_s, u"tmpfs"_s, u"-o"_s,
                                                  u"size=%1k"_s.arg(kib), u"tmpfs"_s, pasta_}) == 0;
    }
    ~DiscoPequeno() {
        if (montado_) QProcess::execute(u"umount"_s, {pasta_});
    }
    DiscoPequeno(const DiscoPequeno&) = delete;
    DiscoPequeno& operator=(const DiscoPequeno&) = delete;

    bool Montado() const { return montado_; }
    // Empties it, then fills it with the file "enche" until only `livres` bytes are left.
    void Enche(qint64 livres) const {
        QDir(pasta_).removeRecursively(); // all but the mount point itself
        QFile enche(pasta_ + u"/enche"_s);
        const QByteArray dados(tamanho_ - livres, 'x');
        if (!enche.open(QIODevice::WriteOnly) || enche.write(dados) != dados.size() ||
            !enche.flush())
            throw std::runtime_error("cannot fill the small disk");
    }
    // The files in it at every depth, sorted, separated by spaces.
    QString Arquivos() const {
        QStringList nomes;
        QDirIterator it(pasta_, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
        while (it.hasNext())
            nomes.append(QDir(pasta_).relativeFilePath(it.next()));
        nomes.sort();
        return nomes.join(u' ');
    }

private:
    QString pasta_;
    qint64 tamanho_;
    bool montado_ = false;
};

} // namespace nfce::teste
