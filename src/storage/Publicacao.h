#pragma once

#include <QSaveFile>

namespace nfce {

// A file that UniNFe or the accountant picks up: written under a temporary name (the real
// name plus a random suffix, which no watcher matches), flushed to the disk and checked, and
// only then renamed into place. A failure raises and leaves nothing behind: ErroDiscoCheio (61)
// when the disk is full, a missing folder ErroCaminhoNaoEncontrado (76), any other
// ErroAcessoCaminho (75); each names the file and the system's reason.
class Publicacao {
public:
    explicit Publicacao(QString caminho);

    void Escreve(const QByteArray& bytes);
    // Puts the file in place under its name, replacing one of that name.
    void Conclui();

    const QString& Caminho() const { return caminho_; }

private:
    [[noreturn]] void Falha(const QString& causa) const;

    QString caminho_;
    QSaveFile arquivo_;
};

// Publishes `dados` as the whole file.
void Publica(const QString& caminho, const QByteArray& dados);

} // namespace nfce
