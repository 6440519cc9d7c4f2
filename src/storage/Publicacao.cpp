#include "storage/Publicacao.h"

#include "storage/ArquivoTexto.h"

#include <cerrno>

#ifndef Q_OS_WIN
#include <unistd.h>
#endif

namespace nfce {

Publicacao::Publicacao(QString caminho) : caminho_(std::move(caminho)), arquivo_(caminho_) {
    // Unbuffered: QSaveFile renames even when its buffer could not be written at the end.
    if (!arquivo_.open(QIODevice::WriteOnly | QIODevice::Unbuffered)) Falha(arquivo_.errorString());
}

// A short write is no error to Qt: write the rest, so that a full disk fails with its reason.
void Publicacao::Escreve(const QByteArray& bytes) {
    for (qint64 feitos = 0; feitos < bytes.size();) {
        const qint64 n = arquivo_.write(bytes.constData() + feitos, bytes.size() - feitos);
        if (n <= 0) Falha(arquivo_.errorString());
        feitos += n;
    }
}

// QSaveFile ignores a failed sync: sync here, where the failure can still stop the rename.
void Publicacao::Conclui() {
#ifndef Q_OS_WIN
    if (::fsync(arquivo_.handle()) != 0) Falha(qt_error_string(errno));
#endif
    if (!arquivo_.commit()) Falha(arquivo_.errorString());
}

void Publicacao::Falha(const QString& causa) const {
    throw ErroDeGravacao(caminho_, causa);
}

void Publica(const QString& caminho, const QByteArray& dados) {
    Publicacao arquivo(caminho);
    arquivo.Escreve(dados);
    arquivo.Conclui();
}

} // namespace nfce
