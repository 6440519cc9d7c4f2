#include "shell/InstanciaUnica.h"

#include <QDir>
#include <QFile>

#ifdef Q_OS_WIN
#include <windows.h>
#else
#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>
#endif

namespace nfce {

using namespace Qt::StringLiterals;

InstanciaUnica::InstanciaUnica(const QString& pastaPrograma)
    : caminho_(QDir(pastaPrograma).filePath(u"servidor-nfce.lock"_s)) {}

#ifdef Q_OS_WIN

InstanciaUnica::~InstanciaUnica() {
    if (alca_ != -1) CloseHandle(reinterpret_cast<HANDLE>(alca_));
}

// Opened without sharing: a second open fails until the owner's handle closes, which the
// system does when the owner ends in any way.
InstanciaUnica::Resultado InstanciaUnica::Obtem() {
    const HANDLE alca =
        CreateFileW(reinterpret_cast<LPCWSTR>(QDir::toNativeSeparators(caminho_).utf16()),
                    GENERIC_WRITE, 0, nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (alca == INVALID_HANDLE_VALUE)
        return GetLastError() == ERROR_SHARING_VIOLATION ? Resultado::OutraRodando
                                                         : Resultado::Falhou;
    alca_ = reinterpret_cast<qintptr>(alca);
    return Resultado::Obtida;
}

#else

InstanciaUnica::~InstanciaUnica() {
    if (alca_ != -1) ::close(static_cast<int>(alca_));
}

InstanciaUnica::Resultado InstanciaUnica::Obtem() {
    const int alca =
        ::open(QFile::encodeName(caminho_).constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0644);
    if (alca == -1) return Resultado::Falhou;
    if (::flock(alca, LOCK_EX | LOCK_NB) == -1) {
        const bool outra = errno == EWOULDBLOCK;
        ::close(alca);
        return outra ? Resultado::OutraRodando : Resultado::Falhou;
    }
    alca_ = alca;
    return Resultado::Obtida;
}

#endif

QString InstanciaUnica::Motivo() const {
    return u"não foi possível criar "_s + QDir::toNativeSeparators(caminho_);
}

} // namespace nfce
