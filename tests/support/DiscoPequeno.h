#pragma once

#include <QString>

namespace nfce::teste {

// A tmpfs of a few KiB mounted on `pasta` (made when missing) for the test's life. Mounting
// needs root: Montado() says whether it worked, so the test can skip.
class DiscoPequeno {
public:
    DiscoPequeno(QString pasta, int kib);
    ~DiscoPequeno();
    DiscoPequeno(const DiscoPequeno&) = delete;
    DiscoPequeno& operator=(const DiscoPequeno&) = delete;

    bool Montado() const { return montado_; }
    // Empties it, then fills it with the file "enche" until only `livres` bytes are left.
    void Enche(qint64 livres) const;
    // The files in it at every depth, sorted, separated by spaces.
    QString Arquivos() const;

private:
    QString pasta_;
    qint64 tamanho_;
    bool montado_ = false;
};

} // namespace nfce::teste
